// End-to-end tests of `cyclectl diskspaceinfo` against the test service as
// the disk service manager: which fragments count and under which server
// type, one lookup per volume, the -stype line, the 100-image batches, and a
// lookup that fails part way through the report.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/catalog_test.h"
#include "tests/e2e/test_data.h"
#include "tools/cyclesvc-test/test_service.h"

namespace {

// Legacy lookups answer by media id: "vol_b" (BasicDisk) is disk media id
// "dm_b" on a PoolDisk volume; "vol_n" (NearStore) is "dm_n" on a SnapStore
// volume; "vol_x" has no disk media id property; anything else is unknown.
// Media-id lookups answer "dm_dyn" with server type Alpha, "dm_zed" with
// Zed, anything else with no volume.
const char kScenario[] = "diskspaceinfo/scenario.json";

std::string Legacy(const std::string& subtype, const std::string& mediaId) {
  return "DiskServiceMgr.getDiskVolumeInfoByLegacyInfo(\"master1\", \"sts1\", \"" + subtype +
         "\", \"" + mediaId + "\")";
}
std::string ByMediaId(const std::string& mediaId) {
  return "DiskServiceMgr.getDiskVolumeInfoByMediaId(\"" + mediaId + "\")";
}

class DiskSpaceInfoTest : public e2e::CatalogTest {
 protected:
  DiskSpaceInfoTest() : CatalogTest("diskspaceinfo") {}
  void SetUp() override { root_.SetConfig("EMM_SERVER", "127.0.0.1"); }

  // A fragment of `size` bytes in a copy of its own image.
  void AddFragment(int mediaType, int subtype, const std::string& mediaId, long size) {
    CatalogTest::AddFragment(
        AddCopy(AddImage("client", 1700000000 + ++images_), 1), 1,
        "MediaServer = 'ms1', StorageServer = 'sts1', MediaType = " + std::to_string(mediaType) +
            ", MediaSubType = " + std::to_string(subtype) + ", MediaID = '" + mediaId +
            "', FragmentSize = " + std::to_string(size));
  }

