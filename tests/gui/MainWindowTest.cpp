#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QToolBar>
#include <cstdio>

#include "GuiSupport.h"
#include "core/Avance.h"
#include "core/Form.h"
#include "core/MDIKuvo.h"
#include "core/Module1.h"
#include "core/Texts.h"
#include "gui/FormView.h"
#include "gui/MainWindowView.h"

namespace kuvo::testing {
namespace {

QStringList Texts(const QList<QAction*>& actions) {
  QStringList out;
  for (const QAction* a : actions) out << (a->isSeparator() ? QStringLiteral("-") : a->text());
  return out;
}

class MainWindowTest : public ::testing::Test {
 protected:
  void SetUp() override {
    folder.AddHistory(QStringLiteral("20240304"), {23, 7, 41, 2, 36}, 4);
    folder.AddHistory(QStringLiteral("20240306"), {1, 2, 3, 4, 5}, 6);
    folder.AddDraw(QStringLiteral("2024-03-04"), {23, 7, 41, 2, 36}, 4);
    folder.AddDraw(QStringLiteral("2024-03-06"), {1, 2, 3, 4, 5}, 6);
    folder.AddDraw(QStringLiteral("2024-03-09"), {11, 12, 13, 14, 15}, 7);
  }
  AppFolder folder;
};

TEST_F(MainWindowTest, StartShowsTheMainWindowWithItsTitleMenusToolbarAndPanels) {
  RunningProgram run(folder.Path());
  run.program.Start();
  ASSERT_TRUE(run.platform.fatals.isEmpty())
      << run.platform.fatals.join(QLatin1Char('\n')).toStdString();

  MainWindowView* main = run.platform.MainWindow();
  ASSERT_NE(main, nullptr);
  EXPECT_TRUE(main->isVisible());
  EXPECT_EQ(main->windowTitle(), QStringLiteral("Kuvo"));

  const QList<QAction*> bar = main->menuBar()->actions();
  EXPECT_EQ(Texts(bar),
            QStringList({QStringLiteral("&Fichier"), QStringLiteral("&Gestion des Tirages"),
                         QStringLiteral("&Statistiques"), QStringLiteral("&Sélection de Numéros"),
                         QStringLiteral("&Mise à jour de la Base de Données")}));
  ASSERT_EQ(bar.size(), 5);
  // The update entry is a command of the menu bar itself.
  EXPECT_EQ(bar[4]->menu(), nullptr);
  ASSERT_NE(bar[0]->menu(), nullptr);
  EXPECT_EQ(
      Texts(bar[0]->menu()->actions()),
      QStringList({QStringLiteral("A Propos..."), QStringLiteral("&Configuration Imprimante..."),
                   QStringLiteral("-"), QStringLiteral("&Quitter")}));
  EXPECT_EQ(Texts(bar[1]->menu()->actions()),
            QStringList({QStringLiteral("&Saisir"), QStringLiteral("&Modifier"),
                         QStringLiteral("&Supprimer")}));
  EXPECT_EQ(Texts(bar[2]->menu()->actions()),
            QStringList({QStringLiteral("&Sorties groupées de Numéros"),
                         QStringLiteral("Verifier un &Groupe de Numéros"),
                         QStringLiteral("Numéros Affines"), QStringLiteral("-"),
                         QStringLiteral("&Visualiser la Base"), QStringLiteral("-"),
                         QStringLiteral("&Mes Tirages Préférés")}));
  EXPECT_EQ(Texts(bar[3]->menu()->actions()),
            QStringList({QStringLiteral("&Suivant la Base de Données"),
                         QStringLiteral("&Générés par l'ordinateur")}));

  const QList<QAction*> tools = main->ToolBar()->actions();
  ASSERT_EQ(tools.size(), 17);
  const QStringList tips = {
      QStringLiteral("Saisir un nouveau tirage"),
      QStringLiteral("Modifier un tirage"),
      QStringLiteral("Supprimer un tirage"),
      QString(),
      QStringLiteral("Sorties groupées de numèros"),
      QStringLiteral("Verifier un groupe de numèros"),
      QStringLiteral("Numéros Affines"),
      QStringLiteral("Visualisation de la Base"),
      QString(),
      QStringLiteral("Numéros Générés  à partir de la Base de Données"),
      QStringLiteral("Numéros aléatoires générés par l'ordinateur"),
      QString(),
      QStringLiteral("Mes Tirages Préférés "),
      QString(),
      QStringLiteral("A Propos de Kuvo"),
      QString(),
      QStringLiteral("Quitter le programme Kuvo"),
  };
  for (int i = 0; i < 17; ++i) {
    const bool separator = i + 1 == 4 || i + 1 == 9 || i + 1 == 12 || i + 1 == 14 || i + 1 == 16;
    EXPECT_EQ(tools[i]->isSeparator(), separator) << "position " << i + 1;
    if (separator) continue;
    EXPECT_EQ(tools[i]->toolTip(), tips[i]) << "position " << i + 1;
    EXPECT_FALSE(tools[i]->icon().isNull()) << "position " << i + 1;
    EXPECT_FALSE(tools[i]->icon().pixmap(QSize(24, 24)).isNull());
  }

  const QStringList panels = main->PanelTexts();
  ASSERT_EQ(panels.size(), 3);
  const QString five = QStringLiteral("     ");
  EXPECT_EQ(panels[0], five + QStringLiteral("Nombre de Tirages  :   3") + five);
  EXPECT_EQ(panels[1], five + QStringLiteral("Dernière mise à jour  :  09 mars 2024") + five);
  EXPECT_EQ(panels[2],
            five + FormatDate(QDate::currentDate(), QStringLiteral("dd mmmm yyyy")) + five);
}

TEST_F(MainWindowTest, DoEventsWithNothingPendingStaysCheap) {
  RunningProgram run(folder.Path());
  run.program.Start();
  run.platform.DoEvents();
  QElapsedTimer clock;
  clock.start();
  for (int i = 0; i < 300000; ++i) run.platform.DoEvents();
  const double seconds = clock.nsecsElapsed() / 1e9;
  std::printf("[ figure ] 300,000 DoEvents: %.3f s\n", seconds);
  if (kTimeBoundsHold) {
    EXPECT_LT(seconds, 1.0);
  }
}

TEST_F(MainWindowTest, MenuEntryRunsItsHandlerThroughTheProgram) {
  RunningProgram run(folder.Path());
  run.program.Start();
  MainWindowView* main = run.platform.MainWindow();
  ASSERT_NE(main, nullptr);
  auto& mdi = run.program.Win<MDIKuvo>();
  // Statistics entry: closes the child windows and sets the group mode.
  QAction* groups = main->ActionOf(mdi.ui().M_StatGroupes);
  ASSERT_NE(groups, nullptr);
  run.program.M().ModeGroupe = 0;
  groups->trigger();
  EXPECT_EQ(run.program.M().ModeGroupe, 1);
  EXPECT_TRUE(run.platform.fatals.isEmpty());
}

// Each entry of the menus and each button of the toolbar opens its own window
// in the work area, after closing the one that stood there.
TEST_F(MainWindowTest, EveryEntryAndToolbarButtonOpensItsWindowInTheWorkArea) {
  RunningProgram run(folder.Path());
  run.program.Start();
  MainWindowView* main = run.platform.MainWindow();
  ASSERT_NE(main, nullptr);
  auto& ui = run.program.Win<MDIKuvo>().ui();
  struct Way {
    Menu* entry;
    int button;
    const char* window;
  };
  const Way ways[] = {
      {&ui.M_GestionSaisie, 1, "TirSais"},      {&ui.M_GestionModif, 2, "TirModi"},
      {&ui.M_GestionSupprimer, 3, "TirSup"},    {&ui.M_StatVerif, 5, "TirVerif"},
      {&ui.M_StatGroupes, 6, "TirGrou"},        {&ui.M_NumAfines, 7, "NumerosAffines"},
      {&ui.M_StatToutes, 8, "TirBase"},         {&ui.M_AleatoireBase, 10, "AleaBase"},
      {&ui.M_AleatoireGeneres, 11, "AleaOrdi"}, {&ui.M_StatMesNumeros, 13, "NumPref"},
  };
  const QList<QAction*> tools = main->findChild<QToolBar*>()->actions();
  ASSERT_EQ(tools.size(), 17);
  Form* previous = nullptr;
  auto opened = [&](const char* name) {
    Form* form = run.program.FormByName(QLatin1String(name), false);
    ASSERT_NE(form, nullptr) << name;
    EXPECT_TRUE(form->Loaded()) << name;
    FormWindow* view = run.platform.ViewOf(*form);
    ASSERT_NE(view, nullptr) << name;
    EXPECT_TRUE(view->Frame()->isVisible()) << name;
    EXPECT_TRUE(main->WorkArea()->isAncestorOf(view->Frame())) << name;
    if (previous && previous != form) {
      EXPECT_FALSE(previous->Loaded()) << name;
    }
    previous = form;
  };
  for (const Way& way : ways) {
    main->ActionOf(*way.entry)->trigger();
    opened(way.window);
    tools[way.button - 1]->trigger();
    opened(way.window);
  }
  // The import entry on the menu bar stands beside the open window.
  main->ActionOf(ui.M_MiseJour)->trigger();
  EXPECT_TRUE(previous->Loaded());
  Form* import = run.program.FormByName(QStringLiteral("ChargeMiseJour"), false);
  ASSERT_NE(import, nullptr);
  EXPECT_TRUE(import->Loaded());
  EXPECT_TRUE(run.platform.fatals.isEmpty());
}

TEST_F(MainWindowTest, HiddenByItsCodeTheMainWindowGoesOutOfSight) {
  RunningProgram run(folder.Path());
  run.program.Start();
  MainWindowView* main = run.platform.MainWindow();
  ASSERT_NE(main, nullptr);
  run.platform.Run([&] { run.program.Win<MDIKuvo>().Hide(); });
  EXPECT_FALSE(main->isVisible());
  run.platform.Run([&] { run.program.Win<MDIKuvo>().Show(); });
  EXPECT_TRUE(main->isVisible());
}

TEST(FirstStartTest, CompilesThroughTheProgressWindowAndLeavesThePanelsEmpty) {
  AppFolder folder;
  folder.AddHistory(QStringLiteral("20240304"), {23, 7, 41, 2, 36}, 4);
  folder.AddHistory(QStringLiteral("20240306"), {1, 2, 3, 4, 5}, 6);
  RunningProgram run(folder.Path());
  run.program.Start();
  ASSERT_TRUE(run.platform.fatals.isEmpty())
      << run.platform.fatals.join(QLatin1Char('\n')).toStdString();
  MainWindowView* main = run.platform.MainWindow();
  ASSERT_NE(main, nullptr);
  EXPECT_TRUE(main->isVisible());
  for (const QString& text : main->PanelTexts()) EXPECT_EQ(text, QString());
  // The progress window went with the end of the compilation.
  EXPECT_FALSE(run.program.Win<Avance>().Loaded());
  EXPECT_EQ(run.platform.ViewOf(run.program.Win<Avance>()), nullptr);
  EXPECT_EQ(run.program.M().RsSorties->RecordCount(), 2);
}

TEST(FatalTest, ReportTextNamesTheErrorNumber) {
  EXPECT_EQ(QtPlatform::FatalText(3021, QStringLiteral("Aucun enregistrement en cours.")),
            QStringLiteral("Erreur d'exécution '3021':\n\nAucun enregistrement en cours."));
}

TEST(FatalTest, StartWithoutStoreEndsWithTheReport) {
  QTemporaryDir empty;
  RunningProgram run(empty.path());
  EXPECT_THROW(run.program.Start(), ProgramEnd);
  ASSERT_EQ(run.platform.fatals.size(), 1);
  EXPECT_TRUE(run.platform.fatals[0].startsWith(QStringLiteral("Erreur d'exécution '")));
  EXPECT_TRUE(run.program.Ended());
}

TEST(AvanceViewTest, LabelAndProgressBarFollowDepartAndIncrement) {
  AppFolder folder;
  folder.AddDraw(QStringLiteral("2024-03-04"), {23, 7, 41, 2, 36}, 4);
  RunningProgram run(folder.Path());
  run.program.Start();
  Avance& avance = run.program.Win<Avance>();
  avance.Depart(QStringLiteral("Compilation des Tables des Sorties"), 4, 1);
  auto* view = dynamic_cast<FormView*>(run.platform.ViewOf(avance));
  ASSERT_NE(view, nullptr);
  EXPECT_TRUE(view->isVisible());
  EXPECT_TRUE(view->isWindow());
  EXPECT_EQ(view->windowTitle(), QString());
  auto* label = qobject_cast<QLabel*>(view->WidgetOf(avance.ui().Label1));
  auto* bar = qobject_cast<QProgressBar*>(view->WidgetOf(avance.ui().Gauge1));
  ASSERT_NE(label, nullptr);
  ASSERT_NE(bar, nullptr);
  EXPECT_EQ(label->text(), QStringLiteral("Compilation des Tables des Sorties"));
  EXPECT_EQ(bar->value(), bar->minimum());

  avance.Increment();
  avance.Increment();
  run.platform.SyncAll();
  EXPECT_EQ(bar->value() - bar->minimum(), (bar->maximum() - bar->minimum()) / 2);
  // Past the maximum the bar stays full.
  for (int i = 0; i < 5; ++i) avance.Increment();
  run.platform.SyncAll();
  EXPECT_EQ(bar->value(), bar->maximum());

  // Centred across, its lower edge on the middle of the screen.
  EXPECT_EQ(view->pos().x(), Px((run.platform.ScreenWidth() - avance.Width) / 2));
  EXPECT_EQ(view->pos().y(), Px(run.platform.ScreenHeight() / 2.0 - avance.Height));

  // A new pass after an unload gets a new view.
  avance.Unload();
  EXPECT_EQ(run.platform.ViewOf(avance), nullptr);
  avance.Depart(QStringLiteral("Preparation de la base de données"), 10, 1);
  auto* again = dynamic_cast<FormView*>(run.platform.ViewOf(avance));
  ASSERT_NE(again, nullptr);
  EXPECT_NE(again, view);
  auto* label2 = qobject_cast<QLabel*>(again->WidgetOf(avance.ui().Label1));
  ASSERT_NE(label2, nullptr);
  EXPECT_EQ(label2->text(), QStringLiteral("Preparation de la base de données"));
  avance.Final();
  EXPECT_EQ(run.platform.MousePointer(), 0);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(PointerTest, WaitPointerIsTheApplicationCursor) {
  QtPlatform platform(QStringLiteral("/tmp"));
  platform.SetMousePointer(11);
  EXPECT_EQ(platform.MousePointer(), 11);
  ASSERT_NE(QApplication::overrideCursor(), nullptr);
  EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  platform.SetMousePointer(11);
  platform.SetMousePointer(0);
  EXPECT_EQ(platform.MousePointer(), 0);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(FilterTest, FileDialogFilterKeepsTheLabels) {
  EXPECT_EQ(QtPlatform::QtFilter(QStringLiteral("Tous les fichiers (*.csv)|*.csv|")),
            QStringLiteral("Tous les fichiers (*.csv)"));
  EXPECT_EQ(QtPlatform::QtFilter(QStringLiteral("Texte (*.txt)|*.txt|Tout (*.*)|*.*")),
            QStringLiteral("Texte (*.txt);;Tout (*.*)"));
  EXPECT_EQ(QtPlatform::QtFilter(QStringLiteral("Historique|*.csv;*.txt")),
            QStringLiteral("Historique (*.csv *.txt)"));
}

TEST(PlatformTest, AppPathAndScreenInTwips) {
  QtPlatform given(QStringLiteral("/some/folder"));
  EXPECT_EQ(given.AppPath(), QStringLiteral("/some/folder"));
  QtPlatform plain;
  EXPECT_EQ(plain.AppPath(), QCoreApplication::applicationDirPath());
  EXPECT_GT(plain.ScreenWidth(), 0);
  EXPECT_EQ(plain.ScreenWidth() % 15, 0);
  EXPECT_EQ(plain.ScreenHeight() % 15, 0);
  const float r = plain.Rnd();
  EXPECT_GE(r, 0.0f);
  EXPECT_LT(r, 1.0f);
}

}  // namespace
}  // namespace kuvo::testing
