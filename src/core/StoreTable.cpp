#include "core/StoreTable.h"

#include <sqlite3.h>

#include "core/StoreConnection.h"

namespace kuvo::store {

std::string Quoted(const QString& name) {
  QString q = name;
  q.replace(QLatin1Char('"'), QStringLiteral("\"\""));
  return (QLatin1Char('"') + q + QLatin1Char('"')).toStdString();
}

std::shared_ptr<TableInfo> LoadTable(StoreConnection& c, const QString& name) {
  sqlite3* db = c.db;
  auto query = [&c, db](const char* sql, const QString& arg, auto&& row) {
    sqlite3_stmt* st = nullptr;
    if (sqlite3_prepare_v2(db, sql, -1, &st, nullptr) != SQLITE_OK) {
      sqlite3_finalize(st);
      c.FailSqlite(sqlite3_extended_errcode(db), true);
    }
    const QByteArray utf8 = arg.toUtf8();
    sqlite3_bind_text(st, 1, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_STATIC);
    int rc;
    while ((rc = sqlite3_step(st)) == SQLITE_ROW) row(st);
    sqlite3_finalize(st);
    if (rc != SQLITE_DONE) c.FailSqlite(sqlite3_extended_errcode(db), false);
  };
  auto text = [](sqlite3_stmt* st, int col) {
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, col)));
  };

  auto info = std::make_shared<TableInfo>();
  query("SELECT name FROM sqlite_schema WHERE type = 'table' AND name = ?1 COLLATE NOCASE", name,
        [&](sqlite3_stmt* st) { info->name = text(st, 0); });
  if (info->name.isEmpty())
    c.Fail(Err::TableNotFound,
           QStringLiteral(
               "Le moteur de base de données ne trouve pas la table ou la requête source '%1'.")
               .arg(name));
  info->quoted = Quoted(info->name);
  query("SELECT name, type FROM pragma_table_info(?1) ORDER BY cid", info->name,
        [&](sqlite3_stmt* st) {
          info->columns.push_back(Column{
              text(st, 0), TypeOf(reinterpret_cast<const char*>(sqlite3_column_text(st, 1)))});
        });

  bool plain = info->columns.size() <= 64;
  query("SELECT \"notnull\" OR dflt_value IS NOT NULL OR pk OR hidden FROM pragma_table_xinfo(?1)",
        info->name, [&](sqlite3_stmt* st) {
          if (sqlite3_column_int(st, 0)) plain = false;
        });
  query("SELECT upper(sql) FROM sqlite_schema WHERE type = 'table' AND name = ?1", info->name,
        [&](sqlite3_stmt* st) {
          const QString sql = text(st, 0);
          for (const char* word : {"CHECK", "COLLATE", "REFERENCES", "WITHOUT", "UNIQUE"})
            if (sql.contains(QLatin1String(word))) plain = false;
        });
  query("SELECT count(*) FROM sqlite_schema WHERE type = 'trigger' AND ?1 IS NOT NULL", info->name,
        [&](sqlite3_stmt* st) {
          if (sqlite3_column_int(st, 0)) plain = false;
        });

  struct IndexRow {
    QString name, origin;
    bool partial, unique;
  };
  std::vector<IndexRow> indexRows;
  query("SELECT name, origin, partial, \"unique\" FROM pragma_index_list(?1) ORDER BY seq",
        info->name, [&](sqlite3_stmt* st) {
          indexRows.push_back({text(st, 0), text(st, 1), sqlite3_column_int(st, 2) != 0,
                               sqlite3_column_int(st, 3) != 0});
        });
  const QString prefix = info->name + QLatin1Char('_');
  for (const IndexRow& ix : indexRows) {
    if (ix.unique) ++info->uniqueIndexes;
    if (ix.partial) {
      plain = false;
      continue;
    }
    Order order;
    order.unique = ix.unique;
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
      if (cid >= 0 && cid < 64) info->indexedMask |= std::uint64_t{1} << cid;
      order.cols.push_back(cid);
    });
    if (!usable) plain = false;
    if (usable && !order.cols.empty()) info->indexes.push_back(std::move(order));
  }
  info->plain = plain;
  return info;
}

sqlite3_stmt* FirstStmt(StoreConnection& c, const TableInfo& t, Order& o, bool descending) {
  sqlite3_stmt*& slot = descending ? o.last : o.first;
  if (slot) return slot;
  std::string sql = "SELECT rowid,* FROM " + t.quoted + " ORDER BY ";
  for (int col : o.cols) sql += Quoted(t.columns[col].name) + (descending ? " DESC," : ",");
  sql += descending ? "rowid DESC LIMIT 1" : "rowid LIMIT 1";
  return slot = c.Prepare(sql);
}

// A key holding a null needs the slower form, as a row value with a null
// compares to nothing.
sqlite3_stmt* NextStmt(StoreConnection& c, const TableInfo& t, Order& o, bool nullKey, bool ahead) {
  sqlite3_stmt*& slot =
      ahead ? (nullKey ? o.aheadFromNull : o.ahead) : (nullKey ? o.nextFromNull : o.next);
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
                          order + (ahead ? " LIMIT 64" : " LIMIT 1"));
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

sqlite3_stmt* MaxRowidStmt(StoreConnection& c, TableInfo& t) {
  if (!t.maxRowid) t.maxRowid = c.Prepare("SELECT max(rowid) FROM " + t.quoted);
  return t.maxRowid;
}

sqlite3_stmt* InsertWithRowidStmt(StoreConnection& c, TableInfo& t) {
  if (t.insertWithRowid) return t.insertWithRowid;
  std::string names = "rowid", params = "?1";
  for (size_t col = 0; col < t.columns.size(); ++col) {
    names += "," + Quoted(t.columns[col].name);
    params += ",?" + std::to_string(col + 2);
  }
  return t.insertWithRowid =
             c.Prepare("INSERT INTO " + t.quoted + " (" + names + ") VALUES (" + params + ")");
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

}  // namespace kuvo::store
