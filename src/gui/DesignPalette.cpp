#include "gui/DesignPalette.h"

#include <initializer_list>

namespace kuvo {

namespace {

QPalette MakeDesignPalette() {
  const QColor window(0xEF, 0xEF, 0xEF);
  const QColor text(Qt::black);
  // Greyed text still reads at 4.5:1 on the window and on white.
  const QColor greyed(0x6B, 0x6B, 0x6B);
  // A selection dark enough for white text on it (5.4:1).
  const QColor selection(0x2A, 0x6D, 0xB0);

  QPalette p;
  for (QPalette::ColorGroup g : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    const bool off = g == QPalette::Disabled;
    p.setColor(g, QPalette::Window, window);
    p.setColor(g, QPalette::WindowText, off ? greyed : text);
    p.setColor(g, QPalette::Base, off ? window : QColor(Qt::white));
    p.setColor(g, QPalette::AlternateBase, QColor(0xF7, 0xF7, 0xF7));
    p.setColor(g, QPalette::ToolTipBase, QColor(0xFF, 0xFF, 0xDC));
    p.setColor(g, QPalette::ToolTipText, text);
    p.setColor(g, QPalette::PlaceholderText, greyed);
    p.setColor(g, QPalette::Text, off ? greyed : text);
    p.setColor(g, QPalette::Button, window);
    p.setColor(g, QPalette::ButtonText, off ? greyed : text);
    p.setColor(g, QPalette::BrightText, Qt::white);
    p.setColor(g, QPalette::Light, Qt::white);
    p.setColor(g, QPalette::Midlight, QColor(0xCA, 0xCA, 0xCA));
    p.setColor(g, QPalette::Mid, QColor(0xB8, 0xB8, 0xB8));
    p.setColor(g, QPalette::Dark, QColor(0x9F, 0x9F, 0x9F));
    p.setColor(g, QPalette::Shadow, QColor(0x76, 0x76, 0x76));
    p.setColor(g, QPalette::Highlight, off ? greyed : selection);
    p.setColor(g, QPalette::HighlightedText, Qt::white);
    p.setColor(g, QPalette::Link, QColor(0x00, 0x00, 0xC0));
    p.setColor(g, QPalette::LinkVisited, QColor(0x80, 0x00, 0x80));
  }
  return p;
}

}  // namespace

const QPalette& DesignPalette() {
  static const QPalette palette = MakeDesignPalette();
  return palette;
}

QColor FocusColour() { return QColor(0x10, 0x3E, 0x80); }

}  // namespace kuvo
