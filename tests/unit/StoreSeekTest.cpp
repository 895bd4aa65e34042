// Rows found by Seek and the writes made to them: whatever the store keeps in
// memory, every reader sees what a write made at once would have shown.
#include <thread>

#include "StoreTestSupport.h"

namespace kuvo {
namespace {

using namespace storetest;

class StoreSeekTest : public StoreTest {
 protected:
  // Counts a key once in a group table, as the group tables are kept: a new
  // row at 1, or one more on the row found.
  static void Count(Recordset& rs, const QString& key) {
    rs.Seek(QStringLiteral("="), key);
    if (rs.NoMatch()) {
      rs.AddNew();
      rs.Fields(QStringLiteral("Numeros")).SetValue(key);
      rs.Fields(QStringLiteral("Sorties")).SetValue(1);
    } else {
      const qlonglong n = rs.Fields(QStringLiteral("Sorties")).GetValue().toLongLong();
      rs.Edit();
      rs.Fields(QStringLiteral("Sorties")).SetValue(n + 1);
    }
    rs.Update();
  }

  std::shared_ptr<Recordset> Groups(const char* table = "Groupe2") {
    auto rs = db_->OpenRecordset(QLatin1String(table));
    rs->SetIndex(QStringLiteral("Numeros"));
    return rs;
  }

  // Every row of a group table in rowid order, as "rowid:Numeros=Sorties".
  QString Rows(const char* table = "Groupe2") {
    db_->CommitPending();
    OtherConnection other(path_);
    return other.Text(QStringLiteral("SELECT group_concat(rowid || ':' || Numeros || '=' || "
                                     "Sorties, ' ') FROM (SELECT rowid, * FROM %1 ORDER BY rowid)")
                          .arg(QLatin1String(table))
                          .toUtf8()
                          .constData());
  }

