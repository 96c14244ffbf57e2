// The key order of LegacyInfo.
#include "catalog/legacy_info.h"

#include <cstring>

namespace {

// Negative, zero or positive as `a` sorts before, with or after `b`.
int CompareBytes(const std::string& a, const std::string& b) {
  size_t n = a.size() < b.size() ? a.size() : b.size();
  int c = memcmp(a.data(), b.data(), n);  // memcmp compares unsigned bytes
  if (c != 0) return c;
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

}  // namespace

bool LegacyCmp::operator()(const LegacyInfo& a, const LegacyInfo& b) const {
  if (a.mediaSubType != b.mediaSubType) return a.mediaSubType < b.mediaSubType;
  if (int c = CompareBytes(a.mediaId, b.mediaId)) return c < 0;
  if (int c = CompareBytes(a.mediaServer, b.mediaServer)) return c < 0;
  return CompareBytes(a.storageServer, b.storageServer) < 0;
}
