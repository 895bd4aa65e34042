#pragma once

namespace kuvo {

// Twips to pixels and back, at the program's 15 twips a pixel.
constexpr int kTwipsPerPixel = 15;
inline int Px(double twips) {
  return static_cast<int>(twips / kTwipsPerPixel + (twips >= 0 ? 0.5 : -0.5));
}

}  // namespace kuvo
