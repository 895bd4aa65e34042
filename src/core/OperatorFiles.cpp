#include "core/OperatorFiles.h"

#include <QHash>
#include <QStringDecoder>
#include <algorithm>
#include <cstdio>

namespace kuvo::convert {

namespace {

using View = QByteArrayView;

QString BallColumn(int k) { return QStringLiteral("boule_%1").arg(k); }

QString DayText(const QDate& d) { return d.toString(QStringLiteral("dd/MM/yyyy")); }

// The file as UTF-8: as it is when it is UTF-8, from Latin-1 otherwise; without
// a byte-order mark.
QByteArray AsUtf8(const QByteArray& bytes) {
  QByteArray text = bytes;
  if (text.startsWith("\xEF\xBB\xBF")) text.remove(0, 3);
  QStringDecoder utf8(QStringDecoder::Utf8);
  const QString decoded = utf8(text);
  if (utf8.hasError()) text = QString::fromLatin1(text).toUtf8();
  return text;
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f'; }

View Trimmed(View v) {
  while (!v.isEmpty() && IsBlank(v.front())) v = v.sliced(1);
  while (!v.isEmpty() && IsBlank(v.back())) v.chop(1);
  return v;
}

// Cuts `line` at every ";" into `fields`, empty fields kept.
void Split(View line, std::vector<View>& fields) {
  fields.clear();
  for (;;) {
    const qsizetype at = line.indexOf(';');
    if (at < 0) break;
    fields.push_back(line.first(at));
    line = line.sliced(at + 1);
  }
  fields.push_back(line);
}

bool AllDigits(View v) {
  if (v.isEmpty()) return false;
  for (char c : v)
    if (c < '0' || c > '9') return false;
  return true;
}

int Value(View digits) {
  int n = 0;
  for (char c : digits) n = n * 10 + (c - '0');
  return n;
}

// A date as YYYYMMDD or DD/MM/YYYY; an invalid date for any other text.
QDate ParseDate(View t) {
  if (t.size() == 8 && AllDigits(t))
    return QDate(Value(t.first(4)), Value(t.sliced(4, 2)), Value(t.sliced(6, 2)));
  const qsizetype a = t.indexOf('/');
  if (a < 1 || a > 2) return {};
  const View rest = t.sliced(a + 1);
  const qsizetype b = rest.indexOf('/');
  if (b < 1 || b > 2) return {};
  const View day = t.first(a), month = rest.first(b), year = rest.sliced(b + 1);
  if (year.size() != 4 || !AllDigits(day) || !AllDigits(month) || !AllDigits(year)) return {};
  return QDate(Value(year), Value(month), Value(day));
}

// A whole number from `low` to `high` written with digits only; 0 otherwise.
int ParseNumber(View text, int low, int high) {
  if (text.size() > 3 || !AllDigits(text)) return 0;
  const int n = Value(text);
  return n >= low && n <= high ? n : 0;
}

void AppendNumber(QByteArray& out, int n) {
  if (n >= 10) out += char('0' + n / 10);
  out += char('0' + n % 10);
}

void AppendDate(QByteArray& out, const QDate& d) {
  char text[9];
  std::snprintf(text, sizeof text, "%04d%02d%02d", d.year(), d.month(), d.day());
  out.append(text, 8);
}

QString DrawText(const Draw& d) {
  QStringList numbers;
  for (int n : d.numbers) numbers << QString::number(n);
  return QStringLiteral("%1, chance %2").arg(numbers.join(QLatin1Char('-'))).arg(d.chance);
}

// The columns of one file, found by their names in its header.
class Header {
 public:
  Header(const QString& name, View line) : file_(name) {
    std::vector<View> fields;
    Split(line, fields);
    for (View f : fields) names_ << QString::fromUtf8(Trimmed(f)).remove(QChar(0xFEFF)).trimmed();
    if (names_.size() > 1 && names_.last().isEmpty()) names_.removeLast();  // a closing ";"
    for (int i = 0; i < names_.size(); ++i) {
      const QString lower = names_[i].toLower();
      if (!index_.contains(lower)) index_.insert(lower, i);
    }

    // The game before October 2008 drew six numbers and a complementary one.
    if (!Has(QStringLiteral("numero_chance")) &&
        (Has(BallColumn(6)) || Has(QStringLiteral("boule_complementaire"))))
      throw ConvertError(
          QStringLiteral("%1 : ce fichier est celui de l'ancien jeu, d'avant octobre 2008 (six "
                         "numéros et un numéro complémentaire, sans numéro chance). Kuvo ne "
                         "tient que les tirages du jeu actuel, depuis le 6 octobre 2008.")
              .arg(file_));
    QStringList needed = {QStringLiteral("date_de_tirage")};
    for (int k = 1; k <= 5; ++k) needed << BallColumn(k);
    needed << QStringLiteral("numero_chance");
    for (const QString& column : needed)
      if (!Has(column))
        throw ConvertError(QStringLiteral("%1, ligne 1 : la colonne « %2 » manque dans l'en-tête.")
                               .arg(file_, column));
  }

  bool Has(const QString& lowerName) const { return index_.contains(lowerName); }
  int Index(const QString& lowerName) const { return index_.value(lowerName, -1); }
  // The column's name as the file writes it, for the messages.
  const QString& Name(int index) const { return names_[index]; }
  int Size() const { return static_cast<int>(names_.size()); }

 private:
  QString file_;
  QStringList names_;
  QHash<QString, int> index_;  // lower-case name to position; the first one counts
};

// Reads the lines of draws of one file against its header, and writes each
// draw's line in the layout of table Kuvo.
class LineReader {
 public:
  LineReader(const QString& file, const Header& header) : file_(file), header_(header) {
    date_ = header_.Index(QStringLiteral("date_de_tirage"));
    for (int k = 0; k < 5; ++k) balls_[k] = header_.Index(BallColumn(k + 1));
    chance_ = header_.Index(QStringLiteral("numero_chance"));
    // What goes into each column of Kuvo: made here, or copied by name.
    for (const QString& column : KuvoColumns()) {
      const QString lower = column.toLower();
      Column c;
      if (lower == QLatin1String("date_de_tirage")) {
        c.kind = Kind::Date;
      } else if (lower == QLatin1String("date_de_forclusion")) {
        c.kind = Kind::Forclusion;
        c.source = header_.Index(lower);
      } else if (lower.startsWith(QLatin1String("boule_"))) {
        c.kind = Kind::Ball;
        c.source = lower.mid(6).toInt() - 1;
      } else if (lower == QLatin1String("numero_chance")) {
        c.kind = Kind::Chance;
      } else if (lower == QLatin1String("combinaison_gagnante_en_ordre_croissant")) {
        c.kind = Kind::Combination;
      } else {
        c.source = header_.Index(lower);
      }
      columns_.push_back(c);
    }
  }

  Draw Read(View line, int number) {
    line_ = number;
    Split(line, fields_);
    const qsizetype size = header_.Size();
    if (static_cast<qsizetype>(fields_.size()) == size + 1 && Trimmed(fields_.back()).isEmpty())
      fields_.pop_back();  // the closing ";"
    if (static_cast<qsizetype>(fields_.size()) != size) {
      qsizetype count = static_cast<qsizetype>(fields_.size());
      if (Trimmed(fields_.back()).isEmpty()) --count;  // a closing ";" is no field
      throw ConvertError(QStringLiteral("%1, ligne %2 : %3 champs, l'en-tête en annonce %4.")
                             .arg(file_)
                             .arg(line_)
                             .arg(count)
                             .arg(size));
    }
    for (View& f : fields_) f = Trimmed(f);

    Draw draw;
    draw.file = file_;
    draw.line = line_;
    draw.date = DateOf(date_);
    for (int k = 0; k < 5; ++k) {
      const int n = ParseNumber(fields_[balls_[k]], 1, 49);
      if (n == 0) Fail(balls_[k], QStringLiteral("n'est pas un numéro de 1 à 49"));
      for (int j = 0; j < k; ++j)
        if (draw.numbers[j] == n)
          Fail(balls_[k],
               QStringLiteral("est déjà sorti dans ce tirage (%1)").arg(header_.Name(balls_[j])));
      draw.numbers[k] = n;
    }
    draw.chance = ParseNumber(fields_[chance_], 1, 10);
    if (draw.chance == 0) Fail(chance_, QStringLiteral("n'est pas un numéro chance de 1 à 10"));

    QByteArray& out = draw.text;
    out.reserve(line.size() + 16);
    for (size_t c = 0; c < columns_.size(); ++c) {
      if (c > 0) out += ';';
      const Column& column = columns_[c];
      switch (column.kind) {
        case Kind::Date: AppendDate(out, draw.date); break;
        case Kind::Forclusion:
          if (column.source >= 0 && !fields_[column.source].isEmpty())
            AppendDate(out, DateOf(column.source));
          break;
        case Kind::Ball: AppendNumber(out, draw.numbers[column.source]); break;
        case Kind::Chance: AppendNumber(out, draw.chance); break;
        case Kind::Combination: {
          std::array<int, 5> sorted = draw.numbers;
          std::sort(sorted.begin(), sorted.end());
          for (int k = 0; k < 5; ++k) {
            if (k > 0) out += '-';
            AppendNumber(out, sorted[k]);
          }
          out += '+';
          AppendNumber(out, draw.chance);
          break;
        }
        case Kind::Copy:
          if (column.source >= 0) out += fields_[column.source];
          break;
      }
    }
    return draw;
  }

 private:
  enum class Kind { Copy, Date, Forclusion, Ball, Chance, Combination };
  struct Column {
    Kind kind = Kind::Copy;
    int source = -1;  // the file's column; for a ball, its place in the draw
  };

  [[noreturn]] void Fail(int column, const QString& why) const {
    const QString value = QString::fromUtf8(fields_[column]);
    throw ConvertError(
        QStringLiteral("%1, ligne %2, champ %3 : %4 %5.")
            .arg(file_)
            .arg(line_)
            .arg(header_.Name(column),
                 value.isEmpty() ? QStringLiteral("« »") : QStringLiteral("« %1 »").arg(value),
                 why));
  }

  QDate DateOf(int column) const {
    const QDate date = ParseDate(fields_[column]);
    if (!date.isValid())
      Fail(column, QStringLiteral("n'est pas une date (AAAAMMJJ ou JJ/MM/AAAA)"));
    return date;
  }

  QString file_;
  const Header& header_;
  int date_ = -1, chance_ = -1;
  std::array<int, 5> balls_{};
  std::vector<Column> columns_;
  std::vector<View> fields_;
  int line_ = 0;
};

}  // namespace

const QStringList& KuvoColumns() {
  static const QStringList columns = [] {
    QStringList c = {QStringLiteral("annee_numero_de_tirage"), QStringLiteral("jour_de_tirage"),
                     QStringLiteral("date_de_tirage"), QStringLiteral("date_de_forclusion")};
    for (int k = 1; k <= 5; ++k) c << BallColumn(k);
    c << QStringLiteral("Numero_Chance")
      << QStringLiteral("combinaison_gagnante_en_ordre_croissant");
    for (int rank = 1; rank <= 6; ++rank)
      c << QStringLiteral("nombre_de_gagnant_au_rang%1").arg(rank)
        << QStringLiteral("rapport_du_rang%1").arg(rank);
    c << QStringLiteral("numero_jokerplus") << QStringLiteral("devise");
    return c;
  }();
  return columns;
}

std::vector<Draw> ReadHistory(const QString& name, const QByteArray& bytes) {
  const QByteArray text = AsUtf8(bytes);
  std::vector<View> lines;
  {
    View rest(text);
    for (;;) {
      const qsizetype at = rest.indexOf('\n');
      View line = at < 0 ? rest : rest.first(at);
      if (line.endsWith('\r')) line.chop(1);
      lines.push_back(line);
      if (at < 0) break;
      rest = rest.sliced(at + 1);
    }
  }
  bool blank = true;
  for (View line : lines) blank = blank && Trimmed(line).isEmpty();
  if (blank) throw ConvertError(QStringLiteral("%1 : le fichier est vide.").arg(name));

  const Header header(name, lines[0]);
  LineReader reader(name, header);
  std::vector<Draw> draws;
  draws.reserve(lines.size());
  for (size_t i = 1; i < lines.size(); ++i) {
    if (Trimmed(lines[i]).isEmpty()) continue;
    draws.push_back(reader.Read(lines[i], static_cast<int>(i + 1)));
  }
  if (draws.empty())
    throw ConvertError(QStringLiteral("%1 : aucun tirage après la ligne d'en-tête.").arg(name));
  return draws;
}

void History::Add(std::vector<Draw> draws) {
  for (Draw& draw : draws) {
    auto it = byDate_.find(draw.date);
    if (it == byDate_.end()) {
      const QDate date = draw.date;
      byDate_.emplace(date, std::move(draw));
      continue;
    }
    const Draw& first = it->second;
    if (first.numbers != draw.numbers || first.chance != draw.chance)
      throw ConvertError(
          QStringLiteral("le tirage du %1 n'a pas les mêmes numéros dans %2, ligne %3 (%4) et "
                         "dans %5, ligne %6 (%7).")
              .arg(DayText(draw.date), first.file)
              .arg(first.line)
              .arg(DrawText(first), draw.file)
              .arg(draw.line)
              .arg(DrawText(draw)));
  }
}

QDate History::First() const { return byDate_.empty() ? QDate() : byDate_.begin()->first; }

QDate History::Last() const { return byDate_.empty() ? QDate() : byDate_.rbegin()->first; }

QByteArray History::Render() const {
  QByteArray out = KuvoColumns().join(QLatin1Char(';')).toUtf8() + ";\n";
  qsizetype size = out.size();
  for (const auto& [date, draw] : byDate_) size += draw.text.size() + 2;
  out.reserve(size);
  for (auto it = byDate_.rbegin(); it != byDate_.rend(); ++it) {
    out += it->second.text;
    out += ";\n";
  }
  return out;
}

bool IsOperatorFile(const QByteArray& bytes, int kuvoColumns) {
  View rest(bytes);
  if (rest.startsWith("\xEF\xBB\xBF")) rest = rest.sliced(3);
  auto nextLine = [&rest]() {
    const qsizetype at = rest.indexOf('\n');
    const View line = at < 0 ? rest : rest.first(at);
    rest = at < 0 ? View() : rest.sliced(at + 1);
    return line;
  };

  // The header's names, as the reader takes them.
  std::vector<View> fields;
  Split(nextLine(), fields);
  QStringList names;
  for (View f : fields) names << QString::fromUtf8(Trimmed(f)).remove(QChar(0xFEFF)).trimmed();
  if (names.size() > 1 && names.last().isEmpty()) names.removeLast();  // a closing ";"
  auto index = [&names](const QString& name) {
    for (int i = 0; i < names.size(); ++i)
      if (names[i].compare(name, Qt::CaseInsensitive) == 0) return i;
    return -1;
  };
  const int date = index(QStringLiteral("date_de_tirage"));
  if (date < 0) return false;
  for (int k = 1; k <= 5; ++k)
    if (index(BallColumn(k)) < 0) return false;
  const bool current = index(QStringLiteral("numero_chance")) >= 0;
  const bool older =
      index(BallColumn(6)) >= 0 || index(QStringLiteral("boule_complementaire")) >= 0;
  if (!current && !older) return false;
  if (names.size() > kuvoColumns) return true;

  // The date of the first draw, written day first.
  while (!rest.isEmpty()) {
    const View line = nextLine();
    if (Trimmed(line).isEmpty()) continue;
    Split(line, fields);
    if (date >= static_cast<int>(fields.size())) return false;
    const View t = Trimmed(fields[static_cast<size_t>(date)]);
    const qsizetype a = t.indexOf('/');
    if (a < 1 || a > 2) return false;
    const View month = t.sliced(a + 1);
    const qsizetype b = month.indexOf('/');
    if (b < 1 || b > 2) return false;
    const View year = month.sliced(b + 1);
    return year.size() == 4 && AllDigits(t.first(a)) && AllDigits(month.first(b)) &&
           AllDigits(year);
  }
  return false;
}

}  // namespace kuvo::convert
