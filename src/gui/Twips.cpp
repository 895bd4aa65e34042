#include "gui/Twips.h"

#include <QGuiApplication>
#include <QScreen>

namespace kuvo {

double TwipsPerPixel() {
  const QScreen* screen = qGuiApp ? QGuiApplication::primaryScreen() : nullptr;
  const double dpi = screen ? screen->logicalDotsPerInch() : 96.0;
  return dpi > 0 ? 1440.0 / dpi : 15.0;
}

}  // namespace kuvo
