// End-to-end tests of `cyclectl completion_report` on catalogs whose images
// lie in the last few days: the day each client was last complete, both
// print forms, the selections (bound, never spliced into the statements),
// the trace and the statuses of a failed connection, key lookup or
// statement.
#include <gtest/gtest.h>

#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"
#include "tests/e2e/test_data.h"

namespace {

const char kNothing[] = "No backup images found for given date range and selection values\n";

class CompletionReportTest : public e2e::CatalogTest {
 protected:
  CompletionReportTest() : CatalogTest("completion_report") {}
  // Runs see TZ=UTC, so a day starts at a multiple of 86400 seconds.
  static long DayStart(int daysAgo) {
    return static_cast<long>(time(nullptr)) / 86400 * 86400 - daysAgo * 86400L;
  }
  static std::string Date(int daysAgo, bool withTime) {
    const time_t t = DayStart(daysAgo);
    struct tm tm;
    gmtime_r(&t, &tm);
    char text[32];
    strftime(text, sizeof text, withTime ? "%Y/%m/%d %H:%M:%S" : "%Y/%m/%d", &tm);
    return text;
  }
  static std::string Row(const std::string& client, const std::string& day) {
    char line[128];
    snprintf(line, sizeof line, "%-50s%s\n", client.c_str(), day.c_str());
    return line;
  }

  // An image of `client` `daysAgo` days back (one hour into the day) in SLP
  // state `state`, with the settings `set`.
  void Image(const std::string& client, int daysAgo, int state, const std::string& set = "",
             int second = 3600) {
    std::string settings = "StorageServiceState = " + std::to_string(state);
    if (state != 0) settings += ", StorageServiceName = 'slp1'";
    if (state != 0 && set.find("StorageServiceVersionNumber") == std::string::npos)
      settings += ", StorageServiceVersionNumber = 1";
    if (!set.empty()) settings += ", " + set;
    AddImage(client, DayStart(daysAgo) + second, settings);
  }

