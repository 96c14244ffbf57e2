// End-to-end tests of `cyclectl report`: rollup, selections, empty or damaged catalog.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"

namespace {

const char kLongName[] = "Long_Term_Retention_For_Audit_Records_2026_XY";  // 45 characters
const char kLongestWhole[] = "Weekly_Full_Backups_To_Cloud_Tier_2026X";      // 39 characters
const long kMiB = 1048576;

const char kHeader[] =
    "SLP Name: (state)                                 Number of copies: Size:  \n";

class ReportTest : public e2e::CatalogTest {
 protected:
  e2e::Result Report(std::vector<std::string> args = {}) {
    args.insert(args.begin(), "report");
    return root_.Run(args);
  }
  std::string Image(const std::string& client, const std::string& slp, int version, int state) {
    return AddImage(client, 1000,
                    "StorageServiceName = '" + slp + "', StorageServiceVersionNumber = " +
                        std::to_string(version) + ", StorageServiceState = " +
                        std::to_string(state & 7) + ", StorageServiceIsInactive = " +
                        std::to_string(state >> 3));
  }
  // True when a line of the debug log begins with `start`.
  bool Logged(const std::string& start) {
    for (const std::string& line : root_.DebugLogMessages()) {
      if (line.compare(0, start.size(), start) == 0) return true;
    }
    return false;
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
  EXPECT_EQ(Report(),
            (e2e::Result{
                std::string("\nBacklog of incomplete SLP Copies\n"
                            "\tNot Started (Storage Lifecycle State: 1):\n"
                            "\t\tNumber of copies:\t2\n\t\tTotal expected size\t3 MB\n"
                            "\tIn Process (Storage Lifecycle State: 2):\n"
                            "\t\tNumber of copies:\t3\n\t\tTotal expected size\t4 MB\n"
                            "\tNot Started | Inactive (Storage Lifecycle State: 9):\n"
                            "\t\tNumber of copies:\t2\n\t\tTotal expected size\t <1 MB\n"
                            "\tIn Process | Inactive (Storage Lifecycle State: 10):\n"
                            "\t\tNumber of copies:\t2\n\t\tTotal expected size\t2 MB\n"
                            "\n") +
                    kHeader +
                    "Long_Term_Retention_For_Audit_Recor... (active)                1          <1 MB\n"
                    "Weekly_Full_Backups_To_Cloud_Tier_2026X (active)               1           2 MB\n"
                    "done (active)                                                  0          <1 MB\n"
                    "ghost (active)                                                 1           2 MB\n"
                    "slpA (active)                                                  4           5 MB\n"
                    "slpInactive (inactive)                                         2           1 MB\n"
                    "\n"
                    "Total:                                                         9          10 MB\n"
                    "\n",
                "Unknown SLP name <ghost> version 1\n", 0}));
  // The other version's image has copies left, so it is left out.
  EXPECT_EQ(Report({"-lifecycle", "slpA", "-version", "1"}),
            (e2e::Result{
                std::string("\nBacklog of incomplete SLP Copies\n"
                            "\tNot Started (Storage Lifecycle State: 1):\n"
                            "\t\tNumber of copies:\t2\n\t\tTotal expected size\t3 MB\n"
                            "\n") +
                    kHeader +
                    "slpA (active)                                                  2           3 MB\n"
                    "\n"
                    "Total:                                                         2           3 MB\n"
                    "\n",
                "", 0}));
  // Rows were read, so the tables are printed even when none is selected.
  EXPECT_EQ(Report({"-lifecycle", "none"}),
            (e2e::Result{
                std::string("\nBacklog of incomplete SLP Copies\n\n") + kHeader +
                    "\n"
                    "Total:                                                         0           0 MB\n"
                    "\n",
                "", 0}));
}

TEST_F(ReportTest, NothingToProcess) {
  const e2e::Result none{"\nNo images to process\n\n", "", 0};
  EXPECT_EQ(Report(), none);
  AddSlp("slpA", 1, 1);
  Copy(Image("a", "slpA", 1, 3), 1, 5, {kMiB});
  Copy(Image("b", "", 0, 0), 1, 1, {kMiB});
  EXPECT_EQ(Report(), none);
}

TEST_F(ReportTest, CatalogFailures) {
  Copy(Image("a", "slpA", 1, 1), 1, 1, {kMiB});
  // The image query fails: only the log says so.
  root_.Sql("DROP TABLE DBM_ImageFragment;");
  EXPECT_EQ(Report(), (e2e::Result{"", "", 0}));
  EXPECT_TRUE(Logged("<16> cyclectl: Error querying image list, status= 20070"));
  // The SLP definitions cannot be read.
  root_.Sql("DROP TABLE SLP_StorageServiceOperation;");
  e2e::Result r = Report();
  EXPECT_EQ("", r.out);
  EXPECT_EQ(0u, r.err.find("Can't obtain SLP definitions, error status = 20070")) << r.err;
  EXPECT_EQ(0, r.status);
}

}  // namespace
