#pragma once

#include <sqlite3.h>

#include <memory>
#include <vector>

#include "core/Store.h"
#include "core/StoreConnection.h"
#include "core/StoreKeptRows.h"
#include "core/StoreTable.h"
#include "core/StoreValue.h"

namespace kuvo {

// The state behind a record set: its kind, its cursor and the row being written.
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
  std::shared_ptr<store::TableInfo> t;
  Kind kind = Kind::Table;
  State state = State::Pending;
  Mode mode = Mode::Idle;
  bool closed = false;
  bool noMatch = false;

  std::vector<store::Column> snapshotColumns;
  const std::vector<store::Column>* columns = nullptr;

  // The current row, as read when the connection's write count was `stamp`.
  sqlite3_int64 rowid = 0;
  std::vector<store::Cell> row;
  std::int64_t stamp = -1;

  // The kept row the last Seek found (or found missing), while its table keeps it.
  store::KeptRow* keptRow = nullptr;
  std::uint64_t keptGeneration = 0;

  // Table sets: the order, and the place of the current (or deleted) row in it.
  store::Order* order = nullptr;
  std::vector<store::Cell> anchorKey;
  sqlite3_int64 anchorRowid = 0;

  // Table sets walked by MoveNext while nothing writes their table: the rows
  // that follow the current one, read a few at a time.
  std::vector<std::pair<sqlite3_int64, std::vector<store::Cell>>> ahead;
  size_t aheadAt = 0;
  // The write counts at the last MoveNext; all ones: not walking.
  std::uint64_t walkWrites = ~std::uint64_t{0};
  std::uint64_t walkOthers = 0;

  // Statement and snapshot sets: the rows, the current one and how many were reached.
  std::vector<sqlite3_int64> ids;
  std::vector<std::vector<store::Cell>> snapshot;
  qsizetype pos = -1;
  qsizetype reached = 0;

  // The row being added or edited, and which of its columns were set.
  std::vector<store::Cell> edit;
  std::vector<char> dirty;

  static inline const QString kNoCurrent = QStringLiteral("Aucun enregistrement en cours.");

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

  // Sends the writes waiting for this set's table, before SQLite reads it.
  void Sync() {
    if (t && !t->kept.pending.empty()) store::Flush(*c, *t);
  }

  // The kept row the current row is, if it is one.
  store::KeptRow* Kept() const {
    if (!keptRow || !t || t->kept.generation != keptGeneration) return nullptr;
    return keptRow->found && keptRow->rowid == rowid ? keptRow : nullptr;
  }

  // The kept row of that key, the one the last Seek found missing or any other.
  store::KeptRow& Kept(const std::string& key, const store::Cell& cell) {
    if (keptRow && t->kept.generation == keptGeneration && keptRow->key == key) return *keptRow;
    return store::Find(*c, *t, key, cell);
  }

  // Steps a positioning statement (bound by the caller) and takes its row.
  bool Position(sqlite3_stmt* st) {
    DropAhead();
    Sync();
    c->BeforeRead();
    if (c->Step(st) != SQLITE_ROW) {
      sqlite3_reset(st);
      return false;
    }
    rowid = sqlite3_column_int64(st, 0);
    row.resize(Width());
    for (size_t i = 0; i < row.size(); ++i) ReadCell(st, static_cast<int>(i) + 1, row[i]);
    sqlite3_reset(st);
    stamp = c->epoch;
    state = State::Current;
    SetAnchor();
    return true;
  }

  // Takes a kept row as the current one.
  void Position(store::KeptRow& kept) {
    DropAhead();
    rowid = kept.rowid;
    kept.row.CopyTo(row);
    stamp = c->epoch;
    state = State::Current;
    SetAnchor();
    Remember(kept);
  }

  void Remember(store::KeptRow& kept) {
    keptRow = &kept;
    keptGeneration = t->kept.generation;
  }

  void SetAnchor() {
    anchorRowid = rowid;
    anchorKey.resize(order->cols.size());
    for (size_t i = 0; i < anchorKey.size(); ++i) anchorKey[i] = row[order->cols[i]];
  }

  void DropAhead() {
    ahead.clear();
    aheadAt = 0;
    walkWrites = ~std::uint64_t{0};
  }

  // MoveNext on a table set.
  void Next();

  void PositionEdge(bool last) {
    if (!Position(FirstStmt(*c, *t, *order, last))) state = State::Eof;
  }

  void Resolve() {
    if (state == State::Pending) PositionEdge(false);
  }

  // Rereads the current row when the connection wrote anything since it was read.
  void Refresh() {
    if (kind == Kind::Snapshot || stamp == c->epoch) return;
    Sync();
    sqlite3_stmt* st = ByRowidStmt(*c, *t);
    sqlite3_bind_int64(st, 1, rowid);
    c->BeforeRead();
    if (c->Step(st) != SQLITE_ROW) {
      sqlite3_reset(st);
      Fail(3167, QStringLiteral("L'enregistrement est supprimé."));
    }
    for (size_t i = 0; i < row.size(); ++i) ReadCell(st, static_cast<int>(i), row[i]);
    sqlite3_reset(st);
    stamp = c->epoch;
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

  // Writes left waiting in the table's kept rows, when nothing can tell them
  // from writes made at once; false when the write must be made now.
  bool DeferInsert();
  bool DeferUpdate(std::uint64_t mask);

  void Bind(sqlite3_stmt* st, std::uint64_t mask) {
    int p = 0;
    for (size_t col = 0; col < edit.size(); ++col)
      if (t->Includes(mask, col)) BindCell(st, ++p, edit[col]);
  }
};

}  // namespace kuvo
