// Daily log files. Each line goes out in one write() so that processes
// appending to the same file never interleave within a line.
#include "platform/log_file.h"

#include <fcntl.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <ctime>

namespace {

int DayOf(const struct tm& t) {
  return (t.tm_year + 1900) * 10000 + (t.tm_mon + 1) * 100 + t.tm_mday;
}

}  // namespace

int DailyLogFile::OpenDay(int day) {
  std::string path = dir_ + "/" + prefix_ + "." + std::to_string(day) + ".log";
  int fd = open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, mode_);
  if (fd < 0) return errno;
  fd_.reset(fd);
  day_ = day;
  return 0;
}

int DailyLogFile::Open(const std::string& dir, const std::string& prefix, int mode) {
  fd_.reset();
  dir_ = dir;
  prefix_ = prefix;
  mode_ = mode;
  time_t now = time(nullptr);
  struct tm t;
  localtime_r(&now, &t);
  return OpenDay(DayOf(t));
}

int DailyLogFile::Write(int severity, const char* source, const char* text) {
  if (!is_open()) return 0;
  struct timeval tv;
  gettimeofday(&tv, nullptr);
  struct tm t;
  localtime_r(&tv.tv_sec, &t);
  if (DayOf(t) != day_) OpenDay(DayOf(t));  // on failure the old day's file goes on

  char prefix[96];
  snprintf(prefix, sizeof prefix, "%02d:%02d:%02d.%03d [%ld] <%d> ", t.tm_hour, t.tm_min, t.tm_sec,
           static_cast<int>(tv.tv_usec / 1000), static_cast<long>(getpid()), severity);
  std::string line = prefix;
  line += source ? source : "";
  line += ": ";
  std::string body = text ? text : "";
  while (!body.empty() && (body.back() == '\n' || body.back() == '\r')) body.pop_back();
  for (char& c : body)
    if (c == '\n' || c == '\r') c = ' ';
  line += body;
  line += '\n';
  ssize_t n = write(fd_.get(), line.data(), line.size());
  return n == static_cast<ssize_t>(line.size()) ? 0 : (n < 0 ? errno : EIO);
}
