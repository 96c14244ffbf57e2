// The SLP manager servant: each operation records its arguments and answers
// from the scenario.
#include "tools/cyclesvc-test/slp_manager_servant.h"

#include <string>
#include <vector>

#include "tools/cyclesvc-test/servant_args.h"
#include "tools/cyclesvc-test/value_json.h"

namespace cyclesvc_test {

namespace DssSVC = Orvantic::Stashwell::StorageServiceMgmt::DssSVC;

namespace {

const char* const kSubSystemNames[] = {
    "SUBSYSTEM_ID_NULL",
    "SUBSYSTEM_ID_APPL_LOG_MGR",
    "SUBSYSTEM_ID_CHANGE_EVENT_MGR",
    "SUBSYSTEM_ID_WORKGROUP_MGR",
    "SUBSYSTEM_ID_JOB_SUBMITTER",
    "SUBSYSTEM_ID_WIN_MGR",
    "SUBSYSTEM_ID_CONFIG_FILE_READER",
    "SUBSYSTEM_ID_SLP_DEF_MGR",
    "SUBSYSTEM_ID_IMAGE_MGR",
    "SUBSYSTEM_ID_STU_CACHE_MGR",
    "SUBSYSTEM_ID_CLEANUP_MGR",
    "SUBSYSTEM_ID_SWU_DATA_MGR",
    "SUBSYSTEM_ID_ERROR_MGR",
    "SUBSYSTEM_ID_NOTIFICATION_MGR",
    "SUBSYSTEM_ID_IMPORT_MGR",
    "SUBSYSTEM_ID_EXPIRATION_MGR",
    "SUBSYSTEM_ID_IP_NOTIFIER",
    "SUBSYSTEM_ID_REPORT_MGR",
    "SUBSYSTEM_ID_MAX",
};
const char* const kDumpFormNames[] = {"DUMPFORM_NULL", "DUMPFORM_READABLE", "DUMPFORM_JSON",
                                      "DUMPFORM_LOGFILE", "DUMPFORM_MAX"};
const char* const kTimeRangeNames[] = {"TIME_RANGE_NONE", "TIME_RANGE_BEFORE", "TIME_RANGE_AFTER"};

}  // namespace

CORBA::Long DssvcServant::StartImageDupSession() {
  return scenario_.answer("Dssvc.StartImageDupSession", Args()).status();
}

CORBA::Long DssvcServant::CancelImageCopyProcessing(
    const char* destination, const char* lifecycle, const char* backupId, CORBA::Long slpVersion,
    TimeRangeType rangeType, CORBA::ULongLong rangeTime, CORBA::Boolean doCancel,
    DssSVC::SLP_CancellableImageSeq_out cancellableImages) {
  Reply reply = scenario_.answer("Dssvc.CancelImageCopyProcessing",
                                 Args()
                                     .str(destination)
                                     .str(lifecycle)
                                     .str(backupId)
                                     .num(slpVersion)
                                     .name(EnumName(kTimeRangeNames, rangeType).c_str())
                                     .unum(rangeTime)
                                     .flag(doCancel));
  cancellableImages = CancellableImagesFromJson(reply.member("cancellableImages"));
  return reply.status();
}

CORBA::Long DssvcServant::ResumeImageCopyProcessing(const char* destination, const char* lifecycle,
                                                    const char* backupId, TimeRangeType rangeType,
                                                    CORBA::ULongLong rangeTime) {
  return scenario_
      .answer("Dssvc.ResumeImageCopyProcessing",
              Args()
                  .str(destination)
                  .str(lifecycle)
                  .str(backupId)
                  .name(EnumName(kTimeRangeNames, rangeType).c_str())
                  .unum(rangeTime))
      .status();
}

CORBA::Long DssvcServant::SuspendImageCopyProcessing(const char* destination, const char* lifecycle,
                                                     const char* backupId,
                                                     CORBA::ULongLong reactivationTime,
                                                     TimeRangeType rangeType,
                                                     CORBA::ULongLong rangeTime) {
  return scenario_
      .answer("Dssvc.SuspendImageCopyProcessing",
              Args()
                  .str(destination)
                  .str(lifecycle)
                  .str(backupId)
                  .unum(reactivationTime)
                  .name(EnumName(kTimeRangeNames, rangeType).c_str())
                  .unum(rangeTime))
      .status();
}

CORBA::Long DssvcServant::CheckForActiveSession(CORBA::Long sessionKind) {
  return scenario_.answer("Dssvc.CheckForActiveSession", Args().num(sessionKind)).status();
}

CORBA::Long DssvcServant::TerminateActiveSession() {
  return scenario_.answer("Dssvc.TerminateActiveSession", Args()).status();
}

CORBA::Long DssvcServant::SubSystemDump(SubSystemID subsystem, DumpFormSelector form,
                                        const char* dumpOptions, DssSVC::stringdata_out dumpLines) {
  Reply reply = scenario_.answer("Dssvc.SubSystemDump",
                                 Args()
                                     .name(EnumName(kSubSystemNames, subsystem).c_str())
                                     .name(EnumName(kDumpFormNames, form).c_str())
                                     .str(dumpOptions));
  std::vector<std::string> lines = reply.texts("dumpLines");
  DssSVC::stringdata* out = new DssSVC::stringdata();
  out->length(static_cast<CORBA::ULong>(lines.size()));
  for (CORBA::ULong i = 0; i < out->length(); ++i) (*out)[i] = lines[i].c_str();
  dumpLines = out;
  return reply.status();
}

CORBA::Long DssvcServant::SubSystemSuspend(SubSystemID subsystem) {
  return scenario_
      .answer("Dssvc.SubSystemSuspend", Args().name(EnumName(kSubSystemNames, subsystem).c_str()))
      .status();
}

CORBA::Long DssvcServant::SubSystemResume(SubSystemID subsystem) {
  return scenario_
      .answer("Dssvc.SubSystemResume", Args().name(EnumName(kSubSystemNames, subsystem).c_str()))
      .status();
}

CORBA::Long DssvcServant::SubSystemOneSession(SubSystemID subsystem, const char* arg1,
                                              const char* arg2, CORBA::Long arg3) {
  return scenario_
      .answer(
          "Dssvc.SubSystemOneSession",
          Args().name(EnumName(kSubSystemNames, subsystem).c_str()).str(arg1).str(arg2).num(arg3))
      .status();
}

CORBA::Long DssvcServant::DropAllWorkGroupAllocations() {
  return scenario_.answer("Dssvc.DropAllWorkGroupAllocations", Args()).status();
}

CORBA::Long DssvcServant::ProcessImportNotificationsFromTarget(
    const char* targetMaster, const char* sourceMaster, CORBA::ULong notificationCount,
    const DssSVC::SLP_ImportNotificationSeq& notifications) {
  return scenario_
      .answer("Dssvc.ProcessImportNotificationsFromTarget",
              Args()
                  .str(targetMaster)
                  .str(sourceMaster)
                  .unum(notificationCount)
                  .other(Elements(notifications.length())))
      .status();
}

}  // namespace cyclesvc_test
