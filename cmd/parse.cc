// Command-line parsing. (Placeholder until the tables and parser land.)
#include "cmd/parse.h"

void InitCommandTables() {}

CommandLine ParseCommandLine(int, char**) { return CommandLine(); }
