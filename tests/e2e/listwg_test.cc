// End-to-end tests of `cyclectl listwg`: work groups with three, one and no
// target copies in every output form, the selection of one key, and the
// statuses of a missing catalog, a catalog without work-group table, and a
// fetch that fails part way.
#include <gtest/gtest.h>

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

TEST_F(ListWgTest, ShortAndBriefFormsGroupTargetCopiesUnderTheirWorkGroup) {
  const e2e::Result all{e2e::Golden("listwg/short.txt"), "", 0};
  EXPECT_EQ(Run({}), all);
  EXPECT_EQ(Run({"-l"}), all);
  EXPECT_EQ(Run({"-b"}), (e2e::Result{"7\n9\n12\n", "", 0}));
}

TEST_F(ListWgTest, UserFormLabelsEveryField) {
  EXPECT_EQ(Run({"-U", "-key", "7"}), (e2e::Result{e2e::Golden("listwg/user.txt"), "", 0}));
}

// One document per work group, its target copies inside it; kind 15 is past
// the names' table, group 12 has no target copy.
TEST_F(ListWgTest, JsonFormsWriteOneDocumentPerWorkGroup) {
  static const struct {
    std::vector<std::string> args;
    const char* golden;
  } cases[] = {
      {{"-json_compact"}, "listwg/json-compact.txt"},
      {{"-json_compact", "-key", "9"}, "listwg/json-compact-key-9.txt"},
      {{"-json", "-key", "9"}, "listwg/json-key-9.txt"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Run(c.args), (e2e::Result{e2e::Golden(c.golden), "", 0})) << c.golden;
  }
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
  EXPECT_EQ(Run({}), (e2e::Result{"", "error executing SQL query, status = 2007006\n", 130}));
  EXPECT_NE(root_.DebugLog().find("FROM SLP_MAIN.SLP_WorkGroup AS Wg"), std::string::npos);

  root_.RemoveCatalog();
  EXPECT_EQ(Run({}), (e2e::Result{"", "cannot connect to database, status = 2007002\n", 25}));
}

}  // namespace
