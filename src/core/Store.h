#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <functional>
#include <memory>

#include "core/Errors.h"

struct sqlite3;

// The draw database: a small DAO-like layer over SQLite. A value is a QVariant:
// null (QVariant()), text (QString), whole number (qlonglong), double, or date (QDate).
namespace kuvo {

using Value = QVariant;

class Database;
class Recordset;
struct StoreConnection;

// One column of the current record of a set.
class Field {
 public:
  Field(Recordset* set, int position) : set_(set), position_(position) {}
  // The column's value in the current record (raises 3021 without one).
  Value GetValue() const;
  // Sets the column in the row begun by AddNew or Edit; a text for a numeric or
  // date column is converted, and one that cannot be raises 3421.
  void SetValue(const Value& value);
  QString Name() const;

 private:
  Recordset* set_;
  int position_;
};

class Recordset {
 public:
  virtual ~Recordset();

  // Table-type sets: the index that orders the set and keys Seek.
  void SetIndex(const QString& name);
  QString Index() const;
  // Seek with comparison "=" only; sets NoMatch.
  void Seek(const QString& comparison, const Value& key);
  bool NoMatch() const;

  void AddNew();
  void Edit();
  void Update();
  void Delete();

  void MoveFirst();
  void MoveLast();
  void MoveNext();
  // EOF: after MoveNext passed the last row, and on an empty set.
  bool Eof() const;
  // Exact at once for a table-type set; for a statement, the rows reached so far
  // (exact after MoveLast).
  long long RecordCount() const;

  Field Fields(const QString& name);
  Field Fields(int position);
  int FieldCount() const;

  void Close();

 private:
  friend class Database;
  friend class Field;
  struct Impl;
  explicit Recordset(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> d;
};

class Database {
 public:
  // Opens an existing file read-write; a missing file raises 3024.
  static std::unique_ptr<Database> OpenDatabase(const QString& path);
  ~Database();

  // A table name gives a table-type set; a select statement a set in the
  // statement's order. Jet forms (#mm dd yy#, "text", DELETE *, format()) are
  // accepted.
  std::shared_ptr<Recordset> OpenRecordset(const QString& source);
  void Execute(const QString& statement);

  // Writes are grouped into one transaction: it is committed by CommitPending
  // (at the end of each user event), before the store raises an error, and at
  // least every 100 ms of a long pass. Reads share one transaction too, which
  // the same commits end, or the next write. CommitPending also drops the rows
  // that Seek kept in memory during the event.
  void CommitPending();

  // A unit of work: from BeginUnit to CommitUnit every write goes into one
  // transaction, which no commit above ends. RollbackUnit, or the end of the
  // program or of this object before CommitUnit, leaves the file as it was at
  // BeginUnit; so does a crash at any moment. A failed CommitUnit rolls back.
  void BeginUnit();
  void CommitUnit();
  void RollbackUnit();
  bool InUnit() const;

  // The SQLite handle, every write made so far sent to it.
  sqlite3* Handle() const;

  // The clock that places the two-digit year of a date literal in its
  // century; the machine's date until the program gives its own.
  void SetClock(std::function<QDate()> today);

 private:
  friend void CreateStore(const QString& path, const QString& schemaSql, const QString& historyCsv);
  Database();
  int CurrentYear() const;
  std::shared_ptr<StoreConnection> c_;
  std::function<QDate()> today_;
};

// Creates a store file from the schema (the file must not exist); when
// `historyCsv` is given, table Kuvo is filled from it (operator's format, header
// line, fields by position, the character closing each line cut off).
void CreateStore(const QString& path, const QString& schemaSql, const QString& historyCsv = {});

// The schema and the published draw history shipped with the program.
QString ShippedSchema();
QString ShippedHistory();

}  // namespace kuvo
