// The cross-option rules, each case the first rule a command line breaks or
// none: the order of the checks, and what counts as an empty value.
#include "cmd/cross_rules.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cmd/parse.h"
#include "cmd/walk.h"

namespace {

struct RuleCase {
  std::vector<std::string> args;
  const char* message;  // "" when every rule holds
};

// Each message's own case is in the end-to-end tests; these are the cases
// around them: what counts as absent, the order of the required options,
// and command lines that pass.
const RuleCase kCases[] = {
    {{"list", "-backupid", "b1", "-lifecycle", ""}, ""},  // an empty text counts as absent
    {{"inactive", "-lifecycle", ""}, "One of -backupid, -destination, -lifecycle must be provided"},
    {{"list"}, ""},
    {{"inactive", "-lifecycle", "s", "-duration", "4"}, ""},
    {{"list", "-jobid", "5", "-mediaid", "m"}, ""},
    {{"redo", "-backupid", "b1", "-slpindex", "1"}, ""},
    {{"update_hwm"}, "The -mediaserver option is required for this operation"},
    {{"update_hwm", "-mediaserver", "a"},
     "The -storageserver option is required for this operation"},
    {{"update_hwm", "-mediaserver", "a", "-storageserver", "b"},
     "The -stssubtype option is required for this operation"},
    {{"update_hwm", "-mediaserver", "a", "-storageserver", "b", "-stssubtype", "c"},
     "The -mediaid option is required for this operation"},
    {{"update_hwm", "-mediaserver", "a", "-storageserver", "b", "-stssubtype", "c", "-mediaid", "d",
      "-totalcap", "10"},
     "The -usedcap option is required for this operation"},
    {{"update_hwm", "-mediaserver", "a", "-storageserver", "b", "-stssubtype", "c", "-mediaid", "d",
      "-totalcap", "10", "-usedcap", "1"},
     ""},
    {{"report", "-version", "0", "-lifecycle", "s"}, ""},
};

TEST(CrossOptionRulesTest, FirstBrokenRuleIsReported) {
  InitCommandTables();
  for (const RuleCase& c : kCases) {
    std::vector<std::string> args = c.args;
    args.insert(args.begin(), "cyclectl");
    std::vector<char*> argv;
    for (std::string& arg : args) argv.push_back(&arg[0]);
    ArgumentWalk walk = WalkArguments(static_cast<int>(argv.size()), argv.data());
    ASSERT_FALSE(walk.errorSeen) << args[1];
    testing::internal::CaptureStderr();
    bool ok = CheckCrossOptionRules(walk.line);
    std::string err = testing::internal::GetCapturedStderr();
    std::string expected = *c.message ? std::string(c.message) + "\n" : "";
    EXPECT_EQ(err, expected) << args[1] << " " << args.size();
    EXPECT_EQ(ok, expected.empty()) << args[1];
  }
}

}  // namespace
