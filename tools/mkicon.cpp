// Writes the program's icon, the four-leaf clover its windows show, as PNG
// files of the sizes a desktop asks for: mkicon FOLDER.
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <cstdio>

#include "gui/Pictures.h"

int main(int argc, char* argv[]) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: kuvo-mkicon FOLDER\n");
    return 2;
  }
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  const QDir folder(QString::fromLocal8Bit(argv[1]));
  for (int size : {32, 48, 64, 128, 256}) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
      QPainter p(&image);
      p.setRenderHint(QPainter::Antialiasing);
      kuvo::DrawDecoration(p, QRectF(0, 0, size, size), 1);
    }
    const QString file = folder.filePath(QStringLiteral("kuvo-%1.png").arg(size));
    if (!image.save(file)) {
      std::fprintf(stderr, "kuvo-mkicon: cannot write %s\n", qPrintable(file));
      return 1;
    }
  }
  return 0;
}
