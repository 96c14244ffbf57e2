// End-to-end tests of the start-up connection to the catalog: an operation
// that reads the catalog ends with status 1 and one line on standard error
// when the catalog cannot be opened, and finds the catalog that EMM_CATALOG
// names.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/e2e/catalog_lock.h"
#include "tests/e2e/harness.h"

namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::HasSubstr;

const char kCannotConnect[] = "cyclectl: error connecting to EMM database, status=2007060\n";

TEST(CatalogOpen, UnusableCatalogEndsTheRunBeforeAnyOutput) {
  struct Case {
    const char* name;
    const char* catalogText;  // written over db/catalog.db; null: removed
  };
  const Case cases[] = {{"missing", nullptr}, {"not a database", "not a catalog at all\n"}};
  for (const Case& c : cases) {
    e2e::Root root;
    if (c.catalogText == nullptr) {
      root.Remove("db/catalog.db");
    } else {
      root.WriteFile("db/catalog.db", std::string(4096, 'x') + c.catalogText);
    }
    EXPECT_EQ(root.Run({"list"}), (e2e::Result{"", kCannotConnect, 1})) << c.name;
    EXPECT_THAT(root.DebugLogMessages(),
                Contains(AllOf(HasSubstr("<16> cyclectl: emmlib_initialize: cannot open catalog"),
                               HasSubstr("db/catalog.db"))))
        << c.name;
    if (c.catalogText == nullptr) {
      EXPECT_FALSE(std::filesystem::exists(root.path() + "/db/catalog.db"))
          << "opening must not create a catalog";
    }
  }
}

// The reports over the catalog library end the same way when the catalog is
// missing, damaged, without its image table or locked past the busy timeout.
TEST(CatalogOpen, ReportsOnAnUnusableCatalog) {
  const std::vector<std::vector<std::string>> reports = {
      {"stlilist"}, {"report"}, {"showvol", "-mediaid", "vol1"}};
  for (const auto& args : reports) {
    e2e::Root root;
    root.Sql("DROP TABLE DBM_Image;");
    EXPECT_EQ(root.Run(args), (e2e::Result{"", kCannotConnect, 1})) << args[0] << " table-less";
    root.WriteFile("db/catalog.db", std::string(4096, 'x'));
    EXPECT_EQ(root.Run(args), (e2e::Result{"", kCannotConnect, 1})) << args[0] << " damaged";
    root.Remove("db/catalog.db");
    EXPECT_EQ(root.Run(args), (e2e::Result{"", kCannotConnect, 1})) << args[0] << " missing";
  }

  // Locked past the busy timeout: the run waits that long once, however
  // many connections it opens.
  e2e::Root root;
  root.SetConfig("CATALOG_BUSY_TIMEOUT", "1000");
  e2e::CatalogLock lock(root, "BEGIN EXCLUSIVE");
  for (const auto& args : reports) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(root.Run(args),
              (e2e::Result{"", "cyclectl: error connecting to EMM database, status=2007061\n", 1}))
        << args[0] << " locked";
    const auto waited = std::chrono::duration_cast<std::chrono::milliseconds>(
                            std::chrono::steady_clock::now() - start)
                            .count();
    EXPECT_GE(waited, 900) << args[0];
    EXPECT_LT(waited, 1600) << args[0];
  }
}

TEST(CatalogOpen, UsesTheConfiguredCatalog) {
  e2e::Root root;
  root.Sql("INSERT INTO DBM_Image (MasterServerKey, ClientMachineName, BackupTime)"
           " VALUES (1, 'client1', 1000)");
  std::filesystem::rename(root.path() + "/db/catalog.db", root.path() + "/db/other.db");

  root.SetConfig("EMM_CATALOG", "db/other.db");
  EXPECT_EQ(root.Run({"list", "-rt", "I", "-b"}), (e2e::Result{"client1_1000\n", "", 0}));

  root.SetConfig("EMM_CATALOG", root.path() + "/db/other.db");
  EXPECT_EQ("client1_1000\n", root.Run({"list", "-rt", "I", "-b"}).out);

  root.SetConfig("EMM_CATALOG", "db/none.db");
  EXPECT_EQ(root.Run({"list"}), (e2e::Result{"", kCannotConnect, 1}));
}

}  // namespace
