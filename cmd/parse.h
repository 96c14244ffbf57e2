// Parsing and validation of the command line: the walk over the arguments,
// then, in this order, the end of a run with errors, the usage requests,
// testhook, the exclusive option groups, the options the operation does not
// take, and the cross-option rules.
#ifndef CMD_PARSE_H_
#define CMD_PARSE_H_

#include "cmd/command_line.h"

// Fills the process-wide tables abrevMap and operationOptions; first step of
// start-up.
void InitCommandTables();

// Walks argv against the operation and option tables, reports every problem,
// then applies the usage, conflict, allowed-option and cross-option rules.
// Ends the run through CmdExit for usage, errors and testhook. Options the
// operation does not take draw a notice each and keep their values, which
// the dispatcher hands on like any other. -M replaces MasterServer. Returns
// the settled command line.
CommandLine ParseCommandLine(int argc, char** argv);

#endif  // CMD_PARSE_H_
