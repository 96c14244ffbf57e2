// The legacy debug log: one process-wide daily log file.
#include "platform/debuglog.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <string>

#include "platform/auth.h"
#include "platform/config.h"
#include "platform/log_file.h"
#include "platform/root.h"

namespace {

DailyLogFile g_log;
std::string g_progname;  // source of logmsgv lines

}  // namespace

const char* swdlog_root() {
  static const std::string root = StashwellPath("logs");
  return root.c_str();
}

int open_debug_log(const char* logsRoot, const char* logName, const char* progname, int mode,
                   int* errnum) {
  if (errnum) *errnum = 0;
  g_log.Close();
  if (!logsRoot || !logName || !progname || !*progname) {
    if (errnum) *errnum = EINVAL;
    return -1;
  }
  g_progname = progname;
  int err = g_log.Open(std::string(logsRoot) + "/" + logName, progname, mode);
  if (err != 0) {
    if (errnum) *errnum = err;
    return -1;
  }
  return g_log.fd();
}

void close_debug_log() { g_log.Close(); }

void logmsg(int severity, const char* text, const char* source) {
  // A log that cannot be written must not end the run.
  g_log.Write(severity, source, text);
}

void logmsgv(int severity, const char* format, ...) {
  if (!g_log.is_open() || !format) return;
  char text[8192];
  va_list ap;
  va_start(ap, format);
  vsnprintf(text, sizeof text, format, ap);
  va_end(ap);
  g_log.Write(severity, g_progname.c_str(), text);
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
