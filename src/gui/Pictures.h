#pragma once

#include <QIcon>
#include <QPixmap>
#include <QRectF>
#include <QString>
#include <functional>

class QPainter;

// The program's own pictures, drawn by code so that they stay sharp at any size
// and any pixel density.
namespace kuvo {

// Draws a picture into a rectangle of the painter.
using PictureDrawer = std::function<void(QPainter& painter, const QRectF& rect)>;

// An icon that paints itself at the size and density asked. `key` names the
// picture for the pixmap cache.
QIcon PaintedIcon(const QString& key, PictureDrawer draw);

// The same drawing as a pixmap of `size` logical pixels at `dpr`.
QPixmap PaintedPixmap(const QString& key, const PictureDrawer& draw, QSizeF size, qreal dpr);

// The pictures of the main window's toolbar, 1 to 12: new draw, modify draw,
// delete draw, grouped outings, check a group, affine numbers, view the base,
// numbers from the base, random numbers, favourite draws, about, quit.
void DrawToolbarPicture(QPainter& p, const QRectF& rect, int image);
QIcon ToolbarIcon(int image);
constexpr int kToolbarPictureCount = 12;

// Small decorations shown by Image controls and pictures: 1 a four-leaf clover,
// 2 three lottery balls, 3 a star; any other number a ball bearing it.
void DrawDecoration(QPainter& p, const QRectF& rect, int picture);
// What a decoration shows, in a few words for a screen reader.
QString DecorationName(int picture);

// The cells of a picture that shows an animation: a lottery ball rolling, a
// sixth of a turn from one cell to the next.
void DrawAnimationCell(QPainter& p, const QRectF& rect, int cell);

// The program's own icon, on its windows: the four-leaf clover.
QIcon AppIcon();

}  // namespace kuvo
