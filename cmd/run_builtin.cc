// run_builtin. (Placeholder until dispatch lands.)
#include "cmd/run_builtin.h"

int run_builtin(const CommandLine&) { return 0; }
