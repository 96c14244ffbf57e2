// End-to-end tests of the operations that write the catalog when the write
// cannot be made (another process's lock, a write-protected file, a full
// disk: each keeps its message and status and logs why at severity 16) or
// the run is killed: a change killed half way leaves the catalog as it was,
// what a run has reported done stays in the catalog.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/e2e/catalog_lock.h"
#include "tests/e2e/catalog_test.h"
#include "tests/e2e/full_disk.h"
#include "tests/e2e/harness.h"
#include "tests/e2e/test_data.h"

namespace {

class CatalogWriteFaultsTest : public e2e::CatalogTest {
 protected:
  // Something for each operation to write: client1_1000 with a copy to redo,
  // three replication records of tgt1, three deleted fragments, a test file.
  void SetUp() override {
    root_.SetConfig("CATALOG_BUSY_TIMEOUT", "200");
    const std::string image =
        AddImage("client1", 1000, "StorageServiceName = 'slp1', StorageServiceState = 3");
    AddCopy(image, 1, "SLPIndex = 1, CopyType = 0, CopyState = 5");
    const std::string copy =
        AddCopy(image, 2, "SLPIndex = 2, SLPSourceIndex = 1, CopyType = 3, CopyState = 13");
    const std::string target = AddMachine("tgt1", 12);
    for (const char* volume : {"vol1", "vol2", "vol3"}) {
      Insert("DBM_ImageReplicationDestination", "ReplicationDestinationKey",
             "ImageCopyKey, TargetMachineKey, VolumeInfo, RemoteMasterServer",
             copy + ", " + target + ", '" + volume + "', 'remote1'");
    }
    for (const char* backupId : {"client1_1000", "client2_2000", "client3_3000"})
      AddDeletedFragment(backupId);
    root_.WriteFile("frags.txt", "STS_IMAGE = img1\n");
  }

  // Everything the writing operations change, one line per row.
  std::string State() {
    return root_.Sql(
        "SELECT 'image ' || BackupID || ' ' || StorageServiceState FROM DBM_Image"
        " UNION ALL SELECT 'copy ' || SLPIndex || ' ' || CopyState FROM DBM_ImageCopy"
        " UNION ALL SELECT 'replica ' || VolumeInfo FROM DBM_ImageReplicationDestination"
        " UNION ALL SELECT 'deleted ' || BackupID FROM DBM_DeletedFragment"
        " UNION ALL SELECT 'queued ' || BackupID FROM SLP_PendingImport ORDER BY 1;");
  }

  // True once a run of this catalog waits for a lock the test holds.
  bool SomeoneWaits() {
    return root_.Sql(
               "SELECT count(*) FROM pg_stat_activity"
               " WHERE datname = current_database() AND wait_event_type = 'Lock';") != "0\n";
  }

  // Runs each writing operation, whose write fails with the data-access
  // status `dal`, the catalog library's `emm` or the import manager's
  // `imp`, and finds `reason` in parentheses on a severity-16 line of the
  // run's debug log.
  void ExpectEachFails(const std::string& reason, int dal, int emm, int imp) {
    const std::string emmStatus = std::to_string(emm) + "\n";
    const struct {
      std::vector<std::string> args;
      e2e::Result result;
    } cases[] = {
        {{"remove_repl", "-target_machine", "tgt1"},
         {"", "error executing SQL query, status = " + std::to_string(dal) + "\n", 130}},
        {{"redo", "-backupid", "client1_1000", "-slpindex", "2"},
         {"", "cannot update image copy state, status = " + emmStatus, 0}},
        {{"remove_exp", "-nowarn"},
         {"", "error removing all entries in deleted fragment list, status= " + emmStatus, 0}},
        {{"-test_import_frags", root_.path() + "/frags.txt"},
         {"", e2e::GoldenFilled("add_import_frags/refused.err", {{"STATUS", std::to_string(imp)}}),
          0}},
    };
    for (const auto& c : cases) {
      SCOPED_TRACE(reason + ": " + c.args[0]);
      root_.Remove("logs/admin");
      root_.WriteFile("logs/admin/.keep", "");
      EXPECT_EQ(e2e::SecondsHidden(root_.Run(c.args)), c.result);
      EXPECT_THAT(root_.DebugLogMessages(),
                  ::testing::Contains(::testing::AllOf(::testing::StartsWith("<16> "),
                                                       ::testing::HasSubstr("(" + reason + ")"))));
    }
  }
};

TEST_F(CatalogWriteFaultsTest, EachOperationKeepsItsStatusAndLogsWhy) {
  // A failed write leaves the catalog as it was.
  const std::string before = State();
  {
    e2e::CatalogLock writer(root_);
    ExpectEachFails("locked", 2007005, 2007061, 2008004);
  }
  EXPECT_EQ(State(), before);
  if (e2e::OnPostgres()) GTEST_SKIP() << "a write-protected file and a full disk are SQLite's";
  // Write-protected with the immutable flag, as the tests run as root.
  const bool immutable = system(("chattr +i " + root_.catalog() + " 2>/dev/null").c_str()) == 0;
  if (immutable) {
    ExpectEachFails("read-only", 2007009, 2007062, 2008005);
    system(("chattr -i " + root_.catalog()).c_str());
    EXPECT_EQ(State(), before);
  }
  e2e::FullCatalogDisk full(root_);
  if (full.ok()) ExpectEachFails("disk full", 2007017, 2007062, 2008005);
  if (!immutable || !full.ok()) GTEST_SKIP() << "needs chattr and the right to mount";
}

// Each change is stopped by a row lock the test holds, killed while it
// waits, and then run again to the end.
TEST_F(CatalogWriteFaultsTest, AChangeKilledHalfwayLeavesNothing) {
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
TEST_F(CatalogWriteFaultsTest, QueuedImagesStayQueued) {
  root_.SetConfig("TEST_IMPORT_PAUSE_MS", "60000");
  std::string file, reported, queued;
  for (int i = 1; i <= 1500; ++i) {
    const std::string name = "i" + std::to_string(i);
    file += "STS_IMAGE = " + name + "\n";
    if (i > 1000) continue;
    reported += "Import Manager returned: 0 for fragment name " + name +
                ". Total images = " + std::to_string(i) + "\n";
    queued += name + "\n";
  }
  root_.WriteFile("frags.txt", file);
  e2e::RunOptions options;
  options.killWhen = [this] { return root_.DebugLog().find("pausing") != std::string::npos; };
  EXPECT_EQ(root_.Run({"-test_import_frags", root_.path() + "/frags.txt"}, "", options),
            (e2e::Result{"", reported, 137}));
  EXPECT_EQ(root_.Sql("SELECT BackupID FROM SLP_PendingImport ORDER BY PendingImportKey;"), queued);
}

}  // namespace
