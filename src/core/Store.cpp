#include "core/Store.h"

#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/JetSql.h"
#include "core/Texts.h"

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

namespace {

using Clock = std::chrono::steady_clock;

// Jet's types as the schema declares them. Long is Jet's 32-bit integer; Any is
// for computed columns of a statement, read by what SQLite holds.
enum class ColType { SmallInt, Long, BigInt, Real, Date, Text, Any };

ColType TypeOf(const char* declared) {
  if (!declared || !*declared) return ColType::Any;
  const QString t = QString::fromUtf8(declared).toUpper();
  if (t.contains(QLatin1String("SMALLINT")) || t == QLatin1String("SHORT"))
    return ColType::SmallInt;
  if (t.contains(QLatin1String("BIGINT")) || t.contains(QLatin1String("INT8")))
    return ColType::BigInt;
  if (t.contains(QLatin1String("INT")) || t == QLatin1String("LONG")) return ColType::Long;
  if (t.contains(QLatin1String("DATE")) || t.contains(QLatin1String("TIME"))) return ColType::Date;
  if (t.contains(QLatin1String("REAL")) || t.contains(QLatin1String("FLOA")) ||
      t.contains(QLatin1String("DOUB")) || t.contains(QLatin1String("NUMERIC")) ||
      t.contains(QLatin1String("DECIMAL")) || t.contains(QLatin1String("CURRENCY")))
    return ColType::Real;
  return ColType::Text;
}

// One value as SQLite holds it (type is SQLITE_NULL, _INTEGER, _FLOAT, _TEXT or _BLOB).
struct Cell {
  int type = SQLITE_NULL;
  sqlite3_int64 i = 0;
  double r = 0;
  std::string s;
};

void ReadCell(sqlite3_stmt* st, int col, Cell& c) {
  c.type = sqlite3_column_type(st, col);
  switch (c.type) {
    case SQLITE_INTEGER: c.i = sqlite3_column_int64(st, col); break;
    case SQLITE_FLOAT: c.r = sqlite3_column_double(st, col); break;
    case SQLITE_TEXT: {
      const char* p = reinterpret_cast<const char*>(sqlite3_column_text(st, col));
      c.s.assign(p, sqlite3_column_bytes(st, col));
      break;
    }
    case SQLITE_BLOB: {
      const char* p = static_cast<const char*>(sqlite3_column_blob(st, col));
      c.s.assign(p ? p : "", sqlite3_column_bytes(st, col));
      break;
    }
    default: break;
  }
}

// The cell's memory must stay as it is until the statement is reset.
void BindCell(sqlite3_stmt* st, int param, const Cell& c) {
  switch (c.type) {
    case SQLITE_INTEGER: sqlite3_bind_int64(st, param, c.i); break;
    case SQLITE_FLOAT: sqlite3_bind_double(st, param, c.r); break;
    case SQLITE_TEXT:
      sqlite3_bind_text(st, param, c.s.data(), static_cast<int>(c.s.size()), SQLITE_STATIC);
      break;
    case SQLITE_BLOB:
      sqlite3_bind_blob(st, param, c.s.data(), static_cast<int>(c.s.size()), SQLITE_STATIC);
      break;
    default: sqlite3_bind_null(st, param); break;
  }
}

void SetText(Cell& c, const QString& text) {
  const QByteArray utf8 = text.toUtf8();
  c.type = SQLITE_TEXT;
  c.s.assign(utf8.constData(), utf8.size());
}

// Dates as numbers count days from 30 December 1899.
const QDate kDayZero(1899, 12, 30);

// An ISO 'YYYY-MM-DD' text read without going through QString.
QDate IsoDate(const std::string& s) {
  auto digit = [&s](int i) { return s[i] >= '0' && s[i] <= '9'; };
  if (s.size() != 10 || s[4] != '-' || s[7] != '-') return {};
  for (int i : {0, 1, 2, 3, 5, 6, 8, 9})
    if (!digit(i)) return {};
  const int y = (s[0] - '0') * 1000 + (s[1] - '0') * 100 + (s[2] - '0') * 10 + (s[3] - '0');
  const int m = (s[5] - '0') * 10 + (s[6] - '0');
  const int d = (s[8] - '0') * 10 + (s[9] - '0');
  return QDate(y, m, d);
}

double RoundHalfEven(double value) {
  const double floor = std::floor(value);
  const double rest = value - floor;
  if (rest > 0.5) return floor + 1;
  if (rest < 0.5) return floor;
  return std::fmod(floor, 2.0) == 0 ? floor : floor + 1;
}

bool FitsInteger(ColType t, long double v) {
  switch (t) {
    case ColType::SmallInt: return v >= -32768 && v <= 32767;
    case ColType::Long: return v >= -2147483648.0L && v <= 2147483647.0L;
    default: return v >= -9223372036854775808.0L && v < 9223372036854775808.0L;
  }
}

// A value written to a column of type `type`, converted as Jet converts it.
// False when it cannot be (the caller raises 3421).
bool ToCell(const Value& v, ColType type, Cell& out) {
  out = Cell{};
  if (!v.isValid() || v.typeId() == QMetaType::Nullptr) return true;

  enum class Kind { Integral, Number, Text, Date } kind;
  sqlite3_int64 integral = 0;
  double number = 0;
  QString text;
  QDate date;
  switch (v.typeId()) {
    case QMetaType::Bool:
      kind = Kind::Integral;
      integral = v.toBool() ? -1 : 0;
      break;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Long:
    case QMetaType::LongLong:
      kind = Kind::Integral;
      integral = v.toLongLong();
      break;
    case QMetaType::ULong:
    case QMetaType::ULongLong:
      if (v.toULongLong() > static_cast<qulonglong>(std::numeric_limits<qlonglong>::max()))
        return false;
      kind = Kind::Integral;
      integral = v.toLongLong();
      break;
    case QMetaType::Double:
    case QMetaType::Float:
      kind = Kind::Number;
      number = v.toDouble();
      if (!std::isfinite(number)) return false;
      break;
    case QMetaType::QString:
    case QMetaType::QChar:
    case QMetaType::QByteArray:
      kind = Kind::Text;
      text = v.toString();
      break;
    case QMetaType::QDate:
    case QMetaType::QDateTime:
      kind = Kind::Date;
      date = v.toDate();
      if (!date.isValid()) return false;
      break;
    default: return false;
  }

  switch (type) {
    case ColType::SmallInt:
    case ColType::Long:
    case ColType::BigInt: {
      if (kind == Kind::Text) {
        try {
          number = CDbl(text.trimmed());
        } catch (const VbError&) {
          return false;
        }
        kind = Kind::Number;
      } else if (kind == Kind::Date) {
        integral = kDayZero.daysTo(date);
        kind = Kind::Integral;
      }
      if (kind == Kind::Number) {
        const double rounded = RoundHalfEven(number);
        if (!FitsInteger(type, rounded)) return false;
        integral = static_cast<sqlite3_int64>(rounded);
      } else if (!FitsInteger(type, integral)) {
        return false;
      }
      out.type = SQLITE_INTEGER;
      out.i = integral;
      return true;
    }
    case ColType::Real:
      if (kind == Kind::Text) {
        try {
          number = CDbl(text.trimmed());
        } catch (const VbError&) {
          return false;
        }
      } else if (kind == Kind::Integral) {
        number = static_cast<double>(integral);
      } else if (kind == Kind::Date) {
        number = static_cast<double>(kDayZero.daysTo(date));
      }
      out.type = SQLITE_FLOAT;
      out.r = number;
      return true;
    case ColType::Date:
      if (kind == Kind::Text) {
        const QString t = text.trimmed();
        if (!IsDateText(t)) return false;
        try {
          date = DateFromText(t);
        } catch (const VbError&) {
          return false;
        }
      } else if (kind != Kind::Date) {
        const double days = kind == Kind::Integral ? static_cast<double>(integral) : number;
        if (std::fabs(days) > 3e6) return false;
        date = kDayZero.addDays(static_cast<qint64>(std::floor(days)));
      }
      if (!date.isValid()) return false;
      SetText(out, date.toString(Qt::ISODate));
      return true;
    case ColType::Text:
    case ColType::Any:
      switch (kind) {
        case Kind::Text: SetText(out, text); break;
        case Kind::Integral:
          if (v.typeId() == QMetaType::Bool)
            SetText(out, integral ? QStringLiteral("Vrai") : QStringLiteral("Faux"));
          else
            SetText(out, QString::number(integral));
          break;
        case Kind::Number:
          if (number == std::trunc(number) && std::fabs(number) < 1e15)
            SetText(out, QString::number(static_cast<qlonglong>(number)));
          else
            SetText(out, NumText(number));
          break;
        case Kind::Date: SetText(out, ShortDate(date)); break;
      }
      return true;
  }
  return false;
}

// A stored value as the program reads it, by the column's declared type.
Value ToValue(const Cell& c, ColType type) {
  switch (c.type) {
    case SQLITE_NULL: return {};
    case SQLITE_BLOB: return QByteArray(c.s.data(), static_cast<qsizetype>(c.s.size()));
    default: break;
  }
  switch (type) {
    case ColType::SmallInt:
    case ColType::Long:
    case ColType::BigInt:
    case ColType::Any:
      if (c.type == SQLITE_INTEGER) return static_cast<qlonglong>(c.i);
      if (c.type == SQLITE_FLOAT) return c.r;
      return QString::fromUtf8(c.s.data(), static_cast<qsizetype>(c.s.size()));
    case ColType::Real:
      if (c.type == SQLITE_INTEGER) return static_cast<double>(c.i);
      if (c.type == SQLITE_FLOAT) return c.r;
      return QString::fromUtf8(c.s.data(), static_cast<qsizetype>(c.s.size()));
    case ColType::Date:
      if (c.type == SQLITE_TEXT) {
        const QDate d = IsoDate(c.s);
        if (d.isValid()) return d;
        return QString::fromUtf8(c.s.data(), static_cast<qsizetype>(c.s.size()));
      }
      return kDayZero.addDays(
          static_cast<qint64>(c.type == SQLITE_INTEGER ? c.i : std::floor(c.r)));
    case ColType::Text:
      if (c.type == SQLITE_INTEGER) return QString::number(c.i);
      if (c.type == SQLITE_FLOAT) return NumText(c.r);
      return QString::fromUtf8(c.s.data(), static_cast<qsizetype>(c.s.size()));
  }
  return {};
}

std::string Quoted(const QString& name) {
  QString q = name;
  q.replace(QLatin1Char('"'), QStringLiteral("\"\""));
  return (QLatin1Char('"') + q + QLatin1Char('"')).toStdString();
}

bool StartsWithWord(const QString& text, QLatin1String word) {
  const QString t = text.trimmed();
  if (!t.startsWith(word, Qt::CaseInsensitive)) return false;
  return t.size() == word.size() ||
         !(t[word.size()].isLetterOrNumber() || t[word.size()] == QLatin1Char('_'));
}

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

// Jet's number and text for an SQLite failure. `prepared` tells a statement
// SQLite could not compile from one that failed while running.
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

}  // namespace

