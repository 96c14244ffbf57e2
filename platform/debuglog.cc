// Debug log. (Placeholder bodies until the real log lands.)
#include "platform/debuglog.h"

#include <string>

#include "platform/root.h"

const char* swdlog_root() {
  static const std::string root = StashwellPath("logs");
  return root.c_str();
}

int open_debug_log(const char*, const char*, const char*, int, int* errnum) {
  if (errnum) *errnum = 0;
  return -1;
}

void logmsg(int, const char*, const char*) {}

int is_user_admin(int) { return 0; }

int get_configured_verbose(const char*, const char*) { return 0; }
