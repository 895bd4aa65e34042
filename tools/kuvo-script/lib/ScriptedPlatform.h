#pragma once

#include <QDate>
#include <QStringList>
#include <deque>
#include <functional>
#include <vector>

#include "core/Platform.h"

namespace kuvo {

// A printer that keeps what it is given: "PAGE n" at each page, "| text" or
// "B| text" (bold) for each line, "KILLDOC", "ENDDOC".
class ScriptedPrinter : public Printer {
 public:
  QString FontName() const override { return fontName_; }
  void SetFontName(const QString& name) override { fontName_ = name; }
  double FontSize() const override { return fontSize_; }
  void SetFontSize(double size) override { fontSize_ = size; }
  bool FontBold() const override { return bold_; }
  void SetFontBold(bool bold) override { bold_ = bold; }
  void PrintLine(const QString& text) override;
  int Page() const override { return page_; }
  void NewPage() override;
  void KillDoc() override;
  void EndDoc() override;

  const QStringList& Record() const { return record_; }

 private:
  void StartIfNeeded();
  QString fontName_ = QStringLiteral("Arial");
  double fontSize_ = 10;
  bool bold_ = false;
  bool started_ = false;
  int page_ = 1;
  QStringList record_;
};

// The platform of the scenario driver and the unit tests: everything a user
// would see is written out as it happens, and the user's answers are scripted.
class ScriptedPlatform : public Platform {
 public:
  explicit ScriptedPlatform(QString appPath);

  // Where the lines a user would see go.
  std::function<void(const QString&)> Out;
  // Called inside every yield, with the yield's number from 1.
  std::function<void(long)> OnYield;
  // Runs the user's actions while a modal window stands.
  std::function<void(Form&)> OnModal;

  QDate today = QDate(2026, 11, 21);
  double secondsSinceMidnight = 43200;
  std::deque<float> rndValues;
  std::deque<QString> fileAnswers;  // "" for a cancel
  int screenWidth = 15360;
  int screenHeight = 11520;
  long yields = 0;
  std::vector<Form*> modalStack;

  int MsgBox(const QString& prompt, int style, const QString& title) override;
  void DoEvents() override;
  int MousePointer() const override { return pointer_; }
  void SetMousePointer(int pointer) override { pointer_ = pointer; }
  QString ShowOpen(const QString& filter) override;
  void ShowPrinterSetup() override {}
  Printer& CurrentPrinter() override { return printer_; }
  void ShellExecute(const QString& verb, const QString& target) override;
  QDate Today() override { return today; }
  double SecondsSinceMidnight() override { return secondsSinceMidnight; }
  float Rnd() override;
  void Randomize() override { random_.Randomize(secondsSinceMidnight); }
  int ScreenWidth() const override { return screenWidth; }
  int ScreenHeight() const override { return screenHeight; }
  QString AppPath() const override { return appPath_; }

  void FormLoaded(Form&) override {}
  void FormShown(Form& form, bool modal) override;
  void RunModal(Form& form) override;
  void FormUnloaded(Form& form) override;
  void FormHidden(Form&) override {}
  void FocusChanged(Control&) override {}
  void RefreshControl(Control&) override {}

  void ReportFatal(int number, const QString& text) override;
  [[noreturn]] void EndProgram() override;

  ScriptedPrinter& printer() { return printer_; }

 private:
  void Emit(const QString& line) {
    if (Out) Out(line);
  }
  QString appPath_;
  int pointer_ = 0;
  RandomGenerator random_;
  ScriptedPrinter printer_;
};

}  // namespace kuvo
