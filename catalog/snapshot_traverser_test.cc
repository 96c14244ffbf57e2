// Tests of the snapshot merge: the key order against a row's copy, and the
// snapshots handed out per copy over a real catalog, in batches of several
// sizes, with snapshots sorting before every copy and after the last one.
#include "catalog/snapshot_traverser.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "platform/emmlib/test_catalog.h"

namespace {

Legacy_ImageView Row(int64_t backupTime, const char* backupId, int copyNumber) {
  Legacy_ImageView row = {};
  row.image.BackupTime = backupTime;
  strcpy(row.image.BackupID, backupId);
  row.copy.CopyNumber = copyNumber;
  return row;
}

TEST(SnapshotTraverserTest, ComparesByBackupTimeBackupIdAndCopyNumber) {
  const Legacy_ImageView row = Row(200, "host_200", 2);
  static const struct {
    int64_t backupTime;
    const char* backupId;
    int copyNumber;
    int expected;
  } cases[] = {
      {200, "host_200", 2, 1}, {199, "host_200", 9, 0}, {201, "host_200", 1, 2},
      {200, "host_199", 9, 0}, {200, "host_201", 1, 2}, {200, "host_200", 1, 0},
      {200, "host_200", 3, 2}, {-5, "host_200", 2, 0},  {200, "host_2000", 2, 2},
      {200, "host\xff", 2, 2},  // bytes compare unsigned
  };
  for (const auto& c : cases) {
    EMM_SnapshotInfo snap = {};
    snap.BackupTime = c.backupTime;
    strcpy(snap.BackupID, c.backupId);
    snap.CopyNumber = c.copyNumber;
    EXPECT_EQ(c.expected, SnapshotTraverser::compareToCurrentImage(snap, &row))
        << c.backupTime << " " << c.backupId << " " << c.copyNumber;
    EXPECT_EQ(1, SnapshotTraverser::compareToCurrentImage(snap, nullptr));
  }
}

class SnapshotMergeTest : public ::testing::TestWithParam<unsigned> {
 protected:
  void SetUp() override {
    // An image whose snapshot sorts before every row listed below.
    AddSnapshotCopy(catalog_.AddImage("early", 50), 1, {"never"});
    // Two snapshots of one copy, none of the next copy, one of a later image.
    int64_t a = catalog_.AddImage("alpha", 100);
    AddSnapshotCopy(a, 1, {"a1-first", "a1-second"});
    AddSnapshotCopy(a, 2, {});
    AddSnapshotCopy(catalog_.AddImage("beta", 200), 1, {"b1"});
    // Snapshots after the last row are never reached and freed at the end.
    AddSnapshotCopy(catalog_.AddImage("late", 300), 1, {"late1", "late2"});
  }

  void AddSnapshotCopy(int64_t image, int copyNumber, const std::vector<std::string>& names) {
    int64_t copy = catalog_.AddCopy(image, copyNumber, "DataFormat = 2");
    for (const std::string& name : names) {
      catalog_.Exec(
          "INSERT INTO DBM_ImageSnapshot (ImageCopyKey, StorageServerName, "
          "SnapshotName) VALUES (" +
          std::to_string(copy) + ", 'array1', '" + name + "')");
    }
  }

  emm_test::TestCatalog catalog_;
};

// What `next` hands out for each row, call after call, as
// "|server/copy/name..." per row; the first row is asked twice.
TEST_P(SnapshotMergeTest, HandsOutEachCopysSnapshotsOnce) {
  SnapshotTraverser traverser(*catalog_.cid(), emm_test::kMaster, GetParam());
  ASSERT_EQ(0u, traverser.initQuery(nullptr));
  std::string handedOut;
  for (const Legacy_ImageView& row : {Row(100, "alpha_100", 1), Row(100, "alpha_100", 1),
                                      Row(100, "alpha_100", 2), Row(200, "beta_200", 1)}) {
    handedOut += "|";
    EMM_SnapshotInfo* snap = nullptr;
    for (traverser.next(snap, &row); snap != nullptr; traverser.next(snap, &row)) {
      handedOut += std::string(" ") + snap->StorageServerName + "/" +
                   std::to_string(snap->CopyNumber) + "/" + snap->SnapshotName;
    }
  }
  EXPECT_EQ(handedOut, "| array1/1/a1-first array1/1/a1-second||| array1/1/b1");
}

INSTANTIATE_TEST_SUITE_P(BatchSizes, SnapshotMergeTest, ::testing::Values(1u, 2u, 50u));

}  // namespace
