// The check that everything a run wrote to standard output reached it (a
// full disk or a closed pipe must not pass for success).
#ifndef CMD_OUTPUT_CHECK_H_
#define CMD_OUTPUT_CHECK_H_

// Status of a run whose standard output was lost (EX_IOERR of sysexits.h).
constexpr int kOutputLostStatus = 74;

// Flushes standard output. When something written to it was lost, writes
// "<CmdName>: cannot write standard output[: <reason>]" to standard error
// and returns kOutputLostStatus if `status` is 0; otherwise returns `status`.
int CheckStandardOutput(int status);

#endif  // CMD_OUTPUT_CHECK_H_
