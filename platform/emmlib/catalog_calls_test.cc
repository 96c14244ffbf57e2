// Tests of the catalog library's other calls: snapshots, the refusals of
// opening a catalog and of the updates, the SLP definitions. A missing or
// damaged catalog is shown by the end-to-end tests of catalog_open_test.cc,
// the updates by redo's, the data classifications in their order by
// showvol's, replicas and pending imports by those of the commands that list
// them.
#include <string>
#include <vector>

#include "platform/emmlib/test_catalog.h"

namespace {

using emm_test::kMaster;
using emm_test::TestCatalog;

// Every snapshot of a query fetched `batch` at a time, each fetch followed
// by its status, "(0)" or "(end)", and by its count when that is not the
// number of records it gave.
std::string Snapshots(TestCatalog& cat, const char* backupId, int level, unsigned batch) {
  uint64_t handle = 0;
  EXPECT_EQ(0u,
            emmlib_QueryActiveSnapshotInfo(cat.cid(), level, kMaster, 0, backupId, -1, 0, &handle));
  std::string out;
  for (unsigned status = 0; status == 0;) {
    unsigned count = batch, n = 0;
    EMM_SnapshotInfo* list = nullptr;
    status = emmlib_FetchSnapshotInfo(cat.cid(), 0, handle, &count, &list);
    for (EMM_SnapshotInfo* s = list; s != nullptr; s = s->next, ++n) {
      out += std::string(s->BackupID) + "/" + std::to_string(s->CopyNumber) + "/" +
             s->SnapshotName + " ";
    }
    out += status == EMMLIB_END_OF_DATA ? "(end)" : "(" + std::to_string(status) + ") ";
    if (count != n) out += "count " + std::to_string(count);
    emmlib_FreeSnapshotInfo_List(&list);
  }
  emmlib_ReleaseImageResultHandle(cat.cid(), handle);
  return out;
}

TEST(Snapshots, ComeInImageRowOrder) {
  TestCatalog cat;
  int64_t late = cat.AddImage("b", 300);
  int64_t early = cat.AddImage("z", 100);
  int64_t sameTime = cat.AddImage("a", 300);
  auto snapshot = [&](int64_t copy, const char* name, int active) {
    cat.Exec("INSERT INTO DBM_ImageSnapshot (ImageCopyKey, SnapshotName, IsActive) VALUES (" +
             std::to_string(copy) + ", '" + name + "', " + std::to_string(active) + ")");
  };
  int64_t lateCopy2 = cat.AddCopy(late, 2, "DataFormat = 2");
  int64_t lateCopy1 = cat.AddCopy(late, 1, "DataFormat = 2");
  snapshot(lateCopy2, "s4", 1);
  snapshot(lateCopy1, "s2", 1);
  snapshot(lateCopy1, "s3", 1);
  snapshot(cat.AddCopy(early, 1, "DataFormat = 2"), "s0", 1);
  snapshot(cat.AddCopy(sameTime, 1, "DataFormat = 2"), "s1", 1);
  snapshot(lateCopy2, "gone", 0);

  // Full batches come with 0, the last one with end of data.
  EXPECT_EQ("z_100/1/s0 a_300/1/s1 (0) b_300/1/s2 b_300/1/s3 (0) b_300/2/s4 (end)",
            Snapshots(cat, nullptr, 1, 2));
  EXPECT_EQ("b_300/1/s2 b_300/1/s3 b_300/2/s4 b_300/2/gone (end)", Snapshots(cat, "b_300", 3, 50));
  EXPECT_EQ("(end)", Snapshots(cat, "nothing_1", 1, 50));
}

// The SLP definitions in their order, then the refusals and records that
// are not there.
TEST(CatalogCalls, DefinitionsThenRefusals) {
  TestCatalog cat;
  int status = -1;
  EXPECT_EQ(nullptr, db_getAllStorageServicesWithAllVersions(&status));
  EXPECT_EQ(0, status);
  cat.Exec(
      "INSERT INTO SLP_StorageService (StorageServiceKey, StorageServiceName, VersionNumber,"
      " Flags) VALUES (1, 'zulu', 1, 0), (2, 'alpha', 2, 8), (3, 'alpha', 1, 0);"
      "INSERT INTO SLP_StorageServiceOperation (StorageServiceKey, OperationIndex, CopyType,"
      " Destination, TargetDomain) VALUES (3, 2, 1, 'tape', ''), (3, 1, 0, 'disk', ''),"
      " (1, 1, 3, 'import_slp', 'remote1');");
  SS_LIST* list = db_getAllStorageServicesWithAllVersions(&status);
  EXPECT_EQ(0, status);
  std::string text;
  for (SS_LIST* s = list; s != nullptr; s = s->next) {
    text += std::string(s->name) + " v" + std::to_string(s->version) + " f" +
            std::to_string(s->flags) + ":";
    for (SS_OPERATION* o = s->operations; o != nullptr; o = o->next) {
      text += " " + std::to_string(o->index) + "/" + std::to_string(o->copyType) + "/" +
              o->destination + "/" + o->targetDomain;
    }
    text += "\n";
  }
  db_freeSS_LISTs(list);
  EXPECT_EQ("alpha v1 f0: 1/0/disk/ 2/1/tape/\nalpha v2 f8:\nzulu v1 f0: 1/3/import_slp/remote1\n",
            text);

  EXPECT_EQ(0, db_get_Policy_Category());
  cat.Exec("INSERT INTO EMM_Parameter VALUES ('PolicyCategory', 1)");
  EXPECT_EQ(1, db_get_Policy_Category());

  auto open = [&](int* cid, const char* server, const std::string& path) {
    return emmlib_initialize(cid, EMMLIB_READ_ONLY, server, 1556, path.c_str(), nullptr, "t");
  };
  int cid = 0;
  EXPECT_EQ(EMMLIB_INVALID_ARGUMENT, open(&cid, "", cat.path()));
  ASSERT_EQ(0u, open(&cid, kMaster, cat.path()));
  EXPECT_NE(*cat.cid(), cid);
  // Opening over a connection closes it, whether or not the new one opens.
  const int first = cid;
  EXPECT_EQ(EMMLIB_CANNOT_OPEN, open(&cid, kMaster, cat.path() + ".missing"));
  EXPECT_EQ(0, cid);
  cid = first;
  EXPECT_EQ(EMMLIB_NOT_CONNECTED, emmlib_terminate(&cid));

  cat.AddCopy(cat.AddImage("c", 100), 1, "SLPIndex = 1");
  EMM_ImageCopyExt* ext = nullptr;
  ASSERT_EQ(0u, emmlib_InitImageCopyExt(&ext));
  EXPECT_FALSE(ext->hasMasterServer || ext->hasCopyState || ext->hasBackupID || ext->hasSLPIndex);
  ext->hasMasterServer = ext->hasBackupID = ext->hasCopyState = true;
  strcpy(ext->MasterServer, "MASTER1");
  strcpy(ext->BackupID, "c_100");
  EXPECT_EQ(EMMLIB_INVALID_ARGUMENT, emmlib_UpdateImageCopy(cat.cid(), 1, ext));  // no index
  ext->hasSLPIndex = true;
  ext->SLPIndex = 9;
  EXPECT_EQ(EMMLIB_INVALID_ARGUMENT, emmlib_UpdateImageCopy(cat.cid(), 2, ext));
  EXPECT_EQ(EMMLIB_NO_SUCH_RECORD, emmlib_UpdateImageCopy(cat.cid(), 1, ext));
  emmlib_FreeImageCopyExt(&ext);
  EXPECT_EQ(nullptr, ext);
  for (const char* master : {kMaster, "other.example.com"}) {
    EXPECT_EQ(EMMLIB_NO_SUCH_RECORD,
              emmlib_UpdateImageStorageServiceState(cat.cid(), 1, master,
                                                    master == kMaster ? "c_999" : "c_100", 2));
  }
  EXPECT_EQ(EMMLIB_INVALID_ARGUMENT,
            emmlib_UpdateImageStorageServiceState(cat.cid(), 1, kMaster, "c_100", -1));
  EXPECT_EQ(0u, emmlib_terminate(cat.cid()));
  EXPECT_EQ(EMMLIB_NOT_CONNECTED, emmlib_terminate(cat.cid()));
}

}  // namespace
