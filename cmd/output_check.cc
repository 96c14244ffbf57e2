// CheckStandardOutput.
#include "cmd/output_check.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "util/process.h"

int CheckStandardOutput(int status) {
  int flushError = fflush(stdout) == 0 ? 0 : errno;
  if (flushError == 0 && !ferror(stdout)) return status;
  if (flushError != 0) {
    fprintf(stderr, "%s: cannot write standard output: %s\n", CmdName.c_str(),
            strerror(flushError));
  } else {
    fprintf(stderr, "%s: cannot write standard output\n", CmdName.c_str());
  }
  return status == 0 ? kOutputLostStatus : status;
}
