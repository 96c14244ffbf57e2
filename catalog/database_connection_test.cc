// DatabaseConnection's master server key lookup with its cache. Why a
// connection cannot be made is shown end to end by the reports.
#include "catalog/database_connection.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/dal/dal_test_support.h"

namespace {

using Corvela::Dal::TempCatalog;
using Corvela::Dal::USERID_DBM_ADMIN;

class MasterServerKeyTest : public ::testing::Test {
 protected:
  void SetUp() override {
    catalog_.ApplySchema();
    catalog_.Exec(
        "INSERT INTO EMM_Machine (MachineKey, ParentKey, MachinePrimaryName, MachineSwuType) "
        "VALUES (1, 1, 'master1', 3), (2, 1, 'media1', 1), (5, 5, 'cluster', 5),"
        "(9, 9, 'target', 12);"
        "INSERT INTO EMM_MachineAlias (MachineKey, MachineAliasName, MachineSwuType) VALUES "
        "(1, 'Master1.Example.COM', 3), (2, 'media1', 1), (5, 'vcluster', 5), (9, 'target', 12)");
    where_ = catalog_.location();
  }

  TempCatalog catalog_;
  Corvela::Dal::CatalogLocation where_;
};

TEST_F(MasterServerKeyTest, MatchesMasterAliasesWithoutRegardToCase) {
  struct Case {
    const char* name;
    int status;
    unsigned int key;
  };
  const Case cases[] = {
      {"master1.example.com", 0, 1},
      {"VCLUSTER", 0, 5},
      {"media1", 13, 0},  // a media server's alias
      {"target", 13, 0},  // a replication target's
      {"nobody", 13, 0},
      {"", 13, 0},
  };
  for (const Case& c : cases) {
    DatabaseConnection db(USERID_DBM_ADMIN, &where_);
    ASSERT_TRUE(db.connected);
    unsigned int key = 77;
    EXPECT_EQ(db.GetMasterServerKey(&key, c.name), c.status) << c.name;
    EXPECT_EQ(key, c.key) << c.name;
  }
}

TEST_F(MasterServerKeyTest, KeepsTheFirstKeyFound) {
  DatabaseConnection db(USERID_DBM_ADMIN, &where_);
  ASSERT_TRUE(db.connected);
  unsigned int key = 0;
  EXPECT_EQ(db.GetMasterServerKey(&key, "nobody"), 13);  // a failure is not kept
  EXPECT_EQ(db.GetMasterServerKey(&key, "vcluster"), 0);
  EXPECT_EQ(key, 5u);
  catalog_.Exec("DELETE FROM EMM_MachineAlias");
  EXPECT_EQ(db.GetMasterServerKey(&key, "master1.example.com"), 0);
  EXPECT_EQ(key, 5u);
}

}  // namespace
