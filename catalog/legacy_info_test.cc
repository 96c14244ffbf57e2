// LegacyCmp: the key order of the disk media id cache.
#include "catalog/legacy_info.h"

#include <gtest/gtest.h>

#include <iterator>

namespace {

TEST(LegacyCmpTest, OrdersByEachFieldInTurn) {
  // Ascending: the sub-type (signed) before any text, then media id, media
  // server and storage server; a prefix first; bytes unsigned, so 0xE9
  // follows 'z'.
  const LegacyInfo keys[] = {
      {-1, "z", "z", "z"}, {0, "a", "a", "a"}, {1, "", "", ""},    {1, "A", "", ""},
      {1, "a", "", ""},    {1, "a", "a", "a"}, {1, "a", "a", "b"}, {1, "a", "a", "z"},
      {1, "a", "b", "a"},  {1, "a", "z", "z"}, {1, "ab", "", ""},  {1, "abc", "", ""},
      {1, "b", "a", "a"},  {1, "z", "", ""},   {1, "z", "z", "z"}, {1, "\xE9", "", ""},
      {2, "a", "a", "a"},
  };
  LegacyCmp less;
  for (size_t i = 0; i < std::size(keys); ++i) {
    for (size_t j = 0; j < std::size(keys); ++j) {
      EXPECT_EQ(less(keys[i], keys[j]), i < j) << i << " " << j;
    }
  }
}

}  // namespace
