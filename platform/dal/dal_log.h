// Debug-log lines of the data-access layer: statements and outcomes at the
// verbosity the caller names, failures always. Lines go through the debug
// log of the process (platform/debuglog.h) with the caller's name as source.
#ifndef PLATFORM_DAL_DAL_LOG_H_
#define PLATFORM_DAL_DAL_LOG_H_

#include <string>

#include "platform/dal/dal_types.h"

namespace Corvela {
namespace Dal {

// Writes `text` at severity 2 when the program's configured verbosity is at
// least `verbosity`. A null source logs as "Corvela::Dal".
void DalTrace(LOG_AT_VERBOSITY verbosity, const char* source, const std::string& text);

// Writes `text` at severity 16.
void DalError(const char* source, const std::string& text);

}  // namespace Dal
}  // namespace Corvela

#endif  // PLATFORM_DAL_DAL_LOG_H_
