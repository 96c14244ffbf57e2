// The catalog reader on the built English catalog and on copies whose header
// does not fit the file. Damaged slots and truncations anywhere are the
// message_catalog fuzz target's; damaged catalogs end to end give the
// English texts (tests/e2e/startup_test.cc).
#include "platform/message_catalog_file.h"

#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>

#include "gtest/gtest.h"

namespace {

std::string BuiltCatalog() {
  std::ifstream in(STASHWELL_SHARE_DIR "/msg/C/cyclectl.cat", std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

TEST(MessageCatalogFile, FindsTextsOfTheFirstAndLastSetsAndRefusesBadHeaders) {
  const std::string good = BuiltCatalog();
  ASSERT_GT(good.size(), 12u);
  MessageCatalogFile catalog;
  ASSERT_TRUE(catalog.Parse(good));
  EXPECT_STREQ(catalog.Find(1, 430), "%s: unable to read Stashwell configuration");
  EXPECT_STREQ(catalog.Find(2, 10), "cannot malloc progname\n");
  for (const auto& [set, id] : {std::pair{1, 9999}, {8, 430}, {0, 430}, {1, 0}, {-1, -1}}) {
    EXPECT_EQ(catalog.Find(set, id), nullptr) << set << " " << id;
  }

  // Headers that do not fit the file.
  const struct {
    size_t offset;
    uint32_t value;
  } damage[] = {
      {0, 0xde080496},  // the other byte order
      {4, 0},          {8, 0},          {8, 0x7fffffff},
      {4, 0xffffffff}, {4, 0x55555556},  // size * depth * 24 wraps around 32 bits
  };
  for (const auto& d : damage) {
    std::string bytes = good;
    memcpy(&bytes[d.offset], &d.value, 4);  // the catalog's order is the machine's
    MessageCatalogFile damaged;
    EXPECT_FALSE(damaged.Parse(bytes)) << d.offset << " " << d.value;
    EXPECT_EQ(damaged.Find(1, 430), nullptr);
  }
  EXPECT_FALSE(catalog.Parse(good.substr(0, good.size() - 1)));  // last text cut
  EXPECT_FALSE(catalog.Parse(good.substr(0, 11)));
  EXPECT_FALSE(catalog.Parse(""));
}

}  // namespace
