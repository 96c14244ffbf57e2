// The record log of the catalog-database helpers. Its unified-logger lines
// name this file and line, the way every unified-log line names its origin.
#include "util/cmn.h"

#include <cstdarg>
#include <cstdio>
#include <locale>
#include <sstream>

#include "platform/debuglog.h"
#include "platform/swlogger.h"
#include "util/swdlog.h"

namespace DBData {
namespace {

int g_method = LOG_METHOD_NONE;

}  // namespace

void LogMessage(int level, const char* source, const char* format, ...) {
  if (g_method == LOG_METHOD_NONE) return;
  char text[7680];
  text[0] = '\0';
  va_list ap;
  va_start(ap, format);
  if (format) vsnprintf(text, sizeof text, format, ap);
  va_end(ap);
  if (!source) source = "";

  if (g_method == LOG_METHOD_LEGACY) {
    logmsgv(level == 0 ? 16 : 2, "level %d: %s (%s)", level, text, source);
  } else if (g_method == LOG_METHOD_UNIFIED) {
    SWLogger* logger = SWLogger::s_default;
    if (!logger) return;
    if (level >= 1 && level <= 6) {
      if (logger->verbose < level) return;
    } else {
      level = 1;
    }
    std::ostringstream line;
    line.imbue(std::locale::classic());
    line << text << "(" << swdlog_basename(__FILE__) << ":" << __LINE__ << ")";
    logger->logDebug(source, level, line.str().c_str());
  }
}

void UseLegacyLogs() { g_method = LOG_METHOD_LEGACY; }

void UseQzULLogs() { g_method = LOG_METHOD_UNIFIED; }

int GetLoggingMethod() { return g_method; }

}  // namespace DBData
