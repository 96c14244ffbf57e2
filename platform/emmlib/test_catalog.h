// Test support for the catalog library's unit tests: a catalog database with
// the real schema in a fresh temporary directory, this master recorded as a
// machine, a library connection to it, and small helpers to insert images,
// copies and fragments.
#ifndef PLATFORM_EMMLIB_TEST_CATALOG_H_
#define PLATFORM_EMMLIB_TEST_CATALOG_H_

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "platform/emmlib/catalog_schema.h"
#include "platform/emmlib/emmlib.h"
#include "platform/sqldb/sqldb.h"

namespace emm_test {

constexpr const char kMaster[] = "master1.example.com";

class TestCatalog {
 public:
  TestCatalog() {
    char tmpl[] = "/tmp/emmlib-test-XXXXXX";
    dir_ = mkdtemp(tmpl);
    path_ = dir_ + "/catalog.db";
    sqldb::Location where;
    where.path = path_;
    std::string why;
    EXPECT_EQ(sqldb::Code::kOk, sqldb::Open(where, sqldb::OpenMode::kCreate, &db_, &why)) << why;
    Exec("PRAGMA synchronous = OFF");
    Exec(std::string("BEGIN;") + kCatalogSchemaSql + "COMMIT;");
    Exec(
        "INSERT INTO EMM_Machine VALUES (1, 1, 'master1.example.com', 3, '');"
        "INSERT INTO EMM_MachineAlias VALUES (1, 1, 'master1.example.com', 3);"
        "INSERT INTO EMM_MachineAlias VALUES (2, 1, 'master1', 5);"
        "INSERT INTO EMM_Machine VALUES (2, 2, 'other.example.com', 3, '');"
        "INSERT INTO EMM_MachineAlias VALUES (3, 2, 'other.example.com', 3);");
    EXPECT_EQ(0u, emmlib_initialize(&cid_, 0, kMaster, 1556, path_.c_str(), nullptr, "test"));
  }
  ~TestCatalog() {
    emmlib_terminate(&cid_);
    db_.reset();
    unlink(path_.c_str());
    rmdir(dir_.c_str());
  }
  TestCatalog(const TestCatalog&) = delete;
  TestCatalog& operator=(const TestCatalog&) = delete;

  int* cid() { return &cid_; }
  const std::string& path() const { return path_; }
  sqldb::Database* db() const { return db_.get(); }

  void Exec(const std::string& sql) {
    ASSERT_EQ(sqldb::Code::kOk, db_->Exec(sql)) << db_->LastError() << "\n" << sql;
  }

  // Inserts an image of this master; `extra` are "Column = value" settings
  // (comma separated) applied afterwards. Returns its key.
  int64_t AddImage(const std::string& client, int64_t backupTime, const std::string& extra = "",
                   int masterKey = 1) {
    Exec("INSERT INTO DBM_Image (MasterServerKey, ClientMachineName, BackupTime) VALUES (" +
         std::to_string(masterKey) + ", '" + client + "', " + std::to_string(backupTime) + ")");
    int64_t key = db_->LastInsertKey("DBM_Image", "ImageKey");
    if (!extra.empty()) Exec("UPDATE DBM_Image SET " + extra + " WHERE ImageKey = " + Key(key));
    return key;
  }
  int64_t AddCopy(int64_t image, int copyNumber, const std::string& extra = "") {
    Exec("INSERT INTO DBM_ImageCopy (ImageKey, CopyNumber) VALUES (" + Key(image) + ", " +
         std::to_string(copyNumber) + ")");
    int64_t key = db_->LastInsertKey("DBM_ImageCopy", "ImageCopyKey");
    if (!extra.empty()) {
      Exec("UPDATE DBM_ImageCopy SET " + extra + " WHERE ImageCopyKey = " + Key(key));
    }
    return key;
  }
  int64_t AddFragment(int64_t copy, int fragmentNumber, const std::string& extra = "") {
    Exec("INSERT INTO DBM_ImageFragment (ImageCopyKey, FragmentNumber) VALUES (" + Key(copy) +
         ", " + std::to_string(fragmentNumber) + ")");
    int64_t key = db_->LastInsertKey("DBM_ImageFragment", "FragmentKey");
    if (!extra.empty()) {
      Exec("UPDATE DBM_ImageFragment SET " + extra + " WHERE FragmentKey = " + Key(key));
    }
    return key;
  }

  // The images of a linked list, one line each: backup id, then per copy
  // "|c<number> s<state>" with its fragments " f<number>:<media>".
  static std::string Describe(const EMM_Image* list) {
    std::string text;
    for (const EMM_Image* image = list; image != nullptr; image = image->next) {
      text += image->BackupID;
      for (const EMM_ImageCopy* c = image->copies; c != nullptr; c = c->next) {
        text += " |c" + std::to_string(c->CopyNumber) + " s" + std::to_string(c->CopyState);
        for (const EMM_ImageFragment* f = c->fragments; f != nullptr; f = f->next) {
          text += " f" + std::to_string(f->FragmentNumber) + ":" + f->MediaID;
        }
      }
      text += "\n";
    }
    return text;
  }

  // Every flat row of a raw image query, fetched `batch` rows at a time.
  std::vector<Legacy_ImageView> RawRows(uint64_t handle, unsigned batch = 500) {
    std::vector<Legacy_ImageView> all;
    std::vector<Legacy_ImageView> buffer(batch);
    for (;;) {
      unsigned count = batch;
      unsigned status = emmlib_ImageQueryFetchRaw(&cid_, 3, handle, &count, buffer.data());
      if (status == EMMLIB_END_OF_DATA) {
        EXPECT_EQ(0u, count);
        break;
      }
      EXPECT_EQ(0u, status);
      if (status != 0) break;
      all.insert(all.end(), buffer.begin(), buffer.begin() + count);
    }
    return all;
  }

 private:
  static std::string Key(int64_t key) { return std::to_string(key); }

  std::string dir_;
  std::string path_;
  std::unique_ptr<sqldb::Database> db_;
  int cid_ = 0;
};

}  // namespace emm_test

#endif  // PLATFORM_EMMLIB_TEST_CATALOG_H_
