// Real mouse presses on a list box: the row under the press is picked first,
// then the list's MouseDown runs; the keyboard moves the pick without it.
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QToolButton>

#include "GuiSupport.h"
#include "core/Form.h"
#include "core/MDIKuvo.h"
#include "gui/FormView.h"
#include "statistics/TirGrou.h"

namespace kuvo::testing {
namespace {

class Presses;

struct PressesUi {
  explicit PressesUi(Presses& f);
  ListBox List1;
};

class Presses : public FormOf<Presses, PressesUi> {
 public:
  static constexpr const char* kName = "Presses";
  explicit Presses(Program& p) : FormOf(p, kName) {}
  QStringList events;
};

PressesUi::PressesUi(Presses& f) : List1(f, "List1") {
  f.Caption = QStringLiteral("Essai");
  f.Width = 6000;
  f.Height = 4000;
  List1.Move(120, 120, 3000, 2400);
  for (const char* item : {"un", "deux", "trois"}) List1.AddItem(QLatin1String(item));
  List1.Click = [&f, this] { f.events << QStringLiteral("Click:%1").arg(List1.ListIndex()); };
  List1.MouseDown = [&f, this](Int16 button, Int16, double, double) {
    f.events << QStringLiteral("MouseDown:%1:%2").arg(button).arg(List1.ListIndex());
  };
  List1.MouseUp = [&f](Int16 button, Int16, double, double) {
    f.events << QStringLiteral("MouseUp:%1").arg(button);
  };
}

void Mouse(QWidget* w, QEvent::Type type, QPoint at, Qt::MouseButton button = Qt::LeftButton) {
  QMouseEvent e(type, QPointF(at), w->mapToGlobal(QPointF(at)), button,
                type == QEvent::MouseButtonRelease ? Qt::NoButton : button, Qt::NoModifier);
  QCoreApplication::sendEvent(w, &e);
}

// Presses and releases the left button on row `row` of the list.
void ClickRow(QListWidget* list, int row, Qt::MouseButton button = Qt::LeftButton) {
  const QPoint at = list->visualItemRect(list->item(row)).center();
  Mouse(list->viewport(), QEvent::MouseButtonPress, at, button);
  Mouse(list->viewport(), QEvent::MouseButtonRelease, at, button);
}

void PressKey(QWidget* w, int key) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
  QCoreApplication::sendEvent(w, &press);
  QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
  QCoreApplication::sendEvent(w, &release);
}

class ListPressTest : public ::testing::Test {
 protected:
  void SetUp() override {
    folder.AddDraw(QStringLiteral("2024-01-06"), {3, 12, 45, 46, 49}, 7);
    folder.AddDraw(QStringLiteral("2024-01-10"), {7, 12, 20, 31, 44}, 3);
    folder.AddDraw(QStringLiteral("2024-01-13"), {5, 7, 23, 30, 41}, 7);
    run = std::make_unique<RunningProgram>(folder.Path());
    run->program.Start();
    ASSERT_TRUE(run->platform.fatals.isEmpty());
  }
  template <class W>
  W* Widget(Form& form, const Control& c) {
    auto* view = dynamic_cast<FormView*>(run->platform.ViewOf(form));
    return view ? qobject_cast<W*>(view->WidgetOf(c)) : nullptr;
  }
  AppFolder folder;
  std::unique_ptr<RunningProgram> run;
};

TEST_F(ListPressTest, APressPicksTheRowThenRaisesMouseDown) {
  Presses w(run->program);
  run->platform.Run([&] { w.Show(); });
  auto* list = Widget<QListWidget>(w, w.ui().List1);
  ASSERT_NE(list, nullptr);
  ClickRow(list, 1);
  EXPECT_EQ(w.ui().List1.ListIndex(), 1);
  EXPECT_EQ(list->currentRow(), 1);
  EXPECT_EQ(w.events, (QStringList{"Click:1", "MouseDown:1:1", "MouseUp:1"}));
  // The right button presses as well; the row is already picked.
  w.events.clear();
  ClickRow(list, 1, Qt::RightButton);
  EXPECT_EQ(w.events.mid(0, 2), (QStringList{"MouseDown:2:1", "MouseUp:2"}));
  // The keyboard moves the pick without a mouse event.
  w.events.clear();
  PressKey(list, Qt::Key_Down);
  EXPECT_EQ(w.ui().List1.ListIndex(), 2);
  EXPECT_EQ(w.events, QStringList{"Click:2"});
  // Below the rows: MouseDown alone, the pick kept.
  w.events.clear();
  const QPoint below(5, list->viewport()->height() - 3);
  ASSERT_FALSE(list->indexAt(below).isValid());
  Mouse(list->viewport(), QEvent::MouseButtonPress, below);
  EXPECT_EQ(w.ui().List1.ListIndex(), 2);
  EXPECT_EQ(w.events, QStringList{"MouseDown:1:2"});
  Mouse(list->viewport(), QEvent::MouseButtonRelease, below);
  run->platform.Run([&] { w.Unload(); });
}

TEST_F(ListPressTest, APressOnADateShowsItsDraw) {
  run->platform.Run([&] { run->program.Win<MDIKuvo>().M_StatGroupes_Click(); });
  TirGrou& w = run->program.Win<TirGrou>();
  ASSERT_TRUE(w.Loaded());
  auto* pad = Widget<QWidget>(w, w.ui().Toolbar1);
  ASSERT_NE(pad, nullptr);
  const QList<QToolButton*> keys = pad->findChildren<QToolButton*>(Qt::FindDirectChildrenOnly);
  ASSERT_EQ(keys.size(), 50);
  keys[6]->click();
  ASSERT_EQ(w.ui().Label3(0).Caption, QStringLiteral("7"));
  Widget<QPushButton>(w, w.ui().Recherche)->click();
  auto* list = Widget<QListWidget>(w, w.ui().Liste);
  ASSERT_NE(list, nullptr);
  ASSERT_TRUE(list->isVisible());
  ASSERT_EQ(list->count(), 3);
  EXPECT_EQ(list->item(2)->text(), QStringLiteral("13 janvier 2024"));

  ClickRow(list, 2);
  EXPECT_EQ(w.ui().Liste.ListIndex(), 2);
  EXPECT_EQ(w.ui().Label13.Caption, QStringLiteral(" 5, 7, 23, 30, 41, 7"));
  EXPECT_EQ(Widget<QLabel>(w, w.ui().Label13)->text(), QStringLiteral(" 5, 7, 23, 30, 41, 7"));
  PressKey(list, Qt::Key_Up);
  EXPECT_EQ(w.ui().Liste.ListIndex(), 1);
  EXPECT_EQ(w.ui().Label13.Caption, QStringLiteral(" 5, 7, 23, 30, 41, 7"));
  ClickRow(list, 0);
  EXPECT_EQ(w.ui().Label13.Caption, QStringLiteral(" 3, 12, 45, 46, 49, 7"));
  EXPECT_TRUE(run->platform.fatals.isEmpty());
}

}  // namespace
}  // namespace kuvo::testing
