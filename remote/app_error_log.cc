// The remote pieces' entries in the application-message log.
#include "remote/app_error_log.h"

#include "util/app_log.h"
#include "util/process.h"

void LogAppError(const char* messageNumber, const char* format,
                 std::initializer_list<const char*> args) {
  if (progname.empty()) return;
  try {
    Corvela::Logging::Log<false> log(progname.c_str());
    Corvela::L10N::LisMgr text(messageNumber, format);
    for (const char* arg : args) text << arg;
    log.WriteAppMsg(0, CRVL_SEV_ERROR, text);
  } catch (const Corvela::L10N::LisX&) {
    // Out of memory or an argument that cannot be converted: no entry.
  }
}
