// Tests of the catalog library's other calls: opening a catalog, snapshots,
// replicas, pending imports, copy and image-state updates, the
// deleted-fragment list, SLP definitions and data classifications.
#include <fcntl.h>

#include <string>
#include <vector>

#include "platform/emmlib/test_catalog.h"

namespace {

using emm_test::kMaster;
using emm_test::TestCatalog;

TEST(Initialize, RefusesWhatIsNotACatalog) {
  TestCatalog cat;
  int cid = 0;
  const std::string missing = cat.path() + ".missing";
  EXPECT_EQ(EMMLIB_CANNOT_OPEN,
            emmlib_initialize(&cid, 0, kMaster, 1556, missing.c_str(), nullptr, "t"));
  EXPECT_EQ(-1, access(missing.c_str(), F_OK)) << "a missing catalog must not be created";
  EXPECT_EQ(0, cid);

  const std::string garbage = cat.path() + ".garbage";
  int fd = open(garbage.c_str(), O_WRONLY | O_CREAT, 0600);
  ASSERT_GE(fd, 0);
  ASSERT_EQ(4096, write(fd, std::string(4096, 'x').data(), 4096));
  close(fd);
  EXPECT_EQ(EMMLIB_CANNOT_OPEN,
            emmlib_initialize(&cid, 0, kMaster, 1556, garbage.c_str(), nullptr, "t"));
  unlink(garbage.c_str());

  EXPECT_EQ(EMMLIB_INVALID_ARGUMENT,
            emmlib_initialize(&cid, 0, "", 1556, cat.path().c_str(), nullptr, "t"));
  ASSERT_EQ(0u, emmlib_initialize(&cid, EMMLIB_READ_ONLY, kMaster, 1556, cat.path().c_str(),
                                  nullptr, "t"));
  EXPECT_NE(0, cid);
  EXPECT_NE(*cat.cid(), cid);
  EXPECT_EQ(0u, emmlib_terminate(&cid));
  EXPECT_EQ(0, cid);
  EXPECT_EQ(EMMLIB_NOT_CONNECTED, emmlib_terminate(&cid));
}

// Fetches every snapshot of a query in batches of `batch`; records the
// status and count of each fetch in *trace.
std::vector<std::string> Snapshots(TestCatalog& cat, const char* backupId, int level,
                                   unsigned batch, std::vector<unsigned>* trace) {
  uint64_t handle = 0;
  EXPECT_EQ(0u, emmlib_QueryActiveSnapshotInfo(cat.cid(), level, kMaster, 0, backupId, -1, 0,
                                               &handle));
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

TEST(Replicas, ImagesWithTargetedCopiesOnly) {
  TestCatalog cat;
  uint64_t handle = 7;
  EXPECT_EQ(EMMLIB_END_OF_DATA, emmlib_QueryReplicaImageCopies(cat.cid(), 3, kMaster, 0, &handle));
  EXPECT_EQ(0u, handle);

  cat.Exec("INSERT INTO EMM_Machine VALUES (12, 2, 'target1', 12, '')");
  int64_t i1 = cat.AddImage("c", 100);
  cat.AddCopy(i1, 1);
  int64_t replica = cat.AddCopy(i1, 2, "CopyType = 3");
  cat.AddFragment(replica, 1);
  int64_t i2 = cat.AddImage("c", 200);
  int64_t replica2 = cat.AddCopy(i2, 1, "CopyType = 3");
  cat.AddImage("c", 300);  // no replica at all
  for (auto [copy, volume] : {std::pair<int64_t, const char*>{replica, "vol1"}, {replica, "vol2"},
                              {replica2, "vol3"}}) {
    cat.Exec("INSERT INTO DBM_ImageReplicationDestination (ImageCopyKey, TargetMachineKey,"
             " VolumeInfo, RemoteMasterServer) VALUES (" + std::to_string(copy) + ", 12, '" +
             volume + "', 'remote1')");
  }

  ASSERT_EQ(0u, emmlib_QueryReplicaImageCopies(cat.cid(), 3, kMaster, 0, &handle));
  unsigned count = 1;
  EMM_Image* list = nullptr;
  ASSERT_EQ(0u, emmlib_FetchReplicaImageCopies(cat.cid(), 3, handle, &count, &list));
  ASSERT_EQ(1u, count);
  EXPECT_STREQ("c_100", list->BackupID);
  ASSERT_NE(nullptr, list->copies);
  EXPECT_EQ(2, list->copies->CopyNumber);
  EXPECT_EQ(nullptr, list->copies->next);
  EXPECT_EQ(nullptr, list->copies->fragments);
  EMM_ReplicationTarget* t = list->copies->replicationTargets;
  ASSERT_NE(nullptr, t);
  EXPECT_STREQ("master1.example.com", t->SourceMasterServer);
  EXPECT_STREQ("c_100", t->BackupID);
  EXPECT_EQ(2, t->CopyNumber);
  EXPECT_STREQ("target1", t->TargetMachine);
  EXPECT_STREQ("vol1", t->TargetInfo);
  EXPECT_STREQ("remote1", t->RemoteMaster);
  ASSERT_NE(nullptr, t->next);
  EXPECT_STREQ("vol2", t->next->TargetInfo);
  emmlib_FreeImage_List(&list);

  count = 100;
  EXPECT_EQ(EMMLIB_END_OF_DATA, emmlib_FetchReplicaImageCopies(cat.cid(), 3, handle, &count, &list));
  ASSERT_EQ(1u, count);
  EXPECT_STREQ("c_200", list->BackupID);
  emmlib_FreeImage_List(&list);
  emmlib_ReleaseImageResultHandle(cat.cid(), handle);

  // Since selects images backed up at or after the time.
  ASSERT_EQ(0u, emmlib_QueryReplicaImageCopies(cat.cid(), 3, kMaster, 200, &handle));
  count = 100;
  EXPECT_EQ(EMMLIB_END_OF_DATA, emmlib_FetchReplicaImageCopies(cat.cid(), 3, handle, &count, &list));
  EXPECT_EQ(1u, count);
  emmlib_FreeImage_List(&list);
  emmlib_ReleaseImageResultHandle(cat.cid(), handle);
  EXPECT_EQ(EMMLIB_END_OF_DATA,
            emmlib_QueryReplicaImageCopies(cat.cid(), 3, kMaster, 201, &handle));
}

TEST(PendingImports, ImagesFromOtherMastersNotYetImported) {
  TestCatalog cat;
  uint64_t handle = 0;
  EXPECT_EQ(EMMLIB_END_OF_DATA,
            emmlib_QueryPendingImportImages(cat.cid(), 3, kMaster, 0, &handle));
  cat.AddImage("local", 100);
  cat.AddImage("done", 200, "OriginMasterServer = 'remote1', ImportFromReplicaTime = 250");
  int64_t pending = cat.AddImage("pending", 300, "OriginMasterServer = 'remote1'");
  cat.AddFragment(cat.AddCopy(pending, 1, "CopyState = 14"), 1, "MediaID = 'm1'");
  cat.AddImage("nocopy", 400, "OriginMasterServer = 'remote2'");

  ASSERT_EQ(0u, emmlib_QueryPendingImportImages(cat.cid(), 3, kMaster, 0, &handle));
  unsigned count = 100;
  EMM_Image* list = nullptr;
  EXPECT_EQ(EMMLIB_END_OF_DATA,
            emmlib_FetchPendingImportImages(cat.cid(), 3, handle, &count, &list));
  ASSERT_EQ(2u, count);
  EXPECT_STREQ("pending_300", list->BackupID);
  ASSERT_NE(nullptr, list->copies);
  EXPECT_EQ(14, list->copies->CopyState);
  ASSERT_NE(nullptr, list->copies->fragments);
  EXPECT_STREQ("m1", list->copies->fragments->MediaID);
  EXPECT_STREQ("nocopy_400", list->next->BackupID);
  EXPECT_EQ(nullptr, list->next->copies);
  emmlib_FreeImage_List(&list);
  emmlib_ReleaseImageResultHandle(cat.cid(), handle);
}

TEST(Updates, CopyStateAndImageState) {
  TestCatalog cat;
  int64_t image = cat.AddImage("c", 100, "StorageServiceState = 3, StorageServiceIsInactive = 1");
  cat.AddCopy(image, 1, "SLPIndex = 1, CopyState = 5");
  cat.AddCopy(image, 2, "SLPIndex = 2, CopyState = 15");

  EMM_ImageCopyExt* ext = nullptr;
  ASSERT_EQ(0u, emmlib_InitImageCopyExt(&ext));
  EXPECT_FALSE(ext->hasMasterServer || ext->hasCopyState || ext->hasBackupID || ext->hasSLPIndex);
  ext->hasMasterServer = true;
  strcpy(ext->MasterServer, "MASTER1");
  ext->hasBackupID = true;
  strcpy(ext->BackupID, "c_100");
  ext->hasCopyState = true;
  ext->CopyState = 1;
  EXPECT_EQ(EMMLIB_INVALID_ARGUMENT, emmlib_UpdateImageCopy(cat.cid(), 1, ext));
  ext->hasSLPIndex = true;
  ext->SLPIndex = 2;
  EXPECT_EQ(EMMLIB_INVALID_ARGUMENT, emmlib_UpdateImageCopy(cat.cid(), 2, ext));
  EXPECT_EQ(0u, emmlib_UpdateImageCopy(cat.cid(), 1, ext));
  EXPECT_EQ(1, cat.Number("SELECT CopyState FROM DBM_ImageCopy WHERE SLPIndex = 2"));
  EXPECT_EQ(5, cat.Number("SELECT CopyState FROM DBM_ImageCopy WHERE SLPIndex = 1"));
  ext->SLPIndex = 9;
  EXPECT_EQ(EMMLIB_NO_SUCH_RECORD, emmlib_UpdateImageCopy(cat.cid(), 1, ext));
  emmlib_FreeImageCopyExt(&ext);
  EXPECT_EQ(nullptr, ext);

  EXPECT_EQ(0u, emmlib_UpdateImageStorageServiceState(cat.cid(), 1, kMaster, "c_100", 2));
  EXPECT_EQ(2, cat.Number("SELECT StorageServiceState FROM DBM_Image"));
  EXPECT_EQ(0, cat.Number("SELECT StorageServiceIsInactive FROM DBM_Image"));
  EXPECT_EQ(0u, emmlib_UpdateImageStorageServiceState(cat.cid(), 1, kMaster, "c_100", 9));
  EXPECT_EQ(1, cat.Number("SELECT StorageServiceState FROM DBM_Image"));
  EXPECT_EQ(1, cat.Number("SELECT StorageServiceIsInactive FROM DBM_Image"));
  EXPECT_EQ(EMMLIB_NO_SUCH_RECORD,
            emmlib_UpdateImageStorageServiceState(cat.cid(), 1, kMaster, "c_999", 2));
  EXPECT_EQ(EMMLIB_NO_SUCH_RECORD,
            emmlib_UpdateImageStorageServiceState(cat.cid(), 1, "other.example.com", "c_100", 2));
}

TEST(DeletedFragments, EmptiedPerMasterAndImage) {
  TestCatalog cat;
  cat.Exec("INSERT INTO DBM_DeletedFragment (MasterServerKey, BackupID, CopyNumber) VALUES"
           " (1, 'a_1', 1), (1, 'a_1', 2), (1, 'b_2', 1), (2, 'a_1', 1)");
  EXPECT_EQ(0u, emmlib_DeleteDeletedImageFragments(cat.cid(), 3, kMaster, "a_1", 2, -1, -1, -1));
  EXPECT_EQ(3, cat.Number("SELECT COUNT(*) FROM DBM_DeletedFragment"));
  EXPECT_EQ(0u, emmlib_DeleteDeletedImageFragments(cat.cid(), 3, kMaster, "a_1", 0, -1, -1, -1));
  EXPECT_EQ(2, cat.Number("SELECT COUNT(*) FROM DBM_DeletedFragment"));
  EXPECT_EQ(0u, emmlib_DeleteDeletedImageFragments(cat.cid(), 3, kMaster, nullptr, 0, -1, -1, -1));
  EXPECT_EQ(1, cat.Number("SELECT COUNT(*) FROM DBM_DeletedFragment WHERE MasterServerKey = 2"));
  EXPECT_EQ(1, cat.Number("SELECT COUNT(*) FROM DBM_DeletedFragment"));
}

TEST(Definitions, SlpVersionsWithOperationsAndClassifications) {
  TestCatalog cat;
  int status = -1;
  EXPECT_EQ(nullptr, db_getAllStorageServicesWithAllVersions(&status));
  EXPECT_EQ(0, status);
  cat.Exec("INSERT INTO SLP_StorageService (StorageServiceKey, StorageServiceName, VersionNumber,"
           " Flags) VALUES (1, 'zulu', 1, 0), (2, 'alpha', 2, 8), (3, 'alpha', 1, 0);"
           "INSERT INTO SLP_StorageServiceOperation (StorageServiceKey, OperationIndex, CopyType,"
           " Destination, TargetDomain) VALUES (3, 2, 1, 'tape', ''), (3, 1, 0, 'disk', ''),"
           " (1, 1, 3, 'import_slp', 'remote1')");
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
  EXPECT_EQ("alpha v1 f0: 1/0/disk/ 2/1/tape/\nalpha v2 f8:\nzulu v1 f0: 1/3/import_slp/remote1\n",
            text);
  db_freeSS_LISTs(list);

  cat.Exec("INSERT INTO EMM_DataClassification VALUES ('id-silver', 'Silver', 3, ''),"
           " ('id-gold', 'Gold', 2, '')");
  DATA_CLASS_LIST* classes = db_getDATA_CLASS_LIST(&status);
  EXPECT_EQ(0, status);
  ASSERT_NE(nullptr, classes);
  EXPECT_STREQ("Gold", classes->name);
  EXPECT_STREQ("id-gold", classes->identifier);
  ASSERT_NE(nullptr, classes->next);
  EXPECT_STREQ("Silver", classes->next->name);
  EXPECT_EQ(nullptr, classes->next->next);
  db_freeDATA_CLASS_LIST(classes);

  EXPECT_EQ(0, db_get_Policy_Category());
  cat.Exec("INSERT INTO EMM_Parameter VALUES ('PolicyCategory', 1)");
  EXPECT_EQ(1, db_get_Policy_Category());
}

}  // namespace
