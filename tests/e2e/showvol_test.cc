// End-to-end tests of `cyclectl showvol`: space by classification and expiry,
// the heading per volume selection, an empty volume and a damaged catalog.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"

namespace {

class ShowvolTest : public e2e::CatalogTest {
 protected:
  ShowvolTest() : CatalogTest("showvol") {}
  void SetUp() override {
    AddDataClass("g-id", "Gold", 1);
    AddDataClass("s-id", "Silver", 2);
    AddDataClass("b-id", "Bronze", 3);
  }
  std::string Image(const std::string& client, const std::string& classId) {
    return AddImage(client, 1000, "ClassificationID = '" + classId + "'");
  }
  std::string Copy(const std::string& image, int number, long tryToKeep) {
    return AddCopy(image, number, "TryToKeepTime = " + std::to_string(tryToKeep));
  }
  // A fragment in `state` of `size` bytes on volume `mediaId` of media
  // server `mediaServer` and storage server ss1.
  void Fragment(const std::string& copy, int number, int state, long size,
                const std::string& mediaId = "vol1", const std::string& mediaServer = "ms1") {
    AddFragment(copy, number,
                "FragmentState = " + std::to_string(state) +
                    ", FragmentSize = " + std::to_string(size) + ", MediaID = '" + mediaId +
                    "', MediaServer = '" + mediaServer + "', StorageServer = 'ss1'");
  }
};

TEST_F(ShowvolTest, SpaceByClassificationAndExpiry) {
  const long future = 4000000000, past = 1000;
  std::string gold = Image("gold", "g-id");
  std::string copy = Copy(gold, 1, future);
  Fragment(copy, 1, 1, 100);
  Fragment(copy, 2, 3, 200);  // expired, still to be kept
  Fragment(copy, 3, 2, 400);  // TO_BE_DELETED: in no column
  // Another volume's fragment of a selected image counts too.
  Fragment(Copy(gold, 2, 0), 1, 3, 20, "vol2");
  Fragment(Copy(Image("silver", "s-id"), 1, past), 1, 3, 50);
  Fragment(Copy(Image("other", "unknown-id"), 1, past), 1, 1, 7);
  Fragment(Copy(Image("elsewhere", "g-id"), 1, past), 1, 1, 1000, "vol9");

  EXPECT_EQ(Run({"-mediaid", "vol1", "-mediaserver", "ms1", "-storageserver", "ss1"}),
            (e2e::Result{e2e::Golden("showvol/classes.txt"), "", 0}));
}

TEST_F(ShowvolTest, EmptyVolumeThenOnlyUnclassifiedDataOnAMediaServerThenFailures) {
  EXPECT_EQ(Run({"-mediaid", "vol1"}), (e2e::Result{e2e::Golden("showvol/empty.txt"), "", 0}));
  Fragment(Copy(Image("a", ""), 1, 0), 1, 1, 7, "vol5", "ms9");
  Fragment(Copy(Image("b", "g-id"), 1, 0), 1, 1, 1000);
  EXPECT_EQ(Run({"-mediaserver", "ms9"}),
            (e2e::Result{e2e::Golden("showvol/unclassified.txt"), "", 0}));
  root_.Sql("DROP TABLE DBM_ImageFragment;");
  EXPECT_EQ(Run({"-mediaid", "vol1"}),
            (e2e::Result{"", "Error querying image list, status= 2007062\n", 0}));
  root_.Sql("DROP TABLE EMM_DataClassification;");
  EXPECT_EQ(Run({"-mediaid", "vol1"}),
            (e2e::Result{"", "Error retrieving data classification, status= 2007062\n", 0}));
}

}  // namespace
