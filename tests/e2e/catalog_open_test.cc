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

const char kCannotConnect[] = "cyclectl: error connecting to EMM database, status=2007060\n";

// Spoils the catalog of a root: garbage over the file, or the database
// without its image schema.
void Damage(e2e::Root& root) {
  if (e2e::OnPostgres())
    root.Sql("SET client_min_messages = warning; DROP SCHEMA DBM_Main CASCADE");
  else
    root.WriteFile("db/catalog.db", std::string(4096, 'x') + "not a catalog at all\n");
}

// Operations over the data-access layer, the catalog library's reports and
// the writing operations alike.
const std::vector<std::vector<std::string>> kOperations = {
    {"list"},
    {"stlilist"},
    {"report"},
    {"showvol", "-mediaid", "vol1"},
    {"remove_exp", "-nowarn"},
    {"redo", "-backupid", "client1_1000", "-slpindex", "2"}};

TEST(CatalogOpen, UnusableCatalogEndsTheRunBeforeAnyOutput) {
  const struct {
    const char* name;
    void (*spoil)(e2e::Root&);
  } spoils[] = {{"without images", [](e2e::Root& r) { r.Sql("DROP TABLE DBM_Image;"); }},
                {"not a catalog", Damage},
                {"missing", [](e2e::Root& r) { r.RemoveCatalog(); }}};
  for (const auto& args : kOperations) {
    e2e::Root root;
    for (const auto& s : spoils) {
      SCOPED_TRACE(args[0] + ", " + s.name);
      s.spoil(root);
      root.Remove("logs/admin");
      root.WriteFile("logs/admin/.keep", "");
      EXPECT_EQ(root.Run(args), (e2e::Result{"", kCannotConnect, 1}));
      const std::string fileOrDatabase = root.catalog().substr(root.catalog().rfind('/') + 1);
      EXPECT_THAT(root.DebugLogMessages(),
                  ::testing::Contains(::testing::AllOf(
                      ::testing::HasSubstr("<16> cyclectl: emmlib_initialize: cannot open catalog"),
                      ::testing::HasSubstr(fileOrDatabase))));
    }
    if (!e2e::OnPostgres()) {
      EXPECT_FALSE(std::filesystem::exists(root.catalog())) << "opening must not create a catalog";
    }
  }
}

// Locked past the busy timeout: the run waits that long once, however many
// connections it opens.
TEST(CatalogOpen, LockedCatalogEndsTheRunAfterTheBusyTimeout) {
  e2e::Root root;
  root.SetConfig("CATALOG_BUSY_TIMEOUT", "1000");
  e2e::CatalogLock lock(root, "", e2e::CatalogLock::kEverything);
  for (const auto& args : {kOperations[1], kOperations[2], kOperations[3]}) {
    SCOPED_TRACE(args[0]);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(root.Run(args),
              (e2e::Result{"", "cyclectl: error connecting to EMM database, status=2007061\n", 1}));
    const std::chrono::duration<double> waited = std::chrono::steady_clock::now() - start;
    EXPECT_GE(waited.count(), 0.9);
    EXPECT_LT(waited.count(), 1.6);
  }
}

TEST(CatalogOpen, UsesTheConfiguredCatalog) {
  e2e::Root root, other;
  other.Sql(
      "INSERT INTO DBM_Image (MasterServerKey, ClientMachineName, BackupTime)"
      " VALUES (1, 'client1', 1000)");
  root.SetConfig("EMM_CATALOG", other.catalog());
  EXPECT_EQ(root.Run({"list", "-rt", "I", "-b"}), (e2e::Result{"client1_1000\n", "", 0}));

  if (!e2e::OnPostgres()) {
    // A relative file name is taken from the root.
    std::filesystem::rename(other.catalog(), root.path() + "/db/other.db");
    root.SetConfig("EMM_CATALOG", "db/other.db");
    EXPECT_EQ("client1_1000\n", root.Run({"list", "-rt", "I", "-b"}).out);
  }
  other.RemoveCatalog();
  root.SetConfig("EMM_CATALOG", other.catalog());
  EXPECT_EQ(root.Run({"list"}), (e2e::Result{"", kCannotConnect, 1}));
}

}  // namespace
