#include <gtest/gtest.h>

#include <QFileInfo>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "GuiSupport.h"
#include "gui/KeypadFaces.h"
#include "gui/Pictures.h"
#include "gui/QtPrinter.h"

namespace kuvo::testing {
namespace {

QImage Render(const std::function<void(QPainter&, const QRectF&)>& draw, int side) {
  QImage img(side, side, QImage::Format_ARGB32);
  img.fill(Qt::transparent);
  QPainter p(&img);
  draw(p, QRectF(0, 0, side, side));
  return img;
}

struct Mean {
  double r = 0, g = 0, b = 0, covered = 0;
};

Mean MeanColour(const QImage& img) {
  Mean m;
  double n = 0;
  for (int y = 0; y < img.height(); ++y)
    for (int x = 0; x < img.width(); ++x) {
      const QRgb c = img.pixel(x, y);
      if (qAlpha(c) < 128) continue;
      m.r += qRed(c);
      m.g += qGreen(c);
      m.b += qBlue(c);
      ++n;
    }
  if (n > 0) {
    m.r /= n;
    m.g /= n;
    m.b /= n;
  }
  m.covered = n / (img.width() * img.height());
  return m;
}

// The number of every face against its own ball, at the sizes keys take: each
// pixel the number covers whole stands out from the ball under it.
TEST(KeypadFacesTest, NumbersReadOnTheirBalls) {
  double worst = 100;
  for (int side : {28, 36, 48})
    for (int image = 1; image <= 99; ++image) {
      if (image == 50) continue;
      const QImage with =
          Render([image](QPainter& p, const QRectF& r) { DrawKeypadFace(p, r, image); }, side);
      const QImage bare = Render(
          [image](QPainter& p, const QRectF& r) { DrawKeypadFace(p, r, image, false); }, side);
      // The ink of the number: the pixel farthest from the ball beneath.
      QColor ink;
      double far = 1;
      for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
          if (const double c = Contrast(with.pixelColor(x, y), bare.pixelColor(x, y)); c > far) {
            far = c;
            ink = with.pixelColor(x, y);
          }
      ASSERT_TRUE(ink.isValid()) << image;
      double least = 100;
      for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
          if (Contrast(with.pixelColor(x, y), ink) < 1.05 && with.pixel(x, y) != bare.pixel(x, y))
            least = std::min(least, Contrast(ink, bare.pixelColor(x, y)));
      EXPECT_GE(least, 4.5) << "image " << image << " at " << side << " px";
      worst = std::min(worst, least);
    }
  std::printf("[ contrast ] keypad numbers: the lowest at %.2f:1\n", worst);
}

TEST(KeypadFacesTest, MarkedFacesAreRedAndPlainFacesLight) {
  for (int k = 1; k <= 49; ++k) {
    const Mean plain =
        MeanColour(Render([k](QPainter& p, const QRectF& r) { DrawKeypadFace(p, r, k); }, 40));
    const Mean marked =
        MeanColour(Render([k](QPainter& p, const QRectF& r) { DrawKeypadFace(p, r, k + 50); }, 40));
    EXPECT_GT(plain.covered, 0.5) << k;
    EXPECT_GT(plain.g, 180) << k;
    EXPECT_GT(marked.r, marked.g + 80) << k;
    EXPECT_FALSE(KeypadFaceMarked(k));
    EXPECT_TRUE(KeypadFaceMarked(k + 50));
  }
}

TEST(KeypadFacesTest, EveryNumberHasItsOwnFaceAndTheFiftiethKeyIsDistinct) {
  std::vector<QImage> faces;
  for (int k = 1; k <= 50; ++k)
    faces.push_back(Render([k](QPainter& p, const QRectF& r) { DrawKeypadFace(p, r, k); }, 32));
  for (size_t i = 0; i < faces.size(); ++i)
    for (size_t j = i + 1; j < faces.size(); ++j)
      EXPECT_NE(faces[i], faces[j]) << i + 1 << " " << j + 1;
  const Mean about = MeanColour(faces[49]);
  EXPECT_GT(about.b, about.r + 60) << "the about key is blue";
}

TEST(KeypadFacesTest, IconsAreDrawnForTheDensityAsked) {
  const QIcon icon = KeypadIcon(7);
  const QPixmap normal = icon.pixmap(QSize(32, 32), 1.0);
  const QPixmap dense = icon.pixmap(QSize(32, 32), 2.0);
  EXPECT_EQ(normal.size(), QSize(32, 32));
  EXPECT_EQ(dense.size(), QSize(64, 64));
  EXPECT_DOUBLE_EQ(dense.devicePixelRatio(), 2.0);
}

TEST(ToolbarPicturesTest, TwelveDistinctPictures) {
  std::vector<QImage> pictures;
  for (int k = 1; k <= kToolbarPictureCount; ++k) {
    pictures.push_back(
        Render([k](QPainter& p, const QRectF& r) { DrawToolbarPicture(p, r, k); }, 32));
    EXPECT_GT(MeanColour(pictures.back()).covered, 0.15) << k;
  }
  for (size_t i = 0; i < pictures.size(); ++i)
    for (size_t j = i + 1; j < pictures.size(); ++j) EXPECT_NE(pictures[i], pictures[j]);
  const QPixmap disabled = ToolbarIcon(3).pixmap(QSize(24, 24), QIcon::Disabled);
  EXPECT_FALSE(disabled.isNull());
}

TEST(PrinterTest, LinesGoToTheDocumentInAFixedPitchFont) {
  QTemporaryDir dir;
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFormat(QPrinter::PdfFormat);
  const QString file = dir.filePath(QStringLiteral("rapport.pdf"));
  printer.setOutputFileName(file);
  QtPrinter out(printer);
  out.SetFontName(QStringLiteral("Courier New"));
  out.SetFontSize(10);
  // Columns line up: every character takes the same width.
  const QFontMetricsF fm(out.PrintFont());
  EXPECT_DOUBLE_EQ(fm.horizontalAdvance(QStringLiteral("iiiii")),
                   fm.horizontalAdvance(QStringLiteral("WWWWW")));
  out.SetFontBold(true);
  const QFontMetricsF bold(out.PrintFont());
  EXPECT_DOUBLE_EQ(bold.horizontalAdvance(QStringLiteral("1,2.")),
                   bold.horizontalAdvance(QStringLiteral("MMMM")));
  EXPECT_EQ(out.Page(), 1);
  EXPECT_FALSE(out.Printing());
  out.SetFontBold(true);
  out.PrintLine(QStringLiteral("Numéros   Sorties"));
  EXPECT_TRUE(out.Printing());
  out.SetFontBold(false);
  out.PrintLine(QString());
  out.PrintLine(QStringLiteral("01,02        12"));
  out.NewPage();
  EXPECT_EQ(out.Page(), 2);
  out.PrintLine(QStringLiteral("03,04         7"));
  out.EndDoc();
  EXPECT_FALSE(out.Printing());
  EXPECT_EQ(out.Page(), 1);
  EXPECT_GT(QFileInfo(file).size(), 500);
}

TEST(PrinterTest, KillDocAbandonsTheDocument) {
  QTemporaryDir dir;
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(dir.filePath(QStringLiteral("abandon.pdf")));
  QtPrinter out(printer);
  out.PrintLine(QStringLiteral("ligne"));
  out.KillDoc();
  EXPECT_FALSE(out.Printing());
  EXPECT_EQ(out.Page(), 1);
}

}  // namespace
}  // namespace kuvo::testing
