#pragma once

#include <QDate>
#include <QString>

namespace kuvo {

class Form;
class Control;

// Message box styles and answers, as the program gives and reads them.
namespace Mb {
constexpr int OkOnly = 0;
constexpr int OkCancel = 1;
constexpr int YesNo = 4;
constexpr int Critical = 16;
constexpr int Question = 32;
constexpr int Exclamation = 48;
constexpr int Information = 64;
constexpr int AnswerOk = 1;
constexpr int AnswerCancel = 2;
constexpr int AnswerYes = 6;
constexpr int AnswerNo = 7;
}  // namespace Mb

// Screen-wide mouse pointers.
namespace Pointer {
constexpr int Default = 0;
constexpr int Wait = 11;
}  // namespace Pointer

// The printer the report goes to: the platform's current printer.
class Printer {
 public:
  virtual ~Printer() = default;
  virtual QString FontName() const = 0;
  virtual void SetFontName(const QString& name) = 0;
  virtual double FontSize() const = 0;
  virtual void SetFontSize(double size) = 0;
  virtual bool FontBold() const = 0;
  virtual void SetFontBold(bool bold) = 0;
  // Prints a text and ends the line ("" gives an empty line).
  virtual void PrintLine(const QString& text) = 0;
  // The current page number, from 1.
  virtual int Page() const = 0;
  virtual void NewPage() = 0;
  // Abandons the document being printed.
  virtual void KillDoc() = 0;
  // Ends the document and sends it to the printer.
  virtual void EndDoc() = 0;
};

// Every service of the outside world that the window logic uses.
class Platform {
 public:
  virtual ~Platform() = default;

  // A message box with an icon and buttons of `style` (Mb::...); returns the answer.
  virtual int MsgBox(const QString& prompt, int style, const QString& title) = 0;
  // Serves pending events and returns.
  virtual void DoEvents() = 0;
  virtual int MousePointer() const = 0;
  virtual void SetMousePointer(int pointer) = 0;
  // The file-open dialog with a filter "label|pattern|..."; "" when cancelled.
  virtual QString ShowOpen(const QString& filter) = 0;
  // The printer set-up dialog; its result is not read.
  virtual void ShowPrinterSetup() = 0;
  virtual Printer& CurrentPrinter() = 0;
  // The shell's open of a web page or a mail address; the answer is not read.
  virtual void ShellExecute(const QString& verb, const QString& target) = 0;
  virtual QDate Today() = 0;
  // Seconds since midnight, which seeds the random generator.
  virtual double SecondsSinceMidnight() = 0;
  // The next value of the uniform generator, 0 <= r < 1, and its seeding.
  virtual float Rnd() = 0;
  virtual void Randomize() = 0;
  // Screen size in twips.
  virtual int ScreenWidth() const = 0;
  virtual int ScreenHeight() const = 0;
  // The application folder, where Kuvo.Mdb lives.
  virtual QString AppPath() const = 0;

  // Windows: the logic tells what happens to them; the platform shows it.
  virtual void FormLoaded(Form& form) = 0;
  virtual void FormShown(Form& form, bool modal) = 0;
  // Runs a nested message loop until the modal window is unloaded or hidden.
  virtual void RunModal(Form& form) = 0;
  virtual void FormUnloaded(Form& form) = 0;
  // A view that shows the window takes it away (the default does nothing).
  virtual void FormHidden(Form&) {}
  virtual void FocusChanged(Control& control) = 0;
  // Pushes a control's state to the screen at once.
  virtual void RefreshControl(Control& control) = 0;

  // An error nothing caught: the platform's report.
  virtual void ReportFatal(int number, const QString& text) = 0;
  // Ends the program at once; does not return.
  [[noreturn]] virtual void EndProgram() = 0;
};

// The platform's uniform generator: a 24-bit linear congruential sequence,
// seeded from the clock by Randomize and from a fixed state without it.
class RandomGenerator {
 public:
  float Next();
  void Randomize(double secondsSinceMidnight);

 private:
  unsigned state_ = 0x50000;
};

}  // namespace kuvo
