// Fuzz target: two operator history files merged (FuzzCheck.h, MergeTwoFiles).
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "FuzzCheck.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  if (const char* fault = kuvo::fuzz::MergeTwoFiles(bytes)) {
    std::fprintf(stderr, "fault: %s\n", fault);
    std::abort();
  }
  return 0;
}
