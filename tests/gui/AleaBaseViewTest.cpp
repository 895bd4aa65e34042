#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>

#include "GuiSupport.h"
#include "core/MDIKuvo.h"
#include "gui/FormView.h"
#include "proposals/AleaBase.h"

namespace kuvo::testing {
namespace {

class AleaBaseViewTest : public ::testing::Test {
 protected:
  void SetUp() override {
    folder.AddDraw(QStringLiteral("2024-03-04"), {23, 7, 41, 2, 36}, 5);
    folder.AddDraw(QStringLiteral("2024-03-06"), {1, 2, 3, 4, 5}, 1);
    folder.AddDraw(QStringLiteral("2024-03-09"), {10, 20, 30, 40, 49}, 10);
    run = std::make_unique<RunningProgram>(folder.Path());
    run->program.Start();
    ASSERT_TRUE(run->platform.fatals.isEmpty());
    run->platform.Run([this] { run->program.Win<MDIKuvo>().M_AleatoireBase_Click(); });
    view = dynamic_cast<FormView*>(run->platform.ViewOf(w()));
    ASSERT_NE(view, nullptr);
  }
  AleaBase& w() { return run->program.Win<AleaBase>(); }
  // The window's choice, as an observer reads it.
  QString Choix() {
    QString value;
    w().Describe([&](const QString& name, const PropValue& v) {
      if (name == QLatin1String("Choix")) value = v.Format();
    });
    return value;
  }
  template <class W>
  W* Widget(const Control& c) {
    return qobject_cast<W*>(view->WidgetOf(c));
  }
  AppFolder folder;
  std::unique_ptr<RunningProgram> run;
  FormView* view = nullptr;
};

TEST_F(AleaBaseViewTest, OptionsAndLinesStandInsideThePanelThatDisablesThem) {
  AleaBaseUi& ui = w().ui();
  QWidget* panel = view->WidgetOf(ui.Picture1);
  ASSERT_NE(panel, nullptr);
  for (const Control* c : std::initializer_list<const Control*>{
           &ui.Chauds, &ui.Froids, &ui.SansReus, &ui.JePense, &ui.Line1, &ui.Line8})
    EXPECT_EQ(view->WidgetOf(*c)->parentWidget(), panel) << c->FullName().toStdString();
  auto* chauds = Widget<QRadioButton>(ui.Chauds);
  auto* jePense = Widget<QRadioButton>(ui.JePense);
  EXPECT_TRUE(jePense->isEnabled());
  EXPECT_FALSE(Widget<QPushButton>(ui.Generer)->isEnabled());

  chauds->click();
  EXPECT_EQ(Choix(), QStringLiteral("1"));
  EXPECT_FALSE(panel->isEnabled());
  EXPECT_FALSE(jePense->isEnabled()) << "an option of the disabled panel";
  EXPECT_FALSE(chauds->isEnabled());
  EXPECT_TRUE(Widget<QPushButton>(ui.Generer)->isEnabled());

  Widget<QPushButton>(ui.Generer)->click();
  EXPECT_EQ(Widget<QLabel>(ui.Label14)->text(), QStringLiteral(" 2,  1,  3,  4,  5"));
  EXPECT_FALSE(Widget<QPushButton>(ui.Generer)->isEnabled());
  Widget<QPushButton>(ui.Annuler)->click();
  EXPECT_TRUE(jePense->isEnabled());
  EXPECT_TRUE(Widget<QLabel>(ui.Label14)->text().isEmpty());
}

TEST_F(AleaBaseViewTest, TheMousePassingOverAnOptionDescribesIt) {
  AleaBaseUi& ui = w().ui();
  auto* froids = Widget<QRadioButton>(ui.Froids);
  ASSERT_NE(froids, nullptr);
  EXPECT_TRUE(froids->hasMouseTracking());
  EXPECT_FALSE(Widget<QLabel>(ui.Label3)->isVisibleTo(view));
  QMouseEvent move(QEvent::MouseMove, QPointF(5, 5), QPointF(), Qt::NoButton, Qt::NoButton,
                   Qt::NoModifier);
  QCoreApplication::sendEvent(froids, &move);
  EXPECT_TRUE(view->WidgetOf(ui.Line3)->isVisibleTo(view));
  EXPECT_TRUE(view->WidgetOf(ui.Line4)->isVisibleTo(view));
  EXPECT_FALSE(view->WidgetOf(ui.Line1)->isVisibleTo(view));
  EXPECT_TRUE(Widget<QLabel>(ui.Label3)->isVisibleTo(view));
  EXPECT_EQ(Widget<QLabel>(ui.Label4)->text(),
            QStringLiteral("la plus faible depuis la date sélectionnée."));
}

TEST_F(AleaBaseViewTest, TypingInTheDateListChangesItsTextOnly) {
  AleaBaseUi& ui = w().ui();
  auto* combo = Widget<QComboBox>(ui.Combo1);
  ASSERT_NE(combo, nullptr);
  ASSERT_TRUE(combo->isEditable());
  EXPECT_EQ(combo->count(), 3);
  EXPECT_EQ(combo->currentText(), QStringLiteral("04 mars 2024"));

  QKeyEvent press(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
  QCoreApplication::sendEvent(combo->lineEdit(), &press);
  EXPECT_EQ(ui.Combo1.Text, QStringLiteral("04 mars 2024x"));
  EXPECT_EQ(ui.Label6.Caption, QStringLiteral("04 mars 2024"));
  EXPECT_EQ(ui.Label13.Caption, QStringLiteral("3"));

  emit combo->activated(2);
  EXPECT_EQ(ui.Label6.Caption, QStringLiteral("09 mars 2024"));
  EXPECT_EQ(Widget<QLabel>(ui.Label13)->text(), QStringLiteral("1"));
  EXPECT_EQ(combo->currentText(), QStringLiteral("09 mars 2024"));
}

}  // namespace
}  // namespace kuvo::testing
