// Random proposals: the range of the two draws, the generator left unseeded,
// the zone check that no click can reach, and the focus given back to N.
#include <gtest/gtest.h>

#include <QSet>
#include <cmath>
#include <limits>

#include "TestSupport.h"
#include "core/Platform.h"
#include "proposals/AleaOrdi.h"

namespace kuvo {
namespace {

using test::TestApp;

const char* const kOpen =
    "store new\n"
    "sql \"INSERT INTO Sorties VALUES ('2024-03-02', 1, 2, 3, 4, 5, 6)\"\n"
    "start\n"
    "menu M_AleatoireGeneres\n";

struct AleaOrdiTest : ::testing::Test {
  TestApp app;
  AleaOrdi& w() { return app.program().Win<AleaOrdi>(); }
  void Open() { app.Run(QString::fromLatin1(kOpen)); }
};

TEST_F(AleaOrdiTest, DrawsStayInTheirRangeAtTheEndsOfTheGenerator) {
  Open();
  const float below1 = std::nextafter(1.0f, 0.0f);
  app.platform().rndValues = {0.0f, below1, 0.0f, below1};
  EXPECT_EQ(w().TireNumero(), 1);
  EXPECT_EQ(w().TireNumero(), 49);
  EXPECT_EQ(w().TireChance(), 1);
  EXPECT_EQ(w().TireChance(), 10);
}

TEST_F(AleaOrdiTest, EveryValueOfTheGeneratorGivesANumberOneToFortyNine) {
  Open();
  int seen[51] = {};
  for (int k = 0; k < 20000; ++k) {
    const Int16 n = w().TireNumero();
    ASSERT_GE(n, 1);
    ASSERT_LE(n, 49);
    ++seen[n];
  }
  for (int n = 1; n <= 49; ++n) EXPECT_GT(seen[n], 0) << n;
  for (int k = 0; k < 2000; ++k) {
    const Int16 c = w().TireChance();
    ASSERT_GE(c, 1);
    ASSERT_LE(c, 10);
  }
}

TEST_F(AleaOrdiTest, TheWindowNeverSeedsTheGenerator) {
  // A first start with an empty Sorties does not seed either: the numbers then
  // follow the generator from its default state.
  app.Run(QStringLiteral(
      "store new\n"
      "sql \"INSERT INTO Kuvo (date_de_tirage, boule_1, boule_2, boule_3, boule_4, boule_5, "
      "Numero_Chance) VALUES ('20240304', 23, 7, 41, 2, 36, 4)\"\n"
      "start\n"
      "menu M_AleatoireGeneres\n"
      "click AleaOrdi.Tous\n"
      "click AleaOrdi.Generer\n"));
  RandomGenerator fresh;
  Int16 expected[6] = {};
  int count = 0;
  while (count < 5) {
    const Int16 n = static_cast<Int16>(std::floor(49.0 * fresh.Next() + 1));
    bool again = false;
    for (int i = 0; i < count; ++i) again = again || expected[i] == n;
    if (!again) expected[count++] = n;
  }
  QString list;
  for (int i = 0; i < 5; ++i)
    list += (expected[i] < 10 ? QStringLiteral(" ") : QString()) + QString::number(expected[i]) +
            (i < 4 ? QStringLiteral(",") : QString());
  EXPECT_EQ(w().ui().Label14.Caption, list);
  const Int16 chance = static_cast<Int16>(std::floor(10.0 * fresh.Next() + 1));
  EXPECT_EQ(w().ui().Label8.Caption, QString::number(chance));
}

TEST_F(AleaOrdiTest, LoadDimensionsTheSharedCells) {
  app.program().M().CasesAleaOrdi.assign(3, true);
  Open();
  const std::vector<bool>& cases = app.program().M().CasesAleaOrdi;
  ASSERT_EQ(cases.size(), 50u);
  for (bool c : cases) EXPECT_FALSE(c);
}

TEST_F(AleaOrdiTest, ThreeZonesNotChosenGiveTheZoneMessage) {
  Open();
  app.Run(QStringLiteral("click AleaOrdi.Zone\n"));
  AleaOrdiUi& u = w().ui();
  u.Label14.Caption = QStringLiteral("avant");
  for (Label* z : {&u.Groupe16, &u.Groupe32, &u.Groupe49}) z->BackColor = 0xFFFF00;
  app.platform().rndValues = {0.5f};
  const QString out = app.Run(QStringLiteral("click AleaOrdi.Generer\n"));
  EXPECT_EQ(out, QString::fromUtf8("MSGBOX none \"\" \"Sélectionnez une zone\"\n"));
  EXPECT_EQ(u.Label14.Caption, QStringLiteral("avant"));
  // The press ended before any draw.
  EXPECT_EQ(app.platform().rndValues.size(), 1u);
}

TEST_F(AleaOrdiTest, AWrongCountGivesTheFocusBackToTheTextBox) {
  Open();
  app.Run(
      QStringLiteral("click AleaOrdi.Pairs\n"
                     "type AleaOrdi.Text1 \"7\"\n"));
  AleaOrdi& f = w();
  f.ActiveControl = &f.ui().Generer;
  const QString out = app.Run(QStringLiteral("click AleaOrdi.Generer\n"));
  EXPECT_TRUE(out.contains(QStringLiteral("Entrez un nombre compris entre 1 et 5")));
  ASSERT_NE(f.ActiveControl, nullptr);
  EXPECT_EQ(f.ActiveControl->Name(), QStringLiteral("Text1"));
}

TEST_F(AleaOrdiTest, EveryProposalUnderPairsHoldsItsCountOfEvenNumbers) {
  Open();
  app.Run(QStringLiteral("click AleaOrdi.Pairs\n"));
  for (int n = 1; n <= 5; ++n) {
    app.Run(QStringLiteral("type AleaOrdi.Text1 \"%1\"\n").arg(n));
    for (int press = 0; press < 50; ++press) {
      app.Run(QStringLiteral("click AleaOrdi.Generer\n"));
      const QStringList numbers = w().ui().Label14.Caption.split(QLatin1Char(','));
      ASSERT_EQ(numbers.size(), 5);
      QSet<int> distinct;
      for (int i = 0; i < 5; ++i) {
        const int v = numbers[i].trimmed().toInt();
        EXPECT_EQ(v % 2 == 0, i < n) << n << " " << w().ui().Label14.Caption.toStdString();
        distinct.insert(v);
      }
      EXPECT_EQ(distinct.size(), 5);
      EXPECT_EQ(w().ui().Label8.Caption.toInt() % 2, 0);
    }
  }
}

}  // namespace
}  // namespace kuvo
