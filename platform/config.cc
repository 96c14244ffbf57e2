// Reader of etc/stashwell.conf: KEY = VALUE lines checked against a table of
// keys, each with its value parser, and the configuration services built on
// it (QbConfReader, the master configuration record, lookups). A bad line
// makes the whole file unusable, so a typing error is never silently taken.
#include "platform/config.h"

#include <sys/stat.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include "platform/file_util.h"
#include "platform/root.h"

namespace {

std::string Trim(const std::string& s) {
  size_t b = s.find_first_not_of(" \t\r");
  if (b == std::string::npos) return "";
  size_t e = s.find_last_not_of(" \t\r");
  return s.substr(b, e - b + 1);
}

std::string Upper(std::string s) {
  for (char& c : s) c = static_cast<char>(toupper(static_cast<unsigned char>(c)));
  return s;
}

// A whole decimal number within [lo, hi].
bool ParseNumber(const std::string& v, long lo, long hi, long* out) {
  if (v.empty() || v.size() > 18) return false;
  for (char c : v)
    if (c < '0' || c > '9') return false;
  long n = strtol(v.c_str(), nullptr, 10);
  if (n < lo || n > hi) return false;
  *out = n;
  return true;
}

// Program and daemon names after "VERBOSE." and "DAEMON_PORT.".
bool ValidSuffix(const std::string& s) {
  if (s.empty()) return false;
  for (char c : s)
    if (!isalnum(static_cast<unsigned char>(c)) && c != '_' && c != '-' && c != '.') return false;
  return true;
}

// Each parser stores a value (with the key's suffix for the per-program and
// per-daemon keys) or returns the reason it does not fit.
typedef std::string (*ValueParser)(const std::string& suffix, const std::string& value,
                                   StashwellConfig* c);

std::string SetEmmServer(const std::string&, const std::string& v, StashwellConfig* c) {
  c->emmServer = v;
  return "";
}

std::string SetEmmPort(const std::string&, const std::string& v, StashwellConfig* c) {
  long n;
  if (!ParseNumber(v, 1, 65535, &n)) return "port must be a number from 1 to 65535";
  c->emmPort = static_cast<unsigned short>(n);
  return "";
}

std::string SetEmmCatalog(const std::string&, const std::string& v, StashwellConfig* c) {
  if (v.empty()) return "value missing";
  c->emmCatalog = v;
  return "";
}

// An empty master name is kept: start-up reports it with its own message.
std::string AddMaster(const std::string&, const std::string& v, StashwellConfig* c) {
  c->hasMasterList = true;
  c->masterServers.push_back(v);
  return "";
}

std::string SetThreshold(const std::string&, const std::string& v, StashwellConfig* c) {
  static const struct {
    const char* name;
    ConfigUnits units;
  } kUnits[] = {{"SECONDS", CONFIG_UNITS_SECONDS},
                {"MINUTES", CONFIG_UNITS_MINUTES},
                {"HOURS", CONFIG_UNITS_HOURS},
                {"DAYS", CONFIG_UNITS_DAYS}};
  std::istringstream in(v);
  std::string number, unit, extra;
  in >> number >> unit >> extra;
  long n;
  if (!ParseNumber(number, 0, 1000000000L, &n) || !extra.empty())
    return "expected a whole number and a unit (SECONDS, MINUTES, HOURS or DAYS)";
  ConfigUnits units = CONFIG_UNITS_SECONDS;
  if (!unit.empty()) {
    bool found = false;
    for (const auto& u : kUnits)
      if (Upper(unit) == u.name) {
        units = u.units;
        found = true;
      }
    if (!found) return "unknown unit '" + unit + "' (SECONDS, MINUTES, HOURS or DAYS)";
  }
  c->importConfThresholdValue = n;
  c->importConfThresholdUnits = units;
  return "";
}

std::string SetUseQzss(const std::string&, const std::string& v, StashwellConfig* c) {
  static const struct {
    const char* name;
    int mode;
  } kModes[] = {{"AUTOMATIC", USE_QZSS_AUTOMATIC},
                {"REQUIRED", USE_QZSS_REQUIRED},
                {"PROHIBITED", USE_QZSS_PROHIBITED}};
  for (const auto& m : kModes)
    if (Upper(v) == m.name) {
      c->useQzss = m.mode;
      return "";
    }
  return "expected AUTOMATIC, REQUIRED or PROHIBITED";
}

std::string SetVerbose(const std::string& suffix, const std::string& v, StashwellConfig* c) {
  long n;
  if (!ParseNumber(v, 0, 5, &n)) return "verbosity must be a number from 0 to 5";
  if (suffix.empty())
    c->verbose = static_cast<int>(n);
  else
    c->programVerbose[suffix] = static_cast<int>(n);
  return "";
}

std::string AddAdminUser(const std::string&, const std::string& v, StashwellConfig* c) {
  if (v.empty()) return "value missing";
  c->adminUsers.push_back(v);
  return "";
}

std::string AddAdminGroup(const std::string&, const std::string& v, StashwellConfig* c) {
  if (v.empty()) return "value missing";
  c->adminGroups.push_back(v);
  return "";
}

std::string SetDaemonPort(const std::string& suffix, const std::string& v, StashwellConfig* c) {
  long n;
  if (!ParseNumber(v, 1, 65535, &n)) return "port must be a number from 1 to 65535";
  c->daemonPorts[suffix] = static_cast<int>(n);
  return "";
}

// A time limit in milliseconds from kMin to kMax.
template <int StashwellConfig::*field, long kMin, long kMax>
std::string SetMillis(const std::string&, const std::string& v, StashwellConfig* c) {
  long n;
  if (!ParseNumber(v, kMin, kMax, &n)) {
    return "expected milliseconds from " + std::to_string(kMin) + " to " + std::to_string(kMax);
  }
  c->*field = static_cast<int>(n);
  return "";
}

// The keys. A key ending in '.' takes a name after the dot (VERBOSE.cyclectl).
const struct KeyRow {
  const char* key;
  bool repeatable;
  ValueParser parse;
} kKeys[] = {
    {"EMM_SERVER", false, SetEmmServer},
    {"EMM_PORT", false, SetEmmPort},
    {"EMM_CATALOG", false, SetEmmCatalog},
    {"MASTER_SERVER", true, AddMaster},
    {"IMPORT_CONF_THRESHOLD", false, SetThreshold},
    {"USE_QZSS", false, SetUseQzss},
    {"VERBOSE", false, SetVerbose},
    {"VERBOSE.", false, SetVerbose},
    {"ADMIN_USER", true, AddAdminUser},
    {"ADMIN_GROUP", true, AddAdminGroup},
    {"DAEMON_PORT.", false, SetDaemonPort},
    {"CATALOG_BUSY_TIMEOUT", false, SetMillis<&StashwellConfig::catalogBusyTimeoutMs, 0, 3600000>},
    {"TEST_IMPORT_PAUSE_MS", false, SetMillis<&StashwellConfig::testImportPauseMs, 0, 600000>},
    {"SERVICE_CONNECT_TIMEOUT", false,
     SetMillis<&StashwellConfig::serviceConnectTimeoutMs, 1, 3600000>},
    {"SERVICE_CALL_TIMEOUT", false, SetMillis<&StashwellConfig::serviceCallTimeoutMs, 1, 86400000>},
};

// Finds the row of `key`, setting *suffix for the per-name keys.
const KeyRow* FindKey(const std::string& key, std::string* suffix) {
  for (const KeyRow& row : kKeys) {
    size_t n = strlen(row.key);
    if (row.key[n - 1] == '.') {
      if (key.compare(0, n, row.key) == 0 && key.size() > n) {
        *suffix = key.substr(n);
        return &row;
      }
    } else if (key == row.key) {
      suffix->clear();
      return &row;
    }
  }
  return nullptr;
}

// The largest configuration file read; real ones are a few hundred bytes.
const size_t kConfigLimit = 1 << 20;

// Why the file at `path` could not be read, for the line that reports it.
std::string ReadFailureReason(const std::string& path, int failure) {
  struct stat st;
  if (failure == ENOENT && lstat(path.c_str(), &st) == 0 && S_ISLNK(st.st_mode))
    return "symbolic link to a missing file";
  // No file at all is most often a new installation that has no root yet.
  if (failure == ENOENT) {
    return ReadFailureText(failure, kConfigLimit) +
           " (make an installation root with 'stashwell-init --root DIR' and run with"
           " STASHWELL_ROOT=DIR)";
  }
  return ReadFailureText(failure, kConfigLimit);
}

// Reads and parses the file. Reports malformed lines on standard error;
// for a file that cannot be read, puts "<file>: <why>" in *why.
int LoadConfigFile(StashwellConfig* config, std::string* why) {
  std::string path = SW_config_path();
  std::string text;
  int rc = ReadWholeFile(path, kConfigLimit, &text);
  if (rc != 0) {
    *why = path + ": " + ReadFailureReason(path, rc);
    return rc > 0 ? rc : EINVAL;
  }
  std::vector<std::string> errors;
  if (!ParseStashwellConfig(text, path, config, &errors)) {
    for (const std::string& e : errors) fprintf(stderr, "%s\n", e.c_str());
    return EINVAL;
  }
  return 0;
}

// The configuration of the process: the outcome of the last read and the
// last configuration read well (the defaults before one). The file is read
// by QbConfReader, or by the first service that needs it when no reader
// came first; everything else uses what was read, so a run sees one
// configuration however the file changes meanwhile.
struct ConfigRead {
  bool done = false;
  int status = 0;
  std::string why;  // why the file could not be read
  StashwellConfig config;
};
ConfigRead g_read;
SW_MASTER_CONFIG g_master;

const ConfigRead& ReadConfigFile() {
  StashwellConfig c;
  g_read.why.clear();
  g_read.status = LoadConfigFile(&c, &g_read.why);
  if (g_read.status == 0) g_read.config = c;
  g_read.done = true;
  return g_read;
}

const ConfigRead& RunConfig() { return g_read.done ? g_read : ReadConfigFile(); }

}  // namespace

