// The rules that join the values of several options of one operation (a
// backup id excludes a lifecycle, redo needs a backup id, and so on), checked
// on the settled command line after the option lists.
#ifndef CMD_CROSS_RULES_H_
#define CMD_CROSS_RULES_H_

#include "cmd/command_line.h"

// Checks the rules in their fixed order. At the first one broken, writes its
// message to standard error and returns false; returns true when all hold.
bool CheckCrossOptionRules(const CommandLine& line);

#endif  // CMD_CROSS_RULES_H_
