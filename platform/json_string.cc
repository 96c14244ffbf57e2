// JSON string values: jansson accepts only UTF-8, catalog texts may hold any
// bytes, so invalid sequences are replaced before the string is made.
#include "platform/json_string.h"

#include <cstring>
#include <string>

json_t* orv_json_string(const char* text, size_t length, const char* fallback) {
  if (!text) text = fallback ? fallback : "";
  if (length == 0) length = strlen(text);
  json_t* value = json_stringn(text, length);
  if (value) return value;
  std::string clean(text, length);
  for (size_t i = 0; i < clean.size();) {
    unsigned char c = static_cast<unsigned char>(clean[i]);
    size_t n = c < 0x80 ? 1 : (c >> 5) == 0x6 ? 2 : (c >> 4) == 0xE ? 3 : (c >> 3) == 0x1E ? 4 : 0;
    bool ok = n > 0 && i + n <= clean.size() && !(n == 2 && c < 0xC2);
    for (size_t k = 1; ok && k < n; ++k)
      ok = (static_cast<unsigned char>(clean[i + k]) & 0xC0) == 0x80;
    // A sequence jansson still refuses (surrogates, overlong forms) is
    // replaced byte by byte below.
    if (ok && n > 1) {
      json_t* probe = json_stringn(clean.data() + i, n);
      if (probe)
        json_decref(probe);
      else
        ok = false;
    }
    if (!ok) {
      clean[i] = '?';
      n = 1;
    }
    i += n;
  }
  return json_stringn(clean.data(), clean.size());
}
