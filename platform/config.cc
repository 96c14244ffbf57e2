// Configuration file reader. (Placeholder bodies until the real reader lands.)
#include "platform/config.h"

#include "platform/root.h"

QbConfReader::QbConfReader() {}

int SW_read_master_config() { return 1; }

const SW_MASTER_CONFIG* get_master_config_ptr() {
  static SW_MASTER_CONFIG config;
  return &config;
}

int64_t computeConfigUnitsBaseValue(long value, ConfigUnits units) {
  static const int64_t kSeconds[] = {1, 60, 3600, 86400};
  return static_cast<int64_t>(value) * kSeconds[units];
}

std::string SW_catalog_path() { return StashwellPath("db/catalog.db"); }

int SW_catalog_busy_timeout_ms() { return 30000; }

int SW_daemon_port(const char*) { return 0; }
