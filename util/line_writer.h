// LineWriter: assembles report records in a fixed buffer and hands them to a
// stdio stream in large writes, so that a listing of millions of lines costs
// no heap allocation, no iostream formatting and few stdio calls. A record
// printer may use a writer of its own for one record (written out when the
// writer goes away) or append to a caller's writer that collects many
// records; anything longer than the buffer is passed on in pieces, so a
// record of any length comes out whole and in order. Whoever shares the
// stream with a writer flushes it before writing there directly.
//
// The hot path of a large listing appends through a Span: room for a whole
// record of bounded length is made once, and the fields are then written
// without a check each.
//
// Texts read from the catalog (CatalogText, TextOr, Span::Field and
// Span::FieldOr) go out as stored, except on a terminal: there every control
// character in them (C0, DEL, and C1 in its UTF-8 form) shows as '?', so that
// a name cannot clear the screen, retitle the window or forge a line.
#ifndef UTIL_LINE_WRITER_H_
#define UTIL_LINE_WRITER_H_

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace Orvantic {
namespace Stashwell {

// Copies the catalog text text[0, size) to `p` with every control character
// replaced by '?' (one '?' for a two-byte UTF-8 C1 control); returns the end
// of what was written, at most `size` bytes.
char* CopyShowingControls(char* p, const char* text, size_t size);

// Writes the decimal digits of `value` (at least 10) at `p`; returns the
// end of what was written (at most 20 bytes).
char* FormatDecimalDigits(char* p, uint64_t value);

// Writes the decimal digits of `value` at `p` (at most 20 bytes); returns
// the end of what was written. One digit, the most common number in
// catalog records, takes no call.
inline char* FormatDecimal(char* p, uint64_t value) {
  if (value >= 10) return FormatDecimalDigits(p, value);
  *p = static_cast<char>('0' + value);
  return p + 1;
}

// Hands the text of every live LineWriter to its stream, oldest writer
// first, then flushes standard output. Whatever writes to standard error or
// ends the process calls it first (PrintMsg and CmdExit do), so that what a
// run printed comes out whole and before its last word, even when both
// streams go to one file.
void WritePendingOutput();

class LineWriter {
 public:
  static const size_t kSize = 65536;

  // Joins the writers that WritePendingOutput reaches.
  explicit LineWriter(FILE* out);
  // Flushes, then leaves them.
  ~LineWriter();
  LineWriter(const LineWriter&) = delete;
  LineWriter& operator=(const LineWriter&) = delete;

  LineWriter& Text(const char* text, size_t size) {
    if (size > Room()) return Spill(text, size);
    memcpy(end_, text, size);
    end_ += size;
    return *this;
  }
  LineWriter& Text(const char* text) { return Text(text, strlen(text)); }
  // A text read from the catalog (see above).
  LineWriter& CatalogText(const char* text);
  // The catalog text `text`, or `ifEmpty` when `text` is empty.
  LineWriter& TextOr(const char* text, const char* ifEmpty) {
    return text[0] != '\0' ? CatalogText(text) : Text(ifEmpty);
  }
  LineWriter& Char(char c) {
    if (end_ == buffer_ + kSize) Flush();
    *end_++ = c;
    return *this;
  }
  LineWriter& UInt(uint64_t value) {
    if (Room() < kMaxDigits) Flush();
    end_ = FormatDecimal(end_, value);
    return *this;
  }
  LineWriter& Int(int64_t value) {
    if (value >= 0) return UInt(static_cast<uint64_t>(value));
    // Negated in unsigned arithmetic, so that INT64_MIN needs no special case.
    return Char('-').UInt(0 - static_cast<uint64_t>(value));
  }

  // Hands the assembled text to the stream.
  void Flush();

  // Appends one record of at most `maxSize` bytes (at most kSize) with no
  // check per field: room for all of it is made when the span starts, and
  // the record joins the writer's text when the span ends. Writing more than
  // `maxSize` bytes through a span is a fault of the caller.
  class Span {
   public:
    Span(LineWriter& w, size_t maxSize) : w_(w) {
      if (w.Room() < maxSize) w.Flush();
      p_ = w.end_;
    }
    ~Span() { w_.end_ = p_; }
    Span(const Span&) = delete;
    Span& operator=(const Span&) = delete;

    Span& Text(const char* text, size_t size) {
      memcpy(p_, text, size);
      p_ += size;
      return *this;
    }
    // A catalog text of a record's character array: up to its NUL, never
    // past the array, so that the array's size bounds what it adds to the
    // record.
    template <size_t N>
    Span& Field(const char (&text)[N]) {
      const size_t size = strnlen(text, N);
      if (!w_.showControls_) return Text(text, size);
      p_ = CopyShowingControls(p_, text, size);
      return *this;
    }
    // The same, or `ifEmpty` (a literal) when the text is empty.
    template <size_t N, size_t M>
    Span& FieldOr(const char (&text)[N], const char (&ifEmpty)[M]) {
      return text[0] != '\0' ? Field(text) : Text(ifEmpty, M - 1);
    }
    template <size_t M>
    Span& Literal(const char (&text)[M]) {
      return Text(text, M - 1);
    }
    Span& Char(char c) {
      *p_++ = c;
      return *this;
    }
    Span& UInt(uint64_t value) {
      p_ = FormatDecimal(p_, value);
      return *this;
    }
    Span& Int(int64_t value) {
      if (value >= 0) return UInt(static_cast<uint64_t>(value));
      *p_++ = '-';
      return UInt(0 - static_cast<uint64_t>(value));
    }

   private:
    LineWriter& w_;
    char* p_;
  };

  // The most a span may need for a number with its sign.
  static const size_t kMaxDigits = 21;

 private:
  size_t Room() const { return static_cast<size_t>(buffer_ + kSize - end_); }
  LineWriter& Spill(const char* text, size_t size);

  friend void WritePendingOutput();

  FILE* out_;
  char* end_;
  bool showControls_;  // `out_` is a terminal
  LineWriter* older_;  // the live writers, newest first
  LineWriter* newer_;
  char buffer_[kSize];
};

}  // namespace Stashwell
}  // namespace Orvantic

#endif  // UTIL_LINE_WRITER_H_
