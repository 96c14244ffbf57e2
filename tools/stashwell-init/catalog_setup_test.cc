// Tests of the catalog creation and the demo data of stashwell-init.
#include "tools/stashwell-init/catalog_setup.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <ctime>
#include <map>
#include <memory>
#include <string>

#include "platform/emmlib/emmlib.h"
#include "platform/sqldb/sqldb.h"

namespace {

// A directory of catalogs for one test, removed afterwards.
class TempDir {
 public:
  TempDir() {
    char tmpl[] = "/tmp/catalog-setup-XXXXXX";
    dir_ = mkdtemp(tmpl);
  }
  ~TempDir() {
    for (const std::string& f : files_) unlink(f.c_str());
    rmdir(dir_.c_str());
  }
  std::string File(const std::string& name) {
    files_.push_back(dir_ + "/" + name);
    return files_.back();
  }

 private:
  std::string dir_;
  std::vector<std::string> files_;
};

// Opens the catalog file at `path`.
std::unique_ptr<sqldb::Database> OpenFile(const std::string& path) {
  std::unique_ptr<sqldb::Database> db;
  std::string why;
  EXPECT_EQ(sqldb::Code::kOk, sqldb::Open(CatalogFile(path), sqldb::OpenMode::kReadOnly, &db, &why))
      << why;
  return db;
}

// A cell's value as text: numbers in decimal.
std::string CellText(const sqldb::Row& row, int col) {
  return row.type(col) == sqldb::Type::kInteger ? std::to_string(row.Int64(col))
                                                : std::string(row.Bytes(col));
}

// Runs a query returning rows of (text, number) into a map.
std::map<std::string, int64_t> Counts(sqldb::Database* db, const std::string& sql) {
  std::map<std::string, int64_t> out;
  const std::unique_ptr<sqldb::Statement> st = db->Prepare(sql);
  EXPECT_TRUE(st) << sql << ": " << db->LastError();
  while (st && st->Step() == sqldb::Code::kRow) {
    out[CellText(st->CurrentRow(), 0)] = st->CurrentRow().Int64(1);
  }
  return out;
}

// A checksum of every row of every table (FNV-1a over the rows' texts).
uint64_t Checksum(const std::string& path) {
  const std::unique_ptr<sqldb::Database> db = OpenFile(path);
  uint64_t hash = 1469598103934665603ull;
  for (const auto& table :
       Counts(db.get(), "SELECT name, 0 FROM sqlite_master WHERE type = 'table'")) {
    const std::unique_ptr<sqldb::Statement> st =
        db->Prepare("SELECT * FROM " + table.first + " ORDER BY 1");
    while (st && st->Step() == sqldb::Code::kRow) {
      for (int c = 0; c < st->ColumnCount(); ++c) {
        for (char ch : CellText(st->CurrentRow(), c)) {
          hash = (hash ^ static_cast<unsigned char>(ch)) * 1099511628211ull;
        }
        hash = (hash ^ '|') * 1099511628211ull;
      }
    }
  }
  return hash;
}

TEST(CatalogSetup, CreatesSchemaAndThisMaster) {
  TempDir dir;
  const std::string path = dir.File("catalog.db");
  std::string error;
  ASSERT_TRUE(CreateCatalogDatabase(CatalogFile(path), "master1.example.com", false, &error))
      << error;
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
      CreateCatalogDatabase(CatalogFile(dir.File("missing/dir/catalog.db")), "m", false, &error));
}

TEST(DemoCatalog, SameSeedAndTimeSameCatalog) {
  TempDir dir;
  std::string error;
  static const struct {
    unsigned seed;
    int64_t now;
  } cases[] = {{7, 1735689600}, {7, 1735689600}, {8, 1735689600}, {7, 1735689601}};
  uint64_t sums[4];
  for (int i = 0; i < 4; ++i) {
    const std::string path = dir.File("c" + std::to_string(i) + ".db");
    ASSERT_TRUE(CreateCatalogDatabase(CatalogFile(path), "master1.example.com", false, &error))
        << error;
    ASSERT_TRUE(FillDemoCatalog(CatalogFile(path), "master1.example.com", 1500, cases[i].seed,
                                cases[i].now, &error))
        << error;
    sums[i] = Checksum(path);
  }
  EXPECT_EQ(sums[0], sums[1]);
  EXPECT_NE(sums[0], sums[2]);
  EXPECT_NE(sums[0], sums[3]);
}

