// The expiration manager's operations.
#include "remote/expiration_control.h"

#include <cinttypes>
#include <cstdio>

#include "platform/msgcat.h"
#include "remote/exception_ladder.h"
#include "remote/services.h"
#include "util/message.h"
#include "util/process.h"

namespace ExpMgrSVC = Orvantic::Stashwell::StorageServiceMgmt::ExpMgrSVC;

namespace {

// Resolves the expiration manager and makes `call` on it inside the
// exception ladder; returns false, after the service's message, when it
// cannot be reached or narrowed.
template <typename Call>
bool WithExpirationManager(Call&& call) {
  ExpMgrSVC::ExpMgr_var manager = ConnectToExpirationManager();
  if (CORBA::is_nil(manager)) return false;
  RunRemote(kExpirationManager.ladderName, [&] { call(manager.in()); });
  return true;
}

// The status text of `status` from the status-code catalog, message locale.
std::string StatusText(long status) {
  return getECmsgl_ts(static_cast<int>(status), lc_messages).text;
}

// "<label><r>(<text of r>)" and a line end on standard output.
void PrintStatusLine(const char* label, long status) {
  printf("%s%ld(%s)\n", label, status, StatusText(status).c_str());
}

}  // namespace

void InitiateExpire(const VolumeFacts& v) {
  CORBA::Long r = 0;
  if (!WithExpirationManager([&](ExpMgrSVC::ExpMgr_ptr m) {
        r = m->InitiateExpiration(v.mediaServer.c_str(), v.storageServer.c_str(),
                                  v.volumeId.c_str(), v.mediaId.c_str(), v.diskPool.c_str(),
                                  v.diskType);
      }))
    return;
  if (r != 0) {
    PrintMsg(stderr, "SmeSlp0170N", "Initiate Expiration return value = %d", static_cast<int>(r));
  }
}

void UpdateHwm(const std::string& mediaServer, const std::string& storageServer,
               const std::string& mediaId, const std::string& stsSubtype, int64_t totalCapacity,
               int64_t usedCapacity) {
  CORBA::Long r = 0;
  if (!WithExpirationManager([&](ExpMgrSVC::ExpMgr_ptr m) {
        r = m->HwmUpdate(mediaServer.c_str(), storageServer.c_str(), mediaId.c_str(),
                         stsSubtype.c_str(), totalCapacity, usedCapacity);
      }))
    return;
  if (r != 0) {
    PrintMsg(stderr, "SmeSlp0160N", "high watermark update return value = %d", static_cast<int>(r));
  }
}

void UpdatePotentialFreeSpace(const VolumeFacts& v) {
  CORBA::Long r = 0;
  if (!WithExpirationManager([&](ExpMgrSVC::ExpMgr_ptr m) {
        r = m->UpdatePotentialFreeSpace(v.mediaServer.c_str(), v.storageServer.c_str(),
                                        v.volumeId.c_str(), v.mediaId.c_str(), v.diskType);
      }))
    return;
  if (r != 0) {
    PrintMsg(stderr, "SmeSlp0320N", "update potential free space return value = %d",
             static_cast<int>(r));
  }
}

void DiskfullExpiration(const VolumeFacts& v, int64_t totalCapacity, int64_t usedSpace) {
  CORBA::Long r = 0;
  CORBA::LongLong expiredSpace = 0;
  CORBA::Long expirationId = 0;
  if (!WithExpirationManager([&](ExpMgrSVC::ExpMgr_ptr m) {
        r = m->DiskfullExpiration(ExpMgrSVC::EXP_TYPE_NORMAL, v.mediaServer.c_str(),
                                  v.storageServer.c_str(), v.volumeId.c_str(), v.mediaId.c_str(),
                                  v.diskType, totalCapacity, usedSpace, expiredSpace, expirationId);
      }))
    return;
  PrintStatusLine("DiskfullExpiration return value = ", r);
  printf("                   expiration id = %ld\n", static_cast<long>(expirationId));
  printf("                   expired space = %" PRId64 "\n", static_cast<int64_t>(expiredSpace));
}

void QueryExpiration(int expirationId) {
  CORBA::Long r = 0;
  CORBA::Long opStatus = 0;
  CORBA::LongLong expiredSpace = 0;
  if (!WithExpirationManager([&](ExpMgrSVC::ExpMgr_ptr m) {
        r = m->QueryExpiration(expirationId, opStatus, expiredSpace);
      }))
    return;
  PrintStatusLine("QueryExpiration return value = ", r);
  PrintStatusLine("                op status = ", opStatus);
  printf("                expired space = %" PRId64 "\n", static_cast<int64_t>(expiredSpace));
}

void DeletionDone(int expirationId) {
  CORBA::Long r = 0;
  if (!WithExpirationManager([&](ExpMgrSVC::ExpMgr_ptr m) { r = m->DeletionDone(expirationId); }))
    return;
  PrintStatusLine("DeletionDone return value = ", r);
}
