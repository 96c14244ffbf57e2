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

const char kNone[] = "No work groups found\n";

class ListWgTest : public e2e::CatalogTest {
 protected:
  ListWgTest() : CatalogTest("listwg") {}
  // Work groups 7, 9 (a kind past the names' table) and 12 (no target copy).
  void SetUp() override { root_.Sql(e2e::Golden("listwg/catalog.txt")); }
};

TEST_F(ListWgTest, EveryFormGroupsTargetCopiesUnderTheirWorkGroup) {
  const struct {
    std::vector<std::string> args;
    std::string out, err;
  } cases[] = {
      {{}, e2e::Golden("listwg/short.txt"), ""},
      {{"-l"}, e2e::Golden("listwg/short.txt"), ""},
      {{"-b"}, "7\n9\n12\n", ""},
      {{"-U", "-key", "7"}, e2e::Golden("listwg/user.txt"), ""},
      // JSON: one document per work group, its target copies inside it.
      {{"-json_compact"}, e2e::Golden("listwg/json-compact.txt"), ""},
      {{"-json_compact", "-key", "9"}, e2e::Golden("listwg/json-compact-key-9.txt"), ""},
      {{"-json", "-key", "9"}, e2e::Golden("listwg/json-key-9.txt"), ""},
      {{"-key", "8"}, "", kNone},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Run(c.args), (e2e::Result{c.out, c.err, 0})) << testing::PrintToString(c.args);
  root_.Sql("DELETE FROM SLP_TargetCopyInfo; DELETE FROM SLP_WorkGroup;");
  EXPECT_EQ(Run({"-json"}), (e2e::Result{"", kNone, 0}));
}

TEST_F(ListWgTest, CatalogFailuresEndWithTheirStatus) {
  // A kind that does not fit its field fails the fetch of group 9's row:
  // group 7 is out, group 9 never appears.
  if (e2e::OnPostgres()) root_.Sql("ALTER TABLE SLP_WorkGroup ALTER WorkGroupID TYPE bigint;");
  root_.Sql("UPDATE SLP_WorkGroup SET WorkGroupID = 99999999999 WHERE WorkGroupKey = 9;");
  const char kFetchError[] = "error fetching data from database, status = 2007010\n";
  EXPECT_EQ(Run({"-b"}), (e2e::Result{"7\n", kFetchError, 130}));
  // In JSON group 7 is finished only when group 9 starts, so nothing is out.
  EXPECT_EQ(Run({"-json"}), (e2e::Result{"", kFetchError, 130}));

  root_.Sql("DROP TABLE SLP_WorkGroup;");
  EXPECT_EQ(Run({}), (e2e::Result{"", "error executing SQL query, status = 2007006\n", 130}));
  EXPECT_NE(root_.DebugLog().find("FROM SLP_MAIN.SLP_WorkGroup AS Wg"), std::string::npos);

  root_.RemoveCatalog();
  EXPECT_EQ(Run({}), (e2e::Result{"", "cannot connect to database, status = 2007002\n", 25}));
}

}  // namespace
