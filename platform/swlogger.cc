// The unified logger and the function tracer.
#include "platform/swlogger.h"

#include <sys/stat.h>

#include <cstdio>
#include <cstring>

#include "platform/root.h"

SWLogger* SWLogger::s_default = nullptr;

SWLogger::SWLogger(const char* name, int verbosity) : verbose(verbosity) {
  if (!name || !*name || strchr(name, '/')) return;
  std::string dir = StashwellPath("logs/") + name;
  mkdir(dir.c_str(), 0755);  // fails harmlessly when present or without a logs root
  file_.Open(dir, name, 0644);
}

void SWLogger::logDebug(const char* source, int level, const char* text) {
  file_.Write(level, source, text);
}

Tracer::Tracer(SWLogger* logger, const void* object, const char* function, const char* file,
               int line)
    : logger_(logger && logger->verbose >= kTraceLevel ? logger : nullptr),
      object_(object),
      function_(function ? function : "") {
  if (!logger_) return;
  const char* base = file ? strrchr(file, '/') : nullptr;
  char text[512];
  snprintf(text, sizeof text, "Entering %s [%p] (%s:%d)", function_.c_str(), object_,
           base ? base + 1 : (file ? file : ""), line);
  logger_->logDebug(function_.c_str(), kTraceLevel, text);
}

Tracer::~Tracer() {
  if (!logger_) return;
  char text[512];
  snprintf(text, sizeof text, "Leaving %s [%p]", function_.c_str(), object_);
  logger_->logDebug(function_.c_str(), kTraceLevel, text);
}
