#include <QApplication>
#include <QLocale>
#include <QStandardPaths>

#include "core/Program.h"
#include "core/Texts.h"
#include "gui/Desktop.h"
#include "gui/Pictures.h"
#include "gui/QtPlatform.h"
#include "windows/Windows.h"

int main(int argc, char* argv[]) {
  // Without a graphical session the program says so in one line and ends.
  kuvo::DisplayGuard display;
  QApplication app(argc, argv);
  display.Started();
  QApplication::setApplicationName(QStringLiteral("Kuvo"));
  QApplication::setApplicationVersion(QStringLiteral(KUVO_VERSION));
  QApplication::setDesktopFileName(QStringLiteral("kuvo"));
  // The program ends through its own Quit, never by a window left alone.
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setWindowIcon(kuvo::AppIcon());
  kuvo::SetRegional(QLocale::system());
  // Qt's own dialogs (file, printer set-up) in the user's language.
  kuvo::InstallQtTranslations(app, QLocale::system());

  // The store beside the program, or in the user's data folder where the
  // shipped one is copied at the first run.
  const QString folder =
      kuvo::ApplicationFolder(QCoreApplication::applicationDirPath(),
                              QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
  kuvo::QtPlatform platform(folder);
  kuvo::Program program(platform, kuvo::AllWindows());
  platform.Attach(program);
  try {
    program.Start();
  } catch (const kuvo::ProgramEnd&) {
    return 0;
  }
  if (program.Ended()) return 0;
  return QApplication::exec();
}
