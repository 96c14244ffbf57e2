// The generated manual page names every operation word and every option of
// the front end's tables, and both pages pass the formatter's checks.
#include <cstdio>
#include <string>

#include "cmd/operations.h"
#include "cmd/option_rules.h"
#include "cmd/options.h"
#include "gtest/gtest.h"

namespace {

// What a command writes on the stream `redirect` keeps (the other one is
// dropped), run through the shell, with its status.
std::string OutputOf(const std::string& command, const char* redirect, int* status) {
  std::string text;
  FILE* pipe = popen((command + " " + redirect).c_str(), "r");
  if (pipe == nullptr) return "popen failed";
  char buffer[4096];
  size_t n;
  while ((n = fread(buffer, 1, sizeof buffer, pipe)) > 0) text.append(buffer, n);
  *status = pclose(pipe);
  return text;
}

TEST(ManPageTest, NamesEveryWordAndOptionAndShowsTheVocabularies) {
  int status;
  const std::string page = OutputOf(std::string("cat ") + CYCLECTL_MAN_PAGE, "", &status);
  ASSERT_FALSE(page.empty());
  EXPECT_EQ(std::string::npos, page.find("generated:"));
  for (const OperInfo* row = operInfo + 1; row->id != OP_END; ++row) {
    EXPECT_NE(std::string::npos, page.find(std::string("\n.B ") + row->name + "\n")) << row->name;
  }
  for (int option = OPT_NONE + 1; option < OPT_END; ++option) {
    EXPECT_NE(std::string::npos, page.find(std::string("\\") + optNames[option]))
        << optNames[option];
  }
  for (const OptionRule* rule = optionRules; rule->spelling != nullptr; ++rule) {
    std::string heading = std::string(rule->takesValue ? ".BI \"\\" : ".B \\") + rule->spelling;
    EXPECT_NE(std::string::npos, page.find("\n" + heading)) << rule->spelling;
  }
  // The page as a reader sees it: plain text, lines long enough not to break.
  const std::string rendered =
      OutputOf(std::string("groff -man -Tascii -rLL=250n -P-cbou ") + CYCLECTL_MAN_PAGE,
               "2>/dev/null", &status);
  for (const char* text :
       {"One of: I, IC, C, ICF, F, ICFS, S (case ignored).", "One of: null, alm, cem,",
        ", cloudsnapindex (case ignored;", "add_import_frags -test_import_frags <import_frag_file>",
        "Another spelling of -frag_state."}) {
    EXPECT_NE(std::string::npos, rendered.find(text)) << text;
  }
}

TEST(ManPageTest, PagesFormatWithoutWarnings) {
  const bool mandoc = system("command -v mandoc >/dev/null") == 0;
  for (const char* page : {CYCLECTL_MAN_PAGE, STASHWELL_INIT_MAN_PAGE}) {
    int status = -1;
    EXPECT_EQ("", OutputOf(std::string("groff -man -ww -z ") + page, "2>&1 >/dev/null", &status))
        << page;
    EXPECT_EQ(0, status) << page;
    if (mandoc) {
      EXPECT_EQ("", OutputOf(std::string("mandoc -T lint -W warning ") + page, "2>&1 >/dev/null",
                             &status))
          << page;
    }
  }
}

}  // namespace
