// Usage texts of cyclectl: the general usage on standard error (public and
// with -q) and every operation's synopsis on standard output with -help. The
// expected texts are in golden/usage*.txt and golden/synopsis/<word>.txt,
// as printed under LC_ALL=C, whose date form is mm/dd/yyyy HH:MM:SS
// (golden/synopsis-de_DE/ under LC_TIME=de_DE.UTF-8).
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cmd/operations.h"
#include "tests/e2e/harness.h"

namespace {

std::string Synopsis(const std::string& word) { return e2e::Golden("synopsis/" + word + ".txt"); }

TEST(CmdlineUsageTest, GeneralUsageOnStandardErrorSynopsesOnStandardOutput) {
  e2e::Root root;
  const std::string usage = e2e::Golden("usage.txt"), all = e2e::Golden("usage-internal.txt");
  const std::string none = "\nMust specify an operation to perform\n";
  const std::string list = Synopsis("list");
  const struct {
    std::vector<std::string> args;
    e2e::Result expected;
  } cases[] = {
      {{}, {"", usage, 0}},
      {{"help"}, {"", usage, 0}},
      {{"HELP"}, {"", usage, 0}},
      {{"-h"}, {"", usage, 0}},
      {{"-help", "-q"}, {"", all, 0}},
      {{"-q", "help"}, {"", all, 0}},
      {{"-client", "c"}, {"", none + usage, 1}},
      {{"-wait", "-q"},
       {"", "option '-wait' is no longer necessary and has been deprecated\n" + none + all, 1}},
      {{"ns", "-help"}, {Synopsis("new_session"), "", 0}},
      {{"LIST", "-H"}, {list, "", 0}},
      {{"-q", "list", "-help"}, {list, "", 0}},  // the form only changes the general usage
      {{"list", "-client", "c", "-help", "-U", "-b"}, {list, "", 0}},  // help before other rules
      {{"-test_import_frags", "f", "-help"}, {Synopsis("add_import_frags"), "", 0}},
      {{"-list_import_frags", "-help"}, {Synopsis("list_import_frags"), "", 0}},
      {{"remove_all", "-help"}, {"", "", 0}},
  };
  for (const auto& c : cases)
    EXPECT_EQ(root.Run(c.args), c.expected) << testing::PrintToString(c.args);

  // Every word of the operation table but help (the general usage), ns (the
  // synopsis of new_session, above) and the withdrawn remove_all.
  for (const OperInfo* row = operInfo + 1; row->id != OP_END; ++row) {
    const std::string word = row->name;
    if (row->id == OP_HELP || row->id == OP_REMOVE_ALL || word == "ns") continue;
    EXPECT_EQ(root.Run({word, "-help"}), (e2e::Result{Synopsis(word), "", 0})) << word;
  }

  // The first line names the program; the last one always says cyclectl.
  e2e::RunOptions options;
  options.argv0 = "/opt/bin/slpadm";
  EXPECT_EQ(root.Run({"help"}, "", options).err,
            std::string(usage).replace(usage.find("cyclectl"), 8, "slpadm"));

  // The date form follows the time locale.
  options = {};
  options.env = {"LC_ALL", "LC_TIME=de_DE.UTF-8"};
  EXPECT_EQ(root.Run({"active", "-help"}, "", options).out,
            e2e::Golden("synopsis-de_DE/active.txt"));
}

}  // namespace
