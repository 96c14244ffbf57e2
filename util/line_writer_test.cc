// Tests of LineWriter: numbers at their limits, records longer than the
// writer's buffer coming out whole and in order, catalog texts on a
// terminal, and text still pending when the run ends early.
#include "util/line_writer.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include "util/cmd_exit.h"

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
  // Both sides of 2^32, where the conversion changes its arithmetic.
  EXPECT_EQ(
      "0 7 10 99 100 1005 -1 4294967295 4294967296 -9223372036854775808 "
      "9223372036854775807 18446744073709551615",
      Captured([](FILE* out) {
        LineWriter w(out);
        for (int64_t v : {0LL, 7LL, 10LL, 99LL, 100LL, 1005LL, -1LL, 4294967295LL, 4294967296LL}) {
          w.Int(v).Char(' ');
        }
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

// A catalog text with a screen clear, a window title, a forged record line,
// DEL, a C1 control (UTF-8) and a letter that merely looks like one.
const char kHostileName[] = "pol\x1b[2J\x1b]0;t\x07\nV7.6.0 I x\x7f\xc2\x9b\xc3\xa9";

void WriteHostileName(FILE* out) {
  char field[64];
  strcpy(field, kHostileName);
  LineWriter w(out);
  w.CatalogText(kHostileName).Char('|').TextOr(kHostileName, "-").Char('|');
  LineWriter::Span(w, sizeof field).Field(field).Char('\n');
}

TEST(LineWriterTest, CatalogTextsShowControlsOnlyOnATerminal) {
  EXPECT_EQ(Captured(WriteHostileName),
            std::string(kHostileName) + "|" + kHostileName + "|" + kHostileName + "\n");

  const int master = posix_openpt(O_RDWR | O_NOCTTY);
  ASSERT_GE(master, 0);
  ASSERT_EQ(grantpt(master), 0);
  ASSERT_EQ(unlockpt(master), 0);
  const int slave = open(ptsname(master), O_RDWR | O_NOCTTY);
  ASSERT_GE(slave, 0);
  struct termios raw;
  tcgetattr(slave, &raw);
  cfmakeraw(&raw);  // no line-end translation
  tcsetattr(slave, TCSANOW, &raw);
  FILE* terminal = fdopen(slave, "w");
  WriteHostileName(terminal);
  fclose(terminal);

  const std::string shown = "pol?[2J?]0;t??V7.6.0 I x??\xc3\xa9";
  const std::string expected = shown + "|" + shown + "|" + shown + "\n";
  std::string got;
  char buf[256];
  struct pollfd readable = {master, POLLIN, 0};
  while (got.size() < expected.size() && poll(&readable, 1, 2000) == 1) {
    ssize_t n = read(master, buf, sizeof buf);
    if (n <= 0) break;
    got.append(buf, static_cast<size_t>(n));
  }
  close(master);
  EXPECT_EQ(got, expected);
}

TEST(LineWriterDeathTest, AnEarlyEndWritesOutEveryLiveWriterInOrder) {
  const std::string path = ::testing::TempDir() + "line_writer_early_end";
  EXPECT_EXIT(
      {
        FILE* file = fopen(path.c_str(), "w");
        LineWriter outer(file);
        outer.Text("outer\n");
        {
          LineWriter done(file);  // written out when it goes, and gone
          done.Text("done\n");
        }
        LineWriter inner(file);
        inner.Text("inner\n");
        CmdExit(3);
      },
      ::testing::ExitedWithCode(3), "");
  std::ifstream in(path);
  std::ostringstream text;
  text << in.rdbuf();
  EXPECT_EQ(text.str(), "done\nouter\ninner\n");
  remove(path.c_str());
}

}  // namespace
}  // namespace Stashwell
}  // namespace Orvantic
