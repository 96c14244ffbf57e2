// The test service's SLP manager: every operation records its call and
// answers as the scenario says (tools/cyclesvc-test/scenario.h), out lists
// included.
#ifndef TOOLS_CYCLESVC_TEST_SLP_MANAGER_SERVANT_H_
#define TOOLS_CYCLESVC_TEST_SLP_MANAGER_SERVANT_H_

#include "remote/idl/dssvc.hh"
#include "tools/cyclesvc-test/scenario.h"

namespace cyclesvc_test {

class DssvcServant : public POA_Orvantic::Stashwell::StorageServiceMgmt::DssSVC::Dssvc {
 public:
  explicit DssvcServant(Scenario& scenario) : scenario_(scenario) {}

  using SubSystemID = Orvantic::Stashwell::StorageServiceMgmt::DssSVC::SubSystemID;
  using DumpFormSelector = Orvantic::Stashwell::StorageServiceMgmt::DssSVC::DumpFormSelector;
  using TimeRangeType = Orvantic::Stashwell::StorageServiceMgmt::DssSVC::TimeRangeType;

  CORBA::Long StartImageDupSession() override;
  CORBA::Long CancelImageCopyProcessing(
      const char* destination, const char* lifecycle, const char* backupId, CORBA::Long slpVersion,
      TimeRangeType rangeType, CORBA::ULongLong rangeTime, CORBA::Boolean doCancel,
      Orvantic::Stashwell::StorageServiceMgmt::DssSVC::SLP_CancellableImageSeq_out
          cancellableImages) override;
  CORBA::Long ResumeImageCopyProcessing(const char* destination, const char* lifecycle,
                                        const char* backupId, TimeRangeType rangeType,
                                        CORBA::ULongLong rangeTime) override;
  CORBA::Long SuspendImageCopyProcessing(const char* destination, const char* lifecycle,
                                         const char* backupId, CORBA::ULongLong reactivationTime,
                                         TimeRangeType rangeType,
                                         CORBA::ULongLong rangeTime) override;
  CORBA::Long CheckForActiveSession(CORBA::Long sessionKind) override;
  CORBA::Long TerminateActiveSession() override;
  CORBA::Long SubSystemDump(
      SubSystemID subsystem, DumpFormSelector form, const char* dumpOptions,
      Orvantic::Stashwell::StorageServiceMgmt::DssSVC::stringdata_out dumpLines) override;
  CORBA::Long SubSystemSuspend(SubSystemID subsystem) override;
  CORBA::Long SubSystemResume(SubSystemID subsystem) override;
  CORBA::Long SubSystemOneSession(SubSystemID subsystem, const char* arg1, const char* arg2,
                                  CORBA::Long arg3) override;
  CORBA::Long DropAllWorkGroupAllocations() override;
  CORBA::Long ProcessImportNotificationsFromTarget(
      const char* targetMaster, const char* sourceMaster, CORBA::ULong notificationCount,
      const Orvantic::Stashwell::StorageServiceMgmt::DssSVC::SLP_ImportNotificationSeq&
          notifications) override;

 private:
  Scenario& scenario_;
};

}  // namespace cyclesvc_test

#endif  // TOOLS_CYCLESVC_TEST_SLP_MANAGER_SERVANT_H_
