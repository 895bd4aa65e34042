#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QPushButton>
#include <QTableView>

#include "GuiSupport.h"
#include "core/MDIKuvo.h"
#include "core/Module1.h"
#include "gui/FormView.h"
#include "gui/Twips.h"
#include "statistics/TirBase.h"

namespace kuvo::testing {
namespace {

class TirBaseViewTest : public ::testing::Test {
 protected:
  void SetUp() override {
    // Number 7 comes out in both draws, 12 once; chance 3 twice.
    folder.AddDraw(QStringLiteral("2024-03-04"), {23, 7, 41, 2, 36}, 3);
    folder.AddDraw(QStringLiteral("2024-03-06"), {7, 12, 40, 44, 49}, 3);
    run = std::make_unique<RunningProgram>(folder.Path());
    run->program.Start();
    ASSERT_TRUE(run->platform.fatals.isEmpty());
    run->platform.Run([this] { run->program.Win<MDIKuvo>().M_StatToutes_Click(); });
    ASSERT_TRUE(w().Loaded());
    view = dynamic_cast<FormView*>(run->platform.ViewOf(w()));
    ASSERT_NE(view, nullptr);
  }
  // The window's controls go before the views that show them.
  void TearDown() override {
    if (run && w().Loaded()) w().Unload();
    run.reset();
  }
  TirBase& w() { return run->program.Win<TirBase>(); }
  QWidget* WidgetOf(const Control& c) { return view->WidgetOf(c); }
  // The chart as painted now.
  QImage Chart() {
    QWidget* chart = WidgetOf(w().ui().Picture1);
    return chart->grab().toImage();
  }
  // The colour of the chart at a point given in millimetres.
  // Pixels in a millimetre of the chart, at the screen's DPI and the window's zoom.
  double PxPerMm() { return TwipsPerPx() > 0 ? 1440.0 / 25.4 / TwipsPerPx() : 0; }
  double TwipsPerPx() { return TwipsPerPixel() / view->Zoom(); }
  QColor At(const QImage& image, double xMm, double yMm) {
    const double px = PxPerMm();
    return image.pixelColor(static_cast<int>(xMm * px), static_cast<int>(yMm * px));
  }
  void Click(const Control& c) {
    auto* button = qobject_cast<QPushButton*>(WidgetOf(c));
    ASSERT_NE(button, nullptr);
    button->click();
  }
  void MoveMouse(QWidget* widget, QPointF at) {
    QMouseEvent move(QEvent::MouseMove, at, widget->mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &move);
  }

