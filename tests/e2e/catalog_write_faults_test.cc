// End-to-end tests of the operations that write the catalog when the write
// cannot be made: another process's lock, a write-protected file, a full
// disk. Each operation keeps its message and status, and the debug log says
// why at severity 16.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <regex>
#include <string>
#include <vector>

#include "tests/e2e/catalog_lock.h"
#include "tests/e2e/catalog_test.h"
#include "tests/e2e/full_disk.h"
#include "tests/e2e/harness.h"

namespace {

class CatalogWriteFaultsTest : public e2e::CatalogTest {
 protected:
  // A replication record, a copy to redo, a deleted fragment and a test
  // import file: something for each operation to write.
  void SetUp() override {
    root_.SetConfig("CATALOG_BUSY_TIMEOUT", "200");
    const std::string image =
        AddImage("client1", 1000, "StorageServiceName = 'slp1', StorageServiceState = 3");
    AddCopy(image, 1, "SLPIndex = 1, CopyType = 0, CopyState = 5");
    const std::string replica =
        AddCopy(image, 2, "SLPIndex = 2, SLPSourceIndex = 1, CopyType = 3, CopyState = 13");
    Insert("DBM_ImageReplicationDestination", "ReplicationDestinationKey",
           "ImageCopyKey, TargetMachineKey, VolumeInfo, RemoteMasterServer",
           replica + ", " + AddMachine("tgt1", 12) + ", 'vol1', 'remote1'", "");
    Insert("DBM_DeletedFragment", "DeletedFragmentKey", "MasterServerKey, BackupID",
           "(SELECT MachineKey FROM EMM_Machine WHERE MachinePrimaryName = 'master1'), "
           "'client1_1000'",
           "");
    root_.WriteFile("frags.txt", "STS_IMAGE = img1\n");
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
         {"",
          "Import Manager returned: " + std::to_string(imp) +
              " for fragment name img1. Total images = 1\n"
              "Successfully notified import manager of 0 out of a total of 1 images found\n"
              "Operation took N seconds, total\n",
          0}},
    };
    for (const auto& c : cases) {
      SCOPED_TRACE(reason + ": " + c.args[0]);
      root_.Remove("logs/admin");
      root_.WriteFile("logs/admin/.keep", "");
      e2e::Result r = root_.Run(c.args);
      r.err = std::regex_replace(r.err, std::regex("Operation took [0-9]+ "), "Operation took N ");
      EXPECT_EQ(r, c.result);
      EXPECT_THAT(root_.DebugLogMessages(),
                  ::testing::Contains(::testing::AllOf(::testing::StartsWith("<16> "),
                                                       ::testing::HasSubstr("(" + reason + ")"))));
    }
  }
};

TEST_F(CatalogWriteFaultsTest, EachOperationKeepsItsStatusAndLogsWhy) {
  // What the operations would change; a failed write leaves it as it was.
  const std::string changeable =
      "SELECT (SELECT count(*) FROM DBM_ImageReplicationDestination),"
      " (SELECT count(*) FROM DBM_DeletedFragment), (SELECT sum(CopyState) FROM DBM_ImageCopy),"
      " (SELECT count(*) FROM SLP_PendingImport)";
  const std::string before = root_.Sql(changeable);
  {
    e2e::CatalogLock writer(root_);
    ExpectEachFails("locked", 2007005, 2007061, 2008004);
  }
  EXPECT_EQ(root_.Sql(changeable), before);
  if (e2e::OnPostgres()) GTEST_SKIP() << "a write-protected file and a full disk are SQLite's";
  // Write-protected with the immutable flag, as the tests run as root.
  const std::string file = root_.catalog();
  const bool immutable = system(("chattr +i " + file + " 2>/dev/null").c_str()) == 0;
  if (immutable) {
    ExpectEachFails("read-only", 2007009, 2007062, 2008005);
    system(("chattr -i " + file).c_str());
    EXPECT_EQ(root_.Sql(changeable), before);
  }
  e2e::FullCatalogDisk full(root_);
  if (full.ok()) ExpectEachFails("disk full", 2007017, 2007062, 2008005);
  if (!immutable || !full.ok()) GTEST_SKIP() << "needs chattr and the right to mount";
}

}  // namespace
