// The import queue's refusals through its two calls (what a queued image
// lists as is shown end to end), on one catalog for the whole test process
// (the library keeps one connection per process).
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/emmlib/catalog_schema.h"
#include "platform/impmgr/impmgr.h"
#include "platform/sqldb/sqldb.h"
#include "platform/test_root.h"

namespace {

const char kMaster[] = "master1";

class ImportQueueTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    testing_root::Write("etc/stashwell.conf", "EMM_SERVER = master1\nMASTER_SERVER = master1\n");
    std::filesystem::create_directories(testing_root::Path() + "/db");
    sqldb::Location where;
    where.path = testing_root::Path() + "/db/catalog.db";
    std::unique_ptr<sqldb::Database> db;
    std::string why;
    ASSERT_EQ(sqldb::Code::kOk, sqldb::Open(where, sqldb::OpenMode::kCreate, &db, &why)) << why;
    ASSERT_EQ(sqldb::Code::kOk, db->Exec(kCatalogSchemaSql));
  }

  // How many entries are listed, freeing the list as the caller must.
  static size_t Listed() {
    PendingImportFragment* list = nullptr;
    EXPECT_EQ(IMPMGR_OK, ImpMgrComm_ListAllImportPendingFragments(0, kMaster, nullptr, &list));
    size_t count = 0;
    for (; list != nullptr; ++count) {
      PendingImportFragment* next = list->next;
      for (char* text : {list->backupId, list->mediaServer, list->lsuName, list->storageServerName,
                         list->storageServerType, list->mediaId, list->fragmentDescription,
                         list->originMasterServer, list->slpName}) {
        free(text);
      }
      free(list);
      list = next;
    }
    return count;
  }

  static int Add(std::vector<TestImportImage>& images) {
    for (size_t i = 0; i + 1 < images.size(); ++i) images[i].next = &images[i + 1];
    TestImportImage* head = &images[0];
    return ImpMgrComm_AddEXTImageToImportQueue(0, kMaster, nullptr, "ms1", "slp_a", "origin1",
                                               &head);
  }
};

TEST_F(ImportQueueTest, RefusalsStoreNothingAndAListIsStoredWhole) {
  char a[] = "img_a", b[] = "img_b", empty[] = "";
  std::vector<TestImportImage> images = {{nullptr, nullptr, nullptr, a, nullptr}};
  TestImportImage* head = &images[0];
  TestImportImage* none = nullptr;
  EXPECT_EQ(IMPMGR_INVALID_ARGUMENT,
            ImpMgrComm_AddEXTImageToImportQueue(0, "", nullptr, "", "", "", &head));
  EXPECT_EQ(IMPMGR_INVALID_ARGUMENT,
            ImpMgrComm_AddEXTImageToImportQueue(0, kMaster, nullptr, "", "", "", &none));
  images[0].imageName = nullptr;
  EXPECT_EQ(IMPMGR_EMPTY_IMAGE_NAME, Add(images));
  images = {{nullptr, nullptr, nullptr, a, nullptr}, {nullptr, nullptr, nullptr, empty, nullptr}};
  EXPECT_EQ(IMPMGR_EMPTY_IMAGE_NAME, Add(images));
  EXPECT_EQ(Listed(), 0u);

  PendingImportFragment* list = reinterpret_cast<PendingImportFragment*>(&images[0]);
  EXPECT_EQ(IMPMGR_INVALID_ARGUMENT,
            ImpMgrComm_ListAllImportPendingFragments(0, nullptr, nullptr, &list));
  EXPECT_EQ(list, nullptr);

  images[1].imageName = b;
  EXPECT_EQ(IMPMGR_OK, Add(images));
  EXPECT_EQ(Listed(), 2u);
}

}  // namespace
