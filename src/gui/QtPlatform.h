#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QString>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "core/Platform.h"

class QEventLoop;
class QMdiArea;
class QPrinter;
class QWidget;

namespace kuvo {

class Program;
class FormWindow;
class MainWindowView;
class QtPrinter;

// The platform on Qt Widgets: real dialogs, printer, clock and screen, and one
// view per loaded window kept in step with the window's state.
class QtPlatform : public Platform {
 public:
  // `appPath` replaces the executable's folder (tests).
  explicit QtPlatform(QString appPath = {});
  ~QtPlatform() override;

  void Attach(Program& program) { program_ = &program; }
  Program* TheProgram() const { return program_; }

  // Starts the program and serves its events until it ends, then lets go of
  // the windows: the outermost loop returns here, and so does `main`.
  int Exec();
  // Runs a user event through the program, then brings the views in step.
  // Any error that reaches it ends the program through the error report.
  void Run(const std::function<void()>& handler);
  // Ends the program as the end of the user's session does: no window is
  // unloaded and nothing is asked.
  void EndSession();
  // The views let go of the windows and go; the program may then be destroyed.
  void Release();
  // Takes a view's window away once no handler of any view is running, so
  // that no view is freed under its own feet.
  void Dispose(QWidget* frame);
  // Brings every view in step with its window's state.
  void SyncAll();

  FormWindow* ViewOf(const Form& form) const;
  MainWindowView* MainWindow() const;
  // The main window as a widget, parent of the other top-level windows.
  QWidget* MainWidget() const;
  // The work area of the main window, when it is up.
  QMdiArea* WorkArea() const;
  // The parent for dialogs: the active window, or the main window.
  QWidget* DialogParent() const;
  QPrinter& ThePrinter();
  // Shows a document in the desktop's viewer: the report printed to a PDF
  // file on a machine without a printer.
  virtual void OpenDocument(const QString& path);

  int MsgBox(const QString& prompt, int style, const QString& title) override;
  void DoEvents() override;
  int MousePointer() const override { return pointer_; }
  void SetMousePointer(int pointer) override;
  QString ShowOpen(const QString& filter) override;
  void ShowPrinterSetup() override;
  Printer& CurrentPrinter() override;
  void ShellExecute(const QString& verb, const QString& target) override;
  QDate Today() override;
  double SecondsSinceMidnight() override;
  float Rnd() override { return random_.Next(); }
  void Randomize() override { random_.Randomize(SecondsSinceMidnight()); }
  int ScreenWidth() const override;
  int ScreenHeight() const override;
  QString AppPath() const override;

  void FormLoaded(Form& form) override;
  void FormShown(Form& form, bool modal) override;
  void RunModal(Form& form) override;
  void FormUnloaded(Form& form) override;
  void FormHidden(Form& form) override;
  void FocusChanged(Control& control) override;
  void RefreshControl(Control& control) override;

  void ReportFatal(int number, const QString& text) override;
  [[noreturn]] void EndProgram() override;

  // The filter of the file-open dialog in Qt's form: "label|pattern|..." gives
  // "label;;label".
  static QString QtFilter(const QString& filter);
  // The text of the fatal error report.
  static QString FatalText(int number, const QString& text);

 private:
  struct ViewEntry {
    FormWindow* view;
    QPointer<QWidget> guard;  // gone when Qt deleted the view
  };
  struct ModalLoop {
    const Form* form;
    QEventLoop* loop;
  };
  void QuitModal(const Form& form);
  // Runs `body` as an event: what escapes it is reported and ends the program.
  void Guarded(const std::function<void()>& body);
  void Fail(int number, const QString& text);
  // After a nested loop: once the program ended, the handler that opened the
  // loop unwinds too.
  void UnwindIfEnded() const;

  QString appPath_;
  Program* program_ = nullptr;
  std::map<const Form*, ViewEntry> views_;
  std::vector<ModalLoop> modal_;
  // Events running on the stack, and the windows waiting for it to empty.
  int depth_ = 0;
  std::vector<QPointer<QWidget>> disposed_;
  int pointer_ = 0;
  bool overrideCursor_ = false;
  RandomGenerator random_;
  std::unique_ptr<QPrinter> printer_;
  std::unique_ptr<QtPrinter> qtPrinter_;
  // The PDF file the last report went to when the machine has no printer.
  QString reportFile_;

  // DoEvents is called once per character of a long file: it pumps the event
  // loop at most every millisecond and syncs the views at most every 20 ms,
  // unless a window came or went since.
  QElapsedTimer clock_;
  qint64 lastPump_ = 0;
  qint64 lastSync_ = 0;
  bool dirty_ = true;
};

}  // namespace kuvo
