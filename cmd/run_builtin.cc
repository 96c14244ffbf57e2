// run_builtin: the set-up an operation needs, by its table flags, then the
// dispatch, then the check that everything written to standard output
// reached it.
#include "cmd/run_builtin.h"

#include "catalog/catalog_open.h"
#include "cmd/admin_check.h"
#include "cmd/dispatch.h"
#include "cmd/output_check.h"
#include "remote/orb_startup.h"
#include "util/cmn.h"
#include "util/process.h"

int run_builtin(const CommandLine& cmd) {
  if (cmd.requiresAdmin) check_if_local_swu_admin(progname.c_str());
  if (cmd.requiresCatalog) OpenCatalogLibrary();
  StartOrb();
  // The record log goes to the legacy debug log for whatever the operation
  // does.
  DBData::UseLegacyLogs();
  return CheckStandardOutput(Dispatch(cmd));
}
