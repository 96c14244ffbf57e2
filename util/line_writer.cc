// Number conversion and the stream side of LineWriter.
#include "util/line_writer.h"

namespace Orvantic {
namespace Stashwell {

LineWriter& LineWriter::UInt(uint64_t value) {
  char digits[20];
  char* p = digits + sizeof digits;
  do {
    *--p = static_cast<char>('0' + value % 10);
    value /= 10;
  } while (value != 0);
  return Text(p, static_cast<size_t>(digits + sizeof digits - p));
}

LineWriter& LineWriter::Int(int64_t value) {
  if (value >= 0) return UInt(static_cast<uint64_t>(value));
  Char('-');
  // Negated in unsigned arithmetic, so that INT64_MIN needs no special case.
  return UInt(0 - static_cast<uint64_t>(value));
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
