// What a user's click or pick does to a control: the same for the views and
// the scenario driver.
#include "TestSupport.h"
#include "core/Form.h"

namespace kuvo::test {
namespace {

class Panel;
struct PanelUi {
  explicit PanelUi(Panel& f);
  ComboBox Combo1;
  Frame Frame1;
  OptionButton Option1, Option2, Option3;
  CheckBox Check1;
  Grid Grille;
  Calendar Calendar1;
};

class Panel : public FormOf<Panel, PanelUi> {
 public:
  static constexpr const char* kName = "Panel";
  explicit Panel(Program& p) : FormOf(p, kName) {}
  QStringList clicks;
};

PanelUi::PanelUi(Panel& f)
    : Combo1(f, "Combo1"),
      Frame1(f, "Frame1"),
      Option1(f, "Option1"),
      Option2(f, "Option2"),
      Option3(f, "Option3"),
      Check1(f, "Check1"),
      Grille(f, "Grille"),
      Calendar1(f, "Calendar1") {
  Combo1.AddItem(QStringLiteral("Numeros"));
  Combo1.AddItem(QStringLiteral("Sorties"));
  Option3.Container = &Frame1;
  Option3.Value = true;
  Grille.SetRows(5);
  for (Control* c : std::initializer_list<Control*>{&Combo1, &Option1, &Option2, &Option3, &Check1,
                                                    &Grille, &Calendar1})
    c->Click = [&f, c] { f.clicks << c->FullName(); };
}

struct UserActionTest : ::testing::Test {
  TestApp app;
  Panel panel{app.program()};
  PanelUi& ui() { return panel.ui(); }
};

TEST_F(UserActionTest, APickRaisesClickOnceAndAgainForTheSameItem) {
  ui().Combo1.UserPick(1);
  EXPECT_EQ(panel.clicks, QStringList{"Combo1"});
  EXPECT_EQ(ui().Combo1.Text, QStringLiteral("Sorties"));
  EXPECT_EQ(ui().Combo1.ListIndex(), 1);
  ui().Combo1.UserPick(1);
  EXPECT_EQ(panel.clicks, (QStringList{"Combo1", "Combo1"}));
}

TEST_F(UserActionTest, AnOptionClearsItsContainerOnlyThenClicks) {
  ui().Option1.UserClick();
  ui().Option2.UserClick();
  EXPECT_FALSE(ui().Option1.Value);
  EXPECT_TRUE(ui().Option2.Value);
  EXPECT_TRUE(ui().Option3.Value);  // in another container
  ui().Option2.UserClick();
  EXPECT_EQ(panel.clicks, (QStringList{"Option1", "Option2", "Option2"}));
}

TEST_F(UserActionTest, ACheckBoxTurnsOverThenClicks) {
  ui().Check1.UserClick();
  EXPECT_EQ(ui().Check1.Value, 1);
  ui().Check1.UserClick();
  EXPECT_EQ(ui().Check1.Value, 0);
  EXPECT_EQ(panel.clicks, (QStringList{"Check1", "Check1"}));
}

TEST_F(UserActionTest, AGridClickMovesToTheCellThenClicks) {
  ui().Grille.UserClick(3, 1);
  EXPECT_EQ(ui().Grille.Row, 3);
  EXPECT_EQ(ui().Grille.Col, 1);
  EXPECT_EQ(panel.clicks, QStringList{"Grille"});
}

TEST_F(UserActionTest, AClickOnAHeadingClicksAndLeavesTheCurrentCell) {
  ui().Grille.SetCols(4);
  ui().Grille.UserClick(3, 2);
  ui().Grille.UserClick(0, 1);  // the fixed row
  EXPECT_EQ(ui().Grille.Row, 3);
  EXPECT_EQ(ui().Grille.Col, 2);
  ui().Grille.UserClick(2, 0);  // the fixed column
  EXPECT_EQ(ui().Grille.Row, 3);
  EXPECT_EQ(ui().Grille.Col, 2);
  ui().Grille.UserClick(0, 0);  // the corner
  EXPECT_EQ(ui().Grille.Row, 3);
  EXPECT_EQ(ui().Grille.Col, 2);
  EXPECT_EQ(panel.clicks, (QStringList{"Grille", "Grille", "Grille", "Grille"}));
}

TEST_F(UserActionTest, WithoutFixedColumnsTheFirstColumnIsACell) {
  ui().Grille.FixedCols = 0;
  ui().Grille.UserClick(2, 0);
  EXPECT_EQ(ui().Grille.Row, 2);
  EXPECT_EQ(ui().Grille.Col, 0);
}

TEST_F(UserActionTest, ADayPickedBecomesTheValueThenClicks) {
  ui().Calendar1.UserPick(QDate(2024, 3, 4));
  EXPECT_EQ(ui().Calendar1.Value(), QDate(2024, 3, 4));
  EXPECT_EQ(panel.clicks, QStringList{"Calendar1"});
}

}  // namespace
}  // namespace kuvo::test
