// The date-time parser of every time locale it knows: the input's first byte
// picks the locale and whether a date alone is accepted, the rest is the
// text.
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <string>

#include "platform/locale.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  setenv("TZ", "UTC", 1);
  tzset();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const char* const kLocales[] = {"C", "en_GB", "de_DE", "fr_FR"};
  if (size == 0) return 0;
  const char* locale = kLocales[data[0] % 4];
  const int flag = (data[0] >> 2) & 1;
  const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
  long seconds = 0;
  convert2unixdatel(text.c_str(), &seconds, flag, locale);
  return 0;
}
