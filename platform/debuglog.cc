// The legacy debug log: a process-wide open file that follows the calendar
// day, and lines written with one write() each so that concurrent processes
// appending to the same file never interleave within a line.
#include "platform/debuglog.h"

#include <fcntl.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <string>

#include "platform/auth.h"
#include "platform/config.h"
#include "platform/file_util.h"
#include "platform/root.h"

namespace {

struct DebugLog {
  ScopedFd fd;
  std::string dir;       // <logs root>/<log name>
  std::string progname;  // file name prefix and logmsgv source
  int mode = 0;
  int day = 0;  // YYYYMMDD of the open file
};

DebugLog g_log;

int DayOf(const struct tm& t) { return (t.tm_year + 1900) * 10000 + (t.tm_mon + 1) * 100 + t.tm_mday; }

// Opens the file of `day` in the log's directory; the descriptor or -1.
int OpenDayFile(int day) {
  std::string path = g_log.dir + "/" + g_log.progname + "." + std::to_string(day) + ".log";
  return open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, g_log.mode);
}

}  // namespace

const char* swdlog_root() {
  static const std::string root = StashwellPath("logs");
  return root.c_str();
}

int open_debug_log(const char* logsRoot, const char* logName, const char* progname,
                   int mode, int* errnum) {
  if (errnum) *errnum = 0;
  if (!logsRoot || !logName || !progname || !*progname) {
    if (errnum) *errnum = EINVAL;
    return -1;
  }
  g_log.fd.reset();
  g_log.dir = std::string(logsRoot) + "/" + logName;
  g_log.progname = progname;
  g_log.mode = mode;
  time_t now = time(nullptr);
  struct tm t;
  localtime_r(&now, &t);
  g_log.day = DayOf(t);
  int fd = OpenDayFile(g_log.day);
  if (fd < 0) {
    if (errnum) *errnum = errno;
    return -1;
  }
  g_log.fd.reset(fd);
  return fd;
}

void close_debug_log() { g_log.fd.reset(); }

void logmsg(int severity, const char* text, const char* source) {
  if (g_log.fd.get() < 0) return;
  struct timeval tv;
  gettimeofday(&tv, nullptr);
  struct tm t;
  localtime_r(&tv.tv_sec, &t);
  int day = DayOf(t);
  if (day != g_log.day) {
    int fd = OpenDayFile(day);
    if (fd >= 0) {
      g_log.fd.reset(fd);
      g_log.day = day;
    }
  }
  char prefix[96];
  snprintf(prefix, sizeof prefix, "%02d:%02d:%02d.%03d [%ld] <%d> ", t.tm_hour, t.tm_min,
           t.tm_sec, static_cast<int>(tv.tv_usec / 1000), static_cast<long>(getpid()), severity);
  std::string line = prefix;
  line += source ? source : "";
  line += ": ";
  std::string body = text ? text : "";
  while (!body.empty() && (body.back() == '\n' || body.back() == '\r')) body.pop_back();
  for (char& c : body)
    if (c == '\n' || c == '\r') c = ' ';
  line += body;
  line += '\n';
  // A log that cannot be written must not end the run.
  ssize_t n = write(g_log.fd.get(), line.data(), line.size());
  (void)n;
}

void logmsgv(int severity, const char* format, ...) {
  if (g_log.fd.get() < 0 || !format) return;
  char text[8192];
  va_list ap;
  va_start(ap, format);
  vsnprintf(text, sizeof text, format, ap);
  va_end(ap);
  logmsg(severity, text, g_log.progname.c_str());
}

int is_user_admin(int) {
  int isAdmin = 0, how = 0;
  if (qbrd_get_my_local_roles(&isAdmin, &how, 60) != 0) return 0;
  return isAdmin;
}

int get_configured_verbose(const char* progname, const char* /*logName*/) {
  const StashwellConfig* c = SW_config();
  if (progname) {
    auto it = c->programVerbose.find(progname);
    if (it != c->programVerbose.end()) return it->second;
  }
  return c->verbose;
}
