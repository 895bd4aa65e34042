#pragma once

#include <vector>

#include "core/Controls.h"

namespace kuvo {

// The colour numbered 0..15 in the platform's 16-colour palette, blue-green-red:
// 10 is light green (00FF00), 13 light magenta (FF00FF). Another number raises
// error 5.
unsigned QBColor(int colour);

// Units of a drawing area's scale.
namespace Scale {
constexpr int Twips = 1;
constexpr int Points = 2;
constexpr int Pixels = 3;
constexpr int Inches = 5;
constexpr int Millimetres = 6;
constexpr int Centimetres = 7;
}  // namespace Scale

// A picture used as a drawing area: what the program draws on it, in the
// area's own unit, is kept in drawing order until the next Cls, so that a view
// can paint it again whenever the area is uncovered. A box reaching past an
// edge is kept whole; the view cuts it off.
class DrawingArea : public Control {
 public:
  DrawingArea(Form& f, QString name, int index = -1)
      : Control(f, ControlKind::DrawingArea, name, index) {}

  // One filled box as drawn, corners in the area's unit.
  struct Box {
    double x1, y1, x2, y2;
    unsigned colour;
  };

  int ScaleMode = Scale::Twips;
  int BorderStyle = 0;  // 0 none, 1 a fixed single border inside the size
  unsigned BackColor = Colours::WindowBackground;

  // Twips in one unit of the scale.
  double TwipsPerUnit() const;
  // The inner size (the size less the border) in the area's unit.
  double ScaleWidth() const;
  double ScaleHeight() const;
  // The border's thickness on each side, in twips.
  int BorderTwips() const { return BorderStyle ? 30 : 0; }

  // Clears the drawing.
  void Cls();
  // Line (x1, y1)-(x2, y2), colour, BF: a box filled with the colour.
  void LineBF(double x1, double y1, double x2, double y2, unsigned colour);

  const std::vector<Box>& Boxes() const { return boxes_; }
  // Raised by every change of the drawing, for the view.
  int Revision() const { return revision_; }

 protected:
  void DescribeOwn(const PropertySink& sink) const override;

 private:
  std::vector<Box> boxes_;
  int revision_ = 0;
};

}  // namespace kuvo
