#pragma once

#include <sqlite3.h>

#include <QString>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/StoreKeptRows.h"
#include "core/StoreValue.h"

namespace kuvo {
struct StoreConnection;
}

// What the store knows of a table (its columns and indexes, read once per
// connection) and the statements that walk and write it, prepared on first use.
namespace kuvo::store {

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
  bool unique = false;
  sqlite3_stmt* first = nullptr;
  sqlite3_stmt* last = nullptr;
  sqlite3_stmt* next = nullptr;
  sqlite3_stmt* nextFromNull = nullptr;
  sqlite3_stmt* ahead = nullptr;  // as next and nextFromNull, the rows that follow
  sqlite3_stmt* aheadFromNull = nullptr;
  sqlite3_stmt* seek = nullptr;
};

struct TableInfo : std::enable_shared_from_this<TableInfo> {
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
  sqlite3_stmt* insertWithRowid = nullptr;
  sqlite3_stmt* maxRowid = nullptr;

  // A write to a plain table does what it says and no more: no constraint but
  // unique indexes, no default, no trigger, no partial or expression index.
  // Only such a table keeps rows in memory.
  bool plain = false;
  int uniqueIndexes = 0;
  std::uint64_t indexedMask = 0;  // the columns some index holds
  KeptRows kept;
  // Counts the writes made to the table through its sets.
  std::uint64_t writes = 0;

  // Which columns a write names: one bit a column; a table of more than 64
  // columns always writes them all.
  bool Includes(std::uint64_t mask, size_t col) const {
    return columns.size() > 64 || ((mask >> col) & 1);
  }
};

// A name quoted for SQLite.
std::string Quoted(const QString& name);

// Reads a table's columns and indexes. Table names are found whatever their case,
// as Jet does; a missing table raises 3078.
std::shared_ptr<TableInfo> LoadTable(StoreConnection& c, const QString& name);

// The first (or last) row of an order.
sqlite3_stmt* FirstStmt(StoreConnection& c, const TableInfo& t, Order& o, bool descending);
// The row following (key, rowid) in the order; `nullKey` when the key holds a null.
// With `ahead`, the rows that follow it, a few at a time.
sqlite3_stmt* NextStmt(StoreConnection& c, const TableInfo& t, Order& o, bool nullKey,
                       bool ahead = false);
// The first row, in rowid order, whose first key column equals ?1.
sqlite3_stmt* SeekStmt(StoreConnection& c, const TableInfo& t, Order& o);
sqlite3_stmt* ByRowidStmt(StoreConnection& c, TableInfo& t);
sqlite3_stmt* CountStmt(StoreConnection& c, TableInfo& t);
sqlite3_stmt* DeleteStmt(StoreConnection& c, TableInfo& t);
// The largest rowid (null on an empty table).
sqlite3_stmt* MaxRowidStmt(StoreConnection& c, TableInfo& t);
// A row written whole, with its rowid.
sqlite3_stmt* InsertWithRowidStmt(StoreConnection& c, TableInfo& t);
// Writes naming the columns of `mask`.
sqlite3_stmt* InsertStmt(StoreConnection& c, TableInfo& t, std::uint64_t mask);
sqlite3_stmt* UpdateStmt(StoreConnection& c, TableInfo& t, std::uint64_t mask);

}  // namespace kuvo::store
