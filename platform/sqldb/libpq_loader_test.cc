// Tests of loading libpq late: what a machine without it, or with one too
// old, is told, and that a run on a SQLite catalog never loads it.
#include "platform/sqldb/libpq_loader.h"

#include <gtest/gtest.h>
#include <link.h>

#include <cstring>
#include <memory>
#include <string>

#include "platform/sqldb/sqldb.h"

namespace sqldb {
namespace {

bool LibpqMapped() {
  return dl_iterate_phdr(
             [](dl_phdr_info* info, size_t, void*) {
               return strstr(info->dlpi_name, kLibpqFile) != nullptr ? 1 : 0;
             },
             nullptr) != 0;
}

TEST(LibpqLoader, NamesWhatIsMissingAndThePackage) {
  static const struct {
    const char* file;
    bool ok;
    const char* named;
  } cases[] = {
      {kLibpqFile, true, ""},
      {"libpq-absent.so.5", false, "libpq-absent.so.5 cannot be loaded"},
      // A library without libpq's functions fails on the first one looked up.
      {"libc.so.6", false, "libc.so.6 has no PQcancel: install version 14"},
  };
  for (const auto& c : cases) {
    std::string why;
    EXPECT_EQ(c.ok, CheckLibpqAt(c.file, &why)) << c.file << ": " << why;
    EXPECT_NE(std::string::npos, why.find(c.named)) << why;
    if (!c.ok) {
      EXPECT_NE(std::string::npos, why.find("the package libpq5")) << why;
    }
  }
}

TEST(LibpqLoader, SqliteCatalogLeavesItUnloaded) {
  if (LibpqMapped()) GTEST_SKIP() << "an earlier test of this process loaded libpq";
  Location where;
  where.path = ":memory:";
  std::unique_ptr<Database> db;
  std::string why;
  ASSERT_EQ(Code::kOk, Open(where, OpenMode::kCreate, &db, &why)) << why;
  EXPECT_FALSE(LibpqMapped());
}

}  // namespace
}  // namespace sqldb
