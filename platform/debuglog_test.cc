// Tests of the debug log: file name and mode, line format, and the silent
// behaviour of a log that is not open. Why a log cannot be opened is shown
// end to end (tests/e2e/startup_test.cc).
#include "platform/debuglog.h"

#include <sys/stat.h>

#include <ctime>
#include <filesystem>
#include <fstream>
#include <regex>

#include "gtest/gtest.h"
#include "platform/config.h"
#include "platform/test_root.h"

namespace {

TEST(DebugLog, WritesOneLinePerCallInTodaysFile) {
  std::string logs = testing_root::Path() + "/logs";
  std::filesystem::create_directories(logs + "/admin");
  logmsg(2, "before open", "x");  // dropped: no log yet

  mode_t old = umask(027);
  int err = -1;
  ASSERT_GE(open_debug_log(logs.c_str(), "admin", "prog", 0666, &err), 0);
  umask(old);
  EXPECT_EQ(err, 0);
  logmsg(2, "INITIATING: x", "prog");
  logmsg(16, "two\nlines\n\n", "check_routine");
  logmsg(2, "trailing blank ", "prog");
  logmsgv(2, "level %d: %s (%s)", 5, "text", "src");
  close_debug_log();
  logmsg(2, "after close", "x");
  ASSERT_GE(open_debug_log(logs.c_str(), "admin", "prog", 0666, &err), 0);  // appends
  logmsg(2, "again", "prog");
  close_debug_log();

  time_t now = time(nullptr);
  struct tm t;
  localtime_r(&now, &t);
  char file[256];
  strftime(file, sizeof file, (logs + "/admin/prog.%Y%m%d.log").c_str(), &t);
  struct stat st;
  ASSERT_EQ(stat(file, &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0640u) << "created with the mode passed, less the umask";

  std::regex line(R"(\d\d:\d\d:\d\d\.\d\d\d \[)" + std::to_string(getpid()) +
                  R"(\] (<\d+> [^:]+: .*))");
  std::vector<std::string> bodies;
  std::ifstream in(file);
  for (std::string l; std::getline(in, l);) {
    std::smatch m;
    bodies.push_back(std::regex_match(l, m, line) ? m[1].str() : "malformed: " + l);
  }
  EXPECT_EQ(bodies,
            (std::vector<std::string>{"<2> prog: INITIATING: x", "<16> check_routine: two lines",
                                      "<2> prog: trailing blank ", "<2> prog: level 5: text (src)",
                                      "<2> prog: again"}));
}

TEST(DebugLog, ConfiguredVerbosity) {
  testing_root::Write("etc/stashwell.conf", "VERBOSE = 2\nVERBOSE.cyclectl = 4\n");
  ASSERT_TRUE(QbConfReader().hasData());
  EXPECT_EQ(get_configured_verbose("cyclectl", "admin"), 4);
  EXPECT_EQ(get_configured_verbose("other", "admin"), 2);
  EXPECT_EQ(get_configured_verbose(nullptr, "admin"), 2);
}

}  // namespace
