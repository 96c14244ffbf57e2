// The exception ladder: the one way every resolution, narrowing and remote
// call reports a failure. RunRemote runs a step; any exception of the ladder
// becomes one line on standard error naming the service ("cyclesvc" or
// "dsm") and ends the run with CmdExit(-1). Exceptions outside the ladder
// propagate.
#ifndef REMOTE_EXCEPTION_LADDER_H_
#define REMOTE_EXCEPTION_LADDER_H_

// Reports the exception being handled and ends the run; call it only from
// inside a catch handler. Rows, tried in order, all on standard error:
//   IllegalArgumentException  "IllegalArgumentException from <name>: <text>\n"
//   other user exception      "Caught CORBA UserException from <name>: <info>"
//   COMM_FAILURE, TRANSIENT, TIMEOUT  "cannot connect to <name>\n", and the
//                                     debug log says where and why
//                                     (remote/service_target.h)
//   other system exception    "Caught CORBA SystemException from <name>: <info>"
//   other CORBA exception     "Corba Exception: <exception name>\n"
//   std::runtime_error        "Runtime error from <name>: <what()>\n"
// <text> is IllegalArgumentExceptionHelper::str, <info> ExceptionInfo
// (remote/exception_text.h). Anything else is rethrown.
[[noreturn]] void ReportRemoteException(const char* serviceName);

// Runs `step` and returns its result; an exception of the ladder ends the run.
template <typename Step>
auto RunRemote(const char* serviceName, Step&& step) -> decltype(step()) {
  try {
    return step();
  } catch (...) {
    ReportRemoteException(serviceName);
  }
}

#endif  // REMOTE_EXCEPTION_LADDER_H_
