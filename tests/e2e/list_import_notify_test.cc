// End-to-end tests of `cyclectl list_import_notify`: both lists in each form,
// the filters, the empty and JSON cases, and catalog faults.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"

namespace {

const char kNoInput[] = "No input notification records found\n";
const char kNoOutput[] = "No output notification records found\n";

class ListImportNotifyTest : public e2e::CatalogTest {
 protected:
  ListImportNotifyTest() : CatalogTest("list_import_notify") {}
  void SetUp() override {
    const std::string idA = e2e::BytesLiteral("00112233445566778899aabbccddeeff");
    const std::string idB = e2e::BytesLiteral("ffeeddccbbaa99887766554433221100");
    // Created 22:15:00, 22:31:40 and 22:48:20 on 11/14/2023 (UTC).
    root_.Sql(
        "INSERT INTO SLP_InNotifications (NotificationKey, ClientMachineName, BackupTime,"
        " SourceImageKey, NotificationType, FromHostName, FromHostMachineId, FromHostSWVersion,"
        " ErrorCode, ErrorString, CreatedDateTime) VALUES"
        " (1, 'alpha', 1700000000, 11, 2, 'mA', " +
        idA +
        ", 910000, 0, '', 1700000100),"
        " (2, 'beta', 1700001000, 12, 3, 'mB', " +
        idB +
        ", 900000,"
        "  191, 'import failed', 1700001100),"
        " (3, 'alpha', 1700002000, 9007199254740993, 3, 'mB', " +
        idB +
        ","
        "  900000, -1, 'no entity', 1700002100);"
        "INSERT INTO SLP_OutNotifications (NotificationKey, ClientMachineName, BackupTime,"
        " SourceImageKey, NotificationType, DestinationHostName, ErrorCode, ErrorString,"
        " RetryCount, LastRetryTime, CreatedDateTime) VALUES"
        " (1, 'alpha', 1700000000, 21, 2, 'mA', 0, '', 0, 1700000100, 1700000100),"
        " (2, 'beta', 1700001000, 22, 3, 'mB', 191, 'import failed', 4, 1700009000, 1700001100)");
  }
};

TEST_F(ListImportNotifyTest, ListsIncomingThenOutgoingInEachForm) {
  EXPECT_EQ(Run({}), (e2e::Result{e2e::Golden("list_import_notify/short.txt"), "", 0}));
  EXPECT_EQ(Run({"-b", "-input"}), (e2e::Result{"1\n2\n3\n", "", 0}));

  // Numbered per list; empty texts in the user form.
  EXPECT_EQ(Run({"-U"}), (e2e::Result{e2e::Golden("list_import_notify/user.txt"), "", 0}));
}

TEST_F(ListImportNotifyTest, FiltersApplyToBothLists) {
  struct Case {
    std::vector<std::string> args;
    std::string out;  // brief: incoming keys, then outgoing keys
    std::string err;
  };
  const Case cases[] = {
      {{"-client", "alpha"}, "1\n3\n1\n", ""},
      {{"-client", "Alpha"}, "", std::string(kNoInput) + kNoOutput},
      {{"-ntype", "CONF"}, "1\n1\n", ""},
      {{"-ntype", "error", "-output"}, "2\n", ""},
      // The sending master for incoming records, the destination for outgoing.
      {{"-hostname", "mB"}, "2\n3\n2\n", ""},
      // Strictly before or after the creation time.
      {{"-before", "11/14/2023 22:31:40"}, "1\n1\n", ""},
      {{"-after", "11/14/2023 22:31:40"}, "3\n", kNoOutput},
      // Texts reach the query as parameters, not as SQL.
      {{"-client", "x' OR '1'='1"}, "", std::string(kNoInput) + kNoOutput},
  };
  for (const Case& c : cases) {
    std::vector<std::string> args = c.args;
    args.push_back("-b");
    EXPECT_EQ(Run(args), (e2e::Result{c.out, c.err, 0})) << testing::PrintToString(c.args);
  }
}

TEST_F(ListImportNotifyTest, EmptyTablesAndJsonFormsPrintOnlyMessages) {
  EXPECT_EQ(Run({"-json"}), (e2e::Result{"",
                                         "PrintInputImportNotificationsJson unimplemented\n"
                                         "PrintOutputImportNotificationsJson unimplemented\n",
                                         0}));
  root_.Sql("DELETE FROM SLP_InNotifications; DELETE FROM SLP_OutNotifications");
  EXPECT_EQ(Run({}), (e2e::Result{"", std::string(kNoInput) + kNoOutput, 0}));
}

TEST_F(ListImportNotifyTest, CatalogFaultsEndOneListWithAMessage) {
  // A catalog without the incoming table: the outgoing list still runs.
  root_.Sql("DROP TABLE SLP_InNotifications");
  e2e::Result r = Run({"-b"});
  EXPECT_EQ(r, (e2e::Result{"1\n2\n", "error fetching data from database, status = 2007006\n", 0}));
  EXPECT_NE(root_.DebugLog().find("error fetching data from database, status = 2007006"),
            std::string::npos);

  root_.RemoveCatalog();
  const std::string noConnection =
      "cannot connect to database, status = 2007002\n"
      "cannot create database connection manager\n";
  EXPECT_EQ(Run({}), (e2e::Result{"", noConnection + noConnection, 0}));
}

}  // namespace