  const std::string header_ = Row("Client name", "Most recent completion date");
};

// alpha: complete three days ago, unfinished yesterday and today.
// beta: unfinished on every day. gamma: complete today, at the day's last
// second, and two days ago (the newest day wins). delta: only unmanaged images. epsilon: complete
// and unfinished today, complete yesterday (and inactive, which still counts as unfinished).
class CompletionDaysTest : public CompletionReportTest {
 protected:
  void SetUp() override {
    Image("alpha", 3, 3);
    Image("alpha", 1, 2);
    Image("alpha", 0, 1);
    Image("beta", 2, 2);
    Image("beta", 0, 1, "StorageServiceIsInactive = 1");
    Image("gamma", 0, 3, "", 86399);
    Image("gamma", 2, 3);
    Image("delta", 1, 0);
    Image("epsilon", 0, 3);
    Image("epsilon", 0, 2, "", 7200);
    Image("epsilon", 1, 3);
    Image("epsilon", 1, 3, "", 7200);
  }
};

TEST_F(CompletionDaysTest, ByClientAndByDate) {
  EXPECT_EQ(Run({"-days", "7"}),
            (e2e::Result{header_ + Row("alpha", Date(3, false)) + Row("beta", "None") +
                             Row("epsilon", Date(1, false)) + Row("gamma", Date(0, false)),
                         "", 0}));
  // Two days back alpha's complete day is out of range.
  EXPECT_EQ(header_ + Row("alpha", "None") + Row("beta", "None") + Row("epsilon", Date(1, false)) +
                Row("gamma", Date(0, false)),
            Run({"-days", "2"}).out);
  EXPECT_EQ(Run({"-days", "0"}), (e2e::Result{kNothing, "", 0}));
  EXPECT_EQ(Run({"-days", "7", "-bydate"}),
            (e2e::Result{"\nNone complete\nbeta\n\n" + Date(3, true) + "\nalpha\n\n" +
                             Date(1, true) + "\nepsilon\n\n" + Date(0, true) + "\ngamma\n\n",
                         "", 0}));
}

TEST_F(CompletionReportTest, TheWalkEndsWithTheDayOfTheFirstSecondOf1970) {
  // Complete at the first second of 1970; unfinished one second before. The
  // output is the report's own for such days: a day starting at 0 is the
  // mark of "no complete day", and times within a year of 1970 print as
  // durations.
  AddImage("first", 0, "StorageServiceState = 3, StorageServiceName = 'slp1'");
  AddImage("before", -1, "StorageServiceState = 2, StorageServiceName = 'slp1'");
  const struct {
    const char* zone;
    std::string out;
  } cases[] = {
      {"UTC", header_ + Row("first", "None")},
      // West or east of Greenwich, the local day of second 0 starts in 1969
      // and holds the image before it too.
      {"EST5", header_ + Row("before", "None") + Row("first", "-19:00:00")},
      {"JST-9", header_ + Row("before", "None") + Row("first", "-9:00:00")},
  };
  for (const auto& c : cases) {
    e2e::RunOptions options;
    options.env = {std::string("TZ=") + c.zone};
    const time_t start = time(nullptr);
    EXPECT_EQ(root_.Run({"completion_report", "-days", "999999999999"}, "", options),
              (e2e::Result{c.out, "", 0}))
        << c.zone;
    // One statement per day: a server's round trips take longer than a file's.
    EXPECT_LT(time(nullptr) - start, e2e::OnPostgres() ? 45 : 20) << c.zone;
  }
}

TEST_F(CompletionReportTest, Selections) {
  Image("a", 1, 3, "PolicyName = 'pol1'");
  Image("a", 1, 2, "PolicyName = 'pol2'", 7200);
  Image("b", 1, 3, "PolicyName = 'pol1', StorageServiceVersionNumber = 2");
  const std::string aDone = Row("a", Date(1, false)), bDone = Row("b", Date(1, false));

  // Policy and client together: four parameters in the first statement.
  EXPECT_EQ(header_ + aDone, Run({"-policy", "pol1", "-client", "a"}).out);
  EXPECT_EQ(header_ + Row("a", "None"), Run({"-policy", "pol2", "-client", "a"}).out);
  EXPECT_EQ(header_ + aDone + bDone, Run({"-lifecycle", "slp1", "-policy", "pol1"}).out);
  EXPECT_EQ(header_ + bDone, Run({"-lifecycle", "slp1", "-version", "2"}).out);
  // Without -days the report looks 30 days back: today and 29 days before.
  Image("c", 29, 3);
  Image("d", 30, 3);
  EXPECT_EQ(header_ + Row("c", Date(29, false)), Run({"-client", "c"}).out);
  EXPECT_EQ(kNothing, Run({"-client", "d"}).out);
  // Texts are values, never SQL.
  EXPECT_EQ(kNothing, Run({"-client", "x' OR '1'='1"}).out);
  EXPECT_EQ(kNothing, Run({"-lifecycle", "SLP1"}).out);
}

TEST_F(CompletionReportTest, Trace) {
  Image("a", 0, 3, "PolicyName = 'pol1'");
  e2e::Result r = Run({"-T", "-days", "1", "-policy", "pol1", "-client", "a"});
  const std::string key = root_.Sql("SELECT MachineKey FROM EMM_Machine;").substr(0, 1);
  // The golden text names the catalog's key and today's bounds.
  EXPECT_EQ(r, (e2e::Result{e2e::GoldenFilled("completion_report/trace.txt",
                                              {{"KEY", key},
                                               {"START", std::to_string(DayStart(0))},
                                               {"END", std::to_string(DayStart(0) + 86399)},
                                               {"DAYTIME", Date(0, true)},
                                               {"DAY", Date(0, false)}}),
                            "", 0}));
  r = Run({"-T", "-days", "1", "-bydate"});
  EXPECT_NE(std::string::npos, r.out.find("new CNS inserted for " + Date(0, true) + "\n\n" +
                                          Date(0, true) + "\na\n\n"))
      << r.out;
}

TEST_F(CompletionReportTest, Failures) {
  Image("a", 0, 3);
  // A master server the catalog does not know.
  root_.SetConfig("MASTER_SERVER", "elsewhere");
  EXPECT_EQ(Run({}), (e2e::Result{"", "error fetching data from database, status = 13\n", 13}));
  root_.SetConfig("MASTER_SERVER", "master1");
  // A catalog whose images lack a column the statements need.
  root_.Sql("ALTER TABLE DBM_Image RENAME COLUMN StorageServiceState TO SlpState;");
  EXPECT_EQ(Run({}), (e2e::Result{"", "error executing SQL query, status = 2007006\n", 130}));
  // No catalog at all.
  root_.RemoveCatalog();
  EXPECT_EQ(Run({}), (e2e::Result{"", "cannot connect to database, status = 2007002\n", 25}));
}

}  // namespace
