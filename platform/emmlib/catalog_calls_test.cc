// Tests of the catalog library's other calls: opening a catalog, snapshots,
// replicas, pending imports, copy and image-state updates, the
// SLP definitions and data classifications.
#include <fcntl.h>

#include <string>
#include <vector>

#include "platform/emmlib/test_catalog.h"

namespace {

using emm_test::kMaster;
using emm_test::TestCatalog;

TEST(Initialize, OpensOnlyACatalog) {
  TestCatalog cat;
  const std::string garbage = cat.path() + ".garbage";
  int fd = open(garbage.c_str(), O_WRONLY | O_CREAT, 0600);
  ASSERT_EQ(4096, write(fd, std::string(4096, 'x').data(), 4096));
  close(fd);
  const std::string missing = cat.path() + ".missing";
  static const struct {
    std::string path;
    const char* server;
    unsigned status;
  } cases[] = {
      {missing, kMaster, EMMLIB_CANNOT_OPEN},
      {garbage, kMaster, EMMLIB_CANNOT_OPEN},
      {cat.path(), "", EMMLIB_INVALID_ARGUMENT},
      {cat.path(), kMaster, 0},
  };
  for (const auto& c : cases) {
    int cid = 0;
    EXPECT_EQ(c.status, emmlib_initialize(&cid, EMMLIB_READ_ONLY, c.server, 1556, c.path.c_str(),
                                          nullptr, "t"))
        << c.path;
    EXPECT_EQ(c.status == 0, cid != 0 && cid != *cat.cid()) << c.path;
    if (cid != 0) {
      EXPECT_EQ(0u, emmlib_terminate(&cid));
    }
    EXPECT_EQ(EMMLIB_NOT_CONNECTED, emmlib_terminate(&cid));
  }
  EXPECT_EQ(-1, access(missing.c_str(), F_OK)) << "a missing catalog must not be created";
  unlink(garbage.c_str());
}

// Fetches every snapshot of a query in batches of `batch`; records the
// status and count of each fetch in *trace.
std::vector<std::string> Snapshots(TestCatalog& cat, const char* backupId, int level,
                                   unsigned batch, std::vector<unsigned>* trace) {
  uint64_t handle = 0;
  EXPECT_EQ(0u,
            emmlib_QueryActiveSnapshotInfo(cat.cid(), level, kMaster, 0, backupId, -1, 0, &handle));
  std::vector<std::string> out;
  for (;;) {
    unsigned count = batch;
    EMM_SnapshotInfo* list = nullptr;
    unsigned status = emmlib_FetchSnapshotInfo(cat.cid(), 0, handle, &count, &list);
    trace->push_back(status);
    trace->push_back(count);
    for (EMM_SnapshotInfo* s = list; s != nullptr; s = s->next) {
      out.push_back(std::string(s->BackupID) + "/" + std::to_string(s->CopyNumber) + "/" +
                    s->SnapshotName);
    }
    emmlib_FreeSnapshotInfo_List(&list);
    if (status != 0) break;
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

  std::vector<unsigned> trace;
  EXPECT_EQ((std::vector<std::string>{"z_100/1/s0", "a_300/1/s1", "b_300/1/s2", "b_300/1/s3",
                                      "b_300/2/s4"}),
            Snapshots(cat, nullptr, 1, 2, &trace));
  // Full batches come with 0, the last one with end of data.
  EXPECT_EQ((std::vector<unsigned>{0, 2, 0, 2, EMMLIB_END_OF_DATA, 1}), trace);

  trace.clear();
  EXPECT_EQ((std::vector<std::string>{"b_300/1/s2", "b_300/1/s3", "b_300/2/s4", "b_300/2/gone"}),
            Snapshots(cat, "b_300", 3, 50, &trace));
  trace.clear();
  EXPECT_TRUE(Snapshots(cat, "nothing_1", 1, 50, &trace).empty());
  EXPECT_EQ((std::vector<unsigned>{EMMLIB_END_OF_DATA, 0}), trace);
}

// A list-shape query fetched `batch` images at a time: each batch's
// images, and its status.
using ListQuery = unsigned (*)(int*, int, const char*, int64_t, uint64_t*);
using ListFetch = unsigned (*)(int*, int, uint64_t, unsigned*, EMM_Image**);
std::vector<std::string> Batches(TestCatalog& cat, ListQuery query, ListFetch fetch, int64_t since,
                                 unsigned batch) {
  uint64_t handle = 7;
  const unsigned opened = query(cat.cid(), 3, kMaster, since, &handle);
  if (opened != 0)
    return {"opened " + std::to_string(opened) + ", handle " + std::to_string(handle)};
  std::vector<std::string> out;
  unsigned status = 0;
  while (status == 0) {
    unsigned count = batch;
    EMM_Image* list = nullptr;
    status = fetch(cat.cid(), 3, handle, &count, &list);
    out.push_back(std::to_string(status) + ":\n" + TestCatalog::Describe(list));
    emmlib_FreeImage_List(&list);
  }
  emmlib_ReleaseImageResultHandle(cat.cid(), handle);
  return out;
}

TEST(ListQueries, ReplicasAndPendingImports) {
  TestCatalog cat;
  const std::string empty = "opened " + std::to_string(EMMLIB_END_OF_DATA) + ", handle 0";
  const std::string end = std::to_string(EMMLIB_END_OF_DATA) + ":\n";
  EXPECT_EQ(std::vector<std::string>{empty},
            Batches(cat, emmlib_QueryReplicaImageCopies, emmlib_FetchReplicaImageCopies, 0, 1));
  EXPECT_EQ(std::vector<std::string>{empty},
            Batches(cat, emmlib_QueryPendingImportImages, emmlib_FetchPendingImportImages, 0, 1));

  // Replicas: only the copies with targets, each with its targets.
  cat.Exec("INSERT INTO EMM_Machine VALUES (12, 2, 'target1', 12, '')");
  int64_t i1 = cat.AddImage("c", 100);
  cat.AddCopy(i1, 1);
  int64_t replica = cat.AddCopy(i1, 2, "CopyType = 3");
  cat.AddFragment(replica, 1);
  int64_t replica2 = cat.AddCopy(cat.AddImage("c", 200), 1, "CopyType = 3");
  cat.AddImage("c", 300);  // no replica at all
  for (auto [copy, volume] :
       {std::pair<int64_t, const char*>{replica, "vol1"}, {replica, "vol2"}, {replica2, "vol3"}}) {
    cat.Exec(
        "INSERT INTO DBM_ImageReplicationDestination (ImageCopyKey, TargetMachineKey,"
        " VolumeInfo, RemoteMasterServer) VALUES (" +
        std::to_string(copy) + ", 12, '" + volume + "', 'remote1')");
  }
  EXPECT_EQ(
      (std::vector<std::string>{"0:\nc_100 |c2 s0 ttarget1/vol1/remote1 ttarget1/vol2/remote1\n",
                                end + "c_200 |c1 s0 ttarget1/vol3/remote1\n"}),
      Batches(cat, emmlib_QueryReplicaImageCopies, emmlib_FetchReplicaImageCopies, 0, 1));
  // Since: images backed up at or after the time.
  EXPECT_EQ((std::vector<std::string>{end + "c_200 |c1 s0 ttarget1/vol3/remote1\n"}),
            Batches(cat, emmlib_QueryReplicaImageCopies, emmlib_FetchReplicaImageCopies, 200, 9));
  EXPECT_EQ(std::vector<std::string>{empty},
            Batches(cat, emmlib_QueryReplicaImageCopies, emmlib_FetchReplicaImageCopies, 201, 9));

  // Pending imports: images of other masters not imported yet, whole.
  cat.AddImage("done", 200, "OriginMasterServer = 'remote1', ImportFromReplicaTime = 250");
  int64_t pending = cat.AddImage("pending", 300, "OriginMasterServer = 'remote1'");
  cat.AddFragment(cat.AddCopy(pending, 1, "CopyState = 14"), 1, "MediaID = 'm1'");
  cat.AddImage("nocopy", 400, "OriginMasterServer = 'remote2'");
  EXPECT_EQ((std::vector<std::string>{end + "pending_300 |c1 s14 f1:m1\nnocopy_400\n"}),
            Batches(cat, emmlib_QueryPendingImportImages, emmlib_FetchPendingImportImages, 0, 100));
}

// The updates themselves are what redo's end-to-end tests check; here the
// refusals and a record that is not there.
TEST(Updates, RefusedOrWithoutARecord) {
  TestCatalog cat;
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
}

TEST(Definitions, SlpVersionsWithOperationsAndClassifications) {
  TestCatalog cat;
  int status = -1;
  EXPECT_EQ(nullptr, db_getAllStorageServicesWithAllVersions(&status));
  EXPECT_EQ(0, status);
  cat.Exec(
      "INSERT INTO SLP_StorageService (StorageServiceKey, StorageServiceName, VersionNumber,"
      " Flags) VALUES (1, 'zulu', 1, 0), (2, 'alpha', 2, 8), (3, 'alpha', 1, 0);"
      "INSERT INTO SLP_StorageServiceOperation (StorageServiceKey, OperationIndex, CopyType,"
      " Destination, TargetDomain) VALUES (3, 2, 1, 'tape', ''), (3, 1, 0, 'disk', ''),"
      " (1, 1, 3, 'import_slp', 'remote1');"
      "INSERT INTO EMM_DataClassification VALUES ('id-silver', 'Silver', 3, ''),"
      " ('id-gold', 'Gold', 2, '')");
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
  DATA_CLASS_LIST* classes = db_getDATA_CLASS_LIST(&status);
  EXPECT_EQ(0, status);
  for (DATA_CLASS_LIST* c = classes; c != nullptr; c = c->next) {
    text += std::string(c->name) + "=" + c->identifier + "\n";
  }
  db_freeDATA_CLASS_LIST(classes);
  EXPECT_EQ(
      "alpha v1 f0: 1/0/disk/ 2/1/tape/\nalpha v2 f8:\nzulu v1 f0: 1/3/import_slp/remote1\n"
      "Gold=id-gold\nSilver=id-silver\n",
      text);

  EXPECT_EQ(0, db_get_Policy_Category());
  cat.Exec("INSERT INTO EMM_Parameter VALUES ('PolicyCategory', 1)");
  EXPECT_EQ(1, db_get_Policy_Category());
}

}  // namespace
