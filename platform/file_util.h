// Small file helpers of the platform stand-ins: whole-file reads with the
// error number of a failure, and an owner for POSIX file descriptors.
#ifndef PLATFORM_FILE_UTIL_H_
#define PLATFORM_FILE_UTIL_H_

#include <string>

// Reads the whole file at `path` into *text. Returns 0, or the errno value of
// the failure (ENOENT, EACCES, EISDIR, ...); *text is then left empty.
int ReadWholeFile(const std::string& path, std::string* text);

// True when `path` names an existing directory.
bool IsDirectory(const std::string& path);

// Owns one file descriptor and closes it when destroyed.
class ScopedFd {
 public:
  explicit ScopedFd(int fd = -1) : fd_(fd) {}
  ~ScopedFd();
  ScopedFd(const ScopedFd&) = delete;
  ScopedFd& operator=(const ScopedFd&) = delete;

  int get() const { return fd_; }
  // Closes the descriptor held, if any, and takes `fd`.
  void reset(int fd = -1);

 private:
  int fd_;
};

#endif  // PLATFORM_FILE_UTIL_H_
