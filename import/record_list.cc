// The zero-run encoding of RecordList's records.
#include "import/record_list.h"

namespace record_list_internal {

namespace {

void Put16(unsigned char* p, size_t value) {
  p[0] = static_cast<unsigned char>(value);
  p[1] = static_cast<unsigned char>(value >> 8);
}

size_t Get16(const unsigned char* p) { return p[0] | (static_cast<size_t>(p[1]) << 8); }

}  // namespace

// Works on whole 8-byte words, which makes the scan fast: a run of zero
// words is left out, a run of other words is kept; bytes after the last
// whole word form a last literal piece.
unsigned char* Encode(const unsigned char* record, size_t size, unsigned char* out) {
  const size_t words = size / kMinZeroRun;
  auto zero = [record](size_t word) {
    uint64_t w;
    memcpy(&w, record + word * kMinZeroRun, sizeof w);
    return w == 0;
  };
  size_t i = 0;
  while (i < words) {
    const size_t zerosStart = i;
    while (i < words && zero(i)) ++i;
    const size_t literalStart = i;
    while (i < words && !zero(i)) ++i;
    const size_t literalBytes = (i - literalStart) * kMinZeroRun;
    Put16(out, (literalStart - zerosStart) * kMinZeroRun);
    Put16(out + 2, literalBytes);
    memcpy(out + 4, record + literalStart * kMinZeroRun, literalBytes);
    out += 4 + literalBytes;
  }
  const size_t tail = size - words * kMinZeroRun;
  if (tail > 0) {
    Put16(out, 0);
    Put16(out + 2, tail);
    memcpy(out + 4, record + words * kMinZeroRun, tail);
    out += 4 + tail;
  }
  return out;
}

const unsigned char* Decode(const unsigned char* in, size_t size, unsigned char* record) {
  size_t i = 0;
  while (i < size) {
    const size_t zeros = Get16(in);
    const size_t literal = Get16(in + 2);
    memset(record + i, 0, zeros);
    memcpy(record + i + zeros, in + 4, literal);
    i += zeros + literal;
    in += 4 + literal;
  }
  return in;
}

}  // namespace record_list_internal
