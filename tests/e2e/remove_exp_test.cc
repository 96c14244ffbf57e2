// End-to-end tests of `cyclectl remove_exp`: the confirmation, which entries
// of the deleted-fragment list go, and a catalog that cannot be changed.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/e2e/catalog_lock.h"
#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"

namespace {

const char kPrompt[] =
    "This operation will remove all expired image fragment entries in the database.  Any files "
    "containing backup images corresponding to these entries must be deleted manually.  Do you "
    "wish to proceed? (y/n) >";

class RemoveExpTest : public e2e::CatalogTest {
 protected:
  // Two entries of master1 and one of another master.
  void SetUp() override {
    const std::string other = AddMachine("master2", 3);
    root_.Sql("UPDATE EMM_Machine SET ParentKey = MachineKey WHERE MachineKey = " + other + ";");
    for (const std::string& entry :
         {std::string("(SELECT MachineKey FROM EMM_Machine WHERE MachinePrimaryName = 'master1'),"
                      " 'client1_1000'"),
          std::string("(SELECT MachineKey FROM EMM_Machine WHERE MachinePrimaryName = 'master1'),"
                      " 'client2_2000'"),
          other + ", 'client3_3000'"}) {
      Insert("DBM_DeletedFragment", "DeletedFragmentKey", "MasterServerKey, BackupID", entry, "");
    }
  }

  std::string Left() {
    return root_.Sql("SELECT BackupID FROM DBM_DeletedFragment ORDER BY BackupID;");
  }
};

const char kAll[] = "client1_1000\nclient2_2000\nclient3_3000\n";

TEST_F(RemoveExpTest, DeclinedRemovesNothingConfirmedRemovesAllTheMastersEntries) {
  for (const std::string answer : {"n\n", "", "maybe\n"}) {
    EXPECT_EQ(root_.Run({"remove_exp"}, answer),
              (e2e::Result{std::string(kPrompt) + "No entries removed\n", "", 0}))
        << answer;
  }
  EXPECT_EQ(kAll, Left());
  EXPECT_EQ(root_.Run({"remove_exp"}, "yes\n"), (e2e::Result{kPrompt, "", 0}));
  EXPECT_EQ("client3_3000\n", Left());
}

TEST_F(RemoveExpTest, CatalogThatCannotBeChanged) {
  root_.SetConfig("CATALOG_BUSY_TIMEOUT", "200");
  {
    e2e::CatalogLock writer(root_);
    EXPECT_EQ(root_.Run({"remove_exp"}, "y\n"),
              (e2e::Result{kPrompt,
                           "error removing all entries in deleted fragment list, status= "
                           "2007061\n",
                           0}));
  }
  EXPECT_EQ(kAll, Left());
  {
    // A write-protected catalog (made immutable, as the tests run as root).
    const std::string file = root_.catalog();
    if (!e2e::OnPostgres() && system(("chattr +i " + file + " 2>/dev/null").c_str()) == 0) {
      e2e::Result r = root_.Run({"remove_exp", "-nowarn"});
      system(("chattr -i " + file).c_str());
      EXPECT_EQ(r, (e2e::Result{"",
                                "error removing all entries in deleted fragment list, status= "
                                "2007062\n",
                                0}));
    }
  }
  EXPECT_EQ(kAll, Left());
  // A missing catalog ends the run at start-up, before the prompt.
  root_.RemoveCatalog();
  EXPECT_EQ(root_.Run({"remove_exp", "-nowarn"}),
            (e2e::Result{"", "cyclectl: error connecting to EMM database, status=2007060\n", 1}));
}

}  // namespace
