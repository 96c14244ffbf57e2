// Number conversion, the stream side of LineWriter and the list of live
// writers that WritePendingOutput empties.
#include "util/line_writer.h"

#include <unistd.h>

#include <algorithm>

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
  // Two digits per step, written from the last one back; the steps below
  // 2^32 (times, most sizes) divide in 32 bits, which takes fewer
  // instructions.
  char* const end = p + DecimalLength(value);
  p = end;
  while (value > 0xffffffffu) {
    const uint64_t rest = value / 100;
    p -= 2;
    memcpy(p, kDigitPairs + (value - rest * 100) * 2, 2);
    value = rest;
  }
  uint32_t v = static_cast<uint32_t>(value);
  while (v >= 100) {
    const uint32_t rest = v / 100;
    p -= 2;
    memcpy(p, kDigitPairs + (v - rest * 100) * 2, 2);
    v = rest;
  }
  if (v >= 10) {
    memcpy(p - 2, kDigitPairs + v * 2, 2);
  } else {
    p[-1] = static_cast<char>('0' + v);
  }
  return end;
}

namespace {

LineWriter* g_newestWriter = nullptr;

// Whether `out` is a terminal; asked once for standard output, which most
// writers use, one per record in some reports.
bool IsTerminal(FILE* out) {
  if (out == stdout) {
    static const bool stdoutIsTerminal = isatty(STDOUT_FILENO) == 1;
    return stdoutIsTerminal;
  }
  const int fd = fileno(out);
  return fd >= 0 && isatty(fd) == 1;
}

}  // namespace

char* CopyShowingControls(char* p, const char* text, size_t size) {
  for (size_t i = 0; i < size; ++i) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    if (c < 0x20 || c == 0x7f) {
      *p++ = '?';
    } else if (c == 0xc2 && i + 1 < size && static_cast<unsigned char>(text[i + 1]) >= 0x80 &&
               static_cast<unsigned char>(text[i + 1]) <= 0x9f) {
      *p++ = '?';
      ++i;
    } else {
      *p++ = static_cast<char>(c);
    }
  }
  return p;
}

LineWriter::LineWriter(FILE* out)
    : out_(out),
      end_(buffer_),
      showControls_(IsTerminal(out)),
      older_(g_newestWriter),
      newer_(nullptr) {
  if (older_ != nullptr) older_->newer_ = this;
  g_newestWriter = this;
}

LineWriter::~LineWriter() {
  Flush();
  if (older_ != nullptr) older_->newer_ = newer_;
  if (newer_ != nullptr) {
    newer_->older_ = older_;
  } else {
    g_newestWriter = older_;
  }
}

void WritePendingOutput() {
  LineWriter* oldest = g_newestWriter;
  while (oldest != nullptr && oldest->older_ != nullptr) oldest = oldest->older_;
  for (LineWriter* w = oldest; w != nullptr; w = w->newer_) w->Flush();
  fflush(stdout);
}

void LineWriter::Flush() {
  if (end_ != buffer_) fwrite_unlocked(buffer_, 1, static_cast<size_t>(end_ - buffer_), out_);
  end_ = buffer_;
}

LineWriter& LineWriter::CatalogText(const char* text) {
  const size_t size = strlen(text);
  if (!showControls_) return Text(text, size);
  // Shown in pieces that fit the buffer; a piece never grows.
  for (size_t done = 0; done < size;) {
    if (Room() < 2) Flush();
    size_t piece = std::min(size - done, Room());
    // Keep a two-byte control together.
    if (piece < size - done && piece > 1 && text[done + piece - 1] == '\xc2') --piece;
    end_ = CopyShowingControls(end_, text + done, piece);
    done += piece;
  }
  return *this;
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
