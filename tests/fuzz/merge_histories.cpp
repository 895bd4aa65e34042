// Fuzz target: two operator history files merged into the import's layout, as
// the converter merges them. The input holds the first file, a NUL byte, then
// the second. A refusal is a normal end; the written file must read back to
// the same draws.
#include <QString>
#include <cstdint>

#include "FuzzCheck.h"
#include "core/OperatorFiles.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace kuvo::convert;
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const qsizetype cut = bytes.indexOf('\0');
  if (cut < 0) return 0;
  try {
    History history;
    history.Add(ReadHistory(QStringLiteral("ancien.csv"), bytes.first(cut)));
    history.Add(ReadHistory(QStringLiteral("nouveau.csv"), bytes.sliced(cut + 1)));
    kuvo::fuzz::CheckReadsBack(history);
  } catch (const ConvertError&) {
  }
  return 0;
}
