#pragma once

#include <QLocale>
#include <QString>
#include <functional>
#include <memory>

class QCoreApplication;
class QSocketNotifier;

// The program's place on a desktop: the graphical session it needs, Qt's own
// texts in the user's language, the folder of its store and of its reports.
namespace kuvo {

// The line said when there is no graphical session to show the program in.
QString NoDisplayText();

// Before the application is made: without a display (no DISPLAY nor
// WAYLAND_DISPLAY, or one that does not answer), says so in one French line on
// the error output and ends the process with status 1, instead of Qt's abort.
// Returns once the application is up.
class DisplayGuard {
 public:
  DisplayGuard();
  // The application is up: messages go their usual way again.
  void Started();
};

// While it lives, SIGTERM, SIGHUP and SIGINT (the session ending, the terminal
// closing) run `end` from the event loop instead of killing the process.
class SessionEnd {
 public:
  explicit SessionEnd(std::function<void()> end);
  ~SessionEnd();
  SessionEnd(const SessionEnd&) = delete;
  SessionEnd& operator=(const SessionEnd&) = delete;

 private:
  std::function<void()> end_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

// Loads Qt's translations of its dialogs for `locale` (file dialog, printer
// set-up, message box buttons); false when there are none for it.
bool InstallQtTranslations(QCoreApplication& app, const QLocale& locale);

// The shipped store as installed: beside the program in a build, under
// share/kuvo of the installation otherwise; empty when there is none.
QString ShippedStore(const QString& programFolder);

// The application folder, where Kuvo.Mdb lives: the program's own folder when
// the store is there; otherwise the user's data folder, into which the shipped
// store is copied at the first run.
QString ApplicationFolder(const QString& programFolder, const QString& userFolder);

// Where a report printed without a printer goes: a new PDF file in the user's
// documents folder.
QString NewReportFile();

}  // namespace kuvo
