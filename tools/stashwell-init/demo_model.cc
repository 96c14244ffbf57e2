// The demo catalog's constant tables.
#include "tools/stashwell-init/demo_model.h"

#include <cstring>

namespace demo {

const StorageUnit kStorageUnits[] = {
    {"dedup_stu_1", 0, 6, "dd1.example.com", "ms1.example.com", "dd1_pool1_vol", 4, 2,
     "dd1.example.com:pool1"},
    {"dedup_stu_2", 0, 5, "dd2.example.com", "ms2.example.com", "dd2_store", 1, 2,
     "dd2.example.com:store"},
    {"plain_disk_stu", 0, 1, "ms2.example.com", "ms2.example.com", "/backup/plaindisk", 1, 3,
     "ms2.example.com:/backup/plaindisk"},
    {"snap_stu_array1", 0, 4, "array1.example.com", "ms1.example.com", "array1_vol", 8, 1,
     "array1.example.com snapshot volume"},
    {"tape_stu_lib1", 2, 0, "", "ms3.example.com", "A%05d", 400, 4, ""},
    {"tape_stu_lib2", 2, 0, "", "ms3.example.com", "B%05d", 200, 3, ""},
    {"cloud_stu_1", 0, 6, "cloud1.s3.example.com", "ms1.example.com", "cloud1_bucket", 1, 2,
     "cloud1.s3.example.com:bucket"},
    {"dedup_stu_dr", 0, 6, "dd-dr.example.com", "ms2.example.com", "dd_dr_pool_vol", 2, 2,
     "dd-dr.example.com:pool"},
    {"cloud_snap_stu", 0, 4, "cloudsnap.example.com", "ms1.example.com", "cloudsnap_vol", 4, 1,
     "cloud snapshot"},
};
const int kStorageUnitCount = sizeof kStorageUnits / sizeof kStorageUnits[0];

const StorageUnit* FindStorageUnit(const char* name) {
  for (const StorageUnit& unit : kStorageUnits) {
    if (strcmp(unit.name, name) == 0) return &unit;
  }
  return nullptr;
}

constexpr const char kRemote[] = "*Remote*Master*";

const Slp kSlps[] = {
    {"Gold_Disk_Then_Tape",
     "2C5E7A10-0001-4B6E-9A11-5F0C0D1E0001",
     3,
     1 << 1,
     30,
     2,
     {{BACKUP, "dedup_stu_1", "", 0, 30}, {DUPLICATE, "tape_stu_lib1", "", 0, 365}}},
    {"Silver_Dedup_Replicate",
     "2C5E7A10-0002-4B6E-9A11-5F0C0D1E0002",
     2,
     0,
     20,
     2,
     {{BACKUP, "dedup_stu_1", "", 1, 14},
      {REPLICATE_TO_REMOTE, kRemote, "remote1.example.com", 3, 60}}},
    {"Snapshot_Protect",
     "2C5E7A10-0001-4B6E-9A11-5F0C0D1E0001",
     2,
     0,
     10,
     3,
     {{SNAPSHOT, "snap_stu_array1", "", 2, 7},
      {INDEX_FROM_SNAPSHOT, "snap_stu_array1", "", 0, 7},
      {BACKUP_FROM_SNAPSHOT, "dedup_stu_2", "", 0, 60}}},
    {"Bronze_Disk_Replica",
     "2C5E7A10-0004-4B6E-9A11-5F0C0D1E0004",
     2,
     1 << 2,
     20,
     2,
     {{BACKUP, "plain_disk_stu", "", 1, 14}, {REPLICATION, "dedup_stu_dr", "", 0, 30}}},
    {"Long_Term_Retention_Archive_To_Cloud_Tier_Storage",
     "2C5E7A10-0003-4B6E-9A11-5F0C0D1E0003",
     1,
     0,
     12,
     3,
     {{BACKUP, "dedup_stu_1", "", 0, 30},
      {DUPLICATE, "cloud_stu_1", "", 0, 2555},
      {DUPLICATE, "tape_stu_lib2", "", 5, 3650}}},
    {"Cloud_Snapshot_Rotation",
     "2C5E7A10-0004-4B6E-9A11-5F0C0D1E0004",
     1,
     0,
     8,
     3,
     {{SNAPSHOT, "cloud_snap_stu", "", 4, 3},
      {CLOUD_SNAPSHOT_REPLICATION, "cloud_snap_stu", "", 4, 14},
      {CLOUD_SNAPSHOT_INDEX, "cloud_snap_stu", "", 0, 14}}},
};
const int kSlpCount = sizeof kSlps / sizeof kSlps[0];

const Slp kImportSlp = {"Import_From_Remote1",
                        "2C5E7A10-0002-4B6E-9A11-5F0C0D1E0002",
                        1,
                        0,
                        0,
                        1,
                        {{IMPORT, "dedup_stu_1", "", 0, 30}}};

const Classification kClassifications[] = {
    {"2C5E7A10-0001-4B6E-9A11-5F0C0D1E0001", "Platinum", 1},
    {"2C5E7A10-0002-4B6E-9A11-5F0C0D1E0002", "Gold", 2},
    {"2C5E7A10-0003-4B6E-9A11-5F0C0D1E0003", "Silver", 3},
    {"2C5E7A10-0004-4B6E-9A11-5F0C0D1E0004", "Bronze", 4},
};
const int kClassificationCount = sizeof kClassifications / sizeof kClassifications[0];

// Sorted by prefix, so that client names sort in table order.
const ClientKind kClientKinds[] = {
    {"app", 40, 0, "Apps_Daily", 1},     {"db", 30, 13, "Oracle_DB_Hourly", 1},
    {"exch", 8, 16, "Exchange_Mail", 1}, {"file", 20, 0, "FileServers_Weekly", 1},
    {"nas", 6, 19, "NDMP_Filers", 3},    {"vm", 60, 29, "VMware_Guests", 1},
    {"web", 36, 0, "Web_Tier_Daily", 1},
};
const int kClientKindCount = sizeof kClientKinds / sizeof kClientKinds[0];

const Machine kMachines[] = {
    {"ms1.example.com", 1, nullptr},
    {"ms2.example.com", 1, nullptr},
    {"ms3.example.com", 1, nullptr},
    {"remote1.example.com", 3, "remote1.example.com"},
    {"remote2.example.com", 3, "remote2.example.com"},
    {"remote1-dd.example.com", 12, "remote1.example.com"},
    {"remote2-dd.example.com", 12, "remote2.example.com"},
    {"dd-dr.example.com", 12, nullptr},
};
const int kMachineCount = sizeof kMachines / sizeof kMachines[0];

const char* const kRemoteMasters[] = {"remote1.example.com", "remote2.example.com"};
const int kRemoteMasterCount = 2;

const StateShare kStateShares[] = {
    {150, ImageKind::kUnmanaged, 0, false},    {520, ImageKind::kComplete, 3, false},
    {120, ImageKind::kInProcess, 2, false},    {80, ImageKind::kNotStarted, 1, false},
    {30, ImageKind::kNotStarted, 1, true},     {30, ImageKind::kInProcess, 2, true},
    {20, ImageKind::kDeleted, 4, false},       {30, ImageKind::kImported, 3, false},
    {20, ImageKind::kPendingImport, 1, false},
};
const int kStateShareCount = sizeof kStateShares / sizeof kStateShares[0];

}  // namespace demo
