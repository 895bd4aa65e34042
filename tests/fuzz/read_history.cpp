// Fuzz target: one operator history file (FuzzCheck.h, ReadOneFile).
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "FuzzCheck.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  if (const char* fault = kuvo::fuzz::ReadOneFile(bytes)) {
    std::fprintf(stderr, "fault: %s\n", fault);
    std::abort();
  }
  return 0;
}