// ---------------------------------------------------------------------------
// Table metadata, kept per connection.

namespace {

struct Column {
  QString name;
  ColType type = ColType::Any;
};

// An order of a table (an index, or rowid order when `cols` is empty) and the
// statements that walk it.
struct Order {
  QString name;        // as the program knows it ("Numeros")
  QString sqliteName;  // as SQLite does ("Groupe2_Numeros")
  std::vector<int> cols;
  sqlite3_stmt* first = nullptr;
  sqlite3_stmt* last = nullptr;
  sqlite3_stmt* next = nullptr;
  sqlite3_stmt* nextFromNull = nullptr;
  sqlite3_stmt* seek = nullptr;
};

struct TableInfo {
  QString name;
  std::string quoted;
  std::vector<Column> columns;
  Order rowidOrder;
  std::vector<Order> indexes;
  sqlite3_stmt* byRowid = nullptr;
  sqlite3_stmt* count = nullptr;
  sqlite3_stmt* remove = nullptr;
  std::unordered_map<std::uint64_t, sqlite3_stmt*> inserts;
  std::unordered_map<std::uint64_t, sqlite3_stmt*> updates;

  // Which columns a write names: one bit a column; a table of more than 64
  // columns always writes them all.
  bool Includes(std::uint64_t mask, size_t col) const {
    return columns.size() > 64 || ((mask >> col) & 1);
  }
};

}  // namespace

