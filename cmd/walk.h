// The walk over the arguments: every argument in order is an operation word
// or an option, matched against the operation table and the option rules;
// every problem is reported on standard error as it is met and the walk goes
// on, so that all of them are seen before the run ends.
#ifndef CMD_WALK_H_
#define CMD_WALK_H_

#include "cmd/command_line.h"

struct ArgumentWalk {
  // The operation, its flags, the given-flags and the values of every option
  // accepted during the walk: the command line the operation receives.
  CommandLine line;
  bool errorSeen = false;
  int argumentCount = 0;  // arguments looked at, argv[0] excluded
};

// Walks argv[1] to argv[argc - 1] with ACE's argument shifter. Reports
// SmeSlp0470N, SmeSlp0480N, SmeSlp0490N, SmeSlp0500N, SmeSlp0510N,
// SmeSlp0520N and SmeSlp0570N in argument order. argv is not modified.
ArgumentWalk WalkArguments(int argc, char** argv);

#endif  // CMD_WALK_H_
