// The unified logger: a daily log file <root>/logs/<name>/<name>.YYYYMMDD.log
// in the common line form (platform/log_file.h) with a verbosity that callers
// test before they log, and Tracer, a scope object that logs the entry and
// exit of a function.
#ifndef PLATFORM_SWLOGGER_H_
#define PLATFORM_SWLOGGER_H_

#include <string>

#include "platform/log_file.h"

class SWLogger {
 public:
  // The configured verbosity, 0 to 5: callers log a line of level n only
  // when verbose >= n. Kept as the first field.
  int verbose;

  // The process's default logger, or null (the state of a cyclectl run: no
  // unified logging unless a program installs one).
  static SWLogger* s_default;

  // A logger named `name`, writing under <root>/logs/<name> (created when
  // missing and the logs root exists); without that folder it writes
  // nothing.
  SWLogger(const char* name, int verbosity);
  SWLogger(const SWLogger&) = delete;
  SWLogger& operator=(const SWLogger&) = delete;

  // Writes one debug line: level as severity, source, text. Does not test
  // the verbosity; the caller does.
  void logDebug(const char* source, int level, const char* text);

 private:
  DailyLogFile file_;
};

// Logs "Entering <function> [<object>] (<file>:<line>)" when constructed and
// "Leaving <function> [<object>]" when destroyed, at level kTraceLevel, when
// the logger is not null and its verbosity reaches that level.
class Tracer {
 public:
  static const int kTraceLevel = 5;

  Tracer(SWLogger* logger, const void* object, const char* function, const char* file, int line);
  ~Tracer();
  Tracer(const Tracer&) = delete;
  Tracer& operator=(const Tracer&) = delete;

 private:
  SWLogger* logger_;
  const void* object_;
  std::string function_;
};

#endif  // PLATFORM_SWLOGGER_H_
