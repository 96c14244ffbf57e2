// Small file helpers of the platform stand-ins: bounded whole-file reads of
// regular files with the reason of a failure, and an owner for POSIX file
// descriptors.
#ifndef PLATFORM_FILE_UTIL_H_
#define PLATFORM_FILE_UTIL_H_

#include <cstddef>
#include <string>

// Failures of ReadWholeFile besides the errno values of open and read.
enum : int {
  FILE_NOT_REGULAR = -1,  // a FIFO, device, socket, ... (a directory is EISDIR)
  FILE_TOO_LARGE = -2,    // more than the limit the caller gave
};

// Reads the whole file at `path`, which must be a regular file of at most
// `limit` bytes, into *text. Returns 0, or why it was not read: an errno
// value of the failure (ENOENT, EACCES, EISDIR, ...), FILE_NOT_REGULAR or
// FILE_TOO_LARGE; *text is then left empty. Never blocks on a FIFO and never
// reads more than `limit` + 1 bytes, whatever the file claims.
int ReadWholeFile(const std::string& path, size_t limit, std::string* text);

// The text of a ReadWholeFile failure: strerror's for errno values,
// "not a regular file", "larger than <limit> bytes".
std::string ReadFailureText(int failure, size_t limit);

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
