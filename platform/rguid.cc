// Formats GUIDs for the reports; see rguid.h for the text form. A listing
// prints one per image, so the digits come from a table of byte pairs
// rather than a loop that decides on every byte.
#include "platform/rguid.h"

#include <cstring>

namespace {

// The two lower-case hex digits of every byte value.
struct HexPairs {
  char pair[256][2];
  constexpr HexPairs() : pair() {
    const char digits[] = "0123456789abcdef";
    for (int i = 0; i < 256; ++i) {
      pair[i][0] = digits[i >> 4];
      pair[i][1] = digits[i & 0x0f];
    }
  }
};
constexpr HexPairs kHexPairs;

// Writes `count` bytes as hex digits at `out`; returns the end.
inline char* HexBytes(char* out, const unsigned char* bytes, int count) {
  for (int i = 0; i < count; ++i) {
    memcpy(out, kHexPairs.pair[bytes[i]], 2);
    out += 2;
  }
  return out;
}

}  // namespace

int RGUIDAsString(const unsigned char* guid, char* buffer, size_t bufferSize, int noBraces) {
  const bool braces = noBraces != 1;
  if (guid == nullptr || buffer == nullptr) return 1;
  if (bufferSize < (braces ? size_t{RGUID_BRACED_TEXT_SIZE} : size_t{RGUID_TEXT_SIZE})) return 1;

  char* out = buffer;
  if (braces) *out++ = '{';
  // The 8-4-4-4-12 grouping: bytes 0-3, 4-5, 6-7, 8-9, 10-15.
  out = HexBytes(out, guid, 4);
  *out++ = '-';
  out = HexBytes(out, guid + 4, 2);
  *out++ = '-';
  out = HexBytes(out, guid + 6, 2);
  *out++ = '-';
  out = HexBytes(out, guid + 8, 2);
  *out++ = '-';
  out = HexBytes(out, guid + 10, 6);
  if (braces) *out++ = '}';
  *out = '\0';
  return 0;
}
