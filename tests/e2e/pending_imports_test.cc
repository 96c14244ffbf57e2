// End-to-end tests of `cyclectl pendimplist`: pending images printed as list
// prints them, cancelled ones left out, the two messages, and batching.
#include <gtest/gtest.h>

#include <string>

#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"
#include "tests/e2e/test_data.h"

namespace {

class PendingImportsTest : public e2e::CatalogTest {
 protected:
  PendingImportsTest() : CatalogTest("pendimplist") {}
  // An image of master1 that came from `origin` and is not imported yet.
  std::string AddPendingImage(const std::string& client, long backupTime,
                              const std::string& origin = "remote1") {
    return AddImage(client, backupTime,
                    "OriginMasterServer = '" + origin + "', StorageServiceName = 'slp_import'");
  }
  // What list prints for one image with its copies and fragments.
  std::string Listed(const std::string& backupId, const std::string& form = "-l") {
    e2e::Result r = root_.Run({"list", form, "-rt", "ICF", "-backupid", backupId});
    EXPECT_EQ(r.err, "");
    return r.out;
  }
};

TEST_F(PendingImportsTest, PendingImagesWithTheirCopiesAndFragments) {
  EXPECT_EQ(Run(), (e2e::Result{"", "No pending import records found\n", 0}));

  // Imported already, or backed up here: not pending.
  AddImage("imported", 50, "OriginMasterServer = 'remote1', ImportFromReplicaTime = 60");
  AddImage("local", 70, "OriginMasterServer = '', ImportFromReplicaTime = 0");
  const std::string first = AddPendingImage("alpha", 100);
  const std::string c1 = AddCopy(first, 1, "CopyState = 14");
  AddFragment(c1, 1);
  AddFragment(c1, 2);
  AddFragment(AddCopy(first, 2, "CopyState = 6"), 1);
  // Cancelled first copy: left out with everything under it.
  const std::string cancelled = AddPendingImage("bravo", 200);
  AddFragment(AddCopy(cancelled, 1, "CopyState = 6"), 1);
  AddCopy(cancelled, 2, "CopyState = 14");
  AddPendingImage("charlie", 300, "remote2");  // no copy at all

  EXPECT_EQ(Run(), (e2e::Result{Listed("alpha_100") + Listed("charlie_300"), "", 0}));
  EXPECT_EQ(
      Run({"-U"}),
      (e2e::Result{Listed("alpha_100", "-U") + Listed("charlie_300", "-U"),
                   "option '-U'  is not valid for operation 'pendimplist' and is ignored\n", 0}));

  root_.Sql("DROP TABLE DBM_ImageFragment;");
  EXPECT_EQ(Run(), (e2e::Result{"", "Error querying image replica list, status=  2007062\n", 0}));
}

TEST_F(PendingImportsTest, ManyBatches) {
  // 250 images: three fetches of up to 100, every image once, in order.
  e2e::AddImages(root_, 250, 1000, "OriginMasterServer = 'remote1'");
  EXPECT_EQ(Run(), (e2e::Result{root_.Run({"list", "-rt", "I"}).out, "", 0}));
}

}  // namespace
