// The message catalog reader and the printf check that guards its texts: the
// input is a catalog file. Every message of the first sets is looked up;
// a text whose conversions fit a default's is formatted like zkgetmsg does.
#include <cstdint>
#include <cstdio>
#include <string>

#include "platform/message_catalog_file.h"
#include "platform/msgcat.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  MessageCatalogFile catalog;
  if (!catalog.Parse(std::string(reinterpret_cast<const char*>(data), size))) return 0;
  char buffer[256];
  for (int set = 0; set <= 8; ++set) {
    for (int number = 0; number <= 64; ++number) {
      const char* text = catalog.Find(set, number);
      std::string types;
      if (text == nullptr || !PrintfArgumentTypes(text, &types)) continue;
      if (types == "s") snprintf(buffer, sizeof buffer, text, "name");
      if (types == "si") snprintf(buffer, sizeof buffer, text, "name", 7);
    }
  }
  return 0;
}
