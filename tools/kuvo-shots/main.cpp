// kuvo-shots STORE FOLDER: pictures of Kuvo's windows for the players' manual.
// Runs the real program and its views on a copy of STORE, acts on each window
// as a player would, and writes one PNG per picture into FOLDER. The date, the
// clock and the screen are fixed, so that two runs give the same bytes.
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLocale>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <cstdio>
#include <functional>

#include "about/Propos.h"
#include "core/Avance.h"
#include "core/Form.h"
#include "core/MDIKuvo.h"
#include "core/Program.h"
#include "core/Texts.h"
#include "draws/ChargeMiseJour.h"
#include "draws/TirModi.h"
#include "draws/TirSais.h"
#include "draws/TirSup.h"
#include "favourites/NumPref.h"
#include "gui/FormWindow.h"
#include "gui/Pictures.h"
#include "gui/QtPlatform.h"
#include "proposals/AleaBase.h"
#include "proposals/AleaOrdi.h"
#include "statistics/NumerosAffines.h"
#include "statistics/TirBase.h"
#include "statistics/TirGrou.h"
#include "statistics/TirVerif.h"
#include "windows/Windows.h"

namespace kuvo {
namespace {

// The day the pictures are taken: two days after the last shipped draw.
const QDate kToday(2026, 9, 23);

// The real platform with a fixed clock, no message box waiting for a click and
// no browser: what would have been shown is written on the console.
class ShotPlatform : public QtPlatform {
 public:
  using QtPlatform::QtPlatform;
  std::function<void()> onYield;
  // When set, the next message box is shown for real, handed here once on
  // screen, then closed with its default button.
  std::function<void()> onBox;
  QDate Today() override { return kToday; }
  double SecondsSinceMidnight() override { return 36000.0; }
  int MsgBox(const QString& prompt, int style, const QString& title) override {
    std::printf("message : %s\n", prompt.toUtf8().constData());
    if (!onBox) return Mb::AnswerOk;
    QTimer::singleShot(0, [this] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (!box) return;
      onBox();
      onBox = nullptr;
      if (QPushButton* button = box->defaultButton())
        button->click();
      else
        box->close();
    });
    return QtPlatform::MsgBox(prompt, style, title);
  }
  void ShellExecute(const QString&, const QString&) override {}
  void OpenDocument(const QString&) override {}
  void DoEvents() override {
    QtPlatform::DoEvents();
    if (onYield) onYield();
  }
};

class Shots {
 public:
  Shots(ShotPlatform& platform, Program& program, QString folder)
      : platform_(platform), program_(program), folder_(std::move(folder)) {}

  // Runs a user's action through the program and brings the views in step.
  void Act(const std::function<void()>& action) {
    platform_.Run(action);
    Settle();
  }
  // Pictures of the main window, with any other top-level window of the
  // program painted over it where it stands.
  void Main(const char* name) {
    Settle();
    QWidget* main = platform_.MainWidget();
    QImage image = main->grab().toImage();
    QPainter painter(&image);
    for (QWidget* w : QApplication::topLevelWidgets()) {
      if (w == main || !w->isVisible() || w->windowType() == Qt::Desktop) continue;
      // Drawn without the desktop's frame: a thin line stands for it.
      const QRect at(w->geometry().topLeft() - main->geometry().topLeft(), w->size());
      painter.drawImage(at.topLeft(), w->grab().toImage());
      painter.setPen(QColor(96, 96, 96));
      painter.drawRect(at.adjusted(-1, -1, 0, 0));
    }
    painter.end();
    Save(name, image);
  }
  // A picture of one window with its frame.
  void Window(const char* name, Form& form) {
    Settle();
    FormWindow* view = platform_.ViewOf(form);
    if (!view) {
      std::fprintf(stderr, "kuvo-shots : la fenêtre %s n'est pas à l'écran\n",
                   form.Name().toUtf8().constData());
      ++failures_;
      return;
    }
    Save(name, view->Frame()->grab().toImage());
  }
  int Failures() const { return failures_; }

 private:
  void Settle() {
    platform_.SyncAll();
    for (int i = 0; i < 3; ++i) QApplication::processEvents();
    platform_.SyncAll();
  }
  void Save(const char* name, QImage image) {
    image = image.convertToFormat(QImage::Format_RGB32);
    // No time nor software stamp in the file: the same picture, the same bytes.
    image.setText(QString(), QString());
    const QString path = QDir(folder_).filePath(QLatin1String(name) + QStringLiteral(".png"));
    if (!image.save(path, "PNG")) {
      std::fprintf(stderr, "kuvo-shots : impossible d'écrire %s\n", path.toUtf8().constData());
      ++failures_;
      return;
    }
    std::printf("%s\n", path.toUtf8().constData());
  }

