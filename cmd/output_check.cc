// CheckStandardOutput. stdio keeps only an error flag, not the error: a
// write that failed during the operation is known afterwards only through
// ferror, and whether the reader has gone is asked of the descriptor.
#include "cmd/output_check.h"

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "util/process.h"

namespace {

// True when standard output is a pipe or socket with nobody left to read it;
// `writeError` is the errno of the flush that failed, or 0.
bool ReaderGone(int writeError) {
  if (writeError == EPIPE) return true;
  struct stat st;
  if (fstat(STDOUT_FILENO, &st) != 0 || !(S_ISFIFO(st.st_mode) || S_ISSOCK(st.st_mode))) {
    return false;
  }
  struct pollfd out = {STDOUT_FILENO, POLLOUT, 0};
  return poll(&out, 1, 0) == 1 && (out.revents & (POLLERR | POLLHUP)) != 0;
}

}  // namespace

int CheckStandardOutput(int status) {
  // Set once the loss is known, so that a second check neither reports it
  // again nor takes the status back.
  static int lossStatus = 0;
  if (lossStatus == 0) {
    int flushError = fflush(stdout) == 0 ? 0 : errno;
    if (flushError == 0 && !ferror(stdout)) return status;
    if (ReaderGone(flushError)) {
      lossStatus = kReaderGoneStatus;
    } else {
      lossStatus = kOutputLostStatus;
      if (flushError != 0) {
        fprintf(stderr, "%s: cannot write standard output: %s\n", CmdName.c_str(),
                strerror(flushError));
      } else {
        fprintf(stderr, "%s: cannot write standard output\n", CmdName.c_str());
      }
    }
  }
  return status == 0 ? lossStatus : status;
}
