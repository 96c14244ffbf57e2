// End-to-end tests of `cyclectl list_import_notify`: both lists in each form,
// the filters, the empty and JSON cases, and catalog faults.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"
#include "tests/e2e/test_data.h"

namespace {

const char kNoInput[] = "No input notification records found\n";
const char kNoOutput[] = "No output notification records found\n";

class ListImportNotifyTest : public e2e::CatalogTest {
 protected:
  ListImportNotifyTest() : CatalogTest("list_import_notify") {}
  void SetUp() override {
    root_.Sql(e2e::GoldenFilled("list_import_notify/catalog.txt",
                                {{"ID_A", e2e::BytesLiteral("00112233445566778899aabbccddeeff")},
                                 {"ID_B", e2e::BytesLiteral("ffeeddccbbaa99887766554433221100")}}));
  }
};

TEST_F(ListImportNotifyTest, FormsAndFiltersApplyToBothLists) {
  const std::string none = std::string(kNoInput) + kNoOutput;
  const struct {
    std::vector<std::string> args;
    std::string out;  // brief: incoming keys, then outgoing keys
    std::string err;
  } cases[] = {
      {{}, e2e::Golden("list_import_notify/short.txt"), ""},
      // Numbered per list; empty texts in the user form.
      {{"-U"}, e2e::Golden("list_import_notify/user.txt"), ""},
      {{"-json"},
       "",
       "PrintInputImportNotificationsJson unimplemented\n"
       "PrintOutputImportNotificationsJson unimplemented\n"},
      {{"-b", "-input"}, "1\n2\n3\n", ""},
      {{"-b", "-client", "alpha"}, "1\n3\n1\n", ""},
      {{"-b", "-client", "Alpha"}, "", none},
      {{"-b", "-ntype", "CONF"}, "1\n1\n", ""},
      {{"-b", "-ntype", "error", "-output"}, "2\n", ""},
      // The sending master for incoming records, the destination for outgoing.
      {{"-b", "-hostname", "mB"}, "2\n3\n2\n", ""},
      // Strictly before or after the creation time.
      {{"-b", "-before", "11/14/2023 22:31:40"}, "1\n1\n", ""},
      {{"-b", "-after", "11/14/2023 22:31:40"}, "3\n", kNoOutput},
      // Texts reach the query as parameters, not as SQL.
      {{"-b", "-client", "x' OR '1'='1"}, "", none},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Run(c.args), (e2e::Result{c.out, c.err, 0})) << testing::PrintToString(c.args);
  root_.Sql("DELETE FROM SLP_InNotifications; DELETE FROM SLP_OutNotifications");
  EXPECT_EQ(Run({}), (e2e::Result{"", none, 0}));
}

TEST_F(ListImportNotifyTest, CatalogFaultsEndOneListWithAMessage) {
  // A catalog without the incoming table: the outgoing list still runs.
  root_.Sql("DROP TABLE SLP_InNotifications");
  EXPECT_EQ(Run({"-b"}),
            (e2e::Result{"1\n2\n", "error fetching data from database, status = 2007006\n", 0}));
  EXPECT_NE(root_.DebugLog().find("error fetching data from database, status = 2007006"),
            std::string::npos);

  root_.RemoveCatalog();
  const std::string noConnection =
      "cannot connect to database, status = 2007002\n"
      "cannot create database connection manager\n";
  EXPECT_EQ(Run({}), (e2e::Result{"", noConnection + noConnection, 0}));
}

}  // namespace
