// cyclectl's entry point. (Placeholder until start-up lands.)
#include "cmd/parse.h"
#include "cmd/run_builtin.h"

int main(int argc, char** argv) {
  InitCommandTables();
  CommandLine cmd = ParseCommandLine(argc, argv);
  return run_builtin(cmd);
}
