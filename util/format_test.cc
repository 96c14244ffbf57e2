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

// What `format` makes of each of `values`, joined by ", ".
template <typename T, typename F>
std::string Joined(F format, std::initializer_list<T> values) {
  std::string out;
  for (const T& value : values) out += (out.empty() ? "" : ", ") + std::string(format(value));
  return out;
}

TEST(FormatTest, EnumerationNames) {
  EXPECT_EQ(Joined<int>(FormatImageState, {0, 9, 10, 11, -1}),
            "NOT_MANAGED, NOT_STARTED|INACTIVE, IN_PROCESS|INACTIVE, INVALID, INVALID");
  EXPECT_EQ(Joined<int>(FormatCopyState, {5, 15, 16, -1}),
            "COPYCOMPLETE, IMPORT_FAILED, INVALID, INVALID");
  EXPECT_EQ(Joined<int>(FormatCopyType, {0, 9, 10, INT_MIN}),
            "BACKUP, CLOUD_SNAPSHOT_INDEX, INVALID, INVALID");
  EXPECT_EQ(Joined<int>(FormatExpirationType, {5, 6, -1}), "MIRROR, INVALID, INVALID");
}

TEST(FormatTest, SlpOperationsMask) {
  const std::string allClear =
      "[CLOUD_SNAPSHOT_INDEX(0)] [CLOUD_SNAPSHOT_REPLICATION(0)] [REPLICATION(0)] "
      "[INDEX_FROM_SNAPSHOT(0)] [BACKUP_FROM_SNAPSHOT(0)] [IMPORT(0)] "
      "[REPLICATE_TO_REMOTE_MASTER(0)] [SNAPSHOT(0)] [DUPLICATE(0)] [BACKUP(0)] ";
  // Bits above 9 show only in the number.
  EXPECT_EQ("[1024] = " + allClear, FormatSlpOperationsMask(1024));
  EXPECT_EQ(
      "[1541] = [CLOUD_SNAPSHOT_INDEX(1)] [CLOUD_SNAPSHOT_REPLICATION(0)] "
      "[REPLICATION(0)] [INDEX_FROM_SNAPSHOT(0)] [BACKUP_FROM_SNAPSHOT(0)] [IMPORT(0)] "
      "[REPLICATE_TO_REMOTE_MASTER(0)] [SNAPSHOT(1)] [DUPLICATE(0)] [BACKUP(1)] ",
      FormatSlpOperationsMask(1024 + 512 + 4 + 1));
}

// Below a year a duration, from a year on a date; "???" where none can be
// made. The date-only flag is for dates alone.
TEST(FormatTest, DurationsAndDates) {
  setenv("TZ", "UTC", 1);
  tzset();
  EXPECT_EQ(
      Joined<int64_t>([](int64_t s) { return FormatTime(s, false); },
                      {0, 59, 60, 3661, 86400, 31535999, -5, 31536000, 1700000000, INT64_MAX}),
      "0 secs, 59 secs, 0:01:00, 1:01:01, 1 days 0:00:00, 364 days 23:59:59, -5 secs, "
      "1971/01/01 00:00:00, 2023/11/14 22:13:20, ???");
  EXPECT_EQ(Joined<int64_t>([](int64_t s) { return FormatTime(s, true); }, {90061, 31536000}),
            "1 days 1:01:01, 1971/01/01");
  // Microseconds pad to four digits; longer durations and dates show none.
  EXPECT_EQ("0.5000 secs", FormatTimeMS(0, ACE_Time_Value(0, 5000), false));
  EXPECT_EQ("12.0042 secs", FormatTime(ACE_Time_Value(12, 42), false));
  EXPECT_EQ("12.123456 secs", FormatTime(ACE_Time_Value(12, 123456), false));
  EXPECT_EQ("0:01:00", FormatTime(ACE_Time_Value(60, 42), false));
  EXPECT_EQ("1971/01/01", FormatTime(ACE_Time_Value(31536000, 42), true));
}

// Status|time|client, the outputs starting as -1 and "untouched": a
// non-numeric time still succeeds (strtoll rules); a text without a client
// writes both outputs, the other failures leave them untouched.
TEST(ParseBackupIdTest, SplitsAtTheLastUnderscore) {
  const auto split = [](const char* id) {
    int64_t time = -1;
    std::string client = "untouched";
    const int status = ParseBackupId(id, time, client);
    return std::to_string(status) + "|" + std::to_string(time) + "|" + client;
  };
  EXPECT_EQ(
      Joined<const char*>(split, {"client1_1700000000", "my_host_name_42", "host_abc", "host_ 17x",
                                  "host_-3", "nounderscore", "host_", "_1700000000", ""}),
      "0|1700000000|client1, 0|42|my_host_name, 0|0|host, 0|17|host, 0|-3|host, "
      "20|-1|untouched, 20|-1|untouched, 20|1700000000|, 20|-1|untouched");
}

}  // namespace
}  // namespace Stashwell
}  // namespace Orvantic
