// Fuzz target: one operator history file, of any layout, told apart from a
// file of the import's layout as the import window does, then read and written
// in the import's layout as the converter does. A refusal is a normal end; the
// written file must read back to the same draws.
#include <QString>
#include <cstdint>

#include "FuzzCheck.h"
#include "core/OperatorFiles.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace kuvo::convert;
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  IsOperatorFile(bytes, static_cast<int>(KuvoColumns().size()));
  try {
    History history;
    history.Add(ReadHistory(QStringLiteral("historique.csv"), bytes));
    kuvo::fuzz::CheckReadsBack(history);
  } catch (const ConvertError&) {
  }
  return 0;
}
