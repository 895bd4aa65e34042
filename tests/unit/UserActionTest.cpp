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
  ListBox List1;
  TextBox Text1;
  CommandButton Command1;
  Toolbar Keys;
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
      Calendar1(f, "Calendar1"),
      List1(f, "List1"),
      Text1(f, "Text1"),
      Command1(f, "Command1"),
      Keys(f, "Keys") {
  Combo1.AddItem(QStringLiteral("Numeros"));
  Combo1.AddItem(QStringLiteral("Sorties"));
  Option3.Container = &Frame1;
  Option3.Value = true;
  Grille.SetRows(5);
  for (Control* c : std::initializer_list<Control*>{&Combo1, &Option1, &Option2, &Option3, &Check1,
                                                    &Grille, &Calendar1, &List1})
    c->Click = [&f, c] { f.clicks << c->FullName(); };
  for (const char* item : {"a", "b", "c"}) List1.AddItem(QLatin1String(item));
  Command1.Click = [&f] { f.clicks << QStringLiteral("Command1"); };
  Text1.Change = [&f, this] { f.clicks << QStringLiteral("Text1_Change:") + Text1.Text; };
  Combo1.Change = [&f, this] { f.clicks << QStringLiteral("Combo1_Change:") + Combo1.Text; };
  Keys.MakeKeypad(3);
  Keys.ButtonClick = [&f](ToolbarButton& b) { f.clicks << b.Key; };
  List1.MouseDown = [&f, this](Int16 button, Int16, double, double) {
    f.clicks << QStringLiteral("List1_MouseDown:%1:%2").arg(button).arg(List1.ListIndex());
  };
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

TEST_F(UserActionTest, APressOnAnItemPicksItThenRaisesMouseDown) {
  ui().List1.UserPress(1, 1, 0, 0, 0);
  EXPECT_EQ(ui().List1.ListIndex(), 1);
  EXPECT_EQ(ui().List1.Text, QStringLiteral("b"));
  EXPECT_EQ(panel.clicks, (QStringList{"List1", "List1_MouseDown:1:1"}));
  // The same item again: no change of pick, so no Click.
  ui().List1.UserPress(1, 2, 0, 0, 0);
  EXPECT_EQ(panel.clicks, (QStringList{"List1", "List1_MouseDown:1:1", "List1_MouseDown:2:1"}));
}

TEST_F(UserActionTest, APressBelowTheItemsKeepsThePick) {
  ui().List1.UserPick(2);
  panel.clicks.clear();
  ui().List1.UserPress(-1, 1, 0, 0, 0);
  EXPECT_EQ(ui().List1.ListIndex(), 2);
  EXPECT_EQ(panel.clicks, QStringList{"List1_MouseDown:1:2"});
}

TEST_F(UserActionTest, APressWhoseClickUnloadsTheWindowRaisesNoMouseDown) {
  ui().List1.Click = [this] { panel.Unload(); };
  bool pressed = false;
  ui().List1.MouseDown = [&pressed](Int16, Int16, double, double) { pressed = true; };
  ui().List1.UserPress(0, 1, 0, 0, 0);
  EXPECT_FALSE(panel.Loaded());
  EXPECT_FALSE(pressed);
}

TEST_F(UserActionTest, AButtonClickRaisesClick) {
  ui().Command1.UserClick();
  EXPECT_EQ(panel.clicks, QStringList{"Command1"});
}

TEST_F(UserActionTest, TypingSetsTheTextThenRaisesChange) {
  ui().Text1.UserType(QStringLiteral("12"));
  ui().Combo1.UserType(QStringLiteral("Num"));
  EXPECT_EQ(ui().Text1.Text, QStringLiteral("12"));
  EXPECT_EQ(panel.clicks, (QStringList{"Text1_Change:12", "Combo1_Change:Num"}));
}

TEST_F(UserActionTest, AKeyGoesToKeyPressWhichMayChangeOrTakeIt) {
  EXPECT_EQ(ui().Text1.UserKey(65), 65);  // no handler: the key stays
  ui().Text1.KeyPress = [](Int16& key) { key = key == 97 ? 65 : key == 120 ? 0 : key; };
  EXPECT_EQ(ui().Text1.UserKey(97), 65);
  EXPECT_EQ(ui().Text1.UserKey(120), 0);
}

TEST_F(UserActionTest, AKeyAtTheEndOfATextBoxTypesWhatKeyPressLeft) {
  ui().Text1.KeyPress = [](Int16& key) {
    if (key == 120) key = 0;
  };
  ui().Text1.UserKeyAtEnd(49);
  ui().Text1.UserKeyAtEnd(120);  // taken away
  ui().Text1.UserKeyAtEnd(50);
  ui().Text1.UserKeyAtEnd(8);
  EXPECT_EQ(ui().Text1.Text, QStringLiteral("1"));
  ui().Text1.UserKeyAtEnd(8);
  ui().Text1.UserKeyAtEnd(8);   // nothing left to take: no Change
  ui().Text1.UserKeyAtEnd(13);  // no character
  EXPECT_EQ(panel.clicks,
            (QStringList{"Text1_Change:1", "Text1_Change:12", "Text1_Change:1", "Text1_Change:"}));
  ui().Text1.Locked = true;
  ui().Text1.UserKeyAtEnd(49);
  EXPECT_EQ(ui().Text1.Text, QString());
}

TEST_F(UserActionTest, AKeypadClickRaisesButtonClickUnlessTheKeyIsDisabled) {
  ui().Keys.UserClick(2);
  ui().Keys.Buttons(3).Enabled = false;
  ui().Keys.UserClick(3);
  ui().Keys.UserClick(9);  // no such key
  EXPECT_EQ(panel.clicks, QStringList{"N2"});
}

TEST_F(UserActionTest, FocusByTheUserMakesTheActiveControl) {
  ui().Text1.UserFocus();
  EXPECT_EQ(panel.ActiveControl, &ui().Text1);
}

TEST_F(UserActionTest, ClosingAChildWindowByItsFrameUnloadsItAndNothingElse) {
  ui();
  panel.UserClose();
  EXPECT_FALSE(panel.Loaded());
  EXPECT_FALSE(app.program().Ended());
}

TEST(UserCloseTest, ClosingTheMainWindowByItsFrameQuitsTheProgram) {
  TestApp app;
  app.Run(
      QStringLiteral("store new\nsql \"INSERT INTO Sorties VALUES ('2024-03-02', 1, 2, 3, "
                     "4, 5, 6)\"\nstart\nmenu M_StatMesNumeros\n"));
  Form& main = app.program().MainForm();
  EXPECT_EQ(main.Name(), QStringLiteral("MDIKuvo"));
  const qsizetype before = app.runner.Output().size();
  EXPECT_THROW(app.program().RunEvent([&main] { main.UserClose(); }), ProgramEnd);
  EXPECT_EQ(app.runner.Output().mid(before), QStringLiteral("UNLOAD NumPref\nUNLOAD MDIKuvo\n"));
  EXPECT_TRUE(app.program().Ended());
}

}  // namespace
}  // namespace kuvo::test
