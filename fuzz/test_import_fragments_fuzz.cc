// The test-import-fragments reader: the input is a test import file. Image
// lines are counted, not queued; the reader's reports go to /dev/null.
#include <cstdint>
#include <cstdio>

#include "import/test_import_fragments.h"

namespace {
FILE* g_sink = nullptr;
}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  g_sink = fopen("/dev/null", "w");
  return g_sink == nullptr ? 1 : 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;  // fmemopen refuses an empty buffer
  FILE* in = fmemopen(const_cast<uint8_t*>(data), size, "r");
  if (in == nullptr) return 0;
  size_t images = 0;
  ReadTestImportFragments(in, g_sink, [&images](const TestImportContext&, const char*) {
    ++images;
  });
  fclose(in);
  return 0;
}
