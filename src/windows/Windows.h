#pragma once

#include "core/Program.h"

namespace kuvo {

// Every window of the program, the main window first: the list the program and
// the scenario driver are built with.
const WindowMakers& AllWindows();

}  // namespace kuvo
