// The database: opening a file, opening sets on it, running statements, and
// making a new store from the schema.
#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>

#include "core/JetSql.h"
#include "core/Store.h"
#include "core/StoreConnection.h"
#include "core/StoreRecordset.h"
#include "core/StoreValue.h"

// The schema and the shipped draw history are compiled in as Qt resources;
// a static library needs them registered by hand.
static void InitStoreResources() {
  static const bool done = [] {
    Q_INIT_RESOURCE(store);
    return true;
  }();
  (void)done;
}

namespace kuvo {

using namespace store;

namespace {

bool StartsWithWord(const QString& text, QLatin1String word) {
  const QString t = text.trimmed();
  if (!t.startsWith(word, Qt::CaseInsensitive)) return false;
  return t.size() == word.size() ||
         !(t[word.size()].isLetterOrNumber() || t[word.size()] == QLatin1Char('_'));
}

}  // namespace

Database::Database() = default;

void Database::SetClock(std::function<QDate()> today) { today_ = std::move(today); }

int Database::CurrentYear() const { return (today_ ? today_() : QDate::currentDate()).year(); }

Database::~Database() {
  if (!c_) return;
  if (c_->unit) c_->RollbackUnit();
  c_->CommitQuietly();
}

std::unique_ptr<Database> Database::OpenDatabase(const QString& path) {
  if (!QFileInfo(path).isFile())
    Raise(Err::FileNotFoundDb, QStringLiteral("Fichier '%1' introuvable.").arg(path));
  sqlite3* db = nullptr;
  const int rc = sqlite3_open_v2(path.toUtf8().constData(), &db,
                                 SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  if (rc != SQLITE_OK) {
    const QString message = db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString();
    sqlite3_close_v2(db);
    if (rc == SQLITE_CANTOPEN)
      Raise(Err::FileNotFoundDb, QStringLiteral("Fichier '%1' introuvable.").arg(path));
    const auto [number, text] = JetError(rc, message, false);
    Raise(number, text);
  }
  std::unique_ptr<Database> store(new Database());
  store->c_ = std::make_shared<StoreConnection>(db);
  store->c_->Setup(true);
  return store;
}

std::shared_ptr<Recordset> Database::OpenRecordset(const QString& source) {
  auto d = std::make_unique<Recordset::Impl>();
  d->c = c_;
  StoreConnection& c = *c_;
  if (!StartsWithWord(source, QLatin1String("select"))) {
    QString name = source.trimmed();
    if (name.startsWith(QLatin1Char('[')) && name.endsWith(QLatin1Char(']')))
      name = name.mid(1, name.size() - 2);
    d->t = c.Table(name);
    d->kind = Recordset::Impl::Kind::Table;
    d->columns = &d->t->columns;
    d->order = &d->t->rowidOrder;
    d->state = Recordset::Impl::State::Pending;
    return std::shared_ptr<Recordset>(new Recordset(std::move(d)));
  }

  // A statement may read any table: every waiting write is sent first.
  c.FlushAll();
  JetTranslation jet;
  try {
    jet = TranslateJet(source, CurrentYear());
  } catch (const VbError& e) {
    c.Fail(e.Number(), e.Description());
  }
  if (!jet.baseTable.isEmpty()) {
    d->t = c.Table(jet.baseTable);
    d->kind = Recordset::Impl::Kind::Statement;
    d->columns = &d->t->columns;
  } else {
    d->kind = Recordset::Impl::Kind::Snapshot;
  }
  const QByteArray sql = jet.sql.toUtf8();
  sqlite3_stmt* st = nullptr;
  if (sqlite3_prepare_v2(c.db, sql.constData(), static_cast<int>(sql.size()), &st, nullptr) !=
      SQLITE_OK) {
    sqlite3_finalize(st);
    c.FailSqlite(sqlite3_extended_errcode(c.db), true);
  }
  if (!st) c.Fail(3129, QStringLiteral("Instruction SQL non valide (vide)."));
  if (d->kind == Recordset::Impl::Kind::Snapshot) {
    const int n = sqlite3_column_count(st);
    for (int i = 0; i < n; ++i)
      d->snapshotColumns.push_back(Column{QString::fromUtf8(sqlite3_column_name(st, i)),
                                          TypeOf(sqlite3_column_decltype(st, i))});
    d->columns = &d->snapshotColumns;
  }
  int rc;
  while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
    if (d->kind == Recordset::Impl::Kind::Statement) {
      d->ids.push_back(sqlite3_column_int64(st, 0));
    } else {
      std::vector<Cell> row(d->snapshotColumns.size());
      for (size_t i = 0; i < row.size(); ++i) ReadCell(st, static_cast<int>(i), row[i]);
      d->snapshot.push_back(std::move(row));
    }
  }
  sqlite3_finalize(st);
  if (rc != SQLITE_DONE) c.FailSqlite(sqlite3_extended_errcode(c.db), false);
  if (d->Size() > 0)
    d->GoTo(0);
  else
    d->state = Recordset::Impl::State::Eof;
  return std::shared_ptr<Recordset>(new Recordset(std::move(d)));
}

void Database::Execute(const QString& statement) {
  StoreConnection& c = *c_;
  JetTranslation jet;
  try {
    jet = TranslateJet(statement, CurrentYear());
  } catch (const VbError& e) {
    c.Fail(e.Number(), e.Description());
  }
  if (StartsWithWord(jet.sql, QLatin1String("select")))
    c.Fail(3065, QStringLiteral("Impossible d'exécuter une requête Sélection."));
  const bool schemaChange = StartsWithWord(jet.sql, QLatin1String("create")) ||
                            StartsWithWord(jet.sql, QLatin1String("drop")) ||
                            StartsWithWord(jet.sql, QLatin1String("alter"));
  c.BeforeWrite();
  ++c.otherWrites;
  // A statement may write any table: the kept rows go.
  c.ForgetAll();
  const QByteArray sql = jet.sql.toUtf8();
  const char* tail = sql.constData();
  const char* end = tail + sql.size();
  while (tail < end) {
    sqlite3_stmt* st = nullptr;
    if (sqlite3_prepare_v2(c.db, tail, static_cast<int>(end - tail), &st, &tail) != SQLITE_OK) {
      sqlite3_finalize(st);
      c.FailSqlite(sqlite3_extended_errcode(c.db), true);
    }
    if (!st) continue;  // blanks or a comment
    int rc;
    while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
    }
    sqlite3_finalize(st);
    if (rc != SQLITE_DONE) c.FailSqlite(sqlite3_extended_errcode(c.db), false);
  }
  if (schemaChange) c.tables.clear();
}

