#include "gui/Pictures.h"

#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPixmapCache>
#include <QRadialGradient>
#include <QtMath>
#include <cmath>

namespace kuvo {

namespace {

// An icon engine that draws its picture at whatever size is asked, so that a
// high-density screen gets a pixmap made for its own pixels.
class PaintedIconEngine : public QIconEngine {
 public:
  PaintedIconEngine(QString key, PictureDrawer draw)
      : key_(std::move(key)), draw_(std::move(draw)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const qreal dpr = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
    QPixmap pm = scaledPixmap(rect.size() * dpr, mode, state, dpr);
    painter->drawPixmap(rect, pm);
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return scaledPixmap(size, mode, state, 1.0);
  }

  // `size` is in device pixels here, `scale` the density it is meant for.
  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal scale) override {
    QPixmap pm = PaintedPixmap(key_, draw_, QSizeF(size) / scale, scale);
    if (mode == QIcon::Disabled) pm = Greyed(pm);
    return pm;
  }

  QSize actualSize(const QSize& size, QIcon::Mode, QIcon::State) override { return size; }
  QIconEngine* clone() const override { return new PaintedIconEngine(key_, draw_); }
  QString key() const override { return QStringLiteral("kuvo-painted"); }

 private:
  static QPixmap Greyed(const QPixmap& pm) {
    QImage img = pm.toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < img.height(); ++y) {
      auto* line = reinterpret_cast<QRgb*>(img.scanLine(y));
      for (int x = 0; x < img.width(); ++x) {
        const int g = qGray(line[x]);
        line[x] = qRgba(g, g, g, qAlpha(line[x]) / 2);
      }
    }
    QPixmap out = QPixmap::fromImage(img);
    out.setDevicePixelRatio(pm.devicePixelRatio());
    return out;
  }

  QString key_;
  PictureDrawer draw_;
};

// Drawing helpers work in a 32 x 32 design space mapped onto the target.
struct Design {
  Design(QPainter& painter, const QRectF& r) : p(painter) {
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    const qreal side = std::min(r.width(), r.height());
    p.translate(r.center().x() - side / 2, r.center().y() - side / 2);
    p.scale(side / 32.0, side / 32.0);
  }
  ~Design() { p.restore(); }
  QPainter& p;
};

QPen Pen(const QColor& c, qreal w) {
  QPen pen(c, w);
  pen.setJoinStyle(Qt::RoundJoin);
  pen.setCapStyle(Qt::RoundCap);
  return pen;
}

// A shiny ball of `colour` centred on c.
void Ball(QPainter& p, QPointF c, qreal r, const QColor& colour) {
  QRadialGradient g(c + QPointF(-r * 0.35, -r * 0.4), r * 1.3);
  g.setColorAt(0, colour.lighter(170));
  g.setColorAt(0.5, colour);
  g.setColorAt(1, colour.darker(140));
  p.setPen(Pen(colour.darker(180), 0.8));
  p.setBrush(g);
  p.drawEllipse(c, r, r);
}

// The lottery slip that stands for one draw: a card with a grid, some boxes
// ticked in red.
void Slip(QPainter& p) {
  p.setPen(Pen(QColor(90, 100, 120), 1.2));
  p.setBrush(QColor(255, 252, 235));
  p.drawRoundedRect(QRectF(3, 3, 22, 26), 2, 2);
  p.setPen(Pen(QColor(170, 60, 60), 1.4));
  p.drawLine(QPointF(6, 7.5), QPointF(22, 7.5));
  static const bool ticked[12] = {true,  false, false, false, false, true,
                                  false, true,  false, false, true,  false};
  for (int row = 0; row < 4; ++row)
    for (int col = 0; col < 3; ++col) {
      const QRectF box(6.5 + col * 5.5, 11 + row * 4.5, 3.5, 3);
      p.setPen(Pen(QColor(120, 130, 150), 0.8));
      p.setBrush(ticked[row * 3 + col] ? QColor(215, 40, 40) : QColor(255, 255, 255));
      p.drawRect(box);
    }
}

