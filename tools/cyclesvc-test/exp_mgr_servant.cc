// The expiration manager servant: each operation records its arguments and
// answers from the scenario.
#include "tools/cyclesvc-test/exp_mgr_servant.h"

#include "tools/cyclesvc-test/servant_args.h"

namespace cyclesvc_test {

namespace ExpMgrSVC = Orvantic::Stashwell::StorageServiceMgmt::ExpMgrSVC;

namespace {

const char* const kExpirationTypeNames[] = {"EXP_TYPE_NORMAL", "EXP_TYPE_AGGRESSIVE"};

}  // namespace

CORBA::Long ExpMgrServant::InitiateExpiration(const char* mediaServer, const char* storageServer,
                                              const char* volumeId, const char* mediaId,
                                              const char* diskPool, CORBA::Long diskType) {
  return scenario_
      .answer("ExpMgr.InitiateExpiration", Args()
                                               .str(mediaServer)
                                               .str(storageServer)
                                               .str(volumeId)
                                               .str(mediaId)
                                               .str(diskPool)
                                               .num(diskType))
      .status();
}

CORBA::Long ExpMgrServant::HwmUpdate(const char* mediaServer, const char* storageServer,
                                     const char* mediaId, const char* stsSubtype,
                                     CORBA::LongLong totalCapacity, CORBA::LongLong usedCapacity) {
  return scenario_
      .answer("ExpMgr.HwmUpdate", Args()
                                      .str(mediaServer)
                                      .str(storageServer)
                                      .str(mediaId)
                                      .str(stsSubtype)
                                      .num(totalCapacity)
                                      .num(usedCapacity))
      .status();
}

CORBA::Long ExpMgrServant::DiskfullExpiration(
    ExpMgrSVC::EXPIRATION_TYPE expirationType, const char* mediaServer, const char* storageServer,
    const char* volumeId, const char* mediaId, CORBA::Long diskType, CORBA::LongLong totalCapacity,
    CORBA::LongLong usedSpace, CORBA::LongLong& expiredSpace, CORBA::Long& expirationId) {
  Reply reply = scenario_.answer("ExpMgr.DiskfullExpiration",
                                 Args()
                                     .name(EnumName(kExpirationTypeNames, expirationType).c_str())
                                     .str(mediaServer)
                                     .str(storageServer)
                                     .str(volumeId)
                                     .str(mediaId)
                                     .num(diskType)
                                     .num(totalCapacity)
                                     .num(usedSpace));
  expiredSpace = reply.number("expiredSpace");
  expirationId = static_cast<CORBA::Long>(reply.number("expirationId"));
  return reply.status();
}

CORBA::Long ExpMgrServant::QueryExpiration(CORBA::Long expirationId, CORBA::Long& opStatus,
                                           CORBA::LongLong& expiredSpace) {
  Reply reply = scenario_.answer("ExpMgr.QueryExpiration", Args().num(expirationId));
  opStatus = static_cast<CORBA::Long>(reply.number("opStatus"));
  expiredSpace = reply.number("expiredSpace");
  return reply.status();
}

CORBA::Long ExpMgrServant::DeletionDone(CORBA::Long expirationId) {
  return scenario_.answer("ExpMgr.DeletionDone", Args().num(expirationId)).status();
}

CORBA::Long ExpMgrServant::UpdatePotentialFreeSpace(const char* mediaServer,
                                                    const char* storageServer, const char* volumeId,
                                                    const char* mediaId, CORBA::Long diskType) {
  return scenario_
      .answer("ExpMgr.UpdatePotentialFreeSpace",
              Args().str(mediaServer).str(storageServer).str(volumeId).str(mediaId).num(diskType))
      .status();
}

}  // namespace cyclesvc_test
