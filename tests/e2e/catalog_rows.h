// Rows for the small catalogs of the end-to-end tests: images of the
// master server "master1", their copies and fragments, and machines. Each
// helper inserts one row, applies the "Column = value, ..." settings `set`
// and returns the new row's key.
#ifndef TESTS_E2E_CATALOG_ROWS_H_
#define TESTS_E2E_CATALOG_ROWS_H_

#include <string>

#include "tests/e2e/harness.h"

namespace e2e {

inline std::string InsertRow(Root& root, const std::string& table, const std::string& keyColumn,
                             const std::string& columns, const std::string& values,
                             const std::string& set = "") {
  std::string sql = "INSERT INTO " + table + " (" + columns + ") VALUES (" + values + ");";
  if (!set.empty()) {
    sql += "UPDATE " + table + " SET " + set + " WHERE " + keyColumn + " = last_insert_rowid();";
  }
  std::string key = root.Sql(sql + "SELECT last_insert_rowid();");
  return key.substr(0, key.find('\n'));
}

inline std::string AddImage(Root& root, const std::string& client, long backupTime,
                            const std::string& set = "") {
  return InsertRow(root, "DBM_Image", "ImageKey", "MasterServerKey, ClientMachineName, BackupTime",
                   "(SELECT MachineKey FROM EMM_Machine WHERE MachinePrimaryName = 'master1'), '" +
                       client + "', " + std::to_string(backupTime),
                   set);
}

inline std::string AddCopy(Root& root, const std::string& image, int number,
                           const std::string& set = "") {
  return InsertRow(root, "DBM_ImageCopy", "ImageCopyKey", "ImageKey, CopyNumber",
                   image + ", " + std::to_string(number), set);
}

inline std::string AddFragment(Root& root, const std::string& copy, int number,
                               const std::string& set = "") {
  return InsertRow(root, "DBM_ImageFragment", "FragmentKey", "ImageCopyKey, FragmentNumber",
                   copy + ", " + std::to_string(number), set);
}

// A machine of `type` (12: replication target) belonging to master1.
inline std::string AddMachine(Root& root, const std::string& name, int type) {
  return InsertRow(root, "EMM_Machine", "MachineKey", "ParentKey, MachinePrimaryName, MachineSwuType",
                   "(SELECT MachineKey FROM EMM_Machine WHERE MachinePrimaryName = 'master1'), '" +
                       name + "', " + std::to_string(type));
}

}  // namespace e2e

#endif  // TESTS_E2E_CATALOG_ROWS_H_
