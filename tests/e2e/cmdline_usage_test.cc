// Usage texts of cyclectl: the general usage on standard error (public and
// with -q) and every operation's synopsis on standard output with -help. The
// expected texts are in golden/usage*.txt and golden/synopsis/<word>.txt,
// as printed under LC_ALL=C, whose date form is mm/dd/yyyy HH:MM:SS.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cmd/operations.h"
#include "tests/e2e/harness.h"

namespace {

std::string Synopsis(const std::string& word) { return e2e::Golden("synopsis/" + word + ".txt"); }

TEST(CmdlineUsageTest, GeneralUsageGoesToStandardError) {
  e2e::Root root;
  const std::string publicUsage = e2e::Golden("usage.txt");
  const std::string allUsage = e2e::Golden("usage-internal.txt");
  struct {
    std::vector<std::string> args;
    std::string err;
    int status;
  } cases[] = {
      {{}, publicUsage, 0},
      {{"help"}, publicUsage, 0},
      {{"HELP"}, publicUsage, 0},
      {{"-h"}, publicUsage, 0},
      {{"-help", "-q"}, allUsage, 0},
      {{"-q", "help"}, allUsage, 0},
      {{"-client", "c"}, "\nMust specify an operation to perform\n" + publicUsage, 1},
      {{"-wait", "-q"},
       "option '-wait' is no longer necessary and has been deprecated\n"
       "\nMust specify an operation to perform\n" +
           allUsage,
       1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(root.Run(c.args), (e2e::Result{"", c.err, c.status}))
        << (c.args.empty() ? "(none)" : c.args[0]);
  }

  // The first line names the program; the last one always says cyclectl.
  e2e::RunOptions options;
  options.argv0 = "/opt/bin/slpadm";
  std::string expected = publicUsage;
  expected.replace(expected.find("cyclectl"), 8, "slpadm");
  EXPECT_EQ(root.Run({"help"}, "", options).err, expected);
}

// Every word of the operation table but help (the general usage), ns (the
// synopsis of new_session, below) and the withdrawn remove_all.
TEST(CmdlineUsageTest, EveryOperationHasItsSynopsisOnStandardOutput) {
  e2e::Root root;
  for (const OperInfo* row = operInfo + 1; row->id != OP_END; ++row) {
    const std::string word = row->name;
    if (row->id == OP_HELP || row->id == OP_REMOVE_ALL || word == "ns") continue;
    EXPECT_EQ(root.Run({word, "-help"}), (e2e::Result{Synopsis(word), "", 0})) << word;
  }
}

TEST(CmdlineUsageTest, SynopsisSpellingsAndForms) {
  e2e::Root root;
  struct {
    std::vector<std::string> args;
    const char* synopsisOf;  // "" for no text at all
  } cases[] = {
      {{"ns", "-help"}, "new_session"},
      {{"LIST", "-H"}, "list"},
      {{"-q", "list", "-help"}, "list"},  // the form only changes the general usage
      {{"list", "-client", "c", "-help", "-U", "-b"}, "list"},  // help before the other rules
      {{"-test_import_frags", "f", "-help"}, "add_import_frags"},
      {{"-list_import_frags", "-help"}, "list_import_frags"},
      {{"remove_all", "-help"}, ""},
  };
  for (const auto& c : cases) {
    std::string out = *c.synopsisOf ? Synopsis(c.synopsisOf) : "";
    EXPECT_EQ(root.Run(c.args), (e2e::Result{out, "", 0})) << c.args[0];
  }
}

TEST(CmdlineUsageTest, DateFormFollowsTheTimeLocale) {
  e2e::Root root;
  e2e::RunOptions options;
  options.env = {"LC_ALL", "LC_TIME=de_DE.UTF-8"};
  std::string expected = Synopsis("active");
  for (size_t at; (at = expected.find("mm/dd/yyyy")) != std::string::npos;) {
    expected.replace(at, 10, "dd.mm.yyyy");
  }
  EXPECT_EQ(root.Run({"active", "-help"}, "", options).out, expected);
}

}  // namespace
