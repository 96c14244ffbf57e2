// Parsing and validation of the command line.
#ifndef CMD_PARSE_H_
#define CMD_PARSE_H_

#include "cmd/command_line.h"

// Fills the process-wide tables (abrevMap, operationOptions); first step of
// start-up.
void InitCommandTables();

// Walks argv against the operation and option tables, reports every problem,
// then applies the usage, conflict, allowed-option and cross-option rules.
// Ends the run through CmdExit for usage, errors and testhook; -M replaces
// MasterServer. Returns the settled command line.
CommandLine ParseCommandLine(int argc, char** argv);

#endif  // CMD_PARSE_H_
