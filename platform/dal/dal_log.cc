// Data-access log lines, filtered by the program's configured verbosity.
#include "platform/dal/dal_log.h"

#include <errno.h>

#include "platform/debuglog.h"

namespace Corvela {
namespace Dal {

namespace {

const char* Source(const char* source) { return source && *source ? source : "Corvela::Dal"; }

int ConfiguredVerbosity() {
  static const int verbosity = get_configured_verbose(program_invocation_short_name, "admin");
  return verbosity;
}

}  // namespace

void DalTrace(LOG_AT_VERBOSITY verbosity, const char* source, const std::string& text) {
  if (ConfiguredVerbosity() >= verbosity) logmsg(2, text.c_str(), Source(source));
}

void DalError(const char* source, const std::string& text) {
  logmsg(16, text.c_str(), Source(source));
}

}  // namespace Dal
}  // namespace Corvela
