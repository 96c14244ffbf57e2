// The test-import-fragments reader: the input is a test import file. Image
// lines are counted, not queued; the reader's reports go to /dev/null.
#include <cstdint>
#include <cstdio>
#include <string>

#include "import/test_import_fragments.h"

namespace {
FILE* g_sink = nullptr;
}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  g_sink = fopen("/dev/null", "w");
  return g_sink == nullptr ? 1 : 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  size_t images = 0;
  ReadTestImportFragments(std::string(reinterpret_cast<const char*>(data), size), g_sink,
                          [&images](const TestImportContext&, const char*) { ++images; });
  return 0;
}
