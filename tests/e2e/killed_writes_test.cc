// End-to-end tests of the catalog changes under kill -9: a run killed in the
// middle of its change leaves the catalog as it was, and what a run has
// reported done is in the catalog however it ends.
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "tests/e2e/catalog_lock.h"
#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"

namespace {

class KilledWritesTest : public e2e::CatalogTest {
 protected:
  // client1_1000 with a backup copy and a replication made from it, three
  // replication records of the target tgt1 and three entries of the
  // deleted-fragment list.
  void SetUp() override {
    const std::string image =
        AddImage("client1", 1000, "StorageServiceName = 'slp1', StorageServiceState = 3");
    AddCopy(image, 1, "SLPIndex = 1, CopyType = 0, CopyState = 5");
    const std::string copy =
        AddCopy(image, 2, "SLPIndex = 2, SLPSourceIndex = 1, CopyType = 3, CopyState = 13");
    const std::string target = AddMachine("tgt1", 12);
    for (const char* volume : {"vol1", "vol2", "vol3"}) {
      Insert("DBM_ImageReplicationDestination", "ReplicationDestinationKey",
             "ImageCopyKey, TargetMachineKey, VolumeInfo",
             copy + ", " + target + ", '" + volume + "'", "");
    }
    root_.Sql(
        "INSERT INTO DBM_DeletedFragment (MasterServerKey, BackupID)"
        " VALUES (1, 'client1_1000'), (1, 'client2_2000'), (1, 'client3_3000');");
  }

  // Everything the four changes touch, one line per row.
  std::string State() {
    return root_.Sql(
        "SELECT 'image ' || BackupID || ' ' || StorageServiceState FROM DBM_Image"
        " UNION ALL SELECT 'copy ' || SLPIndex || ' ' || CopyState FROM DBM_ImageCopy"
        " UNION ALL SELECT 'replica ' || VolumeInfo"
        " FROM DBM_ImageReplicationDestination"
        " UNION ALL SELECT 'deleted ' || BackupID FROM DBM_DeletedFragment"
        " ORDER BY 1;");
  }

  // True once a run of this catalog waits for a lock the test holds.
  bool SomeoneWaits() {
    return root_.Sql(
               "SELECT count(*) FROM pg_stat_activity"
               " WHERE datname = current_database() AND wait_event_type = 'Lock';") != "0\n";
  }
};

// Each change is stopped by a row lock the test holds, killed while it
// waits, and then run again to the end.
TEST_F(KilledWritesTest, AChangeKilledHalfwayLeavesNothing) {
  if (!e2e::OnPostgres()) GTEST_SKIP() << "needs row locks, which SQLite does not have";
  root_.SetConfig("CATALOG_BUSY_TIMEOUT", "60000");
  static const struct {
    std::vector<std::string> args;
    const char* lockedRow;  // taken by the test's transaction
  } cases[] = {
      {{"remove_repl", "-target_machine", "tgt1"},
       "SELECT 1 FROM DBM_ImageReplicationDestination WHERE VolumeInfo = 'vol3' FOR UPDATE"},
      {{"remove_exp", "-nowarn"},
       "SELECT 1 FROM DBM_DeletedFragment WHERE BackupID = 'client3_3000' FOR UPDATE"},
      // Each of redo's three updates stands by itself; the first waits.
      {{"redo", "-backupid", "client1_1000", "-slpindex", "2"},
       "SELECT 1 FROM DBM_ImageCopy WHERE SLPIndex = 2 FOR UPDATE"},
  };
  for (const auto& c : cases) {
    const std::string before = State();
    {
      e2e::CatalogLock holder(root_, c.lockedRow, e2e::CatalogLock::kRows);
      e2e::RunOptions options;
      options.killWhen = [this] { return SomeoneWaits(); };
      EXPECT_EQ(137, root_.Run(c.args, "", options).status) << c.args[0];
      // The server notices that the client is gone and gives its statement
      // up, rather than finishing it once the lock is free.
      for (int i = 0; i < 250 && SomeoneWaits(); ++i) usleep(20000);
    }
    EXPECT_EQ(before, State()) << c.args[0];
    EXPECT_EQ(0, root_.Run(c.args).status) << c.args[0];
    EXPECT_NE(before, State()) << c.args[0];
  }
}

// add_import_frags queues image by image: killed in its pause after the
// 1,000th image, the queue holds exactly the images it reported queued.
TEST_F(KilledWritesTest, QueuedImagesStayQueued) {
  root_.SetConfig("TEST_IMPORT_PAUSE_MS", "60000");
  std::string file, reported;
  for (int i = 1; i <= 1500; ++i) file += "STS_IMAGE = i" + std::to_string(i) + "\n";
  for (int i = 1; i <= 1000; ++i) {
    reported += "Import Manager returned: 0 for fragment name i" + std::to_string(i) +
                ". Total images = " + std::to_string(i) + "\n";
  }
  root_.WriteFile("frags.txt", file);
  e2e::RunOptions options;
  options.killWhen = [this] { return root_.DebugLog().find("pausing") != std::string::npos; };
  EXPECT_EQ(root_.Run({"-test_import_frags", root_.path() + "/frags.txt"}, "", options),
            (e2e::Result{"", reported, 137}));
  EXPECT_EQ("1000\n", root_.Sql("SELECT count(*) FROM SLP_PendingImport;"));
  EXPECT_EQ("i1000\n", root_.Sql("SELECT BackupID FROM SLP_PendingImport"
                                 " WHERE BackupID IN ('i1000', 'i1001');"));
}

}  // namespace
