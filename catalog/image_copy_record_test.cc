// The import-confirmation statement's condition, run through the data-access
// layer on the catalog schema. The rows it reads, oldest first, and the
// fields the report prints are shown end to end
// (tests/e2e/list_import_conf_test.cc).
#include "catalog/image_copy_record.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "catalog/database_connection.h"
#include "platform/dal/dal_test_support.h"

namespace {

using namespace Corvela::Dal;

class ImageCopyQueryTest : public ::testing::Test {
 protected:
  void SetUp() override {
    catalog_.ApplySchema();
    catalog_.Exec(
        "INSERT INTO DBM_Image (ImageKey, MasterServerKey, ClientMachineName, BackupTime, "
        "NumChildren, StorageServiceName, StorageServiceVersionNumber, LastBirthTime, "
        "CreatedDateTime, SLPOperationsMask, StorageServiceIsInactive) VALUES "
        "(1, 1, 'parent', 1000, 3, 'slp', 2, 900, 1700000000, 4294967295, 1),"
        "(2, 1, 'child', 2000, 0, 'it''s', 1, 0, 1700000001, 0, 0),"
        "(3, 1, 'other', 3000, 0, 'slp', 2, 0, 1700000002, 0, 0);"
        "UPDATE DBM_Image SET ParentImageKey = 1 WHERE ImageKey = 2;"
        "INSERT INTO DBM_ImageCopy (ImageCopyKey, ImageKey, CopyNumber, SLPIndex, CopyState, "
        "LastRetryTime, CopySize, ExpirationCount, Residence, WGKey) VALUES "
        "(10, 1, 2, 1, 14, 500, 1234, 7, '*Remote*Master*', 4294967295),"
        "(11, 1, 3, 2, 14, 400, 0, -3, '', 0),"
        "(12, 2, 2, 1, 14, 600, 0, 0, '', 0),"
        "(13, 3, 2, 1, 3, 100, 0, 0, '', 0)");
  }

  // The copy keys of the statement's rows for `condition`, fetched in
  // batches of 100.
  std::vector<uint64_t> Copies(const std::string& condition) {
    const CatalogLocation where = catalog_.location();
    DatabaseConnection db(USERID_SLP_ADMIN, &where);
    EXPECT_TRUE(db.connected);
    std::vector<uint64_t> copies;
    if (!db.connected) return copies;
    EXPECT_EQ(db.connection->Execute(db.view, ImageCopyStatement(condition), nullptr,
                                     LOG_AT_VERBOSITY_5, "DbConnection::Execute", false, false),
              DAL_SUCCESS);
    std::vector<image_copy_record> batch(100);
    for (;;) {
      unsigned int count = 100;
      const int status =
          db.connection->Fetch(db.view, batch.data(), sizeof(image_copy_record), imageCopyBind,
                               kImageCopyColumns, &count, true, false);
      if (status != DAL_SUCCESS) {
        EXPECT_EQ(status, DAL_NO_DATA);
        break;
      }
      for (unsigned int i = 0; i < count; ++i) copies.push_back(batch[i].copy.ImageCopyKey);
    }
    return copies;
  }

  TempCatalog catalog_;
};

TEST_F(ImageCopyQueryTest, ConditionNarrowsBySlpAndRetryTime) {
  static const struct {
    const char* slp;
    bool all;
    int64_t cutoff;
    std::vector<uint64_t> copies;
  } cases[] = {
      {nullptr, false, 500, {11}},  // strictly before the cutoff
      {nullptr, false, 501, {11, 10}},
      {"slp", true, 0, {11, 10}},  // image 3's copy is not pending
      {"it's", false, 1000, {12}},
      {"", true, 0, {11, 10, 12}},    // an empty name selects every SLP
      {"x' OR '1'='1", true, 0, {}},  // stays one text literal
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Copies(ImportPendingCondition(c.slp, c.all, c.cutoff)), c.copies)
        << (c.slp ? c.slp : "(none)") << " " << c.cutoff;
  }
}

}  // namespace
