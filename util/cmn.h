// The switchable record log of the catalog-database helpers (DBData): off,
// the legacy debug log, or the unified logger, chosen once per process.
#ifndef UTIL_CMN_H_
#define UTIL_CMN_H_

namespace DBData {

// Logging methods of the record log.
enum { LOG_METHOD_NONE = 0, LOG_METHOD_LEGACY = 1, LOG_METHOD_UNIFIED = 2 };

// Writes one record-log line at `level` for `source`, formatted printf-style
// (at most 7680 bytes): nothing under LOG_METHOD_NONE; under
// LOG_METHOD_LEGACY a debug-log line of severity 16 for level 0, else 2;
// under LOG_METHOD_UNIFIED a debug line of the default unified logger when
// its verbosity reaches the level (levels outside 1..6 are written as 1
// without that test), followed by "(cmn.cc:<line>)".
void LogMessage(int level, const char* source, const char* format, ...)
    __attribute__((format(printf, 3, 4)));

// Selects the legacy debug log (start-up does so before dispatch).
void UseLegacyLogs();
// Selects the unified logger.
void UseQzULLogs();
// The current LOG_METHOD_ value (LOG_METHOD_NONE until one is selected).
int GetLoggingMethod();

}  // namespace DBData

#endif  // UTIL_CMN_H_
