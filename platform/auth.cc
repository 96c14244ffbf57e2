// Local roles from the user and group databases and the configuration's
// administrator lists; certificate credentials as files under the root.
#include "platform/auth.h"

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "platform/config.h"
#include "platform/file_util.h"
#include "platform/root.h"

namespace {

// The calling user's name; false when the user database does not know it.
bool CallerName(std::string* name) {
  struct passwd pw, *result = nullptr;
  std::vector<char> buf(16384);
  if (getpwuid_r(geteuid(), &pw, buf.data(), buf.size(), &result) != 0 || !result) return false;
  *name = pw.pw_name;
  return true;
}

// Every group the caller belongs to: the process's own groups and the user
// database's list for the caller.
std::vector<gid_t> CallerGroups(const std::string& name) {
  std::vector<gid_t> groups;
  groups.push_back(getegid());
  int n = getgroups(0, nullptr);
  if (n > 0) {
    std::vector<gid_t> own(static_cast<size_t>(n));
    n = getgroups(n, own.data());
    if (n > 0) groups.insert(groups.end(), own.begin(), own.begin() + n);
  }
  if (!name.empty()) {
    struct passwd pw, *result = nullptr;
    std::vector<char> buf(16384);
    if (getpwnam_r(name.c_str(), &pw, buf.data(), buf.size(), &result) == 0 && result) {
      int count = 64;
      std::vector<gid_t> listed(static_cast<size_t>(count));
      if (getgrouplist(name.c_str(), pw.pw_gid, listed.data(), &count) < 0) {
        listed.resize(static_cast<size_t>(count));
        getgrouplist(name.c_str(), pw.pw_gid, listed.data(), &count);
      }
      if (count > 0) groups.insert(groups.end(), listed.begin(), listed.begin() + count);
    }
  }
  return groups;
}

bool GroupId(const std::string& group, gid_t* gid) {
  struct group gr, *result = nullptr;
  std::vector<char> buf(65536);
  if (getgrnam_r(group.c_str(), &gr, buf.data(), buf.size(), &result) != 0 || !result) return false;
  *gid = gr.gr_gid;
  return true;
}

}  // namespace

int qbrd_get_my_local_roles(int* isAdmin, int* how, int /*timeoutSeconds*/) {
  int admin = 0, why = LOCAL_ROLE_NONE;
  StashwellConfig config;
  int rc = SW_load_config(&config);
  if (rc != 0) return rc;
  std::string name;
  bool named = CallerName(&name);
  if (geteuid() == 0) {
    admin = 1;
    why = LOCAL_ROLE_SUPERUSER;
  } else if (named && std::find(config.adminUsers.begin(), config.adminUsers.end(), name) !=
                          config.adminUsers.end()) {
    admin = 1;
    why = LOCAL_ROLE_ADMIN_USER;
  } else if (!config.adminGroups.empty()) {
    std::vector<gid_t> mine = CallerGroups(named ? name : "");
    for (const std::string& g : config.adminGroups) {
      gid_t gid;
      if (GroupId(g, &gid) && std::find(mine.begin(), mine.end(), gid) != mine.end()) {
        admin = 1;
        why = LOCAL_ROLE_ADMIN_GROUP;
        break;
      }
    }
  }
  if (isAdmin) *isAdmin = admin;
  if (how) *how = why;
  return 0;
}

int vnet_qzss_check_user_cred(const char* user, const char* /*host*/, void* /*reserved*/,
                              int /*flags*/) {
  std::string name;
  if (user && *user)
    name = user;
  else if (!CallerName(&name))
    return ENOENT;
  if (name.find('/') != std::string::npos || name == "." || name == "..") return EINVAL;
  std::string path = StashwellPath("etc/credentials/" + name);
  struct stat st;
  if (stat(path.c_str(), &st) != 0) return errno;
  if (!S_ISREG(st.st_mode)) return EINVAL;
  std::string text;
  // A credential is a few lines; anything much larger is not one.
  int rc = ReadWholeFile(path, 1 << 20, &text);
  if (rc != 0) return rc > 0 ? rc : EINVAL;
  return text.empty() ? EINVAL : 0;
}

int vnet_get_authentication(int* kind) {
  if (!kind) return EINVAL;
  *kind = IsDirectory(StashwellPath("etc/credentials")) ? VNET_AUTH_CERTIFICATE : VNET_AUTH_NONE;
  return 0;
}
