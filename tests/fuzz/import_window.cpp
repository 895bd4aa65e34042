// Fuzz target: the file chosen in the import window, loaded through the
// scripted platform into a scratch store (ImportScratch.h).
#include <cstdint>

#include "ImportScratch.h"

namespace {
kuvo::fuzz::ImportScratch* scratch = nullptr;
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  scratch = new kuvo::fuzz::ImportScratch;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  scratch->Load(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  return 0;
}