void Database::CommitPending() {
  c_->Commit();
  // Rows are kept for one event at most.
  c_->ForgetAll();
}

void Database::BeginUnit() { c_->BeginUnit(); }

void Database::CommitUnit() {
  c_->CommitUnit();
  c_->ForgetAll();
}

void Database::RollbackUnit() {
  if (c_->unit) c_->RollbackUnit();
}

bool Database::InUnit() const { return c_->unit; }

sqlite3* Database::Handle() const {
  c_->FlushAll();
  return c_->db;
}

// ---------------------------------------------------------------------------
// Creating a store.

void CreateStore(const QString& path, const QString& schemaSql, const QString& historyCsv) {
  const QString exists = QStringLiteral("Le fichier '%1' existe déjà.").arg(path);
  if (QFileInfo::exists(path)) Raise(3204, exists);
  {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
      if (QFileInfo::exists(path)) Raise(3204, exists);
      Raise(3044, QStringLiteral("'%1' n'est pas un chemin d'accès valide.").arg(path));
    }
  }
  try {
    sqlite3* db = nullptr;
    const int rc =
        sqlite3_open_v2(path.toUtf8().constData(), &db,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    if (rc != SQLITE_OK) {
      const QString message = db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString();
      sqlite3_close_v2(db);
      const auto [number, text] = JetError(rc, message, false);
      Raise(number, text);
    }
    std::unique_ptr<Database> store(new Database());
    store->c_ = std::make_shared<StoreConnection>(db);
    StoreConnection& c = *store->c_;
    c.Setup(false);
    c.holdCommits = true;
    c.BeforeWrite();
    char* error = nullptr;
    if (sqlite3_exec(db, schemaSql.toUtf8().constData(), nullptr, nullptr, &error) != SQLITE_OK) {
      sqlite3_free(error);
      c.FailSqlite(sqlite3_extended_errcode(db), true);
    }
    if (!historyCsv.isEmpty()) {
      auto set = store->OpenRecordset(QStringLiteral("Kuvo"));
      const QStringList lines = historyCsv.split(QLatin1Char('\n'));
      for (qsizetype i = 1; i < lines.size(); ++i) {
        QString line = lines[i];
        if (line.endsWith(QLatin1Char('\r'))) line.chop(1);
        if (line.isEmpty()) continue;
        line.chop(1);  // the ';' closing the line
        const QStringList fields = line.split(QLatin1Char(';'));
        set->AddNew();
        for (qsizetype f = 0; f < fields.size(); ++f)
          set->Fields(static_cast<int>(f)).SetValue(fields[f]);
        set->Update();
      }
      set->Close();
    }
    c.holdCommits = false;
    store->CommitPending();
  } catch (...) {
    // The file is ours: a store that could not be made is not left behind.
    QFile::remove(path);
    QFile::remove(path + QStringLiteral("-journal"));
    throw;
  }
}

namespace {

QString ReadResource(const QString& name) {
  ::InitStoreResources();
  QFile file(name);
  if (!file.open(QIODevice::ReadOnly))
    Raise(Err::FileNotFound, QStringLiteral("Ressource '%1' introuvable.").arg(name));
  return QString::fromUtf8(file.readAll());
}

}  // namespace

QString ShippedSchema() { return ReadResource(QStringLiteral(":/db/schema.sql")); }

QString ShippedHistory() { return ReadResource(QStringLiteral(":/db/history.csv")); }

}  // namespace kuvo
