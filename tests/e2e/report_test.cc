// End-to-end tests of `cyclectl report`: rollup, selections, empty or damaged catalog.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"

namespace {

const char kLongName[] = "Long_Term_Retention_For_Audit_Records_2026_XY";  // 45 characters
const char kLongestWhole[] = "Weekly_Full_Backups_To_Cloud_Tier_2026X";    // 39 characters
const long kMiB = 1048576;

class ReportTest : public e2e::CatalogTest {
 protected:
  ReportTest() : CatalogTest("report") {}
  std::string Image(const std::string& client, const std::string& slp, int version, int state) {
    return AddImage(client, 1000,
                    "StorageServiceName = '" + slp +
                        "', StorageServiceVersionNumber = " + std::to_string(version) +
                        ", StorageServiceState = " + std::to_string(state & 7) +
                        ", StorageServiceIsInactive = " + std::to_string(state >> 3));
  }
  // A copy in `state` with one fragment per size given.
  void Copy(const std::string& image, int number, int state, std::vector<long> sizes = {}) {
    std::string copy = AddCopy(image, number, "CopyState = " + std::to_string(state));
    for (size_t i = 0; i < sizes.size(); ++i) {
      AddFragment(copy, static_cast<int>(i + 1), "FragmentSize = " + std::to_string(sizes[i]));
    }
  }
};

// One image of each unfinished state, an SLP the definitions lack, an
// inactive SLP, a name over 39 characters and one of 39, an image with
// nothing left, and a state totalling between 2 and 3 MiB.
class ReportRollupTest : public ReportTest {
 protected:
  void SetUp() override {
    AddSlp("slpA", 1, 3);
    AddSlp("slpA", 2, 1);
    AddSlp("slpInactive", 1, 2, 8);
    AddSlp(kLongName, 1, 1);
    AddSlp(kLongestWhole, 1, 1);
    AddSlp("done", 1, 1);
    // Not started, SLP of three operations, one copy done: two to make of
    // the first copy's 1.5 MiB.
    std::string a = Image("a", "slpA", 1, 1);
    Copy(a, 1, 3, {kMiB, kMiB / 2});
    // In process: the two copies neither JOBCOMPLETE nor COPYCOMPLETE
    // count, whatever the SLP defines.
    std::string b = Image("b", "slpA", 2, 2);
    Copy(b, 1, 3, {kMiB});
    Copy(b, 2, 5, {4 * kMiB});
    Copy(b, 3, 1);
    Copy(b, 4, 2);
    Copy(Image("c", "slpInactive", 1, 9), 1, 1, {3 * kMiB / 4});
    Copy(Image("d", kLongName, 1, 10), 1, 2, {1000});
    Copy(Image("h", kLongestWhole, 1, 10), 1, 2, {5 * kMiB / 2});
    Copy(Image("e", "ghost", 1, 2), 1, 1, {5 * kMiB / 2});
    Copy(Image("f", "done", 1, 2), 1, 5, {kMiB});
    Copy(Image("g", "slpA", 1, 3), 1, 1, {kMiB});  // complete: not examined
  }
};

TEST_F(ReportRollupTest, StatesSlpsAndSelections) {
  EXPECT_EQ(Run(), (e2e::Result{e2e::Golden("report/rollup.txt"),
                                "Unknown SLP name <ghost> version 1\n", 0}));
  // The other version's image has copies left, so it is left out.
  EXPECT_EQ(Run({"-lifecycle", "slpA", "-version", "1"}),
            (e2e::Result{e2e::Golden("report/rollup-slpA-1.txt"), "", 0}));
  // Rows were read, so the tables are printed even when none is selected.
  EXPECT_EQ(Run({"-lifecycle", "none"}),
            (e2e::Result{e2e::Golden("report/rollup-none.txt"), "", 0}));
}

TEST_F(ReportTest, NothingToProcessThenCatalogFailures) {
  const e2e::Result none{"\nNo images to process\n\n", "", 0};
  EXPECT_EQ(Run(), none);
  AddSlp("slpA", 1, 1);
  Copy(Image("a", "slpA", 1, 3), 1, 5, {kMiB});
  Copy(Image("b", "", 0, 0), 1, 1, {kMiB});
  EXPECT_EQ(Run(), none);
  Copy(Image("c", "slpA", 1, 1), 1, 1, {kMiB});
  // The image query fails: only the log says so.
  root_.Sql("DROP TABLE DBM_ImageFragment;");
  EXPECT_EQ(Run(), (e2e::Result{"", "", 0}));
  EXPECT_NE(root_.DebugLog().find("] <16> cyclectl: Error querying image list, status= 20070"),
            std::string::npos);
  // The SLP definitions cannot be read.
  root_.Sql("DROP TABLE SLP_StorageServiceOperation;");
  EXPECT_EQ(Run(), (e2e::Result{"", "Can't obtain SLP definitions, error status = 2007062\n", 0}));
}

}  // namespace
