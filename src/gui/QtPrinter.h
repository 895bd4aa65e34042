#pragma once

#include <QFont>
#include <QString>
#include <functional>
#include <memory>

#include "core/Platform.h"

class QPainter;
class QPrinter;

namespace kuvo {

// The program's printer on a QPrinter: lines of text one under the other in a
// fixed-pitch font, so that the report's columns line up. The document starts
// with its first line and is produced by EndDoc.
class QtPrinter : public Printer {
 public:
  explicit QtPrinter(QPrinter& printer);
  ~QtPrinter() override;

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

  bool Printing() const { return painter_ != nullptr; }
  // Called as a document starts, and once it has been produced by EndDoc.
  std::function<void()> OnStart;
  std::function<void()> OnEnd;
  // The face the lines are printed in: Courier New when the machine has it,
  // else the system's fixed-pitch font, at the size and weight asked.
  QFont PrintFont() const;

 private:
  void Begin();
  void Finish();
  QString Family() const;
  QPrinter& printer_;
  std::unique_ptr<QPainter> painter_;
  QString fontName_ = QStringLiteral("Arial");
  double fontSize_ = 10;
  bool bold_ = false;
  int page_ = 1;
  double y_ = 0;
  mutable QString family_;
};

}  // namespace kuvo
