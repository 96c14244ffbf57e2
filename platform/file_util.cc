// Bounded whole-file reads and the file-descriptor owner.
#include "platform/file_util.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

ScopedFd::~ScopedFd() { reset(); }

void ScopedFd::reset(int fd) {
  if (fd_ >= 0) close(fd_);
  fd_ = fd;
}

int ReadWholeFile(const std::string& path, size_t limit, std::string* text) {
  text->clear();
  // O_NONBLOCK: opening a FIFO without a writer must not wait; the type is
  // checked on the open descriptor, so a link to /dev/zero is refused too.
  ScopedFd fd(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (fd.get() < 0) return errno;
  struct stat st;
  if (fstat(fd.get(), &st) != 0) return errno;
  if (S_ISDIR(st.st_mode)) return EISDIR;
  if (!S_ISREG(st.st_mode)) return FILE_NOT_REGULAR;
  if (static_cast<unsigned long long>(st.st_size) > limit) return FILE_TOO_LARGE;
  // The file may grow while it is read: stop one byte past the limit.
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
    if (text->size() > limit) {
      text->clear();
      return FILE_TOO_LARGE;
    }
  }
}

std::string ReadFailureText(int failure, size_t limit) {
  if (failure == FILE_NOT_REGULAR) return "not a regular file";
  if (failure == FILE_TOO_LARGE) return "larger than " + std::to_string(limit) + " bytes";
  return strerror(failure);
}

bool IsDirectory(const std::string& path) {
  struct stat st;
  return stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}
