// End-to-end tests of `cyclectl list_import_conf`: selection, order, forms, faults.
#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <vector>

#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"

namespace {

const char kNoMatch[] = "No images or lifecycles matching criteria found.\n";

class ListImportConfTest : public e2e::CatalogTest {
 protected:
  ListImportConfTest() : CatalogTest("list_import_conf") {}
  void SetUp() override {
    root_.SetConfig("IMPORT_CONF_THRESHOLD", "1 HOURS");
    now_ = time(nullptr);
    // Version 1 and 2 of Repl_A replicate with operation 2 to different
    // target domains; Repl_B has no operation 5.
    root_.Sql(
        "INSERT INTO SLP_StorageService (StorageServiceKey, StorageServiceName, VersionNumber)"
        " VALUES (1, 'Repl_A', 1), (2, 'Repl_A', 2), (3, 'Repl_B', 1);"
        "INSERT INTO SLP_StorageServiceOperation (StorageServiceKey, OperationIndex, CopyType,"
        " Destination, TargetDomain) VALUES (1, 1, 0, 'stu1', ''),"
        " (1, 2, 3, '*Remote*Master*', 'domA'), (2, 1, 0, 'stu1', ''),"
        " (2, 2, 3, '*Remote*Master*', 'domB'), (3, 1, 0, 'stu2', '');");
    AddCopy("c1", 1000, "Repl_A", 1, 3, 2, 14, Ago(9000));
    AddCopy("c1", 1000, "Repl_A", 1, 2, 2, 14, Ago(7200));
    AddCopy("c2", 2000, "Repl_A", 2, 2, 2, 14, Ago(8000));
    AddCopy("c3", 3000, "Repl_B", 1, 2, 5, 14, Ago(9500));  // no operation 5
    AddCopy("c4", 4000, "Repl_A", 9, 2, 2, 14, Ago(9600));  // no version 9
    AddCopy("c5", 5000, "Repl_A", 1, 2, 2, 14, Ago(60));    // within the threshold
    AddCopy("c6", 6000, "Repl_A", 1, 2, 2, 5, Ago(9700));   // complete
  }

  long Ago(long seconds) const { return now_ - seconds; }

  // An image of master1 with one copy (each image here has its own client).
  void AddCopy(const std::string& client, long backupTime, const std::string& slp, int version,
               int copyNumber, int slpIndex, int state, long lastRetry) {
    const std::string bt = std::to_string(backupTime);
    root_.Sql(
        "INSERT INTO DBM_Image (MasterServerKey, ClientMachineName, BackupTime,"
        " StorageServiceName, StorageServiceVersionNumber) SELECT"
        " (SELECT MachineKey FROM EMM_Machine WHERE MachinePrimaryName = 'master1'), '" +
        client + "', " + bt + ", '" + slp + "', " + std::to_string(version) +
        " WHERE NOT EXISTS (SELECT 1 FROM DBM_Image WHERE ClientMachineName = '" + client +
        "');"
        "INSERT INTO DBM_ImageCopy (ImageKey, CopyNumber, SLPIndex, CopyState,"
        " LastRetryTime) SELECT ImageKey, " +
        std::to_string(copyNumber) + ", " + std::to_string(slpIndex) + ", " +
        std::to_string(state) + ", " + std::to_string(lastRetry) +
        " FROM DBM_Image WHERE ClientMachineName = '" + client + "'");
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
  EXPECT_EQ(Run({}), (e2e::Result{a1 + a2 + a3, "", 0}));
  EXPECT_EQ(Run({"-all_pending_images", "-l"}),
            (e2e::Result{a1 + a2 + a3 + Line("c5_5000", 2, Ago(60), "Repl_A", 1), "", 0}));

  struct Case {
    std::vector<std::string> args;
    std::string out;
  };
  const Case cases[] = {
      {{"-destination", "*Remote*Master*", "-target_domain", "domA"}, a1 + a3},
      {{"-target_domain", "doma"}, ""},
      {{"-destination", "stu1"}, ""},  // operation 1 is not the replica's
      {{"-lifecycle", "Repl_A' OR 'x' = 'x"}, ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Run(c.args), (e2e::Result{c.out, c.out.empty() ? kNoMatch : "", 0}))
        << testing::PrintToString(c.args);
  }
  EXPECT_EQ(Run({"-b"}), (e2e::Result{"c1_1000\nc2_2000\nc1_1000\n", "", 0}));
  const std::string t = std::to_string(Ago(8000));
  char date[32];
  const time_t when = Ago(8000);
  struct tm parts;
  gmtime_r(&when, &parts);
  strftime(date, sizeof date, "%Y/%m/%d %H:%M:%S", &parts);
  EXPECT_EQ(Run({"-U", "-target_domain", "domB"}), (e2e::Result{"Backup ID           c2_2000\n"
                                                                "Copy number         2\n"
                                                                "Replication time    " +
                                                                    t + "(" + date +
                                                                    ")\n"
                                                                    "SLP name            Repl_A\n"
                                                                    "SLP version         2\n"
                                                                    "\n",
                                                                "", 0}));
  EXPECT_EQ(
      Run({"-json_compact", "-target_domain", "domA"}),
      (e2e::Result{"{\"ImportPendingInfo\":[{\"BackupID\":\"c1_1000\",\"CopyNumber\":3,"
                   "\"ReplicationTime\":" +
                       std::to_string(Ago(9000)) +
                       ",\"SLPName\":\"Repl_A\",\"SLPVersion\":1},{\"BackupID\":"
                       "\"c1_1000\",\"CopyNumber\":2,\"ReplicationTime\":" +
                       std::to_string(Ago(7200)) + ",\"SLPName\":\"Repl_A\",\"SLPVersion\":1}]}\n",
                   "", 0}));
  // Nothing to report: the message alone, no document.
  EXPECT_EQ(Run({"-json", "-lifecycle", "Repl_B"}), (e2e::Result{"", kNoMatch, 0}));
}

TEST_F(ListImportConfTest, WithoutTheSettingTheThresholdIsOneHour) {
  root_.RemoveConfig("IMPORT_CONF_THRESHOLD");
  AddCopy("c7", 7000, "Repl_A", 1, 2, 2, 14, Ago(3700));
  AddCopy("c8", 8000, "Repl_A", 1, 2, 2, 14, Ago(3500));
  EXPECT_EQ(Run({"-lifecycle", "Repl_A", "-b"}).out, "c1_1000\nc2_2000\nc1_1000\nc7_7000\n");
}

TEST_F(ListImportConfTest, CatalogFaultsPrintTheirMessageAndEndWithZero) {
  root_.Sql("ALTER TABLE DBM_ImageCopy RENAME TO Gone");
  EXPECT_EQ(Run({}), (e2e::Result{"", "error executing SQL query, status = 2007006\n", 0}));

  root_.Sql("ALTER TABLE Gone RENAME TO DBM_ImageCopy; DROP TABLE SLP_StorageServiceOperation");
  e2e::Result r = Run({});
  EXPECT_EQ(r.out, "");
  EXPECT_EQ(r.err.rfind("Can't obtain SLP definitions, error status = ", 0), 0u) << r.err;
  EXPECT_EQ(r.status, 0);
}

}  // namespace
