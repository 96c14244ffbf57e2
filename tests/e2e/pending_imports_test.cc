// End-to-end tests of `cyclectl pendimplist`: pending images printed as list
// prints them, cancelled ones left out, the two messages, and batching.
#include <gtest/gtest.h>

#include <string>

#include "tests/e2e/harness.h"

namespace {

const std::string kMasterKey =
    "(SELECT MachineKey FROM EMM_Machine WHERE MachinePrimaryName = 'master1')";

class PendingImportsTest : public ::testing::Test {
 protected:
  // Adds an image of master1 that came from `origin` and is not imported yet;
  // returns its key.
  std::string AddPendingImage(const std::string& client, long backupTime,
                              const std::string& origin = "remote1") {
    return Key(
        "INSERT INTO DBM_Image (MasterServerKey, ClientMachineName, BackupTime,"
        " OriginMasterServer, StorageServiceName) VALUES (" +
        kMasterKey + ", '" + client + "', " + std::to_string(backupTime) + ", '" + origin +
        "', 'slp_import') RETURNING ImageKey");
  }
  std::string AddCopy(const std::string& image, int number, int state) {
    return Key("INSERT INTO DBM_ImageCopy (ImageKey, CopyNumber, CopyState) VALUES (" + image +
               ", " + std::to_string(number) + ", " + std::to_string(state) +
               ") RETURNING ImageCopyKey");
  }
  void AddFragment(const std::string& copy, int number) {
    root_.Sql("INSERT INTO DBM_ImageFragment (ImageCopyKey, FragmentNumber, MediaID) VALUES (" +
              copy + ", " + std::to_string(number) + ", 'vol" + std::to_string(number) + "');");
  }
  // What list prints for one image with its copies and fragments.
  std::string Listed(const std::string& backupId, const std::string& form = "-l") {
    e2e::Result r = root_.Run({"list", form, "-rt", "ICF", "-backupid", backupId});
    EXPECT_EQ(r.err, "");
    return r.out;
  }

  e2e::Root root_;

 private:
  // The key an INSERT ... RETURNING gave back.
  std::string Key(const std::string& sql) {
    std::string key = root_.Sql(sql);
    return key.substr(0, key.find('\n'));
  }
};

TEST_F(PendingImportsTest, PendingImagesWithTheirCopiesAndFragments) {
  EXPECT_EQ(root_.Run({"pendimplist"}), (e2e::Result{"", "No pending import records found\n", 0}));

  // Imported already, or backed up here: not pending.
  root_.Sql(
      "INSERT INTO DBM_Image (MasterServerKey, ClientMachineName, BackupTime,"
      " OriginMasterServer, ImportFromReplicaTime) VALUES (" +
      kMasterKey +
      ", 'imported', 50,"
      " 'remote1', 60), (" +
      kMasterKey + ", 'local', 70, '', 0);");
  const std::string first = AddPendingImage("alpha", 100);
  const std::string c1 = AddCopy(first, 1, 14);
  AddFragment(c1, 1);
  AddFragment(c1, 2);
  AddFragment(AddCopy(first, 2, 6), 1);
  // Cancelled first copy: left out with everything under it.
  const std::string cancelled = AddPendingImage("bravo", 200);
  AddFragment(AddCopy(cancelled, 1, 6), 1);
  AddCopy(cancelled, 2, 14);
  AddPendingImage("charlie", 300, "remote2");  // no copy at all

  EXPECT_EQ(root_.Run({"pendimplist"}),
            (e2e::Result{Listed("alpha_100") + Listed("charlie_300"), "", 0}));
  EXPECT_EQ(
      root_.Run({"pendimplist", "-U"}),
      (e2e::Result{Listed("alpha_100", "-U") + Listed("charlie_300", "-U"),
                   "option '-U'  is not valid for operation 'pendimplist' and is ignored\n", 0}));

  root_.Sql("DROP TABLE DBM_ImageFragment;");
  EXPECT_EQ(root_.Run({"pendimplist"}),
            (e2e::Result{"", "Error querying image replica list, status=  2007062\n", 0}));
}

TEST_F(PendingImportsTest, ManyBatches) {
  // 250 images: three fetches of up to 100, every image once, in order.
  std::string values;
  for (int i = 0; i < 250; ++i) {
    values += std::string(i ? "," : "") + "(" + kMasterKey + ", 'c', " + std::to_string(1000 + i) +
              ", 'remote1')";
  }
  root_.Sql(
      "INSERT INTO DBM_Image (MasterServerKey, ClientMachineName, BackupTime,"
      " OriginMasterServer) VALUES " +
      values + ";");
  e2e::Result r = root_.Run({"pendimplist"});
  EXPECT_EQ(r.err, "");
  EXPECT_EQ(r.out, root_.Run({"list", "-rt", "I"}).out);
}

}  // namespace
