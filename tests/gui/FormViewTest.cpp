#include <gtest/gtest.h>

#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QHeaderView>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTableView>
#include <QTimer>
#include <QToolButton>
#include <cstdio>

#include "GuiSupport.h"
#include "core/Form.h"
#include "gui/FormView.h"
#include "gui/PictureView.h"

namespace kuvo::testing {
namespace {

class Sample;

// A window with one control of each kind, its events written down.
struct SampleUi {
  explicit SampleUi(Sample& f);
  Label Label1;
  TextBox Text1;
  Frame Frame1;
  OptionButton Option1, Option2;
  OptionButton Option3;
  CheckBox Check1;
  ComboBox Combo1;
  ListBox List1;
  Grid Grille;
  Toolbar Toolbar1;
  Calendar Calendar1;
  PictureBox Picture1;
  Image Image1;
  Line Line1;
  Timer Timer1;
  CommandButton Command1;
  ProgressBar Gauge1;
};

class Sample : public FormOf<Sample, SampleUi> {
 public:
  static constexpr const char* kName = "Sample";
  explicit Sample(Program& p) : FormOf(p, kName) {}
  QStringList events;
  int ticks = 0;
  bool mdiChild = true;
  std::vector<QPointF> moves;
};

void Place(Control& c, int left, int top, int width, int height) {
  c.Left = left;
  c.Top = top;
  c.Width = width;
  c.Height = height;
}

SampleUi::SampleUi(Sample& f)
    : Label1(f, "Label1"),
      Text1(f, "Text1"),
      Frame1(f, "Frame1"),
      Option1(f, "Option1"),
      Option2(f, "Option2"),
      Option3(f, "Option3"),
      Check1(f, "Check1"),
      Combo1(f, "Combo1"),
      List1(f, "List1"),
      Grille(f, "Grille"),
      Toolbar1(f, "Toolbar1"),
      Calendar1(f, "Calendar1"),
      Picture1(f, "Picture1"),
      Image1(f, "Image1"),
      Line1(f, "Line1"),
      Timer1(f, "Timer1"),
      Command1(f, "Command1"),
      Gauge1(f, "Gauge1") {
  f.Caption = QStringLiteral("Essai");
  f.Width = 12000;
  f.Height = 9000;
  f.MDIChild = f.mdiChild;
  Label1.Caption = QStringLiteral("&Numéro");
  Place(Label1, 120, 120, 1500, 300);
  Place(Text1, 1680, 120, 1500, 300);
  Place(Frame1, 120, 600, 3000, 1200);
  Frame1.Caption = QStringLiteral("Choix");
  Option1.Container = &Frame1;
  Option2.Container = &Frame1;
  Option1.Caption = QStringLiteral("Un");
  Option2.Caption = QStringLiteral("Deux");
  Place(Option1, 120, 300, 1200, 300);
  Place(Option2, 120, 700, 1200, 300);
  Place(Option3, 3300, 600, 1200, 300);
  Option3.Caption = QStringLiteral("Trois");
  Option3.Value = true;
  Place(Check1, 3300, 1000, 1200, 300);
  Check1.Caption = QStringLiteral("Coche");
  Place(Combo1, 120, 1900, 2000, 315);
  Combo1.Style = 2;
  Combo1.AddItem(QStringLiteral("Paires"));
  Combo1.AddItem(QStringLiteral("Triplets"));
  Place(List1, 2200, 1900, 2000, 1200);
  List1.AddItem(QStringLiteral("a"));
  List1.AddItem(QStringLiteral("b"));
  List1.AddItem(QStringLiteral("c"));
  Place(Grille, 4500, 120, 5000, 3000);
  Grille.SetCols(3);
  Grille.SetFormatString(QStringLiteral("^Date|>Nombre|<Texte"));
  Grille.SetColWidth(0, 1500);
  Place(Toolbar1, 120, 3300, 6000, 3000);
  Toolbar1.MakeKeypad(50);
  Place(Calendar1, 6300, 3300, 4000, 3000);
  Place(Picture1, 120, 6500, 3000, 1500);
  Picture1.BackColor = Colours::White;
  Place(Image1, 3300, 6500, 480, 480);
  Image1.Picture = 1;
  Line1.X1 = 3300;
  Line1.Y1 = 7200;
  Line1.X2 = 6000;
  Line1.Y2 = 7200;
  Place(Command1, 6300, 6500, 1500, 400);
  Command1.Caption = QStringLiteral("&Valider");
  Place(Gauge1, 6300, 7000, 3000, 300);
  Timer1.Enabled = false;

  Command1.Click = [&f] { f.events << QStringLiteral("Command1_Click"); };
  Text1.Change = [&f, this] { f.events << QStringLiteral("Text1_Change:") + Text1.Text; };
  Text1.KeyPress = [&f](Int16& key) {
    f.events << QStringLiteral("Text1_KeyPress:%1").arg(key);
    if (key == 'x') key = 0;                  // refused
    if (key >= 'a' && key <= 'z') key -= 32;  // typed as a capital
  };
  Option1.Click = [&f] { f.events << QStringLiteral("Option1_Click"); };
  Option2.Click = [&f] { f.events << QStringLiteral("Option2_Click"); };
  Option3.MouseMove = [&f](Int16 button, Int16, double, double) {
    f.events << QStringLiteral("Option3_MouseMove:%1").arg(button);
  };
  Check1.Click = [&f, this] { f.events << QStringLiteral("Check1_Click:%1").arg(Check1.Value); };
  Combo1.Click = [&f, this] { f.events << QStringLiteral("Combo1_Click:") + Combo1.Text; };
  List1.Click = [&f, this] { f.events << QStringLiteral("List1_Click:%1").arg(List1.ListIndex()); };
  Grille.Click = [&f, this] { f.events << QStringLiteral("Grille_Click:%1").arg(Grille.Row); };
  Toolbar1.ButtonClick = [&f](ToolbarButton& b) {
    f.events << QStringLiteral("Toolbar1_ButtonClick:") + b.Key;
    b.Image = b.Image > 50 ? b.Image - 50 : b.Image + 50;
  };
  Calendar1.Click = [&f, this] {
    f.events << QStringLiteral("Calendar1_Click:") + Calendar1.Value().toString(Qt::ISODate);
  };
  Picture1.MouseMove = [&f](Int16, Int16, double x, double y) { f.moves.emplace_back(x, y); };
  Timer1.Tick = [&f] { ++f.ticks; };
}

void PressKey(QWidget* w, int key, const QString& text) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
  QCoreApplication::sendEvent(w, &press);
  QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text);
  QCoreApplication::sendEvent(w, &release);
}