// ---------------------------------------------------------------------------
// The connection: the SQLite handle, its statements and the grouped commits.

struct StoreConnection {
  sqlite3* db = nullptr;
  std::unordered_map<std::string, sqlite3_stmt*> statements;
  QHash<QString, std::shared_ptr<TableInfo>> tables;
  // CreateStore fills a new file in one transaction.
  bool holdCommits = false;
  Clock::time_point txStart;
  sqlite3_stmt* begin = nullptr;
  sqlite3_stmt* commit = nullptr;

  explicit StoreConnection(sqlite3* handle) : db(handle) {}

  ~StoreConnection() {
    CommitQuietly();
    for (auto& entry : statements) sqlite3_finalize(entry.second);
    sqlite3_close_v2(db);
  }

  QString Message() const { return QString::fromUtf8(sqlite3_errmsg(db)); }

  // Every error the store raises goes through here: what was written so far is
  // committed first.
  [[noreturn]] void Fail(int number, const QString& text) {
    CommitQuietly();
    Raise(number, text);
  }

  [[noreturn]] void FailSqlite(int code, bool prepared) {
    const auto [number, text] = JetError(code, Message(), prepared);
    Fail(number, text);
  }

  void Setup(bool wal) {
    sqlite3_extended_result_codes(db, 1);
    sqlite3_busy_timeout(db, 5000);
    if (wal) {
      if (int rc = sqlite3_exec(db, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL;", nullptr,
                                nullptr, nullptr);
          rc != SQLITE_OK)
        FailSqlite(sqlite3_extended_errcode(db), false);
    }
    sqlite3_create_function_v2(db, "format", 2, SQLITE_UTF8, nullptr, FormatFunction, nullptr,
                               nullptr, nullptr);
    begin = Prepare("BEGIN IMMEDIATE");
    commit = Prepare("COMMIT");
  }