void Badge(QPainter& p, const QColor& colour) {
  p.setPen(Pen(colour.darker(150), 1));
  p.setBrush(colour);
  p.drawEllipse(QPointF(24, 24), 7, 7);
}

void DrawNew(QPainter& p) {
  Slip(p);
  Badge(p, QColor(40, 160, 60));
  p.setPen(Pen(Qt::white, 2.6));
  p.drawLine(QPointF(24, 20), QPointF(24, 28));
  p.drawLine(QPointF(20, 24), QPointF(28, 24));
}

void DrawModify(QPainter& p) {
  Slip(p);
  // A pencil across the slip.
  p.save();
  p.translate(22, 21);
  p.rotate(-45);
  p.setPen(Pen(QColor(60, 60, 60), 0.9));
  p.setBrush(QColor(245, 190, 40));
  p.drawRect(QRectF(-9, -2.6, 14, 5.2));
  p.setBrush(QColor(230, 120, 130));
  p.drawRect(QRectF(5, -2.6, 3.5, 5.2));
  QPainterPath tip;
  tip.moveTo(-9, -2.6);
  tip.lineTo(-14, 0);
  tip.lineTo(-9, 2.6);
  tip.closeSubpath();
  p.setBrush(QColor(240, 215, 170));
  p.drawPath(tip);
  p.setBrush(QColor(50, 50, 50));
  p.drawEllipse(QPointF(-13, 0), 0.9, 0.9);
  p.restore();
}

void DrawDelete(QPainter& p) {
  Slip(p);
  Badge(p, QColor(210, 40, 40));
  p.setPen(Pen(Qt::white, 2.6));
  p.drawLine(QPointF(21, 21), QPointF(27, 27));
  p.drawLine(QPointF(27, 21), QPointF(21, 27));
}

// Grouped outings: a ranking of bars, each topped by a ball.
void DrawGrouped(QPainter& p) {
  p.setPen(Pen(QColor(70, 70, 80), 1.2));
  p.drawLine(QPointF(3, 29), QPointF(29, 29));
  const qreal heights[3] = {20, 14, 9};
  const QColor colours[3] = {QColor(220, 60, 50), QColor(40, 110, 200), QColor(40, 160, 80)};
  for (int i = 0; i < 3; ++i) {
    const qreal x = 5 + i * 8.5;
    p.setPen(Pen(colours[i].darker(150), 0.8));
    p.setBrush(colours[i]);
    p.drawRect(QRectF(x, 29 - heights[i], 6, heights[i]));
  }
  Ball(p, QPointF(8, 5.5), 3.5, QColor(250, 200, 40));
}

// Check a group: a magnifier over two balls.
void DrawCheckGroup(QPainter& p) {
  Ball(p, QPointF(9, 10), 6, QColor(40, 110, 200));
  Ball(p, QPointF(19, 8), 5, QColor(220, 60, 50));
  p.setPen(Pen(QColor(60, 60, 60), 3.4));
  p.drawLine(QPointF(22, 22), QPointF(29, 29));
  p.setPen(Pen(QColor(60, 60, 60), 2.2));
  p.setBrush(QColor(200, 230, 255, 140));
  p.drawEllipse(QPointF(17, 17), 7.5, 7.5);
}

// Affine numbers: two balls held together by a link.
void DrawAffine(QPainter& p) {
  p.setPen(Pen(QColor(90, 90, 100), 3));
  p.drawLine(QPointF(10, 21), QPointF(22, 11));
  Ball(p, QPointF(9, 22), 7, QColor(40, 110, 200));
  Ball(p, QPointF(23, 10), 7, QColor(40, 110, 200));
  p.setPen(Pen(QColor(220, 40, 60), 1.2));
  p.setBrush(QColor(230, 50, 70));
  QPainterPath heart;
  heart.moveTo(16, 31);
  heart.cubicTo(8, 25, 12, 19, 16, 23);
  heart.cubicTo(20, 19, 24, 25, 16, 31);
  p.drawPath(heart);
}

