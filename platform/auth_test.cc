// Tests of the local roles and the certificate credentials. The role checks
// for other users run in a child process that switches to the user nobody,
// so they need a test process running as root.
#include "platform/auth.h"

#include <grp.h>
#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "gtest/gtest.h"
#include "platform/config.h"
#include "platform/test_root.h"

namespace {

const char kBaseConfig[] = "EMM_SERVER = e\nMASTER_SERVER = m\n";

// Writes the configuration file and reads it, as start-up does; its messages
// are dropped.
void UseConfig(const std::string& text) {
  testing_root::Write("etc/stashwell.conf", text);
  testing::internal::CaptureStderr();
  QbConfReader reread;
  testing::internal::GetCapturedStderr();
}

// Runs `check` as nobody in a child; its exit status.
template <typename F>
int AsNobody(F check) {
  struct passwd* pw = getpwnam("nobody");
  if (!pw) return -1;
  uid_t uid = pw->pw_uid;
  gid_t gid = pw->pw_gid;
  pid_t pid = fork();
  if (pid == 0) {
    if (setgroups(0, nullptr) != 0 || setgid(gid) != 0 || setuid(uid) != 0) _exit(99);
    _exit(check());
  }
  int status = 0;
  waitpid(pid, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int RoleOfCaller() {
  int isAdmin = -1, how = -1;
  if (qbrd_get_my_local_roles(&isAdmin, &how, 60) != 0) return 98;
  return isAdmin * 10 + how;
}

TEST(LocalRoles, SuperuserAndConfiguredUsers) {
  if (geteuid() != 0) GTEST_SKIP() << "needs root to switch users";
  UseConfig(kBaseConfig);
  EXPECT_EQ(RoleOfCaller(), 10 + LOCAL_ROLE_SUPERUSER);
  EXPECT_EQ(AsNobody(RoleOfCaller), LOCAL_ROLE_NONE);

  UseConfig(std::string(kBaseConfig) + "ADMIN_USER = nobody\n");
  EXPECT_EQ(AsNobody(RoleOfCaller), 10 + LOCAL_ROLE_ADMIN_USER);

  struct passwd* pw = getpwnam("nobody");
  ASSERT_NE(pw, nullptr);
  struct group* gr = getgrgid(pw->pw_gid);
  ASSERT_NE(gr, nullptr);
  UseConfig(std::string(kBaseConfig) + "ADMIN_GROUP = no-such-group\nADMIN_GROUP = " +
            gr->gr_name + "\n");
  EXPECT_EQ(AsNobody(RoleOfCaller), 10 + LOCAL_ROLE_ADMIN_GROUP);
}

TEST(LocalRoles, UnreadableConfigurationIsAnError) {
  UseConfig("BROKEN\n");
  int isAdmin = 7, how = 7;
  EXPECT_EQ(qbrd_get_my_local_roles(&isAdmin, &how, 60), EINVAL);
  testing_root::Remove("etc");
  testing::internal::CaptureStderr();
  QbConfReader reread;
  testing::internal::GetCapturedStderr();
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

  struct passwd* me = getpwuid(geteuid());
  ASSERT_NE(me, nullptr);
  testing_root::Write(std::string("etc/credentials/") + me->pw_name, "certificate\n");
  EXPECT_EQ(vnet_qzss_check_user_cred(0, 0, 0, 0), 0) << "0 names the caller";
}

}  // namespace
