#pragma once

namespace kuvo {

// A twip is 1/1440 inch: the twips in a pixel follow the screen's logical DPI
// (15 at 96 DPI, 12 at 120), so that sizes grow with the fonts.
double TwipsPerPixel();

// Twips to pixels, at a zoom below 1 for a window drawn smaller to fit the screen.
inline int Px(double twips, double zoom = 1.0) {
  const double px = twips * zoom / TwipsPerPixel();
  return static_cast<int>(px + (px >= 0 ? 0.5 : -0.5));
}

}  // namespace kuvo
