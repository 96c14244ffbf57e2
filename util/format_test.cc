// Tests of the catalog value formatting: enumeration names at and beyond the
// tables' ends, the operations mask, durations and dates, backup-id parsing.
#include "util/format.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <ctime>

namespace Orvantic {
namespace Stashwell {
namespace {

TEST(FormatTest, EnumerationNames) {
  struct Case {
    const char* (*format)(int);
    int value;
    const char* expected;
  } cases[] = {
      {FormatImageState, 0, "NOT_MANAGED"},
      {FormatImageState, 9, "NOT_STARTED|INACTIVE"},
      {FormatImageState, 10, "IN_PROCESS|INACTIVE"},
      {FormatImageState, 11, "INVALID"},
      {FormatImageState, -1, "INVALID"},
      {FormatCopyState, 5, "COPYCOMPLETE"},
      {FormatCopyState, 15, "IMPORT_FAILED"},
      {FormatCopyState, 16, "INVALID"},
      {FormatCopyState, -1, "INVALID"},
      {FormatCopyType, 0, "BACKUP"},
      {FormatCopyType, 9, "CLOUD_SNAPSHOT_INDEX"},
      {FormatCopyType, 10, "INVALID"},
      {FormatCopyType, INT_MIN, "INVALID"},
      {FormatExpirationType, 5, "MIRROR"},
      {FormatExpirationType, 6, "INVALID"},
      {FormatExpirationType, -1, "INVALID"},
  };
  for (const Case& c : cases) {
    EXPECT_STREQ(c.expected, c.format(c.value)) << "value " << c.value;
  }
}

TEST(FormatTest, SlpOperationsMask) {
  const std::string allClear =
      "[CLOUD_SNAPSHOT_INDEX(0)] [CLOUD_SNAPSHOT_REPLICATION(0)] [REPLICATION(0)] "
      "[INDEX_FROM_SNAPSHOT(0)] [BACKUP_FROM_SNAPSHOT(0)] [IMPORT(0)] "
      "[REPLICATE_TO_REMOTE_MASTER(0)] [SNAPSHOT(0)] [DUPLICATE(0)] [BACKUP(0)] ";
  EXPECT_EQ("[0] = " + allClear, FormatSlpOperationsMask(0));
  // Bits above 9 show only in the number.
  EXPECT_EQ("[1024] = " + allClear, FormatSlpOperationsMask(1024));
  EXPECT_EQ(
      "[1541] = [CLOUD_SNAPSHOT_INDEX(1)] [CLOUD_SNAPSHOT_REPLICATION(0)] "
      "[REPLICATION(0)] [INDEX_FROM_SNAPSHOT(0)] [BACKUP_FROM_SNAPSHOT(0)] [IMPORT(0)] "
      "[REPLICATE_TO_REMOTE_MASTER(0)] [SNAPSHOT(1)] [DUPLICATE(0)] [BACKUP(1)] ",
      FormatSlpOperationsMask(1024 + 512 + 4 + 1));
}

// Dates in UTC; the time zone of the process is put back afterwards.
class FormatTimeTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (const char* tz = getenv("TZ")) saved_ = tz;
    setenv("TZ", "UTC", 1);
    tzset();
  }
  void TearDown() override {
    saved_.empty() ? unsetenv("TZ") : setenv("TZ", saved_.c_str(), 1);
    tzset();
  }

 private:
  std::string saved_;
};

TEST_F(FormatTimeTest, DurationsAndDates) {
  struct Case {
    int64_t seconds;
    bool dateOnly;
    const char* expected;
  } cases[] = {
      {0, false, "0 secs"},
      {59, false, "59 secs"},
      {60, false, "0:01:00"},
      {3661, false, "1:01:01"},
      {86400, false, "1 days 0:00:00"},
      {90061, true, "1 days 1:01:01"},  // the date-only flag is for dates alone
      {31535999, false, "364 days 23:59:59"},
      {-5, false, "-5 secs"},
      {31536000, false, "1971/01/01 00:00:00"},
      {31536000, true, "1971/01/01"},
      {1700000000, false, "2023/11/14 22:13:20"},
      {INT64_MAX, false, "???"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.expected, FormatTime(c.seconds, c.dateOnly)) << c.seconds;
  }
}

TEST_F(FormatTimeTest, MicrosecondsPadToFourDigits) {
  EXPECT_EQ("0.5000 secs", FormatTimeMS(0, ACE_Time_Value(0, 5000), false));
  EXPECT_EQ("12.0042 secs", FormatTime(ACE_Time_Value(12, 42), false));
  EXPECT_EQ("12.123456 secs", FormatTime(ACE_Time_Value(12, 123456), false));
  // Longer durations and dates never show a fraction.
  EXPECT_EQ("0:01:00", FormatTime(ACE_Time_Value(60, 42), false));
  EXPECT_EQ("1971/01/01", FormatTime(ACE_Time_Value(31536000, 42), true));
}

TEST(ParseBackupIdTest, SplitsAtTheLastUnderscore) {
  struct Case {
    const char* id;
    int status;
    int64_t time;
    const char* client;
  } cases[] = {
      {"client1_1700000000", 0, 1700000000, "client1"},
      {"my_host_name_42", 0, 42, "my_host_name"},
      {"host_abc", 0, 0, "host"},    // non-numeric time still succeeds
      {"host_ 17x", 0, 17, "host"},  // strtoll rules
      {"host_-3", 0, -3, "host"},
      {"nounderscore", 20, -1, "untouched"},
      {"host_", 20, -1, "untouched"},
      {"_1700000000", 20, 1700000000, ""},  // both outputs written
      {"", 20, -1, "untouched"},
  };
  for (const Case& c : cases) {
    int64_t time = -1;
    std::string client = "untouched";
    EXPECT_EQ(c.status, ParseBackupId(c.id, time, client)) << c.id;
    EXPECT_EQ(c.time, time) << c.id;
    EXPECT_EQ(c.client, client) << c.id;
  }
}

}  // namespace
}  // namespace Stashwell
}  // namespace Orvantic
