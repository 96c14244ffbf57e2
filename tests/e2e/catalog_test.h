// A test fixture for the catalog reports: a fresh installation root and
// helpers that seed its catalog with images, copies, fragments, snapshots,
// SLP definitions and data classifications. Each Add... inserts one row with
// the columns every row needs, then applies the "Column = value, ..."
// settings `set`, and returns the new row's key. Run runs the operation
// whose word the fixture was made with.
#ifndef TESTS_E2E_CATALOG_TEST_H_
#define TESTS_E2E_CATALOG_TEST_H_

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/e2e/harness.h"
#include "tests/e2e/test_data.h"

namespace e2e {

class CatalogTest : public ::testing::Test {
 protected:
  explicit CatalogTest(std::string operation = "") : operation_(std::move(operation)) {}

  Result Run(std::vector<std::string> args = {}) const {
    args.insert(args.begin(), operation_);
    return root_.Run(args);
  }

  std::string Insert(const std::string& table, const std::string& keyColumn,
                     const std::string& columns, const std::string& values,
                     const std::string& set = "") {
    std::string key = root_.Sql("INSERT INTO " + table + " (" + columns + ") VALUES (" + values +
                                ") RETURNING " + keyColumn);
    key = key.substr(0, key.find('\n'));
    if (!set.empty())
      root_.Sql("UPDATE " + table + " SET " + set + " WHERE " + keyColumn + " = '" + key + "'");
    return key;
  }
  // An image of the master server master1.
  std::string AddImage(const std::string& client, long backupTime, const std::string& set = "") {
    return Insert("DBM_Image", "ImageKey", "MasterServerKey, ClientMachineName, BackupTime",
                  kMaster1 + (", '" + client + "', ") + std::to_string(backupTime), set);
  }
  std::string AddCopy(const std::string& image, int number, const std::string& set = "") {
    return Insert("DBM_ImageCopy", "ImageCopyKey", "ImageKey, CopyNumber",
                  image + ", " + std::to_string(number), set);
  }
  std::string AddFragment(const std::string& copy, int number, const std::string& set = "") {
    return Insert("DBM_ImageFragment", "FragmentKey", "ImageCopyKey, FragmentNumber",
                  copy + ", " + std::to_string(number), set);
  }
  void AddSnapshot(const std::string& copy, const std::string& name) {
    Insert("DBM_ImageSnapshot", "SnapshotKey", "ImageCopyKey, StorageServerName, SnapshotName",
           copy + ", 'array1', '" + name + "'");
  }
  // One version of an SLP definition with `operations` operations (copy
  // type 1 each); `flags` 8 marks it inactive.
  void AddSlp(const std::string& name, int version, int operations, int flags = 0) {
    std::string slp = Insert(
        "SLP_StorageService", "StorageServiceKey", "StorageServiceName, VersionNumber, Flags",
        "'" + name + "', " + std::to_string(version) + ", " + std::to_string(flags));
    for (int i = 1; i <= operations; ++i) {
      Insert("SLP_StorageServiceOperation", "OperationKey",
             "StorageServiceKey, OperationIndex, CopyType", slp + ", " + std::to_string(i) + ", 1");
    }
  }
  // A machine of `type` (1 media server, 3 master server, 12 replication
  // target) belonging to master1.
  std::string AddMachine(const std::string& name, int type) {
    return Insert("EMM_Machine", "MachineKey", "ParentKey, MachinePrimaryName, MachineSwuType",
                  kMaster1 + (", '" + name + "', ") + std::to_string(type));
  }
  // An entry of the deleted-fragment list of the master server `master` (a key).
  void AddDeletedFragment(const std::string& backupId, const std::string& master = kMaster1) {
    Insert("DBM_DeletedFragment", "DeletedFragmentKey", "MasterServerKey, BackupID",
           master + ", '" + backupId + "'");
  }
  void AddDataClass(const std::string& id, const std::string& name, int rank) {
    Insert("EMM_DataClassification", "ClassificationID", "ClassificationID, Name, Rank",
           "'" + id + "', '" + name + "', " + std::to_string(rank));
  }

  Root root_;

 private:
  const std::string operation_;
};

}  // namespace e2e

#endif  // TESTS_E2E_CATALOG_TEST_H_
