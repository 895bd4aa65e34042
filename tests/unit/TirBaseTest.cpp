#include <QRandomGenerator>
#include <algorithm>
#include <cmath>

#include "TestSupport.h"
#include "core/Form.h"
#include "core/MDIKuvo.h"
#include "core/Texts.h"
#include "statistics/TirBase.h"

namespace kuvo::test {
namespace {

// The ordering by number that the chart runs before it draws.
struct TriNumerosTest : ::testing::Test {
  TestApp app;
  std::vector<EnregStat>& Stat() { return app.program().M().StatNumeros; }
  void Fill(const std::vector<int>& numbers) {
    Stat().assign(50, EnregStat{});
    for (size_t i = 0; i < numbers.size(); ++i) {
      Stat()[i + 1].Numero = numbers[i];
      Stat()[i + 1].NbSorties = static_cast<Int16>(numbers[i] * 2);
      Stat()[i + 1].Taux = numbers[i] / 10.0;
    }
  }
};

TEST_F(TriNumerosTest, PutsTheFortyNineNumbersBackInAscendingOrder) {
  std::vector<int> numbers(49);
  for (int i = 0; i < 49; ++i) numbers[static_cast<size_t>(i)] = 49 - i;
  std::shuffle(numbers.begin(), numbers.end(), std::mt19937(7));
  Fill(numbers);
  Stat()[0].Numero = 99;
  app.program().M().TriNumeros();
  for (int i = 1; i <= 49; ++i) {
    EXPECT_EQ(Stat()[static_cast<size_t>(i)].Numero, i);
    // Whole records move.
    EXPECT_EQ(Stat()[static_cast<size_t>(i)].NbSorties, 2 * i);
    EXPECT_DOUBLE_EQ(Stat()[static_cast<size_t>(i)].Taux, i / 10.0);
  }
  EXPECT_EQ(Stat()[0].Numero, 99);
}

TEST_F(TriNumerosTest, UndoesTheRankingByRate) {
  std::vector<int> numbers(49);
  for (int i = 0; i < 49; ++i) numbers[static_cast<size_t>(i)] = i + 1;
  Fill(numbers);
  app.program().M().TriTaux(49, Stat());
  EXPECT_EQ(Stat()[1].Numero, 49);
  app.program().M().TriNumeros();
  for (int i = 1; i <= 49; ++i) EXPECT_EQ(Stat()[static_cast<size_t>(i)].Numero, i);
}

TEST_F(TriNumerosTest, SetsTheDefaultPointerOnLeavingWhateverTheCallerSet) {
  std::vector<int> numbers(49);
  for (int i = 0; i < 49; ++i) numbers[static_cast<size_t>(i)] = i + 1;
  Fill(numbers);
  app.platform().SetMousePointer(Pointer::Wait);
  app.program().M().TriNumeros();
  EXPECT_EQ(app.platform().MousePointer(), Pointer::Default);
}

TEST_F(TriNumerosTest, AnArrayNotDimensionedIsOutOfRange) {
  Stat().clear();
  try {
    app.program().M().TriNumeros();
    FAIL() << "no error";
  } catch (const VbError& e) {
    EXPECT_EQ(e.Number(), Err::SubscriptOutOfRange);
  }
}

TEST(QBColorTest, TheSixteenColoursBlueGreenRed) {
  const unsigned expected[16] = {0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080,
                                 0x008080, 0xC0C0C0, 0x808080, 0xFF0000, 0x00FF00, 0xFFFF00,
                                 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};
  for (int i = 0; i < 16; ++i) EXPECT_EQ(QBColor(i), expected[i]) << i;
  for (int bad : {-1, 16}) {
    try {
      QBColor(bad);
      FAIL() << bad;
    } catch (const VbError& e) {
      EXPECT_EQ(e.Number(), Err::InvalidCall);
    }
  }
}

// A window with a drawing area and controls on either side of its lower edge.
class Essai;
struct EssaiUi {
  explicit EssaiUi(Essai& f);
  DrawingArea Picture1;
  CommandButton Haut, Bas;
  PictureBox Boite;
  CommandButton Dedans;
};
class Essai : public FormOf<Essai, EssaiUi> {
 public:
  static constexpr const char* kName = "Essai";
  explicit Essai(Program& p) : FormOf(p, kName) {}
};
EssaiUi::EssaiUi(Essai& f)
    : Picture1(f, "Picture1"),
      Haut(f, "Haut"),
      Bas(f, "Bas"),
      Boite(f, "Boite"),
      Dedans(f, "Dedans") {
  f.Height = 3000;  // inner height 2625
  Picture1.Move(0, 0, 8535, 3495);
  Haut.Move(0, 2600, 600, 400);
  Bas.Move(0, 2625, 600, 400);
  Boite.Move(1000, 2000, 1200, 1200);
  Dedans.Container = &Boite;
  Dedans.Move(0, 700, 600, 400);
}

struct DrawingAreaTest : ::testing::Test {
  TestApp app;
  Essai form{app.program()};
  void SetUp() override {
    app.Run(
        QStringLiteral("store new\nsql \"INSERT INTO Sorties VALUES ('2024-03-04', 1, 2, 3, 4, "
                       "5, 6)\"\nstart\n"));
    form.Show();
  }
};

TEST_F(DrawingAreaTest, ScaleInMillimetresWithAndWithoutBorder) {
  DrawingArea& p = form.ui().Picture1;
  EXPECT_DOUBLE_EQ(p.ScaleWidth(), 8535);
  p.ScaleMode = Scale::Millimetres;
  EXPECT_DOUBLE_EQ(p.ScaleHeight(), 3495 * 25.4 / 1440);
  EXPECT_DOUBLE_EQ(p.ScaleWidth(), 8535 * 25.4 / 1440);
  EXPECT_NEAR(p.ScaleWidth(), 150.5, 0.05);
  EXPECT_NEAR(p.ScaleHeight(), 61.6, 0.05);
  p.BorderStyle = 1;
  EXPECT_DOUBLE_EQ(p.ScaleHeight(), (3495 - 60) * 25.4 / 1440);
  p.ScaleMode = Scale::Centimetres;
  EXPECT_DOUBLE_EQ(p.ScaleWidth(), (8535 - 60) * 2.54 / 1440);
}

TEST_F(DrawingAreaTest, BoxesAreKeptAsDrawnUntilCls) {
  DrawingArea& p = form.ui().Picture1;
  EXPECT_TRUE(p.Boxes().empty());
  const int before = p.Revision();
  p.LineBF(5, 59.6, 6.5, -20, QBColor(10));
  p.LineBF(300, 1, 2, 2, QBColor(13));
  EXPECT_GT(p.Revision(), before);
  ASSERT_EQ(p.Boxes().size(), 2u);
  // Nothing is cut or put in order: the view does that.
  EXPECT_EQ(p.Boxes()[0].y2, -20);
  EXPECT_EQ(p.Boxes()[1].x1, 300);
  EXPECT_EQ(p.Boxes()[1].colour, 0xFF00FFu);
  const int drawn = p.Revision();
  p.Cls();
  EXPECT_TRUE(p.Boxes().empty());
  EXPECT_GT(p.Revision(), drawn);
}

TEST_F(DrawingAreaTest, ControlsBelowTheLowerEdgeAreOutOfReach) {
  EXPECT_DOUBLE_EQ(form.ScaleHeight(), 2625);
  EXPECT_TRUE(form.ui().Haut.Reachable());
  EXPECT_FALSE(form.ui().Bas.Reachable());
  EXPECT_TRUE(form.ui().Boite.Reachable());
  // Inside a container, the position counts from the window.
  EXPECT_FALSE(form.ui().Dedans.Reachable());
  form.Height = 3400;
  EXPECT_TRUE(form.ui().Bas.Reachable());
  EXPECT_TRUE(form.ui().Dedans.Reachable());
  // Code can still give it the focus, as on the platform.
  form.Height = 3000;
  form.ui().Bas.SetFocus();
  EXPECT_EQ(form.ActiveControl, &form.ui().Bas);
  form.ui().Bas.Visible = false;
  try {
    form.ui().Bas.SetFocus();
    FAIL() << "no error";
  } catch (const VbError& e) {
    EXPECT_EQ(e.Number(), Err::InvalidCall);
  }
}

// The driver's view of a drawing, on the chart of the base view.
TEST_F(DrawingAreaTest, DumpPrintsTheBoxesWithTwoDecimalsCornersInOrder) {
  EXPECT_EQ(app.Run(QStringLiteral("dump TirBase.Picture1\n")),
            QStringLiteral("TirBase.Picture1 = <not loaded>\n"));
  EXPECT_EQ(app.Run(QStringLiteral("menu M_StatToutes\nclick TirBase.GraphiquePlus\n")),
            QStringLiteral("SHOW Avance\nUNLOAD Avance\nSHOW TirBase\n"));
  DrawingArea& chart = app.program().Win<TirBase>().ui().Picture1;
  chart.Cls();
  EXPECT_EQ(app.Run(QStringLiteral("dump TirBase.Picture1\n")),
            QStringLiteral("TirBase.Picture1 EMPTY\n"));
  chart.LineBF(6.5, 59.647, 5, -0.001, QBColor(13));
  chart.LineBF(2, 2.0051, 3.5, 1, 0x123456);
  EXPECT_EQ(app.Run(QStringLiteral("dump TirBase.Picture1\n")),
            QStringLiteral("TirBase.Picture1 BOX 5.00 0.00 6.50 59.65 FF00FF\n"
                           "TirBase.Picture1 BOX 2.00 1.00 3.50 2.01 123456\n"));
  // Any other control prints its properties.
  EXPECT_EQ(app.Run(QStringLiteral("dump TirBase.Plus\n")),
            QStringLiteral("TirBase.Plus.Caption = \"+\"\nTirBase.Plus.Enabled = True\n"
                           "TirBase.Plus.Height = 615\nTirBase.Plus.Left = 240\n"
                           "TirBase.Plus.Top = 840\nTirBase.Plus.Visible = True\n"
                           "TirBase.Plus.Width = 720\n"));
}

// The caption names the column, not the Numero of the element under it.
TEST(TirBaseChartTest, TheCaptionNamesTheColumnAndReadsItsElement) {
  TestApp app;
  app.Run(
      QStringLiteral("store new\n"
                     "sql \"INSERT INTO Sorties VALUES ('2024-03-04', 8, 9, 10, 11, 12, 8)\"\n"
                     "start\nmenu M_StatToutes\nclick TirBase.GraphiquePlus\n"));
  std::vector<EnregStat>& stat = app.program().M().StatNumeros;
  std::swap(stat[7], stat[8]);
  EXPECT_EQ(
      app.Run(QStringLiteral("mouse TirBase.Picture1 move 20 30\nget TirBase.Label4.Caption\n")),
      QStringLiteral("TirBase.Label4.Caption = \"Numéro   7 :   Nombre de Sorties   2;    "
                     "Taux de réusite   200 %\"\n"));
}

// The base view on a random history, against counts made here from the store.
TEST(TirBaseTotalsTest, GridsAgreeWithAnIndependentCount) {
  TestApp app;
  QString script = QStringLiteral("store new\n");
  QRandomGenerator random(2024);
  const int draws = 600;
  QStringList rows;
  for (int d = 0; d < draws; ++d) {
    std::vector<int> pool(49);
    for (int n = 0; n < 49; ++n) pool[static_cast<size_t>(n)] = n + 1;
    std::shuffle(pool.begin(), pool.end(), std::mt19937(random.generate()));
    rows << QStringLiteral("(date('2001-01-01', '+%1 days'), %2, %3, %4, %5, %6, %7)")
                .arg(d)
                .arg(pool[0])
                .arg(pool[1])
                .arg(pool[2])
                .arg(pool[3])
                .arg(pool[4])
                .arg(random.bounded(1, 11));
  }
  script += QStringLiteral("sql \"INSERT INTO Sorties VALUES %1\"\nstart\nmenu M_StatToutes\n")
                .arg(rows.join(QLatin1Char(',')));
  app.Run(script);
  TirBase& w = app.program().Win<TirBase>();
  ASSERT_TRUE(w.Loaded());
  const Grid& liste1 = w.ui().Liste1;
  int total = 0;
  double rates = 0;
  for (int n = 1; n <= 49; ++n) {
    const QString where = QStringLiteral(
                              "numero1 = %1 THEN 1 ELSE 0 END) + SUM(CASE WHEN numero2 = %1 THEN 1 "
                              "ELSE 0 END) + SUM(CASE WHEN numero3 = %1 THEN 1 ELSE 0 END) + "
                              "SUM(CASE WHEN numero4 = %1 THEN 1 ELSE 0 END) + SUM(CASE WHEN "
                              "numero5 = %1 THEN 1 ELSE 0 END) + SUM(CASE WHEN NumeroChance = %1")
                              .arg(n);
    const int count =
        app.Query(
               QStringLiteral("SELECT SUM(CASE WHEN %1 THEN 1 ELSE 0 END) FROM Sorties").arg(where))
            .toInt();
    EXPECT_EQ(liste1.TextMatrix(n, 1).toInt(), count) << n;
    const double rate = std::round(count * 1000.0 / draws) / 10;
    EXPECT_DOUBLE_EQ(CDbl(liste1.TextMatrix(n, 2)), rate) << n;
    total += liste1.TextMatrix(n, 1).toInt();
    rates += CDbl(liste1.TextMatrix(n, 2));
  }
  EXPECT_EQ(total, 6 * draws);
  EXPECT_NEAR(rates, 600, 49 * 0.05);

  // Liste2: the same records, by descending rate.
  const Grid& liste2 = w.ui().Liste2;
  for (int k = 1; k < 49; ++k)
    EXPECT_GE(CDbl(liste2.TextMatrix(k, 2)), CDbl(liste2.TextMatrix(k + 1, 2))) << k;
  for (int k = 1; k <= 49; ++k) {
    const int n = liste2.TextMatrix(k, 0).toInt();
    EXPECT_EQ(liste2.TextMatrix(k, 1), liste1.TextMatrix(n, 1));
    EXPECT_EQ(app.program().M().StatNumeros[static_cast<size_t>(k)].Numero, n);
  }

  // Liste4: the chance numbers alone.
  int chances = 0;
  for (int c = 1; c <= 10; ++c) {
    const int count =
        app.Query(QStringLiteral("SELECT COUNT(*) FROM Sorties WHERE NumeroChance = %1").arg(c))
            .toInt();
    EXPECT_EQ(w.ui().Liste4.TextMatrix(c, 1), count ? QString::number(count) : QString());
    chances += count;
  }
  EXPECT_EQ(chances, draws);
  EXPECT_EQ(w.ui().Liste3.Rows(), draws + 1);
}

}  // namespace
}  // namespace kuvo::test
