// ParseCommandLine: the walk, then the steps after it in their fixed order.
#include "cmd/parse.h"

#include <cstdio>
#include <iostream>

#include "cmd/cross_rules.h"
#include "cmd/operations.h"
#include "cmd/output_check.h"
#include "cmd/usage.h"
#include "cmd/walk.h"
#include "util/cmd_exit.h"
#include "util/message.h"
#include "util/process.h"

namespace {

// The revision state testhook reports.
const char SLP_WINDOWS_VERSION[] = "1";

void ExitIfGroupViolated(const CommandLine& line) {
  for (const ExclusiveGroup& group : exclusiveGroups) {
    int given = 0;
    for (const option_e* member = group.members; *member != OPT_END; ++member) {
      if (line.given(*member)) ++given;
    }
    if (given > 1) {
      PrintMsg(stderr, "SmeSlp0560N", "Only one of these options can be used simultaneously: %s",
               ExclusiveGroupText(group).c_str());
      CmdExit(1);
    }
  }
}

// Notices for the given options outside the operation's list, in option
// number order. The values stay: the operation still receives every value its
// handler takes, whatever its list says.
void ReportIgnoredOptions(const CommandLine& line, const option_e* allowed) {
  for (int option = 0; option < OPT_END; ++option) {
    if (line.optionSeen[option] && !IsOptionAllowed(allowed, option)) {
      PrintMsg(stderr, "SmeSlp0540N", "option '%s'  is not valid for operation '%s' and is ignored",
               optNames[option], OperationName(line.operation));
    }
  }
}

}  // namespace

void InitCommandTables() {
  InitAbrevMap();
  InitOperationOptions();
}

CommandLine ParseCommandLine(int argc, char** argv) {
  ArgumentWalk walk = WalkArguments(argc, argv);
  const CommandLine& line = walk.line;

  if (walk.errorSeen) CmdExit(1);

  if (line.operation == OP_HELP || walk.argumentCount == 0) {
    CmdUsage(std::cerr, line.usageForm, OP_HELP);
    CmdExit(0);
  }

  if (line.operation == OP_NONE) {
    fputc('\n', stderr);
    PrintMsg(stderr, "SmeSlp0800N", "Must specify an operation to perform");
    CmdUsage(std::cerr, line.usageForm, OP_HELP);
    CmdExit(1);
  }

  if (line.helpRequested) {
    CmdUsage(std::cout, line.usageForm, line.operation);
    CmdExit(CheckStandardOutput(0));
  }

  if (line.operation == OP_TESTHOOK) {
    printf("SLP_WINDOWS_VERSION=%s\n", SLP_WINDOWS_VERSION);
    CmdExit(CheckStandardOutput(0));
  }

  ExitIfGroupViolated(line);

  const option_e* allowed = FindOperationOptions(line.operation);
  if (allowed == nullptr) {
    PrintMsg(stderr, "SmeSlp0530N", "internal error: can't find options map for operation '%d'",
             static_cast<int>(line.operation));
    CmdExit(1);
  }

  ReportIgnoredOptions(line, allowed);
  if (!CheckCrossOptionRules(line)) CmdExit(1);

  if (const char* master = line.masterServer.get()) MasterServer = master;
  return line;
}
