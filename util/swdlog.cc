// Logging helpers.
#include "util/swdlog.h"

#include <cstring>

const char* swdlog_basename(const char* path) {
  if (!path) return "";
  const char* slash = strrchr(path, '/');
  return slash ? slash + 1 : path;
}
