#include <gtest/gtest.h>

#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolButton>

#include "GuiSupport.h"
#include "core/Form.h"
#include "core/Texts.h"
#include "draws/ChargeMiseJour.h"
#include "draws/TirSais.h"
#include "gui/Desktop.h"
#include "gui/FormView.h"
#include "gui/QtPrinter.h"
#include "statistics/TirVerif.h"

namespace kuvo::testing {
namespace {

// HOME moved to a folder of the test's own for its lifetime.
class HomeFolder {
 public:
  HomeFolder() : saved_(qgetenv("HOME")) { qputenv("HOME", dir_.path().toLocal8Bit()); }
  ~HomeFolder() { qputenv("HOME", saved_); }
  QString Path() const { return dir_.path(); }

 private:
  QTemporaryDir dir_;
  QByteArray saved_;
};

TEST(DesktopPrinter, WithoutAPrinterEachReportIsAPdfInTheDocumentsOpenedWhenItEnds) {
  if (!QPrinterInfo::availablePrinters().isEmpty()) GTEST_SKIP() << "this machine has a printer";
  HomeFolder home;
  QTemporaryDir folder;
  TestPlatform platform(folder.path());
  EXPECT_EQ(platform.ThePrinter().outputFormat(), QPrinter::PdfFormat);
  Printer& out = platform.CurrentPrinter();
  out.PrintLine(QStringLiteral("Kuvo"));
  EXPECT_TRUE(platform.opened.isEmpty()) << "nothing is shown before the document ends";
  out.EndDoc();
  ASSERT_EQ(platform.opened.size(), 1);
  const QFileInfo first(platform.opened[0]);
  EXPECT_TRUE(first.isFile());
  EXPECT_GT(first.size(), 0);
  EXPECT_EQ(first.absolutePath(), QDir(home.Path()).filePath(QStringLiteral("Documents")));
  EXPECT_TRUE(first.fileName().startsWith(QStringLiteral("Kuvo-rapport-")));
  EXPECT_TRUE(first.fileName().endsWith(QStringLiteral(".pdf")));
  // Nothing beside the program.
  EXPECT_TRUE(QDir(folder.path()).entryList(QDir::Files).isEmpty());

  // An abandoned document is not shown.
  out.PrintLine(QStringLiteral("Abandon"));
  out.KillDoc();
  EXPECT_EQ(platform.opened.size(), 1);
}

TEST(DesktopTranslations, QtDialogsSpeakTheUsersLanguage) {
  ASSERT_TRUE(InstallQtTranslations(*QCoreApplication::instance(), QLocale(QLocale::French)))
      << "Qt's French translations are not installed (qt6-translations-l10n)";
  EXPECT_NE(QCoreApplication::translate("QFileDialog", "Look in:"), QStringLiteral("Look in:"));
  EXPECT_NE(QCoreApplication::translate("QFileDialog", "File &name:"),
            QStringLiteral("File &name:"));
  EXPECT_EQ(QCoreApplication::translate("QPrintDialog", "Print"), QStringLiteral("Imprimer"));
  // A language Qt has no translation for leaves its English texts.
  EXPECT_FALSE(InstallQtTranslations(*QCoreApplication::instance(), QLocale::c()));
  EXPECT_EQ(QCoreApplication::translate("QFileDialog", "Look in:"), QStringLiteral("Look in:"));
}

TEST(DesktopStore, TheStoreBesideTheProgramIsUsedAsItStands) {
  QTemporaryDir program, user;
  QFile beside(QDir(program.path()).filePath(QStringLiteral("Kuvo.Mdb")));
  ASSERT_TRUE(beside.open(QIODevice::WriteOnly));
  beside.write("mine");
  beside.close();
  EXPECT_EQ(ApplicationFolder(program.path(), user.filePath(QStringLiteral("Kuvo"))),
            program.path());
  EXPECT_FALSE(QFileInfo::exists(user.filePath(QStringLiteral("Kuvo/Kuvo.Mdb"))));
}

TEST(DesktopStore, AnInstalledProgramCopiesTheShippedStoreToTheUsersFolderOnce) {
  QTemporaryDir prefix, user;
  const QDir root(prefix.path());
  ASSERT_TRUE(root.mkpath(QStringLiteral("bin")));
  ASSERT_TRUE(root.mkpath(QStringLiteral("share/kuvo")));
  QFile shipped(root.filePath(QStringLiteral("share/kuvo/Kuvo.Mdb")));
  ASSERT_TRUE(shipped.open(QIODevice::WriteOnly));
  shipped.write("shipped");
  shipped.close();
  // Installed read-only, as a system installation leaves it.
  shipped.setPermissions(QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
  const QString bin = root.filePath(QStringLiteral("bin"));
  const QString data = user.filePath(QStringLiteral("Kuvo"));
  EXPECT_EQ(ShippedStore(bin), QDir::cleanPath(shipped.fileName()));

  EXPECT_EQ(ApplicationFolder(bin, data), data);
  QFile copy(QDir(data).filePath(QStringLiteral("Kuvo.Mdb")));
  ASSERT_TRUE(copy.exists());
  EXPECT_TRUE(copy.permissions() & QFile::WriteOwner) << "the user's store takes his writes";
  ASSERT_TRUE(copy.open(QIODevice::ReadWrite));
  EXPECT_EQ(copy.readAll(), QByteArray("shipped"));
  // The user's own store, favourites and all, is never replaced.
  copy.seek(0);
  copy.write("favourites");
  copy.close();
  EXPECT_EQ(ApplicationFolder(bin, data), data);
  ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
  EXPECT_EQ(copy.readAll(), QByteArray("favourites"));
  EXPECT_FALSE(QFileInfo::exists(QDir(bin).filePath(QStringLiteral("Kuvo.Mdb"))));
}

// A program on the Qt platform with a store of a few draws.
class DesktopWindows : public ::testing::Test {
 protected:
  void SetUp() override {
    saved_ = Regional();
    const int days[] = {2, 5, 9, 12, 16, 19, 23, 26, 30};
    int n = 0;
    for (int month = 1; month <= 6; ++month)
      for (int day : days) {
        ++n;
        folder.AddDraw(
            QDate(2023, month, day).toString(Qt::ISODate),
            {n % 49 + 1, (n * 7) % 49 + 1, (n * 11) % 49 + 1, (n * 13) % 49 + 1, (n * 17) % 49 + 1},
            n % 10 + 1);
      }
  }
  void TearDown() override {
    run.reset();
    SetRegional(saved_);
  }
  void Start() {
    run = std::make_unique<RunningProgram>(folder.Path());
    run->program.Start();
    ASSERT_TRUE(run->platform.fatals.isEmpty()) << run->platform.fatals.join(' ').toStdString();
  }
  template <class W>
  FormView* Show(W& window) {
    run->platform.Run([&window] { window.Show(); });
    return dynamic_cast<FormView*>(run->platform.ViewOf(window));
  }
  AppFolder folder;
  std::unique_ptr<RunningProgram> run;
  QLocale saved_;
};

TEST_F(DesktopWindows, MainWindowIsMaximisedByTheWindowManager) {
  Start();
  QWidget* main = run->platform.MainWidget();
  ASSERT_NE(main, nullptr);
  EXPECT_TRUE(main->isVisible());
  EXPECT_TRUE(main->windowState() & Qt::WindowMaximized);
}

TEST_F(DesktopWindows, TabLeavesTheMultiLineTextBox) {
  Start();
  auto& import = run->program.Win<ChargeMiseJour>();
  FormView* view = Show(import);
  ASSERT_NE(view, nullptr);
  QPlainTextEdit* help = nullptr;
  for (Control* c : import.Controls())
    if (auto* edit = qobject_cast<QPlainTextEdit*>(view->WidgetOf(*c))) help = edit;
  ASSERT_NE(help, nullptr) << "the import's help is a multi-line box";
  EXPECT_TRUE(help->tabChangesFocus());
  const QString before = help->toPlainText();
  QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier, QStringLiteral("\t"));
  QCoreApplication::sendEvent(help, &tab);
  EXPECT_EQ(help->toPlainText(), before) << "a Tab is not typed into the box";
}

// The entry window writes its draw whatever the regional settings: the date
// slot shows the short date, and the store reads it back.
TEST_F(DesktopWindows, EntryWritesItsDrawInEveryLocale) {
  for (const char* name : {"fr_FR", "en_US", "de_DE", "C"}) {
    SCOPED_TRACE(name);
    SetRegional(QLocale(QString::fromLatin1(name)));
    Start();
    auto& entry = run->program.Win<TirSais>();
    FormView* view = Show(entry);
    ASSERT_NE(view, nullptr);
    TirSaisUi& ui = entry.ui();
    const QList<QToolButton*> numbers =
        view->WidgetOf(ui.Toolbar1)->findChildren<QToolButton*>(Qt::FindDirectChildrenOnly);
    const QList<QToolButton*> chance =
        view->WidgetOf(ui.Toolbar2)->findChildren<QToolButton*>(Qt::FindDirectChildrenOnly);
    ASSERT_EQ(numbers.size(), 50);
    ASSERT_EQ(chance.size(), 10);
    for (int n : {23, 7, 41, 2, 36}) numbers[n - 1]->click();
    chance[3]->click();
    auto* calendar = qobject_cast<QCalendarWidget*>(view->WidgetOf(ui.Calendar1));
    ASSERT_NE(calendar, nullptr);
    emit calendar->clicked(QDate(2024, 11, 23));
    auto* slot = qobject_cast<QLabel*>(view->WidgetOf(ui.Label19));
    ASSERT_NE(slot, nullptr);
    EXPECT_EQ(slot->text(), ShortDate(QDate(2024, 11, 23)));
    auto* commit = qobject_cast<QPushButton*>(view->WidgetOf(ui.MiseJour));
    ASSERT_NE(commit, nullptr);
    ASSERT_TRUE(commit->isEnabled());
    commit->click();
    EXPECT_TRUE(run->platform.fatals.isEmpty()) << run->platform.fatals.join(' ').toStdString();
    EXPECT_EQ(slot->text(), QStringLiteral("?"));
    run.reset();
    auto db = Database::OpenDatabase(folder.Path() + QStringLiteral("/Kuvo.Mdb"));
    auto rs =
        db->OpenRecordset(QStringLiteral("select * from Sorties where DateTirage = #11 23 24# and "
                                         "numero1 = 23 and NumeroChance = 4"));
    EXPECT_FALSE(rs->Eof());
    folder.Sql(QStringLiteral("DELETE FROM Sorties WHERE DateTirage = '2024-11-23'"));
  }
}

// After a ranking search the grid shows its first rows, whole, under its header.
TEST_F(DesktopWindows, RankingGridShowsItsFirstRowsAfterASearch) {
  QStringList pairs;
  for (int a = 1; a <= 15; ++a)
    for (int b = a + 1; b <= 15; ++b)
      pairs << QStringLiteral("('%1,%2', %3)")
                   .arg(a, 2, 10, QLatin1Char('0'))
                   .arg(b, 2, 10, QLatin1Char('0'))
                   .arg((a * b) % 7 + 1);
  folder.Sql(QStringLiteral("INSERT INTO Groupe2 VALUES ") + pairs.join(QLatin1Char(',')));
  Start();
  auto& ranking = run->program.Win<TirVerif>();
  FormView* view = Show(ranking);
  ASSERT_NE(view, nullptr);
  auto* size = qobject_cast<QLineEdit*>(view->WidgetOf(ranking.ui().Text2));
  ASSERT_NE(size, nullptr);
  size->setText(QStringLiteral("2"));
  run->platform.Run([&ranking] {
    ranking.ui().Text2.Text = QStringLiteral("2");
    ranking.ui().Combo1.UserPick(1);
  });
  auto* search = qobject_cast<QPushButton*>(view->WidgetOf(ranking.ui().ChercheSorties));
  ASSERT_NE(search, nullptr);
  search->click();
  auto* table = qobject_cast<QTableView*>(view->WidgetOf(ranking.ui().Grille));
  ASSERT_NE(table, nullptr);
  ASSERT_TRUE(table->isVisible());
  ASSERT_GT(table->model()->rowCount(), 50);
  EXPECT_GT(table->verticalScrollBar()->maximum(), 0);
  EXPECT_EQ(table->verticalScrollBar()->value(), 0);
  EXPECT_EQ(table->rowAt(0), 0);
  EXPECT_EQ(table->rowViewportPosition(0), 0) << "the first row sits right under the header";
  EXPECT_EQ(table->model()->index(0, 0).data().toString(), ranking.ui().Grille.TextMatrix(1, 0));
  EXPECT_EQ(table->verticalScrollMode(), QAbstractItemView::ScrollPerItem);
}

}  // namespace
}  // namespace kuvo::testing
