// The check that everything a run wrote to standard output reached it: a
// full disk must not pass for success, and a reader that stopped reading
// early (`cyclectl list | head`) ends the run quietly, as a process killed by
// SIGPIPE would end (the ORB ignores that signal, so writes fail instead).
#ifndef CMD_OUTPUT_CHECK_H_
#define CMD_OUTPUT_CHECK_H_

// Status of a run whose standard output was lost (EX_IOERR of sysexits.h).
constexpr int kOutputLostStatus = 74;
// Status of a run whose standard output reader went away: 128 + SIGPIPE,
// what a shell shows for a process that SIGPIPE killed.
constexpr int kReaderGoneStatus = 141;

// Flushes standard output and returns the run's status: `status` when
// everything written reached standard output, or when `status` is not 0;
// otherwise kReaderGoneStatus when standard output is a pipe or socket whose
// reader has gone, else kOutputLostStatus. A loss other than a departed
// reader is reported once per run on standard error as
// "<CmdName>: cannot write standard output[: <reason>]".
int CheckStandardOutput(int status);

#endif  // CMD_OUTPUT_CHECK_H_
