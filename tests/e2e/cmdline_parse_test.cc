// Command-line checking of the real binary: every message with its stream
// and status, the order in which problems are reported, testhook, -wait and
// words and options in any case. remove_all, which only prints a notice,
// stands in for an operation that gets past the checks.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/e2e/harness.h"

namespace {

const char kNotice[] = "This operation has been deprecated and is no longer available.\n";

struct Case {
  Case(std::vector<std::string> a, const char* e, int s, const char* o = "")
      : args(std::move(a)), err(e), status(s), out(o) {}
  std::vector<std::string> args;
  const char* err;
  int status;
  const char* out;  // standard output
};

std::string Trace(const std::vector<std::string>& args) {
  std::string text;
  for (const std::string& arg : args) text += arg + " ";
  return text;
}

void RunCases(const std::vector<Case>& cases) {
  e2e::Root root;
  for (const Case& c : cases) {
    EXPECT_EQ(root.Run(c.args), (e2e::Result{c.out, c.err, c.status})) << Trace(c.args);
  }
}

TEST(CmdlineParseTest, WalkErrorsEndTheRunWithStatusOne) {
  RunCases({
      {{"list", "-client"}, "No value supplied for -client option\n", 1},
      {{"list", "-client", "-U"}, "No value supplied for -client option\n", 1},
      // What stands where a value belongs is passed over unread.
      {{"list", "-client", "-zzz", "-policy", "-wait", "-mediaid"},
       "No value supplied for -client option\n"
       "No value supplied for -policy option\n"
       "No value supplied for -mediaid option\n",
       1},
      {{"suspend", "-subsys", "-1"}, "No value supplied for -subsys option\n", 1},
      {{"update_hwm", "-totalcap", "-5"}, "No value supplied for -totalcap option\n", 1},
      {{"list", "-rt", "X"}, "-rt argument X not a recognized value\n", 1},
      {{"dump", "-df", "json"}, "-df argument json not a recognized value\n", 1},
      {{"list", "-lifecyclex", "a", "-lifecycl"},
       "-lifecyclex is not a recognized option\na is not a recognized operation\n"
       "-lifecycl is not a recognized option\n",
       1},
      {{"lists"}, "lists is not a recognized operation\n", 1},
      {{""}, " is not a recognized operation\n", 1},
      {{"active", "cancel"}, "multiple operations  specified\n", 1},
      {{"-help", "list"}, "multiple operations  specified\n", 1},
      {{"list", "-copy_type", "tape"}, "Invalid value supplied for -copy_type option\n", 1},
      {{"list_import_notify", "-ntype", "bad"}, "Invalid value supplied for -ntype option\n", 1},
      {{"suspend", "-subsys", "18"}, "Invalid value supplied for -subsys option\n", 1},
      {{"list", "-before", "13/45/2024"}, "Invalid value supplied for -before option\n", 1},
      // A number just past its field is refused, never wrapped into another.
      {{"list", "-slpindex", "4294967297", "-version", "2147483648", "-copy_type", "2147483648",
        "-totalcap", "9223372036854775808"},
       "Invalid value supplied for -slpindex option\n"
       "Invalid value supplied for -version option\n"
       "Invalid value supplied for -copy_type option\n"
       "Invalid value supplied for -totalcap option\n",
       1},
      // An error wins over a request for help: no usage is printed.
      {{"list", "-help", "-bogus"}, "-bogus is not a recognized option\n", 1},
      // All are reported, in argument order, before the run ends.
      {{"-bogus", "list", "-rt", "Z", "cancel", "-client", "-U", "-subsys", "x", "nosuch", "-wait",
        "-jobid"},
       "-bogus is not a recognized option\n"
       "-rt argument Z not a recognized value\n"
       "multiple operations  specified\n"
       "No value supplied for -client option\n"
       "Invalid value supplied for -subsys option\n"
       "nosuch is not a recognized operation\n"
       "option '-wait' is no longer necessary and has been deprecated\n"
       "No value supplied for -jobid option\n",
       1},
  });
}

TEST(CmdlineParseTest, FirstViolatedExclusiveGroup) {
  RunCases({
      {{"list", "-lifecycle", "a", "-lifecycle_only", "-U", "-b"},
       "Only one of these options can be used simultaneously: -lifecycle, -lifecycle_only\n",
       1},
      {{"inactive", "-lifecycle", "a", "-duration", "2", "-reactivation_time", "x"},
       "Only one of these options can be used simultaneously: -reactivation_time, -duration\n",
       1},
      {{"list", "-copy_inactive", "-state", "3", "-U", "-l"},
       "Only one of these options can be used simultaneously: -image_state, -copy_state, "
       "-frag_state, -image_incomplete, -image_inactive, -copy_incomplete, -copy_inactive\n",
       1},
      {{"list_import_conf", "-json", "-l"},
       "Only one of these options can be used simultaneously: -b, -l, -U, -json, -json_compact\n",
       1},
      {{"list", "-before", "01/02/2024", "-after", "01/01/2024"},
       "Only one of these options can be used simultaneously: -after, -before\n",
       1},
      // Groups come before the option lists: remove_all takes neither option.
      {{"remove_all", "-U", "-b"},
       "Only one of these options can be used simultaneously: -b, -l, -U, -json, -json_compact\n",
       1},
      // -state is -frag_state: one option given twice, one notice.
      {{"remove_all", "-frag_state", "1", "-STATE", "2"},
       "option '-frag_state'  is not valid for operation 'remove_all' and is ignored\n",
       0,
       kNotice},
  });
}

// Options outside the list are reported in number order and ignored; then
// the rules between options; testhook ends the run before all of them.
TEST(CmdlineParseTest, OptionListsRulesAndTesthook) {
  RunCases({
      {{"remove_all", "-U", "-testhook", "-sincetime", "5", "-q", "-Client", "c", "-wait", "-M",
        "m2"},
       "option '-wait' is no longer necessary and has been deprecated\n"
       "option '-client'  is not valid for operation 'remove_all' and is ignored\n"
       "option '-M'  is not valid for operation 'remove_all' and is ignored\n"
       "option '-q'  is not valid for operation 'remove_all' and is ignored\n"
       "option '-sincetime'  is not valid for operation 'remove_all' and is ignored\n"
       "option '-testhook'  is not valid for operation 'remove_all' and is ignored\n"
       "option '-U'  is not valid for operation 'remove_all' and is ignored\n",
       0,
       kNotice},
      {{"REMOVE_ALL"}, "", 0, kNotice},
      // The rules between options.
      {{"cancel", "-backupid", "b1", "-destination", "d"},
       "-backupid is not allowed with -lifecycle or -destination\n",
       1},
      {{"inactive"}, "One of -backupid, -destination, -lifecycle must be provided\n", 1},
      {{"active", "-backupid", "b1", "-after", "01/01/2024"},
       "-backupid is not allowed with -before or -after\n",
       1},
      {{"inactive", "-backupid", "b1", "-duration", "3"},
       "You cannot specify -reactivation_time or -duration when specifying -backupid\n",
       1},
      {{"list", "-jobid", "7", "-lifecycle", "s"},
       "-jobid cannot be used with other selection values\n",
       1},
      {{"redo"}, "The -backupid option is required for this operation\n", 1},
      {{"redo", "-backupid", "b1"}, "The '-slpindex' value cannot be 0\n", 1},
      {{"update_hwm", "-mediaserver", "a", "-storageserver", "b", "-stssubtype", "c", "-mediaid",
        "d", "-totalcap", "0", "-usedcap", "5"},
       "The -totalcap option is required for this operation\n",
       1},
      {{"cancel", "-version", "2", "-backupid", "b1"},
       "-version cannot be used with -backupid or -destination\n",
       1},
      {{"list", "-version", "2"},
       "The '-version' option requires use of the '-lifecycle' option\n",
       1},
      // The notices come first, then the rules.
      {{"redo", "-client", "c"},
       "option '-client'  is not valid for operation 'redo' and is ignored\n"
       "The -backupid option is required for this operation\n",
       1},
      // testhook, in any case.
      {{"-testhook"}, "", 0, "SLP_WINDOWS_VERSION=1\n"},
      {{"TestHook"}, "", 0, "SLP_WINDOWS_VERSION=1\n"},
      // testhook ends the run before the groups and the option lists.
      {{"testhook", "-client", "c", "-U", "-b"}, "", 0, "SLP_WINDOWS_VERSION=1\n"},
      {{"-testhook", "-wait"},
       "option '-wait' is no longer necessary and has been deprecated\n",
       0,
       "SLP_WINDOWS_VERSION=1\n"},
  });
}

}  // namespace