// View the base: a table with a coloured heading.
void DrawBase(QPainter& p) {
  p.setPen(Pen(QColor(70, 80, 100), 1.2));
  p.setBrush(Qt::white);
  p.drawRect(QRectF(3, 5, 26, 22));
  p.setBrush(QColor(40, 110, 200));
  p.drawRect(QRectF(3, 5, 26, 5.5));
  p.setPen(Pen(QColor(130, 140, 160), 0.9));
  for (int row = 1; row <= 3; ++row)
    p.drawLine(QPointF(3, 10.5 + row * 4.1), QPointF(29, 10.5 + row * 4.1));
  for (int col = 1; col <= 2; ++col)
    p.drawLine(QPointF(3 + col * 8.7, 10.5), QPointF(3 + col * 8.7, 27));
}

// Numbers from the base: a database cylinder giving a ball.
void DrawFromBase(QPainter& p) {
  const QColor body(120, 130, 150);
  p.setPen(Pen(body.darker(150), 1));
  p.setBrush(QColor(190, 200, 215));
  p.drawRect(QRectF(2.5, 6, 15, 18));
  p.drawEllipse(QRectF(2.5, 21, 15, 6));
  p.setPen(Qt::NoPen);
  p.drawRect(QRectF(3, 20, 14, 4));
  p.setPen(Pen(body.darker(150), 1));
  p.setBrush(QColor(215, 222, 235));
  p.drawEllipse(QRectF(2.5, 3, 15, 6));
  p.setBrush(Qt::NoBrush);
  p.drawArc(QRectF(2.5, 10, 15, 6), 180 * 16, 180 * 16);
  p.drawArc(QRectF(2.5, 15.5, 15, 6), 180 * 16, 180 * 16);
  p.setPen(Pen(QColor(40, 150, 60), 2.4));
  p.drawLine(QPointF(15, 16), QPointF(21, 16));
  p.setBrush(QColor(40, 150, 60));
  p.setPen(Pen(QColor(40, 150, 60), 1));
  QPolygonF head;
  head << QPointF(20, 12.5) << QPointF(24, 16) << QPointF(20, 19.5);
  p.drawPolygon(head);
  Ball(p, QPointF(25.5, 24), 5.5, QColor(250, 200, 40));
}

// Random numbers: a die.
void DrawRandom(QPainter& p) {
  p.save();
  p.translate(16, 16);
  p.rotate(-12);
  p.setPen(Pen(QColor(130, 20, 20), 1.2));
  QLinearGradient g(QPointF(-11, -11), QPointF(11, 11));
  g.setColorAt(0, QColor(240, 80, 70));
  g.setColorAt(1, QColor(190, 30, 30));
  p.setBrush(g);
  p.drawRoundedRect(QRectF(-11.5, -11.5, 23, 23), 4.5, 4.5);
  p.setPen(Qt::NoPen);
  p.setBrush(Qt::white);
  const QPointF pips[5] = {{-6, -6}, {6, -6}, {0, 0}, {-6, 6}, {6, 6}};
  for (const QPointF& c : pips) p.drawEllipse(c, 2.3, 2.3);
  p.restore();
}

QPolygonF StarShape(QPointF c, qreal outer, qreal inner) {
  QPolygonF star;
  for (int i = 0; i < 10; ++i) {
    const qreal r = (i % 2 == 0) ? outer : inner;
    const qreal a = -M_PI / 2 + i * M_PI / 5;
    star << QPointF(c.x() + r * std::cos(a), c.y() + r * std::sin(a));
  }
  return star;
}

