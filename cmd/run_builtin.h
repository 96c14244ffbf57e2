// run_builtin: runs the one operation of a settled command line. By the
// operation's table flags it runs the administrator check and opens the
// catalog library, starts the ORB, selects the legacy record log, calls the
// operation's handler through the dispatch table and checks standard output.
#ifndef CMD_RUN_BUILTIN_H_
#define CMD_RUN_BUILTIN_H_

#include "cmd/command_line.h"

// Returns the operation's status, which becomes the exit status.
int run_builtin(const CommandLine& cmd);

#endif  // CMD_RUN_BUILTIN_H_
