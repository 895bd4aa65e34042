#pragma once

// What every converter target checks once a history has been read.

#include <cstdio>
#include <cstdlib>

#include "core/OperatorFiles.h"

namespace kuvo::fuzz {

[[noreturn]] inline void Fail(const char* what) {
  std::fprintf(stderr, "fuzz check failed: %s\n", what);
  std::abort();
}

// The written file is read again as the import's layout: it must give the same
// draws, and write itself again byte for byte.
inline void CheckReadsBack(const convert::History& history) {
  const QByteArray written = history.Render();
  convert::History again;
  try {
    again.Add(convert::ReadHistory(QStringLiteral("Kuvo.csv"), written));
  } catch (const convert::ConvertError& e) {
    std::fprintf(stderr, "%s\n", e.what());
    Fail("the written file is refused");
  }
  if (again.Size() != history.Size()) Fail("the written file holds another number of draws");
  if (again.Render() != written) Fail("the written file does not write itself again");
}

}  // namespace kuvo::fuzz