  // A statement kept for the life of the connection, one per SQL text.
  sqlite3_stmt* Prepare(const std::string& sql) {
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

  // One step; SQLITE_ROW or SQLITE_DONE, anything else is raised (after a reset).
  int Step(sqlite3_stmt* st) {
    const int rc = sqlite3_step(st);
    if (rc == SQLITE_ROW || rc == SQLITE_DONE) return rc;
    sqlite3_reset(st);
    FailSqlite(sqlite3_extended_errcode(db), false);
  }

  bool InTransaction() const { return !sqlite3_get_autocommit(db); }

  void CommitQuietly() {
    if (!InTransaction()) return;
    sqlite3_step(commit);
    sqlite3_reset(commit);
  }

  void Commit() {
    if (!InTransaction()) return;
    const int rc = sqlite3_step(commit);
    sqlite3_reset(commit);
    if (rc != SQLITE_DONE) {
      const auto [number, text] = JetError(sqlite3_extended_errcode(db), Message(), false);
      Raise(number, text);
    }
  }

  // Called before each write: opens the transaction that groups writes, and
  // commits one that has been open more than 100 ms.
  void BeforeWrite() {
    if (InTransaction()) {
      if (holdCommits || Clock::now() - txStart < std::chrono::milliseconds(100)) return;
      Commit();
    }
    Step(begin);
    sqlite3_reset(begin);
    txStart = Clock::now();
  }

  std::shared_ptr<TableInfo> Table(const QString& name);
  std::shared_ptr<TableInfo> Load(const QString& name);
};

std::shared_ptr<TableInfo> StoreConnection::Table(const QString& name) {
  auto it = tables.constFind(name);
  if (it != tables.constEnd()) return it.value();
  auto info = Load(name);
  tables.insert(name, info);
  tables.insert(info->name, info);
  return info;
}

// Reads a table's columns and indexes. Table names are found whatever their case,
// as Jet does.
std::shared_ptr<TableInfo> StoreConnection::Load(const QString& name) {
  auto query = [this](const char* sql, const QString& arg, auto&& row) {
    sqlite3_stmt* st = nullptr;
    if (sqlite3_prepare_v2(db, sql, -1, &st, nullptr) != SQLITE_OK) {
      sqlite3_finalize(st);
      FailSqlite(sqlite3_extended_errcode(db), true);
    }
    const QByteArray utf8 = arg.toUtf8();
    sqlite3_bind_text(st, 1, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_STATIC);
    int rc;
    while ((rc = sqlite3_step(st)) == SQLITE_ROW) row(st);
    sqlite3_finalize(st);
    if (rc != SQLITE_DONE) FailSqlite(sqlite3_extended_errcode(db), false);
  };
  auto text = [](sqlite3_stmt* st, int col) {
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, col)));
  };

  auto info = std::make_shared<TableInfo>();
  query("SELECT name FROM sqlite_schema WHERE type = 'table' AND name = ?1 COLLATE NOCASE", name,
        [&](sqlite3_stmt* st) { info->name = text(st, 0); });
  if (info->name.isEmpty())
    Fail(Err::TableNotFound,
         QStringLiteral(
             "Le moteur de base de données ne trouve pas la table ou la requête source '%1'.")
             .arg(name));
  info->quoted = Quoted(info->name);
  query("SELECT name, type FROM pragma_table_info(?1) ORDER BY cid", info->name,
        [&](sqlite3_stmt* st) {
          info->columns.push_back(Column{
              text(st, 0), TypeOf(reinterpret_cast<const char*>(sqlite3_column_text(st, 1)))});
        });

  struct IndexRow {
    QString name, origin;
    bool partial;
  };
  std::vector<IndexRow> indexRows;
  query("SELECT name, origin, partial FROM pragma_index_list(?1) ORDER BY seq", info->name,
        [&](sqlite3_stmt* st) {
          indexRows.push_back({text(st, 0), text(st, 1), sqlite3_column_int(st, 2) != 0});
        });
  const QString prefix = info->name + QLatin1Char('_');
  for (const IndexRow& ix : indexRows) {
    if (ix.partial) continue;
    Order order;
    order.sqliteName = ix.name;
    if (ix.name.startsWith(prefix, Qt::CaseInsensitive))
      order.name = ix.name.mid(prefix.size());
    else if (ix.origin == QLatin1String("pk"))
      order.name = QStringLiteral("PrimaryKey");
    else
      order.name = ix.name;
    bool usable = true;
    query("SELECT cid FROM pragma_index_info(?1) ORDER BY seqno", ix.name, [&](sqlite3_stmt* st) {
      const int cid = sqlite3_column_int(st, 0);
      if (cid < 0) usable = false;  // an expression, not a column
      order.cols.push_back(cid);
    });
    if (usable && !order.cols.empty()) info->indexes.push_back(std::move(order));
  }
  return info;
}

// ---------------------------------------------------------------------------
// Recordsets.

