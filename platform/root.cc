// Installation root lookup.
#include "platform/root.h"

#include <cstdlib>

const std::string& StashwellRoot() {
  static const std::string root = [] {
    const char* env = getenv("STASHWELL_ROOT");
    std::string r = (env && *env) ? env : "/usr/ostash/stashwell";
    while (r.size() > 1 && r.back() == '/') r.pop_back();
    return r;
  }();
  return root;
}

std::string StashwellPath(const std::string& relative) { return StashwellRoot() + "/" + relative; }
