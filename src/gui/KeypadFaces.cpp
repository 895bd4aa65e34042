#include "gui/KeypadFaces.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QRadialGradient>
#include <algorithm>

#include "gui/Pictures.h"

namespace kuvo {

namespace {

QFont NumberFont(qreal diameter, bool bold) {
  QFont f;
  f.setFamilies(
      {QStringLiteral("DejaVu Sans"), QStringLiteral("Arial"), QStringLiteral("Liberation Sans")});
  f.setStyleHint(QFont::SansSerif);
  f.setBold(bold);
  if (!bold) f.setWeight(QFont::DemiBold);
  f.setPixelSize(std::max(6, qRound(diameter * 0.46)));
  return f;
}

void DrawAbout(QPainter& p, QPointF c, qreal r, bool marked) {
  QRadialGradient g(c + QPointF(-r * 0.35, -r * 0.4), r * 1.4);
  g.setColorAt(0, QColor(120, 180, 245));
  g.setColorAt(1, QColor(25, 85, 180));
  p.setPen(QPen(marked ? QColor(200, 20, 20) : QColor(20, 60, 130), std::max(1.0, r * 0.1)));
  p.setBrush(g);
  p.drawEllipse(c, r, r);
  p.setPen(Qt::NoPen);
  p.setBrush(Qt::white);
  p.drawEllipse(QPointF(c.x(), c.y() - r * 0.45), r * 0.15, r * 0.15);
  p.drawRoundedRect(QRectF(c.x() - r * 0.13, c.y() - r * 0.18, r * 0.26, r * 0.72), r * 0.06,
                    r * 0.06);
}

}  // namespace

bool KeypadFaceMarked(int image) { return image > kKeypadMarkedOffset; }

void DrawKeypadFace(QPainter& p, const QRectF& rect, int image, bool withNumber) {
  p.save();
  p.setRenderHint(QPainter::Antialiasing);
  p.setRenderHint(QPainter::TextAntialiasing);
  const bool marked = KeypadFaceMarked(image);
  const int number = marked ? image - kKeypadMarkedOffset : image;
  const qreal d = std::min(rect.width(), rect.height()) * 0.94;
  const qreal r = d / 2;
  const QPointF c = rect.center();

  if (number == kKeypadAboutKey) {
    DrawAbout(p, c, r, marked);
    p.restore();
    return;
  }

  QRadialGradient g(c + QPointF(-r * 0.35, -r * 0.45), r * 1.5);
  if (marked) {
    // A filled red ball with a white bold number and a dark rim.
    // The shine stays small and the red deep, so that the white number reads
    // at 4.5:1 wherever it lies on the ball.
    g.setColorAt(0, QColor(230, 80, 70));
    g.setColorAt(0.12, QColor(200, 28, 22));
    g.setColorAt(1, QColor(140, 8, 8));
    p.setPen(QPen(QColor(110, 0, 0), std::max(1.0, d * 0.06)));
  } else {
    // A light ball with a dark blue number.
    g.setColorAt(0, QColor(255, 255, 255));
    g.setColorAt(0.6, QColor(238, 242, 248));
    g.setColorAt(1, QColor(200, 210, 225));
    p.setPen(QPen(QColor(135, 150, 175), std::max(0.8, d * 0.035)));
  }
  p.setBrush(g);
  p.drawEllipse(c, r - p.pen().widthF() / 2, r - p.pen().widthF() / 2);

  if (number > 0 && withNumber) {
    p.setFont(NumberFont(d, marked));
    p.setPen(marked ? QColor(Qt::white) : QColor(20, 40, 110));
    p.drawText(QRectF(c.x() - r, c.y() - r, d, d), Qt::AlignCenter, QString::number(number));
  }
  p.restore();
}

QIcon KeypadIcon(int image) {
  return PaintedIcon(QStringLiteral("key%1").arg(image),
                     [image](QPainter& p, const QRectF& r) { DrawKeypadFace(p, r, image); });
}

}  // namespace kuvo
