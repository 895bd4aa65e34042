// What the store's tests share: a fresh store per test, a second connection
// on its file, and the error an action raises.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QTemporaryDir>
#include <functional>

#include "core/Store.h"
#include "core/Texts.h"

// Readable values in failure messages.
static void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }
static void PrintTo(const QVariant& v, std::ostream* os) {
  *os << v.typeName() << '(' << v.toString().toStdString() << ')';
}

namespace kuvo::storetest {

// The error number `action` raises (0 when it raises none).
inline int ErrorOf(const std::function<void()>& action, QString* text = nullptr) {
  try {
    action();
  } catch (const VbError& e) {
    if (text) *text = e.Description();
    return e.Number();
  }
  return 0;
}

// A second connection on the same file: sees only what the store committed.
class OtherConnection {
 public:
  explicit OtherConnection(const QString& path, bool writes = false) {
    sqlite3_open_v2(path.toUtf8().constData(), &db_,
                    writes ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY, nullptr);
    sqlite3_busy_timeout(db_, 2000);
  }
  ~OtherConnection() { sqlite3_close_v2(db_); }
  // The first column of the first row of `sql`, as text.
  QString Text(const char* sql) {
    sqlite3_stmt* st = nullptr;
    QString result;
    if (sqlite3_prepare_v2(db_, sql, -1, &st, nullptr) == SQLITE_OK &&
        sqlite3_step(st) == SQLITE_ROW && sqlite3_column_type(st, 0) != SQLITE_NULL)
      result = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
    sqlite3_finalize(st);
    return result;
  }
  long long Count(const char* table) {
    return Text(QStringLiteral("SELECT count(*) FROM %1")
                    .arg(QLatin1String(table))
                    .toUtf8()
                    .constData())
        .toLongLong();
  }

  // Runs statements; true when they all went through.
  bool Exec(const char* sql) {
    return sqlite3_exec(db_, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
  }

 private:
  sqlite3* db_ = nullptr;
};

class StoreTest : public ::testing::Test {
 protected:
  void SetUp() override {
    SetRegional(QLocale(QLocale::French, QLocale::France));
    ASSERT_TRUE(dir_.isValid());
    path_ = dir_.filePath(QStringLiteral("Kuvo.Mdb"));
    CreateStore(path_, ShippedSchema());
    db_ = Database::OpenDatabase(path_);
  }

  // Seeks `key` on the set's index and writes one field of the row found.
  static void SeekAndSet(Recordset& rs, const QString& key, const QString& field,
                         const QVariant& value) {
    rs.Seek(QStringLiteral("="), key);
    rs.Edit();
    rs.Fields(field).SetValue(value);
    rs.Update();
  }

  // Adds rows (Numeros, Sorties) to a Groupe table through a table-type set.
  void AddGroups(const char* table, std::initializer_list<std::pair<const char*, int>> rows) {
    auto rs = db_->OpenRecordset(QLatin1String(table));
    for (const auto& [numeros, sorties] : rows) {
      rs->AddNew();
      rs->Fields(QStringLiteral("Numeros")).SetValue(QString::fromUtf8(numeros));
      rs->Fields(QStringLiteral("Sorties")).SetValue(sorties);
      rs->Update();
    }
  }

  // Adds a draw to Sorties.
  void AddDraw(const QDate& date, int n1, int chance) {
    auto rs = db_->OpenRecordset(QStringLiteral("Sorties"));
    rs->AddNew();
    rs->Fields(QStringLiteral("DateTirage")).SetValue(date);
    for (int i = 0; i < 5; ++i) rs->Fields(QStringLiteral("numero%1").arg(i + 1)).SetValue(n1 + i);
    rs->Fields(QStringLiteral("NumeroChance")).SetValue(chance);
    rs->Update();
  }

  // The Numeros of every row of a set, from its current row on.
  static QStringList Walk(Recordset& rs) {
    QStringList seen;
    while (!rs.Eof()) {
      seen << rs.Fields(QStringLiteral("Numeros")).GetValue().toString();
      rs.MoveNext();
    }
    return seen;
  }

  QTemporaryDir dir_;
  QString path_;
  std::unique_ptr<Database> db_;
};

}  // namespace kuvo::storetest