void DrawFavourites(QPainter& p) {
  QRadialGradient g(QPointF(14, 12), 16);
  g.setColorAt(0, QColor(255, 240, 120));
  g.setColorAt(1, QColor(240, 170, 0));
  p.setPen(Pen(QColor(180, 110, 0), 1.3));
  p.setBrush(g);
  p.drawPolygon(StarShape(QPointF(16, 17), 14.5, 6.2));
}

void DrawAbout(QPainter& p) {
  QRadialGradient g(QPointF(12, 10), 18);
  g.setColorAt(0, QColor(110, 170, 240));
  g.setColorAt(1, QColor(25, 85, 180));
  p.setPen(Pen(QColor(20, 60, 130), 1.2));
  p.setBrush(g);
  p.drawEllipse(QPointF(16, 16), 13.5, 13.5);
  p.setPen(Qt::NoPen);
  p.setBrush(Qt::white);
  p.drawEllipse(QPointF(16, 9.5), 2.4, 2.4);
  p.drawRoundedRect(QRectF(13.8, 13.5, 4.4, 11.5), 1.2, 1.2);
}

// Quit: an open door with an arrow going out.
void DrawQuit(QPainter& p) {
  p.setPen(Pen(QColor(90, 60, 30), 1.2));
  p.setBrush(QColor(235, 225, 205));
  p.drawRect(QRectF(4, 3, 15, 26));
  QPolygonF door;
  door << QPointF(4, 3) << QPointF(12, 6) << QPointF(12, 31) << QPointF(4, 29);
  p.setBrush(QColor(160, 100, 50));
  p.drawPolygon(door);
  p.setBrush(QColor(250, 210, 80));
  p.drawEllipse(QPointF(10, 18), 1, 1);
  p.setPen(Pen(QColor(210, 40, 40), 3));
  p.drawLine(QPointF(16, 16), QPointF(25, 16));
  p.setPen(Pen(QColor(210, 40, 40), 1));
  p.setBrush(QColor(210, 40, 40));
  QPolygonF head;
  head << QPointF(24, 10.5) << QPointF(30.5, 16) << QPointF(24, 21.5);
  p.drawPolygon(head);
}

void DrawClover(QPainter& p) {
  p.setPen(Pen(QColor(30, 110, 40), 1.6));
  QPainterPath stem;
  stem.moveTo(16, 17);
  stem.cubicTo(17, 23, 20, 27, 24, 30);
  p.setBrush(Qt::NoBrush);
  p.drawPath(stem);
  const QColor leaf(60, 170, 70);
  for (int i = 0; i < 4; ++i) {
    p.save();
    p.translate(16, 15);
    p.rotate(45 + i * 90);
    QPainterPath heart;
    heart.moveTo(0, 0);
    heart.cubicTo(-7, -3, -5, -11, 0, -8);
    heart.cubicTo(5, -11, 7, -3, 0, 0);
    QRadialGradient g(QPointF(0, -6), 7);
    g.setColorAt(0, leaf.lighter(140));
    g.setColorAt(1, leaf.darker(120));
    p.setPen(Pen(leaf.darker(170), 0.8));
    p.setBrush(g);
    p.drawPath(heart);
    p.restore();
  }
}

void DrawBalls(QPainter& p) {
  Ball(p, QPointF(10, 21), 7, QColor(220, 60, 50));
  Ball(p, QPointF(22, 21), 7, QColor(40, 110, 200));
  Ball(p, QPointF(16, 10), 7, QColor(250, 200, 40));
}

void DrawNumberBall(QPainter& p, int number) {
  Ball(p, QPointF(16, 16), 14, QColor(250, 200, 40));
  QFont f;
  f.setBold(true);
  f.setPixelSize(13);
  p.setFont(f);
  p.setPen(QColor(60, 40, 0));
  p.drawText(QRectF(2, 2, 28, 28), Qt::AlignCenter, QString::number(number));
}

}  // namespace

