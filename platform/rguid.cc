// Formats GUIDs for the reports; see rguid.h for the text form.
#include "platform/rguid.h"

int RGUIDAsString(const unsigned char* guid, char* buffer, size_t bufferSize, int noBraces) {
  const bool braces = noBraces != 1;
  if (guid == nullptr || buffer == nullptr) return 1;
  if (bufferSize < (braces ? size_t{RGUID_BRACED_TEXT_SIZE} : size_t{RGUID_TEXT_SIZE})) return 1;

  static const char kHex[] = "0123456789abcdef";
  char* out = buffer;
  if (braces) *out++ = '{';
  for (int i = 0; i < 16; ++i) {
    // A dash before bytes 4, 6, 8 and 10 gives the 8-4-4-4-12 grouping.
    if (i == 4 || i == 6 || i == 8 || i == 10) *out++ = '-';
    *out++ = kHex[guid[i] >> 4];
    *out++ = kHex[guid[i] & 0x0f];
  }
  if (braces) *out++ = '}';
  *out = '\0';
  return 0;
}