  int images_ = 0;
};

TEST_F(DiskSpaceInfoTest, TotalsByServerTypeWithOneLookupPerVolume) {
  AddFragment(0, 6, "dm_zed", 1);  // dynamic: its own media id
  AddFragment(0, 1, "vol_b", 10);  // legacy BasicDisk -> dm_b, PoolDisk
  AddFragment(0, 6, "dm_dyn", 100);
  AddFragment(0, 1, "vol_b", 1000);           // the same volume: no lookup
  AddFragment(0, 2, "vol_n", 10000);          // NearStore -> dm_n, SnapStore
  AddFragment(0, 6, "dm_b", 100000);          // known from the legacy answer
  AddFragment(0, 2, "vol_missing", 1000000);  // not found: Unknown, asked each time
  AddFragment(0, 2, "vol_missing", 10000000);
  AddFragment(0, 1, "vol_x", 100000000);     // found without a disk media id
  AddFragment(0, 6, "dm_gone", 1000000000);  // dynamic, not found: Unknown
  AddFragment(0, 6, "dm_gone", 4000000000000);
  AddFragment(2, 6, "dm_dyn", 7);      // not a disk fragment
  AddFragment(0, 6, "", 20000000000);  // no media id: Unknown without a call
  root_.Sql("UPDATE DBM_ImageFragment SET FragmentSize = -5 WHERE MediaID = 'dm_zed';");

  cyclesvc_test::TestService service(root_.path(), e2e::Golden(kScenario));
  ASSERT_TRUE(service.ok()) << service.error();
  EXPECT_EQ(Run(), (e2e::Result{"Disktype: Alpha: 100\nDisktype: PoolDisk: 101010\n"
                                "Disktype: SnapStore: 10000\nDisktype: Unknown: 4021111000000\n"
                                "Disktype: Zed: -5\n",
                                "", 0}));
  EXPECT_EQ(service.Calls(),
            (std::vector<std::string>{
                ByMediaId("dm_zed"), Legacy("BasicDisk", "vol_b"), ByMediaId("dm_dyn"),
                Legacy("NearStore", "vol_n"), Legacy("NearStore", "vol_missing"),
                Legacy("NearStore", "vol_missing"), Legacy("BasicDisk", "vol_x"),
                ByMediaId("dm_gone"), ByMediaId("dm_gone")}));

  EXPECT_EQ(Run({"-stype", "PoolDisk"}),
            (e2e::Result{"Disktype: PoolDisk  TotalUsed: 101010\n", "", 0}));
  EXPECT_EQ(Run({"-stype", "pooldisk"}),
            (e2e::Result{"Disktype: pooldisk  TotalUsed: 0\n", "", 0}));
}

TEST_F(DiskSpaceInfoTest, EveryBatchOfAHundredImagesCounts) {
  // 100 images fill the first batch exactly; the 101st comes in a second.
  e2e::AddImages(root_, 101, 1700000000);
  root_.Sql(
      "INSERT INTO DBM_ImageCopy (ImageKey, CopyNumber) SELECT ImageKey, 1 FROM DBM_Image;"
      "INSERT INTO DBM_ImageFragment (ImageCopyKey, FragmentNumber, MediaType, MediaSubType, "
      "MediaID, FragmentSize) SELECT ImageCopyKey, 1, 0, 6, 'dm_dyn', 1 FROM DBM_ImageCopy;");
  cyclesvc_test::TestService service(root_.path(), e2e::Golden(kScenario));
  ASSERT_TRUE(service.ok()) << service.error();
  EXPECT_EQ(Run(), (e2e::Result{"Disktype: Alpha: 101\n", "", 0}));
  root_.Sql("DELETE FROM DBM_Image WHERE BackupTime = 1700000100;");
  EXPECT_EQ(Run(), (e2e::Result{"Disktype: Alpha: 100\n", "", 0}));
  EXPECT_EQ(service.Calls(), (std::vector<std::string>{ByMediaId("dm_dyn"), ByMediaId("dm_dyn")}));
}

TEST_F(DiskSpaceInfoTest, ALookupThatFailsEndsTheRunWithTheLadder) {
  AddFragment(0, 4, "vol_b", 1);
  AddFragment(0, 6, "dm_dyn", 2);
  AddFragment(0, 6, "dm_zed", 3);
  cyclesvc_test::TestService service(root_.path(),
                                     e2e::Golden("diskspaceinfo/failing-lookup.json"));
  ASSERT_TRUE(service.ok()) << service.error();
  EXPECT_EQ(Run(), (e2e::Result{"",
                                "unrecognized disk subtype encountered\n"
                                "Caught CORBA UserException from dsm: "
                                "IDL:Orvantic/Stashwell/TL/Framework/ServiceException:1.0",
                                255}));
  EXPECT_EQ(service.Calls(), (std::vector<std::string>{Legacy("", "vol_b"), ByMediaId("dm_dyn"),
                                                       ByMediaId("dm_zed")}));

  service.SetScenario(
      R"({"DiskServiceMgr.getDiskVolumeInfoByLegacyInfo": {"raise": {"system": "BAD_PARAM"}}})");
  EXPECT_EQ(Run(), (e2e::Result{"",
                                "unrecognized disk subtype encountered\n"
                                "Caught CORBA SystemException from dsm: "
                                "IDL:omg.org/CORBA/BAD_PARAM:1.0 "
                                "(minor code 0x0, completed NO)\n",
                                255}));
}

TEST_F(DiskSpaceInfoTest, NoDiskServiceOrNoCatalogTable) {
  AddFragment(2, 6, "tape1", 5);  // nothing to look up
  EXPECT_EQ(Run(), (e2e::Result{"", "", 0}));
  AddFragment(0, 6, "dm_dyn", 5);
  EXPECT_EQ(Run(), (e2e::Result{"", "cannot connect to dsm\n", 255}));
  root_.Sql("DROP TABLE DBM_ImageFragment;");
  EXPECT_EQ(Run(), (e2e::Result{"", "Error querying image list, status= 2007062\n", 0}));
}

}  // namespace
