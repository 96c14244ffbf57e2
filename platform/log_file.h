// A log file that follows the calendar day: <dir>/<prefix>.YYYYMMDD.log,
// appended, one line per Write in the common line form
//
//   HH:MM:SS.mmm [pid] <severity> source: text
//
// with the local time to the millisecond. Shared by the debug log, the
// unified logger and the application-message log.
#ifndef PLATFORM_LOG_FILE_H_
#define PLATFORM_LOG_FILE_H_

#include <string>

#include "platform/file_util.h"

class DailyLogFile {
 public:
  DailyLogFile() = default;
  DailyLogFile(const DailyLogFile&) = delete;
  DailyLogFile& operator=(const DailyLogFile&) = delete;

  // Opens today's file in `dir` (which must exist), creating it with `mode`.
  // Returns 0, or the errno value of the failure.
  int Open(const std::string& dir, const std::string& prefix, int mode);
  void Close() { fd_.reset(); }
  bool is_open() const { return fd_.get() >= 0; }
  int fd() const { return fd_.get(); }

  // Appends one line; does nothing when the file is not open. Trailing
  // newlines of the text are dropped and inner ones become blanks. Returns 0,
  // or the errno value of a failed write.
  int Write(int severity, const char* source, const char* text);

 private:
  int OpenDay(int day);

  ScopedFd fd_;
  std::string dir_, prefix_;
  int mode_ = 0;
  int day_ = 0;  // YYYYMMDD of the open file
};

#endif  // PLATFORM_LOG_FILE_H_