bool ParseStashwellConfig(const std::string& text, const std::string& name, StashwellConfig* config,
                          std::vector<std::string>* errors) {
  StashwellConfig c;
  std::map<std::string, int> seenOnLine;
  std::istringstream in(text);
  std::string raw;
  int lineNo = 0;
  size_t errorsBefore = errors->size();
  auto bad = [&](const std::string& what) {
    errors->push_back(name + ":" + std::to_string(lineNo) + ": " + what);
  };
  while (std::getline(in, raw)) {
    ++lineNo;
    std::string line = Trim(raw);
    if (line.empty() || line[0] == '#') continue;
    size_t eq = line.find('=');
    if (eq == std::string::npos) {
      bad("expected KEY = VALUE");
      continue;
    }
    std::string key = Trim(line.substr(0, eq));
    std::string value = Trim(line.substr(eq + 1));
    std::string suffix;
    const KeyRow* row = FindKey(key, &suffix);
    if (!row || (!suffix.empty() && !ValidSuffix(suffix))) {
      bad("unknown key '" + key + "'");
      continue;
    }
    if (!row->repeatable) {
      auto seen = seenOnLine.find(key);
      if (seen != seenOnLine.end()) {
        bad(key + " given again (first on line " + std::to_string(seen->second) + ")");
        continue;
      }
      seenOnLine[key] = lineNo;
    }
    std::string why = row->parse(suffix, value, &c);
    if (!why.empty()) bad(key + ": " + why);
  }
  if (errors->size() != errorsBefore) return false;
  *config = c;
  return true;
}

