#include "ScriptRunner.h"

#include <sqlite3.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

#include "ScriptedPlatform.h"
#include "core/Form.h"
#include "core/MDIKuvo.h"
#include "core/Module1.h"
#include "core/Program.h"
#include "core/Store.h"
#include "core/Texts.h"
#include "windows/Windows.h"

namespace kuvo {

namespace {

// The script ran out while a modal window stood: unwind quietly.
struct ScriptEnd {};

QString Unescape(const QString& quoted, int line) {
  QString out;
  for (int i = 1; i < quoted.size() - 1; ++i) {
    QChar c = quoted[i];
    if (c == QLatin1Char('\\')) {
      if (++i >= quoted.size() - 1) throw ScriptError(line, QStringLiteral("bad escape"));
      switch (quoted[i].unicode()) {
        case '"': out += QLatin1Char('"'); break;
        case '\\': out += QLatin1Char('\\'); break;
        case 'n': out += QLatin1Char('\n'); break;
        case 'r': out += QLatin1Char('\r'); break;
        case 't': out += QLatin1Char('\t'); break;
        default: throw ScriptError(line, QStringLiteral("bad escape \\%1").arg(quoted[i]));
      }
    } else {
      out += c;
    }
  }
  return out;
}

// "TextMatrix(1, 0)" and "TextMatrix(1,0)" name the same property.
QString Normalise(QString name) {
  name.remove(QLatin1Char(' '));
  return name;
}

QDate ParseIsoDate(const QString& text, int line) {
  const QDate d = QDate::fromString(text, QStringLiteral("yyyy-MM-dd"));
  if (!d.isValid()) throw ScriptError(line, QStringLiteral("bad date %1").arg(text));
  return d;
}

int ParseInt(const QString& text, int line) {
  bool ok = false;
  const int v = text.toInt(&ok);
  if (!ok) throw ScriptError(line, QStringLiteral("not a number: %1").arg(text));
  return v;
}

double ParseDouble(const QString& text, int line) {
  bool ok = false;
  const double v = text.toDouble(&ok);
  if (!ok) throw ScriptError(line, QStringLiteral("not a number: %1").arg(text));
  return v;
}

const QStringList kCommands = {
    QStringLiteral("store"), QStringLiteral("sql"),         QStringLiteral("write"),
    QStringLiteral("copy"),  QStringLiteral("cat"),         QStringLiteral("today"),
    QStringLiteral("rnd"),   QStringLiteral("answer-file"), QStringLiteral("locale"),
    QStringLiteral("start"), QStringLiteral("menu"),        QStringLiteral("toolbar"),
    QStringLiteral("click"), QStringLiteral("type"),        QStringLiteral("key"),
    QStringLiteral("mouse"), QStringLiteral("close"),       QStringLiteral("at-yield"),
    QStringLiteral("get"),   QStringLiteral("dump"),        QStringLiteral("tick"),
    QStringLiteral("fault"),
};

}  // namespace

ScriptRunner::ScriptRunner(QString folder, QString scriptDir)
    : folder_(std::move(folder)), scriptDir_(std::move(scriptDir)) {
  platform_ = std::make_unique<ScriptedPlatform>(folder_);
  platform_->Out = [this](const QString& s) { Write(s); };
  platform_->OnYield = [this](long n) {
    auto it = atYield_.find(n);
    if (it == atYield_.end()) return;
    std::vector<Line> due = std::move(it->second);
    atYield_.erase(it);
    for (const Line& l : due) Execute(l);
  };
  platform_->OnModal = [this](Form& form) {
    while (form.Loaded() && form.Visible) {
      if (!RunNext()) throw ScriptEnd{};
    }
  };
  program_ = std::make_unique<Program>(*platform_, AllWindows());
  SetRegional(QLocale(QStringLiteral("fr_FR")));
}

ScriptRunner::~ScriptRunner() {
  program_.reset();
  platform_.reset();
}

std::vector<ScriptRunner::Line> ScriptRunner::Parse(const QString& text) {
  std::vector<Line> lines;
  const QStringList raw = text.split(QLatin1Char('\n'));
  for (int n = 0; n < raw.size(); ++n) {
    QString s = raw[n];
    if (s.endsWith(QLatin1Char('\r'))) s.chop(1);
    const QString trimmed = s.trimmed();
    if (trimmed.isEmpty() || trimmed.startsWith(QLatin1Char('#'))) continue;
    Line line;
    line.number = n + 1;
    int i = 0;
    while (i < s.size()) {
      while (i < s.size() && s[i].isSpace()) ++i;
      if (i >= s.size()) break;
      if (s[i] == QLatin1Char('"')) {
        int j = i + 1;
        while (j < s.size() && s[j] != QLatin1Char('"')) j += (s[j] == QLatin1Char('\\')) ? 2 : 1;
        if (j >= s.size()) throw ScriptError(line.number, QStringLiteral("unclosed quote"));
        line.words << Unescape(s.mid(i, j - i + 1), line.number);
        i = j + 1;
        if (i < s.size() && !s[i].isSpace())
          throw ScriptError(line.number, QStringLiteral("text after a quoted word"));
      } else {
        int j = i;
        while (j < s.size() && !s[j].isSpace()) ++j;
        line.words << s.mid(i, j - i);
        i = j;
      }
    }
    // at-yield N COMMAND...: the command itself must be known too.
    const int at = line.words.value(0) == QLatin1String("at-yield") ? 2 : 0;
    if (!kCommands.contains(line.words.value(at)))
      throw ScriptError(line.number,
                        QStringLiteral("unknown command %1").arg(line.words.value(at)));
    lines.push_back(line);
  }
  return lines;
}

void ScriptRunner::Run(std::vector<Line> lines) {
  lines_ = std::move(lines);
  next_ = 0;
  try {
    while (RunNext()) {
    }
  } catch (const ProgramEnd&) {
    ended_ = true;
  } catch (const ScriptEnd&) {
    ended_ = true;
  }
}

QString ScriptRunner::RunText(const QString& text) {
  const qsizetype before = output_.size();
  Run(Parse(text));
  return output_.mid(before);
}

bool ScriptRunner::RunNext() {
  if (ended_ || next_ >= lines_.size()) return false;
  const Line& line = lines_[next_++];
  Execute(line);
  return true;
}

void ScriptRunner::Write(const QString& text) {
  output_ += text;
  output_ += QLatin1Char('\n');
  if (Echo) Echo(text);
}

void ScriptRunner::Expect(const Line& line, int minWords, int maxWords) {
  const int n = static_cast<int>(line.words.size());
  if (n < minWords || (maxWords >= 0 && n > maxWords))
    throw ScriptError(line.number,
                      QStringLiteral("wrong number of words for %1").arg(line.words[0]));
}

QString ScriptRunner::Path(const QString& file) const {
  return QDir(folder_).absoluteFilePath(file);
}

void ScriptRunner::Execute(const Line& line) {
  const QString& cmd = line.words[0];
  if (faultDb_ && !faultArmed_) {
    sqlite3_progress_handler(faultDb_, 0, nullptr, nullptr);
    faultDb_ = nullptr;
  }
  if (cmd == QLatin1String("store")) return StoreCommand(line);
  if (cmd == QLatin1String("sql")) return SqlCommand(line);
  if (cmd == QLatin1String("write")) {
    Expect(line, 3, 3);
    QFile f(Path(line.words[1]));
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
      throw ScriptError(line.number, QStringLiteral("cannot write %1").arg(line.words[1]));
    f.write(line.words[2].toUtf8());
    return;
  }
  if (cmd == QLatin1String("copy")) {
    Expect(line, 3, 3);
    const QString source = QDir(scriptDir_).absoluteFilePath(line.words[1]);
    QFile::remove(Path(line.words[2]));
    if (!QFile::copy(source, Path(line.words[2])))
      throw ScriptError(line.number, QStringLiteral("cannot copy %1").arg(line.words[1]));
    QFile::setPermissions(Path(line.words[2]), QFile::ReadOwner | QFile::WriteOwner);
    return;
  }
  if (cmd == QLatin1String("cat")) {
    Expect(line, 2, 2);
    QFile f(Path(line.words[1]));
    if (!f.open(QIODevice::ReadOnly)) {
      Write(QStringLiteral("cat %1: no such file").arg(line.words[1]));
      return;
    }
    Write(QuoteText(QString::fromUtf8(f.readAll())));
    return;
  }
  if (cmd == QLatin1String("today")) {
    Expect(line, 2, 2);
    platform_->today = ParseIsoDate(line.words[1], line.number);
    return;
  }
  if (cmd == QLatin1String("rnd")) {
    Expect(line, 2);
    for (int i = 1; i < line.words.size(); ++i)
      platform_->rndValues.push_back(static_cast<float>(ParseDouble(line.words[i], line.number)));
    return;
  }
  if (cmd == QLatin1String("answer-file")) {
    Expect(line, 2, 2);
    platform_->fileAnswers.push_back(line.words[1] == QLatin1String("cancel") ? QString()
                                                                              : line.words[1]);
    return;
  }
  if (cmd == QLatin1String("locale")) {
    Expect(line, 2, 2);
    SetRegional(QLocale(line.words[1]));
    return;
  }
  if (cmd == QLatin1String("at-yield")) {
    Expect(line, 3);
    const int n = ParseInt(line.words[1], line.number);
    if (n < 1) throw ScriptError(line.number, QStringLiteral("at-yield counts from 1"));
    Line inner{line.number, line.words.mid(2)};
    atYield_[platform_->yields + n].push_back(inner);
    return;
  }
  if (cmd == QLatin1String("get")) return GetCommand(line);
  if (cmd == QLatin1String("dump")) return DumpCommand(line);
  if (cmd == QLatin1String("tick")) return TickCommand(line);
  if (cmd == QLatin1String("fault")) return FaultCommand(line);
  UserCommand(line);
}

// fault store: the program's store fails at its next step in SQLite, as when
// the disk fails under it: SQLite interrupts the statement it runs then.
void ScriptRunner::FaultCommand(const Line& line) {
  Expect(line, 2, 2);
  if (line.words[1] != QLatin1String("store"))
    throw ScriptError(line.number, QStringLiteral("fault store"));
  Database* db = program_->M().BaseDonnees.get();
  if (!db) throw ScriptError(line.number, QStringLiteral("no store open"));
  faultDb_ = db->Handle();
  faultArmed_ = true;
  sqlite3_progress_handler(
      faultDb_, 1,
      [](void* armed) -> int {
        bool& fire = *static_cast<bool*>(armed);
        if (!fire) return 0;
        fire = false;
        return 1;
      },
      &faultArmed_);
}

// tick FORM.TIMER [N]: the timer's event N times, as the platform raises it at
// every interval: only while the timer is enabled with an interval and its
// window loaded, whatever window is modal. A tick that finds it otherwise
// passes without a word.
void ScriptRunner::TickCommand(const Line& line) {
  Expect(line, 2, 3);
  const int count = line.words.size() == 3 ? ParseInt(line.words[2], line.number) : 1;
  if (count < 0) throw ScriptError(line.number, QStringLiteral("tick counts from 0"));
  const Target t = Resolve(line, line.words[1], true);
  if (t.control && t.control->Kind() != ControlKind::Timer)
    throw ScriptError(line.number, QStringLiteral("%1 is no timer").arg(line.words[1]));
  const QString timerName = line.words[1];
  for (int i = 0; i < count; ++i) {
    // The handler may unload the window or stop the timer: look again each time.
    const Target now = Resolve(line, timerName, true);
    auto* timer = static_cast<Timer*>(now.control);
    if (!timer || !now.form->Loaded() || !timer->Enabled || timer->Interval <= 0) continue;
    program_->RunEvent([timer] {
      if (timer->Tick) timer->Tick();
    });
  }
}

void ScriptRunner::StoreCommand(const Line& line) {
  Expect(line, 2, 2);
  const QString path = Path(QStringLiteral("Kuvo.Mdb"));
  for (const QString& suffix : {QString(), QStringLiteral("-wal"), QStringLiteral("-shm")})
    QFile::remove(path + suffix);
  if (line.words[1] == QLatin1String("new")) {
    CreateStore(path, ShippedSchema());
  } else if (line.words[1] == QLatin1String("installed")) {
    CreateStore(path, ShippedSchema(), ShippedHistory());
  } else {
    throw ScriptError(line.number, QStringLiteral("store new|installed"));
  }
}

void ScriptRunner::SqlCommand(const Line& line) {
  Expect(line, 2, 2);
  // What the program wrote is on the file before anyone else looks.
  if (program_->M().BaseDonnees) program_->M().BaseDonnees->CommitPending();
  sqlite3* db = nullptr;
  const QByteArray path = Path(QStringLiteral("Kuvo.Mdb")).toUtf8();
  if (sqlite3_open_v2(path.constData(), &db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
    sqlite3_close(db);
    throw ScriptError(line.number, QStringLiteral("no store to run sql on"));
  }
  sqlite3_busy_timeout(db, 2000);
  const QByteArray sql = line.words[1].toUtf8();
  const char* tail = sql.constData();
  while (tail && *tail) {
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(db, tail, -1, &stmt, &tail) != SQLITE_OK) {
      const QString message = QString::fromUtf8(sqlite3_errmsg(db));
      sqlite3_close(db);
      throw ScriptError(line.number, QStringLiteral("sql: %1").arg(message));
    }
    if (!stmt) break;
    int rc;
    while ((rc = sqlite3_step(stmt)) == SQLITE_ROW) {
      QStringList fields;
      for (int c = 0; c < sqlite3_column_count(stmt); ++c) {
        const unsigned char* t = sqlite3_column_text(stmt, c);
        fields << (t ? QString::fromUtf8(reinterpret_cast<const char*>(t)) : QString());
      }
      Write(fields.join(QLatin1Char('|')));
    }
    sqlite3_finalize(stmt);
    if (rc != SQLITE_DONE) {
      const QString message = QString::fromUtf8(sqlite3_errmsg(db));
      sqlite3_close(db);
      throw ScriptError(line.number, QStringLiteral("sql: %1").arg(message));
    }
  }
  sqlite3_close(db);
}

bool ScriptRunner::Blocked(const Form& form) const {
  const auto& stack = platform_->modalStack;
  return !stack.empty() && stack.back() != &form;
}

void ScriptRunner::Ignored(const QString& name) { Write(QStringLiteral("IGNORED %1").arg(name)); }

ScriptRunner::Target ScriptRunner::Resolve(const Line& line, const QString& address,
                                           bool needControl) {
  static const QRegularExpression re(QStringLiteral(
      "^([A-Za-z_][A-Za-z0-9_]*)(?:\\.([A-Za-z_][A-Za-z0-9_]*)(?:\\((-?\\d+)\\))?)?$"));
  const QRegularExpressionMatch m = re.match(address);
  if (!m.hasMatch()) throw ScriptError(line.number, QStringLiteral("bad name %1").arg(address));
  Target t;
  t.formName = m.captured(1);
  if (!program_->FormNames().contains(t.formName))
    throw ScriptError(line.number, QStringLiteral("no window %1").arg(t.formName));
  if (needControl && m.captured(2).isEmpty())
    throw ScriptError(line.number, QStringLiteral("%1 names no control").arg(address));
  t.form = program_->FormByName(t.formName, true);
  if (!t.form || !t.form->Loaded()) return t;
  if (!m.captured(2).isEmpty()) {
    const int index = m.captured(3).isEmpty() ? -1 : m.captured(3).toInt();
    t.control = t.form->FindControl(m.captured(2), index);
    if (!t.control) throw ScriptError(line.number, QStringLiteral("no control %1").arg(address));
  }
  return t;
}

// The word counts and forms that don't depend on the kind of control named.
void ScriptRunner::CheckUserWords(const Line& line) {
  const QString& cmd = line.words[0];
  const auto n = line.words.size();
  if (cmd == QLatin1String("click")) {
    Expect(line, 2, 3);
  } else if (cmd == QLatin1String("type")) {
    Expect(line, 3, 3);
  } else if (cmd == QLatin1String("key")) {
    Expect(line, 3, 3);
    ParseInt(line.words[2], line.number);
  } else if (cmd == QLatin1String("mouse")) {
    Expect(line, 3, 6);
    const QString& what = line.words[2];
    if (what != QLatin1String("down") && what != QLatin1String("up") &&
        what != QLatin1String("move"))
      throw ScriptError(line.number, QStringLiteral("mouse down|up|move"));
    // X and Y come last, as numbers; an item (on a list) may stand before them.
    if (n >= 5) {
      ParseDouble(line.words[n - 2], line.number);
      ParseDouble(line.words[n - 1], line.number);
    }
  }
}

void ScriptRunner::UserCommand(const Line& line) {
  const QString& cmd = line.words[0];
  if (cmd == QLatin1String("start")) {
    Expect(line, 1, 1);
    program_->Start();
    return;
  }

  if (cmd == QLatin1String("menu") || cmd == QLatin1String("toolbar")) {
    Expect(line, 2, 2);
    Form* main = program_->FormByName(QStringLiteral("MDIKuvo"), false);
    const bool up = main && main->Loaded() && main->Visible && main->Enabled && !Blocked(*main);
    if (cmd == QLatin1String("menu")) {
      Control* c = up ? main->FindControl(line.words[1]) : nullptr;
      if (up && (!c || c->Kind() != ControlKind::Menu))
        throw ScriptError(line.number, QStringLiteral("no menu entry %1").arg(line.words[1]));
      bool reachable = up && c->Enabled && c->Visible;
      for (Menu* p = up ? static_cast<Menu*>(c)->ParentMenu : nullptr; p; p = p->ParentMenu)
        reachable = reachable && p->Enabled && p->Visible;
      if (!reachable) return Ignored(line.words[1]);
      program_->RunEvent([c] { c->UserClick(); });
    } else {
      const int n = ParseInt(line.words[1], line.number);
      if (!up) return Ignored(QStringLiteral("Toolbar2(%1)").arg(n));
      Toolbar& bar = program_->Win<MDIKuvo>().ui().Toolbar2;
      if (n < 1 || n > bar.ButtonCount())
        throw ScriptError(line.number, QStringLiteral("no toolbar button %1").arg(n));
      if (!bar.Reachable() || !bar.Buttons(n).Enabled)
        return Ignored(QStringLiteral("Toolbar2(%1)").arg(n));
      // A separator can be clicked like any part of the bar; it runs nothing.
      if (bar.Buttons(n).Style == 3) return;
      program_->RunEvent([&bar, n] { bar.UserClick(n); });
    }
    return;
  }

  if (cmd == QLatin1String("close")) {
    Expect(line, 2, 2);
    Target t = Resolve(line, line.words[1], false);
    if (!t.form || !t.form->Loaded() || !t.form->Visible || Blocked(*t.form))
      return Ignored(line.words[1]);
    Form* form = t.form;
    program_->RunEvent([form] { form->UserClose(); });
    return;
  }

  Expect(line, 2);
  // A malformed line is malformed whatever the state of the window it names.
  CheckUserWords(line);
  Target t = Resolve(line, line.words[1], true);
  Control* c = t.control;
  if (!c || !c->Reachable() || Blocked(*t.form)) return Ignored(line.words[1]);

  if (cmd == QLatin1String("click")) {
    Expect(line, 2, 3);
    const QString arg = line.words.value(2);
    const bool hasArg = line.words.size() == 3;
    switch (c->Kind()) {
      case ControlKind::Toolbar: {
        if (!hasArg) throw ScriptError(line.number, QStringLiteral("click a toolbar needs a key"));
        auto* bar = static_cast<Toolbar*>(c);
        int index = -1;
        for (int i = 1; i <= bar->ButtonCount(); ++i)
          if (bar->Buttons(i).Key == arg) index = i;
        if (index < 0) {
          bool ok = false;
          index = arg.toInt(&ok);
          if (!ok || index < 1 || index > bar->ButtonCount())
            throw ScriptError(line.number, QStringLiteral("no key %1").arg(arg));
        }
        if (bar->Buttons(index).Style == 3 || !bar->Buttons(index).Enabled)
          return Ignored(line.words[1]);
        program_->RunEvent([bar, index] { bar->UserClick(index); });
        return;
      }
      case ControlKind::Calendar: {
        if (!hasArg) throw ScriptError(line.number, QStringLiteral("click a calendar needs a day"));
        const QDate day = ParseIsoDate(arg, line.number);
        auto* cal = static_cast<Calendar*>(c);
        program_->RunEvent([cal, day] { cal->UserPick(day); });
        return;
      }
      case ControlKind::Grid: {
        auto* grid = static_cast<Grid*>(c);
        const int row = hasArg ? ParseInt(arg, line.number) : grid->Row;
        if (row < 0 || row >= grid->Rows())
          throw ScriptError(line.number, QStringLiteral("no row %1").arg(row));
        // The click lands in the current column; a row under the fixed rows
        // is a click on the heading.
        const int col = std::max(grid->Col, std::min(grid->FixedCols, grid->Cols() - 1));
        program_->RunEvent([grid, row, col] { grid->UserClick(row, col); });
        return;
      }
      case ControlKind::ComboBox:
      case ControlKind::ListBox: {
        if (!hasArg) throw ScriptError(line.number, QStringLiteral("click a list needs an item"));
        auto* list = static_cast<ListControl*>(c);
        int index = -1;
        if (arg.startsWith(QLatin1Char('#')))
          index = ParseInt(arg.mid(1), line.number);
        else
          index = static_cast<int>(list->List.indexOf(arg));
        if (index < 0 || index >= list->ListCount())
          throw ScriptError(line.number, QStringLiteral("no item %1").arg(arg));
        program_->RunEvent([list, index] { list->UserPick(index); });
        return;
      }
      default:
        // Options and check boxes have their own click.
        program_->RunEvent([c] { c->UserClick(); });
        return;
    }
  }

  if (cmd == QLatin1String("type")) {
    Expect(line, 3, 3);
    const QString text = line.words[2];
    if (c->Kind() == ControlKind::TextBox) {
      auto* box = static_cast<TextBox*>(c);
      if (box->Locked) return Ignored(line.words[1]);
      program_->RunEvent([box, text] { box->UserType(text); });
    } else if (c->Kind() == ControlKind::ComboBox && static_cast<ComboBox*>(c)->Style != 2) {
      auto* combo = static_cast<ComboBox*>(c);
      program_->RunEvent([combo, text] { combo->UserType(text); });
    } else {
      Ignored(line.words[1]);
    }
    return;
  }

  if (cmd == QLatin1String("key")) {
    Expect(line, 3, 3);
    const int code = ParseInt(line.words[2], line.number);
    program_->RunEvent([c, code] {
      // What the handler lets through reaches a text box as typing does.
      if (c->Kind() == ControlKind::TextBox)
        static_cast<TextBox*>(c)->UserKeyAtEnd(ToInt16(code));
      else
        c->UserKey(ToInt16(code));
    });
    return;
  }

  if (cmd == QLatin1String("mouse")) {
    Expect(line, 3, 6);
    const QString what = line.words[2];
    // On a list box an item may come first: the press or release falls on it.
    const bool onList = c->Kind() == ControlKind::ListBox;
    const bool hasItem = onList && (line.words.size() == 4 || line.words.size() == 6);
    int item = -1;
    if (hasItem) {
      auto* list = static_cast<ListControl*>(c);
      const QString arg = line.words[3];
      item = arg.startsWith(QLatin1Char('#')) ? ParseInt(arg.mid(1), line.number)
                                              : static_cast<int>(list->List.indexOf(arg));
      if (item < 0 || item >= list->ListCount())
        throw ScriptError(line.number, QStringLiteral("no item %1").arg(arg));
      if (what == QLatin1String("move"))
        throw ScriptError(line.number, QStringLiteral("mouse on an item: down or up"));
    }
    const int at = hasItem ? 4 : 3;
    double x = 0, y = 0;
    if (line.words.size() == at + 2) {
      x = ParseDouble(line.words[at], line.number);
      y = ParseDouble(line.words[at + 1], line.number);
    } else if (line.words.size() != at) {
      throw ScriptError(line.number, QStringLiteral("mouse takes X and Y together"));
    }
    if (hasItem && what == QLatin1String("down")) {
      auto* list = static_cast<ListControl*>(c);
      program_->RunEvent([list, item, x, y] { list->UserPress(item, 1, 0, x, y); });
      return;
    }
    if (what == QLatin1String("down"))
      program_->RunEvent([c, x, y] { c->UserMouseDown(1, 0, x, y); });
    else if (what == QLatin1String("up"))
      program_->RunEvent([c, x, y] { c->UserMouseUp(1, 0, x, y); });
    else if (what == QLatin1String("move"))
      program_->RunEvent([c, x, y] { c->UserMouseMove(0, 0, x, y); });
    else
      throw ScriptError(line.number, QStringLiteral("mouse down|up|move"));
    return;
  }
  throw ScriptError(line.number, QStringLiteral("unknown command %1").arg(cmd));
}

void ScriptRunner::GetCommand(const Line& line) {
  Expect(line, 2);
  // "TextMatrix(1, 0)" written with a blank is still one name.
  const QString name = Normalise(line.words.mid(1).join(QString()));
  const int dot = static_cast<int>(name.indexOf(QLatin1Char('.')));
  if (dot < 0) throw ScriptError(line.number, QStringLiteral("bad name %1").arg(name));
  const QString owner = name.left(dot);
  const QString rest = name.mid(dot + 1);
  if (owner == QLatin1String("Screen")) {
    if (rest != QLatin1String("MousePointer"))
      throw ScriptError(line.number, QStringLiteral("no property %1").arg(name));
    Write(QStringLiteral("%1 = %2").arg(name).arg(platform_->MousePointer()));
    return;
  }
  std::optional<PropValue> found;
  auto sink = [&](const QString& n, const PropValue& v) {
    if (!found && n == rest) found = v;
  };
  if (owner == QLatin1String("Module1")) {
    program_->M().Describe(sink);
  } else {
    if (!program_->FormNames().contains(owner))
      throw ScriptError(line.number, QStringLiteral("no window %1").arg(owner));
    Form* form = program_->FormByName(owner, true);
    if (form) form->Describe(sink);
    if (!found && (!form || !form->Loaded())) found = PropValue::NotLoaded();
  }
  if (!found) throw ScriptError(line.number, QStringLiteral("no property %1").arg(name));
  Write(QStringLiteral("%1 = %2").arg(name, found->Format()));
}

void ScriptRunner::DumpCommand(const Line& line) {
  Expect(line, 2, 2);
  const QString what = line.words[1];
  if (what == QLatin1String("printer")) {
    for (const QString& s : platform_->printer().Record()) Write(s);
    return;
  }
  if (what.contains(QLatin1Char('.'))) return DumpControl(line);
  std::vector<std::pair<QString, QString>> rows;
  auto sink = [&](const QString& n, const PropValue& v) {
    rows.emplace_back(what + QLatin1Char('.') + n, v.Format());
  };
  if (what == QLatin1String("Module1")) {
    program_->M().Describe(sink);
  } else {
    if (!program_->FormNames().contains(what))
      throw ScriptError(line.number, QStringLiteral("no window %1").arg(what));
    Form* form = program_->FormByName(what, true);
    if (!form) {
      rows.emplace_back(what + QStringLiteral(".Loaded"), PropValue::NotLoaded().Format());
    } else {
      form->Describe(sink);
    }
  }
  std::stable_sort(rows.begin(), rows.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  for (const auto& [n, v] : rows) Write(QStringLiteral("%1 = %2").arg(n, v));
}

namespace {

// A coordinate of a drawing: two decimals and a point, never "-0.00".
QString Coordinate(double value) {
  QString text = QString::number(value, 'f', 2);
  if (text == QLatin1String("-0.00")) text.remove(0, 1);
  return text;
}

}  // namespace

void ScriptRunner::DumpControl(const Line& line) {
  const QString& what = line.words[1];
  Target t = Resolve(line, what, true);
  if (!t.control) {
    Write(QStringLiteral("%1 = %2").arg(what, PropValue::NotLoaded().Format()));
    return;
  }
  if (t.control->Kind() == ControlKind::DrawingArea) {
    // What the area holds since its last Cls, in drawing order, as drawn.
    const auto& boxes = static_cast<const DrawingArea*>(t.control)->Boxes();
    if (boxes.empty()) Write(what + QStringLiteral(" EMPTY"));
    for (const DrawingArea::Box& b : boxes)
      Write(QStringLiteral("%1 BOX %2 %3 %4 %5 %6")
                .arg(what, Coordinate(std::min(b.x1, b.x2)), Coordinate(std::min(b.y1, b.y2)),
                     Coordinate(std::max(b.x1, b.x2)), Coordinate(std::max(b.y1, b.y2)),
                     PropValue::Colour(b.colour).Format()));
    return;
  }
  // Any other control: its properties, sorted by name.
  std::vector<std::pair<QString, QString>> rows;
  t.control->Describe([&](const QString& n, const PropValue& v) {
    rows.emplace_back(what + QLatin1Char('.') + n, v.Format());
  });
  std::stable_sort(rows.begin(), rows.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  for (const auto& [n, v] : rows) Write(QStringLiteral("%1 = %2").arg(n, v));
}

}  // namespace kuvo
