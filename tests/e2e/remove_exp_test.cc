// End-to-end tests of `cyclectl remove_exp`: the confirmation and which
// entries of the deleted-fragment list go (a catalog that cannot be written:
// catalog_write_faults_test.cc; upper-case answers: cmdline_confirm_test.cc).
#include <gtest/gtest.h>

#include <string>

#include "tests/e2e/catalog_lock.h"
#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"
#include "tests/e2e/prompts.h"

namespace {

class RemoveExpTest : public e2e::CatalogTest {};

TEST_F(RemoveExpTest, AConfirmedRunRemovesAllTheMastersEntriesAndOnlyThem) {
  // Two entries of master1 and one of another master.
  const std::string other = AddMachine("master2", 3);
  root_.Sql("UPDATE EMM_Machine SET ParentKey = MachineKey WHERE MachineKey = " + other);
  AddDeletedFragment("client1_1000");
  AddDeletedFragment("client2_2000");
  AddDeletedFragment("client3_3000", other);
  root_.SetConfig("CATALOG_BUSY_TIMEOUT", "200");
  const std::string left = "SELECT BackupID FROM DBM_DeletedFragment ORDER BY BackupID;";
  for (const char* answer : {"n\n", "", "maybe\n"}) {
    EXPECT_EQ(root_.Run({"remove_exp"}, answer),
              (e2e::Result{e2e::kExpiredPrompt + std::string("No entries removed\n"), "", 0}))
        << answer;
  }
  {
    e2e::CatalogLock writer(root_);  // another writer's
    EXPECT_EQ(
        root_.Run({"remove_exp"}, "y\n"),
        (e2e::Result{e2e::kExpiredPrompt,
                     "error removing all entries in deleted fragment list, status= 2007061\n", 0}));
  }
  EXPECT_EQ(root_.Sql(left), "client1_1000\nclient2_2000\nclient3_3000\n");
  EXPECT_EQ(root_.Run({"remove_exp"}, "yes\n"), (e2e::Result{e2e::kExpiredPrompt, "", 0}));
  EXPECT_EQ(root_.Sql(left), "client3_3000\n");
}

}  // namespace