TEST(DemoCatalog, CoversWhatTheReportsShow) {
  TempDir dir;
  const std::string path = dir.File("catalog.db");
  std::string error;
  ASSERT_TRUE(CreateCatalogDatabase(CatalogFile(path), "master1.example.com", false, &error))
      << error;
  const int64_t now = time(nullptr);
  EXPECT_FALSE(FillDemoCatalog(CatalogFile(path), "nobody.example.com", 10, 1, now, &error));
  EXPECT_NE(std::string::npos, error.find("nobody.example.com")) << error;
  ASSERT_TRUE(FillDemoCatalog(CatalogFile(path), "master1.example.com", 3000, 1, now, &error))
      << error;

  const std::unique_ptr<sqldb::Database> db = OpenFile(path);
  ASSERT_TRUE(db);
  auto count = [&](const std::string& sql) {
    return Counts(db.get(), "SELECT 'n', (" + sql + ")")["n"];
  };
  EXPECT_EQ(3000, count("SELECT COUNT(*) FROM DBM_Image"));
  // A fresh root has images of the last day, which the reports that count
  // back from today show.
  EXPECT_GT(count("SELECT COUNT(*) FROM DBM_Image WHERE BackupTime > unixepoch() - 86400"), 0);
  // Every SLP state, inactive ones too, and unmanaged images.
  auto states = Counts(db.get(),
                       "SELECT StorageServiceState || '/' || StorageServiceIsInactive, COUNT(*)"
                       " FROM DBM_Image GROUP BY 1");
  for (const char* s : {"0/0", "1/0", "1/1", "2/0", "2/1", "3/0", "4/0"}) {
    EXPECT_GT(states[s], 0) << s;
  }
  EXPECT_EQ(10, count("SELECT COUNT(DISTINCT CopyType) FROM DBM_ImageCopy"));
  EXPECT_EQ(16, count("SELECT COUNT(DISTINCT CopyState) FROM DBM_ImageCopy"));
  EXPECT_GE(count("SELECT COUNT(DISTINCT MediaSubType) FROM DBM_ImageFragment"), 5);
  EXPECT_GT(count("SELECT COUNT(*) FROM DBM_ImageFragment WHERE MediaType = 2"), 0);
  EXPECT_GE(count("SELECT COUNT(DISTINCT FragmentState) FROM DBM_ImageFragment"), 5);
  EXPECT_GT(count("SELECT COUNT(*) FROM DBM_ImageFragment f JOIN DBM_ImageCopy c"
                  " ON c.ImageCopyKey = f.ImageCopyKey GROUP BY f.ImageCopyKey"
                  " ORDER BY COUNT(*) DESC LIMIT 1"),
            2);
  EXPECT_GT(count("SELECT COUNT(*) FROM DBM_ImageSnapshot"), 0);
  EXPECT_GT(count("SELECT COUNT(*) FROM DBM_ImageReplicationDestination d JOIN EMM_Machine m"
                  " ON m.MachineKey = d.TargetMachineKey WHERE m.MachineSwuType = 12"),
            0);
  EXPECT_GT(count("SELECT COUNT(*) FROM DBM_Image WHERE OriginMasterServer <> ''"
                  " AND ImportFromReplicaTime = 0"),
            0);
  EXPECT_GT(count("SELECT COUNT(*) FROM DBM_ImageCopy WHERE CopyState = 14 AND CopyType = 3"), 0);
  EXPECT_EQ(4, count("SELECT COUNT(*) FROM EMM_DataClassification"));
  EXPECT_GT(count("SELECT MAX(VersionNumber) FROM SLP_StorageService"), 1);
  EXPECT_GT(count("SELECT COUNT(*) FROM SLP_StorageService WHERE Flags = 8"), 0);
  EXPECT_GT(count("SELECT COUNT(*) FROM SLP_StorageServiceOperation WHERE TargetDomain <> ''"), 0);
  EXPECT_GT(count("SELECT COUNT(*) FROM SLP_InNotifications WHERE NotificationType = 3"), 0);
  EXPECT_GT(count("SELECT COUNT(*) FROM SLP_OutNotifications WHERE RetryCount > 0"), 0);
  EXPECT_EQ(1, count("SELECT COUNT(*) FROM SLP_WorkGroup w WHERE NOT EXISTS (SELECT 1 FROM"
                     " SLP_TargetCopyInfo t WHERE t.WorkGroupKey = w.WorkGroupKey)"));
  EXPECT_GT(count("SELECT COUNT(*) FROM SLP_TargetCopyInfo"), 0);
  // Target copies go to the demo's own two pools, both of them.
  auto pools = Counts(db.get(), "SELECT VolumePool, COUNT(*) FROM SLP_TargetCopyInfo GROUP BY 1");
  EXPECT_EQ(2u, pools.size());
  EXPECT_GT(pools["stash_pool"], 0);
  EXPECT_GT(pools["dr_pool"], 0);
  EXPECT_GT(count("SELECT COUNT(*) FROM DBM_DeletedFragment"), 0);
  // Images of an SLP version without a definition, and expired data both
  // within and past its try-to-keep time.
  EXPECT_GT(count("SELECT COUNT(*) FROM DBM_Image i WHERE StorageServiceName <> '' AND NOT EXISTS"
                  " (SELECT 1 FROM SLP_StorageService s WHERE s.StorageServiceName ="
                  " i.StorageServiceName AND s.VersionNumber = i.StorageServiceVersionNumber)"),
            0);
  for (const char* when : {">", "<"}) {
    EXPECT_GT(count(std::string("SELECT COUNT(*) FROM DBM_ImageFragment f JOIN DBM_ImageCopy c"
                                " ON c.ImageCopyKey = f.ImageCopyKey WHERE f.FragmentState = 3"
                                " AND c.TryToKeepTime ") +
                    when + " unixepoch()"),
              0)
        << when;
  }
  EXPECT_GT(count("SELECT COUNT(*) FROM SLP_PendingImport"), 0);
  // Images are stored in listing order, so a listing reads the file in order.
  EXPECT_EQ(0, count("SELECT COUNT(*) FROM DBM_Image a JOIN DBM_Image b ON b.ImageKey ="
                     " a.ImageKey + 1 WHERE b.BackupTime < a.BackupTime OR (b.BackupTime ="
                     " a.BackupTime AND b.BackupID < a.BackupID)"));
  // The indexes dropped for the bulk load are back.
  EXPECT_EQ(count("SELECT COUNT(*) FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL"),
            19);
}

}  // namespace
