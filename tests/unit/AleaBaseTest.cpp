#include <gtest/gtest.h>
#include <QTemporaryDir>
#include <cmath>

#include "ScriptedPlatform.h"
#include "core/MDIKuvo.h"
#include "core/Module1.h"
#include "core/Program.h"
#include "core/Store.h"
#include "proposals/AleaBase.h"
#include "windows/Windows.h"

namespace kuvo {
namespace {

// The scripted platform, keeping every change of the mouse pointer and the
// pointer in force when a message box comes up.
class PointerPlatform : public ScriptedPlatform {
 public:
  using ScriptedPlatform::ScriptedPlatform;
  std::vector<int> pointers;
  std::vector<int> atMessage;
  void SetMousePointer(int pointer) override {
    pointers.push_back(pointer);
    ScriptedPlatform::SetMousePointer(pointer);
  }
  int MsgBox(const QString& prompt, int style, const QString& title) override {
    atMessage.push_back(MousePointer());
    return ScriptedPlatform::MsgBox(prompt, style, title);
  }
};

// A program whose base holds the given draws, the proposal window open.
struct ProposalApp {
  QTemporaryDir dir;
  PointerPlatform sys{dir.path()};
  std::unique_ptr<Program> app;

  explicit ProposalApp(const QStringList& draws) {
    const QString path = dir.filePath(QStringLiteral("Kuvo.Mdb"));
    CreateStore(path, ShippedSchema());
    {
      auto db = Database::OpenDatabase(path);
      for (const QString& d : draws)
        db->Execute(QStringLiteral("INSERT INTO Sorties VALUES (%1)").arg(d));
      db->CommitPending();
    }
    app = std::make_unique<Program>(sys, AllWindows());
    app->Start();
    app->RunEvent([this] { app->Win<MDIKuvo>().M_AleatoireBase_Click(); });
    sys.pointers.clear();
  }
  AleaBase& w() { return app->Win<AleaBase>(); }
  Module1& m() { return app->M(); }
  void UserClick(Control& c) {
    app->RunEvent([&c] {
      if (!c.Reachable()) return;
      if (c.Kind() == ControlKind::OptionButton)
        static_cast<OptionButton&>(c).UserClick();
      else if (c.Click)
        c.Click();
    });
  }
  void Run(OptionButton& option) {
    UserClick(option);
    UserClick(w().ui().Generer);
  }
};

const QStringList kThreeDraws = {
    QStringLiteral("'2024-03-04', 23, 7, 41, 2, 36, 5"),
    QStringLiteral("'2024-03-06', 1, 2, 3, 4, 5, 1"),
    QStringLiteral("'2024-03-09', 10, 20, 30, 40, 49, 10"),
};

TEST(AleaBase, WaitPointerUntilTheFirstSortThenDefault) {
  ProposalApp t(kThreeDraws);
  t.Run(t.w().ui().Chauds);
  // Generer, then each sort sets and resets it, then Generer's own reset.
  EXPECT_EQ(t.sys.pointers, (std::vector<int>{11, 11, 0, 11, 0, 0}));
  EXPECT_EQ(t.sys.MousePointer(), 0);
}

TEST(AleaBase, JePenseSortsThreeTimes) {
  ProposalApp t(kThreeDraws);
  t.sys.rndValues.push_back(0.25f);
  t.Run(t.w().ui().JePense);
  EXPECT_EQ(t.sys.pointers, (std::vector<int>{11, 11, 0, 11, 0, 11, 0, 0}));
  EXPECT_EQ(t.w().ui().Label24.Caption, QString::number(t.m().StatChance[3].Numero));
}

TEST(AleaBase, MessageOfSansReusLeavesThePointerAsTheSortLeftIt) {
  // Every chance number came out: the message, and no last reset.
  QStringList draws;
  for (int k = 1; k <= 10; ++k)
    draws
        << QStringLiteral("'2024-01-%1', 1, 2, 3, 4, 5, %2").arg(k, 2, 10, QLatin1Char('0')).arg(k);
  ProposalApp t(draws);
  t.Run(t.w().ui().SansReus);
  EXPECT_EQ(t.sys.pointers, (std::vector<int>{11, 11, 0, 11, 0}));
  EXPECT_EQ(t.sys.atMessage, (std::vector<int>{0}));
  EXPECT_FALSE(t.w().ui().Generer.Enabled);
  EXPECT_TRUE(t.w().ui().Label14.Caption.isEmpty());
}

TEST(AleaBase, GenererWithoutAChoiceDoesNothingAtAll) {
  ProposalApp t(kThreeDraws);
  t.app->RunEvent([&] {
    t.w().ui().Generer.Enabled = true;
    t.w().Generer_Click();
  });
  EXPECT_TRUE(t.sys.pointers.empty());
  EXPECT_TRUE(t.w().ui().Generer.Enabled);
  EXPECT_TRUE(t.m().StatNumeros.empty());
}

TEST(AleaBase, RatesAreTheCountOverTheDrawsTimesAHundred) {
  ProposalApp t(kThreeDraws);
  t.Run(t.w().ui().Chauds);
  const double third = 1.0 / 3.0 * 100.0;
  ASSERT_NE(third, 100.0 / 3.0) << "the order of the operations shows in the last bit";
  ASSERT_EQ(t.m().StatNumeros.size(), 50u);
  ASSERT_EQ(t.m().StatChance.size(), 11u);
  EXPECT_EQ(t.m().StatNumeros[1].Taux, 2.0 / 3.0 * 100.0);  // number 2, twice
  for (int k = 2; k <= 14; ++k) EXPECT_EQ(t.m().StatNumeros[k].Taux, third) << k;
  EXPECT_EQ(t.m().StatNumeros[15].Taux, 0.0);
  for (int k = 1; k <= 3; ++k) EXPECT_EQ(t.m().StatChance[k].Taux, third) << k;
  // Element k holds its number: every number once among the 49.
  std::vector<int> seen(50, 0);
  for (int k = 1; k <= 49; ++k) ++seen[static_cast<int>(t.m().StatNumeros[k].Numero)];
  for (int n = 1; n <= 49; ++n) EXPECT_EQ(seen[n], 1) << n;
}

TEST(AleaBase, TheRankOfTheChanceNumberStaysWithinOneToTen) {
  for (float r : {0.0f, 0.0999999f, 0.1f, 0.5f, 0.7f, std::nextafter(1.0f, 0.0f)}) {
    ProposalApp t(kThreeDraws);
    t.sys.rndValues.push_back(r);
    t.Run(t.w().ui().JePense);
    const int rang = static_cast<int>(std::floor(10.0 * static_cast<double>(r) + 1.0));
    ASSERT_GE(rang, 1);
    ASSERT_LE(rang, 10);
    EXPECT_EQ(t.w().ui().Label20(5).Caption,
              QString::number(static_cast<int>(t.m().StatChance[rang].Numero)))
        << r;
  }
}

// SansReus with n numbers never drawn: for n from 1 to 4 exactly those are
// listed, each once; from 5 on the fifth listed is the number of rank 5.
TEST(AleaBase, SansReusListsEachNumberWithoutOutingOnce) {
  for (int missing = 1; missing <= 6; ++missing) {
    // Ten draws cover 1..49 but the `missing` highest; chance 10 never comes out.
    QStringList draws;
    QList<int> numbers;
    for (int n = 1; n <= 49 - missing; ++n) numbers << n;
    while (numbers.size() % 5) numbers << 1;
    for (int k = 0; k < numbers.size() / 5; ++k)
      draws << QStringLiteral("'2024-01-%1', %2, %3, %4, %5, %6, %7")
                   .arg(k + 1, 2, 10, QLatin1Char('0'))
                   .arg(numbers[5 * k])
                   .arg(numbers[5 * k + 1])
                   .arg(numbers[5 * k + 2])
                   .arg(numbers[5 * k + 3])
                   .arg(numbers[5 * k + 4])
                   .arg(1 + k % 9);
    ProposalApp t(draws);
    t.Run(t.w().ui().SansReus);
    const QStringList listed = t.w().ui().Label14.Caption.split(QStringLiteral(", "));
    const int shown = std::min(missing, 5);
    ASSERT_EQ(listed.size(), shown) << missing;
    QSet<int> distinct;
    for (int i = 0; i < std::min(missing, 4); ++i) {
      const int n = listed[i].trimmed().toInt();
      EXPECT_GT(n, 49 - missing) << missing;
      distinct.insert(n);
      EXPECT_EQ(t.w().ui().Label21(i).Caption, QStringLiteral("0"));
    }
    EXPECT_EQ(distinct.size(), std::min(missing, 4)) << missing;
    if (missing >= 5) {
      EXPECT_LE(listed[4].trimmed().toInt(), 49 - missing) << "rank 5";
    }
    for (int r = shown; r <= 4; ++r) EXPECT_TRUE(t.w().ui().Label20(r).Caption.isEmpty());
    EXPECT_EQ(t.w().ui().Label22(5).Caption, QStringLiteral(","));
  }
}

}  // namespace
}  // namespace kuvo
