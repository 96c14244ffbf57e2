// The confirmation prompts: how much of the input an answer takes, and the
// yes/no question that repeats until it gets an answer or the input ends.
#include "cmd/confirm.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

// Runs `ask` with `input` on its input stream; returns what it wrote and
// stores its answer and the input it left unread.
template <typename Ask>
std::string Answer(Ask ask, const std::string& input, bool* answer, std::string* rest = nullptr) {
  std::string buffer = input;
  FILE* in = buffer.empty() ? fopen("/dev/null", "r") : fmemopen(&buffer[0], buffer.size(), "r");
  char* outText = nullptr;
  size_t outSize = 0;
  FILE* out = open_memstream(&outText, &outSize);
  *answer = ask(in, out);
  if (rest != nullptr) {
    rest->clear();
    for (int c; (c = getc(in)) != EOF;) rest->push_back(static_cast<char>(c));
  }
  fclose(in);
  fclose(out);
  std::string written(outText, outSize);
  free(outText);
  return written;
}

TEST(ConfirmTest, EntryPromptReadsOnlyOneCharacter) {
  bool answer;
  std::string rest;
  std::string out = Answer(ConfirmWorkGroupDrop, "  yes\nnext\n", &answer, &rest);
  EXPECT_TRUE(answer);
  EXPECT_EQ(out.find("No entries removed"), std::string::npos);
  EXPECT_EQ(rest, "es\nnext\n");
}

TEST(ConfirmTest, AskForUserConfirmationRepeatsUntilYesOrNo) {
  auto ask = [](FILE* in, FILE* out) { return AskForUserConfirmation("Proceed? ", in, out); };
  struct {
    const char* input;
    bool answer;
    const char* written;
  } cases[] = {
      {"yes\n", true, "Proceed? "},
      {"Yes\n", true, "Proceed? "},
      {"y", true, "Proceed? "},
      {"NO\n", false, "Proceed? "},
      {"n\n", false, "Proceed? "},
      {"maybe\ny\n", true, "Proceed? 'maybe' is not a valid answer.\nProceed? "},
      {"maybe never\n", false,
       "Proceed? 'maybe' is not a valid answer.\nProceed? 'never' is not a valid answer.\n"
       "Proceed? "},
      {"", false, "Proceed? "},
  };
  for (const auto& c : cases) {
    bool answer;
    std::string out = Answer(ask, c.input, &answer);
    EXPECT_EQ(answer, c.answer) << c.input;
    EXPECT_EQ(out, c.written) << c.input;
  }
}

}  // namespace
