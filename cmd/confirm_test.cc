// The confirmation prompts: which answers proceed, what a refusal writes,
// and the end of input.
#include "cmd/confirm.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

const char kDestinationPrompt[] =
    "This operation will also cancel other destinations if they are using the specified "
    "destination as source. Do you wish to proceed? (y/n): ";
const char kWorkGroupPrompt[] =
    "This operation will remove work group information in the database.  This will increase "
    "the time taken for SLP processing and may impact ongoing SLP operations.  Do you wish to "
    "proceed ? (y/n):";
const char kExpiredPrompt[] =
    "This operation will remove all expired image fragment entries in the database.  Any files "
    "containing backup images corresponding to these entries must be deleted manually.  Do you "
    "wish to proceed? (y/n) >";

// Runs `ask` with `input` on its input stream; returns what it wrote and
// stores its answer and the input it left unread.
template <typename Ask>
std::string Answer(Ask ask, const std::string& input, bool* answer, std::string* rest = nullptr) {
  std::string buffer = input;
  FILE* in = buffer.empty() ? fopen("/dev/null", "r")
                            : fmemopen(&buffer[0], buffer.size(), "r");
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

TEST(ConfirmTest, DestinationPromptWantsOneYesWord) {
  struct {
    const char* input;
    bool proceed;
  } cases[] = {
      {"y\n", true},      {"Y", true},          {"  yes\n", true}, {"YES\n", true},
      {"Yes\n", false},   {"yes-please\n", false}, {"n\n", false}, {"", false},
      {"\n \n", false},   {"yy\n", false},
  };
  for (const auto& c : cases) {
    bool answer;
    std::string out = Answer(ConfirmDestinationCancel, c.input, &answer);
    EXPECT_EQ(answer, c.proceed) << c.input;
    EXPECT_EQ(out, std::string(kDestinationPrompt) + (c.proceed ? "" : "No destinations cancelled\n"))
        << c.input;
  }
}

TEST(ConfirmTest, EntryPromptsReadOneNonBlankCharacter) {
  struct {
    const char* input;
    bool proceed;
  } cases[] = {{"y\n", true}, {" \n\tY", true}, {"yes\n", true}, {"no\n", false},
               {"x", false},  {"", false},      {"\n\n", false}};
  for (const auto& c : cases) {
    bool answer;
    std::string out = Answer(ConfirmWorkGroupDrop, c.input, &answer);
    EXPECT_EQ(answer, c.proceed) << c.input;
    EXPECT_EQ(out, std::string(kWorkGroupPrompt) + (c.proceed ? "" : "No entries removed\n"));
    out = Answer(ConfirmExpiredFragmentRemoval, c.input, &answer);
    EXPECT_EQ(answer, c.proceed) << c.input;
    EXPECT_EQ(out, std::string(kExpiredPrompt) + (c.proceed ? "" : "No entries removed\n"));
  }
}

TEST(ConfirmTest, EntryPromptReadsOnlyOneCharacter) {
  bool answer;
  std::string rest;
  Answer(ConfirmWorkGroupDrop, "  yes\nnext\n", &answer, &rest);
  EXPECT_TRUE(answer);
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