QPixmap PaintedPixmap(const QString& key, const PictureDrawer& draw, QSizeF size, qreal dpr) {
  const QSize px(std::max(1, qRound(size.width() * dpr)), std::max(1, qRound(size.height() * dpr)));
  const QString cacheKey =
      QStringLiteral("kuvo:%1:%2x%3").arg(key).arg(px.width()).arg(px.height());
  QPixmap pm;
  if (!QPixmapCache::find(cacheKey, &pm)) {
    QImage img(px, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    {
      QPainter p(&img);
      p.setRenderHint(QPainter::Antialiasing);
      p.setRenderHint(QPainter::TextAntialiasing);
      draw(p, QRectF(QPointF(0, 0), QSizeF(px)));
    }
    pm = QPixmap::fromImage(img);
    QPixmapCache::insert(cacheKey, pm);
  }
  pm.setDevicePixelRatio(dpr);
  return pm;
}

QIcon PaintedIcon(const QString& key, PictureDrawer draw) {
  return QIcon(new PaintedIconEngine(key, std::move(draw)));
}

void DrawToolbarPicture(QPainter& painter, const QRectF& rect, int image) {
  Design d(painter, rect);
  QPainter& p = d.p;
  switch (image) {
    case 1: DrawNew(p); break;
    case 2: DrawModify(p); break;
    case 3: DrawDelete(p); break;
    case 4: DrawGrouped(p); break;
    case 5: DrawCheckGroup(p); break;
    case 6: DrawAffine(p); break;
    case 7: DrawBase(p); break;
    case 8: DrawFromBase(p); break;
    case 9: DrawRandom(p); break;
    case 10: DrawFavourites(p); break;
    case 11: DrawAbout(p); break;
    case 12: DrawQuit(p); break;
    default: break;
  }
}

QIcon ToolbarIcon(int image) {
  return PaintedIcon(QStringLiteral("toolbar%1").arg(image),
                     [image](QPainter& p, const QRectF& r) { DrawToolbarPicture(p, r, image); });
}

void DrawDecoration(QPainter& painter, const QRectF& rect, int picture) {
  if (picture == 0) return;
  Design d(painter, rect);
  switch (picture) {
    case 1: DrawClover(d.p); break;
    case 2: DrawBalls(d.p); break;
    case 3: DrawFavourites(d.p); break;
    default: DrawNumberBall(d.p, picture); break;
  }
}

QString DecorationName(int picture) {
  switch (picture) {
    case 0: return {};
    case 1: return QStringLiteral("Trèfle à quatre feuilles");
    case 2: return QStringLiteral("Trois boules de loto");
    case 3: return QStringLiteral("Étoile");
    default: return QStringLiteral("Boule numéro %1").arg(picture);
  }
}

void DrawAnimationCell(QPainter& painter, const QRectF& rect, int cell) {
  Design d(painter, rect);
  QPainter& p = d.p;
  Ball(p, QPointF(16, 16), 14, QColor(250, 200, 40));
  // The ball's number turns with it; the light stays where it is.
  p.save();
  p.translate(16, 16);
  p.rotate(cell * 60.0);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(255, 255, 255, 230));
  p.drawEllipse(QPointF(0, -5), 6.5, 6.5);
  QFont f;
  f.setBold(true);
  f.setPixelSize(9);
  p.setFont(f);
  p.setPen(QColor(170, 20, 20));
  p.drawText(QRectF(-6.5, -11.5, 13, 13), Qt::AlignCenter, QStringLiteral("49"));
  p.restore();
  QRadialGradient shine(QPointF(11, 10), 9);
  shine.setColorAt(0, QColor(255, 255, 255, 120));
  shine.setColorAt(1, QColor(255, 255, 255, 0));
  p.setPen(Qt::NoPen);
  p.setBrush(shine);
  p.drawEllipse(QPointF(16, 16), 14, 14);
}

QIcon AppIcon() {
  return PaintedIcon(QStringLiteral("app"),
                     [](QPainter& p, const QRectF& r) { DrawDecoration(p, r, 1); });
}

}  // namespace kuvo
