// DatabaseConnection's master server key lookup with its cache. Why a
// connection cannot be made, and a master that is found or not, are shown
// end to end by the reports (completion_report_test.cc).
#include "catalog/database_connection.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/dal/dal_test_support.h"

namespace {

using Corvela::Dal::USERID_DBM_ADMIN;

TEST(MasterServerKeyTest, MatchesMasterAliasesWithoutRegardToCaseAndKeepsTheFirst) {
  Corvela::Dal::TempCatalog catalog;
  catalog.ApplySchema();
  catalog.Exec(
      "INSERT INTO EMM_Machine (MachineKey, ParentKey, MachinePrimaryName, MachineSwuType) "
      "VALUES (1, 1, 'master1', 3), (2, 1, 'media1', 1), (5, 5, 'cluster', 5),"
      "(9, 9, 'target', 12);"
      "INSERT INTO EMM_MachineAlias (MachineKey, MachineAliasName, MachineSwuType) VALUES "
      "(1, 'Master1.Example.COM', 3), (2, 'media1', 1), (5, 'vcluster', 5), (9, 'target', 12)");
  const Corvela::Dal::CatalogLocation where = catalog.location();
  static const struct {
    const char* name;
    int status;
    unsigned int key;
  } cases[] = {
      {"master1.example.com", 0, 1},
      {"VCLUSTER", 0, 5},
      {"media1", 13, 0},  // a media server's alias
      {"target", 13, 0},  // a replication target's
      {"nobody", 13, 0},
      {"", 13, 0},
  };
  for (const auto& c : cases) {
    DatabaseConnection db(USERID_DBM_ADMIN, &where);
    ASSERT_TRUE(db.connected);
    unsigned int key = 77;
    EXPECT_EQ(db.GetMasterServerKey(&key, c.name), c.status) << c.name;
    EXPECT_EQ(key, c.key) << c.name;
    // A key found is kept for the connection's later lookups; a failure is not.
    EXPECT_EQ(db.GetMasterServerKey(&key, "vcluster"), 0) << c.name;
    EXPECT_EQ(db.GetMasterServerKey(&key, "master1.example.com"), 0) << c.name;
    EXPECT_EQ(key, c.status == 0 ? c.key : 5u) << c.name;
  }
}

}  // namespace
