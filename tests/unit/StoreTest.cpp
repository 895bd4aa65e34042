#include <QFile>
#include <thread>

#include "StoreTestSupport.h"

namespace kuvo {
namespace {

using namespace storetest;

// ---------------------------------------------------------------------------
// Files and schema.

TEST_F(StoreTest, SchemaHasTheProgramsTablesAndIndexes) {
  OtherConnection other(path_);
  EXPECT_EQ(
      other.Text("SELECT group_concat(name || ' ' || type, ',') FROM pragma_table_info('Sorties')"),
      QStringLiteral("DateTirage DATE,numero1 SMALLINT,numero2 SMALLINT,numero3 SMALLINT,"
                     "numero4 SMALLINT,numero5 SMALLINT,NumeroChance SMALLINT"));
  EXPECT_EQ(other.Text("SELECT group_concat(name, ',') FROM pragma_table_info('MesNumeros')"),
            QStringLiteral("numero1,numero2,numero3,numero4,numero5,NumeroChance"));
  EXPECT_EQ(other.Text("SELECT count(*) FROM pragma_index_list('MesNumeros')"),
            QStringLiteral("0"));
  EXPECT_EQ(other.Text("SELECT group_concat(name || ' ' || \"unique\", ',') FROM "
                       "pragma_index_list('Sorties')"),
            QStringLiteral("Sorties_DateTirage 0"));
  for (const char* table : {"Groupe2", "Groupe3", "Groupe4", "Groupe5"}) {
    const QByteArray columns =
        QStringLiteral("SELECT group_concat(name || ' ' || type, ',') FROM pragma_table_info('%1')")
            .arg(QLatin1String(table))
            .toUtf8();
    EXPECT_EQ(other.Text(columns.constData()), QStringLiteral("Numeros TEXT,Sorties INTEGER"));
    const QByteArray indexes =
        QStringLiteral(
            "SELECT group_concat(name || ' ' || \"unique\", ',') FROM pragma_index_list('%1')")
            .arg(QLatin1String(table))
            .toUtf8();
    EXPECT_EQ(other.Text(indexes.constData()),
              QStringLiteral("%1_Numeros 1").arg(QLatin1String(table)));
  }
  EXPECT_EQ(other.Text("SELECT count(*) FROM pragma_table_info('Kuvo')"), QStringLiteral("25"));
  EXPECT_EQ(other.Text("SELECT name || ' ' || type FROM pragma_table_info('Kuvo') WHERE cid = 9"),
            QStringLiteral("Numero_Chance SMALLINT"));
  EXPECT_EQ(other.Text("SELECT name || ' ' || type FROM pragma_table_info('Kuvo') WHERE cid = 24"),
            QStringLiteral("devise TEXT"));
}

TEST_F(StoreTest, OpenDatabaseOfAMissingFileRaises3024) {
  const QString missing = dir_.filePath(QStringLiteral("absent.Mdb"));
  QString text;
  EXPECT_EQ(ErrorOf([&] { Database::OpenDatabase(missing); }, &text), 3024);
  EXPECT_EQ(text, QStringLiteral("Fichier '%1' introuvable.").arg(missing));
  EXPECT_FALSE(QFile::exists(missing));
}

TEST_F(StoreTest, CreateStoreRefusesAnExistingFile) {
  const QString other = dir_.filePath(QStringLiteral("other.txt"));
  {
    QFile f(other);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("keep me");
  }
  EXPECT_NE(ErrorOf([&] { CreateStore(other, ShippedSchema()); }), 0);
  QFile f(other);
  ASSERT_TRUE(f.open(QIODevice::ReadOnly));
  EXPECT_EQ(f.readAll(), QByteArray("keep me"));
  EXPECT_NE(ErrorOf([&] { CreateStore(path_, ShippedSchema()); }), 0);
}

TEST_F(StoreTest, CreateStoreFillsKuvoFromTheHistoryText) {
  QString header;
  QString line1 = QStringLiteral("26113;SAMEDI;20260926;20261226;30;21;43;29;6;7;6-21-29-30-43+7;");
  QString line2 = QStringLiteral("26112;MERCREDI;20260923;20261223;1;2;3;4;5;10;1-2-3-4-5+10;");
  for (int rank = 1; rank <= 6; ++rank) {
    header += QStringLiteral("nombre_de_gagnant_au_rang%1;rapport_du_rang%1;").arg(rank);
    line1 += QStringLiteral("%1;%2,50;").arg(rank).arg(rank * 1000);
    line2 += QStringLiteral("0;0,00;");
  }
  line1 += QStringLiteral("1 234 567;eur;");
  line2 += QStringLiteral(";eur;");
  const QString csv = QStringLiteral("annee;...;") + header + QLatin1Char('\n') + line1 +
                      QLatin1Char('\n') + line2 + QLatin1Char('\n');
  const QString path = dir_.filePath(QStringLiteral("filled.Mdb"));
  CreateStore(path, ShippedSchema(), csv);

  auto db = Database::OpenDatabase(path);
  auto rs = db->OpenRecordset(QStringLiteral("Kuvo"));
  EXPECT_EQ(rs->RecordCount(), 2);
  EXPECT_EQ(rs->Fields(0).GetValue(), QVariant(QStringLiteral("26113")));
  EXPECT_EQ(rs->Fields(QStringLiteral("jour_de_tirage")).GetValue(),
            QVariant(QStringLiteral("SAMEDI")));
  EXPECT_EQ(rs->Fields(QStringLiteral("date_de_tirage")).GetValue(),
            QVariant(QStringLiteral("20260926")));
  EXPECT_EQ(rs->Fields(QStringLiteral("boule_1")).GetValue(), QVariant(qlonglong{30}));
  EXPECT_EQ(rs->Fields(QStringLiteral("Numero_Chance")).GetValue(), QVariant(qlonglong{7}));
  EXPECT_EQ(rs->Fields(QStringLiteral("combinaison_gagnante_en_ordre_croissant")).GetValue(),
            QVariant(QStringLiteral("6-21-29-30-43+7")));
  EXPECT_EQ(rs->Fields(QStringLiteral("rapport_du_rang2")).GetValue(),
            QVariant(QStringLiteral("2000,50")));
  EXPECT_EQ(rs->Fields(QStringLiteral("numero_jokerplus")).GetValue(),
            QVariant(QStringLiteral("1 234 567")));
  EXPECT_EQ(rs->Fields(24).GetValue(), QVariant(QStringLiteral("eur")));
  rs->MoveNext();
  EXPECT_EQ(rs->Fields(QStringLiteral("Numero_Chance")).GetValue(), QVariant(qlonglong{10}));
  EXPECT_EQ(rs->Fields(QStringLiteral("numero_jokerplus")).GetValue(), QVariant(QString()));
  rs->MoveNext();
  EXPECT_TRUE(rs->Eof());
}

TEST_F(StoreTest, ShippedHistoryFillsKuvo) {
  const QString history = ShippedHistory();
  ASSERT_TRUE(history.startsWith(QStringLiteral("annee_numero_de_tirage;jour_de_tirage;")));
  const QString path = dir_.filePath(QStringLiteral("installed.Mdb"));
  CreateStore(path, ShippedSchema(), history);
  OtherConnection other(path);
  EXPECT_EQ(other.Count("Kuvo"), history.count(QLatin1Char('\n')) - 1);
  EXPECT_EQ(
      other.Text("SELECT count(*) FROM Kuvo WHERE devise <> 'eur' OR boule_1 NOT BETWEEN 1 AND 49 "
                 "OR Numero_Chance NOT BETWEEN 1 AND 10"),
      QStringLiteral("0"));
}

// ---------------------------------------------------------------------------
// Table-type sets.

TEST_F(StoreTest, EmptyTableSet) {
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe2"));
  EXPECT_TRUE(rs->Eof());
  EXPECT_EQ(rs->RecordCount(), 0);
  QString text;
  EXPECT_EQ(ErrorOf([&] { rs->MoveFirst(); }, &text), 3021);
  EXPECT_EQ(text, QStringLiteral("Aucun enregistrement en cours."));
  EXPECT_EQ(ErrorOf([&] { rs->MoveLast(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { rs->MoveNext(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { rs->Fields(0).GetValue(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { rs->Edit(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { rs->Delete(); }), 3021);
}

TEST_F(StoreTest, UnknownTableRaises3078) {
  QString text;
  EXPECT_EQ(ErrorOf([&] { db_->OpenRecordset(QStringLiteral("Groupe9")); }, &text), 3078);
  EXPECT_EQ(text, QStringLiteral(
                      "Le moteur de base de données ne trouve pas la table ou la requête source "
                      "'Groupe9'."));
}

TEST_F(StoreTest, TableNamesAreFoundWhateverTheirCase) {
  AddGroups("Groupe2", {{"01-02", 1}});
  auto rs = db_->OpenRecordset(QStringLiteral("groupe2"));
  EXPECT_EQ(rs->RecordCount(), 1);
  EXPECT_EQ(rs->Fields(QStringLiteral("numeros")).GetValue(), QVariant(QStringLiteral("01-02")));
}

TEST_F(StoreTest, TableSetWalksInTheOrderOfItsIndex) {
  AddGroups("Groupe2", {{"05-07", 3}, {"01-02", 1}, {"03-04", 2}});
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe2"));
  EXPECT_EQ(rs->Index(), QString());
  EXPECT_EQ(Walk(*rs), (QStringList{"05-07", "01-02", "03-04"}));
  rs->SetIndex(QStringLiteral("Numeros"));
  EXPECT_EQ(rs->Index(), QStringLiteral("Numeros"));
  EXPECT_EQ(Walk(*rs), (QStringList{"01-02", "03-04", "05-07"}));
  EXPECT_EQ(ErrorOf([&] { rs->MoveNext(); }), 3021);
  rs->MoveLast();
  EXPECT_EQ(rs->Fields(0).GetValue(), QVariant(QStringLiteral("05-07")));
  rs->MoveFirst();
  EXPECT_EQ(rs->Fields(0).GetValue(), QVariant(QStringLiteral("01-02")));
  EXPECT_EQ(rs->RecordCount(), 3);
}

TEST_F(StoreTest, UnknownIndexRaises3015) {
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe2"));
  QString text;
  EXPECT_EQ(ErrorOf([&] { rs->SetIndex(QStringLiteral("DateTirage")); }, &text), 3015);
  EXPECT_EQ(text, QStringLiteral("'DateTirage' n'est pas un index de cette table."));
  auto sorties = db_->OpenRecordset(QStringLiteral("Sorties"));
  sorties->SetIndex(QStringLiteral("DateTirage"));
  EXPECT_EQ(sorties->Index(), QStringLiteral("DateTirage"));
}

TEST_F(StoreTest, SeekFindsTheRowOrSetsNoMatch) {
  AddGroups("Groupe2", {{"05-07", 3}, {"01-02", 1}, {"03-04", 2}});
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe2"));
  rs->SetIndex(QStringLiteral("Numeros"));
  rs->Seek(QStringLiteral("="), QStringLiteral("03-04"));
  EXPECT_FALSE(rs->NoMatch());
  EXPECT_EQ(rs->Fields(QStringLiteral("Sorties")).GetValue(), QVariant(qlonglong{2}));
  rs->MoveNext();
  EXPECT_EQ(rs->Fields(QStringLiteral("Numeros")).GetValue(), QVariant(QStringLiteral("05-07")));

  rs->Seek(QStringLiteral("="), QStringLiteral("09-10"));
  EXPECT_TRUE(rs->NoMatch());
  EXPECT_EQ(ErrorOf([&] { rs->Fields(0).GetValue(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { rs->Edit(); }), 3021);
  rs->Seek(QStringLiteral("="), QStringLiteral("01-02"));
  EXPECT_FALSE(rs->NoMatch());
  EXPECT_EQ(rs->Fields(QStringLiteral("Sorties")).GetValue(), QVariant(qlonglong{1}));
}

TEST_F(StoreTest, SeekUsesTheIndexOfItsOwnTable) {
  AddGroups("Groupe2", {{"01-02-03", 1}});
  AddGroups("Groupe3", {{"01-02-03", 7}});
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe3"));
  rs->SetIndex(QStringLiteral("Numeros"));
  rs->Seek(QStringLiteral("="), QStringLiteral("01-02-03"));
  ASSERT_FALSE(rs->NoMatch());
  EXPECT_EQ(rs->Fields(QStringLiteral("Sorties")).GetValue(), QVariant(qlonglong{7}));
}

TEST_F(StoreTest, SeekWithoutIndexRaises3019) {
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe2"));
  EXPECT_EQ(ErrorOf([&] { rs->Seek(QStringLiteral("="), QStringLiteral("01-02")); }), 3019);
}

TEST_F(StoreTest, SeekGivesTheFirstRowInRowidOrder) {
  AddDraw(QDate(2000, 3, 4), 1, 1);
  AddDraw(QDate(2000, 3, 1), 10, 2);
  AddDraw(QDate(2000, 3, 4), 20, 3);
  auto rs = db_->OpenRecordset(QStringLiteral("Sorties"));
  rs->SetIndex(QStringLiteral("DateTirage"));
  rs->Seek(QStringLiteral("="), QDate(2000, 3, 4));
  ASSERT_FALSE(rs->NoMatch());
  EXPECT_EQ(rs->Fields(QStringLiteral("NumeroChance")).GetValue(), QVariant(qlonglong{1}));
  rs->MoveNext();
  EXPECT_EQ(rs->Fields(QStringLiteral("NumeroChance")).GetValue(), QVariant(qlonglong{3}));
  rs->Seek(QStringLiteral("="), QStringLiteral("01/03/2000"));
  ASSERT_FALSE(rs->NoMatch());
  EXPECT_EQ(rs->Fields(QStringLiteral("NumeroChance")).GetValue(), QVariant(qlonglong{2}));
}

TEST_F(StoreTest, TableSetSeesRowsWrittenThroughOtherSets) {
  AddGroups("Groupe2", {{"01-02", 1}, {"05-06", 1}});
  auto walker = db_->OpenRecordset(QStringLiteral("Groupe2"));
  walker->SetIndex(QStringLiteral("Numeros"));
  EXPECT_EQ(walker->Fields(0).GetValue(), QVariant(QStringLiteral("01-02")));
  AddGroups("Groupe2", {{"03-04", 1}});
  EXPECT_EQ(walker->RecordCount(), 3);
  walker->MoveNext();
  EXPECT_EQ(walker->Fields(0).GetValue(), QVariant(QStringLiteral("03-04")));

  // A value changed by another set is what this one reads.
  auto other = db_->OpenRecordset(QStringLiteral("Groupe2"));
  other->SetIndex(QStringLiteral("Numeros"));
  SeekAndSet(*other, QStringLiteral("03-04"), QStringLiteral("Sorties"), 9);
  EXPECT_EQ(walker->Fields(QStringLiteral("Sorties")).GetValue(), QVariant(qlonglong{9}));

  // A row deleted by another set is gone for this one.
  other->Delete();
  EXPECT_EQ(ErrorOf([&] { walker->Fields(0).GetValue(); }), 3167);
  walker->MoveNext();
  EXPECT_EQ(walker->Fields(0).GetValue(), QVariant(QStringLiteral("05-06")));
}

TEST_F(StoreTest, MoveNextAfterDeleteGoesToTheFollowingRow) {
  AddGroups("Groupe4", {{"d", 1}, {"b", 1}, {"a", 1}, {"c", 1}});
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe4"));
  rs->SetIndex(QStringLiteral("Numeros"));
  rs->MoveNext();  // b
  rs->Delete();
  EXPECT_FALSE(rs->Eof());
  EXPECT_EQ(ErrorOf([&] { rs->Fields(0).GetValue(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { rs->Delete(); }), 3021);
  EXPECT_EQ(rs->RecordCount(), 3);
  rs->MoveNext();
  EXPECT_EQ(rs->Fields(0).GetValue(), QVariant(QStringLiteral("c")));
  // Deleting every row while walking.
  rs->MoveFirst();
  while (!rs->Eof()) {
    rs->Delete();
    rs->MoveNext();
  }
  EXPECT_EQ(rs->RecordCount(), 0);
}

TEST_F(StoreTest, AddNewKeepsTheCurrentRecord) {
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe2"));
  rs->SetIndex(QStringLiteral("Numeros"));
  rs->AddNew();
  rs->Fields(0).SetValue(QStringLiteral("50"));
  rs->Update();
  EXPECT_TRUE(rs->Eof());  // an empty set stays at its end
  EXPECT_EQ(rs->RecordCount(), 1);
  rs->MoveFirst();
  EXPECT_EQ(rs->Fields(0).GetValue(), QVariant(QStringLiteral("50")));
  rs->AddNew();
  rs->Fields(0).SetValue(QStringLiteral("10"));
  EXPECT_EQ(rs->Fields(0).GetValue(), QVariant(QStringLiteral("10")));  // the new row's value
  EXPECT_EQ(rs->Fields(1).GetValue(), QVariant());
  rs->Update();
  EXPECT_EQ(rs->Fields(0).GetValue(), QVariant(QStringLiteral("50")));
  EXPECT_EQ(rs->RecordCount(), 2);
  rs->MoveFirst();
  EXPECT_EQ(rs->Fields(0).GetValue(), QVariant(QStringLiteral("10")));
}

TEST_F(StoreTest, EditUpdateStaysOnTheEditedRow) {
  AddGroups("Groupe2", {{"01-02", 1}, {"03-04", 1}, {"05-06", 1}});
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe2"));
  rs->SetIndex(QStringLiteral("Numeros"));
  rs->Seek(QStringLiteral("="), QStringLiteral("03-04"));
  rs->Edit();
  rs->Fields(QStringLiteral("Sorties"))
      .SetValue(rs->Fields(QStringLiteral("Sorties")).GetValue().toInt() + 1);
  EXPECT_EQ(rs->Fields(QStringLiteral("Sorties")).GetValue(), QVariant(qlonglong{2}));
  rs->Update();
  EXPECT_EQ(rs->Fields(QStringLiteral("Numeros")).GetValue(), QVariant(QStringLiteral("03-04")));
  EXPECT_EQ(rs->Fields(QStringLiteral("Sorties")).GetValue(), QVariant(qlonglong{2}));
  // Changing the key moves the row in the order; the walk goes on from its new place.
  rs->MoveFirst();
  rs->Edit();
  rs->Fields(QStringLiteral("Numeros")).SetValue(QStringLiteral("04-05"));
  rs->Update();
  EXPECT_EQ(rs->Fields(QStringLiteral("Numeros")).GetValue(), QVariant(QStringLiteral("04-05")));
  rs->MoveNext();
  EXPECT_EQ(rs->Fields(QStringLiteral("Numeros")).GetValue(), QVariant(QStringLiteral("05-06")));
  db_->CommitPending();
  OtherConnection other(path_);
  EXPECT_EQ(other.Text("SELECT group_concat(Numeros || '=' || Sorties, ' ') FROM "
                       "(SELECT * FROM Groupe2 ORDER BY Numeros)"),
            QStringLiteral("03-04=2 04-05=1 05-06=1"));
}

TEST_F(StoreTest, UpdateWithoutAddNewOrEditRaises3020) {
  AddGroups("Groupe2", {{"01-02", 1}});
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe2"));
  QString text;
  EXPECT_EQ(ErrorOf([&] { rs->Update(); }, &text), 3020);
  EXPECT_EQ(text, QStringLiteral("Mise à jour ou Annulation sans AddNew ni Edit."));
  EXPECT_EQ(ErrorOf([&] { rs->Fields(1).SetValue(5); }), 3020);
  rs->Edit();
  rs->Fields(1).SetValue(5);
  rs->Update();
  EXPECT_EQ(ErrorOf([&] { rs->Fields(1).SetValue(6); }), 3020);
  EXPECT_EQ(rs->Fields(1).GetValue(), QVariant(qlonglong{5}));
}

TEST_F(StoreTest, MovingDropsAPendingEdit) {
  AddGroups("Groupe2", {{"01-02", 1}, {"03-04", 1}});
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe2"));
  rs->Edit();
  rs->Fields(1).SetValue(42);
  rs->MoveNext();
  EXPECT_EQ(ErrorOf([&] { rs->Update(); }), 3020);
  rs->MoveFirst();
  EXPECT_EQ(rs->Fields(1).GetValue(), QVariant(qlonglong{1}));
}

TEST_F(StoreTest, DuplicateKeyRaises3022) {
  AddGroups("Groupe2", {{"01-02", 1}});
  EXPECT_EQ(ErrorOf([&] { AddGroups("Groupe2", {{"01-02", 1}}); }), 3022);
  OtherConnection other(path_);
  EXPECT_EQ(other.Count("Groupe2"), 1);
}

TEST_F(StoreTest, RowsWithoutKeyComeFirstInTheOrder) {
  AddGroups("Groupe2", {{"03-04", 1}});
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe2"));
  for (int i = 0; i < 2; ++i) {
    rs->AddNew();
    rs->Fields(QStringLiteral("Sorties")).SetValue(10 + i);
    rs->Update();
  }
  AddGroups("Groupe2", {{"01-02", 1}});
  rs->SetIndex(QStringLiteral("Numeros"));
  QList<QVariant> sorties;
  while (!rs->Eof()) {
    sorties << rs->Fields(QStringLiteral("Sorties")).GetValue();
    rs->MoveNext();
  }
  EXPECT_EQ(sorties, (QList<QVariant>{qlonglong{10}, qlonglong{11}, qlonglong{1}, qlonglong{1}}));
}

// ---------------------------------------------------------------------------
// Fields and values.

TEST_F(StoreTest, FieldsByNameAndPosition) {
  AddDraw(QDate(2000, 3, 4), 1, 5);
  auto rs = db_->OpenRecordset(QStringLiteral("Sorties"));
  EXPECT_EQ(rs->FieldCount(), 7);
  EXPECT_EQ(rs->Fields(0).Name(), QStringLiteral("DateTirage"));
  EXPECT_EQ(rs->Fields(6).Name(), QStringLiteral("NumeroChance"));
  EXPECT_EQ(rs->Fields(QStringLiteral("NUMEROCHANCE")).Name(), QStringLiteral("NumeroChance"));
  EXPECT_EQ(rs->Fields(3).GetValue(), QVariant(qlonglong{3}));
  QString text;
  EXPECT_EQ(ErrorOf([&] { rs->Fields(QStringLiteral("numero6")); }, &text), 3265);
  EXPECT_EQ(text, QStringLiteral("Élément non trouvé dans cette collection."));
  EXPECT_EQ(ErrorOf([&] { rs->Fields(7); }), 3265);
  EXPECT_EQ(ErrorOf([&] { rs->Fields(-1); }), 3265);
}

TEST_F(StoreTest, ValuesReadByDeclaredType) {
  AddDraw(QDate(2000, 3, 4), 1, 5);
  AddGroups("Groupe5", {{"01-02-03-04-05", 3}});
  auto rs = db_->OpenRecordset(QStringLiteral("Sorties"));
  const QVariant date = rs->Fields(QStringLiteral("DateTirage")).GetValue();
  EXPECT_EQ(date.typeId(), QMetaType::QDate);
  EXPECT_EQ(date.toDate(), QDate(2000, 3, 4));
  const QVariant number = rs->Fields(QStringLiteral("numero1")).GetValue();
  EXPECT_EQ(number.typeId(), QMetaType::LongLong);
  auto groups = db_->OpenRecordset(QStringLiteral("Groupe5"));
  EXPECT_EQ(groups->Fields(QStringLiteral("Numeros")).GetValue().typeId(), QMetaType::QString);
  EXPECT_EQ(groups->Fields(QStringLiteral("Sorties")).GetValue().typeId(), QMetaType::LongLong);

  auto mine = db_->OpenRecordset(QStringLiteral("MesNumeros"));
  mine->AddNew();
  mine->Fields(0).SetValue(12);
  mine->Fields(1).SetValue(QVariant());
  mine->Update();
  mine->MoveFirst();
  EXPECT_EQ(mine->Fields(0).GetValue(), QVariant(qlonglong{12}));
  EXPECT_FALSE(mine->Fields(1).GetValue().isValid());
  EXPECT_FALSE(mine->Fields(5).GetValue().isValid());
}

TEST_F(StoreTest, QuestionMarkIntoNumeroChanceRaises3421AndWritesNothing) {
  auto rs = db_->OpenRecordset(QStringLiteral("Sorties"));
  rs->AddNew();
  rs->Fields(QStringLiteral("DateTirage")).SetValue(QStringLiteral("04/03/2000"));
  rs->Fields(QStringLiteral("numero1")).SetValue(QStringLiteral("7"));
  QString text;
  EXPECT_EQ(
      ErrorOf([&] { rs->Fields(QStringLiteral("NumeroChance")).SetValue(QStringLiteral("?")); },
              &text),
      3421);
  EXPECT_EQ(text, QStringLiteral("Erreur de conversion de type de données."));
  EXPECT_FALSE(rs->Fields(QStringLiteral("NumeroChance")).GetValue().isValid());
  EXPECT_EQ(ErrorOf([&] { rs->Fields(QStringLiteral("NumeroChance")).SetValue(QString()); }), 3421);
  EXPECT_EQ(
      ErrorOf([&] { rs->Fields(QStringLiteral("NumeroChance")).SetValue(QStringLiteral("abc")); }),
      3421);
  OtherConnection other(path_);
  EXPECT_EQ(other.Count("Sorties"), 0);
  rs->Update();
  db_->CommitPending();
  EXPECT_EQ(other.Text("SELECT coalesce(NumeroChance, 'null') FROM Sorties"),
            QStringLiteral("null"));
  EXPECT_EQ(other.Text("SELECT numero1 FROM Sorties"), QStringLiteral("7"));
}

TEST_F(StoreTest, IntegerColumnsRoundAndReadRegionalText) {
  auto rs = db_->OpenRecordset(QStringLiteral("MesNumeros"));
  rs->AddNew();
  rs->Fields(0).SetValue(2.5);
  rs->Fields(1).SetValue(3.5);
  rs->Fields(2).SetValue(QStringLiteral(" 2,6 "));
  rs->Fields(3).SetValue(QStringLiteral("4.4"));
  rs->Fields(4).SetValue(-0.5);
  rs->Fields(5).SetValue(true);
  rs->Update();
  rs->MoveFirst();
  EXPECT_EQ(rs->Fields(0).GetValue(), QVariant(qlonglong{2}));
  EXPECT_EQ(rs->Fields(1).GetValue(), QVariant(qlonglong{4}));
  EXPECT_EQ(rs->Fields(2).GetValue(), QVariant(qlonglong{3}));
  EXPECT_EQ(rs->Fields(3).GetValue(), QVariant(qlonglong{4}));
  EXPECT_EQ(rs->Fields(4).GetValue(), QVariant(qlonglong{0}));
  EXPECT_EQ(rs->Fields(5).GetValue(), QVariant(qlonglong{-1}));
}

TEST_F(StoreTest, SmallIntOutOfRangeRaises3421) {
  auto rs = db_->OpenRecordset(QStringLiteral("MesNumeros"));
  rs->AddNew();
  rs->Fields(0).SetValue(32767);
  rs->Fields(1).SetValue(-32768);
  EXPECT_EQ(ErrorOf([&] { rs->Fields(2).SetValue(32768); }), 3421);
  EXPECT_EQ(ErrorOf([&] { rs->Fields(2).SetValue(QStringLiteral("40000")); }), 3421);
  EXPECT_EQ(ErrorOf([&] { rs->Fields(2).SetValue(-32768.6); }), 3421);
  rs->Update();
  rs->MoveFirst();
  EXPECT_EQ(rs->Fields(0).GetValue(), QVariant(qlonglong{32767}));
  EXPECT_EQ(rs->Fields(1).GetValue(), QVariant(qlonglong{-32768}));
  EXPECT_FALSE(rs->Fields(2).GetValue().isValid());
}

TEST_F(StoreTest, DateTextsAreStoredAsIsoDates) {
  auto rs = db_->OpenRecordset(QStringLiteral("Sorties"));
  rs->AddNew();
  rs->Fields(QStringLiteral("DateTirage")).SetValue(QStringLiteral("04/03/2000"));
  rs->Update();
  rs->AddNew();
  rs->Fields(QStringLiteral("DateTirage")).SetValue(QStringLiteral("2001-02-03"));
  rs->Update();
  rs->AddNew();
  rs->Fields(QStringLiteral("DateTirage")).SetValue(QDate(2002, 12, 31));
  EXPECT_EQ(
      ErrorOf([&] { rs->Fields(QStringLiteral("DateTirage")).SetValue(QStringLiteral("abc")); }),
      3421);
  EXPECT_EQ(ErrorOf([&] { rs->Fields(QStringLiteral("DateTirage")).SetValue(QStringLiteral("")); }),
            3421);
  rs->Update();
  db_->CommitPending();
  OtherConnection other(path_);
  EXPECT_EQ(other.Text("SELECT group_concat(DateTirage, ' ') FROM Sorties"),
            QStringLiteral("2000-03-04 2001-02-03 2002-12-31"));
  EXPECT_EQ(other.Text("SELECT typeof(DateTirage) FROM Sorties"), QStringLiteral("text"));
  rs->MoveFirst();
  EXPECT_EQ(rs->Fields(0).GetValue(), QVariant(QDate(2000, 3, 4)));
}

TEST_F(StoreTest, TextColumnsTakeNumbersAsText) {
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe2"));
  rs->AddNew();
  rs->Fields(QStringLiteral("Numeros")).SetValue(12);
  rs->Fields(QStringLiteral("Sorties")).SetValue(QStringLiteral("3"));
  rs->Update();
  rs->AddNew();
  rs->Fields(QStringLiteral("Numeros")).SetValue(2.5);
  rs->Update();
  rs->AddNew();
  rs->Fields(QStringLiteral("Numeros")).SetValue(7.0);
  rs->Update();
  rs->SetIndex(QStringLiteral("Numeros"));
  EXPECT_EQ(Walk(*rs), (QStringList{"12", "2,5", "7"}));
  rs->MoveFirst();
  EXPECT_EQ(rs->Fields(QStringLiteral("Sorties")).GetValue(), QVariant(qlonglong{3}));
}

TEST_F(StoreTest, TextsOutsideAsciiAreStoredAsUtf8) {
  AddGroups("Groupe2", {{"\xc3\xa9t\xc3\xa9 \xe2\x82\xac", 1}, {"ete", 2}});
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe2"));
  rs->SetIndex(QStringLiteral("Numeros"));
  rs->Seek(QStringLiteral("="), QStringLiteral("\u00e9t\u00e9 \u20ac"));
  ASSERT_FALSE(rs->NoMatch());
  EXPECT_EQ(rs->Fields(QStringLiteral("Sorties")).GetValue(), QVariant(qlonglong{1}));
  EXPECT_EQ(rs->Fields(QStringLiteral("Numeros")).GetValue(),
            QVariant(QStringLiteral("\u00e9t\u00e9 \u20ac")));
  db_->CommitPending();
  OtherConnection other(path_);
  EXPECT_EQ(other.Text("SELECT hex(Numeros) FROM Groupe2 WHERE Sorties = 1"),
            QStringLiteral("C3A974C3A920E282AC"));
}

// ---------------------------------------------------------------------------
// Sets from statements.

TEST_F(StoreTest, StatementSetRecordCountGrowsAsRowsAreReached) {
  AddDraw(QDate(2000, 3, 1), 1, 1);
  AddDraw(QDate(2000, 3, 4), 2, 2);
  AddDraw(QDate(2000, 3, 8), 3, 3);
  AddDraw(QDate(2000, 2, 26), 4, 4);
  auto empty =
      db_->OpenRecordset(QStringLiteral("select * from Sorties where DateTirage >= #03 04 10#"));
  EXPECT_TRUE(empty->Eof());
  EXPECT_EQ(empty->RecordCount(), 0);
  EXPECT_EQ(ErrorOf([&] { empty->MoveFirst(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { empty->MoveLast(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { empty->Fields(0).GetValue(); }), 3021);

  auto rs =
      db_->OpenRecordset(QStringLiteral("select * from Sorties where DateTirage >= #03 01 00#"));
  EXPECT_FALSE(rs->Eof());
  EXPECT_EQ(rs->RecordCount(), 1);
  rs->MoveNext();
  EXPECT_EQ(rs->RecordCount(), 2);
  rs->MoveFirst();
  EXPECT_EQ(rs->RecordCount(), 2);
  rs->MoveLast();
  EXPECT_EQ(rs->RecordCount(), 3);
  EXPECT_EQ(rs->Fields(QStringLiteral("NumeroChance")).GetValue(), QVariant(qlonglong{3}));
  rs->MoveNext();
  EXPECT_TRUE(rs->Eof());
  EXPECT_EQ(ErrorOf([&] { rs->Fields(0).GetValue(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { rs->MoveNext(); }), 3021);
}

TEST_F(StoreTest, DateLiteralStatements) {
  AddDraw(QDate(2000, 3, 1), 1, 1);
  AddDraw(QDate(2000, 3, 4), 2, 2);
  AddDraw(QDate(2000, 3, 8), 3, 3);
  auto from =
      db_->OpenRecordset(QStringLiteral("select * from Sorties where DateTirage >= #03 04 00#"));
  from->MoveLast();
  EXPECT_EQ(from->RecordCount(), 2);
  auto on =
      db_->OpenRecordset(QStringLiteral("select * from Sorties where DateTirage  = #03 04 00#"));
  EXPECT_FALSE(on->Eof());
  EXPECT_EQ(on->Fields(QStringLiteral("DateTirage")).GetValue(), QVariant(QDate(2000, 3, 4)));
  EXPECT_EQ(on->Fields(QStringLiteral("numero1")).GetValue(), QVariant(qlonglong{2}));
  on->MoveNext();
  EXPECT_TRUE(on->Eof());
}

TEST_F(StoreTest, FormatStatement) {
  AddDraw(QDate(2000, 3, 1), 1, 1);
  AddDraw(QDate(2000, 3, 4), 2, 2);
  auto rs = db_->OpenRecordset(
      QStringLiteral("select * from Sorties where format(DateTirage,\"dd mm yy\") = \"04 03 00\""));
  ASSERT_FALSE(rs->Eof());
  EXPECT_EQ(rs->Fields(QStringLiteral("NumeroChance")).GetValue(), QVariant(qlonglong{2}));
  rs->MoveNext();
  EXPECT_TRUE(rs->Eof());
  auto months = db_->OpenRecordset(QStringLiteral(
      "select DateTirage from Sorties where format(DateTirage, 'dd mmmm yyyy') = '04 mars 2000'"));
  EXPECT_FALSE(months->Eof());
  auto numbers = db_->OpenRecordset(QStringLiteral("select format(12.34, '##.#') AS t"));
  EXPECT_EQ(numbers->Fields(QStringLiteral("t")).GetValue(), QVariant(QStringLiteral("12,3")));
}

TEST_F(StoreTest, OrderBySortiesAscendingAndDescending) {
  AddGroups("Groupe2", {{"01-02", 5}, {"03-04", 2}, {"05-06", 9}});
  auto asc = db_->OpenRecordset(QStringLiteral("select* from Groupe2 order by Sorties ASC "));
  EXPECT_EQ(Walk(*asc), (QStringList{"03-04", "01-02", "05-06"}));
  auto desc = db_->OpenRecordset(QStringLiteral("select* from Groupe2 order by Sorties DESC "));
  EXPECT_EQ(Walk(*desc), (QStringList{"05-06", "01-02", "03-04"}));
  EXPECT_EQ(desc->FieldCount(), 2);
  EXPECT_EQ(desc->Fields(0).Name(), QStringLiteral("Numeros"));
}

TEST_F(StoreTest, StatementSetEditsAndDeletesByRowid) {
  AddGroups("Groupe3", {{"a", 5}, {"b", 2}, {"c", 9}, {"d", 1}});
  auto rs = db_->OpenRecordset(QStringLiteral("select* from Groupe3 order by Sorties DESC "));
  rs->Edit();
  rs->Fields(QStringLiteral("Sorties")).SetValue(0);
  rs->Update();
  EXPECT_EQ(rs->Fields(QStringLiteral("Numeros")).GetValue(), QVariant(QStringLiteral("c")));
  EXPECT_EQ(rs->Fields(QStringLiteral("Sorties")).GetValue(), QVariant(qlonglong{0}));
  rs->MoveNext();  // a
  rs->MoveNext();  // b
  EXPECT_EQ(rs->RecordCount(), 3);
  rs->Delete();
  EXPECT_EQ(ErrorOf([&] { rs->Fields(0).GetValue(); }), 3021);
  EXPECT_EQ(rs->RecordCount(), 2);
  rs->MoveNext();
  EXPECT_EQ(rs->Fields(QStringLiteral("Numeros")).GetValue(), QVariant(QStringLiteral("d")));
  rs->MoveLast();
  EXPECT_EQ(rs->RecordCount(), 3);
  db_->CommitPending();
  OtherConnection other(path_);
  EXPECT_EQ(other.Text("SELECT group_concat(Numeros || '=' || Sorties, ' ') FROM "
                       "(SELECT * FROM Groupe3 ORDER BY Numeros)"),
            QStringLiteral("a=5 c=0 d=1"));
}

TEST_F(StoreTest, StatementSetReadsLiveValues) {
  AddGroups("Groupe2", {{"01-02", 5}, {"03-04", 2}});
  auto rs = db_->OpenRecordset(QStringLiteral("select * from Groupe2 order by Numeros"));
  auto table = db_->OpenRecordset(QStringLiteral("Groupe2"));
  table->Edit();
  table->Fields(1).SetValue(6);
  table->Update();
  EXPECT_EQ(rs->Fields(1).GetValue(), QVariant(qlonglong{6}));
}

TEST_F(StoreTest, StatementOnAnUnknownTableRaises3078) {
  EXPECT_EQ(ErrorOf([&] { db_->OpenRecordset(QStringLiteral("select * from Groupe7")); }), 3078);
}

TEST_F(StoreTest, OtherSelectsGiveReadOnlySets) {
  AddGroups("Groupe2", {{"01-02", 5}, {"03-04", 2}});
  auto rs = db_->OpenRecordset(QStringLiteral("select count(*) AS n, max(Sorties) from Groupe2"));
  EXPECT_EQ(rs->RecordCount(), 1);
  EXPECT_EQ(rs->Fields(QStringLiteral("n")).GetValue(), QVariant(qlonglong{2}));
  EXPECT_EQ(rs->Fields(1).GetValue(), QVariant(qlonglong{5}));
  EXPECT_EQ(ErrorOf([&] { rs->Edit(); }), 3027);
  EXPECT_EQ(ErrorOf([&] { rs->AddNew(); }), 3027);
}

// ---------------------------------------------------------------------------
// Execute.

TEST_F(StoreTest, DeleteStarEmptiesEachTable) {
  AddGroups("Groupe2", {{"01-02", 1}});
  AddGroups("Groupe3", {{"01-02-03", 1}});
  AddGroups("Groupe4", {{"01-02-03-04", 1}});
  AddGroups("Groupe5", {{"01-02-03-04-05", 1}});
  AddDraw(QDate(2000, 3, 4), 1, 1);
  CreateStore(dir_.filePath(QStringLiteral("k.Mdb")), ShippedSchema(),
              QStringLiteral("h\n1;LUNDI;20000306;20000605;1;2;3;4;5;6;;\n"));
  auto kuvo = Database::OpenDatabase(dir_.filePath(QStringLiteral("k.Mdb")));
  EXPECT_EQ(kuvo->OpenRecordset(QStringLiteral("Kuvo"))->RecordCount(), 1);
  kuvo->Execute(QStringLiteral("DELETE * FROM Kuvo"));
  EXPECT_EQ(kuvo->OpenRecordset(QStringLiteral("Kuvo"))->RecordCount(), 0);
  for (const char* table : {"Groupe2", "Groupe3", "Groupe4", "Groupe5", "Sorties"}) {
    db_->Execute(QStringLiteral("DELETE * FROM %1").arg(QLatin1String(table)));
    EXPECT_EQ(db_->OpenRecordset(QLatin1String(table))->RecordCount(), 0) << table;
  }
}

TEST_F(StoreTest, ExecuteTakesJetDatesAndTexts) {
  AddDraw(QDate(2000, 3, 1), 1, 1);
  AddDraw(QDate(2000, 3, 4), 2, 2);
  db_->Execute(QStringLiteral("DELETE FROM Sorties WHERE DateTirage = #03/01/2000#"));
  db_->Execute(QStringLiteral("INSERT INTO Groupe2 (Numeros, Sorties) VALUES (\"l'un\", 4)"));
  auto rs = db_->OpenRecordset(QStringLiteral("Sorties"));
  EXPECT_EQ(rs->RecordCount(), 1);
  EXPECT_EQ(rs->Fields(0).GetValue(), QVariant(QDate(2000, 3, 4)));
  auto groups = db_->OpenRecordset(QStringLiteral("Groupe2"));
  EXPECT_EQ(groups->Fields(0).GetValue(), QVariant(QStringLiteral("l'un")));
}

TEST_F(StoreTest, ExecuteRejectsSelectsAndBadStatements) {
  EXPECT_EQ(ErrorOf([&] { db_->Execute(QStringLiteral("select * from Sorties")); }), 3065);
  QString text;
  EXPECT_EQ(ErrorOf([&] { db_->Execute(QStringLiteral("DELETE FRM Sorties")); }, &text), 3129);
  EXPECT_TRUE(text.contains(QStringLiteral("syntax error"))) << text.toStdString();
  EXPECT_EQ(ErrorOf([&] { db_->Execute(QStringLiteral("DELETE * FROM Nulle")); }), 3078);
}

// ---------------------------------------------------------------------------
// Commits.

TEST_F(StoreTest, CommitPendingMakesWritesVisible) {
  AddGroups("Groupe2", {{"01-02", 1}, {"03-04", 1}});
  OtherConnection other(path_);
  EXPECT_EQ(other.Count("Groupe2"), 0);  // still in the open transaction
  db_->CommitPending();
  EXPECT_EQ(other.Count("Groupe2"), 2);
  db_->CommitPending();  // nothing pending: nothing to do
}

TEST_F(StoreTest, AnErrorOfTheStoreCommitsEarlierWrites) {
  AddGroups("Groupe2", {{"01-02", 1}});
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe2"));
  rs->MoveNext();
  EXPECT_EQ(ErrorOf([&] { rs->MoveNext(); }), 3021);
  OtherConnection other(path_);
  EXPECT_EQ(other.Count("Groupe2"), 1);

  auto draws = db_->OpenRecordset(QStringLiteral("Sorties"));
  draws->AddNew();
  draws->Fields(QStringLiteral("NumeroChance")).SetValue(3);
  draws->Update();
  draws->AddNew();
  EXPECT_EQ(
      ErrorOf([&] { draws->Fields(QStringLiteral("NumeroChance")).SetValue(QStringLiteral("?")); }),
      3421);
  EXPECT_EQ(other.Count("Sorties"), 1);
}

TEST_F(StoreTest, AnOldTransactionIsCommittedAtTheNextWrite) {
  AddGroups("Groupe2", {{"01-02", 1}});
  OtherConnection other(path_);
  EXPECT_EQ(other.Count("Groupe2"), 0);
  std::this_thread::sleep_for(std::chrono::milliseconds(150));
  AddGroups("Groupe2", {{"03-04", 1}});
  EXPECT_EQ(other.Count("Groupe2"), 1);
  db_->CommitPending();
  EXPECT_EQ(other.Count("Groupe2"), 2);
}

TEST_F(StoreTest, AWalkReadsInOneTransactionThatTheNextCommitEnds) {
  AddGroups("Groupe2", {{"01-02", 1}, {"03-04", 2}, {"05-06", 3}});
  db_->CommitPending();
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe2"));
  rs->SetIndex(QStringLiteral("Numeros"));
  rs->MoveFirst();
  rs->MoveNext();
  EXPECT_FALSE(sqlite3_get_autocommit(db_->Handle()));
  // Rows written during the walk are seen by it, as in a live table.
  AddGroups("Groupe2", {{"04-05", 9}});
  rs->MoveNext();
  EXPECT_EQ(rs->Fields(QStringLiteral("Numeros")).GetValue().toString(), QStringLiteral("04-05"));
  db_->CommitPending();
  EXPECT_TRUE(sqlite3_get_autocommit(db_->Handle()));
  OtherConnection other(path_);
  EXPECT_EQ(other.Count("Groupe2"), 4);
  // After the commit, another connection's write is seen by the next step.
  {
    sqlite3* writer = nullptr;
    sqlite3_open_v2(path_.toUtf8().constData(), &writer, SQLITE_OPEN_READWRITE, nullptr);
    sqlite3_exec(writer, "INSERT INTO Groupe2 VALUES ('04-09', 7)", nullptr, nullptr, nullptr);
    sqlite3_close_v2(writer);
  }
  rs->MoveNext();
  EXPECT_EQ(rs->Fields(QStringLiteral("Numeros")).GetValue().toString(), QStringLiteral("04-09"));
  rs->MoveNext();
  EXPECT_EQ(rs->Fields(QStringLiteral("Numeros")).GetValue().toString(), QStringLiteral("05-06"));
  rs->MoveNext();
  EXPECT_TRUE(rs->Eof());
}

TEST_F(StoreTest, ReadsShareOneTransactionUntilTheNextCommit) {
  AddGroups("Groupe2", {{"01-02", 1}, {"03-04", 2}});
  db_->CommitPending();
  EXPECT_TRUE(sqlite3_get_autocommit(db_->Handle()));
  auto rs = db_->OpenRecordset(QStringLiteral("select * from Groupe2"));
  EXPECT_EQ(rs->Fields(1).GetValue(), QVariant(qlonglong{1}));
  EXPECT_FALSE(sqlite3_get_autocommit(db_->Handle())) << "the walk holds one transaction";
  // Another connection's write shows from the next commit point on.
  sqlite3* writer = nullptr;
  ASSERT_EQ(sqlite3_open_v2(path_.toUtf8().constData(), &writer, SQLITE_OPEN_READWRITE, nullptr),
            SQLITE_OK);
  sqlite3_busy_timeout(writer, 2000);
  ASSERT_EQ(sqlite3_exec(writer, "UPDATE Groupe2 SET Sorties = 7", nullptr, nullptr, nullptr),
            SQLITE_OK);
  sqlite3_close_v2(writer);
  rs->MoveNext();
  EXPECT_EQ(rs->Fields(1).GetValue(), QVariant(qlonglong{2}));
  db_->CommitPending();
  EXPECT_TRUE(sqlite3_get_autocommit(db_->Handle()));
  rs->MoveFirst();
  EXPECT_EQ(rs->Fields(1).GetValue(), QVariant(qlonglong{7}));
}

TEST_F(StoreTest, AWriteAfterReadsIsGroupedAsAnyWrite) {
  AddGroups("Groupe2", {{"01-02", 1}});
  db_->CommitPending();
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe2"));
  EXPECT_EQ(Walk(*rs), QStringList({QStringLiteral("01-02")}));
  AddGroups("Groupe2", {{"03-04", 1}});
  OtherConnection other(path_);
  EXPECT_EQ(other.Count("Groupe2"), 1);
  db_->CommitPending();
  EXPECT_EQ(other.Count("Groupe2"), 2);
}

TEST_F(StoreTest, ClosingTheDatabaseCommits) {
  AddGroups("Groupe5", {{"01-02-03-04-05", 1}});
  db_.reset();
  OtherConnection other(path_);
  EXPECT_EQ(other.Count("Groupe5"), 1);
}

TEST_F(StoreTest, ClosedSetRaises3420) {
  AddGroups("Groupe2", {{"01-02", 1}});
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe2"));
  Field field = rs->Fields(0);
  rs->Close();
  QString text;
  EXPECT_EQ(ErrorOf([&] { rs->MoveNext(); }, &text), 3420);
  EXPECT_EQ(text, QStringLiteral("Objet invalide ou n'est plus défini."));
  EXPECT_EQ(ErrorOf([&] { field.GetValue(); }), 3420);
  EXPECT_EQ(ErrorOf([&] { rs->RecordCount(); }), 3420);
  EXPECT_EQ(ErrorOf([&] { rs->AddNew(); }), 3420);
}

TEST_F(StoreTest, SetsOutliveTheirDatabase) {
  AddGroups("Groupe2", {{"01-02", 1}});
  auto rs = db_->OpenRecordset(QStringLiteral("Groupe2"));
  db_.reset();
  EXPECT_EQ(rs->Fields(0).GetValue(), QVariant(QStringLiteral("01-02")));
}

}  // namespace
}  // namespace kuvo
