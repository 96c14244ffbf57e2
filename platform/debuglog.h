// The legacy debug log of the administration commands: one file per day,
// <logs root>/<log name>/<program>.YYYYMMDD.log, appended, one line per call:
//
//   HH:MM:SS.mmm [pid] <severity> source: text
//
// with the local time to the millisecond. A process that never opened the log
// (or whose log could not be opened) writes nothing and does not fail.
#ifndef PLATFORM_DEBUGLOG_H_
#define PLATFORM_DEBUGLOG_H_

// Signature of logmsg, also the log callback handed to the catalog library.
typedef void (*LogFunction)(int severity, const char* text, const char* source);

// The logs root, <root>/logs.
const char* swdlog_root();

// Opens (creating with `mode`, subject to the umask, when needed) today's file
// of log `logName` under `logsRoot` for appending; `progname` names the file
// and is the source of logmsgv lines. The log directory itself must exist.
// Returns the descriptor (0 or more) on success, a negative value on failure
// with the error number in *errnum.
int open_debug_log(const char* logsRoot, const char* logName, const char* progname, int mode,
                   int* errnum);

// Appends one line: local time to the millisecond, process id, severity,
// source and text. Severity 2 is progress and trace, 16 an error. Trailing
// newlines of the text are dropped and inner ones become blanks, so that a
// call is always one line.
void logmsg(int severity, const char* text, const char* source);

// logmsg with a printf-style text; the source is the program name given to
// open_debug_log.
void logmsgv(int severity, const char* format, ...) __attribute__((format(printf, 2, 3)));

// Closes the log; later lines are dropped until it is opened again.
void close_debug_log();

// Non-zero when the calling user is a local administrator (root, an
// ADMIN_USER or a member of an ADMIN_GROUP). `which` selects the kind of
// check; every kind is the local-role check here.
int is_user_admin(int which);

// The verbosity configured for a program (VERBOSE.<program>, else VERBOSE,
// else 0). Every log name shares the program's setting.
int get_configured_verbose(const char* progname, const char* logName);

#endif  // PLATFORM_DEBUGLOG_H_
