// The notification record store on a real catalog: round trips of both
// records through insert and query (empty texts stay empty, the GUID keeps
// its bytes), the fetch batch boundaries, deletes and retry counts with their
// row counts, the text forms, and the failures. The filters' clauses are
// shown end to end (tests/e2e/list_import_notify_test.cc).
#include "import/notification_store.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "platform/dal/dal_test_support.h"

namespace {

using namespace DBData;
using Corvela::Dal::DalConnectionTest;

SLP_InNotifications InRecord() {
  SLP_InNotifications r;
  memset(&r, 0, sizeof r);
  strcpy(r.ClientMachineName, "client7");
  r.BackupTime = 1700000000;
  r.SourceImageKey = 9007199254740993ULL;  // beyond a double's exact integers
  r.NotificationType = 3;
  strcpy(r.FromHostName, "far.example.com");
  for (int i = 0; i < 16; ++i) r.FromHostMachineId[i] = static_cast<unsigned char>(0xf0 + i);
  r.FromHostSWVersion = 910000;
  r.ErrorCode = -191;
  return r;  // ErrorString stays empty
}

class NotificationStoreTest : public DalConnectionTest {
 protected:
  void SetUp() override { catalog_.ApplySchema(); }

  // `count` in-rows (or out-rows) with keys 1..count, inserted in reverse key
  // order so that the database's order is not the key order.
  void AddRows(const char* table, int count) {
    catalog_.Exec(std::string("WITH RECURSIVE n(k) AS (SELECT ") + std::to_string(count) +
                  " UNION ALL SELECT k - 1 FROM n WHERE k > 1) INSERT INTO " + table +
                  " (NotificationKey, ClientMachineName) SELECT k, 'c' || k FROM n");
  }
};

TEST_F(NotificationStoreTest, RecordsRoundTripThroughInsertAndQuery) {
  Connect();
  SLP_InNotifications in = InRecord();
  ASSERT_EQ(InsertSlpInNotificationRecord(connection_, nullptr, in), 0);
  SLP_OutNotifications out;
  memset(&out, 0, sizeof out);
  strcpy(out.ClientMachineName, "client8");
  out.BackupTime = -5;
  out.NotificationType = 2;
  strcpy(out.ErrorString, "it's \"quoted\"");
  ASSERT_EQ(InsertSlpOutNotificationRecord(connection_, view_, out), 0);

  // (The schema refuses NULL texts, so an empty text bound as NULL would
  // have failed the insert.)
  RecordList<SLP_InNotifications> ins;
  ASSERT_EQ(GetSlpInNotificationRecords(connection_, nullptr, ins, nullptr, "", "", ""), 0);
  ASSERT_EQ(ins.size(), 1u);
  // Whole records as text; the key and the times are the database's.
  EXPECT_GT(ins.front().CreatedDateTime, 1700000000);
  in.NotificationKey = 1;
  in.CreatedDateTime = ins.front().CreatedDateTime;
  char want[1024], got[1024];
  EXPECT_STREQ(SlpInNotification2String(got, sizeof got, ins.front()),
               SlpInNotification2String(want, sizeof want, in));

  RecordList<SLP_OutNotifications> outs;
  ASSERT_EQ(GetSlpOutNotificationRecords(connection_, view_, outs, nullptr, "", "", ""), 0);
  ASSERT_EQ(outs.size(), 1u);
  out.NotificationKey = 1;
  out.CreatedDateTime = out.LastRetryTime = outs.front().CreatedDateTime;
  EXPECT_STREQ(SlpOutNotification2String(got, sizeof got, outs.front()),
               SlpOutNotification2String(want, sizeof want, out));
}

TEST_F(NotificationStoreTest, ReadsEveryBatchAndAppendsInDatabaseOrder) {
  // Without ORDER BY, SQLite reads in key order, PostgreSQL in the order of
  // insertion.
  if (catalog_.onPostgres()) GTEST_SKIP() << "the order of a table is SQLite's";
  AddRows("SLP_InNotifications", kInNotificationsPerFetch + 1);
  AddRows("SLP_OutNotifications", kOutNotificationsPerFetch + 1);
  Connect();
  RecordList<SLP_InNotifications> ins;  // a row from before stays first
  SLP_InNotifications before = InRecord();
  before.NotificationKey = -1;
  ins.push_back(before);
  ASSERT_EQ(GetSlpInNotificationRecords(connection_, view_, ins, nullptr, "", "", ""), 0);
  ASSERT_EQ(ins.size(), kInNotificationsPerFetch + 2);
  EXPECT_EQ(ins.front().NotificationKey, -1);
  EXPECT_EQ((++ins.begin())->NotificationKey, 1);
  EXPECT_EQ(ins.back().NotificationKey, 65);
  EXPECT_STREQ(ins.back().ClientMachineName, "c65");

  RecordList<SLP_OutNotifications> outs;
  ASSERT_EQ(GetSlpOutNotificationRecords(connection_, view_, outs, nullptr, "", "",
                                         "NotificationKey DESC"),
            0);
  ASSERT_EQ(outs.size(), kOutNotificationsPerFetch + 1);
  EXPECT_EQ(outs.front().NotificationKey, 129);
  EXPECT_EQ(outs.back().NotificationKey, 1);
}

TEST_F(NotificationStoreTest, DeletesAndCountsRetriesWithRowCounts) {
  AddRows("SLP_OutNotifications", 3);
  catalog_.Exec("UPDATE SLP_OutNotifications SET LastRetryTime = 0");
  Connect();
  const int64_t key = 2;
  Corvela::Dal::ParameterBinder binder;
  binder.bindInputInt64(&key);
  int rows = -1;
  ASSERT_EQ(IncrementRetryCountInSlpOutNotificationRecord(
                connection_, view_, &rows, binder.getBindings(), "NotificationKey >= ?"),
            0);
  EXPECT_EQ(rows, 2);
  RecordList<SLP_OutNotifications> outs;
  ASSERT_EQ(
      GetSlpOutNotificationRecords(connection_, view_, outs, nullptr, "", "", "NotificationKey"),
      0);
  ASSERT_EQ(outs.size(), 3u);
  EXPECT_EQ(outs.front().RetryCount, 0);
  EXPECT_EQ(outs.front().LastRetryTime, 0);
  EXPECT_EQ(outs.back().RetryCount, 1);
  EXPECT_GT(outs.back().LastRetryTime, 1700000000);

  ASSERT_EQ(DeleteSlpOutNotificationRecord(connection_, nullptr, &rows, binder.getBindings(),
                                           "NotificationKey = ?"),
            0);
  EXPECT_EQ(rows, 1);
  ASSERT_EQ(DeleteSlpOutNotificationRecord(connection_, nullptr, &rows, nullptr, ""), 0);
  EXPECT_EQ(rows, 2);  // every row left
  // Nothing left to delete: end of data, and the count says 0.
  EXPECT_EQ(DeleteSlpInNotificationRecord(connection_, view_, &rows, nullptr, ""),
            Corvela::Dal::DAL_NO_DATA);
  EXPECT_EQ(rows, 0);
}

TEST_F(NotificationStoreTest, ReportsFailuresByStatus) {
  RecordList<SLP_InNotifications> ins;
  SLP_InNotifications in = InRecord();
  int rows = 5;
  EXPECT_EQ(GetSlpInNotificationRecords(nullptr, nullptr, ins, nullptr, "", "", ""), kNoConnection);
  EXPECT_EQ(DeleteSlpInNotificationRecord(nullptr, nullptr, &rows, nullptr, ""), kNoConnection);
  EXPECT_EQ(rows, 0);

  catalog_.Exec("DROP TABLE SLP_InNotifications");
  Connect();
  EXPECT_EQ(GetSlpInNotificationRecords(connection_, view_, ins, nullptr, "", "", ""),
            Corvela::Dal::DAL_SQL_ERROR);
  EXPECT_EQ(InsertSlpInNotificationRecord(connection_, view_, in), Corvela::Dal::DAL_SQL_ERROR);
  EXPECT_TRUE(ins.empty());
  // A where text whose marks have no parameters.
  EXPECT_EQ(DeleteSlpOutNotificationRecord(connection_, view_, &rows, nullptr, "RetryCount = ?"),
            Corvela::Dal::DAL_PARAMETER_MISMATCH);
}

TEST(NotificationTextTest, FormsTheRecordLines) {
  SLP_InNotifications in = InRecord();
  in.NotificationKey = 9;
  in.SourceImageKey = 18446744073709551615ULL;
  in.CreatedDateTime = -7;
  char text[512];
  EXPECT_STREQ(SlpInNotification2String(text, sizeof text, in),
               "key=9, client=client7, bt=1700000000, srcimgkey=18446744073709551615, notetype=3, "
               "fromhost=far.example.com, fromhostid={f0f1f2f3-f4f5-f6f7-f8f9-fafbfcfdfeff}, "
               "fromhostver=910000, ec=-191, estr=, ctime=-7");
  SLP_OutNotifications out;
  memset(&out, 0, sizeof out);
  strcpy(out.DestinationHostName, "d");
  out.RetryCount = 4;
  out.LastRetryTime = 100;
  EXPECT_STREQ(SlpOutNotification2String(text, sizeof text, out),
               "key=0, client=, bt=0, srcimgkey=0, notetype=0, desthost=d, ec=0, estr=, rcnt=4, "
               "lrtime=100, ctime=0");
  // Cut to the buffer.
  EXPECT_STREQ(SlpOutNotification2String(text, 8, out), "key=0, ");
}

}  // namespace