  AppFolder folder;
  std::unique_ptr<RunningProgram> run;
  FormView* view = nullptr;
};

// Whether a widget lies inside the window's inner area, where a user sees it.
bool InSight(QWidget* widget, QWidget* window) {
  const QRect r(widget->mapTo(window, QPoint(0, 0)), widget->size());
  return window->rect().intersects(r);
}

TEST_F(TirBaseViewTest, TheShortFormHidesTheChartAndTheTallOneShowsIt) {
  QWidget* chart = WidgetOf(w().ui().Picture1);
  QWidget* plus = WidgetOf(w().ui().Plus);
  ASSERT_NE(chart, nullptr);
  EXPECT_FALSE(InSight(chart, view));
  EXPECT_FALSE(InSight(plus, view));
  EXPECT_TRUE(InSight(WidgetOf(w().ui().Liste3), view));

  Click(w().ui().GraphiquePlus);
  EXPECT_EQ(w().Height, 9300);
  EXPECT_TRUE(InSight(chart, view));
  EXPECT_TRUE(InSight(plus, view));
  // The whole chart is inside the window.
  const QRect r(chart->mapTo(view, QPoint(0, 0)), chart->size());
  EXPECT_TRUE(view->rect().contains(r)) << r.bottom() << " " << view->height();

  Click(w().ui().GraphiqueMoins);
  EXPECT_EQ(w().Height, 5300);
  EXPECT_FALSE(InSight(chart, view));
}

TEST_F(TirBaseViewTest, ButtonsBelowTheLowerEdgeTakeNoClick) {
  // Even from the keyboard, a button out of sight does nothing.
  Click(w().ui().Plus);
  Click(w().ui().Moins);
  EXPECT_TRUE(w().ui().Picture1.Boxes().empty());
  Click(w().ui().GraphiquePlus);
  Click(w().ui().Plus);
  ASSERT_EQ(w().ui().Picture1.Boxes().size(), 49u);
}

TEST_F(TirBaseViewTest, BarsArePaintedInTwoColoursAndCutAtTheUpperEdge) {
  Click(w().ui().GraphiquePlus);
  QCoreApplication::processEvents();
  const QImage image = Chart();
  EXPECT_NEAR(image.width(), 8535 / TwipsPerPx(), 1);
  EXPECT_NEAR(image.height(), 3495 / TwipsPerPx(), 1);
  const double base = w().ui().Picture1.ScaleHeight() - 2;
  // Number 7 (odd) at 100 % with the scale at 50: light green up to the top.
  EXPECT_EQ(At(image, 20.7, base - 1), QColor(0, 255, 0));
  EXPECT_EQ(At(image, 20.7, 0.2), QColor(0, 255, 0));
  // Number 12 (even) at 50 %: light magenta over the full height too.
  EXPECT_EQ(At(image, 35.7, base - 1), QColor(255, 0, 255));
  // Number 1 never came out: background; below the foot, background.
  EXPECT_EQ(At(image, 2.7, base - 1), QColor(255, 255, 255));
  EXPECT_EQ(At(image, 20.7, base + 1), QColor(255, 255, 255));
  // Between two bars, background.
  EXPECT_EQ(At(image, 22.7, base - 1), QColor(255, 255, 255));

  // Larger scale: number 12 at 50 % reaches halfway at 80.
  Click(w().ui().Moins);
  for (int k = 0; k < 6; ++k) Click(w().ui().Moins);
  EXPECT_EQ(w().ui().Picture1.Boxes().size(), 49u);
  QCoreApplication::processEvents();
  const QImage smaller = Chart();
  EXPECT_EQ(At(smaller, 35.7, base - base * 50 / 80 + 1), QColor(255, 0, 255));
  EXPECT_EQ(At(smaller, 35.7, base - base * 50 / 80 - 1), QColor(255, 255, 255));
}

TEST_F(TirBaseViewTest, TheDrawingComesBackWhenTheChartIsUncovered) {
  Click(w().ui().GraphiquePlus);
  QWidget* chart = WidgetOf(w().ui().Picture1);
  chart->hide();
  chart->show();
  const QImage image = Chart();
  EXPECT_EQ(At(image, 20.7, 30), QColor(0, 255, 0));
}

TEST_F(TirBaseViewTest, TheMouseOverTheChartShowsTheNumberInMillimetres) {
  Click(w().ui().GraphiquePlus);
  QWidget* chart = WidgetOf(w().ui().Picture1);
  auto* label4 = qobject_cast<QLabel*>(WidgetOf(w().ui().Label4));
  ASSERT_NE(label4, nullptr);
  const double px = PxPerMm();
  // Column 7 runs from 19 to 22 mm.
  MoveMouse(chart, QPointF(20 * px, 30 * px));
  EXPECT_EQ(w().ui().Label4.Caption,
            QStringLiteral("Numéro   7 :   Nombre de Sorties   2;    Taux de réusite   100 %"));
  EXPECT_EQ(label4->text(), w().ui().Label4.Caption);
  // The upper edge empties the heading of Liste1.
  MoveMouse(chart, QPointF(20 * px, 0));
  EXPECT_EQ(w().ui().Label1.Caption, QString());
  auto* label1 = qobject_cast<QLabel*>(WidgetOf(w().ui().Label1));
  EXPECT_EQ(label1->text(), QString());
}

TEST_F(TirBaseViewTest, AScreenReaderHearsTheNumberAndRateUnderThePointer) {
  Click(w().ui().GraphiquePlus);
  QWidget* chart = WidgetOf(w().ui().Picture1);
  QAccessibleInterface* access = QAccessible::queryAccessibleInterface(chart);
  ASSERT_NE(access, nullptr);
  EXPECT_EQ(access->role(), QAccessible::Chart);
  EXPECT_EQ(access->text(QAccessible::Name), QStringLiteral("Graphique"));
  MoveMouse(chart, QPointF(20 * PxPerMm(), 30 * PxPerMm()));
  EXPECT_EQ(access->text(QAccessible::Description),
            QStringLiteral("Numéro 7 : Nombre de Sorties 2; Taux de réusite 100 %"));
  // The decoration of the window says what it shows.
  QAccessibleInterface* image = QAccessible::queryAccessibleInterface(WidgetOf(w().ui().Image6));
  EXPECT_EQ(image->role(), QAccessible::Graphic);
  EXPECT_FALSE(image->text(QAccessible::Name).isEmpty());
}

TEST_F(TirBaseViewTest, GridsOpenAtTheirTopRow) {
  auto* liste2 = qobject_cast<QTableView*>(WidgetOf(w().ui().Liste2));
  ASSERT_NE(liste2, nullptr);
  EXPECT_EQ(liste2->rowAt(0), 0);
  EXPECT_EQ(liste2->model()->index(0, 0).data().toString(), QStringLiteral("7"));
  auto* liste3 = qobject_cast<QTableView*>(WidgetOf(w().ui().Liste3));
  EXPECT_EQ(liste3->model()->rowCount(), 2);
  EXPECT_EQ(liste3->model()->index(0, 0).data().toString(), QStringLiteral("04 mars 2024"));
  // Numbers in the regional form stand on the right, the lone separator on the left.
  auto* liste4 = qobject_cast<QTableView*>(WidgetOf(w().ui().Liste4));
  const auto align = [liste4](int row) {
    return liste4->model()->index(row, 2).data(Qt::TextAlignmentRole).toInt() &
           Qt::AlignHorizontal_Mask;
  };
  EXPECT_EQ(liste4->model()->index(2, 2).data().toString(), QStringLiteral("100,"));
  EXPECT_EQ(align(2), Qt::AlignRight);
  EXPECT_EQ(liste4->model()->index(0, 2).data().toString(), QStringLiteral(","));
  EXPECT_EQ(align(0), Qt::AlignLeft);
}

}  // namespace
}  // namespace kuvo::testing
