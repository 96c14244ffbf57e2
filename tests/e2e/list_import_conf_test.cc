// End-to-end tests of `cyclectl list_import_conf`: selection, order, forms, faults.
#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <vector>

#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"
#include "tests/e2e/test_data.h"

namespace {

const char kNoMatch[] = "No images or lifecycles matching criteria found.\n";

class ListImportConfTest : public e2e::CatalogTest {
 protected:
  ListImportConfTest() : CatalogTest("list_import_conf") {}
  void SetUp() override {
    root_.SetConfig("IMPORT_CONF_THRESHOLD", "1 HOURS");
    now_ = time(nullptr);
    // Repl_A version 1 and 2 replicating to domA and domB; Repl_B.
    root_.Sql(e2e::Golden("list_import_conf/slps.txt"));
    const std::string c1 = Image("c1", 1000, "Repl_A", 1);
    Copy(c1, 3, 2, 14, 9000);
    Copy(c1, 2, 2, 14, 7200);
    Copy(Image("c2", 2000, "Repl_A", 2), 2, 2, 14, 8000);
    Copy(Image("c3", 3000, "Repl_B", 1), 2, 5, 14, 9500);  // no operation 5
    Copy(Image("c4", 4000, "Repl_A", 9), 2, 2, 14, 9600);  // no version 9
    Copy(Image("c5", 5000, "Repl_A", 1), 2, 2, 14, 60);    // within the threshold
    Copy(Image("c6", 6000, "Repl_A", 1), 2, 2, 5, 9700);   // complete
  }

  long Ago(long seconds) const { return now_ - seconds; }
  std::string Image(const std::string& client, long backupTime, const std::string& slp,
                    int version) {
    return AddImage(client, backupTime,
                    "StorageServiceName = '" + slp +
                        "', StorageServiceVersionNumber = " + std::to_string(version));
  }
  // A copy last retried `ago` seconds before the test began.
  void Copy(const std::string& image, int number, int slpIndex, int state, long ago) {
    AddCopy(image, number,
            "SLPIndex = " + std::to_string(slpIndex) + ", CopyState = " + std::to_string(state) +
                ", LastRetryTime = " + std::to_string(Ago(ago)));
  }

  // The short line of a reported copy.
  std::string Line(const std::string& backupId, int copy, long lastRetry, const std::string& slp,
                   int version) const {
    return backupId + " " + std::to_string(copy) + " " + std::to_string(lastRetry) + " " + slp +
           " " + std::to_string(version) + "\n";
  }

  long now_ = 0;
};

TEST_F(ListImportConfTest, ReportsPastTheThresholdOldestFirstInEachForm) {
  const std::string a1 = Line("c1_1000", 3, Ago(9000), "Repl_A", 1);
  const std::string a2 = Line("c2_2000", 2, Ago(8000), "Repl_A", 2);
  const std::string a3 = Line("c1_1000", 2, Ago(7200), "Repl_A", 1);
  char date[32];
  const time_t when = Ago(8000);
  struct tm parts;
  strftime(date, sizeof date, "%Y/%m/%d %H:%M:%S", gmtime_r(&when, &parts));
  const std::vector<std::pair<std::string, std::string>> times = {
      {"TIME_9000", std::to_string(Ago(9000))},
      {"TIME_8000", std::to_string(Ago(8000))},
      {"TIME_7200", std::to_string(Ago(7200))},
      {"DATE_8000", date}};
  const struct {
    std::vector<std::string> args;
    std::string out;  // empty: the message of no match instead
  } cases[] = {
      {{}, a1 + a2 + a3},
      {{"-all_pending_images", "-l"}, a1 + a2 + a3 + Line("c5_5000", 2, Ago(60), "Repl_A", 1)},
      {{"-b"}, "c1_1000\nc2_2000\nc1_1000\n"},
      {{"-U", "-target_domain", "domB"},
       e2e::GoldenFilled("list_import_conf/user-domB.txt", times)},
      {{"-json_compact", "-target_domain", "domA"},
       e2e::GoldenFilled("list_import_conf/json-compact-domA.txt", times)},
      {{"-destination", "*Remote*Master*", "-target_domain", "domA"}, a1 + a3},
      {{"-target_domain", "doma"}, ""},
      {{"-destination", "stu1"}, ""},  // operation 1 is not the replica's
      {{"-lifecycle", "Repl_A' OR 'x' = 'x"}, ""},
      {{"-json", "-lifecycle", "Repl_B"}, ""},  // the message alone, no document
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Run(c.args), (e2e::Result{c.out, c.out.empty() ? kNoMatch : "", 0}))
        << testing::PrintToString(c.args);
  }
}

TEST_F(ListImportConfTest, WithoutTheSettingTheThresholdIsOneHour) {
  root_.RemoveConfig("IMPORT_CONF_THRESHOLD");
  Copy(Image("c7", 7000, "Repl_A", 1), 2, 2, 14, 3700);
  Copy(Image("c8", 8000, "Repl_A", 1), 2, 2, 14, 3500);
  EXPECT_EQ(Run({"-lifecycle", "Repl_A", "-b"}),
            (e2e::Result{"c1_1000\nc2_2000\nc1_1000\nc7_7000\n", "", 0}));
}

TEST_F(ListImportConfTest, CatalogFaultsPrintTheirMessageAndEndWithZero) {
  root_.Sql("ALTER TABLE DBM_ImageCopy RENAME TO Gone");
  EXPECT_EQ(Run({}), (e2e::Result{"", "error executing SQL query, status = 2007006\n", 0}));

  root_.Sql("ALTER TABLE Gone RENAME TO DBM_ImageCopy; DROP TABLE SLP_StorageServiceOperation");
  EXPECT_EQ(Run(), (e2e::Result{"", "Can't obtain SLP definitions, error status = 2007062\n", 0}));
}

}  // namespace
