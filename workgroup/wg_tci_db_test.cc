// The names of the kinds of work group at the ends of their table.
#include "workgroup/wg_tci_db.h"

#include <gtest/gtest.h>

TEST(WorkGroupIDNameTest, NamesOneToFourteenOthersAreNull) {
  EXPECT_STREQ(WorkGroupIDName(1), "DISK");
  EXPECT_STREQ(WorkGroupIDName(14), "CLOUD_SNAPSHOT_BACKUP");
  EXPECT_STREQ(WorkGroupIDName(0), "NULL");
  EXPECT_STREQ(WorkGroupIDName(15), "NULL");
  EXPECT_STREQ(WorkGroupIDName(-1), "NULL");
}
