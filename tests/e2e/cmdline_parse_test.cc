// Command-line checking of the real binary: every message with its stream
// and status, the order in which problems are reported, testhook, -wait and
// words and options in any case. remove_all, which only prints a notice,
// stands in for an operation that gets past the checks.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/harness.h"
#include "tests/e2e/prompts.h"

namespace {

using e2e::Ignored;

const char kNotice[] = "This operation has been deprecated and is no longer available.\n";
const char kHook[] = "SLP_WINDOWS_VERSION=1\n";
const char kWait[] = "option '-wait' is no longer necessary and has been deprecated\n";
const std::string kOnlyOne = "Only one of these options can be used simultaneously: ";

TEST(CmdlineParseTest, MessagesStatusesAndTheirOrder) {
  const struct {
    std::vector<std::string> args;
    std::string err;
    const char* out = "";  // a run that gets this far ends with 0, any other with 1
  } cases[] = {
      {{"list", "-client"}, "No value supplied for -client option\n"},
      {{"list", "-client", "-U"}, "No value supplied for -client option\n"},
      // What stands where a value belongs is passed over unread.
      {{"list", "-client", "-zzz", "-policy", "-wait", "-mediaid"},
       "No value supplied for -client option\nNo value supplied for -policy option\n"
       "No value supplied for -mediaid option\n"},
      {{"suspend", "-subsys", "-1"}, "No value supplied for -subsys option\n"},
      {{"update_hwm", "-totalcap", "-5"}, "No value supplied for -totalcap option\n"},
      {{"list", "-rt", "X"}, "-rt argument X not a recognized value\n"},
      {{"dump", "-df", "json"}, "-df argument json not a recognized value\n"},
      {{"list", "-lifecyclex", "a", "-lifecycl"},
       "-lifecyclex is not a recognized option\na is not a recognized operation\n"
       "-lifecycl is not a recognized option\n"},
      {{"lists"}, "lists is not a recognized operation\n"},
      {{""}, " is not a recognized operation\n"},
      {{"active", "cancel"}, "multiple operations  specified\n"},
      {{"-help", "list"}, "multiple operations  specified\n"},
      {{"list", "-copy_type", "tape"}, "Invalid value supplied for -copy_type option\n"},
      {{"list_import_notify", "-ntype", "bad"}, "Invalid value supplied for -ntype option\n"},
      {{"suspend", "-subsys", "18"}, "Invalid value supplied for -subsys option\n"},
      {{"list", "-before", "13/45/2024"}, "Invalid value supplied for -before option\n"},
      // A number just past its field is refused, never wrapped into another.
      {{"list", "-slpindex", "4294967297", "-version", "2147483648", "-copy_type", "2147483648",
        "-totalcap", "9223372036854775808"},
       "Invalid value supplied for -slpindex option\nInvalid value supplied for -version option\n"
       "Invalid value supplied for -copy_type option\n"
       "Invalid value supplied for -totalcap option\n"},
      // An error wins over a request for help: no usage is printed.
      {{"list", "-help", "-bogus"}, "-bogus is not a recognized option\n"},
      // All are reported, in argument order, before the run ends.
      {{"-bogus", "list", "-rt", "Z", "cancel", "-client", "-U", "-subsys", "x", "nosuch", "-wait",
        "-jobid"},
       "-bogus is not a recognized option\n-rt argument Z not a recognized value\n"
       "multiple operations  specified\nNo value supplied for -client option\n"
       "Invalid value supplied for -subsys option\nnosuch is not a recognized operation\n"
       "option '-wait' is no longer necessary and has been deprecated\n"
       "No value supplied for -jobid option\n"},

      // The first violated group of exclusive options.
      {{"list", "-lifecycle", "a", "-lifecycle_only", "-U", "-b"},
       kOnlyOne + "-lifecycle, -lifecycle_only\n"},
      {{"inactive", "-lifecycle", "a", "-duration", "2", "-reactivation_time", "x"},
       kOnlyOne + "-reactivation_time, -duration\n"},
      {{"list", "-copy_inactive", "-state", "3", "-U", "-l"},
       kOnlyOne + "-image_state, -copy_state, -frag_state, -image_incomplete, -image_inactive, "
                  "-copy_incomplete, -copy_inactive\n"},
      {{"list_import_conf", "-json", "-l"}, kOnlyOne + "-b, -l, -U, -json, -json_compact\n"},
      {{"list", "-before", "01/02/2024", "-after", "01/01/2024"}, kOnlyOne + "-after, -before\n"},
      // Groups come before the option lists: remove_all takes neither option.
      {{"remove_all", "-U", "-b"}, kOnlyOne + "-b, -l, -U, -json, -json_compact\n"},
      // -state is -frag_state: one option given twice, one notice.
      {{"remove_all", "-frag_state", "1", "-STATE", "2"},
       Ignored("remove_all", {"-frag_state"}),
       kNotice},

      // Options outside the list are reported in number order and ignored.
      {{"remove_all", "-U", "-testhook", "-sincetime", "5", "-q", "-Client", "c", "-wait", "-M",
        "m2"},
       kWait + Ignored("remove_all", {"-client", "-M", "-q", "-sincetime", "-testhook", "-U"}),
       kNotice},
      {{"REMOVE_ALL"}, "", kNotice},
      // The rules between options.
      {{"cancel", "-backupid", "b1", "-destination", "d"},
       "-backupid is not allowed with -lifecycle or -destination\n"},
      {{"inactive"}, "One of -backupid, -destination, -lifecycle must be provided\n"},
      {{"active", "-backupid", "b1", "-after", "01/01/2024"},
       "-backupid is not allowed with -before or -after\n"},
      {{"inactive", "-backupid", "b1", "-duration", "3"},
       "You cannot specify -reactivation_time or -duration when specifying -backupid\n"},
      {{"list", "-jobid", "7", "-lifecycle", "s"},
       "-jobid cannot be used with other selection values\n"},
      {{"redo"}, "The -backupid option is required for this operation\n"},
      {{"redo", "-backupid", "b1"}, "The '-slpindex' value cannot be 0\n"},
      {{"update_hwm", "-mediaserver", "a", "-storageserver", "b", "-stssubtype", "c", "-mediaid",
        "d", "-totalcap", "0", "-usedcap", "5"},
       "The -totalcap option is required for this operation\n"},
      {{"cancel", "-version", "2", "-backupid", "b1"},
       "-version cannot be used with -backupid or -destination\n"},
      {{"list", "-version", "2"},
       "The '-version' option requires use of the '-lifecycle' option\n"},
      // The notices come first, then the rules.
      {{"redo", "-client", "c"},
       Ignored("redo", {"-client"}) + "The -backupid option is required for this operation\n"},
      // testhook, in any case, ends the run before the groups and the option lists.
      {{"-testhook"}, "", kHook},
      {{"TestHook"}, "", kHook},
      {{"testhook", "-client", "c", "-U", "-b"}, "", kHook},
      {{"-testhook", "-wait"}, kWait, kHook},
  };
  e2e::Root root;
  for (const auto& c : cases) {
    EXPECT_EQ(root.Run(c.args), (e2e::Result{c.out, c.err, *c.out ? 0 : 1}))
        << testing::PrintToString(c.args);
  }
}

}  // namespace
