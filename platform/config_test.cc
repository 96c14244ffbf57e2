// Tests of the configuration reader: well-formed files, each kind of bad
// line, and a run's record of the file staying as it was read. What the
// services make of a file under the root (the catalog path, the daemon
// ports, the masters, the threshold) every end-to-end run shows; files that
// are missing, no regular file or too large are refused end to end, as are
// the keys whose values change what a run does (the roles and the
// authentication mode: tests/e2e/startup_test.cc; the busy timeout:
// catalog_open_test.cc). The verbosity keys are read in debuglog_test.cc.
#include "platform/config.h"

#include <string>

#include "gtest/gtest.h"
#include "platform/test_root.h"

namespace {

TEST(ParseStashwellConfig, ReadsTheLayoutOfAFile) {
  const std::string text =
      "# comment\n"
      "\n"
      "  EMM_SERVER =  emm1.example.com  \n"
      "EMM_PORT=2000\r\n"
      "EMM_CATALOG = /var/cat.db\n"
      "MASTER_SERVER = m1\n"
      "MASTER_SERVER = m2\n"
      "IMPORT_CONF_THRESHOLD = 2 minutes\n"
      "DAEMON_PORT.cyclesvc = 13724\n"
      "TEST_IMPORT_PAUSE_MS = 0\n"
      "SERVICE_CONNECT_TIMEOUT = 1\n"
      "SERVICE_CALL_TIMEOUT = 86400000\n";
  StashwellConfig c;
  std::vector<std::string> errors;
  ASSERT_TRUE(ParseStashwellConfig(text, "f", &c, &errors)) << errors[0];
  EXPECT_EQ(c.emmServer, "emm1.example.com");
  EXPECT_EQ(c.emmPort, 2000);
  EXPECT_EQ(c.emmCatalog, "/var/cat.db");
  EXPECT_TRUE(c.hasMasterList);
  EXPECT_EQ(c.masterServers, (std::vector<std::string>{"m1", "m2"}));
  EXPECT_EQ(c.importConfThresholdValue, 2);
  EXPECT_EQ(c.importConfThresholdUnits, CONFIG_UNITS_MINUTES);
  EXPECT_EQ(c.daemonPorts.at("cyclesvc"), 13724);
  // The bounds of the millisecond ranges are taken.
  EXPECT_EQ(c.testImportPauseMs, 0);
  EXPECT_EQ(c.serviceConnectTimeoutMs, 1);
  EXPECT_EQ(c.serviceCallTimeoutMs, 86400000);
}

TEST(ParseStashwellConfig, DefaultsAndEmptyMasterName) {
  StashwellConfig c;
  std::vector<std::string> errors;
  ASSERT_TRUE(
      ParseStashwellConfig("MASTER_SERVER =\nIMPORT_CONF_THRESHOLD = 7\n", "f", &c, &errors));
  EXPECT_EQ(c.emmServer, "");
  EXPECT_EQ(c.emmPort, 1556);
  EXPECT_EQ(c.useQzss, USE_QZSS_AUTOMATIC);
  EXPECT_EQ(c.catalogBusyTimeoutMs, 30000);
  EXPECT_EQ(c.testImportPauseMs, 2000);
  EXPECT_EQ(c.serviceConnectTimeoutMs, 10000);
  EXPECT_EQ(c.serviceCallTimeoutMs, 3600000);
  // An empty master name is kept for start-up to report.
  EXPECT_TRUE(c.hasMasterList);
  EXPECT_EQ(c.masterServers, std::vector<std::string>{""});
  EXPECT_EQ(c.importConfThresholdUnits, CONFIG_UNITS_SECONDS);
}

TEST(ParseStashwellConfig, ReportsEveryBadLineWithItsNumber) {
  struct {
    const char* line;
    const char* error;
  } cases[] = {
      {"EMM_SERVER", "f:2: expected KEY = VALUE"},
      {"NOPE = 1", "f:2: unknown key 'NOPE'"},
      {"emm_server = x", "f:2: unknown key 'emm_server'"},
      {"VERBOSE. = 1", "f:2: unknown key 'VERBOSE.'"},
      {"DAEMON_PORT.a/b = 1", "f:2: unknown key 'DAEMON_PORT.a/b'"},
      {"EMM_PORT = 0", "f:2: EMM_PORT: port must be a number from 1 to 65535"},
      {"EMM_PORT = 12ab", "f:2: EMM_PORT: port must be a number from 1 to 65535"},
      {"EMM_CATALOG =", "f:2: EMM_CATALOG: value missing"},
      {"USE_QZSS = sometimes", "f:2: USE_QZSS: expected AUTOMATIC, REQUIRED or PROHIBITED"},
      {"VERBOSE = 6", "f:2: VERBOSE: verbosity must be a number from 0 to 5"},
      {"IMPORT_CONF_THRESHOLD = 2 WEEKS",
       "f:2: IMPORT_CONF_THRESHOLD: unknown unit 'WEEKS' (SECONDS, MINUTES, HOURS or DAYS)"},
      {"IMPORT_CONF_THRESHOLD = HOURS",
       "f:2: IMPORT_CONF_THRESHOLD: expected a whole number and a unit (SECONDS, MINUTES, HOURS "
       "or DAYS)"},
      {"IMPORT_CONF_THRESHOLD = 1 HOURS extra",
       "f:2: IMPORT_CONF_THRESHOLD: expected a whole number and a unit (SECONDS, MINUTES, HOURS "
       "or DAYS)"},
      {"ADMIN_USER =", "f:2: ADMIN_USER: value missing"},
      {"TEST_IMPORT_PAUSE_MS = 600001",
       "f:2: TEST_IMPORT_PAUSE_MS: expected milliseconds from 0 to 600000"},
      {"SERVICE_CONNECT_TIMEOUT = 0",
       "f:2: SERVICE_CONNECT_TIMEOUT: expected milliseconds from 1 to 3600000"},
      {"SERVICE_CALL_TIMEOUT = 86400001",
       "f:2: SERVICE_CALL_TIMEOUT: expected milliseconds from 1 to 86400000"},
      {"EMM_SERVER = again", "f:2: EMM_SERVER given again (first on line 1)"},
  };
  for (const auto& c : cases) {
    StashwellConfig config;
    config.emmServer = "untouched";
    std::vector<std::string> errors;
    EXPECT_FALSE(ParseStashwellConfig(std::string("EMM_SERVER = e\n") + c.line + "\n", "f", &config,
                                      &errors))
        << c.line;
    ASSERT_EQ(errors.size(), 1u) << c.line;
    EXPECT_EQ(errors[0], c.error);
    EXPECT_EQ(config.emmServer, "untouched") << "a bad file must not be taken in part";
  }
}

TEST(ComputeConfigUnitsBaseValue, ConvertsEachUnit) {
  EXPECT_EQ(computeConfigUnitsBaseValue(5, CONFIG_UNITS_SECONDS), 5);
  EXPECT_EQ(computeConfigUnitsBaseValue(5, CONFIG_UNITS_MINUTES), 300);
  EXPECT_EQ(computeConfigUnitsBaseValue(2, CONFIG_UNITS_HOURS), 7200);
  EXPECT_EQ(computeConfigUnitsBaseValue(3000000, CONFIG_UNITS_DAYS), 259200000000LL);
}

// Reads the file again, as the start of a run does; its messages are dropped.
bool Reread() {
  testing::internal::CaptureStderr();
  bool hasData = QbConfReader().hasData();
  testing::internal::GetCapturedStderr();
  return hasData;
}

TEST(ConfigFile, ARunSeesTheFileAsItWasRead) {
  testing_root::Write("etc/stashwell.conf",
                      "EMM_SERVER = e1\nMASTER_SERVER = m1\nDAEMON_PORT.cyclesvc = 4000\n");
  ASSERT_TRUE(Reread());
  testing_root::Remove("etc");
  StashwellConfig config;
  EXPECT_EQ(SW_load_config(&config), 0);
  EXPECT_EQ(config.emmServer, "e1");
  ASSERT_EQ(SW_read_master_config(), 0);
  EXPECT_EQ(get_master_config_ptr()->masterServers[0], "m1");
  EXPECT_EQ(SW_daemon_port("cyclesvc"), 4000);
}

}  // namespace
