#include "gui/QtPlatform.h"

#include <QApplication>
#include <QCoreApplication>
#include <QCursor>
#include <QDesktopServices>
#include <QDir>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QScreen>
#include <QTime>
#include <QUrl>
#include <cmath>
#include <cstdlib>

#include "core/Errors.h"
#include "core/Form.h"
#include "core/Program.h"
#include "gui/DesignPalette.h"
#include "gui/Desktop.h"
#include "gui/FormView.h"
#include "gui/MainWindowView.h"
#include "gui/QtPrinter.h"

namespace kuvo {

namespace {

// Pumping the event loop costs about 2 microseconds even with nothing pending;
// a yield in a loop over every character of a file pumps at most this often.
constexpr qint64 kPumpEveryNs = 1'000'000;
// Views are brought in step at most this often during a long pass.
constexpr qint64 kSyncEveryNs = 20'000'000;

// Texts keep the line break of the platform they were written for (line feed
// then carriage return); a Qt label wants line feeds alone.
QString Lines(QString text) {
  text.replace(QLatin1String("\n\r"), QLatin1String("\n"));
  text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  return text;
}

}  // namespace

QtPlatform::QtPlatform(QString appPath) : appPath_(std::move(appPath)) { clock_.start(); }

QtPlatform::~QtPlatform() {
  // The program is gone: widgets hidden below (a focus leaving a box) run nothing.
  program_ = nullptr;
  qtPrinter_.reset();
  printer_.reset();
  // The windows' controls may be gone already: every view lets go of them
  // before any widget is destroyed, the main window's last, since hiding it
  // hides the views of the child windows too.
  for (const bool main : {false, true})
    for (auto& [form, entry] : views_)
      if (entry.guard && (dynamic_cast<MainWindowView*>(entry.view) != nullptr) == main)
        entry.view->Detach();
  for (auto& [form, entry] : views_)
    if (entry.guard) delete entry.guard.data();
  views_.clear();
}

void QtPlatform::Run(const std::function<void()>& handler) {
  if (!program_) return;
  try {
    program_->RunEvent(handler);
  } catch (const ProgramEnd&) {
    // The program has ended; nothing more is run.
  } catch (const VbError& e) {
    ReportFatal(e.Number(), e.Description());
    EndProgram();
  }
  SyncAll();
}

void QtPlatform::SyncAll() {
  lastSync_ = clock_.nsecsElapsed();
  dirty_ = false;
  // A view may go while others sync (nothing runs logic here, but be safe).
  std::vector<FormWindow*> views;
  views.reserve(views_.size());
  for (auto& [form, entry] : views_)
    if (entry.guard) views.push_back(entry.view);
  for (FormWindow* v : views) v->Sync();
  // A modal window hidden by its code ends its loop as an unload does.
  for (const ModalLoop& m : modal_)
    if (!m.form->Loaded() || !m.form->Visible) m.loop->quit();
}

FormWindow* QtPlatform::ViewOf(const Form& form) const {
  auto it = views_.find(&form);
  if (it == views_.end() || !it->second.guard) return nullptr;
  return it->second.view;
}

MainWindowView* QtPlatform::MainWindow() const {
  for (auto& [form, entry] : views_)
    if (entry.guard)
      if (auto* main = dynamic_cast<MainWindowView*>(entry.view)) return main;
  return nullptr;
}

QWidget* QtPlatform::MainWidget() const { return MainWindow(); }

QMdiArea* QtPlatform::WorkArea() const {
  MainWindowView* main = MainWindow();
  return main ? main->WorkArea() : nullptr;
}

QWidget* QtPlatform::DialogParent() const {
  if (QWidget* active = QApplication::activeWindow()) return active;
  return MainWidget();
}

int QtPlatform::MsgBox(const QString& prompt, int style, const QString& title) {
  SyncAll();
  QMessageBox box(DialogParent());
  // The program's messages in the colours of its windows.
  box.setPalette(DesignPalette());
  box.setWindowTitle(title);
  box.setTextFormat(Qt::PlainText);
  box.setText(Lines(prompt));
  switch (style & 0x70) {
    case Mb::Critical: box.setIcon(QMessageBox::Critical); break;
    case Mb::Question: box.setIcon(QMessageBox::Question); break;
    case Mb::Exclamation: box.setIcon(QMessageBox::Warning); break;
    case Mb::Information: box.setIcon(QMessageBox::Information); break;
    default: box.setIcon(QMessageBox::NoIcon); break;
  }
  struct Choice {
    QMessageBox::StandardButton button;
    int answer;
  };
  std::vector<Choice> choices;
  switch (style & 0x7) {
    case Mb::OkCancel: choices = {{QMessageBox::Ok, 1}, {QMessageBox::Cancel, 2}}; break;
    case 2:
      choices = {{QMessageBox::Abort, 3}, {QMessageBox::Retry, 4}, {QMessageBox::Ignore, 5}};
      break;
    case 3:
      choices = {{QMessageBox::Yes, 6}, {QMessageBox::No, 7}, {QMessageBox::Cancel, 2}};
      break;
    case Mb::YesNo: choices = {{QMessageBox::Yes, 6}, {QMessageBox::No, 7}}; break;
    case 5: choices = {{QMessageBox::Retry, 4}, {QMessageBox::Cancel, 2}}; break;
    default: choices = {{QMessageBox::Ok, 1}}; break;
  }
  QMessageBox::StandardButtons buttons;
  for (const Choice& c : choices) buttons |= c.button;
  box.setStandardButtons(buttons);
  // 256 and 512 make the second or third button the default one.
  const size_t def = (style & 0x300) == 0x100 ? 1 : (style & 0x300) == 0x200 ? 2 : 0;
  if (def < choices.size()) box.setDefaultButton(choices[def].button);
  const bool wait = overrideCursor_;
  if (wait) QApplication::setOverrideCursor(Qt::ArrowCursor);
  box.exec();
  if (wait) QApplication::restoreOverrideCursor();
  const auto clicked = box.standardButton(box.clickedButton());
  for (const Choice& c : choices)
    if (c.button == clicked) return c.answer;
  // Closed without a button: the cancel answer when there is one, else the first.
  for (const Choice& c : choices)
    if (c.button == QMessageBox::Cancel) return c.answer;
  return choices.front().answer;
}

void QtPlatform::DoEvents() {
  const qint64 now = clock_.nsecsElapsed();
  if (!dirty_ && now - lastPump_ < kPumpEveryNs) return;
  lastPump_ = now;
  if (dirty_ || now - lastSync_ >= kSyncEveryNs) SyncAll();
  QCoreApplication::processEvents();
}

void QtPlatform::SetMousePointer(int pointer) {
  pointer_ = pointer;
  Qt::CursorShape shape;
  switch (pointer) {
    case 1: shape = Qt::ArrowCursor; break;
    case 2: shape = Qt::CrossCursor; break;
    case 3: shape = Qt::IBeamCursor; break;
    case Pointer::Wait: shape = Qt::WaitCursor; break;
    case 13: shape = Qt::BusyCursor; break;
    default:
      if (overrideCursor_) QApplication::restoreOverrideCursor();
      overrideCursor_ = false;
      return;
  }
  if (overrideCursor_) {
    QApplication::changeOverrideCursor(QCursor(shape));
  } else {
    QApplication::setOverrideCursor(QCursor(shape));
    overrideCursor_ = true;
  }
}

QString QtPlatform::QtFilter(const QString& filter) {
  const QStringList parts = filter.split(QLatin1Char('|'));
  QStringList out;
  for (int i = 0; i < parts.size(); i += 2) {
    const QString& label = parts[i];
    const QString pattern = parts.value(i + 1);
    if (label.isEmpty() && pattern.isEmpty()) continue;
    // Qt reads the patterns from the label's parentheses; add them when missing.
    if (label.contains(QLatin1Char('(')) || pattern.isEmpty())
      out << label;
    else
      out << QStringLiteral("%1 (%2)").arg(
          label, QString(pattern).replace(QLatin1Char(';'), QLatin1Char(' ')));
  }
  return out.join(QLatin1String(";;"));
}

QString QtPlatform::ShowOpen(const QString& filter) {
  SyncAll();
  return QFileDialog::getOpenFileName(DialogParent(), QString(), QString(), QtFilter(filter));
}

QPrinter& QtPlatform::ThePrinter() {
  if (!printer_) {
    printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    // Without a printer on the machine, each report goes to a new PDF file in
    // the user's documents folder.
    if (QPrinterInfo::availablePrinters().isEmpty()) {
      printer_->setOutputFormat(QPrinter::PdfFormat);
      reportFile_ = NewReportFile();
      printer_->setOutputFileName(reportFile_);
    }
  }
  return *printer_;
}

void QtPlatform::ShowPrinterSetup() {
  SyncAll();
  QPrintDialog dialog(&ThePrinter(), DialogParent());
  dialog.exec();
}

Printer& QtPlatform::CurrentPrinter() {
  if (!qtPrinter_) {
    qtPrinter_ = std::make_unique<QtPrinter>(ThePrinter());
    qtPrinter_->OnStart = [this] {
      // A new file for each report, unless the printer set-up chose another.
      if (!reportFile_.isEmpty() && printer_->outputFileName() == reportFile_) {
        reportFile_ = NewReportFile();
        printer_->setOutputFileName(reportFile_);
      }
    };
    qtPrinter_->OnEnd = [this] {
      // Printed to a file: the user sees it as a printer would have shown it.
      const QString file = printer_->outputFileName();
      if (printer_->outputFormat() == QPrinter::PdfFormat && !file.isEmpty() &&
          QFileInfo(file).isFile())
        OpenDocument(file);
    };
  }
  return *qtPrinter_;
}

void QtPlatform::OpenDocument(const QString& path) {
  QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

void QtPlatform::ShellExecute(const QString&, const QString& target) {
  QDesktopServices::openUrl(QUrl(target));
}

QDate QtPlatform::Today() { return QDate::currentDate(); }

double QtPlatform::SecondsSinceMidnight() {
  return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

int QtPlatform::ScreenWidth() const {
  const QScreen* s = QGuiApplication::primaryScreen();
  return static_cast<int>(
      std::lround((s ? s->availableGeometry().width() : 1024) * TwipsPerPixel()));
}

int QtPlatform::ScreenHeight() const {
  const QScreen* s = QGuiApplication::primaryScreen();
  return static_cast<int>(
      std::lround((s ? s->availableGeometry().height() : 768) * TwipsPerPixel()));
}

QString QtPlatform::AppPath() const {
  return appPath_.isEmpty() ? QCoreApplication::applicationDirPath() : appPath_;
}

void QtPlatform::FormLoaded(Form& form) {
  dirty_ = true;
  auto old = views_.find(&form);
  if (old != views_.end()) {
    if (old->second.guard) old->second.view->Detach();
    views_.erase(old);
  }
  // The main window, first of the program's list, has a view of its own.
  if (program_ && program_->MainFormIfMade() == &form) {
    auto* view = new MainWindowView(*this, form);
    views_[&form] = {view, view};
  } else {
    auto* view = new FormView(*this, form);
    views_[&form] = {view, view};
  }
}

void QtPlatform::FormShown(Form& form, bool modal) {
  dirty_ = true;
  if (FormWindow* view = ViewOf(form)) view->ShowWindow(modal);
}

void QtPlatform::RunModal(Form& form) {
  if (!form.Loaded() || !form.Visible) return;
  QEventLoop loop;
  modal_.push_back({&form, &loop});
  SyncAll();
  if (form.Loaded() && form.Visible) loop.exec(QEventLoop::DialogExec);
  for (auto it = modal_.begin(); it != modal_.end(); ++it)
    if (it->loop == &loop) {
      modal_.erase(it);
      break;
    }
  dirty_ = true;
}

void QtPlatform::QuitModal(const Form& form) {
  for (const ModalLoop& m : modal_)
    if (m.form == &form) m.loop->quit();
}

void QtPlatform::FormUnloaded(Form& form) {
  dirty_ = true;
  auto it = views_.find(&form);
  if (it != views_.end()) {
    if (it->second.guard) it->second.view->Detach();
    views_.erase(it);
  }
  QuitModal(form);
}

void QtPlatform::FormHidden(Form& form) {
  dirty_ = true;
  if (FormWindow* view = ViewOf(form)) view->Sync();
  QuitModal(form);
}

void QtPlatform::FocusChanged(Control& control) {
  if (FormWindow* view = ViewOf(control.Parent())) {
    view->Sync();
    view->Focus(control);
  }
}

void QtPlatform::RefreshControl(Control& control) {
  if (FormWindow* view = ViewOf(control.Parent())) view->RefreshNow(control);
}

QString QtPlatform::FatalText(int number, const QString& text) {
  return QStringLiteral("Erreur d'exécution '%1':\n\n%2").arg(number).arg(text);
}

void QtPlatform::ReportFatal(int number, const QString& text) {
  if (overrideCursor_) QApplication::restoreOverrideCursor();
  overrideCursor_ = false;
  QMessageBox::critical(DialogParent(), QStringLiteral("Kuvo"), FatalText(number, text));
}

void QtPlatform::EndProgram() {
  // What was written is committed by the program before it ends.
  std::exit(0);
}

}  // namespace kuvo
