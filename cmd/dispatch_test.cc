// The dispatcher's own behaviour: the default row, the subsystem-argument
// fallbacks and the order of the notification listings.
#include "cmd/dispatch.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cmd/parse.h"
#include "cmd/walk.h"
#include "util/process.h"

namespace {

CommandLine Settle(std::vector<std::string> args) {
  InitCommandTables();
  args.insert(args.begin(), "cyclectl");
  std::vector<char*> argv;
  for (std::string& arg : args) argv.push_back(&arg[0]);
  ArgumentWalk walk = WalkArguments(static_cast<int>(argv.size()), argv.data());
  EXPECT_FALSE(walk.errorSeen);
  return walk.line;
}

TEST(DispatchTest, OperationWithoutHandlerFallsToTheDefaultRow) {
  CmdName = "cyclectl";
  CommandLine line;
  line.operation = OP_HELP;
  testing::internal::CaptureStderr();
  EXPECT_EQ(Dispatch(line), 144);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "cyclectl: unrecognized operation 10\n");
}

TEST(DispatchTest, SubsystemArgumentsFallBack) {
  struct {
    std::vector<std::string> args;
    const char* first;  // nullptr: absent
    const char* second;
    int third;
  } cases[] = {
      {{"one_session"}, nullptr, nullptr, -1},
      {{"one_session", "-policy", "P"}, "P", nullptr, -1},
      {{"one_session", "-policy", "P", "-arg1", "A"}, "A", nullptr, -1},
      {{"one_session", "-schedule", "S"}, nullptr, "S", -1},
      {{"one_session", "-arg2", "B", "-schedule", "S"}, nullptr, "B", -1},
      {{"one_session", "-schedtype", "4"}, nullptr, nullptr, 4},
      {{"one_session", "-schedtype", "4", "-arg3", "9"}, nullptr, nullptr, 9},
      {{"one_session", "-arg3", "0"}, nullptr, nullptr, -1},
      {{"suspend", "-policy", "P"}, "P", nullptr, -1},  // handed on although not in its list
  };
  for (const auto& c : cases) {
    CommandLine line = Settle(c.args);
    SubsystemArguments args = SubsystemSessionArguments(line);
    std::string trace = c.args.size() > 1 ? c.args[1] : c.args[0];
    if (c.first == nullptr) {
      EXPECT_EQ(args.first, nullptr) << trace;
    } else {
      EXPECT_STREQ(args.first, c.first) << trace;
    }
    if (c.second == nullptr) {
      EXPECT_EQ(args.second, nullptr) << trace;
    } else {
      EXPECT_STREQ(args.second, c.second) << trace;
    }
    EXPECT_EQ(args.third, c.third) << trace;
  }
}

std::vector<std::string> calls;

// Records a listing's call as "in" or "out" and its values.
template <bool kIncoming>
void Record(outputform_e form, ImportNotificationType_e type, TimeRangeType range, long time,
            const std::string& client, const std::string& hostname) {
  calls.push_back(std::string(kIncoming ? "in " : "out ") + std::to_string(form) + " " +
                  std::to_string(type) + " " + std::to_string(range) + " " + std::to_string(time) +
                  " [" + client + "] [" + hostname + "]");
}

TEST(DispatchTest, NotificationListingsInOrder) {
  setenv("TZ", "UTC", 1);
  tzset();
  struct {
    std::vector<std::string> args;
    std::vector<std::string> calls;
  } cases[] = {
      {{"list_import_notify"}, {"in 0 1 0 0 [] []", "out 0 1 0 0 [] []"}},
      {{"list_import_notify", "-input"}, {"in 0 1 0 0 [] []"}},
      {{"list_import_notify", "-output", "-U", "-ntype", "error"}, {"out 1 3 0 0 [] []"}},
      {{"list_import_notify", "-output", "-input", "-client", "c", "-hostname", "h", "-after",
        "01/02/2024"},
       {"in 0 1 2 1704153600 [c] [h]", "out 0 1 2 1704153600 [c] [h]"}},
  };
  for (const auto& c : cases) {
    calls.clear();
    ListImportNotifications(Settle(c.args), Record<true>, Record<false>);
    EXPECT_EQ(calls, c.calls);
  }
}

}  // namespace
