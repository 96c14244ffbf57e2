// Tests of the catalog creation and the demo data of stashwell-init.
#include "tools/stashwell-init/catalog_setup.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "platform/emmlib/emmlib.h"
#include "platform/sqldb/sqldb.h"

namespace {

// A directory of catalogs for one test, removed afterwards.
class CatalogSetupTest : public testing::Test {
 protected:
  void SetUp() override {
    char tmpl[] = "/tmp/catalog-setup-XXXXXX";
    dir_ = mkdtemp(tmpl);
  }
  void TearDown() override { std::filesystem::remove_all(dir_); }

  // A new catalog file of this master named `name`.
  std::string Create(const std::string& name) {
    const std::string path = dir_ + "/" + name;
    std::string error;
    EXPECT_TRUE(CreateCatalogDatabase(CatalogFile(path), "master1.example.com", false, &error))
        << error;
    return path;
  }

  std::string dir_;
};

// The whole file, byte for byte.
std::string Bytes(const std::string& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path, std::ios::binary).rdbuf();
  return bytes.str();
}

TEST_F(CatalogSetupTest, SameSeedAndTimeSameCatalog) {
  static const struct {
    unsigned seed;
    int64_t now;
  } cases[] = {{7, 1735689600}, {7, 1735689600}, {8, 1735689600}, {7, 1735689601}};
  std::string files[4];
  for (int i = 0; i < 4; ++i) {
    const std::string path = Create("c" + std::to_string(i) + ".db");
    std::string error;
    ASSERT_TRUE(FillDemoCatalog(CatalogFile(path), "master1.example.com", 1500, cases[i].seed,
                                cases[i].now, &error))
        << error;
    files[i] = Bytes(path);
  }
  EXPECT_TRUE(files[0] == files[1]);
  EXPECT_FALSE(files[0] == files[2]);
  EXPECT_FALSE(files[0] == files[3]);
}

