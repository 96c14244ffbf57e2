// Texts of remote exceptions for the messages of the exception ladder: the
// description of any CORBA exception (ExceptionInfo), and the text of the
// framework's IllegalArgumentException (IllegalArgumentExceptionHelper).
#ifndef REMOTE_EXCEPTION_TEXT_H_
#define REMOTE_EXCEPTION_TEXT_H_

#include <string>

#include "remote/idl/IllegalArgumentException.hh"

// The exception's own description. A user exception gives its repository id
// and no line end, for example
//   "IDL:Orvantic/Stashwell/TL/Framework/ServiceException:1.0";
// a system exception its repository id, minor code in hexadecimal (followed
// by omniORB's name for the code when it has one) and completion status,
// ending with a line end, for example
//   "IDL:omg.org/CORBA/BAD_PARAM:1.0 (minor code 0x0, completed NO)\n"
//   "IDL:omg.org/CORBA/TRANSIENT:1.0 (minor code 0x<code> TRANSIENT_ConnectFailed,
//   completed NO)\n" (one line).
// Any other exception gives its name and no line end.
std::string ExceptionInfo(const CORBA::Exception& e);

namespace Orvantic {
namespace Stashwell {
namespace TL {
namespace Framework {

class IllegalArgumentExceptionHelper {
 public:
  // "IllegalArgumentException", then, when the exception carries details,
  // ":" and, each only when its member is present, " in method <m>",
  // " of class <c>", " in service <s>", " on host <h>", " at <ctime_r text>"
  // (only for a non-zero time stamp; that text ends with its own line end)
  // and "; argumentName=\"<name>\"".
  static std::string str(const IllegalArgumentException& e);
  // A newly allocated copy of str(e); the caller frees it with
  // CORBA::string_free (or holds it in a CORBA::String_var).
  static char* c_str(const IllegalArgumentException& e);
};

}  // namespace Framework
}  // namespace TL
}  // namespace Stashwell
}  // namespace Orvantic

#endif  // REMOTE_EXCEPTION_TEXT_H_
