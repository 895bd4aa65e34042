#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>

#include "GuiSupport.h"
#include "core/MDIKuvo.h"
#include "core/Texts.h"
#include "draws/TirSais.h"
#include "draws/TirSup.h"
#include "gui/FormView.h"
#include "proposals/AleaOrdi.h"

namespace kuvo::testing {
namespace {

// A user with a keyboard only, on the entry of a draw.
class KeyboardTest : public ::testing::Test {
 protected:
  void SetUp() override {
    folder.AddDraw(QStringLiteral("2024-03-04"), {23, 7, 41, 2, 36}, 5);
    run = std::make_unique<RunningProgram>(folder.Path());
    run->program.Start();
    ASSERT_TRUE(run->platform.fatals.isEmpty());
    run->platform.Run([this] { run->program.Win<MDIKuvo>().M_GestionSaisie_Click(); });
    view = dynamic_cast<FormView*>(run->platform.ViewOf(w()));
    ASSERT_NE(view, nullptr);
    QApplication::setActiveWindow(view->window());
    QCoreApplication::processEvents();
  }
  TirSais& w() { return run->program.Win<TirSais>(); }
  QWidget* WidgetOf(const Control& c) { return view->WidgetOf(c); }
  // The keys of a keypad, key k at k - 1.
  QList<QToolButton*> Keys(const Toolbar& bar) {
    return WidgetOf(bar)->findChildren<QToolButton*>(Qt::FindDirectChildrenOnly);
  }
  // A key pressed and let go on the widget with the focus.
  void Type(int key, Qt::KeyboardModifiers mods = Qt::NoModifier) {
    QWidget* target = QApplication::focusWidget();
    ASSERT_NE(target, nullptr) << "no widget has the focus";
    const QString text = key == Qt::Key_Space ? QStringLiteral(" ") : QString();
    QKeyEvent press(QEvent::KeyPress, key, mods, text);
    QCoreApplication::sendEvent(target, &press);
    if (QWidget* now = QApplication::focusWidget(); now == target) {
      QKeyEvent release(QEvent::KeyRelease, key, mods, text);
      QCoreApplication::sendEvent(target, &release);
    }
  }
  void Type(std::initializer_list<int> keys) {
    for (int key : keys) Type(key);
  }
  // The control whose widget holds the focus.
  QWidget* Focused() {
    QWidget* f = QApplication::focusWidget();
    // The calendar's days take its focus.
    if (f && qobject_cast<QCalendarWidget*>(f->parentWidget())) return f->parentWidget();
    return f;
  }
  QString Slot(int k) { return w().ui().Label12(k).Caption; }
  QAccessibleInterface* Access(QWidget* widget) {
    return QAccessible::queryAccessibleInterface(widget);
  }

