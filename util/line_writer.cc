// Number conversion and the stream side of LineWriter.
#include "util/line_writer.h"

namespace Orvantic {
namespace Stashwell {

namespace {

const char kDigitPairs[] =
    "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
    "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
    "8081828384858687888990919293949596979899";

const uint64_t kPowersOf10[] = {
    1ull,
    10ull,
    100ull,
    1000ull,
    10000ull,
    100000ull,
    1000000ull,
    10000000ull,
    100000000ull,
    1000000000ull,
    10000000000ull,
    100000000000ull,
    1000000000000ull,
    10000000000000ull,
    100000000000000ull,
    1000000000000000ull,
    10000000000000000ull,
    100000000000000000ull,
    1000000000000000000ull,
    10000000000000000000ull,
};

// The number of decimal digits of `value` (at least 1): the bit length
// times log10(2) (1233 / 4096) is the digit count or one less.
int DecimalLength(uint64_t value) {
  const int bits = 64 - __builtin_clzll(value | 1);
  const int guess = (bits * 1233) >> 12;
  return guess + (value >= kPowersOf10[guess] ? 1 : 0);
}

}  // namespace

char* FormatDecimalDigits(char* p, uint64_t value) {
  // Two digits per step, written from the last one back.
  char* const end = p + DecimalLength(value);
  p = end;
  while (value >= 100) {
    const size_t pair = static_cast<size_t>(value % 100) * 2;
    value /= 100;
    *--p = kDigitPairs[pair + 1];
    *--p = kDigitPairs[pair];
  }
  if (value >= 10) {
    const size_t pair = static_cast<size_t>(value) * 2;
    *--p = kDigitPairs[pair + 1];
    *--p = kDigitPairs[pair];
  } else {
    *--p = static_cast<char>('0' + value);
  }
  return end;
}

void LineWriter::Flush() {
  if (end_ != buffer_) fwrite_unlocked(buffer_, 1, static_cast<size_t>(end_ - buffer_), out_);
  end_ = buffer_;
}

LineWriter& LineWriter::Spill(const char* text, size_t size) {
  Flush();
  if (size >= kSize) {
    fwrite_unlocked(text, 1, size, out_);
    return *this;
  }
  memcpy(end_, text, size);
  end_ += size;
  return *this;
}

}  // namespace Stashwell
}  // namespace Orvantic