  QVariant Sorties(Recordset& rs, const QString& key) {
    rs.Seek(QStringLiteral("="), key);
    if (rs.NoMatch()) return QStringLiteral("no match");
    return rs.Fields(QStringLiteral("Sorties")).GetValue();
  }
};

TEST_F(StoreSeekTest, CountedRowsComeInTheOrderTheyWereFirstWritten) {
  auto rs = Groups();
  for (const char* key : {"05,07", "01,02", "05,07", "03,04", "01,02", "05,07"})
    Count(*rs, QLatin1String(key));
  OtherConnection other(path_);
  EXPECT_EQ(other.Count("Groupe2"), 0);  // nothing committed before the end of the event
  EXPECT_EQ(Rows(), QStringLiteral("1:05,07=3 2:01,02=2 3:03,04=1"));
}

TEST_F(StoreSeekTest, SeekFindsWhatThePassWroteAndAFreshSetDoesToo) {
  auto rs = Groups();
  Count(*rs, QStringLiteral("01,02"));
  EXPECT_EQ(Sorties(*rs, QStringLiteral("01,02")), QVariant(qlonglong{1}));
  Count(*rs, QStringLiteral("01,02"));
  EXPECT_EQ(Sorties(*rs, QStringLiteral("01,02")), QVariant(qlonglong{2}));
  EXPECT_EQ(rs->Fields(QStringLiteral("Numeros")).GetValue(), QVariant(QStringLiteral("01,02")));
  auto fresh = Groups();
  EXPECT_EQ(Sorties(*fresh, QStringLiteral("01,02")), QVariant(qlonglong{2}));
  EXPECT_EQ(Sorties(*fresh, QStringLiteral("01,03")), QVariant(QStringLiteral("no match")));
}

TEST_F(StoreSeekTest, EveryOtherReaderSeesTheWritesOfThePass) {
  auto rs = Groups();
  for (const char* key : {"03,04", "01,02", "03,04", "05,06"}) Count(*rs, QLatin1String(key));

  // A table-type set walking the index, and its count.
  auto walker = Groups();
  QStringList seen;
  while (!walker->Eof()) {
    seen << walker->Fields(0).GetValue().toString() + QLatin1Char('=') +
                walker->Fields(1).GetValue().toString();
    walker->MoveNext();
  }
  EXPECT_EQ(seen, (QStringList{"01,02=1", "03,04=2", "05,06=1"}));
  Count(*rs, QStringLiteral("07,08"));
  EXPECT_EQ(walker->RecordCount(), 4);
  Count(*rs, QStringLiteral("01,02"));
  walker->MoveFirst();
  EXPECT_EQ(walker->Fields(1).GetValue(), QVariant(qlonglong{2}));

  // A set from a statement, and the same row changed afterwards through Seek.
  auto ranked = db_->OpenRecordset(QStringLiteral("select* from Groupe2 order by Sorties DESC "));
  EXPECT_EQ(ranked->Fields(QStringLiteral("Numeros")).GetValue(),
            QVariant(QStringLiteral("03,04")));
  Count(*rs, QStringLiteral("03,04"));
  EXPECT_EQ(ranked->Fields(QStringLiteral("Sorties")).GetValue(), QVariant(qlonglong{3}));

  // A statement run on the table.
  db_->Execute(QStringLiteral("DELETE * FROM Groupe2"));
  EXPECT_EQ(Sorties(*rs, QStringLiteral("03,04")), QVariant(QStringLiteral("no match")));
  Count(*rs, QStringLiteral("03,04"));
  EXPECT_EQ(Rows(), QStringLiteral("1:03,04=1"));
}

TEST_F(StoreSeekTest, SeekSeesWhatOtherSetsWrote) {
  auto rs = Groups();
  Count(*rs, QStringLiteral("01,02"));
  Count(*rs, QStringLiteral("03,04"));

  // A row added by a set that never sought.
  AddGroups("Groupe2", {{"07,08", 5}});
  EXPECT_EQ(Sorties(*rs, QStringLiteral("07,08")), QVariant(qlonglong{5}));

  // A key changed, a count changed, a row deleted, each by another set.
  auto other = Groups();
  SeekAndSet(*other, QStringLiteral("01,02"), QStringLiteral("Numeros"), QStringLiteral("01,09"));
  EXPECT_EQ(Sorties(*rs, QStringLiteral("01,02")), QVariant(QStringLiteral("no match")));
  EXPECT_EQ(Sorties(*rs, QStringLiteral("01,09")), QVariant(qlonglong{1}));
  auto statement = db_->OpenRecordset(QStringLiteral("select* from Groupe2 order by Numeros ASC "));
  statement->MoveLast();
  statement->Edit();
  statement->Fields(QStringLiteral("Sorties")).SetValue(9);
  statement->Update();
  EXPECT_EQ(Sorties(*rs, QStringLiteral("07,08")), QVariant(qlonglong{9}));
  other->Seek(QStringLiteral("="), QStringLiteral("03,04"));
  other->Delete();
  EXPECT_EQ(Sorties(*rs, QStringLiteral("03,04")), QVariant(QStringLiteral("no match")));
  Count(*rs, QStringLiteral("03,04"));
  EXPECT_EQ(Rows(), QStringLiteral("1:01,09=1 3:07,08=9 4:03,04=1"));
}

TEST_F(StoreSeekTest, ACountReadBeforeAnotherSetWroteIsWhatTheEditWrites) {
  auto rs = Groups();
  Count(*rs, QStringLiteral("01,02"));
  rs->Seek(QStringLiteral("="), QStringLiteral("01,02"));
  const qlonglong n = rs->Fields(QStringLiteral("Sorties")).GetValue().toLongLong();
  auto other = Groups();
  SeekAndSet(*other, QStringLiteral("01,02"), QStringLiteral("Sorties"), 40);
  // The set reads the row anew on its next use; the count taken before stands.
  EXPECT_EQ(rs->Fields(QStringLiteral("Sorties")).GetValue(), QVariant(qlonglong{40}));
  rs->Edit();
  rs->Fields(QStringLiteral("Sorties")).SetValue(n + 1);
  rs->Update();
  EXPECT_EQ(Rows(), QStringLiteral("1:01,02=2"));
}

TEST_F(StoreSeekTest, NoMatchLeavesNoCurrentRecordAndErrorsAreTheSame) {
  auto rs = Groups();
  Count(*rs, QStringLiteral("01,02"));
  rs->Seek(QStringLiteral("="), QStringLiteral("09,10"));
  ASSERT_TRUE(rs->NoMatch());
  EXPECT_EQ(ErrorOf([&] { rs->Fields(QStringLiteral("Sorties")).GetValue(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { rs->Edit(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { rs->Delete(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { rs->Update(); }), 3020);
  EXPECT_EQ(ErrorOf([&] { rs->MoveNext(); }), 3021);
  rs->Seek(QStringLiteral("="), QStringLiteral("01,02"));
  EXPECT_FALSE(rs->NoMatch());
  rs->Edit();
  QString text;
  EXPECT_EQ(
      ErrorOf([&] { rs->Fields(QStringLiteral("Sorties")).SetValue(QStringLiteral("?")); }, &text),
      3421);
  EXPECT_EQ(text, QStringLiteral("Erreur de conversion de type de données."));
  rs->Update();
  EXPECT_EQ(ErrorOf([&] { rs->Seek(QStringLiteral(">"), QStringLiteral("01,02")); }), 3001);
  EXPECT_EQ(Rows(), QStringLiteral("1:01,02=1"));
}

TEST_F(StoreSeekTest, AKeyAddedTwiceRaises3022AfterCommittingThePass) {
  auto rs = Groups();
  Count(*rs, QStringLiteral("01,02"));
  Count(*rs, QStringLiteral("03,04"));
  QString text;
  EXPECT_EQ(ErrorOf([&] { AddGroups("Groupe2", {{"03,04", 1}}); }, &text), 3022);
  EXPECT_TRUE(text.startsWith(QStringLiteral("Les modifications n'ont pas abouti")));
  OtherConnection other(path_);
  EXPECT_EQ(other.Count("Groupe2"), 2);
}

TEST_F(StoreSeekTest, AnErrorOfTheStoreCommitsWhatThePassWrote) {
  auto rs = Groups();
  Count(*rs, QStringLiteral("01,02"));
  Count(*rs, QStringLiteral("01,02"));
  rs->Seek(QStringLiteral("="), QStringLiteral("05,06"));
  EXPECT_EQ(ErrorOf([&] { rs->MoveNext(); }), 3021);
  OtherConnection other(path_);
  EXPECT_EQ(other.Text("SELECT Numeros || '=' || Sorties FROM Groupe2"), QStringLiteral("01,02=2"));
}

TEST_F(StoreSeekTest, AnOldTransactionIsCommittedAtTheNextCount) {
  auto rs = Groups();
  Count(*rs, QStringLiteral("01,02"));
  Count(*rs, QStringLiteral("01,02"));
  OtherConnection other(path_);
  EXPECT_EQ(other.Count("Groupe2"), 0);
  std::this_thread::sleep_for(std::chrono::milliseconds(150));
  Count(*rs, QStringLiteral("03,04"));
  EXPECT_EQ(other.Text("SELECT Numeros || '=' || Sorties FROM Groupe2"), QStringLiteral("01,02=2"));
  Count(*rs, QStringLiteral("01,02"));
  EXPECT_EQ(Rows(), QStringLiteral("1:01,02=3 2:03,04=1"));
}

TEST_F(StoreSeekTest, WritesOfAnotherConnectionAreFound) {
  auto rs = Groups();
  EXPECT_EQ(Sorties(*rs, QStringLiteral("01,02")), QVariant(QStringLiteral("no match")));
  OtherConnection other(path_, true);
  ASSERT_TRUE(other.Exec("INSERT INTO Groupe2 VALUES ('01,02', 6)"));
  db_->CommitPending();  // the reads of an event share one snapshot
  EXPECT_EQ(Sorties(*rs, QStringLiteral("01,02")), QVariant(qlonglong{6}));
  ASSERT_TRUE(other.Exec("UPDATE Groupe2 SET Sorties = 8"));
  db_->CommitPending();
  EXPECT_EQ(Sorties(*rs, QStringLiteral("01,02")), QVariant(qlonglong{8}));
  Count(*rs, QStringLiteral("01,02"));
  Count(*rs, QStringLiteral("03,04"));
  EXPECT_EQ(Rows(), QStringLiteral("1:01,02=9 2:03,04=1"));
}

TEST_F(StoreSeekTest, RowsKeptAcrossAnotherConnectionsCommitAreReadAgain) {
  AddGroups("Groupe2", {{"01,02", 1}, {"03,04", 1}});
  db_->CommitPending();
  auto rs = Groups();
  EXPECT_EQ(Sorties(*rs, QStringLiteral("01,02")), QVariant(qlonglong{1}));
  // While this connection has only read, another one commits.
  OtherConnection other(path_, true);
  ASSERT_TRUE(other.Exec("UPDATE Groupe2 SET Sorties = 5 WHERE Numeros = '01,02'"));
  // The first write ends the reading snapshot; the row kept from it is read anew.
  AddGroups("Groupe2", {{"05,06", 1}});
  EXPECT_EQ(Sorties(*rs, QStringLiteral("01,02")), QVariant(qlonglong{5}));
}

TEST_F(StoreSeekTest, ACommitInTheMiddleOfACountLosesNothing) {
  auto rs = Groups();
  Count(*rs, QStringLiteral("01,02"));
  rs->Seek(QStringLiteral("="), QStringLiteral("01,02"));
  const qlonglong n = rs->Fields(QStringLiteral("Sorties")).GetValue().toLongLong();
  db_->CommitPending();  // an event served in between ends
  rs->Edit();
  rs->Fields(QStringLiteral("Sorties")).SetValue(n + 1);
  rs->Update();
  Count(*rs, QStringLiteral("03,04"));
  EXPECT_EQ(Rows(), QStringLiteral("1:01,02=2 2:03,04=1"));
}

TEST_F(StoreSeekTest, NewRowsTakeTheRowidAfterTheLargest) {
  AddGroups("Groupe2", {{"01,02", 1}, {"03,04", 1}, {"05,06", 1}});
  auto last = Groups();
  last->MoveLast();
  last->Delete();
  auto rs = Groups();
  Count(*rs, QStringLiteral("07,08"));
  Count(*rs, QStringLiteral("01,02"));
  Count(*rs, QStringLiteral("09,10"));
  EXPECT_EQ(Rows(), QStringLiteral("1:01,02=2 2:03,04=1 3:07,08=1 4:09,10=1"));
}

TEST_F(StoreSeekTest, ANullKeyIsNeverFound) {
  auto plain = db_->OpenRecordset(QStringLiteral("Groupe2"));
  plain->AddNew();
  plain->Fields(QStringLiteral("Sorties")).SetValue(4);
  plain->Update();
  auto rs = Groups();
  rs->Seek(QStringLiteral("="), QVariant());
  EXPECT_TRUE(rs->NoMatch());
  Count(*rs, QStringLiteral("01,02"));
  EXPECT_EQ(Rows(), QStringLiteral("2:01,02=1"));
}

TEST_F(StoreSeekTest, ByDateTheFirstRowOfADateIsFoundAndTheWalkGoesOn) {
  auto rs = db_->OpenRecordset(QStringLiteral("Sorties"));
  rs->SetIndex(QStringLiteral("DateTirage"));
  for (int chance = 1; chance <= 3; ++chance) {
    rs->Seek(QStringLiteral("="), QDate(2001, 5, chance == 2 ? 1 : 8));
    rs->AddNew();
    rs->Fields(QStringLiteral("DateTirage")).SetValue(QDate(2001, 5, chance == 2 ? 1 : 8));
    rs->Fields(QStringLiteral("NumeroChance")).SetValue(chance);
    rs->Update();
  }
  rs->Seek(QStringLiteral("="), QStringLiteral("08/05/2001"));
  ASSERT_FALSE(rs->NoMatch());
  EXPECT_EQ(rs->Fields(QStringLiteral("NumeroChance")).GetValue(), QVariant(qlonglong{1}));
  rs->MoveNext();
  EXPECT_EQ(rs->Fields(QStringLiteral("NumeroChance")).GetValue(), QVariant(qlonglong{3}));
  rs->MoveNext();
  EXPECT_TRUE(rs->Eof());
  rs->Seek(QStringLiteral("="), QDate(2001, 5, 1));
  EXPECT_EQ(rs->Fields(QStringLiteral("NumeroChance")).GetValue(), QVariant(qlonglong{2}));
  rs->Seek(QStringLiteral("="), QDate(2001, 5, 2));
  EXPECT_TRUE(rs->NoMatch());
  EXPECT_EQ(rs->RecordCount(), 3);
}

// Walks: a table set moving on with MoveNext reads the rows as they are.

TEST_F(StoreSeekTest, AWalkSeesRowsAddedChangedAndDeletedAheadOfIt) {
  AddGroups("Groupe3", {{"01", 1}, {"03", 1}, {"05", 1}, {"07", 1}, {"09", 1}, {"11", 1}});
  auto walker = Groups("Groupe3");
  auto rs = Groups("Groupe3");
  walker->MoveNext();
  walker->MoveNext();
  EXPECT_EQ(walker->Fields(0).GetValue(), QVariant(QStringLiteral("05")));
  Count(*rs, QStringLiteral("06"));
  walker->MoveNext();
  EXPECT_EQ(walker->Fields(0).GetValue(), QVariant(QStringLiteral("06")));
  walker->MoveNext();
  Count(*rs, QStringLiteral("09"));
  rs->Seek(QStringLiteral("="), QStringLiteral("07"));
  rs->Delete();
  walker->MoveNext();
  EXPECT_EQ(walker->Fields(0).GetValue(), QVariant(QStringLiteral("09")));
  EXPECT_EQ(walker->Fields(1).GetValue(), QVariant(qlonglong{2}));
  AddGroups("Groupe3", {{"10", 4}});
  walker->MoveNext();
  EXPECT_EQ(walker->Fields(0).GetValue(), QVariant(QStringLiteral("10")));
  db_->Execute(QStringLiteral("DELETE FROM Groupe3 WHERE Numeros = \"11\""));
  walker->MoveNext();
  EXPECT_TRUE(walker->Eof());
}

TEST_F(StoreSeekTest, AWalkSeesAnotherConnectionsRowsAfterTheEvent) {
  AddGroups("Groupe2", {{"01", 1}, {"02", 1}, {"04", 1}, {"05", 1}});
  auto walker = Groups();
  walker->MoveNext();
  walker->MoveNext();
  EXPECT_EQ(walker->Fields(0).GetValue(), QVariant(QStringLiteral("04")));
  db_->CommitPending();
  OtherConnection other(path_, true);
  ASSERT_TRUE(other.Exec("INSERT INTO Groupe2 VALUES ('04,5', 3)"));
  walker->MoveNext();
  EXPECT_EQ(walker->Fields(0).GetValue(), QVariant(QStringLiteral("04,5")));
  walker->MoveNext();
  EXPECT_EQ(walker->Fields(0).GetValue(), QVariant(QStringLiteral("05")));
}

TEST_F(StoreSeekTest, AWalkThatChangesEveryRowVisitsEachOnce) {
  AddGroups("Groupe4", {{"a", 1}, {"b", 2}, {"c", 3}, {"d", 4}});
  auto walker = Groups("Groupe4");
  QStringList seen;
  while (!walker->Eof()) {
    seen << walker->Fields(0).GetValue().toString();
    walker->Edit();
    walker->Fields(1).SetValue(walker->Fields(1).GetValue().toInt() * 10);
    walker->Update();
    walker->MoveNext();
  }
  EXPECT_EQ(seen, (QStringList{"a", "b", "c", "d"}));
  EXPECT_EQ(Rows("Groupe4"), QStringLiteral("1:a=10 2:b=20 3:c=30 4:d=40"));
}

// A store of its own schema, for tables other than the program's.
class StoreSeekSchemaTest : public ::testing::Test {
 protected:
  void SetUp() override { SetRegional(QLocale(QLocale::French, QLocale::France)); }

  void Make(const char* schema) {
    path_ = dir_.filePath(QStringLiteral("Essai.Mdb"));
    CreateStore(path_, QLatin1String(schema));
    db_ = Database::OpenDatabase(path_);
  }

  std::shared_ptr<Recordset> Keyed(const char* table) {
    auto rs = db_->OpenRecordset(QLatin1String(table));
    rs->SetIndex(QStringLiteral("Cle"));
    return rs;
  }

  QTemporaryDir dir_;
  QString path_;
  std::unique_ptr<Database> db_;
};

TEST_F(StoreSeekSchemaTest, ADefaultValueIsWhatTheNewRowHolds) {
  Make(
      "CREATE TABLE Defaut (Cle TEXT, Nombre INTEGER DEFAULT 7);"
      "CREATE UNIQUE INDEX Defaut_Cle ON Defaut (Cle);");
  auto rs = Keyed("Defaut");
  rs->Seek(QStringLiteral("="), QStringLiteral("a"));
  ASSERT_TRUE(rs->NoMatch());
  rs->AddNew();
  rs->Fields(QStringLiteral("Cle")).SetValue(QStringLiteral("a"));
  rs->Update();
  rs->Seek(QStringLiteral("="), QStringLiteral("a"));
  ASSERT_FALSE(rs->NoMatch());
  EXPECT_EQ(rs->Fields(QStringLiteral("Nombre")).GetValue(), QVariant(qlonglong{7}));
}

TEST_F(StoreSeekSchemaTest, ATriggerRunsAtTheUpdate) {
  Make(
      "CREATE TABLE Suivi (Cle TEXT, Nombre INTEGER);"
      "CREATE INDEX Suivi_Cle ON Suivi (Cle);"
      "CREATE TABLE Journal (Nombre INTEGER);"
      "CREATE TRIGGER SuiviJournal AFTER UPDATE ON Suivi "
      "BEGIN INSERT INTO Journal VALUES (new.Nombre); END;");
  auto rs = Keyed("Suivi");
  rs->AddNew();
  rs->Fields(QStringLiteral("Cle")).SetValue(QStringLiteral("a"));
  rs->Update();
  rs->Seek(QStringLiteral("="), QStringLiteral("a"));
  rs->Edit();
  rs->Fields(QStringLiteral("Nombre")).SetValue(3);
  rs->Update();
  auto journal = db_->OpenRecordset(QStringLiteral("Journal"));
  EXPECT_EQ(journal->RecordCount(), 1);
  EXPECT_EQ(journal->Fields(0).GetValue(), QVariant(qlonglong{3}));
}

TEST_F(StoreSeekSchemaTest, WholeNumberKeysAreFoundWhateverTheirForm) {
  Make(
      "CREATE TABLE Entiers (Cle INTEGER, Texte TEXT);"
      "CREATE INDEX Entiers_Cle ON Entiers (Cle);");
  auto rs = Keyed("Entiers");
  for (int key : {5, 12}) {
    rs->Seek(QStringLiteral("="), key);
    ASSERT_TRUE(rs->NoMatch());
    rs->AddNew();
    rs->Fields(QStringLiteral("Cle")).SetValue(key);
    rs->Fields(QStringLiteral("Texte")).SetValue(QString::number(key * 10));
    rs->Update();
  }
  rs->Seek(QStringLiteral("="), QStringLiteral(" 12 "));
  ASSERT_FALSE(rs->NoMatch());
  EXPECT_EQ(rs->Fields(QStringLiteral("Texte")).GetValue(), QVariant(QStringLiteral("120")));
  rs->Seek(QStringLiteral("="), 4.6);
  ASSERT_FALSE(rs->NoMatch());
  EXPECT_EQ(rs->Fields(QStringLiteral("Texte")).GetValue(), QVariant(QStringLiteral("50")));
  EXPECT_EQ(ErrorOf([&] { rs->Seek(QStringLiteral("="), QStringLiteral("douze")); }), 3464);
  rs->MoveFirst();
  EXPECT_EQ(rs->Fields(QStringLiteral("Cle")).GetValue(), QVariant(qlonglong{5}));
  rs->MoveNext();
  EXPECT_EQ(rs->Fields(QStringLiteral("Cle")).GetValue(), QVariant(qlonglong{12}));
}

}  // namespace
}  // namespace kuvo
