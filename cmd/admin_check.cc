// The administrator check. Each refusal is built twice by zkgetmsg: in the
// run's message locale for the user and in "C" for the debug log, so that the
// log stays readable whatever language the caller uses.
#include "cmd/admin_check.h"

#include <cstdarg>
#include <cstdio>

#include "platform/auth.h"
#include "platform/config.h"
#include "platform/debuglog.h"
#include "platform/msgcat.h"
#include "util/cmd_exit.h"
#include "util/process.h"

namespace {

const char kSource[] = "check_if_local_swu_admin_for_secure_command";
const size_t kTextSize = 2148;

void Trace(const char* format, ...) __attribute__((format(printf, 1, 2)));
void Trace(const char* format, ...) {
  char line[256];
  va_list ap;
  va_start(ap, format);
  vsnprintf(line, sizeof line, format, ap);
  va_end(ap);
  logmsg(2, line, kSource);
}

// Writes the user's text to standard error, logs the "C" text as an error
// and ends the run with `status`.
[[noreturn]] void Refuse(const char* userText, const char* logText, int status) {
  fputs(userText, stderr);
  logmsg(16, logText, kSource);
  CmdExit(status);
}

[[noreturn]] void RefuseNotSuperuser(const char* programName, int status) {
  char userText[kTextSize], logText[kTextSize];
  zkgetmsg("SmeCom0030N", lc_messages, kTextSize, userText, "C", kTextSize, logText,
           "%s: must be superuser to execute\n", programName);
  Refuse(userText, logText, status);
}

}  // namespace

void check_if_local_swu_admin(const char* programName) {
  check_if_local_swu_admin_for_secure_command(programName, 0);
}

void check_if_local_swu_admin_for_secure_command(const char* programName, int allowProhibited) {
  if (!programName) programName = "";
  int r = SW_read_master_config();
  if (r != 0) {
    Trace("SW_read_master_config failed: %d", r);
    char userText[kTextSize], logText[kTextSize];
    zkgetmsg("SmeDup0500N", lc_messages, kTextSize, userText, "C", kTextSize, logText,
             "Error occurred during initialization, check master configuration file");
    fprintf(stderr, "%s\n", userText);
    logmsg(16, logText, kSource);
    CmdExit(r);
  }

  char verbose[64];
  snprintf(verbose, sizeof verbose, "VERBOSE = %d", get_configured_verbose(programName, "admin"));
  logmsg(2, verbose, programName);

  int mode = get_master_config_ptr()->useQzss;
  if (mode == USE_QZSS_REQUIRED) {
    Trace("use_qzss == USE_QZSS_REQUIRED");
    return;
  }

  int isAdmin = 0, how = 0;
  r = qbrd_get_my_local_roles(&isAdmin, &how, 60);
  if (r != 0) {
    Trace("qbrd_get_my_local_roles failed: %d", r);
    RefuseNotSuperuser(programName, r);
  }
  if (isAdmin) return;

  if (mode == USE_QZSS_PROHIBITED && !allowProhibited) {
    Trace("use_qzss == USE_QZSS_PROHIBITED");
    RefuseNotSuperuser(programName, 140);
  }

  r = vnet_qzss_check_user_cred(0, 0, 0, 0);
  if (r != 0) {
    Trace("vnet_qzss_check_user_cred failed: %d", r);
    int kind = 0;
    int k = vnet_get_authentication(&kind);
    if (k != 0) Trace("vnet_get_authentication failed: %d", k);
    if (mode == USE_QZSS_PROHIBITED && kind == VNET_AUTH_CERTIFICATE) {
      char userText[kTextSize], logText[kTextSize];
      zkgetmsg("SmeCom0029N", lc_messages, kTextSize, userText, "C", kTextSize, logText,
               "%s: user must have valid certificate or must be superuser to execute\n",
               programName);
      Refuse(userText, logText, 140);
    }
    RefuseNotSuperuser(programName, 140);
  }
  Trace("use_qzss == USE_QZSS_AUTOMATIC");
}
