// End-to-end tests of `cyclectl listwg`: work groups with three, one and no
// target copies in every output form, the selection of one key, and the
// statuses of a missing catalog, a catalog without work-group table, and a
// fetch that fails part way.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"

namespace {

const char kGroupColumns[] =
    "WorkGroupKey, WorkGroupID, HasSingleSLPImages, SLPName, SLPVersionNumber, "
    "PrimaryCopyNumber, IsFrozen, SrcCopyNumber, SrcMediaType, SrcMediaSubType, SrcAltReadHost, "
    "SrcServerType, SrcStorageServer, SrcParentID, SrcMediaId, IsTargetPreserveMPX, "
    "IsTargetMirror, TargetPriority, TargetNumberCopies, PolicyName, SchedName, SchedType, "
    "WindowCloseOptions, TargetMasterServer, TargetStorageServer, TargetVolume, TargetImportSLP, "
    "ImageBlockSize, CreatedDateTime";
const char kCopyColumns[] =
    "WorkGroupKey, CopyNumber, SLPIndex, Flags, RetentionLevel, Residence, VolumePool, "
    "ServerGroup, DestTag";

bool EndsWith(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

class ListWgTest : public e2e::CatalogTest {
 protected:
  ListWgTest() : CatalogTest("listwg") {}
  void SetUp() override {
    // Group 7: every field its own value, three target copies; group 9: kind
    // 15 (past the table), one target copy; group 12: kind 14, none.
    root_.Sql(std::string("INSERT INTO SLP_WorkGroup (") + kGroupColumns +
              ") VALUES "
              "(7, 1, 1, 'slp_gold', 3, 1, 1, 2, 0, 6, 'alt1', 'PoolDisk', 'sts1', 'parent1', "
              "'media1', 1, 1, 50, 2, 'pol1', 'sched1', 4, 'CANCEL', 'tm1', 'tsts1', 'tvol1', "
              "'imp_slp', 262144, 1700000000), "
              "(9, 15, 0, 'slp_b', 1, 1, 0, 1, 2, 0, '', '', '', '', '', 0, 0, 0, 1, '', '', 0, "
              "'', '', '', '', '', 0, 1700000001), "
              "(12, 14, 0, '', 0, 0, 0, 0, 0, 0, '', '', '', '', '', 0, 0, 0, 0, '', '', 0, "
              "'', '', '', '', '', 0, 0);" +
              "INSERT INTO SLP_TargetCopyInfo (" + kCopyColumns +
              ") VALUES "
              "(7, 2, 2, 4294967295, 11, 'stu_a', 'pool_a', 'grp_a', 'tag_a'), "
              "(7, 3, 3, 0, 12, 'stu_b', '', '', ''), "
              "(7, 4, 4, 1, 13, 'stu_c', '', '', ''), "
              "(9, -1, 1, 8, 0, 'stu_d', 'pool_d', '', '');");
  }
};

const char kShortAll[] =
    "V7.6.0 WG 7 1 pol1 sched1 4 1 slp_gold 3 1 1 2 media1 0 6 alt1 PoolDisk sts1 parent1 1 1 "
    "50 2 CANCEL tm1 tsts1 tvol1 imp_slp 1700000000 262144\n"
    "V7.6.0 TCI 2 2 4294967295 11 stu_a pool_a grp_a tag_a \n"
    "V7.6.0 TCI 3 3 0 12 stu_b *NULL* *NULL* *NULL* \n"
    "V7.6.0 TCI 4 4 1 13 stu_c *NULL* *NULL* *NULL* \n"
    "V7.6.0 WG 9 15 *NULL* *NULL* 0 0 slp_b 1 1 0 1 *NULL* 2 0 *NULL* *NULL* *NULL* *NULL* 0 0 "
    "0 1 *NULL* *NULL* *NULL* *NULL* *NULL* 1700000001 0\n"
    "V7.6.0 TCI -1 1 8 0 stu_d pool_d *NULL* *NULL* \n"
    "V7.6.0 WG 12 14 *NULL* *NULL* 0 0 *NULL* 0 0 0 0 *NULL* 0 0 *NULL* *NULL* *NULL* *NULL* 0 "
    "0 0 0 *NULL* *NULL* *NULL* *NULL* *NULL* 0 0\n"
    "V7.6.0 TCI 0 0 0 0 *NULL* *NULL* *NULL* *NULL* \n";

TEST_F(ListWgTest, ShortAndBriefFormsGroupTargetCopiesUnderTheirWorkGroup) {
  EXPECT_EQ(Run({}), (e2e::Result{kShortAll, "", 0}));
  EXPECT_EQ(Run({"-l"}), (e2e::Result{kShortAll, "", 0}));
  EXPECT_EQ(Run({"-b"}), (e2e::Result{"7\n9\n12\n", "", 0}));
}

TEST_F(ListWgTest, UserFormLabelsEveryField) {
  EXPECT_EQ(Run({"-U", "-key", "7"}), (e2e::Result{e2e::Golden("listwg-user.txt"), "", 0}));
}

TEST_F(ListWgTest, JsonFormsWriteOneDocumentPerWorkGroup) {
  const std::string group9 =
      R"({"WorkGroupKey":9,"WorkGroupID":15,"WorkGroupIDName":"NULL","Policy":"",)"
      R"("Schedule":"","ScheduleType":0,"HasSingleSLP":0,"SLPName":"slp_b","VersionNumber":1,)"
      R"("PrimaryCopyNumber":1,"is Frozen":0,"SourceCopyNumber":1,"SourceMediaID":"",)"
      R"("SourceMediaType":2,"SourceMediaSubType":0,"AlternateReadHost":"","ServerType":"",)"
      R"("SourceStorageServer":"","ParentID":"","TargetPreserveMPX":0,"TargetMirror":0,)"
      R"("TargetPriority":0,"TargetNumberCopies":1,"WindowCloseOption":"",)"
      R"("TargetMasterServer":"","TargetStorageServer":"","TargetVolume":"",)"
      R"("TargetImportSLP":"","CreatedDateTime":1700000001,"TargetCopyInfo":[)"
      R"({"CopyNumber":-1,"SLPIndex":1,"Flags":8,"RetentionLevel":0,"Residence":"stu_d",)"
      R"("VolumePool":"pool_d","ServerGroup":"","DestinationTag":""}]})"
      "\n";
  EXPECT_EQ(Run({"-json_compact", "-key", "9"}), (e2e::Result{group9, "", 0}));

  e2e::Result all = Run({"-json_compact"});
  EXPECT_EQ(all.status, 0);
  ASSERT_EQ(std::count(all.out.begin(), all.out.end(), '\n'), 3) << all.out;
  const std::string first = all.out.substr(0, all.out.find('\n'));
  EXPECT_EQ(first.find(R"({"WorkGroupKey":7,"WorkGroupID":1,"WorkGroupIDName":"DISK",)"), 0u);
  EXPECT_NE(first.find(R"("Flags":4294967295)"), std::string::npos);
  EXPECT_EQ(std::count(first.begin(), first.end(), '{'), 4);  // the group and 3 copies
  EXPECT_NE(all.out.find("\n" + group9), std::string::npos);
  EXPECT_PRED2(EndsWith, all.out,
            R"("TargetCopyInfo":[{"CopyNumber":0,"SLPIndex":0,"Flags":0,"RetentionLevel":0,)"
            R"("Residence":"","VolumePool":"","ServerGroup":"","DestinationTag":""}]})"
            "\n");

  e2e::Result indented = Run({"-json", "-key", "9"});
  EXPECT_EQ(indented.out.find("{\n  \"WorkGroupKey\": 9,\n  \"WorkGroupID\": 15,\n"), 0u);
  EXPECT_NE(indented.out.find("\n  \"TargetCopyInfo\": [\n    {\n      \"CopyNumber\": -1,\n"),
            std::string::npos);
  EXPECT_PRED2(EndsWith, indented.out, "\n    }\n  ]\n}\n");
}

TEST_F(ListWgTest, NothingFoundIsNoFailure) {
  EXPECT_EQ(Run({"-key", "8"}), (e2e::Result{"", "No work groups found\n", 0}));
  root_.Sql("DELETE FROM SLP_TargetCopyInfo; DELETE FROM SLP_WorkGroup;");
  EXPECT_EQ(Run({"-json"}), (e2e::Result{"", "No work groups found\n", 0}));
}

TEST_F(ListWgTest, CatalogFailuresEndWithTheirStatus) {
  // A kind that does not fit its field fails the fetch of group 9's row:
  // group 7 is out, group 9 never appears.
  if (e2e::OnPostgres()) root_.Sql("ALTER TABLE SLP_WorkGroup ALTER WorkGroupID TYPE bigint;");
  root_.Sql("UPDATE SLP_WorkGroup SET WorkGroupID = 99999999999 WHERE WorkGroupKey = 9;");
  const char kFetchError[] = "error fetching data from database, status = 2007010\n";
  e2e::Result brief = Run({"-b"});
  EXPECT_EQ(brief, (e2e::Result{"7\n", kFetchError, 130}));
  // In JSON group 7 is finished only when group 9 starts, so nothing is out.
  EXPECT_EQ(Run({"-json"}), (e2e::Result{"", kFetchError, 130}));

  root_.Sql("DROP TABLE SLP_WorkGroup;");
  EXPECT_EQ(Run({}),
            (e2e::Result{"", "error executing SQL query, status = 2007006\n", 130}));
  EXPECT_NE(root_.DebugLog().find("FROM SLP_MAIN.SLP_WorkGroup AS Wg"), std::string::npos);

  root_.RemoveCatalog();
  EXPECT_EQ(Run({}),
            (e2e::Result{"", "cannot connect to database, status = 2007002\n", 25}));
}

}  // namespace
