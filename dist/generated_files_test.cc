// The files generated from the front end's tables: the manual page names
// every operation word and every option and both pages pass the formatter's
// checks; the bash completion, driven the way bash drives it (the words of
// the command line so far, the index of the word being completed), offers
// what it should.
#include <cstdio>
#include <cstdlib>
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

// The candidates the completion offers for `words` (the last one is the word
// being completed), one a line, in byte order, after the shell ran `prelude`.
std::string Complete(const std::string& words, const std::string& prelude = "true") {
  const std::string script = prelude + " && source '" CYCLECTL_COMPLETION "' && COMP_WORDS=(" +
                             words + ") && COMP_CWORD=$((${#COMP_WORDS[@]} - 1)) && _cyclectl && " +
                             "printf '%s\\n' \"${COMPREPLY[@]}\" | LC_ALL=C sort";
  setenv("COMPLETION_SCRIPT", script.c_str(), 1);
  int status;
  const std::string out = OutputOf("bash -c \"$COMPLETION_SCRIPT\"", "2>&1", &status);
  return out == "\n" ? "" : out;  // an empty reply prints one empty line
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

// Operation words first; then only the options of the operation (before any
// operation word only those that select one; the value of -client is not
// taken for the operation word); then the values of fixed vocabularies.
TEST(CompletionTest, OffersWordsThenOptionsThenValues) {
  static const struct {
    const char* words;
    const char* offered;
  } cases[] = {
      {"li", "list\nlist_import_conf\nlist_import_frags\nlist_import_notify\nlistwg\n"},
      {"n", "new_session\nns\n"},
      {"up", "update_hwm\nupdate_pfs\n"},
      {"a", "active\nadd_import_frags\n"},
      {"zz", ""},
      {"dropwg -", "-M\n-help\n-nowarn\n"},
      {"DUMP -dopts x -d", "-df\n-dopts\n"},
      {"-client c1 list -copy", "-copy_inactive\n-copy_incomplete\n-copy_state\n-copy_type\n"},
      {"diskspaceinfo -M m1 -st", "-stype\n"},
      {"-h", "-h\n-help\n"},
      {"list -rt I", "I\nIC\nICF\nICFS\n"},
      {"dump -DF ''", "j\nl\nr\n"},
      {"list_import_notify -ntype c", "conf\n"},
      {"suspend -subsys i", "im\nimpm\nipn\n"},
      {"stlilist -copy_type dup", "duplicate\nduplicate\\ to\\ remote\\ master\n"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Complete(std::string("cyclectl ") + c.words), c.offered) << c.words;
  }
  // File names for the test fragment file.
  EXPECT_EQ("frags.txt\n", Complete("cyclectl add_import_frags -test_import_frags fr",
                                    "d=$(mktemp -d) && trap 'rm -r \"$d\"' EXIT && cd \"$d\" && "
                                    "touch frags.txt"));
}

}  // namespace
