// End-to-end tests of `cyclectl redo`: the three changes of a redo read back
// from the catalog, and the failures that leave the catalog as it was.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"

namespace {

class RedoTest : public e2e::CatalogTest {
 protected:
  // client1_1000 (in process, inactive): backup copy (SLP index 1),
  // replication to a remote master from it (2), a duplicate of it (3).
  // client2_2000: a replication whose source index 4 no copy has.
  void SetUp() override {
    const std::string a = AddImage("client1", 1000,
                                   "StorageServiceName = 'slp1', StorageServiceState = 3, "
                                   "StorageServiceIsInactive = 1");
    AddCopy(a, 1, "SLPIndex = 1, CopyType = 0, CopyState = 5");
    AddCopy(a, 2, "SLPIndex = 2, SLPSourceIndex = 1, CopyType = 3, CopyState = 13");
    AddCopy(a, 3, "SLPIndex = 3, SLPSourceIndex = 1, CopyType = 1, CopyState = 5");
    const std::string b = AddImage("client2", 2000, "StorageServiceState = 3");
    AddCopy(b, 1, "SLPIndex = 1, CopyType = 0, CopyState = 5");
    AddCopy(b, 2, "SLPIndex = 2, SLPSourceIndex = 4, CopyType = 3, CopyState = 5");
  }

  e2e::Result Redo(const std::string& backupId, int slpIndex) {
    return root_.Run({"redo", "-backupid", backupId, "-slpindex", std::to_string(slpIndex)});
  }

  // "<backup id> <SLP state> <inactive> <SLP index>=<copy state>" per copy.
  std::string States() {
    return root_.Sql(
        "SELECT i.BackupID || ' ' || i.StorageServiceState || ' ' || i.StorageServiceIsInactive"
        " || ' ' || c.SLPIndex || '=' || c.CopyState"
        " FROM DBM_Image i JOIN DBM_ImageCopy c ON c.ImageKey = i.ImageKey"
        " ORDER BY i.ImageKey, c.SLPIndex;");
  }
};

TEST_F(RedoTest, ResetsTheCopyItsSourceAndTheImageOrChangesNothing) {
  const std::string before = States();
  const struct {
    std::string backupId;
    int slpIndex;
    std::string err;
  } cases[] = {
      {"client9_1000", 2, "No Image found with backup id client9_1000\n"},
      {"client1_1000", 3, "The redo operation is not currently supported for image copy type 1\n"},
      {"client2_2000", 2, "Cannot redo copy 2 as its source copy 4 is missing\n"},
      {"client1_1000", 4, "no copy with SLP index 4 found for backup id client1_1000\n"},
      {"client1_1000", 2147483647,
       "no copy with SLP index 2147483647 found for backup id client1_1000\n"},
      // Values, never SQL.
      {"x' OR '1'='1", 2, "No Image found with backup id x' OR '1'='1\n"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Redo(c.backupId, c.slpIndex), (e2e::Result{"", c.err, 0})) << c.backupId;
  EXPECT_EQ(before, States());
  EXPECT_EQ(Redo("client1_1000", 2), (e2e::Result{"", "", 0}));
  EXPECT_EQ(States(),
            "client1_1000 2 0 1=3\nclient1_1000 2 0 2=1\nclient1_1000 2 0 3=5\n"
            "client2_2000 3 0 1=5\nclient2_2000 3 0 2=5\n");
}

}  // namespace
