// A window closed by its frame while one of its handlers lets events through:
// the handler finishes, and the view goes only once nothing of it is running.
// Run under AddressSanitizer, a view freed too early shows as a use after free.
#include <gtest/gtest.h>

#include <QAction>
#include <QCoreApplication>
#include <QFile>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QTableView>
#include <QThread>
#include <QTimer>
#include <QToolButton>
#include <stdexcept>

#include "GuiSupport.h"
#include "core/Form.h"
#include "gui/FormView.h"
#include "gui/MainWindowView.h"

namespace kuvo::testing {
namespace {

class Yielder;

struct YielderUi {
  explicit YielderUi(Yielder& f);
  CommandButton Command1;
  Toolbar Keys;
  Grid Grille;
  CommandButton Casse;
};

// A window whose button, keypad keys and grid let events through a while.
class Yielder : public FormOf<Yielder, YielderUi> {
 public:
  static constexpr const char* kName = "Yielder";
  explicit Yielder(Program& p) : FormOf(p, kName) {}
  QStringList events;
  std::function<void()> failure;

  void Yield(QString what) {
    for (int i = 0; i < 20; ++i) {
      Sys().DoEvents();
      QThread::usleep(1500);
    }
    events << what;
  }
};

YielderUi::YielderUi(Yielder& f)
    : Command1(f, "Command1"), Keys(f, "Keys"), Grille(f, "Grille"), Casse(f, "Casse") {
  f.Caption = QStringLiteral("Essai");
  f.Width = 8000;
  f.Height = 6000;
  Command1.Move(120, 120, 1500, 400);
  Command1.Caption = QStringLiteral("Attendre");
  Command1.Click = [&f] { f.Yield(QStringLiteral("Command1")); };
  Keys.Move(120, 700, 4000, 800);
  Keys.MakeKeypad(10);
  // The key goes with the window: its name is taken first.
  Keys.ButtonClick = [&f](ToolbarButton& b) { f.Yield(b.Key); };
  Grille.Move(120, 1700, 4000, 2000);
  Grille.SetRows(4);
  Grille.SetCols(3);
  Grille.Click = [&f] { f.Yield(QStringLiteral("Grille")); };
  Casse.Move(1800, 120, 1500, 400);
  Casse.Click = [&f] { f.failure(); };
}

// The test platform that also answers the file dialog.
class Answering : public TestPlatform {
 public:
  using TestPlatform::TestPlatform;
  QString file;
  QString ShowOpen(const QString&) override { return file; }
};

struct FrameCloseTest : ::testing::Test {
  void SetUp() override {
    folder.AddDraw(QStringLiteral("2024-03-02"), {1, 2, 3, 4, 5}, 6);
    platform = std::make_unique<Answering>(folder.Path());
    program = std::make_unique<Program>(*platform, AllWindows());
    platform->Attach(*program);
    program->Start();
    ASSERT_TRUE(platform->fatals.isEmpty());
    yielder = std::make_unique<Yielder>(*program);
  }
  void TearDown() override {
    platform->Release();
    yielder.reset();
    program.reset();
    platform.reset();
  }
  FormView* Show() {
    platform->Run([this] { yielder->Show(); });
    return dynamic_cast<FormView*>(platform->ViewOf(*yielder));
  }
  // Closes a window by its frame at the first yield.
  void CloseAtFirstYield(QWidget* frame) {
    QPointer<QWidget> f = frame;
    QTimer::singleShot(0, frame, [f] {
      if (f) f->close();
    });
  }
  static void DeleteDeferred() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  AppFolder folder;
  std::unique_ptr<Answering> platform;
  std::unique_ptr<Program> program;
  std::unique_ptr<Yielder> yielder;
};

TEST_F(FrameCloseTest, AButtonWhoseHandlerYields) {
  FormView* view = Show();
  ASSERT_NE(view, nullptr);
  QPointer<QWidget> frame = view->Frame();
  auto* button = qobject_cast<QPushButton*>(view->WidgetOf(yielder->ui().Command1));
  ASSERT_NE(button, nullptr);
  CloseAtFirstYield(frame);
  button->click();
  EXPECT_FALSE(yielder->Loaded());
  EXPECT_EQ(yielder->events, QStringList{"Command1"});
  // The view went away once the handler was over.
  DeleteDeferred();
  EXPECT_TRUE(frame.isNull());
  EXPECT_EQ(platform->ViewOf(*yielder), nullptr);
}

TEST_F(FrameCloseTest, AKeypadKeyWhoseHandlerYields) {
  FormView* view = Show();
  ASSERT_NE(view, nullptr);
  QPointer<QWidget> frame = view->Frame();
  QWidget* keypad = view->WidgetOf(yielder->ui().Keys);
  ASSERT_NE(keypad, nullptr);
  const auto keys = keypad->findChildren<QToolButton*>();
  ASSERT_FALSE(keys.isEmpty());
  CloseAtFirstYield(frame);
  keys.front()->click();
  EXPECT_FALSE(yielder->Loaded());
  EXPECT_EQ(yielder->events, QStringList{"N1"});
  DeleteDeferred();
  EXPECT_TRUE(frame.isNull());
}

TEST_F(FrameCloseTest, AGridWhoseClickYields) {
  FormView* view = Show();
  ASSERT_NE(view, nullptr);
  QPointer<QWidget> frame = view->Frame();
  auto* table = qobject_cast<QTableView*>(view->WidgetOf(yielder->ui().Grille));
  ASSERT_NE(table, nullptr);
  QWidget* cells = table->viewport();
  const QPoint at = table->visualRect(table->model()->index(1, 1)).center();
  CloseAtFirstYield(frame);
  QMouseEvent press(QEvent::MouseButtonPress, QPointF(at), cells->mapToGlobal(QPointF(at)),
                    Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(cells, &press);
  QMouseEvent release(QEvent::MouseButtonRelease, QPointF(at), cells->mapToGlobal(QPointF(at)),
                      Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
  QCoreApplication::sendEvent(cells, &release);
  EXPECT_FALSE(yielder->Loaded());
  EXPECT_EQ(yielder->events, QStringList{"Grille"});
  DeleteDeferred();
  EXPECT_TRUE(frame.isNull());
}

TEST_F(FrameCloseTest, TheMainWindowDuringAMenuEntryThatYields) {
  MainWindowView* main = platform->MainWindow();
  ASSERT_NE(main, nullptr);
  QPointer<QWidget> frame = main;
  Form& mdi = program->MainForm();
  QAction* entry = main->ActionOf(static_cast<Menu&>(*mdi.FindControl("M_StatToutes")));
  ASSERT_NE(entry, nullptr);
  CloseAtFirstYield(main);
  entry->trigger();
  // The program ended while the base view was loading: everything unwound.
  EXPECT_TRUE(program->Ended());
  EXPECT_FALSE(mdi.Loaded());
  EXPECT_TRUE(platform->fatals.isEmpty());
  DeleteDeferred();
  EXPECT_TRUE(frame.isNull());
}

TEST_F(FrameCloseTest, TheImportWindowDuringItsFirstPass) {
  const QString csv = folder.Path() + QStringLiteral("/Kuvo.csv");
  {
    QFile f(csv);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(
        "annee_numero_de_tirage;jour_de_tirage;date_de_tirage;date_de_forclusion;boule_1;boule_2;"
        "boule_3;boule_4;boule_5;Numero_Chance;\n");
    for (int i = 0; i < 40; ++i)
      f.write(QStringLiteral("2024%1;LUNDI;202401%2;20240301;1;2;3;4;%3;5;\n")
                  .arg(i, 3, 10, QLatin1Char('0'))
                  .arg(i % 28 + 1, 2, 10, QLatin1Char('0'))
                  .arg(i % 40 + 5)
                  .toUtf8());
  }
  platform->file = csv;
  platform->Run([this] { program->MainForm().FindControl("M_MiseJour")->UserClick(); });
  Form* import = program->FormByName(QStringLiteral("ChargeMiseJour"), false);
  ASSERT_NE(import, nullptr);
  auto* view = dynamic_cast<FormView*>(platform->ViewOf(*import));
  ASSERT_NE(view, nullptr);
  QPointer<QWidget> frame = view->Frame();
  auto* button =
      qobject_cast<QPushButton*>(view->WidgetOf(*import->FindControl("Cmd_Importation")));
  ASSERT_NE(button, nullptr);
  CloseAtFirstYield(frame);
  button->click();
  EXPECT_TRUE(platform->fatals.isEmpty());
  EXPECT_FALSE(program->Ended());
  EXPECT_TRUE(platform->boxes.contains(
      QStringLiteral("Importation et mise à jour de la base de données réussie")));
  DeleteDeferred();
  EXPECT_TRUE(frame.isNull());
}

TEST_F(FrameCloseTest, AnExceptionFromAHandlerEndsThroughTheErrorReport) {
  FormView* view = Show();
  ASSERT_NE(view, nullptr);
  yielder->failure = [] { throw std::runtime_error("unforeseen"); };
  auto* button = qobject_cast<QPushButton*>(view->WidgetOf(yielder->ui().Casse));
  ASSERT_NE(button, nullptr);
  button->click();
  EXPECT_EQ(platform->fatals, QStringList{QtPlatform::FatalText(51, "Erreur interne")});
  EXPECT_TRUE(program->Ended());
}

TEST_F(FrameCloseTest, MemoryRunningOutEndsThroughTheErrorReport) {
  Show();
  yielder->failure = [] { throw std::bad_alloc(); };
  platform->Run([this] { yielder->ui().Casse.UserClick(); });
  EXPECT_EQ(platform->fatals, QStringList{QtPlatform::FatalText(7, "Mémoire insuffisante")});
  EXPECT_TRUE(program->Ended());
}

}  // namespace
}  // namespace kuvo::testing
