#include <QApplication>
#include <QLocale>

#include "core/Program.h"
#include "core/Texts.h"
#include "gui/Pictures.h"
#include "gui/QtPlatform.h"
#include "windows/Windows.h"

int main(int argc, char* argv[]) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Kuvo"));
  QApplication::setApplicationVersion(QStringLiteral("2.0.0"));
  // The program ends through its own Quit, never by a window left alone.
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setWindowIcon(kuvo::AppIcon());
  kuvo::SetRegional(QLocale::system());

  kuvo::QtPlatform platform;
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
