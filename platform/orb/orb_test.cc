// The corbaloc addresses the ORB wrapper resolves.
#include "platform/orb/orb.h"

#include <gtest/gtest.h>

namespace {

TEST(CorbalocAddressTest, FormsIiopAddressesOrNone) {
  const struct {
    const char* host;
    int port;
    const char* key;
    const char* expected;
  } cases[] = {
      {"master1", 13724, "Disk.Mgr_09-Zz,~", "corbaloc::master1:13724/Disk.Mgr_09-Zz,~"},
      {"127.0.0.1", 1, "K", "corbaloc::127.0.0.1:1/K"},
      {"::1", 65535, "K", "corbaloc::[::1]:65535/K"},
      {"[::1]", 80, "K", "corbaloc::[::1]:80/K"},
      // Key characters outside the unreserved set are escaped.
      {"h", 80, "a b%c\"d", "corbaloc::h:80/a%20b%25c%22d"},
      // No host, or a port out of range: no address.
      {"", 80, "K", ""},
      {"h", 0, "K", ""},
      {"h", 65536, "K", ""},
      {"h", -1, "K", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CorbalocAddress(c.host, c.port, c.key), c.expected) << c.host << " " << c.port;
  }
}

TEST(OrbTest, ResolvesNothingBeforeInit) {
  Orb orb("", "", "", false, 1024);
  ACE_Time_Value connect(10), call(3600);
  bool apply = true, verify = false;
  CORBA::Object_var object = orb.resolve("h", "cyclesvc", "K", connect, call, apply, verify);
  EXPECT_TRUE(CORBA::is_nil(object));
  EXPECT_TRUE(CORBA::is_nil(orb.orb()));
}

}  // namespace
