// End-to-end tests of `cyclectl remove_repl` (and the listing of the
// replication records): which target records a removal takes, its messages
// and statuses, texts that reach the catalog only as values, and a catalog
// that another process holds.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/catalog_lock.h"
#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"

namespace {

class RemoveReplicasTest : public e2e::CatalogTest {
 protected:
  // Targets: tgt1 holds vol1 twice and vol2 once, tgt2 vol1 once; media1
  // is a media server whose key a record names as well.
  void SetUp() override {
    const std::string copy = AddCopy(AddImage("client1", 1000), 2);
    const std::string tgt1 = AddMachine("tgt1", 12);
    const std::string tgt2 = AddMachine("tgt2", 12);
    const std::string media1 = AddMachine("media1", 1);
    for (const auto& [machine, volume] : std::vector<std::pair<std::string, std::string>>{
             {tgt1, "vol1"}, {tgt1, "vol1"}, {tgt1, "vol2"}, {tgt2, "vol1"}, {media1, "vol1"}}) {
      Insert("DBM_ImageReplicationDestination", "ReplicationDestinationKey",
             "ImageCopyKey, TargetMachineKey, VolumeInfo, RemoteMasterServer",
             copy + ", " + machine + ", '" + volume + "', 'remote1'", "");
    }
  }

  e2e::Result Remove(std::vector<std::string> args) {
    args.insert(args.begin(), "remove_repl");
    return root_.Run(args);
  }

  // The records left, as "<machine> <volume>" lines in key order.
  std::string Left() {
    return root_.Sql(
        "SELECT m.MachinePrimaryName || ' ' || r.VolumeInfo FROM DBM_ImageReplicationDestination r"
        " JOIN EMM_Machine m ON m.MachineKey = r.TargetMachineKey"
        " ORDER BY r.ReplicationDestinationKey;");
  }

};

const char kAll[] = "tgt1 vol1\ntgt1 vol1\ntgt1 vol2\ntgt2 vol1\nmedia1 vol1\n";

TEST_F(RemoveReplicasTest, OneVolumeThenTheWholeMachine) {
  EXPECT_EQ(Remove({"-target_machine", "tgt1", "-target_info", "vol1"}),
            (e2e::Result{"2 replication records for target machine 'tgt1' with target info "
                         "'vol1' deleted\n",
                         "", 0}));
  EXPECT_EQ("tgt1 vol2\ntgt2 vol1\nmedia1 vol1\n", Left());
  EXPECT_EQ(Remove({"-target_machine", "tgt1", "-target_info", "vol1"}),
            (e2e::Result{"No replication records for target machine 'tgt1' with target info "
                         "'vol1' found\n",
                         "", 0}));
  EXPECT_EQ(Remove({"-target_machine", "tgt1"}),
            (e2e::Result{"1 replication records for target machine 'tgt1' deleted\n", "", 0}));
  EXPECT_EQ(Remove({"-target_machine", "tgt1"}),
            (e2e::Result{"No replication records for target machine 'tgt1' found\n", "", 0}));
  EXPECT_EQ("tgt2 vol1\nmedia1 vol1\n", Left());
}

TEST_F(RemoveReplicasTest, MachinesThatDoNotCount) {
  EXPECT_EQ(Remove({}), (e2e::Result{"", "target machine value must be provided\n", 152}));
  EXPECT_EQ(Remove({"-target_info", "vol1"}),
            (e2e::Result{"", "target machine value must be provided\n", 152}));
  // Exact names of replication targets only; texts are values, never SQL.
  for (const std::string name : {"TGT1", "tgt", "media1", "x' OR '1'='1"}) {
    EXPECT_EQ(Remove({"-target_machine", name}),
              (e2e::Result{"", "No target machine with name '" + name + "' located.\n", 48}));
  }
  EXPECT_EQ(Remove({"-target_machine", "tgt2", "-target_info", "x' OR '1'='1"}).out,
            "No replication records for target machine 'tgt2' with target info 'x' OR '1'='1' "
            "found\n");
  EXPECT_EQ(kAll, Left());
}

TEST_F(RemoveReplicasTest, CatalogHeldByAnotherProcess) {
  root_.SetConfig("CATALOG_BUSY_TIMEOUT", "200");
  {
    // Another writer: the removal waits for it, gives up and changes nothing.
    e2e::CatalogLock writer(root_, "BEGIN IMMEDIATE");
    EXPECT_EQ(Remove({"-target_machine", "tgt1"}),
              (e2e::Result{"", "error executing SQL query, status = 2007005\n", 130}));
  }
  {
    // A reader in the middle of its work: the removal cannot take the
    // records from under it.
    e2e::CatalogLock reader(root_,
                            "BEGIN; SELECT count(*) FROM DBM_ImageReplicationDestination");
    EXPECT_EQ(130, Remove({"-target_machine", "tgt2"}).status);
  }
  EXPECT_EQ(kAll, Left());
  // Without a catalog nothing can be looked up.
  root_.Remove("db/catalog.db");
  EXPECT_EQ(Remove({"-target_machine", "tgt1"}),
            (e2e::Result{"", "cannot connect to database, status = 2007002\n", 25}));
}

}  // namespace
