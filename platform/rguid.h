// Text form of a 16-byte GUID: the bytes in storage order as lower-case hex
// digits grouped 8-4-4-4-12 and joined by '-', e.g.
// "6f9619ff-8b86-d011-b42d-00c04fc964ff", optionally inside braces.
#ifndef PLATFORM_RGUID_H_
#define PLATFORM_RGUID_H_

#include <cstddef>

enum {
  RGUID_TEXT_SIZE = 37,         // buffer size for the form without braces
  RGUID_BRACED_TEXT_SIZE = 39,  // buffer size for "{...}"
};

// Writes the text form of `guid` (16 bytes) into `buffer` of `bufferSize`
// bytes, NUL-terminated: without braces when `noBraces` is 1, inside braces
// otherwise. Returns 0, or non-zero (buffer left unchanged) when `guid` or
// `buffer` is null or the buffer is too small for the form asked for.
int RGUIDAsString(const unsigned char* guid, char* buffer, size_t bufferSize, int noBraces);

#endif  // PLATFORM_RGUID_H_
