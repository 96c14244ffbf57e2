// LineWriter: assembles report records in a fixed buffer on the stack and
// hands them to a stdio stream in one write, so that a listing of millions of
// lines costs one stdio call per record, no heap allocation and no iostream
// formatting. Anything longer than the buffer is passed on in pieces, so a
// record of any length comes out whole and in order with the stream's other
// output. The destructor writes what is left.
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
  LineWriter& Int(int64_t value);
  LineWriter& UInt(uint64_t value);

  // Hands the assembled text to the stream.
  void Flush();

 private:
  static const size_t kSize = 4096;

  LineWriter& Spill(const char* text, size_t size);

  FILE* out_;
  char* end_;
  char buffer_[kSize];
};

}  // namespace Stashwell
}  // namespace Orvantic

#endif  // UTIL_LINE_WRITER_H_