  ShotPlatform& platform_;
  Program& program_;
  QString folder_;
  int failures_ = 0;
};

// Clicks the key of `number` on a keypad, as the mouse does.
void Key(Toolbar& keypad, int number) { keypad.UserClick(number); }

// Every window in the order a player meets them, each in a state worth showing.
void TakeWindows(Shots& shots, ShotPlatform& platform, Program& program) {
  MDIKuvo& mdi = program.Win<MDIKuvo>();
  shots.Main("fenetre-principale");

  // A new draw keyed in, not yet recorded.
  shots.Act([&] { mdi.M_GestionSaisie_Click(); });
  TirSais& sais = program.Win<TirSais>();
  shots.Act([&] {
    for (int n : {3, 17, 25, 38, 44}) Key(sais.ui().Toolbar1, n);
    Key(sais.ui().Toolbar2, 7);
    sais.ui().Calendar1.UserPick(kToday);
  });
  shots.Window("saisie", sais);

  // The draw of the last date, its second number chosen for a change.
  shots.Act([&] { mdi.M_GestionModif_Click(); });
  TirModi& modi = program.Win<TirModi>();
  shots.Act([&] {
    ComboBox& dates = modi.ui().Combo1;
    dates.UserPick(dates.ListCount() - 1);
    modi.ui().Grille.UserClick(1, 1);
    modi.ui().Label16(1).UserMouseUp(1, 0, 0, 0);
  });
  shots.Window("modification", modi);

  shots.Act([&] { mdi.M_GestionSupprimer_Click(); });
  TirSup& sup = program.Win<TirSup>();
  shots.Act([&] {
    ComboBox& dates = sup.ui().Combo1;
    dates.UserPick(dates.ListCount() - 1);
    sup.ui().Grille.UserClick(1, 1);
  });
  shots.Window("suppression", sup);

  shots.Act([&] { mdi.M_MiseJour_Click(); });
  shots.Window("mise-a-jour", program.Win<ChargeMiseJour>());
  shots.Main("mise-a-jour-ecran");

  shots.Act([&] { mdi.M_StatToutes_Click(); });
  TirBase& base = program.Win<TirBase>();
  shots.Window("visualisation", base);
  shots.Act([&] { base.ui().GraphiquePlus.UserClick(); });
  shots.Window("visualisation-graphique", base);

  // The dates on which 7 and 23 came out together, and the draw of the first.
  shots.Act([&] { mdi.M_StatGroupes_Click(); });
  TirGrou& grou = program.Win<TirGrou>();
  shots.Act([&] {
    Key(grou.ui().Toolbar1, 7);
    Key(grou.ui().Toolbar1, 23);
    grou.ui().Recherche.UserClick();
  });
  shots.Act([&] {
    if (grou.ui().Liste.ListCount() > 0) grou.ui().Liste.UserPress(0, 1, 0, 0, 0);
  });
  shots.Window("sorties-groupe", grou);

  shots.Act([&] { mdi.M_NumAfines_Click(); });
  NumerosAffines& affines = program.Win<NumerosAffines>();
  shots.Act([&] {
    Key(affines.ui().Toolbar1, 7);
    affines.ui().Recherche.UserClick();
  });
  shots.Window("numeros-affines", affines);

  // The pairs, the most frequent first.
  shots.Act([&] { mdi.M_StatVerif_Click(); });
  TirVerif& verif = program.Win<TirVerif>();
  shots.Act([&] {
    verif.ui().Text2.UserType(QStringLiteral("2"));
    ComboBox& order = verif.ui().Combo1;
    order.UserPick(static_cast<int>(order.List.indexOf(QStringLiteral("Sorties"))));
    verif.ui().Option2.UserClick();
    verif.ui().ChercheSorties.UserClick();
  });
  shots.Window("sorties-groupees", verif);

  // The five hottest numbers since the first date of the list.
  shots.Act([&] { mdi.M_AleatoireBase_Click(); });
  AleaBase& aleaBase = program.Win<AleaBase>();
  shots.Act([&] {
    aleaBase.ui().Combo1.UserPick(0);
    aleaBase.ui().Chauds.UserClick();
    aleaBase.ui().Generer.UserClick();
  });
  shots.Window("alea-base", aleaBase);

  // Numbers at random, with two numbers of the player's own.
  shots.Act([&] { mdi.M_AleatoireGeneres_Click(); });
  AleaOrdi& aleaOrdi = program.Win<AleaOrdi>();
  shots.Act([&] {
    aleaOrdi.ui().Predefinis.UserClick();
    Key(aleaOrdi.ui().Toolbar1, 9);
    Key(aleaOrdi.ui().Toolbar1, 31);
    aleaOrdi.ui().Generer.UserClick();
  });
  shots.Window("alea-ordinateur", aleaOrdi);

  // Two favourites kept, and the draw of the day compared with them.
  shots.Act([&] { mdi.M_StatMesNumeros_Click(); });
  NumPref& pref = program.Win<NumPref>();
  const auto favourite = [&](std::initializer_list<int> numbers, int chance) {
    shots.Act([&] {
      for (int n : numbers) Key(pref.ui().Toolbar1, n);
      Key(pref.ui().Toolbar2, chance);
      pref.ui().Saisir.UserClick();
    });
  };
  favourite({4, 11, 19, 28, 42}, 3);
  favourite({7, 13, 23, 36, 49}, 9);
  shots.Act([&] {
    for (int n : {7, 11, 23, 30, 42}) Key(pref.ui().Toolbar1, n);
    Key(pref.ui().Toolbar2, 9);
  });
  shots.Window("tirages-preferes", pref);
  // The answer of the comparison, over the main window.
  platform.onBox = [&] { shots.Main("tirages-preferes-comparaison"); };
  shots.Act([&] { pref.ui().Compare.UserClick(); });

  // The about window, from the 50th key of a keypad.
  shots.Act([&] { mdi.M_AleatoireGeneres_Click(); });
  // Its animation stands still on its first picture, whatever the clock.
  shots.Act([&] {
    Key(program.Win<AleaOrdi>().ui().Toolbar1, 50);
    program.Win<Propos>().ui().Timer1.Enabled = false;
  });
  shots.Window("a-propos", program.Win<Propos>());
  shots.Act([&] { program.Win<Propos>().ui().Ok.UserClick(); });
}

}  // namespace
}  // namespace kuvo

