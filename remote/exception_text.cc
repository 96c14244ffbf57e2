// Descriptions of CORBA exceptions and the IllegalArgumentException text.
#include "remote/exception_text.h"

#include <cstdio>
#include <ctime>

namespace {

const char* CompletionName(CORBA::CompletionStatus status) {
  static const char* const kNames[] = {"YES", "NO", "MAYBE"};
  unsigned index = static_cast<unsigned>(status);
  return index < 3 ? kNames[index] : "MAYBE";
}

void AppendIfPresent(std::string& text, const char* label, const char* value) {
  if (value == nullptr) return;
  text += label;
  text += value;
}

}  // namespace

std::string ExceptionInfo(const CORBA::Exception& e) {
  if (const CORBA::SystemException* se = CORBA::SystemException::_downcast(&e)) {
    char minor[32];
    snprintf(minor, sizeof minor, "0x%lx", static_cast<unsigned long>(se->minor()));
    std::string text = se->_rep_id();
    text += " (minor code ";
    text += minor;
    if (const char* name = se->NP_minorString()) {
      text += " ";
      text += name;
    }
    text += ", completed ";
    text += CompletionName(se->completed());
    text += ")\n";
    return text;
  }
  if (CORBA::UserException::_downcast(&e) != nullptr) return e._rep_id();
  return e._name();
}

namespace Orvantic {
namespace Stashwell {
namespace TL {
namespace Framework {

std::string IllegalArgumentExceptionHelper::str(const IllegalArgumentException& e) {
  std::string text = e._name();
  const IllegalArgumentExceptionDetails* details = e.details.in();
  if (details == nullptr) return text;
  text += ":";
  AppendIfPresent(text, " in method ", details->originatingMethod());
  AppendIfPresent(text, " of class ", details->originatingClass());
  AppendIfPresent(text, " in service ", details->originatingService());
  AppendIfPresent(text, " on host ", details->originatingHost());
  if (details->timeStamp() != 0) {
    time_t when = static_cast<time_t>(details->timeStamp());
    char buffer[64];
    if (ctime_r(&when, buffer) != nullptr) AppendIfPresent(text, " at ", buffer);
  }
  if (details->argumentName() != nullptr) {
    text += "; argumentName=\"";
    text += details->argumentName();
    text += "\"";
  }
  return text;
}

char* IllegalArgumentExceptionHelper::c_str(const IllegalArgumentException& e) {
  return CORBA::string_dup(str(e).c_str());
}

}  // namespace Framework
}  // namespace TL
}  // namespace Stashwell
}  // namespace Orvantic
