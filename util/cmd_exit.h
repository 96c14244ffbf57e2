// CmdExit: the one way a run of cyclectl ends early. It writes out what was
// printed, logs the exit status and ends the process; everything else is
// left to the operating system.
#ifndef UTIL_CMD_EXIT_H_
#define UTIL_CMD_EXIT_H_

// Writes out the output still pending (WritePendingOutput), logs
// "EXITING, status= <status>" at level 2 with the program name, then ends the
// process with `status`.
[[noreturn]] void CmdExit(int status);

#endif  // UTIL_CMD_EXIT_H_