int main(int argc, char** argv) {
  using namespace kuvo;
  QApplication app(argc, argv);
  if (argc != 3) {
    std::fprintf(stderr, "usage : kuvo-shots MAGASIN DOSSIER\n");
    return 2;
  }
  QApplication::setApplicationName(QStringLiteral("Kuvo"));
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setWindowIcon(AppIcon());
  // A text cursor that does not blink is drawn the same in every picture.
  QApplication::setCursorFlashTime(0);
  SetRegional(QLocale(QLocale::French, QLocale::France));

  QTemporaryDir work;
  const QString store = work.filePath(QStringLiteral("Kuvo.Mdb"));
  if (!QFile::copy(QString::fromLocal8Bit(argv[1]), store)) {
    std::fprintf(stderr, "kuvo-shots : impossible de copier %s\n", argv[1]);
    return 1;
  }
  const QString folder = QString::fromLocal8Bit(argv[2]);
  QDir().mkpath(folder);

  int failures = 0;
  try {
    {
      // The first start compiles the shipped history: a picture half-way
      // through the compile of the group tables.
      ShotPlatform platform(work.path());
      Program program(platform, AllWindows());
      platform.Attach(program);
      Shots shots(platform, program, folder);
      bool taken = false;
      platform.onYield = [&] {
        Avance& avance = program.Win<Avance>();
        if (taken || !avance.Loaded()) return;
        const ProgressBar& bar = avance.ui().Gauge1;
        if (avance.ui().Label1.Caption.startsWith(QStringLiteral("Compilation")) &&
            bar.Value() >= bar.Max() / 2) {
          taken = true;
          shots.Main("premier-demarrage");
        }
      };
      program.Start();
      platform.onYield = nullptr;
      failures += shots.Failures() + (taken ? 0 : 1);
    }
    // The status bar is written at start-up only: the next start shows it.
    ShotPlatform platform(work.path());
    Program program(platform, AllWindows());
    platform.Attach(program);
    Shots shots(platform, program, folder);
    program.Start();
    TakeWindows(shots, platform, program);
    failures += shots.Failures();
  } catch (const ProgramEnd&) {
    std::fprintf(stderr, "kuvo-shots : le programme s'est arrêté\n");
    return 1;
  }
  QApplication::processEvents();
  std::printf("ok\n");
  return failures == 0 ? 0 : 1;
}
