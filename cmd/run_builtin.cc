// run_builtin: the set-up an operation needs, by its table flags, then the
// dispatch, then the check that everything written to standard output
// reached it.
#include "cmd/run_builtin.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "catalog/catalog_open.h"
#include "cmd/admin_check.h"
#include "cmd/dispatch.h"
#include "remote/orb_startup.h"
#include "util/process.h"

namespace {

// Status of a run whose output could not be written (as EX_IOERR of
// sysexits.h), unless the operation already failed with its own status.
const int kOutputLostStatus = 74;

// Flushes standard output; when something written to it was lost (a full
// disk, a closed pipe), says so on standard error and returns the status the
// run ends with.
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

}  // namespace

int run_builtin(const CommandLine& cmd) {
  if (cmd.requiresAdmin) check_if_local_swu_admin(progname.c_str());
  if (cmd.requiresCatalog) OpenCatalogLibrary();
  StartOrb();
  return CheckStandardOutput(Dispatch(cmd));
}
