// A full disk under the catalog: the root's db folder becomes a file system
// of its own (a tmpfs in a mount namespace of the test process, which the
// runs it starts inherit) holding a copy of the catalog and not one byte
// more, so that a write that grows the catalog or needs a journal fails as
// on a full disk. Mounting needs root: a test skips unless ok().
#ifndef TESTS_E2E_FULL_DISK_H_
#define TESTS_E2E_FULL_DISK_H_

#include <sched.h>
#include <sys/mount.h>

#include <string>

#include "tests/e2e/harness.h"

namespace e2e {

class FullCatalogDisk {
 public:
  explicit FullCatalogDisk(Root& root) : dir_(root.path() + "/db") {
    const std::string catalog = root.ReadFile("db/catalog.db");
    // Mounts made from here on are seen by this process and its children
    // only, and are gone when it ends.
    static const bool privateMounts =
        unshare(CLONE_NEWNS) == 0 &&
        mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    const std::string size = "size=" + std::to_string(catalog.size());
    if (!privateMounts || mount("tmpfs", dir_.c_str(), "tmpfs", 0, size.c_str()) != 0) return;
    mounted_ = true;
    root.WriteFile("db/catalog.db", catalog);
  }
  // The catalog folder as it was shows again.
  ~FullCatalogDisk() {
    if (mounted_) umount2(dir_.c_str(), MNT_DETACH);
  }
  FullCatalogDisk(const FullCatalogDisk&) = delete;
  FullCatalogDisk& operator=(const FullCatalogDisk&) = delete;

  bool ok() const { return mounted_; }

 private:
  std::string dir_;
  bool mounted_ = false;
};

}  // namespace e2e

#endif  // TESTS_E2E_FULL_DISK_H_