class FormViewTest : public ::testing::Test {
 protected:
  void SetUp() override {
    folder.AddDraw(QStringLiteral("2024-03-04"), {23, 7, 41, 2, 36}, 4);
    run = std::make_unique<RunningProgram>(folder.Path());
    run->program.Start();
    ASSERT_TRUE(run->platform.fatals.isEmpty());
    sample = std::make_unique<Sample>(run->program);
  }
  void TearDown() override {
    if (sample && sample->Loaded()) sample->Unload();
    sample.reset();
    run.reset();
  }
  // Shows the window and returns its view.
  FormView* Show(bool mdiChild = true) {
    sample->mdiChild = mdiChild;
    run->platform.Run([this] { sample->Show(); });
    return dynamic_cast<FormView*>(run->platform.ViewOf(*sample));
  }
  template <class W>
  W* Widget(FormView* view, const Control& c) {
    return qobject_cast<W*>(view->WidgetOf(c));
  }
  AppFolder folder;
  std::unique_ptr<RunningProgram> run;
  std::unique_ptr<Sample> sample;
};

TEST_F(FormViewTest, EveryControlGetsItsWidgetWherePlaced) {
  FormView* view = Show();
  ASSERT_NE(view, nullptr);
  SampleUi& ui = sample->ui();
  auto* label = Widget<QLabel>(view, ui.Label1);
  ASSERT_NE(label, nullptr);
  EXPECT_EQ(label->geometry(), QRect(8, 8, 100, 20));
  EXPECT_EQ(label->text(), QStringLiteral("&Numéro"));
  // The access key of a label goes to the control after it.
  EXPECT_EQ(label->buddy(), view->WidgetOf(ui.Text1));
  EXPECT_NE(Widget<QLineEdit>(view, ui.Text1), nullptr);
  auto* frame = Widget<QGroupBox>(view, ui.Frame1);
  ASSERT_NE(frame, nullptr);
  EXPECT_EQ(frame->title(), QStringLiteral("Choix"));
  // Options of the frame lie inside it, at their place in it.
  auto* one = Widget<QRadioButton>(view, ui.Option1);
  ASSERT_NE(one, nullptr);
  EXPECT_EQ(one->parentWidget(), frame);
  EXPECT_EQ(one->pos(), QPoint(8, 20));
  EXPECT_NE(Widget<QCheckBox>(view, ui.Check1), nullptr);
  EXPECT_NE(Widget<QComboBox>(view, ui.Combo1), nullptr);
  EXPECT_NE(Widget<QListWidget>(view, ui.List1), nullptr);
  EXPECT_NE(Widget<QTableView>(view, ui.Grille), nullptr);
  EXPECT_NE(Widget<QCalendarWidget>(view, ui.Calendar1), nullptr);
  EXPECT_NE(Widget<QPushButton>(view, ui.Command1), nullptr);
  EXPECT_NE(Widget<QProgressBar>(view, ui.Gauge1), nullptr);
  EXPECT_NE(view->WidgetOf(ui.Picture1), nullptr);
  EXPECT_NE(view->WidgetOf(ui.Image1), nullptr);
  EXPECT_EQ(view->WidgetOf(ui.Line1)->geometry().width(), (6000 - 3300) / 15 + 1);
  EXPECT_EQ(view->WidgetOf(ui.Timer1), nullptr);

  // An MDI child stands in the main window's work area, titled by its caption.
  QMdiArea* area = run->platform.WorkArea();
  ASSERT_NE(area, nullptr);
  ASSERT_EQ(area->subWindowList().size(), 1);
  EXPECT_EQ(area->subWindowList()[0]->widget(), view);
  EXPECT_EQ(area->subWindowList()[0]->windowTitle(), QStringLiteral("Essai"));
  EXPECT_EQ(area->subWindowList()[0]->size(), QSize(800, 600));
}

