// The three services the tool reaches and how: the SLP manager and the
// expiration manager of the SLP service daemon on the master server, and the
// disk service manager on the EMM server. Each is resolved through SWOrb with
// the same time-outs and flags, narrowed to its interface, and reported with
// its own "cannot connect" and "cannot narrow" messages.
#ifndef REMOTE_SERVICES_H_
#define REMOTE_SERVICES_H_

#include "remote/idl/DiskService.hh"
#include "remote/idl/ExpMgr.hh"
#include "remote/idl/dssvc.hh"
#include "remote/service_target.h"

enum class ServiceHost { kMasterServer, kEmmServer };

struct RemoteService {
  ServiceHost host;
  const char* daemonName;
  const char* objectName;
  const char* ladderName;        // the name the exception ladder reports
  void (*printCannotConnect)();  // the service's message on standard error
  void (*printCannotNarrow)();
};

extern const RemoteService kSlpManager;
extern const RemoteService kExpirationManager;
extern const RemoteService kDiskServiceManager;

// The service's plain object reference from SWOrb (connect time-out 10 s,
// call time-out 3600 s, or SERVICE_CONNECT_TIMEOUT and SERVICE_CALL_TIMEOUT
// of the configuration), or nil when it cannot be resolved. The caller owns
// it. CORBA exceptions propagate.
CORBA::Object_ptr ResolveService(const RemoteService& service);

// Resolves `service` and narrows it to `Interface`. Returns the narrowed
// reference (the caller releases it), or nil after printing the matching
// message. CORBA exceptions propagate: call it inside the exception ladder.
template <class Interface>
typename Interface::_ptr_type NarrowService(const RemoteService& service) {
  CORBA::Object_var object = ResolveService(service);
  if (CORBA::is_nil(object)) {
    LogUnreachableService(nullptr);
    service.printCannotConnect();
    return Interface::_nil();
  }
  typename Interface::_var_type narrowed = Interface::_narrow(object);
  if (CORBA::is_nil(narrowed)) {
    service.printCannotNarrow();
    return Interface::_nil();
  }
  return narrowed._retn();
}

// The SLP manager and the expiration manager, resolved and narrowed inside
// the exception ladder ("cyclesvc"): the reference, or nil after the
// service's message; what a nil means for the run is the caller's business.
Orvantic::Stashwell::StorageServiceMgmt::DssSVC::Dssvc_ptr ConnectToSlpManager();
Orvantic::Stashwell::StorageServiceMgmt::ExpMgrSVC::ExpMgr_ptr ConnectToExpirationManager();

// The disk service manager, resolved and narrowed inside the exception
// ladder ("dsm"); the caller releases it. When it cannot be resolved or
// narrowed, prints the message and ends the run with CmdExit(-1).
Orvantic::Stashwell::DL::DiskService::DiskServiceMgr_ptr ConnectToDSM();

#endif  // REMOTE_SERVICES_H_
