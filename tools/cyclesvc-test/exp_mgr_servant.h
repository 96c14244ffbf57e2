// The test service's expiration manager: every operation records its call
// and answers, out values included, as the scenario says
// (tools/cyclesvc-test/scenario.h).
#ifndef TOOLS_CYCLESVC_TEST_EXP_MGR_SERVANT_H_
#define TOOLS_CYCLESVC_TEST_EXP_MGR_SERVANT_H_

#include "remote/idl/ExpMgr.hh"
#include "tools/cyclesvc-test/scenario.h"

namespace cyclesvc_test {

class ExpMgrServant : public POA_Orvantic::Stashwell::StorageServiceMgmt::ExpMgrSVC::ExpMgr {
 public:
  explicit ExpMgrServant(Scenario& scenario) : scenario_(scenario) {}

  CORBA::Long InitiateExpiration(const char* mediaServer, const char* storageServer,
                                 const char* volumeId, const char* mediaId, const char* diskPool,
                                 CORBA::Long diskType) override;
  CORBA::Long HwmUpdate(const char* mediaServer, const char* storageServer, const char* mediaId,
                        const char* stsSubtype, CORBA::LongLong totalCapacity,
                        CORBA::LongLong usedCapacity) override;
  CORBA::Long DiskfullExpiration(
      Orvantic::Stashwell::StorageServiceMgmt::ExpMgrSVC::EXPIRATION_TYPE expirationType,
      const char* mediaServer, const char* storageServer, const char* volumeId, const char* mediaId,
      CORBA::Long diskType, CORBA::LongLong totalCapacity, CORBA::LongLong usedSpace,
      CORBA::LongLong& expiredSpace, CORBA::Long& expirationId) override;
  CORBA::Long QueryExpiration(CORBA::Long expirationId, CORBA::Long& opStatus,
                              CORBA::LongLong& expiredSpace) override;
  CORBA::Long DeletionDone(CORBA::Long expirationId) override;
  CORBA::Long UpdatePotentialFreeSpace(const char* mediaServer, const char* storageServer,
                                       const char* volumeId, const char* mediaId,
                                       CORBA::Long diskType) override;

 private:
  Scenario& scenario_;
};

}  // namespace cyclesvc_test

#endif  // TOOLS_CYCLESVC_TEST_EXP_MGR_SERVANT_H_
