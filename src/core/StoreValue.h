#pragma once

#include <sqlite3.h>

#include <QDate>
#include <string>

#include "core/Store.h"

// Values between the program and SQLite: a cell as SQLite holds it, and the
// conversions a column applies on the way in and out, as Jet makes them.
namespace kuvo::store {

// Jet's types as the schema declares them. Long is Jet's 32-bit integer; Any is
// for computed columns of a statement, read by what SQLite holds.
enum class ColType { SmallInt, Long, BigInt, Real, Date, Text, Any };

ColType TypeOf(const char* declared);

// One value as SQLite holds it (type is SQLITE_NULL, _INTEGER, _FLOAT, _TEXT or _BLOB).
struct Cell {
  int type = SQLITE_NULL;
  union {
    sqlite3_int64 i = 0;  // SQLITE_INTEGER
    double r;             // SQLITE_FLOAT
  };
  std::string s;  // SQLITE_TEXT and SQLITE_BLOB
};

void ReadCell(sqlite3_stmt* st, int col, Cell& c);
// The cell's memory must stay as it is until the statement is reset.
void BindCell(sqlite3_stmt* st, int param, const Cell& c);
void SetText(Cell& c, const QString& text);

// Dates as numbers count days from 30 December 1899.
inline const QDate kDayZero(1899, 12, 30);

// An ISO 'YYYY-MM-DD' text read without going through QString.
QDate IsoDate(const std::string& s);

// A value written to a column of type `type`, converted as Jet converts it.
// False when it cannot be (the caller raises 3421).
bool ToCell(const Value& v, ColType type, Cell& out);

// A stored value as the program reads it, by the column's declared type.
Value ToValue(const Cell& c, ColType type);

}  // namespace kuvo::store
