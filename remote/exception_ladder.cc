// The rows of the exception ladder.
#include "remote/exception_ladder.h"

#include <cstdio>
#include <stdexcept>
#include <string>

#include "remote/exception_text.h"
#include "remote/idl/IllegalArgumentException.hh"
#include "remote/service_target.h"
#include "util/cmd_exit.h"
#include "util/line_writer.h"

namespace {

bool IsConnectionFailure(const CORBA::Exception& e) {
  return CORBA::COMM_FAILURE::_downcast(&e) != nullptr ||
         CORBA::TRANSIENT::_downcast(&e) != nullptr || CORBA::TIMEOUT::_downcast(&e) != nullptr;
}

}  // namespace

void ReportRemoteException(const char* serviceName) {
  using Orvantic::Stashwell::TL::Framework::IllegalArgumentException;
  using Orvantic::Stashwell::TL::Framework::IllegalArgumentExceptionHelper;
  Orvantic::Stashwell::WritePendingOutput();  // what a report printed comes first
  try {
    throw;
  } catch (const IllegalArgumentException& e) {
    std::string text = IllegalArgumentExceptionHelper::str(e);
    fprintf(stderr, "IllegalArgumentException from %s: %s\n", serviceName, text.c_str());
  } catch (const CORBA::UserException& e) {
    fprintf(stderr, "Caught CORBA UserException from %s: %s", serviceName,
            ExceptionInfo(e).c_str());
  } catch (const CORBA::Exception& e) {
    if (IsConnectionFailure(e)) {
      fprintf(stderr, "cannot connect to %s\n", serviceName);
      LogUnreachableService(&e);
    } else if (CORBA::SystemException::_downcast(&e) != nullptr) {
      fprintf(stderr, "Caught CORBA SystemException from %s: %s", serviceName,
              ExceptionInfo(e).c_str());
    } else {
      fprintf(stderr, "Corba Exception: %s\n", e._name());
    }
  } catch (const std::runtime_error& e) {
    fprintf(stderr, "Runtime error from %s: %s\n", serviceName, e.what());
  }
  CmdExit(-1);
}
