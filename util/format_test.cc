// Tests of the catalog value formatting: enumeration names at and beyond the
// tables' ends, the operations mask, durations and dates, backup-id parsing.
#include "util/format.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <ctime>
#include <initializer_list>
#include <string>

namespace Orvantic {
namespace Stashwell {
namespace {

// The names `format` gives `values`, blank-separated.
std::string Names(const char* (*format)(int), std::initializer_list<int> values) {
  std::string names;
  for (int value : values) names += std::string(names.empty() ? "" : " ") + format(value);
  return names;
}

TEST(FormatTest, EnumerationNames) {
  EXPECT_EQ(Names(FormatImageState, {0, 9, 10, 11, -1}),
            "NOT_MANAGED NOT_STARTED|INACTIVE IN_PROCESS|INACTIVE INVALID INVALID");
  EXPECT_EQ(Names(FormatCopyState, {5, 15, 16, -1}), "COPYCOMPLETE IMPORT_FAILED INVALID INVALID");
  EXPECT_EQ(Names(FormatCopyType, {0, 9, 10, INT_MIN}),
            "BACKUP CLOUD_SNAPSHOT_INDEX INVALID INVALID");
  EXPECT_EQ(Names(FormatExpirationType, {5, 6, -1}), "MIRROR INVALID INVALID");
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

TEST(FormatTest, DurationsAndDates) {
  setenv("TZ", "UTC", 1);
  tzset();
  static const struct {
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
  for (const auto& c : cases) {
    EXPECT_EQ(c.expected, FormatTime(c.seconds, c.dateOnly)) << c.seconds;
  }
  // Microseconds pad to four digits; longer durations and dates show none.
  EXPECT_EQ("0.5000 secs", FormatTimeMS(0, ACE_Time_Value(0, 5000), false));
  EXPECT_EQ("12.0042 secs", FormatTime(ACE_Time_Value(12, 42), false));
  EXPECT_EQ("12.123456 secs", FormatTime(ACE_Time_Value(12, 123456), false));
  EXPECT_EQ("0:01:00", FormatTime(ACE_Time_Value(60, 42), false));
  EXPECT_EQ("1971/01/01", FormatTime(ACE_Time_Value(31536000, 42), true));
}

TEST(ParseBackupIdTest, SplitsAtTheLastUnderscore) {
  static const struct {
    const char* id;
    const char* result;  // status|time|client, the outputs starting as -1 and "untouched"
  } cases[] = {
      {"client1_1700000000", "0|1700000000|client1"},
      {"my_host_name_42", "0|42|my_host_name"},
      {"host_abc", "0|0|host"},    // non-numeric time still succeeds
      {"host_ 17x", "0|17|host"},  // strtoll rules
      {"host_-3", "0|-3|host"},
      {"nounderscore", "20|-1|untouched"},
      {"host_", "20|-1|untouched"},
      {"_1700000000", "20|1700000000|"},  // both outputs written
      {"", "20|-1|untouched"},
  };
  for (const auto& c : cases) {
    int64_t time = -1;
    std::string client = "untouched";
    const int status = ParseBackupId(c.id, time, client);
    EXPECT_EQ(std::to_string(status) + "|" + std::to_string(time) + "|" + client, c.result) << c.id;
  }
}

}  // namespace
}  // namespace Stashwell
}  // namespace Orvantic
