#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/StoreValue.h"

namespace kuvo {
struct StoreConnection;
}

// Rows found by Seek are kept in memory for the rest of the event, and the
// writes made to them wait there until something else needs the table: another
// statement on it, a commit, or the end of the event. SQLite then receives each
// changed row once, with the rowid it would have given a new row itself. Nothing
// can see the difference: every other way into the table sends the waiting
// writes first, and a table whose writes could do more than they say (a
// trigger, a default, a constraint other than its one unique index) keeps
// nothing.
namespace kuvo::store {

struct Order;
struct TableInfo;

// The cells of a kept row: up to three of them held inline, so that a narrow
// row lies in one piece of memory with its key.
class KeptCells {
 public:
  size_t size() const { return size_; }
  Cell& operator[](size_t i) { return size_ <= kInline ? inline_[i] : heap_[i]; }
  const Cell& operator[](size_t i) const { return size_ <= kInline ? inline_[i] : heap_[i]; }
  void resize(size_t n) {
    size_ = n;
    if (n > kInline) heap_.resize(n);
  }
  void Assign(const std::vector<Cell>& cells) {
    resize(cells.size());
    for (size_t i = 0; i < size_; ++i) (*this)[i] = cells[i];
  }
  void CopyTo(std::vector<Cell>& out) const {
    out.resize(size_);
    for (size_t i = 0; i < size_; ++i) out[i] = (*this)[i];
  }

 private:
  static constexpr size_t kInline = 3;
  size_t size_ = 0;
  std::array<Cell, kInline> inline_;
  std::vector<Cell> heap_;
};

// A row found by its key and kept in memory for the rest of an event, with the
// writes made to it that SQLite has not received yet.
struct KeptRow {
  std::string key;
  bool found = false;  // a row has this key; the fields below describe it
  sqlite3_int64 rowid = 0;
  KeptCells row;
  bool pendingInsert = false;     // the row itself is not written yet
  std::uint64_t pendingMask = 0;  // columns changed and not written yet
  bool queued = false;            // listed in KeptRows::pending
};

// Kept rows by key: open addressing over the keys' hashes, the rows themselves
// in blocks so that their addresses hold while more are added.
class KeptIndex {
 public:
  KeptRow* Find(std::string_view key, size_t hash) const;
  KeptRow& Add(KeptRow row, size_t hash);
  size_t Size() const { return size_; }
  void Clear();

 private:
  static constexpr size_t kBlock = 1024;
  struct Slot {
    std::uint32_t hash = 0;  // the low half of the key's hash, which places it
    std::uint32_t row = 0;   // 1 + the row's number; 0: free
  };
  KeptRow& At(std::uint32_t n) const { return blocks_[n / kBlock][n % kBlock]; }
  void Grow();
  std::vector<Slot> slots_;
  std::vector<std::unique_ptr<KeptRow[]>> blocks_;
  size_t size_ = 0;
};

// The rows of a table kept by the key of one of its indexes.
struct KeptRows {
  const Order* order = nullptr;  // none: nothing kept
  std::uint64_t generation = 1;  // changes whenever the kept rows are dropped
  KeptIndex rows;
  std::vector<KeptRow*> pending;  // in the order of the writes
  sqlite3_int64 nextRowid = 0;    // the rowid SQLite would give a new row; 0: not read yet
  bool complete = false;          // every row of the table is kept (it was empty at first)
};

// The key under which a cell of a column of type `type` is kept; false for a
// cell that is never kept (null, or a type whose equality SQLite sees otherwise).
bool KeyOf(const Cell& cell, ColType type, std::string& key);

// The rows of `t` kept by the key of `o`, kept from now on if they were not;
// null when `t` cannot keep rows by that order.
KeptRows* KeepBy(StoreConnection& c, TableInfo& t, const Order& o);

// The kept row of that key, read from SQLite the first time.
KeptRow& Find(StoreConnection& c, TableInfo& t, const std::string& key, const Cell& cell);

// The rowid for a new row written later, as SQLite would give it now; 0 when it
// cannot be known in advance.
sqlite3_int64 NextRowid(StoreConnection& c, TableInfo& t);

// Lists a row as waiting to be written.
void Queue(StoreConnection& c, TableInfo& t, KeptRow& row);

// Sends the waiting writes of `t` to SQLite.
void Flush(StoreConnection& c, TableInfo& t);

// Sends the waiting writes of `t`, then keeps nothing more of it.
void Forget(StoreConnection& c, TableInfo& t);

}  // namespace kuvo::store
