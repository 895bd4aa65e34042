#pragma once

#include <QIcon>
#include <QRectF>

class QPainter;

// The faces of the keypad keys. Image k (1..49) shows number k plain, image
// k + 50 the same number marked; image 50 (and 100) is the "about" key.
namespace kuvo {

constexpr int kKeypadMarkedOffset = 50;
constexpr int kKeypadAboutKey = 50;

// True when the image number shows a marked key.
bool KeypadFaceMarked(int image);

// Draws the face of an image; without its number, the bare ball.
void DrawKeypadFace(QPainter& p, const QRectF& rect, int image, bool withNumber = true);
QIcon KeypadIcon(int image);

}  // namespace kuvo
