// The walk over the arguments: every argument in order is an operation word
// or an option, matched against the operation table and the option rules;
// every problem is reported on standard error as it is met and the walk goes
// on, so that all of them are seen before the run ends. The settled command
// line is then built from the options the operation takes.
#ifndef CMD_WALK_H_
#define CMD_WALK_H_

#include <vector>

#include "cmd/command_line.h"
#include "cmd/option_rules.h"

struct ArgumentWalk {
  // The operation, its flags, the given-flags and the values of every option
  // accepted during the walk.
  CommandLine line;
  bool errorSeen = false;
  int argumentCount = 0;  // arguments looked at, argv[0] excluded

  // Every accepted occurrence of an option with a given-flag, in argument
  // order, so that the options the operation takes can be applied again.
  struct Accepted {
    const OptionRule* rule;
    const char* value;  // points into argv; null for a flag
  };
  std::vector<Accepted> accepted;
};

// Walks argv[1] to argv[argc - 1] with ACE's argument shifter. Reports
// SmeSlp0470N, SmeSlp0480N, SmeSlp0490N, SmeSlp0500N, SmeSlp0510N,
// SmeSlp0520N and SmeSlp0570N in argument order. argv is not modified; the
// result points into it.
ArgumentWalk WalkArguments(int argc, char** argv);

// The command line the operation receives: the walk's operation, flags, help
// request and usage form, and the values and given-flags of the accepted
// options that stand in `allowed` (an allowed-option list); every other
// option keeps its default.
CommandLine KeepAllowedOptions(const ArgumentWalk& walk, const option_e* allowed);

#endif  // CMD_WALK_H_
