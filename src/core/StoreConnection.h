#pragma once

#include <sqlite3.h>

#include <QHash>
#include <QString>
#include <chrono>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/StoreTable.h"

namespace kuvo {

// Jet's number and text for an SQLite failure. `prepared` tells a statement
// SQLite could not compile from one that failed while running.
std::pair<int, QString> JetError(int code, const QString& message, bool prepared);

// The connection: the SQLite handle, its statements and the grouped commits.
struct StoreConnection {
  using Clock = std::chrono::steady_clock;

  sqlite3* db = nullptr;
  std::unordered_map<std::string, sqlite3_stmt*> statements;
  QHash<QString, std::shared_ptr<store::TableInfo>> tables;
  // CreateStore fills a new file in one transaction.
  bool holdCommits = false;
  // A unit of work is open (Database::BeginUnit): its one transaction is ended
  // by the unit alone, and rolled back unless the unit commits it.
  bool unit = false;
  Clock::time_point txStart;
  sqlite3_stmt* begin = nullptr;
  sqlite3_stmt* beginRead = nullptr;
  sqlite3_stmt* commit = nullptr;
  // The open transaction has only read so far.
  bool readOnly = false;
  // Counts the writes made through this connection: a set rereads its current
  // row when the count moved since it read it.
  std::int64_t epoch = 0;
  // Counts the writes whose tables are not known: statements run, and commits
  // of other connections.
  std::uint64_t otherWrites = 0;
  // The tables keeping rows (see StoreKeptRows.h).
  std::vector<std::shared_ptr<store::TableInfo>> keeping;
  sqlite3_stmt* dataVersion = nullptr;
  std::int64_t lastDataVersion = 0;

  explicit StoreConnection(sqlite3* handle) : db(handle) {}
  ~StoreConnection();

  QString Message() const { return QString::fromUtf8(sqlite3_errmsg(db)); }

  // Every error the store raises goes through here: what was written so far is
  // committed first.
  [[noreturn]] void Fail(int number, const QString& text);
  [[noreturn]] void FailSqlite(int code, bool prepared);

  // Error codes, WAL for an existing file, the format() function, the
  // transaction statements.
  void Setup(bool wal);

  // A statement kept for the life of the connection, one per SQL text.
  sqlite3_stmt* Prepare(const std::string& sql);

  // One step; SQLITE_ROW or SQLITE_DONE, anything else is raised (after a reset).
  int Step(sqlite3_stmt* st) {
    const int rc = sqlite3_step(st);
    if (rc == SQLITE_ROW || rc == SQLITE_DONE) return rc;
    sqlite3_reset(st);
    FailSqlite(sqlite3_extended_errcode(db), false);
  }

  bool InTransaction() const { return !sqlite3_get_autocommit(db); }

  // Both send the writes waiting in kept rows first. Inside a unit, Commit only
  // sends them and CommitQuietly does nothing.
  void CommitQuietly();
  void Commit();

  // The unit of work: its transaction opened, committed, or undone with every
  // write waiting in kept rows.
  void BeginUnit();
  void CommitUnit();
  void RollbackUnit();
  // SQLite ends a transaction by itself on some failures: a unit whose
  // transaction is gone cannot go on.
  void UnitGoesOn() {
    if (!InTransaction())
      Fail(3000, QStringLiteral("Erreur du moteur de base de données "
                                "(la transaction a été annulée)."));
  }

  // Called before each write: opens the transaction that groups writes, and
  // commits one that has been open more than 100 ms or that has only read.
  void BeforeWrite() {
    ++epoch;
    if (unit) return UnitGoesOn();
    if (InTransaction()) {
      if (!readOnly && (holdCommits || Clock::now() - txStart < std::chrono::milliseconds(100)))
        return;
      Commit();
    }
    Step(begin);
    sqlite3_reset(begin);
    txStart = Clock::now();
    readOnly = false;
    CheckOthers();
  }

  // Called before rows are read: reads outside a transaction open one, so that
  // a walk over many rows takes the file's locks once instead of once a row. It
  // ends with the next commit, at the latest at the end of the event.
  void BeforeRead() {
    if (unit) return UnitGoesOn();
    if (InTransaction()) return;
    Step(beginRead);
    sqlite3_reset(beginRead);
    readOnly = true;
    CheckOthers();
  }

  // Kept rows: the tables that keep some, all their waiting writes sent, all
  // dropped (what was waiting is sent first).
  void Keeping(store::TableInfo& t);
  void FlushAll();
  void ForgetAll();
  // Drops every kept row without sending what waits in them.
  void DropAll();
  // Drops the kept rows when another connection committed since the last look.
  void CheckOthers();

  // The table of that name, read once per connection (until a schema change).
  std::shared_ptr<store::TableInfo> Table(const QString& name);
};

}  // namespace kuvo
