#include "gui/QtPrinter.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>
#include <algorithm>

#include "core/Errors.h"

namespace kuvo {

namespace {
constexpr int kPrinterError = 482;
constexpr double kLinesPerPage = 66;
}  // namespace

QtPrinter::QtPrinter(QPrinter& printer) : printer_(printer) {}

QtPrinter::~QtPrinter() {
  if (painter_) painter_->end();
}

QString QtPrinter::Family() const {
  // Courier New when the machine has it, else a face with Courier's metrics,
  // else any fixed-pitch face. Looked up once: it costs more than a line.
  if (!family_.isEmpty()) return family_;
  QStringList candidates = {QStringLiteral("Courier New"),
                            QStringLiteral("Courier"),
                            QStringLiteral("Nimbus Mono PS"),
                            QStringLiteral("Liberation Mono"),
                            QStringLiteral("DejaVu Sans Mono"),
                            QFontDatabase::systemFont(QFontDatabase::FixedFont).family()};
  candidates += QFontDatabase::families();
  for (const QString& f : candidates) {
    if (QFontDatabase::hasFamily(f) && QFontDatabase::isFixedPitch(f) &&
        !QFontDatabase::isPrivateFamily(f)) {
      family_ = f;
      return family_;
    }
  }
  family_ = QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
  return family_;
}

QFont QtPrinter::PrintFont() const {
  QFont f(Family());
  f.setStyleHint(QFont::TypeWriter);
  f.setFixedPitch(true);
  f.setPointSizeF(fontSize_ > 0 ? fontSize_ : 10);
  f.setBold(bold_);
  return f;
}

void QtPrinter::Begin() {
  if (painter_) return;
  if (OnStart) OnStart();
  auto painter = std::make_unique<QPainter>();
  if (!painter->begin(&printer_)) Raise(kPrinterError, QStringLiteral("Erreur d'imprimante"));
  painter_ = std::move(painter);
  page_ = 1;
  y_ = 0;
}

void QtPrinter::PrintLine(const QString& text) {
  Begin();
  painter_->setFont(PrintFont());
  const QFontMetricsF fm = painter_->fontMetrics();
  const double bottom = printer_.pageLayout().paintRectPixels(printer_.resolution()).height();
  // A report page holds 66 lines (65 and the footer): lines are drawn closer
  // when the font's own spacing would not fit them.
  const double step = std::min(fm.lineSpacing(), bottom / kLinesPerPage);
  // A line that does not fit goes to a new page, as the platform's printer does.
  if (y_ > 0 && y_ + step > bottom + 0.5) {
    printer_.newPage();
    ++page_;
    y_ = 0;
  }
  if (!text.isEmpty()) painter_->drawText(QPointF(0, y_ + fm.ascent()), text);
  y_ += step;
}

void QtPrinter::NewPage() {
  Begin();
  printer_.newPage();
  ++page_;
  y_ = 0;
}

void QtPrinter::Finish() {
  painter_.reset();
  page_ = 1;
  y_ = 0;
}

void QtPrinter::KillDoc() {
  if (!painter_) return;
  printer_.abort();
  if (painter_->isActive()) painter_->end();
  Finish();
}

void QtPrinter::EndDoc() {
  if (!painter_) return;
  painter_->end();
  Finish();
  if (OnEnd) OnEnd();
}

}  // namespace kuvo