namespace {

// The statements of an order, prepared the first time they are needed.
sqlite3_stmt* FirstStmt(StoreConnection& c, const TableInfo& t, Order& o, bool descending) {
  sqlite3_stmt*& slot = descending ? o.last : o.first;
  if (slot) return slot;
  std::string sql = "SELECT rowid,* FROM " + t.quoted + " ORDER BY ";
  for (int col : o.cols) sql += Quoted(t.columns[col].name) + (descending ? " DESC," : ",");
  sql += descending ? "rowid DESC LIMIT 1" : "rowid LIMIT 1";
  return slot = c.Prepare(sql);
}

// The row following (key, rowid) in the order. A key holding a null needs the
// slower form, as a row value with a null compares to nothing.
sqlite3_stmt* NextStmt(StoreConnection& c, const TableInfo& t, Order& o, bool nullKey) {
  sqlite3_stmt*& slot = nullKey ? o.nextFromNull : o.next;
  if (slot) return slot;
  const int n = static_cast<int>(o.cols.size());
  std::string order;
  for (int col : o.cols) order += Quoted(t.columns[col].name) + ",";
  order += "rowid";
  std::string where;
  if (n == 0) {
    where = "rowid > ?1";
  } else if (!nullKey) {
    where = "(" + order + ") > (";
    for (int i = 1; i <= n + 1; ++i) where += "?" + std::to_string(i) + (i <= n ? "," : ")");
  } else {
    // Nulls come first: (k1..kn, rowid) after (?1..?n, ?n+1) spelled out.
    for (int i = 0; i <= n; ++i) {
      std::string term;
      for (int j = 0; j < i; ++j)
        term += Quoted(t.columns[o.cols[j]].name) + " IS ?" + std::to_string(j + 1) + " AND ";
      if (i < n) {
        const std::string k = Quoted(t.columns[o.cols[i]].name);
        const std::string p = "?" + std::to_string(i + 1);
        term += "(" + k + " > " + p + " OR (" + p + " IS NULL AND " + k + " IS NOT NULL))";
      } else {
        term += "rowid > ?" + std::to_string(n + 1);
      }
      where += (i ? " OR (" : "(") + term + ")";
    }
  }
  return slot = c.Prepare("SELECT rowid,* FROM " + t.quoted + " WHERE " + where + " ORDER BY " +
                          order + " LIMIT 1");
}

sqlite3_stmt* SeekStmt(StoreConnection& c, const TableInfo& t, Order& o) {
  if (!o.seek)
    o.seek = c.Prepare("SELECT rowid,* FROM " + t.quoted + " WHERE " +
                       Quoted(t.columns[o.cols[0]].name) + " = ?1 ORDER BY rowid LIMIT 1");
  return o.seek;
}

sqlite3_stmt* ByRowidStmt(StoreConnection& c, TableInfo& t) {
  if (!t.byRowid) t.byRowid = c.Prepare("SELECT * FROM " + t.quoted + " WHERE rowid = ?1");
  return t.byRowid;
}

sqlite3_stmt* CountStmt(StoreConnection& c, TableInfo& t) {
  if (!t.count) t.count = c.Prepare("SELECT count(*) FROM " + t.quoted);
  return t.count;
}

sqlite3_stmt* DeleteStmt(StoreConnection& c, TableInfo& t) {
  if (!t.remove) t.remove = c.Prepare("DELETE FROM " + t.quoted + " WHERE rowid = ?1");
  return t.remove;
}

sqlite3_stmt* InsertStmt(StoreConnection& c, TableInfo& t, std::uint64_t mask) {
  auto it = t.inserts.find(mask);
  if (it != t.inserts.end()) return it->second;
  std::string names, params;
  int p = 0;
  for (size_t col = 0; col < t.columns.size(); ++col) {
    if (!t.Includes(mask, col)) continue;
    names += (p ? "," : "") + Quoted(t.columns[col].name);
    params += (p ? ",?" : "?") + std::to_string(p + 1);
    ++p;
  }
  const std::string sql = p ? "INSERT INTO " + t.quoted + " (" + names + ") VALUES (" + params + ")"
                            : "INSERT INTO " + t.quoted + " DEFAULT VALUES";
  return t.inserts[mask] = c.Prepare(sql);
}

sqlite3_stmt* UpdateStmt(StoreConnection& c, TableInfo& t, std::uint64_t mask) {
  auto it = t.updates.find(mask);
  if (it != t.updates.end()) return it->second;
  std::string sets;
  int p = 0;
  for (size_t col = 0; col < t.columns.size(); ++col) {
    if (!t.Includes(mask, col)) continue;
    sets += (p ? "," : "") + Quoted(t.columns[col].name) + "=?" + std::to_string(p + 1);
    ++p;
  }
  return t.updates[mask] = c.Prepare("UPDATE " + t.quoted + " SET " + sets + " WHERE rowid=?" +
                                     std::to_string(p + 1));
}

const QString kNoCurrent = QStringLiteral("Aucun enregistrement en cours.");

}  // namespace

struct Recordset::Impl {
  // Table: walks the live table by its index. Statement: the rows of a
  // "select * from T ..." (their rowids, taken at open), read live by rowid.
  // Snapshot: any other select, its rows copied at open, read-only.
  enum class Kind { Table, Statement, Snapshot };
  // Pending: a table set not yet positioned on its first row (done on first use).
  // Deleted: the current row was deleted; MoveNext goes on from it.
  // None: no current row (a Seek failed).
  enum class State { Pending, Current, Deleted, None, Eof };
  enum class Mode { Idle, Adding, Editing };

  std::shared_ptr<StoreConnection> c;
  std::shared_ptr<TableInfo> t;
  Kind kind = Kind::Table;
  State state = State::Pending;
  Mode mode = Mode::Idle;
  bool closed = false;
  bool noMatch = false;

