// The service table and the resolution of the three services.
#include "remote/services.h"

#include <cstdio>

#include "platform/config.h"
#include "platform/orb/orb.h"
#include "platform/time_value.h"
#include "remote/exception_ladder.h"
#include "remote/orb_startup.h"
#include "util/cmd_exit.h"
#include "util/message.h"
#include "util/process.h"

namespace DssSVC = Orvantic::Stashwell::StorageServiceMgmt::DssSVC;
namespace ExpMgrSVC = Orvantic::Stashwell::StorageServiceMgmt::ExpMgrSVC;
namespace DiskService = Orvantic::Stashwell::DL::DiskService;

const RemoteService kSlpManager = {
    ServiceHost::kMasterServer,
    "cyclesvc",
    "StorageService.StorageServiceMgr",
    "cyclesvc",
    [] { PrintMsg(stderr, "SmeSlp0070N", "cannot connect to the SLP manager"); },
    [] { PrintMsg(stderr, "SmeSlp0100N", "cannot narrow SLP manager object"); }};
const RemoteService kExpirationManager = {
    ServiceHost::kMasterServer,
    "cyclesvc",
    "StorageService.ExpirationMgr",
    "cyclesvc",
    [] { PrintMsg(stderr, "SmeSlp0040N", "cannot connect to expiration manager"); },
    [] { PrintMsg(stderr, "SmeSlp0050N", "cannot narrow expiration manager object"); }};
const RemoteService kDiskServiceManager = {
    ServiceHost::kEmmServer,
    "SWDSMFSM",
    "DiskService.DiskServiceMgr",
    "dsm",
    [] { PrintMsg(stderr, "SmeSlp0010N", "cannot connect to Disk Service Manager"); },
    [] { PrintMsg(stderr, "SmeSlp0020N", "cannot narrow Disk Service Manager object"); }};

CORBA::Object_ptr ResolveService(const RemoteService& service) {
  if (SWOrb == nullptr) return CORBA::Object::_nil();
  const std::string& host = service.host == ServiceHost::kMasterServer ? MasterServer : EmmServer;
  // Built afresh for every resolution, as the wrapper takes them by reference;
  // 10 s and 3600 s unless the configuration says otherwise.
  const StashwellConfig* config = SW_config();
  ACE_Time_Value connectTimeout(config->serviceConnectTimeoutMs / 1000,
                                (config->serviceConnectTimeoutMs % 1000) * 1000);
  ACE_Time_Value callTimeout(config->serviceCallTimeoutMs / 1000,
                             (config->serviceCallTimeoutMs % 1000) * 1000);
  NoteServiceTarget(host, service.daemonName, service.objectName, config->serviceConnectTimeoutMs,
                    config->serviceCallTimeoutMs);
  bool applyTimeouts = true;
  bool verify = false;
  return SWOrb->resolve(host.c_str(), service.daemonName, service.objectName, connectTimeout,
                        callTimeout, applyTimeouts, verify);
}

DssSVC::Dssvc_ptr ConnectToSlpManager() {
  return RunRemote(kSlpManager.ladderName,
                   [] { return NarrowService<DssSVC::Dssvc>(kSlpManager); });
}

ExpMgrSVC::ExpMgr_ptr ConnectToExpirationManager() {
  return RunRemote(kExpirationManager.ladderName,
                   [] { return NarrowService<ExpMgrSVC::ExpMgr>(kExpirationManager); });
}

DiskService::DiskServiceMgr_ptr ConnectToDSM() {
  return RunRemote(kDiskServiceManager.ladderName, [] {
    DiskService::DiskServiceMgr_ptr manager =
        NarrowService<DiskService::DiskServiceMgr>(kDiskServiceManager);
    if (CORBA::is_nil(manager)) CmdExit(-1);
    return manager;
  });
}