TEST_F(FormViewTest, StateChangesReachTheWidgetsWithoutRaisingEvents) {
  FormView* view = Show();
  SampleUi& ui = sample->ui();
  ui.Label1.Caption = QStringLiteral("Tirage du jour");
  ui.Label1.BackColor = Colours::Yellow;
  ui.Text1.Text = QStringLiteral("12");
  ui.Option1.Value = true;
  ui.Check1.Value = 1;
  ui.Combo1.SetListIndex(1);
  ui.List1.AddItem(QStringLiteral("d"));
  ui.Gauge1.SetValue(25);
  ui.Frame1.Enabled = false;
  ui.Command1.Visible = false;
  sample->Caption = QStringLiteral("Nouveau titre");
  sample->events.clear();
  run->platform.SyncAll();

  EXPECT_EQ(Widget<QLabel>(view, ui.Label1)->text(), QStringLiteral("Tirage du jour"));
  EXPECT_EQ(Widget<QLabel>(view, ui.Label1)->palette().color(QPalette::Window),
            QColor(255, 255, 0));
  EXPECT_EQ(Widget<QLineEdit>(view, ui.Text1)->text(), QStringLiteral("12"));
  EXPECT_TRUE(Widget<QRadioButton>(view, ui.Option1)->isChecked());
  EXPECT_TRUE(Widget<QCheckBox>(view, ui.Check1)->isChecked());
  EXPECT_EQ(Widget<QComboBox>(view, ui.Combo1)->currentText(), QStringLiteral("Triplets"));
  EXPECT_EQ(Widget<QListWidget>(view, ui.List1)->count(), 4);
  auto* gauge = Widget<QProgressBar>(view, ui.Gauge1);
  EXPECT_EQ(gauge->value(), gauge->maximum() / 4);
  // A disabled frame disables what it holds.
  EXPECT_FALSE(Widget<QRadioButton>(view, ui.Option2)->isEnabled());
  EXPECT_FALSE(Widget<QPushButton>(view, ui.Command1)->isVisibleTo(view));
  EXPECT_EQ(view->Frame()->windowTitle(), QStringLiteral("Nouveau titre"));
  EXPECT_TRUE(sample->events.isEmpty()) << sample->events.join(QLatin1Char(' ')).toStdString();
}