  std::vector<Column> snapshotColumns;
  const std::vector<Column>* columns = nullptr;

  // The current row, as read when the connection had made `stamp` changes.
  sqlite3_int64 rowid = 0;
  std::vector<Cell> row;
  sqlite3_int64 stamp = -1;

  // Table sets: the order, and the place of the current (or deleted) row in it.
  Order* order = nullptr;
  std::vector<Cell> anchorKey;
  sqlite3_int64 anchorRowid = 0;

  // Statement and snapshot sets: the rows, the current one and how many were reached.
  std::vector<sqlite3_int64> ids;
  std::vector<std::vector<Cell>> snapshot;
  qsizetype pos = -1;
  qsizetype reached = 0;

  // The row being added or edited, and which of its columns were set.
  std::vector<Cell> edit;
  std::vector<char> dirty;

  [[noreturn]] void Fail(int number, const QString& text) { c->Fail(number, text); }

  void CheckOpen() {
    if (closed) Fail(3420, QStringLiteral("Objet invalide ou n'est plus défini."));
  }

  void CheckColumn(int position) {
    if (position < 0 || position >= static_cast<int>(columns->size()))
      Fail(Err::ItemNotFound, QStringLiteral("Élément non trouvé dans cette collection."));
  }

  void CheckWritable() {
    if (kind == Kind::Snapshot)
      Fail(3027, QStringLiteral("Mise à jour impossible. L'objet est en lecture seule."));
  }

  size_t Width() const { return columns->size(); }

  // Table sets ------------------------------------------------------------

  // Steps a positioning statement (bound by the caller) and takes its row.
  bool Position(sqlite3_stmt* st) {
    if (c->Step(st) != SQLITE_ROW) {
      sqlite3_reset(st);
      return false;
    }
    rowid = sqlite3_column_int64(st, 0);
    row.resize(Width());
    for (size_t i = 0; i < row.size(); ++i) ReadCell(st, static_cast<int>(i) + 1, row[i]);
    sqlite3_reset(st);
    stamp = sqlite3_total_changes64(c->db);
    state = State::Current;
    SetAnchor();
    return true;
  }

  void SetAnchor() {
    anchorRowid = rowid;
    anchorKey.resize(order->cols.size());
    for (size_t i = 0; i < anchorKey.size(); ++i) anchorKey[i] = row[order->cols[i]];
  }

  void PositionEdge(bool last) {
    if (!Position(FirstStmt(*c, *t, *order, last))) state = State::Eof;
  }

  void Resolve() {
    if (state == State::Pending) PositionEdge(false);
  }

  // Rereads the current row when the connection wrote anything since it was read.
  void Refresh() {
    if (kind == Kind::Snapshot || stamp == sqlite3_total_changes64(c->db)) return;
    sqlite3_stmt* st = ByRowidStmt(*c, *t);
    sqlite3_bind_int64(st, 1, rowid);
    if (c->Step(st) != SQLITE_ROW) {
      sqlite3_reset(st);
      Fail(3167, QStringLiteral("L'enregistrement est supprimé."));
    }
    for (size_t i = 0; i < row.size(); ++i) ReadCell(st, static_cast<int>(i), row[i]);
    sqlite3_reset(st);
    stamp = sqlite3_total_changes64(c->db);
    if (kind == Kind::Table) SetAnchor();
  }

  // Statement and snapshot sets -------------------------------------------

  qsizetype Size() const {
    return kind == Kind::Snapshot ? static_cast<qsizetype>(snapshot.size())
                                  : static_cast<qsizetype>(ids.size());
  }

  void GoTo(qsizetype index) {
    pos = index;
    reached = std::max(reached, index + 1);
    state = State::Current;
    if (kind == Kind::Snapshot) {
      row = snapshot[index];
      return;
    }
    rowid = ids[index];
    row.resize(Width());
    stamp = -1;  // read on first use
  }

  // Common ----------------------------------------------------------------

  void CancelEdit() {
    mode = Mode::Idle;
    edit.clear();
    dirty.clear();
  }

  void RequireCurrent() {
    Resolve();
    if (state != State::Current) Fail(Err::NoCurrentRecord, kNoCurrent);
    Refresh();
  }

  std::uint64_t Mask() const {
    std::uint64_t mask = 0;
    for (size_t i = 0; i < dirty.size() && i < 64; ++i)
      if (dirty[i]) mask |= std::uint64_t{1} << i;
    return mask;
  }

  void Bind(sqlite3_stmt* st, std::uint64_t mask) {
    int p = 0;
    for (size_t col = 0; col < edit.size(); ++col)
      if (t->Includes(mask, col)) BindCell(st, ++p, edit[col]);
  }
};

Recordset::Recordset(std::unique_ptr<Impl> impl) : d(std::move(impl)) {}

Recordset::~Recordset() = default;

