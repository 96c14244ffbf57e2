// LegacyCmp: the key order of the disk media id cache.
#include "catalog/legacy_info.h"

#include <gtest/gtest.h>

#include <string>

namespace {

LegacyInfo Key(short subtype, const std::string& id, const std::string& mediaServer,
               const std::string& storageServer) {
  LegacyInfo key;
  key.mediaSubType = subtype;
  key.mediaId = id;
  key.mediaServer = mediaServer;
  key.storageServer = storageServer;
  return key;
}

TEST(LegacyCmpTest, OrdersByEachFieldInTurn) {
  struct Case {
    LegacyInfo lower;
    LegacyInfo higher;
  };
  const Case cases[] = {
      // Sub-type first, compared signed, before any text.
      {Key(-1, "z", "z", "z"), Key(0, "a", "a", "a")},
      {Key(1, "z", "z", "z"), Key(2, "a", "a", "a")},
      // Then media id, media server, storage server.
      {Key(1, "a", "z", "z"), Key(1, "b", "a", "a")},
      {Key(1, "a", "a", "z"), Key(1, "a", "b", "a")},
      {Key(1, "a", "a", "a"), Key(1, "a", "a", "b")},
      // A prefix comes first; bytes compare unsigned, so 0xE9 follows 'z'.
      {Key(1, "ab", "", ""), Key(1, "abc", "", "")},
      {Key(1, "", "", ""), Key(1, "a", "", "")},
      {Key(1, "z", "", ""), Key(1, "\xE9", "", "")},
      {Key(1, "A", "", ""), Key(1, "a", "", "")},
  };
  LegacyCmp less;
  for (const Case& c : cases) {
    EXPECT_TRUE(less(c.lower, c.higher)) << c.lower.mediaId << " / " << c.higher.mediaId;
    EXPECT_FALSE(less(c.higher, c.lower)) << c.lower.mediaId << " / " << c.higher.mediaId;
  }
  LegacyInfo same = Key(1, "m", "ms", "ss");
  EXPECT_FALSE(less(same, same));
}

}  // namespace
