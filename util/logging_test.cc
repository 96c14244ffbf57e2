// Tests of the logging channels: the record log under each method, the
// application-message log's statuses and Lis argument errors. The program
// name taken from argv[0] is shown end to end (tests/e2e/startup_test.cc).
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <regex>

#include "gtest/gtest.h"
#include "platform/debuglog.h"
#include "platform/swlogger.h"
#include "platform/test_root.h"
#include "util/app_log.h"
#include "util/cmn.h"
#include "util/swdlog.h"

namespace {

TEST(RecordLog, EachMethod) {
  testing_root::Remove("logs");
  std::filesystem::create_directories(testing_root::Path() + "/logs/admin");
  int err = 0;
  ASSERT_GE(open_debug_log((testing_root::Path() + "/logs").c_str(), "admin", "prog", 0644, &err),
            0);

  DBData::LogMessage(5, "DBData::Insert", "nothing %d", 1);  // no method yet: not written

  DBData::UseLegacyLogs();
  DBData::LogMessage(5, "DBData::Insert", "record %s", "r1");
  DBData::LogMessage(0, "DBData::Delete", "failed %d", 7);
  EXPECT_EQ(testing_root::LogLines("logs/admin"),
            (std::vector<std::string>{"<2> prog: level 5: record r1 (DBData::Insert)",
                                      "<16> prog: level 0: failed 7 (DBData::Delete)"}));
  close_debug_log();

  DBData::UseQzULLogs();
  DBData::LogMessage(7, "src", "no default logger");  // must not fail
  SWLogger logger("unified", 2);
  SWLogger::s_default = &logger;
  DBData::LogMessage(3, "src", "above the verbosity");
  DBData::LogMessage(2, "src", "at the verbosity");
  DBData::LogMessage(7, "src", "level %d", 7);
  DBData::LogMessage(-1, "src", "negative");
  SWLogger::s_default = nullptr;
  std::vector<std::string> lines;
  for (const std::string& line : testing_root::LogLines("logs/unified")) {
    lines.push_back(std::regex_replace(line, std::regex(R"(cmn\.cc:\d+)"), "cmn.cc:N"));
  }
  EXPECT_EQ(lines, (std::vector<std::string>{"<2> src: at the verbosity(cmn.cc:N)",
                                             "<1> src: level 7(cmn.cc:N)",
                                             "<1> src: negative(cmn.cc:N)"}));
}

TEST(AppLog, StatusesTheSecondarySinkAndTheArguments) {
  setenv("LC_ALL", "C", 1);
  testing_root::Remove("logs");
  std::filesystem::create_directories(testing_root::Path() + "/logs");
  Corvela::Logging::Log<false> log("dsm");
  crvlLogHandle_t* sink = crvlLogOpen("sink");
  ASSERT_NE(sink, nullptr);
  log.set_secondary(sink);

  Corvela::L10N::LisMgr text("SmeSlp0010N", "volume %s on %s, 100%%");
  text << "v1"
       << "srv";
  EXPECT_EQ(log.WriteAppMsg(0, CRVL_SEV_ERROR, text), 0);
  EXPECT_EQ(log.WriteAppMsg(CRVL_LOG_FLAG_SECONDARY, CRVL_SEV_WARNING, text), 0);
  EXPECT_EQ(testing_root::LogLines("logs/dsm"),
            (std::vector<std::string>{"<3> SmeSlp0010N: volume v1 on srv, 100%",
                                      "<2> SmeSlp0010N: volume v1 on srv, 100%"}));
  EXPECT_EQ(testing_root::LogLines("logs/sink"),
            std::vector<std::string>{"<2> SmeSlp0010N: volume v1 on srv, 100%"});

  log.set_disabled(true);
  EXPECT_EQ(log.WriteAppMsg(0, CRVL_SEV_ERROR, text), 1);
  Corvela::Logging::Log<false> unopened("no/such");
  EXPECT_EQ(unopened.WriteAppMsg(0, CRVL_SEV_ERROR, text), 1);
  crvlLogClose(sink);

  // The arguments of a text: positions, tabs, a missing argument, the locale's coding.
  Corvela::L10N::LisMgr plain("SmeSlp0020N", "%2$s|%1$s|%s|%3$s|%d");
  plain << "a\tb" << nullptr << "caf\xc3\xa9";
  char* formatted = crvlLisFormat(plain.get());
  EXPECT_STREQ(formatted, "|a?b|a?b|caf??|%d");
  free(formatted);

  setenv("LC_ALL", "de_DE.UTF-8", 1);
  Corvela::L10N::LisMgr utf8("SmeSlp0020N", "%s %s");
  utf8 << "caf\xc3\xa9"
       << "\xef\xbb\xbfmark";
  formatted = crvlLisFormat(utf8.get());
  EXPECT_STREQ(formatted, "caf\xc3\xa9 mark");
  free(formatted);
  try {
    utf8 << "bad \xff byte";
    FAIL() << "invalid UTF-8 must throw";
  } catch (const Corvela::L10N::LisX& e) {
    EXPECT_EQ(e.status(), CRVL_LIS_BAD_UTF8);
  }
  setenv("LC_ALL", "C", 1);

  crvlLisAny_t any = {nullptr};
  EXPECT_EQ(crvlLisAny_string(&any, std::string(5000, 'x').c_str()), CRVL_LIS_TRUNCATED);
  EXPECT_EQ(strlen(any.text), static_cast<size_t>(CRVL_LIS_MAX_ARG));
  EXPECT_EQ(crvlLisAny_string(&any, ""), CRVL_LIS_EMPTY_TEXT);
  EXPECT_EQ(crvlLisAny_utf8string(nullptr, "x"), CRVL_LIS_NO_HOLDER);
  free(any.text);
}

}  // namespace
