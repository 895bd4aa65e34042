#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

#include "core/Texts.h"

// The GUI tests need a QApplication before any widget; CTest runs them on Qt's
// offscreen platform.
int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" KUVO_TEST_SCREENS "/desk.json");
  // Whatever the tests write in the user's folders (reports printed without a
  // printer) goes to a home of their own.
  QTemporaryDir home;
  qputenv("HOME", home.path().toLocal8Bit());
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Kuvo"));
  QApplication::setQuitOnLastWindowClosed(false);
  kuvo::SetRegional(QLocale(QLocale::French, QLocale::France));
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
