// RecordList: records of every shape of zero runs come back whole and in
// order, across the end of a block.
#include "import/record_list.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {

struct Row {
  unsigned char bytes[603];  // not a whole number of words
};

// Rows whose zero words are many, some, at either end, or none.
std::vector<Row> Shapes() {
  std::vector<Row> rows(6);
  for (Row& r : rows) memset(r.bytes, 0, sizeof r.bytes);
  rows[1].bytes[0] = 1;
  rows[1].bytes[602] = 2;                                     // in the bytes after the last word
  for (size_t i = 0; i < 603; i += 8) rows[2].bytes[i] = 3;   // no zero word
  for (size_t i = 0; i < 603; i += 17) rows[3].bytes[i] = 4;  // some zero words
  memset(rows[4].bytes, 0xff, sizeof rows[4].bytes);
  memset(rows[5].bytes + 300, 5, 303);
  return rows;
}

TEST(RecordListTest, GivesBackEveryRecordInOrder) {
  const std::vector<Row> shapes = Shapes();
  RecordList<Row> list;
  EXPECT_TRUE(list.empty());
  EXPECT_TRUE(list.begin() == list.end());
  // Enough all-0xff rows (the longest encoding) to fill more than one block.
  const size_t count = 3 * RecordList<Row>::kBlockBytes / sizeof(Row);
  for (size_t i = 0; i < count; ++i) list.push_back(shapes[i % shapes.size()]);
  ASSERT_EQ(list.size(), count);
  std::vector<Row> want, got(list.begin(), list.end());
  for (size_t i = 0; i < count; ++i) want.push_back(shapes[i % shapes.size()]);
  ASSERT_EQ(got.size(), count);
  EXPECT_EQ(memcmp(got.data(), want.data(), count * sizeof(Row)), 0);
  EXPECT_EQ(memcmp(list.front().bytes, want.front().bytes, sizeof(Row)), 0);
  EXPECT_EQ(memcmp(list.back().bytes, want.back().bytes, sizeof(Row)), 0);
}

}  // namespace