// A new catalog, then the demo data in it.
TEST_F(CatalogSetupTest, CreatesSchemaAndThisMasterThenTheDemo) {
  const std::string path = Create("catalog.db");
  std::string error;
  EXPECT_FALSE(CreateCatalogDatabase(CatalogFile(path), "master1.example.com", false, &error));
  EXPECT_NE(std::string::npos, error.find(path)) << error;

  // The catalog library opens it and finds this master by either name.
  int cid = 0;
  ASSERT_EQ(0u, emmlib_initialize(&cid, 0, "master1", 1556, path.c_str(), nullptr, "t"));
  for (const char* name : {"master1.example.com", "MASTER1"}) {
    uint64_t handle = 0;
    EXPECT_EQ(EMMLIB_END_OF_DATA, emmlib_QueryReplicaImageCopies(&cid, 3, name, 0, &handle));
  }
  EXPECT_EQ(0, db_get_Policy_Category());
  emmlib_terminate(&cid);

  EXPECT_FALSE(
      CreateCatalogDatabase(CatalogFile(dir_ + "/missing/dir/catalog.db"), "m", false, &error));
  const int64_t now = time(nullptr);
  EXPECT_FALSE(FillDemoCatalog(CatalogFile(path), "nobody.example.com", 10, 1, now, &error));
  EXPECT_NE(std::string::npos, error.find("nobody.example.com")) << error;
  ASSERT_TRUE(FillDemoCatalog(CatalogFile(path), "master1.example.com", 3000, 1, now, &error))
      << error;

  std::unique_ptr<sqldb::Database> db;
  ASSERT_EQ(sqldb::Code::kOk,
            sqldb::Open(CatalogFile(path), sqldb::OpenMode::kReadOnly, &db, &error))
      << error;
  // Each holds of the demo data.
  static const char* const kHolds[] = {
      "(SELECT COUNT(*) FROM DBM_Image) = 3000",
      // A fresh root has images of the last day, which the reports that
      // count back from today show.
      "EXISTS (SELECT 1 FROM DBM_Image WHERE BackupTime > unixepoch() - 86400)",
      // Every SLP state, inactive ones too, and unmanaged images.
      "(SELECT COUNT(DISTINCT StorageServiceState || '/' || StorageServiceIsInactive) FROM "
      "DBM_Image WHERE StorageServiceState || '/' || StorageServiceIsInactive IN ('0/0', '1/0',"
      " '1/1', '2/0', '2/1', '3/0', '4/0')) = 7",
      "(SELECT COUNT(DISTINCT CopyType) FROM DBM_ImageCopy) = 10",
      "(SELECT COUNT(DISTINCT CopyState) FROM DBM_ImageCopy) = 16",
      "(SELECT COUNT(DISTINCT MediaSubType) FROM DBM_ImageFragment) >= 5",
      "EXISTS (SELECT 1 FROM DBM_ImageFragment WHERE MediaType = 2)",
      "(SELECT COUNT(DISTINCT FragmentState) FROM DBM_ImageFragment) >= 5",
      "(SELECT COUNT(*) FROM DBM_ImageFragment GROUP BY ImageCopyKey ORDER BY 1 DESC LIMIT 1) > 2",
      "EXISTS (SELECT 1 FROM DBM_ImageSnapshot)",
      "EXISTS (SELECT 1 FROM DBM_ImageReplicationDestination d JOIN EMM_Machine m"
      " ON m.MachineKey = d.TargetMachineKey WHERE m.MachineSwuType = 12)",
      "EXISTS (SELECT 1 FROM DBM_Image WHERE OriginMasterServer <> '' AND"
      " ImportFromReplicaTime = 0)",
      "EXISTS (SELECT 1 FROM DBM_ImageCopy WHERE CopyState = 14 AND CopyType = 3)",
      "(SELECT COUNT(*) FROM EMM_DataClassification) = 4",
      "(SELECT MAX(VersionNumber) FROM SLP_StorageService) > 1",
      "EXISTS (SELECT 1 FROM SLP_StorageService WHERE Flags = 8)",
      "EXISTS (SELECT 1 FROM SLP_StorageServiceOperation WHERE TargetDomain <> '')",
      "EXISTS (SELECT 1 FROM SLP_InNotifications WHERE NotificationType = 3)",
      "EXISTS (SELECT 1 FROM SLP_OutNotifications WHERE RetryCount > 0)",
      "(SELECT COUNT(*) FROM SLP_WorkGroup w WHERE NOT EXISTS (SELECT 1 FROM"
      " SLP_TargetCopyInfo t WHERE t.WorkGroupKey = w.WorkGroupKey)) = 1",
      // Target copies go to the demo's own two pools, both of them.
      "(SELECT GROUP_CONCAT(DISTINCT VolumePool) FROM (SELECT VolumePool FROM"
      " SLP_TargetCopyInfo ORDER BY 1)) = 'dr_pool,stash_pool'",
      "EXISTS (SELECT 1 FROM DBM_DeletedFragment)",
      // Images of an SLP version without a definition, and expired data both
      // within and past its try-to-keep time.
      "EXISTS (SELECT 1 FROM DBM_Image i WHERE StorageServiceName <> '' AND NOT EXISTS"
      " (SELECT 1 FROM SLP_StorageService s WHERE s.StorageServiceName ="
      " i.StorageServiceName AND s.VersionNumber = i.StorageServiceVersionNumber))",
      "EXISTS (SELECT 1 FROM DBM_ImageFragment f JOIN DBM_ImageCopy c ON c.ImageCopyKey ="
      " f.ImageCopyKey WHERE f.FragmentState = 3 AND c.TryToKeepTime > unixepoch())",
      "EXISTS (SELECT 1 FROM DBM_ImageFragment f JOIN DBM_ImageCopy c ON c.ImageCopyKey ="
      " f.ImageCopyKey WHERE f.FragmentState = 3 AND c.TryToKeepTime < unixepoch())",
      "EXISTS (SELECT 1 FROM SLP_PendingImport)",
      // Images are stored in listing order, so a listing reads the file in
      // order.
      "NOT EXISTS (SELECT 1 FROM DBM_Image a JOIN DBM_Image b ON b.ImageKey = a.ImageKey + 1"
      " WHERE b.BackupTime < a.BackupTime OR (b.BackupTime = a.BackupTime AND"
      " b.BackupID < a.BackupID))",
      // The indexes dropped for the bulk load are back.
      "(SELECT COUNT(*) FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL) = 19",
  };
  for (const char* holds : kHolds) {
    const std::unique_ptr<sqldb::Statement> st = db->Prepare(std::string("SELECT ") + holds);
    ASSERT_TRUE(st) << holds << ": " << db->LastError();
    EXPECT_TRUE(st->Step() == sqldb::Code::kRow && st->CurrentRow().Int64(0) == 1) << holds;
  }
}

}  // namespace
