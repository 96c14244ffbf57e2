// End-to-end tests of `cyclectl repllist` and `cyclectl remove_repl`.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/catalog_lock.h"
#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"

namespace {

class ReplicationRecordsTest : public e2e::CatalogTest {
 protected:
  ReplicationRecordsTest() : CatalogTest("remove_repl") {}
  // client1_1000 with records for tgt1 (vol1 twice, vol2), tgt2 and media1.
  void SetUp() override { root_.Sql(e2e::Golden("replication_records/catalog.txt")); }

  // The short-form line of the record `kind` (I, C) with `key` as the
  // backup id (and copy number) that `list` prints.
  std::string ListLine(const std::string& kind, const std::string& key) {
    const std::string out = root_.Run({"list", "-rt", "IC"}).out;
    const size_t at = out.find("V7.6.0 " + kind + " master1 " + key + " ");
    return at == std::string::npos ? "?" : out.substr(at, out.find('\n', at) + 1 - at);
  }

  // The records left, as "<machine> <volume>" lines in key order.
  std::string Left() {
    return root_.Sql(
        "SELECT m.MachinePrimaryName || ' ' || r.VolumeInfo FROM DBM_ImageReplicationDestination r"
        " JOIN EMM_Machine m ON m.MachineKey = r.TargetMachineKey"
        " ORDER BY r.ReplicationDestinationKey;");
  }
};

TEST_F(ReplicationRecordsTest, ListingFormsNothingToListAndAnotherWriter) {
  const std::string rt = "V7.6.0 RT master1 client1_1000 2 ";
  EXPECT_EQ(root_.Run({"repllist"}),
            (e2e::Result{ListLine("I", "client1_1000") + ListLine("C", "client1_1000 2") + rt +
                             "tgt1 vol1 remote1\n" + rt + "tgt1 vol1 remote1\n" + rt +
                             "tgt1 vol2 remote1\n" + rt + "tgt2 vol1 remote1\n" + rt +
                             "media1 vol1 *NULL*\n",
                         "", 0}));
  EXPECT_EQ(root_.Run({"repllist", "-U", "-sincetime", "1000"}),
            (e2e::Result{e2e::Golden("replication_records/user.txt"), "", 0}));
  const e2e::Result none{"", "No replica records found\n", 0};
  EXPECT_EQ(root_.Run({"repllist", "-sincetime", "1001"}), none);
  // A removal not yet committed by another process: the records as they were.
  const std::string before = root_.Run({"repllist"}).out;
  e2e::CatalogLock writer(root_, "DELETE FROM DBM_ImageReplicationDestination");
  EXPECT_EQ(root_.Run({"repllist"}), (e2e::Result{before, "", 0}));
  writer.Commit();
  EXPECT_EQ(root_.Run({"repllist"}), none);
  root_.Sql("DROP TABLE DBM_ImageReplicationDestination;");
  EXPECT_EQ(root_.Run({"repllist"}),
            (e2e::Result{"", "Error querying image replica list, status=  2007062\n", 0}));
}

TEST_F(ReplicationRecordsTest, Removals) {
  EXPECT_EQ(Run({}), (e2e::Result{"", "target machine value must be provided\n", 152}));
  // Exact names of replication targets only; texts are values, never SQL.
  for (const std::string name : {"TGT1", "media1", "x' OR '1'='1"}) {
    EXPECT_EQ(Run({"-target_machine", name}),
              (e2e::Result{"", "No target machine with name '" + name + "' located.\n", 48}));
  }
  const std::string tgt1 = "replication records for target machine 'tgt1'";
  const std::string vol1 = tgt1 + " with target info 'vol1'";
  EXPECT_EQ(Run({"-target_machine", "tgt1", "-target_info", "vol1"}),
            (e2e::Result{"2 " + vol1 + " deleted\n", "", 0}));
  EXPECT_EQ(Run({"-target_machine", "tgt1", "-target_info", "vol1"}),
            (e2e::Result{"No " + vol1 + " found\n", "", 0}));
  EXPECT_EQ(Run({"-target_machine", "tgt1"}), (e2e::Result{"1 " + tgt1 + " deleted\n", "", 0}));
  EXPECT_EQ(Run({"-target_machine", "tgt1"}), (e2e::Result{"No " + tgt1 + " found\n", "", 0}));
  EXPECT_EQ("tgt2 vol1\nmedia1 vol1\n", Left());
  // Without a catalog nothing can be looked up.
  root_.RemoveCatalog();
  EXPECT_EQ(Run({"-target_machine", "tgt1"}),
            (e2e::Result{"", "cannot connect to database, status = 2007002\n", 25}));
}

}  // namespace
