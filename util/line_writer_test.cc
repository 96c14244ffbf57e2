// Tests of LineWriter: numbers at their limits and records longer than the
// writer's buffer coming out whole and in order.
#include "util/line_writer.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
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
