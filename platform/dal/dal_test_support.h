// Test support for the data-access layer and its users: a catalog database
// file in a fresh temporary directory, filled with SQL of the test's choice
// (or the catalog schema of the source tree), and a connection on it. When
// STASHWELL_TEST_PGSERVER names a test server's folder (tests/pg/pg-server),
// the catalog is a fresh database on that server instead, so that the same
// tests send the same statements to PostgreSQL.
#ifndef PLATFORM_DAL_DAL_TEST_SUPPORT_H_
#define PLATFORM_DAL_DAL_TEST_SUPPORT_H_

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "platform/dal/dal.h"
#include "platform/sqldb/sqldb.h"

namespace Corvela {
namespace Dal {

class TempCatalog {
 public:
  TempCatalog() {
    char dir[] = "/tmp/dal-test-XXXXXX";
    dir_ = mkdtemp(dir) ? dir : "";
    path_ = dir_ + "/catalog.db";
    const char* server = getenv("STASHWELL_TEST_PGSERVER");
    if (server == nullptr || *server == '\0') return;
    std::ifstream uri(std::string(server) + "/uri");
    std::getline(uri, server_);
    database_ = "dal_" + dir_.substr(dir_.rfind('-') + 1);
    for (char& c : database_) c = static_cast<char>(tolower(static_cast<unsigned char>(c)));
    OnServer("CREATE DATABASE " + database_);
  }
  ~TempCatalog() {
    std::error_code ignored;
    std::filesystem::remove_all(dir_, ignored);
    if (!database_.empty()) OnServer("DROP DATABASE IF EXISTS " + database_ + " WITH (FORCE)");
  }
  bool onPostgres() const { return !database_.empty(); }
  TempCatalog(const TempCatalog&) = delete;
  TempCatalog& operator=(const TempCatalog&) = delete;

  const std::string& dir() const { return dir_; }
  const std::string& path() const { return path_; }
  CatalogLocation location(int busyTimeoutMs = 2000) const {
    CatalogLocation where;
    if (onPostgres()) {
      where.engine = sqldb::Engine::kPostgres;
      where.conninfo = server_ + "/" + database_;
      where.display = where.conninfo;
    } else {
      where.path = path_;
    }
    where.busyTimeoutMs = busyTimeoutMs;
    return where;
  }

  // Runs statements directly (creating the file on first use).
  void Exec(const std::string& sql) const {
    const std::unique_ptr<sqldb::Database> db = Open();
    ASSERT_TRUE(db);
    const std::string prefix = onPostgres() ? "BEGIN; " : "PRAGMA synchronous = OFF; BEGIN; ";
    ASSERT_EQ(db->Exec(prefix + sql + "; COMMIT;"), sqldb::Code::kOk) << db->LastError();
  }

  // A connection of its own (another process's, as far as the layer can
  // tell), creating the file when it is missing.
  std::unique_ptr<sqldb::Database> Open() const {
    std::unique_ptr<sqldb::Database> db;
    std::string why;
    EXPECT_EQ(sqldb::Open(location(0), sqldb::OpenMode::kCreate, &db, &why), sqldb::Code::kOk)
        << why;
    return db;
  }

  // Creates the catalog with the schema of the source tree.
  void ApplySchema() const {
    std::ifstream in(STASHWELL_SOURCE_DIR "/platform/emmlib/" +
                     std::string(onPostgres() ? "schema_postgresql.sql" : "schema.sql"));
    ASSERT_TRUE(in.good());
    std::stringstream text;
    text << in.rdbuf();
    Exec(text.str());
  }

 private:
  // Runs `sql` in the server's maintenance database.
  void OnServer(const std::string& sql) const {
    CatalogLocation where;
    where.engine = sqldb::Engine::kPostgres;
    where.conninfo = server_ + "/postgres";
    std::unique_ptr<sqldb::Database> db;
    std::string why;
    ASSERT_EQ(sqldb::Open(where, sqldb::OpenMode::kCreate, &db, &why), sqldb::Code::kOk) << why;
    ASSERT_EQ(db->Exec(sql), sqldb::Code::kOk) << db->LastError();
  }

  std::string dir_;
  std::string path_;
  std::string server_;    // the test server's base URI
  std::string database_;  // the catalog's database there
};

// A leased connection and a view on a TempCatalog, all released at the end.
class DalConnectionTest : public ::testing::Test {
 protected:
  // Opens the catalog after the test has filled it.
  void Connect(bool readOnly = false) {
    const CatalogLocation where = catalog_.location();
    manager_.reset(
        new DbConnectionManager(2, 32, 1, 1, 30, 15, 40, USERID_SLP_ADMIN, readOnly, &where));
    ASSERT_TRUE(manager_->isUsable());
    ASSERT_EQ(manager_->Lease(&connection_), DAL_SUCCESS);
    int status = -1;
    view_ = connection_->GetOdbcView(&status);
    ASSERT_EQ(status, DAL_SUCCESS);
  }

  void TearDown() override {
    if (connection_) connection_->ReturnOdbcView(view_);
    manager_.reset();
  }

  int Execute(const std::string& sql, const DalBinding* bindings = nullptr) {
    return connection_->Execute(view_, sql, bindings, LOG_AT_VERBOSITY_5, "test", false, false);
  }

  TempCatalog catalog_;
  std::unique_ptr<DbConnectionManager> manager_;
  MSRDbConnection* connection_ = nullptr;
  DalOdbcView* view_ = nullptr;
};

}  // namespace Dal
}  // namespace Corvela

#endif  // PLATFORM_DAL_DAL_TEST_SUPPORT_H_
