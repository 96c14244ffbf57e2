// The generated manual page names every operation word and every option of
// the front end's tables, and both pages pass the formatter's checks.
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "cmd/operations.h"
#include "cmd/option_rules.h"
#include "cmd/options.h"
#include "gtest/gtest.h"

namespace {

std::string ReadFile(const char* path) {
  std::ifstream in(path);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// How roff source writes a word set in bold on a line of its own.
std::string BoldLine(const std::string& word) {
  std::string escaped;
  for (char c : word) {
    if (c == '-') escaped += '\\';
    escaped += c;
  }
  return "\n.B " + escaped + "\n";
}

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

std::string ErrorsOf(const std::string& command, int* status) {
  return OutputOf(command, "2>&1 >/dev/null", status);
}

// The page as a reader sees it: plain text, lines long enough not to break.
std::string Rendered(const char* page) {
  int status;
  return OutputOf(std::string("groff -man -Tascii -rLL=250n -P-cbou ") + page, "2>/dev/null",
                  &status);
}

TEST(ManPageTest, NamesEveryOperationWord) {
  const std::string page = ReadFile(CYCLECTL_MAN_PAGE);
  ASSERT_FALSE(page.empty());
  for (const OperInfo* row = operInfo + 1; row->id != OP_END; ++row) {
    EXPECT_NE(std::string::npos, page.find(BoldLine(row->name))) << row->name;
  }
}

TEST(ManPageTest, NamesEveryOptionAndEverySpelling) {
  const std::string page = ReadFile(CYCLECTL_MAN_PAGE);
  for (int option = OPT_NONE + 1; option < OPT_END; ++option) {
    std::string name = std::string("\\") + optNames[option];
    EXPECT_NE(std::string::npos, page.find(name)) << optNames[option];
  }
  for (const OptionRule* rule = optionRules; rule->spelling != nullptr; ++rule) {
    std::string heading = std::string(rule->takesValue ? ".BI \"\\" : ".B \\") + rule->spelling;
    EXPECT_NE(std::string::npos, page.find("\n" + heading)) << rule->spelling;
  }
}

TEST(ManPageTest, ShowsTheVocabulariesAndSynopses) {
  const std::string page = Rendered(CYCLECTL_MAN_PAGE);
  EXPECT_NE(std::string::npos, page.find("One of: I, IC, C, ICF, F, ICFS, S (case ignored)."));
  EXPECT_NE(std::string::npos, page.find("One of: null, alm, cem,"));
  EXPECT_NE(std::string::npos, page.find(", cloudsnapindex (case ignored;"));
  EXPECT_NE(std::string::npos, page.find("add_import_frags -test_import_frags <import_frag_file>"));
  EXPECT_NE(std::string::npos, page.find("Another spelling of -frag_state."));
  EXPECT_EQ(std::string::npos, ReadFile(CYCLECTL_MAN_PAGE).find("generated:"));
}

TEST(ManPageTest, PagesFormatWithoutWarnings) {
  for (const char* page : {CYCLECTL_MAN_PAGE, STASHWELL_INIT_MAN_PAGE}) {
    int status = -1;
    std::string errors = ErrorsOf(std::string("groff -man -ww -z ") + page, &status);
    EXPECT_EQ(0, status) << page;
    EXPECT_EQ("", errors) << page;
    if (system("command -v mandoc >/dev/null") == 0) {
      errors = ErrorsOf(std::string("mandoc -T lint -W warning ") + page, &status);
      EXPECT_EQ("", errors) << page;
    }
  }
}

}  // namespace