TEST_F(FormViewTest, TypingRaisesKeyPressThenChange) {
  FormView* view = Show();
  SampleUi& ui = sample->ui();
  auto* box = Widget<QLineEdit>(view, ui.Text1);
  ASSERT_NE(box, nullptr);
  PressKey(box, Qt::Key_1, QStringLiteral("1"));
  PressKey(box, Qt::Key_A, QStringLiteral("a"));  // changed to "A" by the handler
  PressKey(box, Qt::Key_X, QStringLiteral("x"));  // refused by the handler
  EXPECT_EQ(ui.Text1.Text, QStringLiteral("1A"));
  EXPECT_EQ(box->text(), QStringLiteral("1A"));
  EXPECT_EQ(sample->events,
            QStringList({QStringLiteral("Text1_KeyPress:49"), QStringLiteral("Text1_Change:1"),
                         QStringLiteral("Text1_KeyPress:97"), QStringLiteral("Text1_Change:1A"),
                         QStringLiteral("Text1_KeyPress:120")}));
  sample->events.clear();
  PressKey(box, Qt::Key_Backspace, QString());
  EXPECT_EQ(ui.Text1.Text, QStringLiteral("1"));
  EXPECT_EQ(sample->events,
            QStringList({QStringLiteral("Text1_KeyPress:8"), QStringLiteral("Text1_Change:1")}));
}

TEST_F(FormViewTest, ClicksSetTheStateThenRaiseClick) {
  FormView* view = Show();
  SampleUi& ui = sample->ui();
  ui.Option1.Value = true;
  run->platform.SyncAll();
  Widget<QRadioButton>(view, ui.Option2)->click();
  EXPECT_TRUE(ui.Option2.Value);
  EXPECT_FALSE(ui.Option1.Value);
  EXPECT_TRUE(ui.Option3.Value) << "another container keeps its option";
  EXPECT_FALSE(Widget<QRadioButton>(view, ui.Option1)->isChecked());
  // Clicking the chosen option again keeps it chosen.
  Widget<QRadioButton>(view, ui.Option2)->click();
  EXPECT_TRUE(Widget<QRadioButton>(view, ui.Option2)->isChecked());

  Widget<QCheckBox>(view, ui.Check1)->click();
  EXPECT_EQ(ui.Check1.Value, 1);
  Widget<QPushButton>(view, ui.Command1)->click();

  auto* combo = Widget<QComboBox>(view, ui.Combo1);
  emit combo->activated(1);
  emit combo->activated(1);
  EXPECT_EQ(ui.Combo1.ListIndex(), 1);
  EXPECT_EQ(ui.Combo1.Text, QStringLiteral("Triplets"));

  Widget<QListWidget>(view, ui.List1)->setCurrentRow(2);
  EXPECT_EQ(ui.List1.ListIndex(), 2);
  EXPECT_EQ(ui.List1.Text, QStringLiteral("c"));

  EXPECT_EQ(
      sample->events,
      QStringList({QStringLiteral("Option2_Click"), QStringLiteral("Option2_Click"),
                   QStringLiteral("Check1_Click:1"), QStringLiteral("Command1_Click"),
                   QStringLiteral("Combo1_Click:Triplets"), QStringLiteral("Combo1_Click:Triplets"),
                   QStringLiteral("List1_Click:2")}));
}

TEST_F(FormViewTest, KeypadIsAGridOfKeysWhoseFacesFollowTheImages) {
  FormView* view = Show();
  SampleUi& ui = sample->ui();
  QWidget* pad = view->WidgetOf(ui.Toolbar1);
  ASSERT_NE(pad, nullptr);
  const QList<QToolButton*> keys = pad->findChildren<QToolButton*>(Qt::FindDirectChildrenOnly);
  ASSERT_EQ(keys.size(), 50);
  // Ten to a row: key 11 starts the second row under key 1.
  EXPECT_EQ(keys[10]->x(), keys[0]->x());
  EXPECT_GT(keys[10]->y(), keys[0]->y());
  EXPECT_EQ(keys[9]->y(), keys[0]->y());
  const qint64 before = keys[6]->icon().cacheKey();
  keys[6]->click();
  EXPECT_EQ(sample->events, QStringList({QStringLiteral("Toolbar1_ButtonClick:N7")}));
  EXPECT_EQ(static_cast<const Toolbar&>(ui.Toolbar1).Buttons(7).Image, 57);
  EXPECT_NE(keys[6]->icon().cacheKey(), before) << "the marked face replaces the plain one";
  // A disabled key cannot be clicked.
  ui.Toolbar1.Buttons(8).Enabled = false;
  run->platform.SyncAll();
  EXPECT_FALSE(keys[7]->isEnabled());
}

