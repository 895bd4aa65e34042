#include "core/StoreConnection.h"

#include <sqlite3.h>

#include "core/StoreKeptRows.h"
#include "core/StoreValue.h"
#include "core/Texts.h"

namespace kuvo {

using namespace store;

namespace {

// format(value, mask): a date (ISO text) through FormatDate, a number through
// FormatNumber; anything else comes back as it is.
void FormatFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
  try {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) {
      sqlite3_result_null(ctx);
      return;
    }
    const QString mask =
        QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_value_text(argv[1])));
    QString result;
    switch (sqlite3_value_type(argv[0])) {
      case SQLITE_INTEGER:
      case SQLITE_FLOAT: result = FormatNumber(sqlite3_value_double(argv[0]), mask); break;
      default: {
        const char* p = reinterpret_cast<const char*>(sqlite3_value_text(argv[0]));
        const std::string text(p, sqlite3_value_bytes(argv[0]));
        const QDate date = IsoDate(text);
        if (!date.isValid()) {
          sqlite3_result_value(ctx, argv[0]);
          return;
        }
        result = FormatDate(date, mask);
      }
    }
    const QByteArray utf8 = result.toUtf8();
    sqlite3_result_text(ctx, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
  } catch (const std::exception& e) {
    sqlite3_result_error(ctx, e.what(), -1);
  }
}

}  // namespace

std::pair<int, QString> JetError(int code, const QString& message, bool prepared) {
  switch (code & 0xff) {
    case SQLITE_CONSTRAINT:
      if (code == SQLITE_CONSTRAINT_UNIQUE || code == SQLITE_CONSTRAINT_PRIMARYKEY)
        return {3022, QStringLiteral("Les modifications n'ont pas abouti car elles créeraient des "
                                     "doublons dans l'index ou la clé primaire (%1).")
                          .arg(message)};
      if (code == SQLITE_CONSTRAINT_NOTNULL)
        return {3314, QStringLiteral("Un champ obligatoire est vide (%1).").arg(message)};
      return {3317,
              QStringLiteral("Une règle de validation interdit la valeur (%1).").arg(message)};
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return {
          3260,
          QStringLiteral("Mise à jour impossible ; la base est verrouillée (%1).").arg(message)};
    case SQLITE_READONLY:
      return {3027, QStringLiteral(
                        "Mise à jour impossible. La base de données est en lecture seule (%1).")
                        .arg(message)};
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
      return {3343, QStringLiteral("Format de base de données non reconnu (%1).").arg(message)};
    case SQLITE_FULL: return {3026, QStringLiteral("Espace disque insuffisant (%1).").arg(message)};
    case SQLITE_IOERR:
      return {3043, QStringLiteral("Erreur de disque ou de réseau (%1).").arg(message)};
    case SQLITE_CANTOPEN:
      return {3051,
              QStringLiteral("Le moteur de base de données ne peut pas ouvrir le fichier (%1).")
                  .arg(message)};
    case SQLITE_ERROR:
      if (message.startsWith(QLatin1String("no such table: ")))
        return {3078, QStringLiteral("Le moteur de base de données ne trouve pas la table ou la "
                                     "requête source '%1'.")
                          .arg(message.mid(15))};
      if (message.startsWith(QLatin1String("no such column: ")))
        return {
            3061,
            QStringLiteral("Trop peu de paramètres : champ '%1' inconnu.").arg(message.mid(16))};
      if (prepared) return {3129, QStringLiteral("Instruction SQL non valide (%1).").arg(message)};
      break;
    default: break;
  }
  return {3000, QStringLiteral("Erreur du moteur de base de données (%1).").arg(message)};
}

StoreConnection::~StoreConnection() {
  if (unit) RollbackUnit();
  CommitQuietly();
  for (auto& entry : statements) sqlite3_finalize(entry.second);
  sqlite3_close_v2(db);
}

void StoreConnection::Fail(int number, const QString& text) {
  CommitQuietly();
  Raise(number, text);
}

void StoreConnection::FailSqlite(int code, bool prepared) {
  const auto [number, text] = JetError(code, Message(), prepared);
  Fail(number, text);
}

