// Tests of the locale names and of the date-time conversion.
#include "platform/locale.h"

#include <cstdlib>
#include <ctime>
#include <sstream>
#include <string>

#include "gtest/gtest.h"

namespace {

const char* const kLocaleVariables[] = {"LC_ALL",     "LC_MESSAGES", "LC_TIME", "LC_CTYPE",
                                        "LC_COLLATE", "LC_NUMERIC",  "LANG"};

TEST(ZkGetLocaleEx, FollowsThePosixPrecedence) {
  // Empty variables count as unset; unsafe names fall back to C.
  const struct {
    const char* env;     // NAME=value;...
    const char* chosen;  // the messages and time locales, and where they came from
  } cases[] = {
      {"", "C C default"},
      {"LANG=de_DE.UTF-8", "de_DE.UTF-8 de_DE.UTF-8 LANG"},
      {"LANG=de_DE;LC_TIME=en_GB", "de_DE en_GB LANG"},
      {"LANG=de_DE;LC_MESSAGES=fr_FR", "fr_FR de_DE LC_MESSAGES"},
      {"LC_ALL=en_US;LC_MESSAGES=fr_FR;LC_TIME=de_DE", "en_US en_US LC_ALL"},
      {"LC_ALL=;LANG=../../etc", "C C LANG"},
      {"LANG=de DE", "C C LANG"},
  };
  for (const auto& c : cases) {
    for (const char* v : kLocaleVariables) unsetenv(v);
    std::istringstream env(c.env);
    for (std::string e; std::getline(env, e, ';');) {
      setenv(e.substr(0, e.find('=')).c_str(), e.substr(e.find('=') + 1).c_str(), 1);
    }
    char messages[256], ctype[256], time[256], collate[256], numeric[256], status[256];
    EXPECT_EQ(
        zkgetlocaleEx(messages, 256, ctype, 256, time, 256, collate, 256, numeric, 256, status), 0);
    EXPECT_EQ(std::string(messages) + " " + time + " " + status, c.chosen) << c.env;
  }
  for (const char* v : kLocaleVariables) unsetenv(v);
}

TEST(LocaleCandidates, GoFromSpecificToC) {
  EXPECT_EQ(LocaleCandidates("de_DE.UTF-8@euro"),
            (std::vector<std::string>{"de_DE.UTF-8@euro", "de_DE.UTF-8", "de_DE", "de", "C"}));
  EXPECT_EQ(LocaleCandidates("de"), (std::vector<std::string>{"de", "C"}));
  EXPECT_EQ(LocaleCandidates("POSIX"), std::vector<std::string>{"C"});
  EXPECT_EQ(LocaleCandidates(nullptr), std::vector<std::string>{"C"});
  EXPECT_EQ(LocaleCandidates("a/../b"), std::vector<std::string>{"C"});
}

const long kFails = 99999;

// End to end: the forms of C and de_DE (cmdline_usage_test.cc), times to the
// second (list_test.cc), 1970's first second and a reactivation time (flag 0)
// needing its time of day (image_copy_processing_test.cc).
TEST(DateTest, ConvertsTheFormsOfEachLocale) {
  setenv("TZ", "UTC", 1);
  tzset();
  EXPECT_STREQ(getdtstring("en_US.UTF-8"), "mm/dd/yyyy HH:MM:SS");
  EXPECT_STREQ(getdtstring("en_GB.UTF-8"), "dd/mm/yyyy HH:MM:SS");
  EXPECT_STREQ(getdtstring("xx_YY"), "mm/dd/yyyy HH:MM:SS");
  struct {
    const char* locale;
    const char* text;
    int flag;
    long expected;  // kFails: the text must be refused
  } cases[] = {
      {"C", "1/2/2024", 1, 1704153600},
      {"C", "  01/02/2024   13:14  ", 1, 1704201240},
      {"POSIX", "12/31/1999 23:59:59", 1, 946684799},
      {"en_US.UTF-8", "02/29/2024", 1, 1709164800},
      {"en_GB", "02/01/2024", 1, 1704153600},
      {"de_DE.UTF-8", "02.01.2024 13:14:15", 1, 1704201255},
      {"C", "12/31/1969 23:59:59", 1, -1},
      {"de_DE", "01/02/2024", 1, kFails},
  };
  for (const auto& c : cases) {
    long result = kFails;  // left alone on failure
    bool ok = convert2unixdatel(c.text, &result, c.flag, c.locale) != 0;
    EXPECT_EQ(ok, c.expected != kFails) << c.locale << " '" << c.text << "' flag " << c.flag;
    EXPECT_EQ(result, c.expected) << c.locale << " '" << c.text << "' flag " << c.flag;
  }
  // Impossible or malformed texts.
  for (const char* bad :
       {"02/29/2023", "13/01/2024", "04/31/2024", "01/02/24", "01/02/2024 24:00:00",
        "01/02/2024 12", "01/02/2024T12:00", "01.02.2024", ""}) {
    long result = kFails;
    EXPECT_EQ(convert2unixdatel(bad, &result, 1, "C"), 0) << bad;
    EXPECT_EQ(result, kFails) << bad;
  }
}

TEST(DateTest, LocalTimeZoneAndExplicitFormat) {
  setenv("TZ", "America/New_York", 1);
  tzset();
  long result = 0;
  ASSERT_NE(convert2unixdatel("07/01/2024 12:00:00", &result, 1, "C"), 0);
  EXPECT_EQ(result, 1719849600);  // 16:00 UTC in summer time
  ASSERT_NE(convert2unixdatel("2024-07-01 12:00", &result, 0, "C", "%Y-%m-%d %H:%M"), 0);
  EXPECT_EQ(result, 1719849600);
  EXPECT_EQ(convert2unixdatel("2024-02-30 12:00", &result, 0, "C", "%Y-%m-%d %H:%M"), 0);
  EXPECT_EQ(convert2unixdatel(nullptr, &result, 1, "C"), 0);
  EXPECT_EQ(convert2unixdatel("01/01/2024", nullptr, 1, "C"), 0);
}

}  // namespace
