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
    ASSERT_EQ(sqldb::Code::kOk, Catalog()->Exec(kCatalogSchemaSql));
  }

  void SetUp() override { Clear(); }

  static void Clear() {
    ASSERT_EQ(sqldb::Code::kOk, Catalog()->Exec("DELETE FROM SLP_PendingImport"));
  }

  // A connection of the test's own to the catalog, created when missing.
  static std::unique_ptr<sqldb::Database> Catalog() {
    sqldb::Location where;
    where.path = testing_root::Path() + "/db/catalog.db";
    std::unique_ptr<sqldb::Database> db;
    std::string why;
    EXPECT_EQ(sqldb::Code::kOk, sqldb::Open(where, sqldb::OpenMode::kCreate, &db, &why)) << why;
    return db;
  }

  // Each listed entry as "backup id|copy|media server|LSU|server|type|media|
  // description|origin|SLP|status", freeing the list as the caller must.
  static std::vector<std::string> Listed() {
    PendingImportFragment* list = nullptr;
    EXPECT_EQ(IMPMGR_OK, ImpMgrComm_ListAllImportPendingFragments(0, kMaster, nullptr, &list));
    std::vector<std::string> rows;
    while (list != nullptr) {
      PendingImportFragment* next = list->next;
      std::string row;
      for (char* text : {list->backupId, list->mediaServer, list->lsuName, list->storageServerName,
                         list->storageServerType, list->mediaId, list->fragmentDescription,
                         list->originMasterServer, list->slpName}) {
        row += std::string(text) + "|";
        free(text);
      }
      rows.push_back(row + std::to_string(list->copyNumber) + "|" +
                     std::to_string(list->importStatus));
      free(list);
      list = next;
    }
    return rows;
  }

  static int Add(std::vector<TestImportImage>& images, const char* mediaServer = "ms1") {
    for (size_t i = 0; i + 1 < images.size(); ++i) images[i].next = &images[i + 1];
    TestImportImage* head = images.empty() ? nullptr : &images[0];
    return ImpMgrComm_AddEXTImageToImportQueue(0, kMaster, nullptr, mediaServer, "slp_a", "origin1",
                                               &head);
  }
};

TEST_F(ImportQueueTest, AListIsStoredWholeOrNotAtAll) {
  char a[] = "img_a", b[] = "img_b", empty[] = "";
  std::vector<TestImportImage> refused = {
      {nullptr, nullptr, nullptr, a, nullptr},
      {nullptr, nullptr, nullptr, empty, nullptr},
  };
  EXPECT_EQ(IMPMGR_EMPTY_IMAGE_NAME, Add(refused));
  EXPECT_TRUE(Listed().empty());

  std::vector<TestImportImage> both = {
      {nullptr, nullptr, nullptr, a, nullptr},
      {nullptr, nullptr, nullptr, b, nullptr},
  };
  EXPECT_EQ(IMPMGR_OK, Add(both));
  EXPECT_EQ(Listed().size(), 2u);
}

TEST_F(ImportQueueTest, RefusedArgumentsStoreNothing) {
  char name[] = "img";
  TestImportImage image = {nullptr, nullptr, nullptr, name, nullptr};
  TestImportImage* head = &image;
  TestImportImage* none = nullptr;
  EXPECT_EQ(IMPMGR_INVALID_ARGUMENT,
            ImpMgrComm_AddEXTImageToImportQueue(0, "", nullptr, "", "", "", &head));
  EXPECT_EQ(IMPMGR_INVALID_ARGUMENT,
            ImpMgrComm_AddEXTImageToImportQueue(0, kMaster, nullptr, "", "", "", &none));
  image.imageName = nullptr;
  EXPECT_EQ(IMPMGR_EMPTY_IMAGE_NAME,
            ImpMgrComm_AddEXTImageToImportQueue(0, kMaster, nullptr, "", "", "", &head));
  EXPECT_TRUE(Listed().empty());

  PendingImportFragment* list = reinterpret_cast<PendingImportFragment*>(&image);
  EXPECT_EQ(IMPMGR_INVALID_ARGUMENT,
            ImpMgrComm_ListAllImportPendingFragments(0, nullptr, nullptr, &list));
  EXPECT_EQ(list, nullptr);
}

}  // namespace
