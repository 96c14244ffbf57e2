// Tests of LineWriter: numbers at their limits and records longer than the
// writer's buffer coming out whole and in order.
#include "util/line_writer.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace Orvantic {
namespace Stashwell {
namespace {

// Collects what a function writes to a stream.
template <typename F>
std::string Captured(F write) {
  char* data = nullptr;
  size_t size = 0;
  FILE* out = open_memstream(&data, &size);
  write(out);
  fclose(out);
  std::string text(data, size);
  free(data);
  return text;
}

TEST(LineWriterTest, Numbers) {
  EXPECT_EQ("0 7 10 99 100 1005 -1 -9223372036854775808 9223372036854775807 "
            "18446744073709551615",
            Captured([](FILE* out) {
              LineWriter w(out);
              for (int64_t v : {0, 7, 10, 99, 100, 1005, -1}) w.Int(v).Char(' ');
              w.Int(INT64_MIN).Char(' ').Int(INT64_MAX).Char(' ').UInt(UINT64_MAX);
            }));
  // The digit count at every power of ten and just below it.
  std::string expected;
  for (int digits = 1; digits <= 20; ++digits) {
    if (digits > 1) expected += std::string(digits - 1, '9') + " ";
    expected += "1" + std::string(digits - 1, '0') + " ";
  }
  EXPECT_EQ(expected, Captured([](FILE* out) {
              LineWriter w(out);
              uint64_t p = 1;
              for (int digits = 1; digits <= 20; ++digits) {
                if (digits > 1) w.UInt(p - 1).Char(' ');
                w.UInt(p).Char(' ');
                if (digits < 20) p *= 10;
              }
            }));
}

// Records written through spans: each is whole however full the buffer is,
// and a text field without its NUL stops at the end of its array.
TEST(LineWriterTest, SpansKeepRecordsWhole) {
  struct Record {
    char name[8];
    char after[4];
  } record;
  memcpy(record.name, "12345678", 8);
  memcpy(record.after, "xyz", 4);
  std::string expected;
  for (int i = 0; i < 10000; ++i) expected += "R 12345678 " + std::to_string(i * 7919) + "\n";
  EXPECT_EQ(expected, Captured([&](FILE* out) {
              LineWriter w(out);
              for (int i = 0; i < 10000; ++i) {
                LineWriter::Span s(w, sizeof record + 32);
                s.Literal("R ").Field(record.name).Char(' ').Int(i * 7919).Char('\n');
              }
            }));
}

TEST(LineWriterTest, LongRecordsStayWholeAndInOrder) {
  const std::string block(30000, 'b');
  const std::string huge(100000, 'h');
  std::string expected;
  for (int i = 0; i < 3; ++i) expected += block + "|";
  expected += huge + "|" + std::string(70000, 'c') + "\n";
  EXPECT_EQ(expected, Captured([&](FILE* out) {
              LineWriter w(out);
              for (int i = 0; i < 3; ++i) w.Text(block.c_str()).Char('|');
              w.Text(huge.c_str()).Char('|');
              for (int i = 0; i < 70000; ++i) w.Char('c');
              w.Char('\n');
            }));
}

}  // namespace
}  // namespace Stashwell
}  // namespace Orvantic
