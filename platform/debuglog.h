// The legacy debug log of the administration commands: one file per day in
// <root>/logs/<log name>, one line per call. A process that never opened the
// log writes nothing and does not fail.
#ifndef PLATFORM_DEBUGLOG_H_
#define PLATFORM_DEBUGLOG_H_

// Signature of logmsg, also the log callback handed to the catalog library.
typedef void (*LogFunction)(int severity, const char* text, const char* source);

// The logs root, <root>/logs.
const char* swdlog_root();

// Opens (creating with `mode` when needed) today's file of log `logName` under
// `logsRoot` for appending. Returns 0 or more on success, a negative value on
// failure with the error number in *errnum.
int open_debug_log(const char* logsRoot, const char* logName, const char* progname,
                   int mode, int* errnum);

// Appends one line: local time to the millisecond, process id, severity,
// source and text. Severity 2 is progress and trace, 16 an error.
void logmsg(int severity, const char* text, const char* source);

// Non-zero when the calling user is an administrator (`which` selects the kind
// of check; 2 is the one the start-up uses).
int is_user_admin(int which);

// The verbosity configured for a program and log name.
int get_configured_verbose(const char* progname, const char* logName);

#endif  // PLATFORM_DEBUGLOG_H_
