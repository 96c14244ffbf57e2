// Number conversion and the stream side of LineWriter.
#include "util/line_writer.h"

namespace Orvantic {
namespace Stashwell {

LineWriter& LineWriter::Digits(uint64_t value) {
  // Two digits per step from a table of "00".."99", written in place from
  // the last digit back.
  static const char kPairs[] =
      "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
      "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
      "8081828384858687888990919293949596979899";
  size_t count = 2;
  for (uint64_t rest = value / 100;; rest /= 10000, count += 4) {
    if (rest < 1) break;
    if (rest < 10) { count += 1; break; }
    if (rest < 100) { count += 2; break; }
    if (rest < 1000) { count += 3; break; }
  }
  if (count > static_cast<size_t>(buffer_ + kSize - end_)) Flush();
  char* p = end_ + count;
  end_ = p;
  while (value >= 100) {
    const size_t pair = static_cast<size_t>(value % 100) * 2;
    value /= 100;
    *--p = kPairs[pair + 1];
    *--p = kPairs[pair];
  }
  if (value >= 10) {
    const size_t pair = static_cast<size_t>(value) * 2;
    *--p = kPairs[pair + 1];
    *--p = kPairs[pair];
  } else {
    *--p = static_cast<char>('0' + value);
  }
  return *this;
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
