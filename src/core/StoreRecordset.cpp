#include "core/StoreRecordset.h"

#include <sqlite3.h>

#include <algorithm>

namespace kuvo {

using namespace store;

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
  d->DropAhead();
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
  d->DropAhead();
  std::string keyText;
  if (KeyOf(cell, (*d->columns)[d->order->cols[0]].type, keyText) &&
      KeepBy(*d->c, *d->t, *d->order)) {
    KeptRow& kept = Find(*d->c, *d->t, keyText, cell);
    d->noMatch = !kept.found;
    if (kept.found) {
      d->Position(kept);
    } else {
      d->state = Impl::State::None;
      d->Remember(kept);
    }
    return;
  }
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
    c.BeforeWrite();
    ++t.writes;
    if (d->DeferInsert()) {
      d->CancelEdit();
      return;
    }
    Forget(c, t);
    sqlite3_stmt* st = InsertStmt(c, t, mask);
    d->Bind(st, mask);
    c.Step(st);
    sqlite3_reset(st);
    if (d->kind == Impl::Kind::Statement) {
      // A set from a statement shows the rows it added at its end.
      d->ids.push_back(sqlite3_last_insert_rowid(c.db));
      ++d->reached;
    }
  } else if (mask != 0 || t.columns.size() > 64) {
    c.BeforeWrite();
    ++t.writes;
    if (!d->DeferUpdate(mask)) {
      Forget(c, t);
      sqlite3_stmt* st = UpdateStmt(c, t, mask);
      d->Bind(st, mask);
      sqlite3_bind_int64(st, sqlite3_bind_parameter_count(st), d->rowid);
      c.Step(st);
      sqlite3_reset(st);
    }
    d->row = std::move(d->edit);
    d->stamp = c.epoch;
    if (d->kind == Impl::Kind::Table) d->SetAnchor();
  }
  d->CancelEdit();
}

void Recordset::Impl::Next() {
  // While the table stays as it was, the rows that follow were read with the
  // last ones; while nothing else writes it, they are read a few at a time.
  const bool unchanged = t->writes == walkWrites && c->otherWrites == walkOthers;
  if (unchanged && c->InTransaction() && aheadAt < ahead.size()) {
    rowid = ahead[aheadAt].first;
    row.swap(ahead[aheadAt].second);
    ++aheadAt;
    stamp = c->epoch;
    state = State::Current;
    SetAnchor();
    return;
  }
  const bool nullKey = std::any_of(anchorKey.begin(), anchorKey.end(),
                                   [](const Cell& k) { return k.type == SQLITE_NULL; });
  // Within a transaction only this connection changes what the set reads.
  const bool batch = unchanged && c->InTransaction();
  sqlite3_stmt* st = NextStmt(*c, *t, *order, nullKey, batch);
  const int n = static_cast<int>(anchorKey.size());
  for (int i = 0; i < n; ++i) BindCell(st, i + 1, anchorKey[i]);
  sqlite3_bind_int64(st, n + 1, anchorRowid);
  // The anchor's cells are bound without a copy; Position replaces them only
  // after the statement is reset.
  if (!batch) {
    if (!Position(st)) state = State::Eof;
  } else {
    DropAhead();
    Sync();
    while (c->Step(st) == SQLITE_ROW) {
      std::vector<Cell> cells(Width());
      for (size_t i = 0; i < cells.size(); ++i) ReadCell(st, static_cast<int>(i) + 1, cells[i]);
      ahead.emplace_back(sqlite3_column_int64(st, 0), std::move(cells));
    }
    sqlite3_reset(st);
    if (ahead.empty()) {
      state = State::Eof;
    } else {
      rowid = ahead[0].first;
      row.swap(ahead[0].second);
      aheadAt = 1;
      stamp = c->epoch;
      state = State::Current;
      SetAnchor();
    }
  }
  walkWrites = t->writes;
  walkOthers = c->otherWrites;
}

bool Recordset::Impl::DeferInsert() {
  const KeptRows& k = t->kept;
  if (kind != Kind::Table || !k.order || !t->plain) return false;
  // A unique index other than the one the rows are kept by could refuse the row.
  if (t->uniqueIndexes > (k.order->unique ? 1 : 0)) return false;
  const int keyColumn = k.order->cols[0];
  std::string key;
  if (!KeyOf(edit[keyColumn], (*columns)[keyColumn].type, key)) return false;
  KeptRow& kept = Kept(key, edit[keyColumn]);
  // A new row is the one its key finds only when no row had that key.
  if (kept.found) return false;
  const sqlite3_int64 next = NextRowid(*c, *t);
  if (next == 0) return false;
  ++t->kept.nextRowid;
  kept.found = true;
  kept.rowid = next;
  kept.row.Assign(edit);
  kept.pendingInsert = true;
  Queue(*c, *t, kept);
  return true;
}

bool Recordset::Impl::DeferUpdate(std::uint64_t mask) {
  KeptRow* kept = Kept();
  // A change to an indexed column would move the row in an order, or clash.
  if (!kept || !t->plain || (mask & t->indexedMask) != 0) return false;
  kept->row.Assign(edit);
  if (!kept->pendingInsert) kept->pendingMask |= mask;
  Queue(*c, *t, *kept);
  return true;
}

void Recordset::Delete() {
  d->CheckOpen();
  d->CheckWritable();
  d->CancelEdit();
  d->RequireCurrent();
  StoreConnection& c = *d->c;
  c.BeforeWrite();
  ++d->t->writes;
  Forget(c, *d->t);
  sqlite3_stmt* st = DeleteStmt(c, *d->t);
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
  if (d->state == Impl::State::Eof) d->Fail(Err::NoCurrentRecord, Impl::kNoCurrent);
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
  if (d->state == Impl::State::Eof) d->Fail(Err::NoCurrentRecord, Impl::kNoCurrent);
}

void Recordset::MoveNext() {
  d->CheckOpen();
  d->CancelEdit();
  d->c->BeforeRead();
  d->Resolve();
  if (d->state == Impl::State::Eof || d->state == Impl::State::None)
    d->Fail(Err::NoCurrentRecord, Impl::kNoCurrent);
  if (d->kind == Impl::Kind::Table) {
    d->Next();
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
  d->Sync();
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
  d->DropAhead();
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

}  // namespace kuvo
