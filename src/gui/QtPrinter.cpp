#include "gui/QtPrinter.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>

#include "core/Errors.h"

namespace kuvo {

namespace {
constexpr int kPrinterError = 482;
}

QtPrinter::QtPrinter(QPrinter& printer) : printer_(printer) {}

QtPrinter::~QtPrinter() {
  if (painter_) painter_->end();
}

QFont QtPrinter::PrintFont() const {
  // Courier New when the machine has it, else the system's fixed-pitch face,
  // else any fixed-pitch face the machine has.
  QString family = QStringLiteral("Courier New");
  if (!QFontDatabase::hasFamily(family)) {
    family = QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
    if (!QFontDatabase::hasFamily(family) || !QFontDatabase::isFixedPitch(family)) {
      QStringList candidates = {QStringLiteral("DejaVu Sans Mono"),
                                QStringLiteral("Liberation Mono"),
                                QStringLiteral("Nimbus Mono PS")};
      candidates += QFontDatabase::families();
      for (const QString& f : candidates)
        if (QFontDatabase::hasFamily(f) && QFontDatabase::isFixedPitch(f) &&
            !QFontDatabase::isPrivateFamily(f)) {
          family = f;
          break;
        }
    }
  }
  QFont f(family);
  f.setStyleHint(QFont::TypeWriter);
  f.setFixedPitch(true);
  f.setPointSizeF(fontSize_ > 0 ? fontSize_ : 10);
  f.setBold(bold_);
  return f;
}

void QtPrinter::Begin() {
  if (painter_) return;
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
  // A line that does not fit goes to a new page, as the platform's printer does.
  if (y_ > 0 && y_ + fm.height() > bottom) {
    printer_.newPage();
    ++page_;
    y_ = 0;
  }
  if (!text.isEmpty()) painter_->drawText(QPointF(0, y_ + fm.ascent()), text);
  y_ += fm.lineSpacing();
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
}

}  // namespace kuvo
