// The installation's configuration (etc/stashwell.conf under the root, format
// in docs/configuration.md) as the backup system's configuration services
// present it: the configuration reader QbConfReader for the catalog server,
// the master configuration record, and lookups that the other platform
// stand-ins (data-access layer, catalog library, ORB wrapper, debug log,
// authorization) use.
#ifndef PLATFORM_CONFIG_H_
#define PLATFORM_CONFIG_H_

#include <cstdint>
#include <map>
#include <string>
#include <vector>

// Certificate-use modes of the master configuration.
enum { USE_QZSS_AUTOMATIC = 0, USE_QZSS_REQUIRED = 1, USE_QZSS_PROHIBITED = 2 };

// Units of the import-confirmation threshold.
enum ConfigUnits {
  CONFIG_UNITS_SECONDS = 0,
  CONFIG_UNITS_MINUTES,
  CONFIG_UNITS_HOURS,
  CONFIG_UNITS_DAYS
};

// Everything the configuration file holds, with the defaults of
// docs/configuration.md for keys that are absent.
struct StashwellConfig {
  std::string emmServer;
  unsigned short emmPort = 1556;
  std::string emmCatalog;  // as written; empty when absent
  bool hasMasterList = false;
  std::vector<std::string> masterServers;
  long importConfThresholdValue = 1;
  ConfigUnits importConfThresholdUnits = CONFIG_UNITS_HOURS;
  int useQzss = USE_QZSS_AUTOMATIC;
  int verbose = 0;
  std::map<std::string, int> programVerbose;  // VERBOSE.<program>
  std::vector<std::string> adminUsers;
  std::vector<std::string> adminGroups;
  std::map<std::string, int> daemonPorts;  // DAEMON_PORT.<daemon>
  int catalogBusyTimeoutMs = 30000;
  // Pause of add_import_frags after every 1,000th image.
  int testImportPauseMs = 2000;
  int serviceConnectTimeoutMs = 10000;  // opening a connection to a service
  int serviceCallTimeoutMs = 3600000;   // each remote call
};

// Parses configuration text. Returns true when every line is well formed;
// otherwise false, with one "<name>:<line>: <what is wrong>" entry per bad
// line appended to *errors (`name` is the file name used in those entries).
bool ParseStashwellConfig(const std::string& text, const std::string& name, StashwellConfig* config,
                          std::vector<std::string>* errors);

// Absolute path of the configuration file, <root>/etc/stashwell.conf.
std::string SW_config_path();

// The configuration file is read once per process: by QbConfReader, or by
// the first of the services below when no reader came first. Every service
// then uses what was read, so an edit of the file during a run takes effect
// at the next run. Only a regular file of at most 1 MiB is read. A malformed
// file is reported on standard error with one "<file>:<line>: <what is
// wrong>" line per bad line; QbConfReader reports a file that cannot be read
// as "<file>: <why>".

// Copies the process's configuration into *config. Returns 0, or the status
// of the read: an errno value for a file that cannot be read, EINVAL for one
// that is malformed, not a regular file or too large (*config is then left
// alone).
int SW_load_config(StashwellConfig* config);

// Reads the configuration file when constructed; what it read is then the
// configuration of the process. A missing, unreadable or malformed file
// leaves it without data.
class QbConfReader {
 public:
  QbConfReader();
  QbConfReader(const QbConfReader&) = delete;
  QbConfReader& operator=(const QbConfReader&) = delete;

  bool hasData() const { return hasData_; }
  // Catalog server name; empty when not defined.
  const std::string& getEmmServer() const { return emmServer_; }
  unsigned short getEmmPort() const { return emmPort_; }
  // The further catalog text (EMM_CATALOG as written); empty when absent.
  const std::string& getEmmCatalog() const { return emmCatalog_; }

 private:
  bool hasData_ = false;
  std::string emmServer_;
  unsigned short emmPort_ = 0;
  std::string emmCatalog_;
};

// The master configuration record.
struct SW_MASTER_CONFIG {
  bool hasMasterList = false;              // at least one MASTER_SERVER line
  std::vector<std::string> masterServers;  // first entry: this master
  long importConfThresholdValue = 1;
  ConfigUnits importConfThresholdUnits = CONFIG_UNITS_HOURS;
  int useQzss = USE_QZSS_AUTOMATIC;
};

// Fills the master configuration record from the process's configuration;
// 0 on success, otherwise the status of the read (as SW_load_config).
int SW_read_master_config();
// The record filled by the last successful SW_read_master_config; never null.
const SW_MASTER_CONFIG* get_master_config_ptr();
// The value in seconds of a number of configuration units.
int64_t computeConfigUnitsBaseValue(long value, ConfigUnits units);

// Lookups for the other platform stand-ins, on the process's configuration;
// a file that could not be read gives the defaults.
// Absolute path of the catalog database (EMM_CATALOG resolved against the root).
std::string SW_catalog_path();
// The same for the catalog file `catalog` (db/catalog.db when empty).
std::string SW_catalog_path_of(const std::string& catalog);
// Milliseconds to wait for a catalog that another process is writing.
int SW_catalog_busy_timeout_ms();
// IIOP port of a service daemon (DAEMON_PORT.<daemon>); 0 when not configured.
int SW_daemon_port(const char* daemonName);
// The whole configuration; never null.
const StashwellConfig* SW_config();

#endif  // PLATFORM_CONFIG_H_
