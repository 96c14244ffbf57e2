// Tests of the configuration reader: well-formed files, each kind of bad
// line, and a run's record of the file staying as it was read. What the
// services make of the keys, and files that are missing, no regular file or
// too large, end-to-end runs show (tests/e2e/startup_test.cc,
// catalog_open_test.cc); the verbosity keys are read in debuglog_test.cc.
#include "platform/config.h"

#include <sstream>
#include <string>

#include "gtest/gtest.h"
#include "platform/test_root.h"

namespace {

// Every setting of a parsed file on one line.
std::string Settings(const StashwellConfig& c) {
  std::ostringstream s;
  s << c.emmServer << "|" << c.emmPort << "|" << c.emmCatalog << "|" << c.hasMasterList << "|";
  for (const std::string& master : c.masterServers) s << master << ",";
  s << "|" << c.importConfThresholdValue << " " << c.importConfThresholdUnits << "|" << c.useQzss
    << "|" << c.catalogBusyTimeoutMs << "|" << c.testImportPauseMs << "|"
    << c.serviceConnectTimeoutMs << "|" << c.serviceCallTimeoutMs;
  for (const auto& port : c.daemonPorts) s << "|" << port.first << "=" << port.second;
  return s.str();
}

TEST(ParseStashwellConfig, ReadsTheLayoutOfAFileAndTheDefaults) {
  const struct {
    const char* text;
    const char* settings;
  } cases[] = {
      // The bounds of the millisecond ranges are taken.
      {"# comment\n\n  EMM_SERVER =  emm1.example.com  \nEMM_PORT=2000\r\n"
       "EMM_CATALOG = /var/cat.db\nMASTER_SERVER = m1\nMASTER_SERVER = m2\n"
       "IMPORT_CONF_THRESHOLD = 2 minutes\nDAEMON_PORT.cyclesvc = 13724\n"
       "TEST_IMPORT_PAUSE_MS = 0\nSERVICE_CONNECT_TIMEOUT = 1\nSERVICE_CALL_TIMEOUT = 86400000\n",
       "emm1.example.com|2000|/var/cat.db|1|m1,m2,|2 1|0|30000|0|1|86400000|cyclesvc=13724"},
      // The defaults; an empty master name is kept for start-up to report.
      {"MASTER_SERVER =\nIMPORT_CONF_THRESHOLD = 7\n", "|1556||1|,|7 0|0|30000|2000|10000|3600000"},
  };
  for (const auto& c : cases) {
    StashwellConfig config;
    std::vector<std::string> errors;
    ASSERT_TRUE(ParseStashwellConfig(c.text, "f", &config, &errors)) << errors[0];
    EXPECT_EQ(Settings(config), c.settings);
  }
}

TEST(ParseStashwellConfig, ReportsEveryBadLineWithItsNumber) {
  // A malformed line is refused end to end (StartupTest.ConfigurationFailures).
  const std::string units = " (SECONDS, MINUTES, HOURS or DAYS)";
  const struct {
    const char* line;
    std::string error;
  } cases[] = {
      {"NOPE = 1", "unknown key 'NOPE'"},
      {"emm_server = x", "unknown key 'emm_server'"},
      {"VERBOSE. = 1", "unknown key 'VERBOSE.'"},
      {"DAEMON_PORT.a/b = 1", "unknown key 'DAEMON_PORT.a/b'"},
      {"EMM_PORT = 0", "EMM_PORT: port must be a number from 1 to 65535"},
      {"EMM_PORT = 12ab", "EMM_PORT: port must be a number from 1 to 65535"},
      {"EMM_CATALOG =", "EMM_CATALOG: value missing"},
      {"USE_QZSS = sometimes", "USE_QZSS: expected AUTOMATIC, REQUIRED or PROHIBITED"},
      {"VERBOSE = 6", "VERBOSE: verbosity must be a number from 0 to 5"},
      {"IMPORT_CONF_THRESHOLD = 2 WEEKS", "IMPORT_CONF_THRESHOLD: unknown unit 'WEEKS'" + units},
      {"IMPORT_CONF_THRESHOLD = HOURS",
       "IMPORT_CONF_THRESHOLD: expected a whole number and a unit" + units},
      {"IMPORT_CONF_THRESHOLD = 1 HOURS extra",
       "IMPORT_CONF_THRESHOLD: expected a whole number and a unit" + units},
      {"ADMIN_USER =", "ADMIN_USER: value missing"},
      {"TEST_IMPORT_PAUSE_MS = 600001",
       "TEST_IMPORT_PAUSE_MS: expected milliseconds from 0 to 600000"},
      {"SERVICE_CONNECT_TIMEOUT = 0",
       "SERVICE_CONNECT_TIMEOUT: expected milliseconds from 1 to 3600000"},
      {"SERVICE_CALL_TIMEOUT = 86400001",
       "SERVICE_CALL_TIMEOUT: expected milliseconds from 1 to 86400000"},
      {"EMM_SERVER = again", "EMM_SERVER given again (first on line 1)"},
  };
  for (const auto& c : cases) {
    StashwellConfig config;
    config.emmServer = "untouched";  // a bad file must not be taken in part
    std::vector<std::string> errors;
    bool ok = ParseStashwellConfig(std::string("EMM_SERVER = e\n") + c.line + "\n", "f", &config,
                                   &errors);
    errors.insert(errors.begin(), {ok ? "taken" : "refused", config.emmServer});
    EXPECT_EQ(errors, (std::vector<std::string>{"refused", "untouched", "f:2: " + c.error}))
        << c.line;
  }
}

TEST(ComputeConfigUnitsBaseValue, ConvertsEachUnit) {
  EXPECT_EQ(computeConfigUnitsBaseValue(5, CONFIG_UNITS_SECONDS), 5);
  EXPECT_EQ(computeConfigUnitsBaseValue(5, CONFIG_UNITS_MINUTES), 300);
  EXPECT_EQ(computeConfigUnitsBaseValue(2, CONFIG_UNITS_HOURS), 7200);
  EXPECT_EQ(computeConfigUnitsBaseValue(3000000, CONFIG_UNITS_DAYS), 259200000000LL);
}

TEST(ConfigFile, ARunSeesTheFileAsItWasRead) {
  testing_root::Write("etc/stashwell.conf",
                      "EMM_SERVER = e1\nMASTER_SERVER = m1\nDAEMON_PORT.cyclesvc = 4000\n");
  ASSERT_TRUE(QbConfReader().hasData());  // read again, as the start of a run does
  testing_root::Remove("etc");
  StashwellConfig config;
  ASSERT_EQ(SW_load_config(&config), 0);
  ASSERT_EQ(SW_read_master_config(), 0);
  EXPECT_EQ(config.emmServer + " " + get_master_config_ptr()->masterServers[0] + " " +
                std::to_string(SW_daemon_port("cyclesvc")),
            "e1 m1 4000");
}

}  // namespace