void Recordset::SetIndex(const QString& name) {
  d->CheckOpen();
  if (d->kind != Impl::Kind::Table)
    d->Fail(3251, QStringLiteral("Opération non supportée pour ce type d'objet."));
  Order* found = nullptr;
  if (name.isEmpty()) {
    found = &d->t->rowidOrder;
  } else {
    for (Order& o : d->t->indexes)
      if (o.name.compare(name, Qt::CaseInsensitive) == 0 ||
          o.sqliteName.compare(name, Qt::CaseInsensitive) == 0) {
        found = &o;
        break;
      }
  }
  if (!found) d->Fail(3015, QStringLiteral("'%1' n'est pas un index de cette table.").arg(name));
  d->CancelEdit();
  d->order = found;
  d->state = Impl::State::Pending;
}

QString Recordset::Index() const {
  d->CheckOpen();
  return d->order ? d->order->name : QString();
}

void Recordset::Seek(const QString& comparison, const Value& key) {
  d->CheckOpen();
  if (d->kind != Impl::Kind::Table)
    d->Fail(3251, QStringLiteral("Opération non supportée pour ce type d'objet."));
  if (d->order->cols.empty())
    d->Fail(3019, QStringLiteral("Opération non valide sans index en cours."));
  if (comparison.trimmed() != QLatin1String("="))
    d->Fail(3001, QStringLiteral("Argument non valide : comparaison '%1'.").arg(comparison));
  Cell cell;
  if (!ToCell(key, (*d->columns)[d->order->cols[0]].type, cell))
    d->Fail(3464, QStringLiteral("Type de données incompatible dans l'expression du critère."));
  d->CancelEdit();
  sqlite3_stmt* st = SeekStmt(*d->c, *d->t, *d->order);
  BindCell(st, 1, cell);
  d->noMatch = !d->Position(st);
  if (d->noMatch) d->state = Impl::State::None;
}

bool Recordset::NoMatch() const {
  d->CheckOpen();
  return d->noMatch;
}

void Recordset::AddNew() {
  d->CheckOpen();
  d->CheckWritable();
  d->Resolve();
  d->mode = Impl::Mode::Adding;
  d->edit.assign(d->Width(), Cell{});
  d->dirty.assign(d->Width(), 0);
}

void Recordset::Edit() {
  d->CheckOpen();
  d->CheckWritable();
  d->CancelEdit();
  d->RequireCurrent();
  d->mode = Impl::Mode::Editing;
  d->edit = d->row;
  d->dirty.assign(d->Width(), 0);
}

void Recordset::Update() {
  d->CheckOpen();
  if (d->mode == Impl::Mode::Idle)
    d->Fail(3020, QStringLiteral("Mise à jour ou Annulation sans AddNew ni Edit."));
  StoreConnection& c = *d->c;
  TableInfo& t = *d->t;
  const std::uint64_t mask = d->Mask();
  if (d->mode == Impl::Mode::Adding) {
    sqlite3_stmt* st = InsertStmt(c, t, mask);
    c.BeforeWrite();
    d->Bind(st, mask);
    c.Step(st);
    sqlite3_reset(st);
    if (d->kind == Impl::Kind::Statement) {
      // A set from a statement shows the rows it added at its end.
      d->ids.push_back(sqlite3_last_insert_rowid(c.db));
      ++d->reached;
    }
  } else if (mask != 0 || t.columns.size() > 64) {
    sqlite3_stmt* st = UpdateStmt(c, t, mask);
    c.BeforeWrite();
    d->Bind(st, mask);
    sqlite3_bind_int64(st, sqlite3_bind_parameter_count(st), d->rowid);
    c.Step(st);
    sqlite3_reset(st);
    d->row = std::move(d->edit);
    d->stamp = sqlite3_total_changes64(c.db);
    if (d->kind == Impl::Kind::Table) d->SetAnchor();
  }
  d->CancelEdit();
}

void Recordset::Delete() {
  d->CheckOpen();
  d->CheckWritable();
  d->CancelEdit();
  d->RequireCurrent();
  StoreConnection& c = *d->c;
  sqlite3_stmt* st = DeleteStmt(c, *d->t);
  c.BeforeWrite();
  sqlite3_bind_int64(st, 1, d->rowid);
  c.Step(st);
  sqlite3_reset(st);
  d->state = Impl::State::Deleted;
  if (d->kind == Impl::Kind::Statement) {
    d->ids.erase(d->ids.begin() + d->pos);
    --d->reached;
    --d->pos;  // MoveNext goes to the row that followed
  }
}

void Recordset::MoveFirst() {
  d->CheckOpen();
  d->CancelEdit();
  if (d->kind == Impl::Kind::Table) {
    d->PositionEdge(false);
  } else if (d->Size() > 0) {
    d->GoTo(0);
  } else {
    d->state = Impl::State::Eof;
  }
  if (d->state == Impl::State::Eof) d->Fail(Err::NoCurrentRecord, kNoCurrent);
}

