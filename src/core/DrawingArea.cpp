#include "core/DrawingArea.h"

namespace kuvo {

unsigned QBColor(int colour) {
  static const unsigned kPalette[16] = {
      0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0xC0C0C0,
      0x808080, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF,
  };
  if (colour < 0 || colour > 15) Raise(Err::InvalidCall);
  return kPalette[colour];
}

double DrawingArea::TwipsPerUnit() const {
  switch (ScaleMode) {
    case Scale::Points: return 20.0;
    case Scale::Pixels: return 15.0;
    case Scale::Inches: return 1440.0;
    case Scale::Millimetres: return 1440.0 / 25.4;
    case Scale::Centimetres: return 1440.0 / 2.54;
    default: return 1.0;
  }
}

double DrawingArea::ScaleWidth() const { return (Width - 2 * BorderTwips()) / TwipsPerUnit(); }

double DrawingArea::ScaleHeight() const { return (Height - 2 * BorderTwips()) / TwipsPerUnit(); }

void DrawingArea::Cls() {
  boxes_.clear();
  ++revision_;
}

void DrawingArea::LineBF(double x1, double y1, double x2, double y2, unsigned colour) {
  boxes_.push_back({x1, y1, x2, y2, colour});
  ++revision_;
}

void DrawingArea::DescribeOwn(const PropertySink& sink) const {
  sink(QStringLiteral("ScaleMode"), PropValue::Int(ScaleMode));
  sink(QStringLiteral("ScaleWidth"), PropValue::Double(ScaleWidth()));
  sink(QStringLiteral("ScaleHeight"), PropValue::Double(ScaleHeight()));
  sink(QStringLiteral("BorderStyle"), PropValue::Int(BorderStyle));
  sink(QStringLiteral("BackColor"), PropValue::Colour(BackColor));
}

}  // namespace kuvo
