// End-to-end tests of `cyclectl remove_exp`: the confirmation and which
// entries of the deleted-fragment list go (a catalog that cannot be written:
// catalog_write_faults_test.cc; upper-case answers: cmdline_confirm_test.cc).
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/e2e/catalog_lock.h"
#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"
#include "tests/e2e/prompts.h"

namespace {

class RemoveExpTest : public e2e::CatalogTest {};

TEST_F(RemoveExpTest, AConfirmedRunRemovesAllTheMastersEntriesAndOnlyThem) {
  // Two entries of master1 and one of another master.
  const std::string master1 =
      "(SELECT MachineKey FROM EMM_Machine WHERE MachinePrimaryName = 'master1')";
  const std::string other = AddMachine("master2", 3);
  root_.Sql("UPDATE EMM_Machine SET ParentKey = MachineKey WHERE MachineKey = " + other +
            "; INSERT INTO DBM_DeletedFragment (MasterServerKey, BackupID) VALUES (" + master1 +
            ", 'client1_1000'), (" + master1 + ", 'client2_2000'), (" + other +
            ", 'client3_3000');");
  root_.SetConfig("CATALOG_BUSY_TIMEOUT", "200");
  const std::string declined = std::string(e2e::kExpiredPrompt) + "No entries removed\n";
  const std::string all = "client1_1000\nclient2_2000\nclient3_3000\n";
  const struct {
    const char* answer;
    bool locked;  // by another writer
    e2e::Result result;
    std::string left;
  } cases[] = {
      {"n\n", false, {declined, "", 0}, all},
      {"", false, {declined, "", 0}, all},
      {"maybe\n", false, {declined, "", 0}, all},
      {"y\n",
       true,
       {e2e::kExpiredPrompt,
        "error removing all entries in deleted fragment list, status= 2007061\n", 0},
       all},
      {"yes\n", false, {e2e::kExpiredPrompt, "", 0}, "client3_3000\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.answer);
    auto writer = c.locked ? std::make_unique<e2e::CatalogLock>(root_) : nullptr;
    EXPECT_EQ(root_.Run({"remove_exp"}, c.answer), c.result);
    writer.reset();
    EXPECT_EQ(root_.Sql("SELECT BackupID FROM DBM_DeletedFragment ORDER BY BackupID;"), c.left);
  }
}

}  // namespace
