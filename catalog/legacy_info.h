// LegacyInfo: the legacy disk facts of an image fragment (media sub-type,
// media id, media server, storage server), and LegacyCmp, their key order in
// the map that caches disk media id lookups.
#ifndef CATALOG_LEGACY_INFO_H_
#define CATALOG_LEGACY_INFO_H_

#include <string>

struct LegacyInfo {
  short mediaSubType = 0;
  std::string mediaId;
  std::string mediaServer;
  std::string storageServer;
};

// Strict weak order: media sub-type (signed), then media id, media server
// and storage server, each text compared byte by byte as unsigned
// characters, a text that is a prefix of the other coming first.
struct LegacyCmp {
  bool operator()(const LegacyInfo& a, const LegacyInfo& b) const;
};

#endif  // CATALOG_LEGACY_INFO_H_