TEST_F(FormViewTest, CalendarShowsNoDayUntilOneIsChosen) {
  FormView* view = Show();
  SampleUi& ui = sample->ui();
  auto* cal = Widget<QCalendarWidget>(view, ui.Calendar1);
  ASSERT_NE(cal, nullptr);
  EXPECT_EQ(cal->palette().color(QPalette::Highlight), cal->palette().color(QPalette::Base));
  emit cal->clicked(QDate(2024, 3, 4));
  EXPECT_EQ(ui.Calendar1.Value(), QDate(2024, 3, 4));
  EXPECT_EQ(sample->events, QStringList({QStringLiteral("Calendar1_Click:2024-03-04")}));
  EXPECT_NE(cal->palette().color(QPalette::Highlight), cal->palette().color(QPalette::Base));
  EXPECT_EQ(cal->selectedDate(), QDate(2024, 3, 4));
  ui.Calendar1.SetValue(QDate());
  run->platform.SyncAll();
  EXPECT_EQ(cal->palette().color(QPalette::Highlight), cal->palette().color(QPalette::Base));
}

TEST_F(FormViewTest, GridFollowsRowsAddedOneByOneInALongLoop) {
  FormView* view = Show();
  SampleUi& ui = sample->ui();
  auto* table = Widget<QTableView>(view, ui.Grille);
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(table->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Date"));
  EXPECT_EQ(table->model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Nombre"));
  EXPECT_EQ(table->horizontalHeader()->sectionSize(0), 100);
  EXPECT_FALSE(table->verticalHeader()->isVisibleTo(table));
  QElapsedTimer clock;
  clock.start();
  Grid& g = ui.Grille;
  int shownHalfway = -1;
  double work = 0;
  for (int r = 1; r <= 3000; ++r) {
    // Each row costs the loop some work of its own, as reading the store does.
    QElapsedTimer row;
    row.start();
    while (row.nsecsElapsed() < 100'000) {
    }
    work += row.nsecsElapsed() / 1e9;
    g.SetRows(r + 1);
    g.SetTextMatrix(r, 0, QStringLiteral("%1").arg(r));
    g.SetTextMatrix(r, 1, QString::number(r * 2));
    g.SetTextMatrix(r, 2, QStringLiteral("texte"));
    g.Row = r;
    run->platform.DoEvents();
    if (r == 1500) shownHalfway = table->model()->rowCount();
  }
  run->platform.SyncAll();
  const double seconds = clock.nsecsElapsed() / 1e9;
  std::printf(
      "[ figure ] 3,000 grid rows added one by one with a yield each: %.3f s, of which "
      "%.3f s the loop's own work\n",
      seconds, work);
  if (kTimeBoundsHold) {
    EXPECT_LT(seconds - work, 1.0);
  }
  // The list grew on screen while the loop ran.
  EXPECT_GT(shownHalfway, 0);
  EXPECT_LE(shownHalfway, 1500);
  EXPECT_EQ(table->model()->rowCount(), 3000);
  EXPECT_EQ(table->model()->index(2999, 1).data().toString(), QStringLiteral("6000"));
  EXPECT_EQ(table->model()->index(2999, 0).data().toString(), QStringLiteral("3000"));
  // The fixed column looks like a header.
  EXPECT_TRUE(table->model()->index(0, 0).data(Qt::BackgroundRole).isValid());
  EXPECT_FALSE(table->model()->index(0, 1).data(Qt::BackgroundRole).isValid());
  // Filling the grid, current row included, never scrolled it: its first row
  // stands right under the header.
  EXPECT_GT(table->verticalScrollBar()->maximum(), 0);
  EXPECT_EQ(table->verticalScrollBar()->value(), 0);
  EXPECT_EQ(table->rowAt(0), 0);
  EXPECT_EQ(table->rowViewportPosition(0), 0);
  EXPECT_EQ(table->currentIndex().row(), 2999);

  table->clicked(table->model()->index(4, 1));
  EXPECT_EQ(g.Row, 5);
  EXPECT_EQ(g.Col, 1);
  EXPECT_EQ(sample->events, QStringList({QStringLiteral("Grille_Click:5")}));

  g.SetRows(2);
  run->platform.SyncAll();
  EXPECT_EQ(table->model()->rowCount(), 1);
}

void MouseClick(QWidget* w, QPoint at) {
  QMouseEvent press(QEvent::MouseButtonPress, QPointF(at), w->mapToGlobal(QPointF(at)),
                    Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(w, &press);
  QMouseEvent release(QEvent::MouseButtonRelease, QPointF(at), w->mapToGlobal(QPointF(at)),
                      Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
  QCoreApplication::sendEvent(w, &release);
}

TEST_F(FormViewTest, GridHeadingsClickWithoutMovingTheCurrentCell) {
  FormView* view = Show();
  SampleUi& ui = sample->ui();
  Grid& g = ui.Grille;
  g.SetRows(4);
  for (int r = 1; r < 4; ++r) g.SetTextMatrix(r, 1, QString::number(r * 10));
  run->platform.SyncAll();
  auto* table = Widget<QTableView>(view, g);
  ASSERT_NE(table, nullptr);
  QWidget* cells = table->viewport();

  MouseClick(cells, table->visualRect(table->model()->index(1, 2)).center());
  run->platform.SyncAll();
  EXPECT_EQ(g.Row, 2);
  EXPECT_EQ(g.Col, 2);
  EXPECT_EQ(table->currentIndex(), table->model()->index(1, 2));

  // The fixed column: a click, and the view goes back to the current cell.
  MouseClick(cells, table->visualRect(table->model()->index(2, 0)).center());
  run->platform.SyncAll();
  EXPECT_EQ(g.Row, 2);
  EXPECT_EQ(g.Col, 2);
  EXPECT_EQ(table->currentIndex(), table->model()->index(1, 2));

  // The heading row.
  QHeaderView* head = table->horizontalHeader();
  MouseClick(head->viewport(), QPoint(head->sectionViewportPosition(1) + 5, head->height() / 2));
  run->platform.SyncAll();
  EXPECT_EQ(g.Row, 2);
  EXPECT_EQ(g.Col, 2);
  EXPECT_EQ(table->currentIndex(), table->model()->index(1, 2));
  EXPECT_EQ(sample->events,
            QStringList({QStringLiteral("Grille_Click:2"), QStringLiteral("Grille_Click:2"),
                         QStringLiteral("Grille_Click:2")}));
}

TEST_F(FormViewTest, TabLeavesTheGridInsteadOfWalkingItsCells) {
  FormView* view = Show();
  Grid& g = sample->ui().Grille;
  g.SetRows(4);
  for (int r = 1; r < 4; ++r) g.SetTextMatrix(r, 1, QString::number(r * 10));
  g.Row = 1;
  g.Col = 1;
  run->platform.SyncAll();
  auto* table = Widget<QTableView>(view, g);
  ASSERT_NE(table, nullptr);
  EXPECT_FALSE(table->tabKeyNavigation());
  const QModelIndex before = table->currentIndex();
  ASSERT_TRUE(before.isValid());
  QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier, QStringLiteral("\t"));
  QCoreApplication::sendEvent(table, &tab);
  run->platform.SyncAll();
  EXPECT_EQ(table->currentIndex(), before) << "a Tab doesn't move the current cell";
  EXPECT_EQ(g.Row, 1);
  EXPECT_EQ(g.Col, 1);
}

TEST_F(FormViewTest, GridScrolledToItsEndShowsWholeRows) {
  FormView* view = Show();
  Grid& g = sample->ui().Grille;
  g.SetRows(101);
  for (int r = 1; r <= 100; ++r) g.SetTextMatrix(r, 1, QString::number(r));
  run->platform.SyncAll();
  QApplication::processEvents();
  auto* table = Widget<QTableView>(view, g);
  ASSERT_NE(table, nullptr);
  QScrollBar* down = table->verticalScrollBar();
  ASSERT_GT(down->maximum(), 0);
  const int rowHeight = table->rowHeight(0);
  ASSERT_NE(table->viewport()->height() % rowHeight, 0) << "the sample grid shows a part row";
  for (int value : {down->maximum(), down->maximum() - 1, down->maximum()}) {
    SCOPED_TRACE(value);
    down->setValue(value);
    const int top = table->rowAt(0);
    EXPECT_EQ(top, value);
    EXPECT_EQ(table->rowViewportPosition(top), 0) << "no row sits half under the header";
  }
  EXPECT_LE(table->rowViewportPosition(99) + rowHeight, table->viewport()->height())
      << "the last row is whole";
}

TEST_F(FormViewTest, GridOfThirtyThousandRowsHasNoWidgetPerCell) {
  FormView* view = Show();
  SampleUi& ui = sample->ui();
  auto* table = Widget<QTableView>(view, ui.Grille);
  ASSERT_NE(table, nullptr);
  const qsizetype widgetsBefore = table->findChildren<QWidget*>().size();
  Grid& g = ui.Grille;
  g.SetRows(30001);
  for (int r = 1; r <= 30000; ++r) {
    g.SetTextMatrix(r, 0, QStringLiteral("%1").arg(r));
    g.SetTextMatrix(r, 1, QString::number(r % 97));
    g.SetTextMatrix(r, 2, QStringLiteral("texte"));
  }
  run->platform.SyncAll();
  QCoreApplication::processEvents();
  EXPECT_EQ(table->model()->rowCount(), 30000);
  EXPECT_EQ(table->findChildren<QWidget*>().size(), widgetsBefore);
  EXPECT_EQ(table->indexWidget(table->model()->index(0, 1)), nullptr);
  EXPECT_EQ(table->findChildren<QAbstractItemModel*>().size(), 1);

  // Each column keeps the alignment its heading asks for.
  auto align = [table](int row, int col) {
    return Qt::Alignment(table->model()->index(row, col).data(Qt::TextAlignmentRole).toInt());
  };
  EXPECT_EQ(align(0, 0), Qt::AlignHCenter | Qt::AlignVCenter);
  EXPECT_EQ(align(0, 1), Qt::AlignRight | Qt::AlignVCenter);
  EXPECT_EQ(align(0, 2), Qt::AlignLeft | Qt::AlignVCenter);
  // The fixed column has the colour of the header, the others none of their own.
  const QVariant fixed = table->model()->index(29999, 0).data(Qt::BackgroundRole);
  ASSERT_TRUE(fixed.isValid());
  EXPECT_EQ(fixed.value<QBrush>().color(), QApplication::palette().button().color());
  EXPECT_FALSE(table->model()->index(29999, 2).data(Qt::BackgroundRole).isValid());
  EXPECT_TRUE(table->horizontalHeader()->isVisibleTo(table));

  // Without a mark in its heading, numbers go right and texts left.
  g.SetFormatString(QStringLiteral("Date|Nombre|Texte"));
  run->platform.SyncAll();
  EXPECT_EQ(align(0, 1), Qt::AlignRight | Qt::AlignVCenter);
  EXPECT_EQ(align(0, 2), Qt::AlignLeft | Qt::AlignVCenter);
  EXPECT_EQ(table->model()->headerData(2, Qt::Horizontal).toString(), QStringLiteral("Texte"));
}

TEST_F(FormViewTest, PictureMouseMovesComeInTwipsFromItsInnerCorner) {
  FormView* view = Show();
  QWidget* picture = view->WidgetOf(sample->ui().Picture1);
  ASSERT_NE(picture, nullptr);
  const QPoint inner = picture->contentsRect().topLeft();
  QMouseEvent move(QEvent::MouseMove, QPointF(inner + QPoint(30, 10)), QPointF(), Qt::NoButton,
                   Qt::NoButton, Qt::NoModifier);
  QCoreApplication::sendEvent(picture, &move);
  ASSERT_EQ(sample->moves.size(), 1u);
  EXPECT_DOUBLE_EQ(sample->moves[0].x(), 30 * 15);
  EXPECT_DOUBLE_EQ(sample->moves[0].y(), 10 * 15);
}

TEST_F(FormViewTest, PictureBorderKeepsItsFourEdgesAtAFractionalScale) {
  FormView* view = Show();
  QWidget* picture = view->WidgetOf(sample->ui().Picture1);
  ASSERT_NE(picture, nullptr);
  const QRect r = picture->geometry();
  // An edge is there when some device pixel across it is darker than the window.
  auto darker = [](const QImage& image, QPointF from, QPointF step, int count) {
    const int back = qGray(QApplication::palette().color(QPalette::Window).rgb());
    for (int k = 0; k < count; ++k) {
      const QPoint at = (from + step * k).toPoint();
      if (image.rect().contains(at) && qGray(image.pixel(at)) < back - 20) return true;
    }
    return false;
  };
  for (double ratio : {1.0, 1.25, 1.5}) {
    SCOPED_TRACE(ratio);
    QImage image((QSizeF(view->size()) * ratio).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    view->render(&image);
    const double midX = (r.left() + r.width() / 2.0) * ratio;
    const double midY = (r.top() + r.height() / 2.0) * ratio;
    EXPECT_TRUE(darker(image, {midX, r.top() * ratio - 1}, {0, 1}, 3)) << "top edge";
    EXPECT_TRUE(darker(image, {midX, (r.bottom() + 1) * ratio - 2}, {0, 1}, 3)) << "bottom edge";
    EXPECT_TRUE(darker(image, {r.left() * ratio - 1, midY}, {1, 0}, 3)) << "left edge";
    EXPECT_TRUE(darker(image, {(r.right() + 1) * ratio - 2, midY}, {1, 0}, 3)) << "right edge";
  }
}

TEST_F(FormViewTest, AnOptionThatWatchesTheMouseHearsItWithoutAButtonHeld) {
  FormView* view = Show();
  auto* one = Widget<QRadioButton>(view, sample->ui().Option1);
  auto* three = Widget<QRadioButton>(view, sample->ui().Option3);
  ASSERT_NE(three, nullptr);
  EXPECT_FALSE(one->hasMouseTracking());
  EXPECT_TRUE(three->hasMouseTracking());
  QMouseEvent move(QEvent::MouseMove, QPointF(5, 5), QPointF(), Qt::NoButton, Qt::NoButton,
                   Qt::NoModifier);
  QCoreApplication::sendEvent(three, &move);
  EXPECT_EQ(sample->events, QStringList{QStringLiteral("Option3_MouseMove:0")});
}

TEST_F(FormViewTest, TimerTicksWhileEnabled) {
  Show();
  sample->ui().Timer1.Interval = 5;
  sample->ui().Timer1.Enabled = true;
  run->platform.SyncAll();
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < 2000 && sample->ticks < 3)
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
  EXPECT_GE(sample->ticks, 3);
  sample->ui().Timer1.Enabled = false;
  run->platform.SyncAll();
  const int ticks = sample->ticks;
  clock.restart();
  while (clock.elapsed() < 50) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
  EXPECT_EQ(sample->ticks, ticks);
}

TEST_F(FormViewTest, ClosingAChildByItsFrameUnloadsIt) {
  FormView* view = Show();
  ASSERT_NE(view, nullptr);
  QWidget* frame = view->Frame();
  ASSERT_NE(qobject_cast<QMdiSubWindow*>(frame), nullptr);
  frame->close();
  EXPECT_FALSE(sample->Loaded());
  EXPECT_EQ(run->platform.ViewOf(*sample), nullptr);
}

TEST_F(FormViewTest, TopLevelWindowClosedByItsFrameUnloads) {
  FormView* view = Show(false);
  ASSERT_NE(view, nullptr);
  EXPECT_TRUE(view->isWindow());
  EXPECT_EQ(view->size(), QSize(800 - 6, 600 - 25));
  view->close();
  EXPECT_FALSE(sample->Loaded());
}

TEST_F(FormViewTest, ModalWindowRunsItsOwnLoopUntilUnloaded) {
  sample->mdiChild = false;
  bool modalSeen = false;
  QTimer::singleShot(20, [&] {
    auto* view = dynamic_cast<FormView*>(run->platform.ViewOf(*sample));
    modalSeen = view && view->isModal();
    run->platform.Run([&] { sample->Unload(); });
  });
  run->platform.Run([&] { sample->Show(true); });
  EXPECT_TRUE(modalSeen);
  EXPECT_FALSE(sample->Loaded());
}

TEST_F(FormViewTest, ModalWindowHiddenByItsCodeEndsItsLoop) {
  sample->mdiChild = false;
  QTimer::singleShot(20, [&] { run->platform.Run([&] { sample->Hide(); }); });
  run->platform.Run([&] { sample->Show(true); });
  EXPECT_TRUE(sample->Loaded());
  EXPECT_FALSE(sample->Visible);
}

}  // namespace
}  // namespace kuvo::testing
