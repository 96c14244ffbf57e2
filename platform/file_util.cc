// Whole-file reads and the file-descriptor owner.
#include "platform/file_util.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

ScopedFd::~ScopedFd() { reset(); }

void ScopedFd::reset(int fd) {
  if (fd_ >= 0) close(fd_);
  fd_ = fd;
}

int ReadWholeFile(const std::string& path, std::string* text) {
  text->clear();
  ScopedFd fd(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (fd.get() < 0) return errno;
  char buf[8192];
  for (;;) {
    ssize_t n = read(fd.get(), buf, sizeof buf);
    if (n == 0) return 0;
    if (n < 0) {
      if (errno == EINTR) continue;
      int err = errno;
      text->clear();
      return err;
    }
    text->append(buf, static_cast<size_t>(n));
  }
}

bool IsDirectory(const std::string& path) {
  struct stat st;
  return stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}