std::string SW_config_path() { return StashwellPath("etc/stashwell.conf"); }

int SW_load_config(StashwellConfig* config) {
  const ConfigRead& read = RunConfig();
  if (read.status == 0) *config = read.config;
  return read.status;
}

QbConfReader::QbConfReader() {
  const ConfigRead& read = ReadConfigFile();
  if (!read.why.empty()) fprintf(stderr, "%s\n", read.why.c_str());
  if (read.status != 0) return;
  hasData_ = true;
  emmServer_ = read.config.emmServer;
  emmPort_ = read.config.emmPort;
  emmCatalog_ = read.config.emmCatalog;
}

int SW_read_master_config() {
  const ConfigRead& read = RunConfig();
  if (read.status != 0) return read.status;
  const StashwellConfig& c = read.config;
  g_master.hasMasterList = c.hasMasterList;
  g_master.masterServers = c.masterServers;
  g_master.importConfThresholdValue = c.importConfThresholdValue;
  g_master.importConfThresholdUnits = c.importConfThresholdUnits;
  g_master.useQzss = c.useQzss;
  return 0;
}

const SW_MASTER_CONFIG* get_master_config_ptr() { return &g_master; }

int64_t computeConfigUnitsBaseValue(long value, ConfigUnits units) {
  static const int64_t kSeconds[] = {1, 60, 3600, 86400};
  if (units < CONFIG_UNITS_SECONDS || units > CONFIG_UNITS_DAYS) units = CONFIG_UNITS_SECONDS;
  return static_cast<int64_t>(value) * kSeconds[units];
}

std::string SW_catalog_path() { return SW_catalog_path_of(RunConfig().config.emmCatalog); }

std::string SW_catalog_path_of(const std::string& c) {
  if (c.empty()) return StashwellPath("db/catalog.db");
  if (c[0] == '/') return c;
  return StashwellPath(c);
}

int SW_catalog_busy_timeout_ms() { return RunConfig().config.catalogBusyTimeoutMs; }

int SW_daemon_port(const char* daemonName) {
  if (!daemonName) return 0;
  const std::map<std::string, int>& ports = RunConfig().config.daemonPorts;
  auto it = ports.find(daemonName);
  return it == ports.end() ? 0 : it->second;
}

const StashwellConfig* SW_config() { return &RunConfig().config; }
