#include "core/StoreKeptRows.h"

#include <sqlite3.h>

#include <algorithm>
#include <limits>

#include "core/StoreConnection.h"
#include "core/StoreTable.h"

namespace kuvo::store {

namespace {

// Beyond this many rows a table starts keeping anew, so that memory stays bounded.
constexpr size_t kMostKept = 300000;

// Reads the rowid SQLite would give a new row now; false when the table is empty.
// No row waits to be added while it is unknown, so SQLite knows the largest.
bool ReadNextRowid(StoreConnection& c, TableInfo& t) {
  sqlite3_stmt* st = MaxRowidStmt(c, t);
  c.Step(st);
  const bool empty = sqlite3_column_type(st, 0) == SQLITE_NULL;
  const sqlite3_int64 largest = sqlite3_column_int64(st, 0);
  sqlite3_reset(st);
  // After the largest possible rowid SQLite picks one at random; after -1 it
  // would give 0, which here means unknown: such rows are written at once.
  if (empty)
    t.kept.nextRowid = 1;
  else if (largest != std::numeric_limits<sqlite3_int64>::max() && largest != -1)
    t.kept.nextRowid = largest + 1;
  return !empty;
}

// Starts keeping the rows of `t` by `o`. A table empty now has all its rows
// kept from now on, so that a key not kept is a key no row has.
void Start(StoreConnection& c, TableInfo& t, const Order& o) {
  KeptRows& k = t.kept;
  k.order = &o;
  k.complete = !ReadNextRowid(c, t);
  c.Keeping(t);
}

}  // namespace

KeptRow* KeptIndex::Find(std::string_view key, size_t hash) const {
  if (slots_.empty()) return nullptr;
  const size_t mask = slots_.size() - 1;
  for (size_t i = hash & mask;; i = (i + 1) & mask) {
    const Slot& slot = slots_[i];
    if (slot.row == 0) return nullptr;
    if (slot.hash == static_cast<std::uint32_t>(hash)) {
      KeptRow& row = At(slot.row - 1);
      if (row.key == key) return &row;
    }
  }
}

KeptRow& KeptIndex::Add(KeptRow row, size_t hash) {
  if ((size_ + 1) * 2 > slots_.size()) Grow();
  if (size_ % kBlock == 0) blocks_.push_back(std::make_unique<KeptRow[]>(kBlock));
  const auto n = static_cast<std::uint32_t>(size_++);
  KeptRow& added = At(n);
  added = std::move(row);
  const size_t mask = slots_.size() - 1;
  size_t i = hash & mask;
  while (slots_[i].row != 0) i = (i + 1) & mask;
  slots_[i] = Slot{static_cast<std::uint32_t>(hash), n + 1};
  return added;
}

void KeptIndex::Grow() {
  std::vector<Slot> old;
  old.swap(slots_);
  slots_.resize(old.empty() ? 1024 : old.size() * 2);
  const size_t mask = slots_.size() - 1;
  for (const Slot& slot : old) {
    if (slot.row == 0) continue;
    size_t i = slot.hash & mask;
    while (slots_[i].row != 0) i = (i + 1) & mask;
    slots_[i] = slot;
  }
}

void KeptIndex::Clear() {
  slots_.clear();
  slots_.shrink_to_fit();
  blocks_.clear();
  size_ = 0;
}

bool KeyOf(const Cell& cell, ColType type, std::string& key) {
  switch (type) {
    case ColType::Text:
    case ColType::Date:
      // Text columns compare bytes (no collation), dates are kept as ISO texts.
      if (cell.type != SQLITE_TEXT) return false;
      key.assign(1, 't');
      key.append(cell.s);
      return true;
    case ColType::SmallInt:
    case ColType::Long:
    case ColType::BigInt:
      if (cell.type != SQLITE_INTEGER) return false;
      key.assign(1, 'i');
      key.append(reinterpret_cast<const char*>(&cell.i), sizeof cell.i);
      return true;
    default: return false;
  }
}

KeptRows* KeepBy(StoreConnection& c, TableInfo& t, const Order& o) {
  if (!t.plain || o.cols.size() != 1) return nullptr;
  switch (t.columns[o.cols[0]].type) {
    case ColType::Text:
    case ColType::Date:
    case ColType::SmallInt:
    case ColType::Long:
    case ColType::BigInt: break;
    default: return nullptr;
  }
  // The rows are read in a transaction, whose start looks for other
  // connections' commits.
  c.BeforeRead();
  KeptRows& k = t.kept;
  if (k.order != &o) {
    Forget(c, t);
    Start(c, t, o);
  }
  return &k;
}

KeptRow& Find(StoreConnection& c, TableInfo& t, const std::string& key, const Cell& cell) {
  KeptRows& k = t.kept;
  const size_t hash = std::hash<std::string_view>()(key);
  if (KeptRow* kept = k.rows.Find(key, hash)) return *kept;
  if (k.rows.Size() >= kMostKept) {
    const Order* order = k.order;
    Forget(c, t);
    Start(c, t, *order);
  }
  KeptRow row;
  row.key = key;
  if (k.complete) return k.rows.Add(std::move(row), hash);
  // Every waiting write is on a kept row, so SQLite holds the rows of a key not
  // kept as they stand.
  sqlite3_stmt* st = SeekStmt(c, t, const_cast<Order&>(*k.order));
  BindCell(st, 1, cell);
  if (c.Step(st) == SQLITE_ROW) {
    row.found = true;
    row.rowid = sqlite3_column_int64(st, 0);
    row.row.resize(t.columns.size());
    for (size_t i = 0; i < row.row.size(); ++i) ReadCell(st, static_cast<int>(i) + 1, row.row[i]);
  }
  sqlite3_reset(st);
  return k.rows.Add(std::move(row), hash);
}

sqlite3_int64 NextRowid(StoreConnection& c, TableInfo& t) {
  if (t.kept.nextRowid == 0) ReadNextRowid(c, t);
  return t.kept.nextRowid;
}

void Queue(StoreConnection& c, TableInfo& t, KeptRow& row) {
  if (row.queued) return;
  row.queued = true;
  t.kept.pending.push_back(&row);
  c.Keeping(t);
}

void Flush(StoreConnection& c, TableInfo& t) {
  KeptRows& k = t.kept;
  if (k.pending.empty()) return;
  // The rows go about in the order of the table's pages: new rows by the first
  // bytes of their key, which is their index's order, changed rows by rowid,
  // the table's own.
  std::vector<std::pair<std::uint64_t, KeptRow*>> order;
  order.reserve(k.pending.size());
  for (KeptRow* r : k.pending) {
    std::uint64_t rank = static_cast<std::uint64_t>(r->rowid);
    if (r->pendingInsert) {
      rank = 0;
      for (size_t i = 1; i < 9; ++i)
        rank = rank << 8 | (i < r->key.size() ? static_cast<unsigned char>(r->key[i]) : 0);
      rank = rank >> 1;  // new rows come first
    } else {
      rank |= std::uint64_t{1} << 63;
    }
    order.emplace_back(rank, r);
  }
  k.pending.clear();
  std::sort(order.begin(), order.end());
  try {
    for (const auto& [rank, r] : order) {
      const bool insert = r->pendingInsert;
      const std::uint64_t mask = r->pendingMask;
      r->pendingInsert = false;
      r->pendingMask = 0;
      r->queued = false;
      sqlite3_stmt* st;
      if (insert) {
        st = InsertWithRowidStmt(c, t);
        sqlite3_bind_int64(st, 1, r->rowid);
        for (size_t col = 0; col < r->row.size(); ++col)
          BindCell(st, static_cast<int>(col) + 2, r->row[col]);
      } else if (mask) {
        st = UpdateStmt(c, t, mask);
        int p = 0;
        for (size_t col = 0; col < r->row.size(); ++col)
          if (t.Includes(mask, col)) BindCell(st, ++p, r->row[col]);
        sqlite3_bind_int64(st, p + 1, r->rowid);
      } else {
        continue;
      }
      c.Step(st);
      sqlite3_reset(st);
    }
  } catch (...) {
    // What could not be written is not kept either.
    k.rows.Clear();
    k.order = nullptr;
    k.nextRowid = 0;
    k.complete = false;
    ++k.generation;
    throw;
  }
}

void Forget(StoreConnection& c, TableInfo& t) {
  KeptRows& k = t.kept;
  if (!k.order && k.pending.empty()) return;
  Flush(c, t);
  k.rows.Clear();
  k.order = nullptr;
  k.nextRowid = 0;
  k.complete = false;
  ++k.generation;
}

}  // namespace kuvo::store
