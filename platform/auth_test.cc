// Tests of the local roles on a configuration that cannot be read, and of the
// certificate credentials. Which users pass the administrator check, by the
// caller's own credential too, is shown end to end (tests/e2e/startup_test.cc).
#include "platform/auth.h"

#include <cerrno>

#include "gtest/gtest.h"
#include "platform/config.h"
#include "platform/test_root.h"

namespace {

// Writes the configuration file (removes it when `text` is null) and reads
// it, as start-up does; its messages are dropped.
void UseConfig(const char* text) {
  testing_root::Remove("etc");
  if (text != nullptr) testing_root::Write("etc/stashwell.conf", text);
  testing::internal::CaptureStderr();
  QbConfReader reread;
  testing::internal::GetCapturedStderr();
}

TEST(LocalRoles, UnreadableConfigurationIsAnError) {
  int isAdmin = 7, how = 7;
  UseConfig("BROKEN\n");
  EXPECT_EQ(qbrd_get_my_local_roles(&isAdmin, &how, 60), EINVAL);
  UseConfig(nullptr);
  EXPECT_EQ(qbrd_get_my_local_roles(&isAdmin, &how, 60), ENOENT);
}

TEST(Credentials, FileUnderTheRootPerUser) {
  testing_root::Remove("etc/credentials");
  int kind = -1;
  EXPECT_EQ(vnet_get_authentication(&kind), 0);
  EXPECT_EQ(kind, VNET_AUTH_NONE);
  EXPECT_EQ(vnet_qzss_check_user_cred("alice", 0, 0, 0), ENOENT);

  testing_root::Write("etc/credentials/alice", "");
  EXPECT_EQ(vnet_get_authentication(&kind), 0);
  EXPECT_EQ(kind, VNET_AUTH_CERTIFICATE);
  EXPECT_EQ(vnet_qzss_check_user_cred("alice", 0, 0, 0), EINVAL) << "empty credential";
  testing_root::Write("etc/credentials/alice", "certificate\n");
  EXPECT_EQ(vnet_qzss_check_user_cred("alice", 0, 0, 0), 0);
  testing_root::Write("etc/credentials/bob/x", "a folder is no credential");
  EXPECT_EQ(vnet_qzss_check_user_cred("bob", 0, 0, 0), EINVAL);
  EXPECT_EQ(vnet_qzss_check_user_cred("../credentials/alice", 0, 0, 0), EINVAL);
  EXPECT_EQ(vnet_get_authentication(nullptr), EINVAL);
}

}  // namespace