void StoreConnection::Setup(bool wal) {
  sqlite3_extended_result_codes(db, 1);
  sqlite3_busy_timeout(db, 5000);
  if (wal) {
    if (int rc = sqlite3_exec(db, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL;", nullptr,
                              nullptr, nullptr);
        rc != SQLITE_OK)
      FailSqlite(sqlite3_extended_errcode(db), false);
  }
  // A page cache large enough for a long history's group tables, which a
  // compilation reaches all over at every commit.
  sqlite3_exec(db, "PRAGMA cache_size=-65536;", nullptr, nullptr, nullptr);
  sqlite3_create_function_v2(db, "format", 2, SQLITE_UTF8, nullptr, FormatFunction, nullptr,
                             nullptr, nullptr);
  begin = Prepare("BEGIN IMMEDIATE");
  beginRead = Prepare("BEGIN");
  commit = Prepare("COMMIT");
  dataVersion = Prepare("PRAGMA data_version");
  CheckOthers();
}

sqlite3_stmt* StoreConnection::Prepare(const std::string& sql) {
  auto it = statements.find(sql);
  if (it != statements.end()) return it->second;
  sqlite3_stmt* st = nullptr;
  const int rc = sqlite3_prepare_v3(db, sql.c_str(), static_cast<int>(sql.size() + 1),
                                    SQLITE_PREPARE_PERSISTENT, &st, nullptr);
  if (rc != SQLITE_OK) {
    sqlite3_finalize(st);
    FailSqlite(sqlite3_extended_errcode(db), true);
  }
  statements.emplace(sql, st);
  return st;
}

void StoreConnection::CommitQuietly() {
  if (unit || !InTransaction()) return;
  try {
    FlushAll();
  } catch (const VbError&) {
  }
  sqlite3_step(commit);
  sqlite3_reset(commit);
}

void StoreConnection::Commit() {
  if (!InTransaction()) return;
  FlushAll();
  if (unit) return;
  const int rc = sqlite3_step(commit);
  sqlite3_reset(commit);
  if (rc != SQLITE_DONE) {
    const auto [number, text] = JetError(sqlite3_extended_errcode(db), Message(), false);
    Raise(number, text);
  }
}

void StoreConnection::BeginUnit() {
  if (unit)
    Fail(3000, QStringLiteral("Erreur du moteur de base de données (une transaction est "
                              "déjà ouverte)."));
  // What the event wrote before the unit stands on its own.
  Commit();
  ++epoch;
  Step(begin);
  sqlite3_reset(begin);
  txStart = Clock::now();
  readOnly = false;
  unit = true;
  CheckOthers();
}

void StoreConnection::CommitUnit() {
  if (!unit) return;
  try {
    UnitGoesOn();
    FlushAll();
  } catch (const VbError&) {
    RollbackUnit();
    throw;
  }
  const int rc = sqlite3_step(commit);
  sqlite3_reset(commit);
  if (rc != SQLITE_DONE) {
    const auto [number, text] = JetError(sqlite3_extended_errcode(db), Message(), false);
    RollbackUnit();
    Raise(number, text);
  }
  unit = false;
}

void StoreConnection::RollbackUnit() {
  DropAll();
  if (InTransaction()) sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
  unit = false;
  // Every set reads its rows again.
  ++epoch;
  ++otherWrites;
}

void StoreConnection::DropAll() {
  for (const auto& t : keeping) t->kept.pending.clear();
  ForgetAll();
}

void StoreConnection::Keeping(TableInfo& t) {
  for (const auto& kept : keeping)
    if (kept.get() == &t) return;
  keeping.push_back(t.shared_from_this());
}

void StoreConnection::FlushAll() {
  for (const auto& t : keeping) Flush(*this, *t);
}

void StoreConnection::ForgetAll() {
  // Each table leaves the list only once its writes are sent.
  while (!keeping.empty()) {
    Forget(*this, *keeping.back());
    keeping.pop_back();
  }
}

void StoreConnection::CheckOthers() {
  Step(dataVersion);
  const std::int64_t version = sqlite3_column_int64(dataVersion, 0);
  sqlite3_reset(dataVersion);
  if (version != lastDataVersion) {
    ++otherWrites;
    if (!keeping.empty()) ForgetAll();
  }
  lastDataVersion = version;
}

std::shared_ptr<TableInfo> StoreConnection::Table(const QString& name) {
  auto it = tables.constFind(name);
  if (it != tables.constEnd()) return it.value();
  auto info = LoadTable(*this, name);
  tables.insert(name, info);
  tables.insert(info->name, info);
  return info;
}

}  // namespace kuvo
