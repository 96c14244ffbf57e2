// LineWriter: assembles report records in a fixed buffer and hands them to a
// stdio stream in large writes, so that a listing of millions of lines costs
// no heap allocation, no iostream formatting and few stdio calls. A record
// printer may use a writer of its own for one record (written out when the
// writer goes away) or append to a caller's writer that collects many
// records; anything longer than the buffer is passed on in pieces, so a
// record of any length comes out whole and in order. Whoever shares the
// stream with a writer flushes it before writing there directly.
#ifndef UTIL_LINE_WRITER_H_
#define UTIL_LINE_WRITER_H_

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace Orvantic {
namespace Stashwell {

class LineWriter {
 public:
  explicit LineWriter(FILE* out) : out_(out), end_(buffer_) {}
  ~LineWriter() { Flush(); }
  LineWriter(const LineWriter&) = delete;
  LineWriter& operator=(const LineWriter&) = delete;

  LineWriter& Text(const char* text, size_t size) {
    if (size > static_cast<size_t>(buffer_ + kSize - end_)) return Spill(text, size);
    memcpy(end_, text, size);
    end_ += size;
    return *this;
  }
  LineWriter& Text(const char* text) { return Text(text, strlen(text)); }
  // `text`, or `ifEmpty` when `text` is empty.
  LineWriter& TextOr(const char* text, const char* ifEmpty) {
    return Text(text[0] != '\0' ? text : ifEmpty);
  }
  LineWriter& Char(char c) {
    if (end_ == buffer_ + kSize) Flush();
    *end_++ = c;
    return *this;
  }
  LineWriter& UInt(uint64_t value) {
    if (value < 10) return Char(static_cast<char>('0' + value));
    return Digits(value);
  }
  LineWriter& Int(int64_t value) {
    if (value >= 0) return UInt(static_cast<uint64_t>(value));
    // Negated in unsigned arithmetic, so that INT64_MIN needs no special case.
    return Char('-').UInt(0 - static_cast<uint64_t>(value));
  }

  // Hands the assembled text to the stream.
  void Flush();

 private:
  static const size_t kSize = 65536;

  LineWriter& Spill(const char* text, size_t size);
  // Writes a number of two digits or more.
  LineWriter& Digits(uint64_t value);

  FILE* out_;
  char* end_;
  char buffer_[kSize];
};

}  // namespace Stashwell
}  // namespace Orvantic

#endif  // UTIL_LINE_WRITER_H_
