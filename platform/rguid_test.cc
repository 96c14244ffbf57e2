// The GUID text form's failures. The form itself, with and without braces,
// is shown end to end (tests/e2e/list_test.cc, list_import_notify_test.cc).
#include "platform/rguid.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

const unsigned char kGuid[16] = {0x6f, 0x96, 0x19, 0xff, 0x8b, 0x86, 0xd0, 0x11,
                                 0xb4, 0x2d, 0x00, 0xc0, 0x4f, 0xc9, 0x64, 0xff};

TEST(RGUIDAsStringTest, FailsWithoutRoomOrInput) {
  char text[39];
  strcpy(text, "unchanged");
  EXPECT_NE(0, RGUIDAsString(kGuid, text, 38, 0));  // braces need 39
  EXPECT_NE(0, RGUIDAsString(kGuid, text, 36, 1));
  EXPECT_STREQ("unchanged", text);
  EXPECT_NE(0, RGUIDAsString(nullptr, text, sizeof text, 0));
  EXPECT_NE(0, RGUIDAsString(kGuid, nullptr, sizeof text, 0));
}

}  // namespace