void Recordset::MoveLast() {
  d->CheckOpen();
  d->CancelEdit();
  if (d->kind == Impl::Kind::Table) {
    d->PositionEdge(true);
  } else if (d->Size() > 0) {
    d->reached = d->Size();
    d->GoTo(d->Size() - 1);
  } else {
    d->state = Impl::State::Eof;
  }
  if (d->state == Impl::State::Eof) d->Fail(Err::NoCurrentRecord, kNoCurrent);
}

void Recordset::MoveNext() {
  d->CheckOpen();
  d->CancelEdit();
  d->Resolve();
  if (d->state == Impl::State::Eof || d->state == Impl::State::None)
    d->Fail(Err::NoCurrentRecord, kNoCurrent);
  if (d->kind == Impl::Kind::Table) {
    const bool nullKey = std::any_of(d->anchorKey.begin(), d->anchorKey.end(),
                                     [](const Cell& k) { return k.type == SQLITE_NULL; });
    sqlite3_stmt* st = NextStmt(*d->c, *d->t, *d->order, nullKey);
    const int n = static_cast<int>(d->anchorKey.size());
    for (int i = 0; i < n; ++i) BindCell(st, i + 1, d->anchorKey[i]);
    sqlite3_bind_int64(st, n + 1, d->anchorRowid);
    // The anchor's cells are bound without a copy; Position replaces them only
    // after the statement is reset.
    if (!d->Position(st)) d->state = Impl::State::Eof;
    return;
  }
  if (d->pos + 1 >= d->Size()) {
    d->pos = d->Size();
    d->state = Impl::State::Eof;
    return;
  }
  d->GoTo(d->pos + 1);
}

bool Recordset::Eof() const {
  d->CheckOpen();
  d->Resolve();
  return d->state == Impl::State::Eof;
}

long long Recordset::RecordCount() const {
  d->CheckOpen();
  if (d->kind != Impl::Kind::Table) return d->reached;
  sqlite3_stmt* st = CountStmt(*d->c, *d->t);
  d->c->Step(st);
  const long long n = sqlite3_column_int64(st, 0);
  sqlite3_reset(st);
  return n;
}

Field Recordset::Fields(const QString& name) {
  d->CheckOpen();
  const std::vector<Column>& cols = *d->columns;
  for (size_t i = 0; i < cols.size(); ++i)
    if (cols[i].name == name) return Field(this, static_cast<int>(i));
  for (size_t i = 0; i < cols.size(); ++i)
    if (cols[i].name.compare(name, Qt::CaseInsensitive) == 0)
      return Field(this, static_cast<int>(i));
  d->Fail(Err::ItemNotFound, QStringLiteral("Élément non trouvé dans cette collection."));
}

Field Recordset::Fields(int position) {
  d->CheckOpen();
  d->CheckColumn(position);
  return Field(this, position);
}

int Recordset::FieldCount() const {
  d->CheckOpen();
  return static_cast<int>(d->Width());
}

void Recordset::Close() {
  if (d->closed) return;
  d->CancelEdit();
  d->closed = true;
  d->row.clear();
  d->ids.clear();
  d->snapshot.clear();
}

Value Field::GetValue() const {
  Recordset::Impl& d = *set_->d;
  d.CheckOpen();
  d.CheckColumn(position_);
  const ColType type = (*d.columns)[position_].type;
  if (d.mode != Recordset::Impl::Mode::Idle) return ToValue(d.edit[position_], type);
  d.RequireCurrent();
  return ToValue(d.row[position_], type);
}

void Field::SetValue(const Value& value) {
  Recordset::Impl& d = *set_->d;
  d.CheckOpen();
  d.CheckColumn(position_);
  if (d.mode == Recordset::Impl::Mode::Idle)
    d.Fail(3020, QStringLiteral("Mise à jour ou Annulation sans AddNew ni Edit."));
  Cell cell;
  if (!ToCell(value, (*d.columns)[position_].type, cell))
    d.Fail(Err::ConversionError, QStringLiteral("Erreur de conversion de type de données."));
  d.edit[position_] = std::move(cell);
  d.dirty[position_] = 1;
}

QString Field::Name() const {
  Recordset::Impl& d = *set_->d;
  d.CheckOpen();
  d.CheckColumn(position_);
  return (*d.columns)[position_].name;
}

// ---------------------------------------------------------------------------
// The database.

Database::Database() = default;

Database::~Database() {
  if (c_) c_->CommitQuietly();
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

  JetTranslation jet;
  try {
    jet = TranslateJet(source);
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
    jet = TranslateJet(statement);
  } catch (const VbError& e) {
    c.Fail(e.Number(), e.Description());
  }
  if (StartsWithWord(jet.sql, QLatin1String("select")))
    c.Fail(3065, QStringLiteral("Impossible d'exécuter une requête Sélection."));
  const bool schemaChange = StartsWithWord(jet.sql, QLatin1String("create")) ||
                            StartsWithWord(jet.sql, QLatin1String("drop")) ||
                            StartsWithWord(jet.sql, QLatin1String("alter"));
  c.BeforeWrite();
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

void Database::CommitPending() { c_->Commit(); }

sqlite3* Database::Handle() const { return c_->db; }

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