  AppFolder folder;
  std::unique_ptr<RunningProgram> run;
  FormView* view = nullptr;
};

TEST_F(KeyboardTest, TabReachesEachKeypadOnceInTheWindowsOrder) {
  TirSaisUi& ui = w().ui();
  // The window opens with the keyboard on its first control that takes it:
  // "Mise à Jour" is disabled, and Tab passes it by.
  ASSERT_EQ(Focused(), WidgetOf(ui.EffaceNumeros));
  const std::vector<QWidget*> chain = {WidgetOf(ui.Quitter), WidgetOf(ui.Calendar1),
                                       WidgetOf(ui.Toolbar1), WidgetOf(ui.Toolbar2),
                                       WidgetOf(ui.EffaceNumeros)};
  for (QWidget* next : chain) {
    Type(Qt::Key_Tab);
    EXPECT_EQ(Focused(), next);
  }
  Type(Qt::Key_Backtab);
  EXPECT_EQ(Focused(), WidgetOf(ui.Toolbar2));
  Type(Qt::Key_Backtab);
  EXPECT_EQ(Focused(), WidgetOf(ui.Toolbar1));
}

TEST_F(KeyboardTest, ADrawKeyedWithoutTheMouseIsWritten) {
  TirSaisUi& ui = w().ui();
  WidgetOf(ui.Toolbar1)->setFocus();
  ASSERT_EQ(Focused(), WidgetOf(ui.Toolbar1));
  const QList<QToolButton*> keys = Keys(ui.Toolbar1);
  ASSERT_EQ(keys.size(), 50);
  // The cursor starts on the first key, ringed.
  QWidget* ring = nullptr;
  for (QWidget* child : WidgetOf(ui.Toolbar1)->findChildren<QWidget*>())
    if (!qobject_cast<QToolButton*>(child)) ring = child;
  ASSERT_NE(ring, nullptr);
  EXPECT_TRUE(ring->isVisible());
  EXPECT_EQ(ring->geometry(), keys[0]->geometry());

  Type({Qt::Key_Right, Qt::Key_Right, Qt::Key_Space});  // 3
  EXPECT_EQ(ring->geometry(), keys[2]->geometry());
  Type({Qt::Key_Down, Qt::Key_Left, Qt::Key_Space});  // 12, a row below and one back
  Type({Qt::Key_End, Qt::Key_Left, Qt::Key_Return});  // 49, before the 50th key
  Type({Qt::Key_Home, Qt::Key_Down, Qt::Key_Down, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right,
        Qt::Key_Right, Qt::Key_Enter});                          // 25
  Type({Qt::Key_Up, Qt::Key_Up, Qt::Key_Right, Qt::Key_Right});  // 7
  Type(Qt::Key_Space);
  EXPECT_EQ(QStringList({Slot(0), Slot(1), Slot(2), Slot(3), Slot(4)}),
            QStringList({"3", "12", "49", "25", "7"}));
  for (int n : {3, 12, 49, 25, 7})
    EXPECT_EQ(static_cast<const Toolbar&>(ui.Toolbar1).Buttons(n).Image, n + 50) << n;
  EXPECT_TRUE(run->platform.boxes.isEmpty());

  // The chance keypad is the next stop.
  Type(Qt::Key_Tab);
  ASSERT_EQ(Focused(), WidgetOf(ui.Toolbar2));
  Type({Qt::Key_Right, Qt::Key_Right, Qt::Key_Space});
  EXPECT_EQ(Slot(5), QStringLiteral("3"));

  // Back to the calendar, a day before the one shown, Enter.
  Type(Qt::Key_Backtab);
  Type(Qt::Key_Backtab);
  ASSERT_EQ(Focused(), WidgetOf(ui.Calendar1));
  auto* calendar = qobject_cast<QCalendarWidget*>(WidgetOf(ui.Calendar1));
  const QDate shown = calendar->selectedDate();
  Type(Qt::Key_Left);
  EXPECT_EQ(ui.Calendar1.Value(), QDate()) << "the cursor moves, nothing is chosen yet";
  Type(Qt::Key_Enter);
  const QDate day = shown.addDays(-1);
  EXPECT_EQ(ui.Calendar1.Value(), day);
  EXPECT_EQ(ui.Label19.Caption, ShortDate(day));
  EXPECT_TRUE(ui.MiseJour.Enabled);

  // Shift+Tab three times: "Retour", "Effacer ces numéros", "Mise à Jour".
  Type({Qt::Key_Backtab, Qt::Key_Backtab, Qt::Key_Backtab});
  ASSERT_EQ(Focused(), WidgetOf(ui.MiseJour));
  Type(Qt::Key_Space);
  EXPECT_EQ(Slot(0), QStringLiteral("?")) << "the entry is blank again";
  EXPECT_TRUE(run->platform.fatals.isEmpty());

  auto db = Database::OpenDatabase(folder.Path() + QStringLiteral("/Kuvo.Mdb"));
  auto rs = db->OpenRecordset(
      QStringLiteral("SELECT numero1, numero2, numero3, numero4, numero5, NumeroChance, "
                     "DateTirage FROM Sorties"));
  QStringList draws;
  for (; !rs->Eof(); rs->MoveNext()) {
    QStringList draw;
    for (int i = 0; i < 6; ++i) draw << rs->Fields(i).GetValue().toString();
    draws << draw.join(QLatin1Char(' ')) + QLatin1Char(' ') +
                 rs->Fields(6).GetValue().toDate().toString(Qt::ISODate);
  }
  EXPECT_EQ(draws, QStringList({QStringLiteral("23 7 41 2 36 5 2024-03-04"),
                                QStringLiteral("3 12 49 25 7 3 ") + day.toString(Qt::ISODate)}));
}

TEST_F(KeyboardTest, TheCursorPassesOverDisabledAndHiddenKeys) {
  TirSaisUi& ui = w().ui();
  ui.Toolbar1.Buttons(2).Enabled = false;
  ui.Toolbar1.Buttons(3).Visible = false;
  ui.Toolbar1.Buttons(14).Enabled = false;
  run->platform.SyncAll();
  WidgetOf(ui.Toolbar1)->setFocus();
  Type({Qt::Key_Right, Qt::Key_Space});
  EXPECT_EQ(Slot(0), QStringLiteral("4")) << "from 1 over 2 and 3 to 4";
  Type({Qt::Key_Down, Qt::Key_Space});
  EXPECT_EQ(Slot(1), QStringLiteral("24")) << "from 4 down over 14 to 24";
  Type({Qt::Key_Home, Qt::Key_Up, Qt::Key_Left, Qt::Key_Space});
  EXPECT_EQ(Slot(2), QStringLiteral("1")) << "nothing above nor before the first key";
  // A key that becomes unusable under the cursor hands it to the next one:
  // Space on 4 unmarks it.
  ui.Toolbar1.Buttons(1).Enabled = false;
  run->platform.SyncAll();
  Type(Qt::Key_Space);
  EXPECT_EQ(Slot(0), QStringLiteral("?"));
  EXPECT_EQ(static_cast<const Toolbar&>(ui.Toolbar1).Buttons(4).Image, 4);
}

TEST_F(KeyboardTest, KeysAreNamedAndCheckedWhileMarked) {
  TirSaisUi& ui = w().ui();
  const QList<QToolButton*> numbers = Keys(ui.Toolbar1);
  const QList<QToolButton*> chances = Keys(ui.Toolbar2);
  ASSERT_EQ(numbers.size(), 50);
  ASSERT_EQ(chances.size(), 10);
  QAccessibleInterface* twelve = Access(numbers[11]);
  ASSERT_NE(twelve, nullptr);
  EXPECT_EQ(twelve->text(QAccessible::Name), QStringLiteral("Numéro 12"));
  // A check box, whose checked state the desktop's bridge passes on to a reader.
  EXPECT_EQ(twelve->role(), QAccessible::CheckBox);
  EXPECT_TRUE(twelve->state().checkable);
  EXPECT_FALSE(twelve->state().checked);
  QAccessibleInterface* about = Access(numbers[49]);
  EXPECT_EQ(about->text(QAccessible::Name), QStringLiteral("A Propos de Kuvo"));
  EXPECT_FALSE(about->state().checkable) << "the 50th key opens a window, it marks nothing";
  EXPECT_EQ(about->role(), QAccessible::Button);
  QAccessibleInterface* three = Access(chances[2]);
  EXPECT_EQ(three->text(QAccessible::Name), QStringLiteral("Chance 3"));
  EXPECT_TRUE(three->state().checkable);
  EXPECT_EQ(three->role(), QAccessible::CheckBox);

  // A pick by the screen reader's press action, as by a click.
  ASSERT_NE(twelve->actionInterface(), nullptr);
  EXPECT_TRUE(
      twelve->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
  twelve->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(Slot(0), QStringLiteral("12"));
  EXPECT_TRUE(twelve->state().checked);
  chances[2]->click();
  EXPECT_TRUE(three->state().checked);
  EXPECT_FALSE(Access(chances[3])->state().checked);
  // Unmarked again.
  numbers[11]->click();
  EXPECT_FALSE(twelve->state().checked);

  // The keypads, and the key under the cursor has the focus.
  QAccessibleInterface* pad = Access(WidgetOf(ui.Toolbar1));
  EXPECT_EQ(pad->role(), QAccessible::Grouping);
  EXPECT_EQ(pad->text(QAccessible::Name), QStringLiteral("Numéros"));
  EXPECT_EQ(Access(WidgetOf(ui.Toolbar2))->text(QAccessible::Name),
            QStringLiteral("Numéros de la chance"));
  WidgetOf(ui.Toolbar1)->setFocus();
  Type({Qt::Key_Home, Qt::Key_Down, Qt::Key_Right});
  EXPECT_EQ(pad->focusChild(), Access(numbers[11]));
  EXPECT_TRUE(Access(numbers[11])->state().focused);
  EXPECT_FALSE(Access(numbers[0])->state().focused);
}

TEST_F(KeyboardTest, LabelsButtonsAndTheWindowAreNamedByTheirTexts) {
  TirSaisUi& ui = w().ui();
  EXPECT_EQ(Access(WidgetOf(ui.Label15))->text(QAccessible::Name),
            QStringLiteral("Numéros de 1 à 5"));
  EXPECT_EQ(Access(WidgetOf(ui.Label15))->role(), QAccessible::StaticText);
  QAccessibleInterface* update = Access(WidgetOf(ui.MiseJour));
  EXPECT_EQ(update->text(QAccessible::Name), QStringLiteral("Mise à Jour"));
  EXPECT_EQ(update->role(), QAccessible::Button);
  EXPECT_TRUE(update->state().disabled);
  EXPECT_EQ(Access(view)->text(QAccessible::Name), QStringLiteral("Saisie d'un Tirage"));
  EXPECT_EQ(Access(view->Frame())->text(QAccessible::Name), QStringLiteral("Saisie d'un Tirage"));
}

// The deletion's grid, from the keyboard: the arrows move its current cell,
// Enter clicks it.
TEST(GridKeyboard, EnterClicksTheCellTheArrowsReached) {
  AppFolder folder;
  folder.AddDraw(QStringLiteral("2024-03-04"), {1, 2, 3, 4, 5}, 1);
  folder.AddDraw(QStringLiteral("2024-03-04"), {6, 7, 8, 9, 10}, 2);
  RunningProgram run(folder.Path());
  run.program.Start();
  run.platform.Run([&run] { run.program.Win<MDIKuvo>().M_GestionSupprimer_Click(); });
  TirSup& w = run.program.Win<TirSup>();
  auto* view = dynamic_cast<FormView*>(run.platform.ViewOf(w));
  ASSERT_NE(view, nullptr);
  QApplication::setActiveWindow(view->window());
  // The date chosen in the list fills the grid with its two draws.
  run.platform.Run([&w] { w.ui().Combo1.UserPick(0); });
  Grid& grid = w.ui().Grille;
  ASSERT_EQ(grid.Rows(), 3);
  auto* table = qobject_cast<QTableView*>(view->WidgetOf(grid));
  ASSERT_NE(table, nullptr);
  table->setFocus();
  ASSERT_EQ(QApplication::focusWidget(), table);
  // The table reads as it shows.
  QAccessibleInterface* access = QAccessible::queryAccessibleInterface(table);
  ASSERT_NE(access->tableInterface(), nullptr);
  EXPECT_EQ(access->tableInterface()->rowCount(), 2);
  EXPECT_EQ(access->tableInterface()->cellAt(1, 1)->text(QAccessible::Name),
            table->model()->index(1, 1).data().toString());
  // Filling the grid left its current cell on the last row.
  ASSERT_EQ(grid.Row, 2);
  ASSERT_EQ(table->currentIndex().row(), 1);
  auto type = [table](int key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(table, &press);
  };
  type(Qt::Key_Up);
  EXPECT_EQ(table->currentIndex().row(), 0);
  EXPECT_EQ(grid.Row, 2) << "the arrows move the view's cell, not the grid's";
  EXPECT_FALSE(w.ui().MiseJour.Enabled);
  type(Qt::Key_Return);
  EXPECT_EQ(grid.Row, 1);
  EXPECT_TRUE(w.ui().MiseJour.Enabled) << "as after a click on the first draw";
}

}  // namespace
}  // namespace kuvo::testing

namespace kuvo::testing {
namespace {

// The zones of the random proposals are labels that answer the mouse: Tab
// reaches them, Space or a screen reader's press clicks them.
TEST(ClickableLabels, TheZonesAreChosenFromTheKeyboard) {
  AppFolder folder;
  folder.AddDraw(QStringLiteral("2024-03-04"), {1, 2, 3, 4, 5}, 1);
  RunningProgram run(folder.Path());
  run.program.Start();
  run.platform.Run([&run] { run.program.Win<MDIKuvo>().M_AleatoireGeneres_Click(); });
  AleaOrdi& w = run.program.Win<AleaOrdi>();
  auto* view = dynamic_cast<FormView*>(run.platform.ViewOf(w));
  ASSERT_NE(view, nullptr);
  QApplication::setActiveWindow(view->window());
  run.platform.Run([&w] { w.ui().Zone.UserClick(); });
  AleaOrdiUi& ui = w.ui();
  QWidget* middle = view->WidgetOf(ui.Groupe32);
  ASSERT_TRUE(middle->isVisible());
  EXPECT_EQ(middle->focusPolicy(), Qt::TabFocus);
  EXPECT_EQ(view->WidgetOf(ui.Label2)->focusPolicy(), Qt::NoFocus) << "a plain label is no stop";
  view->WidgetOf(ui.Groupe16)->setFocus();
  QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
  QCoreApplication::sendEvent(QApplication::focusWidget(), &tab);
  ASSERT_EQ(QApplication::focusWidget(), middle);
  QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "));
  QCoreApplication::sendEvent(middle, &space);
  EXPECT_EQ(ui.Groupe32.BackColor, AleaOrdi::kZoneChoisie);
  EXPECT_EQ(ui.Groupe16.BackColor, AleaOrdi::kZoneAutre);

  QAccessibleInterface* last = QAccessible::queryAccessibleInterface(view->WidgetOf(ui.Groupe49));
  EXPECT_EQ(last->role(), QAccessible::Button);
  EXPECT_EQ(last->text(QAccessible::Name), ui.Groupe49.Caption.simplified());
  ASSERT_NE(last->actionInterface(), nullptr);
  last->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(ui.Groupe49.BackColor, AleaOrdi::kZoneChoisie);
  EXPECT_EQ(ui.Groupe32.BackColor, AleaOrdi::kZoneAutre);
}

}  // namespace
}  // namespace kuvo::testing
