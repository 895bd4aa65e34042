#pragma once

#include <QPalette>

namespace kuvo {

// The light colours the windows were designed in: whatever the desktop's theme,
// every window of the program is drawn in them, so that the design's own text
// and back colours (black captions, white slots, red step numbers) always meet
// the background they were chosen for. Every role of every group is set, so
// that nothing of a dark desktop palette shows through.
const QPalette& DesignPalette();

// The colour of the keyboard focus drawn on a key or a cell: dark enough to
// stand out against the window and against a white or a red key.
QColor FocusColour();

}  // namespace kuvo
