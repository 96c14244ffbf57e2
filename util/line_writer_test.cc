// Tests of LineWriter: numbers at their limits, records longer than the
// writer's buffer coming out whole and in order, catalog texts on a
// terminal, and text still pending when the run ends early.
#include "util/line_writer.h"

#include <gtest/gtest.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "util/cmd_exit.h"

namespace Orvantic {
namespace Stashwell {
namespace {

// What a function writes to standard output (a file while captured).
template <typename F>
std::string Captured(F write) {
  testing::internal::CaptureStdout();
  write(stdout);
  fflush(stdout);
  return testing::internal::GetCapturedStdout();
}

// Both sides of 2^32, where the conversion changes its arithmetic, the ends
// of both types, and every power of ten with the number just below it.
TEST(LineWriterTest, Numbers) {
  const int64_t signedValues[] = {0, 7, 1005, -1, 4294967295, 4294967296, INT64_MIN, INT64_MAX};
  std::vector<uint64_t> unsignedValues = {UINT64_MAX};
  for (uint64_t p = 1;; p *= 10) {
    unsignedValues.insert(unsignedValues.end(), {p - 1, p});
    if (p > UINT64_MAX / 10) break;
  }
  std::string expected;
  for (int64_t v : signedValues) expected += std::to_string(v) + " ";
  for (uint64_t v : unsignedValues) expected += std::to_string(v) + " ";
  EXPECT_EQ(expected, Captured([&](FILE* out) {
              LineWriter w(out);
              for (int64_t v : signedValues) w.Int(v).Char(' ');
              for (uint64_t v : unsignedValues) w.UInt(v).Char(' ');
            }));
}

// Records written through spans are whole however full the buffer is, and a
// text field without its NUL stops at the end of its array; texts longer
// than the buffer come out whole and in order.
TEST(LineWriterTest, RecordsStayWholeAndInOrder) {
  const struct {
    char name[8], after[4];
  } record = {{'1', '2', '3', '4', '5', '6', '7', '8'}, "xyz"};
  const std::string block(30000, 'b');
  const std::string huge(100000, 'h');
  std::string expected;
  for (int i = 0; i < 10000; ++i) expected += "R 12345678 " + std::to_string(i * 7919) + "\n";
  for (int i = 0; i < 3; ++i) expected += block + "|";
  expected += huge + "|" + std::string(70000, 'c') + "\n";
  EXPECT_EQ(expected, Captured([&](FILE* out) {
              LineWriter w(out);
              for (int i = 0; i < 10000; ++i) {
                LineWriter::Span s(w, sizeof record + 32);
                s.Literal("R ").Field(record.name).Char(' ').Int(i * 7919).Char('\n');
              }
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

  int master, slave;
  struct termios raw = {};
  cfmakeraw(&raw);  // no line-end translation
  ASSERT_EQ(openpty(&master, &slave, nullptr, &raw, nullptr), 0);
  FILE* terminal = fdopen(slave, "w");
  WriteHostileName(terminal);
  fclose(terminal);

  const std::string shown = "pol?[2J?]0;t??V7.6.0 I x??\xc3\xa9";
  const std::string expected = shown + "|" + shown + "|" + shown + "\n";
  // With the terminal's only other end closed, a read ends (EIO) once the text is drained.
  std::string got;
  char buf[256];
  for (ssize_t n; (n = read(master, buf, sizeof buf)) > 0;) got.append(buf, n);
  close(master);
  EXPECT_EQ(got, expected);
}

TEST(LineWriterDeathTest, AnEarlyEndWritesOutEveryLiveWriterInOrder) {
  EXPECT_EXIT(
      {
        LineWriter outer(stderr);
        outer.Text("outer\n");
        {
          LineWriter done(stderr);  // written out when it goes, and gone
          done.Text("done\n");
        }
        LineWriter inner(stderr);
        inner.Text("inner\n");
        CmdExit(3);
      },
      ::testing::ExitedWithCode(3), "^done\nouter\ninner\n$");
}

}  // namespace
}  // namespace Stashwell
}  // namespace Orvantic
