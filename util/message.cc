// Message printing: the catalog text of the id for lc_messages (or the
// default text) formatted into localizedMsg by zkgetmsg, then written out.
#include "util/message.h"

#include <cstdarg>
#include <cstring>

#include "platform/msgcat.h"
#include "util/line_writer.h"
#include "util/process.h"

char localizedMsg[8192];
char msgBuffer[8192];

const char* LocalizeMsg(const char* id, const char* defaultFormat, ...) {
  va_list ap;
  va_start(ap, defaultFormat);
  vzkgetmsg(id, lc_messages, sizeof localizedMsg, localizedMsg, nullptr, 0, nullptr, defaultFormat,
            ap);
  va_end(ap);
  return localizedMsg;
}

const char* PrintMsg(FILE* stream, const char* id, const char* defaultFormat, ...) {
  va_list ap;
  va_start(ap, defaultFormat);
  vzkgetmsg(id, lc_messages, sizeof localizedMsg, localizedMsg, nullptr, 0, nullptr, defaultFormat,
            ap);
  va_end(ap);
  Orvantic::Stashwell::WritePendingOutput();
  fputs(localizedMsg, stream);
  size_t n = strlen(defaultFormat);
  if (n == 0 || defaultFormat[n - 1] != '\n') fputc('\n', stream);
  return localizedMsg;
}
