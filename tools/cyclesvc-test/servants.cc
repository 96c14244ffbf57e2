// The servants: each operation records its arguments and answers from the
// scenario.
#include "tools/cyclesvc-test/servants.h"

#include <string>

#include "tools/cyclesvc-test/value_json.h"

namespace cyclesvc_test {

namespace DssSVC = Orvantic::Stashwell::StorageServiceMgmt::DssSVC;
namespace ExpMgrSVC = Orvantic::Stashwell::StorageServiceMgmt::ExpMgrSVC;

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
const char* const kExpirationTypeNames[] = {"EXP_TYPE_NORMAL", "EXP_TYPE_AGGRESSIVE"};

// The enumerator's name; a value outside the list (not possible on the
// wire) shows as its number.
template <size_t N>
std::string EnumName(const char* const (&names)[N], unsigned value) {
  return value < N ? names[value] : std::to_string(value);
}

std::string Elements(CORBA::ULong count) { return "<" + std::to_string(count) + " elements>"; }

std::string ValueArg(const DS::ObjSpec* value) {
  if (value == nullptr) return "null";
  return std::string("<") + value->_PD_repoId + " " + value->name() + ">";
}

std::string ValueArg(const Orvantic::Stashwell::TL::Framework::BaseObject* value) {
  return value == nullptr ? "null" : "<value>";
}

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

DS::DiskSeq* DiskServiceMgrServant::getDiskList(const char* serverName, const char* serverType) {
  scenario_.answer("DiskServiceMgr.getDiskList", Args().str(serverName).str(serverType));
  return new DS::DiskSeq();
}

DS::DiskInfo* DiskServiceMgrServant::getDiskInfo(const char* serverName, const char* serverType,
                                                 const char* diskName) {
  scenario_.answer("DiskServiceMgr.getDiskInfo",
                   Args().str(serverName).str(serverType).str(diskName));
  return nullptr;
}

DS::DiskInfoSeq* DiskServiceMgrServant::getDiskInfoList(const char* serverName,
                                                        const char* serverType) {
  scenario_.answer("DiskServiceMgr.getDiskInfoList", Args().str(serverName).str(serverType));
  return new DS::DiskInfoSeq();
}

DS::EnclosureSeq* DiskServiceMgrServant::getEnclosureList(const char* serverName,
                                                          const char* serverType) {
  scenario_.answer("DiskServiceMgr.getEnclosureList", Args().str(serverName).str(serverType));
  return new DS::EnclosureSeq();
}

DS::EnclosureInfo* DiskServiceMgrServant::getEnclosureInfo(const char* serverName,
                                                           const char* serverType,
                                                           const char* enclosureName) {
  scenario_.answer("DiskServiceMgr.getEnclosureInfo",
                   Args().str(serverName).str(serverType).str(enclosureName));
  return nullptr;
}

DS::EnclosureInfoSeq* DiskServiceMgrServant::getEnclosureInfoList(const char* serverName,
                                                                  const char* serverType) {
  scenario_.answer("DiskServiceMgr.getEnclosureInfoList", Args().str(serverName).str(serverType));
  return new DS::EnclosureInfoSeq();
}

DS::Enclosure* DiskServiceMgrServant::importEnclosure(const char* serverName,
                                                      const char* serverType,
                                                      const char* enclosureName) {
  scenario_.answer("DiskServiceMgr.importEnclosure",
                   Args().str(serverName).str(serverType).str(enclosureName));
  return nullptr;
}

DS::DiskVolumeSeq* DiskServiceMgrServant::getDiskVolumeList(const char* serverName,
                                                            const char* serverType) {
  scenario_.answer("DiskServiceMgr.getDiskVolumeList", Args().str(serverName).str(serverType));
  return new DS::DiskVolumeSeq();
}

DS::DiskVolume* DiskServiceMgrServant::createDiskVolume(const char* serverName,
                                                        const char* serverType,
                                                        DS::DiskVolume* volume) {
  scenario_.answer("DiskServiceMgr.createDiskVolume",
                   Args().str(serverName).str(serverType).other(ValueArg(volume)));
  return nullptr;
}

DS::DiskVolumeInfo* DiskServiceMgrServant::getDiskVolumeInfo(const char* serverName,
                                                             const char* serverType,
                                                             const char* volumeName) {
  Reply reply = scenario_.answer("DiskServiceMgr.getDiskVolumeInfo",
                                 Args().str(serverName).str(serverType).str(volumeName));
  return VolumeInfoFromJson(reply.member("result"));
}

DS::DiskVolumeInfo* DiskServiceMgrServant::getDiskVolumeInfoByMediaId(const char* diskMediaId) {
  Reply reply =
      scenario_.answer("DiskServiceMgr.getDiskVolumeInfoByMediaId", Args().str(diskMediaId));
  return VolumeInfoFromJson(reply.member("result"));
}

DS::DiskVolumeInfo* DiskServiceMgrServant::getDiskVolumeInfoByLegacyInfo(const char* masterServer,
                                                                         const char* storageServer,
                                                                         const char* serverType,
                                                                         const char* mediaId) {
  Reply reply =
      scenario_.answer("DiskServiceMgr.getDiskVolumeInfoByLegacyInfo",
                       Args().str(masterServer).str(storageServer).str(serverType).str(mediaId));
  return VolumeInfoFromJson(reply.member("result"));
}

DS::DiskVolumeInfo* DiskServiceMgrServant::getDiskVolumeInfoByName(const char* serverName,
                                                                   const char* serverType,
                                                                   const char* diskGroupName,
                                                                   const char* volumeName) {
  Reply reply =
      scenario_.answer("DiskServiceMgr.getDiskVolumeInfoByName",
                       Args().str(serverName).str(serverType).str(diskGroupName).str(volumeName));
  return VolumeInfoFromJson(reply.member("result"));
}

DS::DiskVolumeInfoSeq* DiskServiceMgrServant::getDiskVolumeInfoList(const char* serverName,
                                                                    const char* serverType,
                                                                    const char* diskGroupName) {
  scenario_.answer("DiskServiceMgr.getDiskVolumeInfoList",
                   Args().str(serverName).str(serverType).str(diskGroupName));
  return new DS::DiskVolumeInfoSeq();
}

DS::DiskGroupInfoSeq* DiskServiceMgrServant::getDiskGroupInfoListByStorageUnitLabel(
    const char* storageUnitLabel) {
  scenario_.answer("DiskServiceMgr.getDiskGroupInfoListByStorageUnitLabel",
                   Args().str(storageUnitLabel));
  return new DS::DiskGroupInfoSeq();
}

DS::MountPointSeq* DiskServiceMgrServant::getExtendedMountpointListByStorageUnitLabel(
    const char* storageUnitLabel, const char* mediaServer) {
  scenario_.answer("DiskServiceMgr.getExtendedMountpointListByStorageUnitLabel",
                   Args().str(storageUnitLabel).str(mediaServer));
  return new DS::MountPointSeq();
}

void DiskServiceMgrServant::updateDiskVolumeState(const char* serverName, const char* serverType,
                                                  const char* volumeName, CORBA::Long state) {
  scenario_.answer("DiskServiceMgr.updateDiskVolumeState",
                   Args().str(serverName).str(serverType).str(volumeName).num(state));
}

void DiskServiceMgrServant::deleteDiskVolume(const char* serverName, const char* serverType,
                                             const char* volumeName) {
  scenario_.answer("DiskServiceMgr.deleteDiskVolume",
                   Args().str(serverName).str(serverType).str(volumeName));
}

DS::DiskVolume* DiskServiceMgrServant::updateDiskVolume(const char* serverName,
                                                        const char* serverType,
                                                        DS::DiskVolume* volume) {
  scenario_.answer("DiskServiceMgr.updateDiskVolume",
                   Args().str(serverName).str(serverType).other(ValueArg(volume)));
  return nullptr;
}

DS::DiskVolumeSeq* DiskServiceMgrServant::updateDiskVolumeList(const char* serverName,
                                                               const char* serverType,
                                                               const DS::DiskVolumeSeq& volumes) {
  scenario_.answer("DiskServiceMgr.updateDiskVolumeList",
                   Args().str(serverName).str(serverType).other(Elements(volumes.length())));
  return new DS::DiskVolumeSeq();
}

DS::MountPoint* DiskServiceMgrServant::mountDiskVolume(const char* mediaServer,
                                                       const char* serverName,
                                                       const char* serverType,
                                                       const char* volumeName) {
  scenario_.answer("DiskServiceMgr.mountDiskVolume",
                   Args().str(mediaServer).str(serverName).str(serverType).str(volumeName));
  return nullptr;
}

void DiskServiceMgrServant::unmountDiskVolume(const char* mediaServer, const char* serverName,
                                              const char* serverType, const char* volumeName) {
  scenario_.answer("DiskServiceMgr.unmountDiskVolume",
                   Args().str(mediaServer).str(serverName).str(serverType).str(volumeName));
}

DS::MountPointSeq* DiskServiceMgrServant::getMountPointList(const char* mediaServer) {
  scenario_.answer("DiskServiceMgr.getMountPointList", Args().str(mediaServer));
  return new DS::MountPointSeq();
}

DS::DiskGroupSeq* DiskServiceMgrServant::getDiskGroupList(const char* serverName,
                                                          const char* serverType) {
  scenario_.answer("DiskServiceMgr.getDiskGroupList", Args().str(serverName).str(serverType));
  return new DS::DiskGroupSeq();
}

DS::DiskGroup* DiskServiceMgrServant::importDiskGroup(const char* serverName,
                                                      const char* serverType,
                                                      const char* groupName) {
  scenario_.answer("DiskServiceMgr.importDiskGroup",
                   Args().str(serverName).str(serverType).str(groupName));
  return nullptr;
}

DS::DiskGroup* DiskServiceMgrServant::createDiskGroup(const char* serverName,
                                                      const char* serverType, DS::DiskGroup* group,
                                                      const DS::DiskVolumeSeq& volumes) {
  scenario_.answer("DiskServiceMgr.createDiskGroup", Args()
                                                         .str(serverName)
                                                         .str(serverType)
                                                         .other(ValueArg(group))
                                                         .other(Elements(volumes.length())));
  return nullptr;
}

DS::DiskGroup* DiskServiceMgrServant::mergeDiskGroups(const char* serverType,
                                                      const char* targetGroup,
                                                      const Corvela::CSF::StringSeq& sourceGroups) {
  scenario_.answer("DiskServiceMgr.mergeDiskGroups",
                   Args().str(serverType).str(targetGroup).other(Elements(sourceGroups.length())));
  return nullptr;
}

DS::DiskGroupInfo* DiskServiceMgrServant::getDiskGroupInfo(const char* serverName,
                                                           const char* serverType,
                                                           const char* groupName) {
  scenario_.answer("DiskServiceMgr.getDiskGroupInfo",
                   Args().str(serverName).str(serverType).str(groupName));
  return nullptr;
}

DS::DiskGroupInfo* DiskServiceMgrServant::getPotentialDiskGroupInfo(const char* serverName,
                                                                    const char* serverType,
                                                                    const char* groupName) {
  scenario_.answer("DiskServiceMgr.getPotentialDiskGroupInfo",
                   Args().str(serverName).str(serverType).str(groupName));
  return nullptr;
}

DS::DiskGroupInfoSeq* DiskServiceMgrServant::getDiskGroupInfoList(const char* serverType) {
  scenario_.answer("DiskServiceMgr.getDiskGroupInfoList", Args().str(serverType));
  return new DS::DiskGroupInfoSeq();
}

void DiskServiceMgrServant::updateDiskGroupState(const char* serverType, const char* groupName,
                                                 CORBA::Long state) {
  scenario_.answer("DiskServiceMgr.updateDiskGroupState",
                   Args().str(serverType).str(groupName).num(state));
}

void DiskServiceMgrServant::deleteDiskGroup(const char* serverType, const char* groupName) {
  scenario_.answer("DiskServiceMgr.deleteDiskGroup", Args().str(serverType).str(groupName));
}

DS::DiskGroup* DiskServiceMgrServant::updateDiskGroup(const char* serverType,
                                                      DS::DiskGroup* group) {
  scenario_.answer("DiskServiceMgr.updateDiskGroup", Args().str(serverType).other(ValueArg(group)));
  return nullptr;
}

DS::DiskStorageUnitSeq* DiskServiceMgrServant::getDiskStorageUnitList() {
  scenario_.answer("DiskServiceMgr.getDiskStorageUnitList", Args());
  return new DS::DiskStorageUnitSeq();
}

DS::DiskStorageUnitSeq* DiskServiceMgrServant::getDiskStorageUnitListByDiskGroup(
    const char* serverType, const char* groupName) {
  scenario_.answer("DiskServiceMgr.getDiskStorageUnitListByDiskGroup",
                   Args().str(serverType).str(groupName));
  return new DS::DiskStorageUnitSeq();
}

DS::DiskStorageUnit* DiskServiceMgrServant::createDiskStorageUnit(DS::DiskStorageUnit* unit) {
  scenario_.answer("DiskServiceMgr.createDiskStorageUnit", Args().other(ValueArg(unit)));
  return nullptr;
}

DS::DiskStorageUnitInfo* DiskServiceMgrServant::getDiskStorageUnitInfo(const char* unitName) {
  scenario_.answer("DiskServiceMgr.getDiskStorageUnitInfo", Args().str(unitName));
  return nullptr;
}

DS::DiskStorageUnitInfoSeq* DiskServiceMgrServant::getDiskStorageUnitInfoList() {
  scenario_.answer("DiskServiceMgr.getDiskStorageUnitInfoList", Args());
  return new DS::DiskStorageUnitInfoSeq();
}

void DiskServiceMgrServant::deleteDiskStorageUnit(const char* unitName) {
  scenario_.answer("DiskServiceMgr.deleteDiskStorageUnit", Args().str(unitName));
}

DS::DiskStorageUnit* DiskServiceMgrServant::updateDiskStorageUnit(DS::DiskStorageUnit* unit) {
  scenario_.answer("DiskServiceMgr.updateDiskStorageUnit", Args().other(ValueArg(unit)));
  return nullptr;
}

DS::DiskStorageUnitSeq* DiskServiceMgrServant::updateDiskStorageUnitList(
    const DS::DiskStorageUnitSeq& units) {
  scenario_.answer("DiskServiceMgr.updateDiskStorageUnitList",
                   Args().other(Elements(units.length())));
  return new DS::DiskStorageUnitSeq();
}

DS::StorageServerInfo* DiskServiceMgrServant::getStorageServerInfo(const char* serverName,
                                                                   const char* serverType) {
  scenario_.answer("DiskServiceMgr.getStorageServerInfo", Args().str(serverName).str(serverType));
  return nullptr;
}

DS::StorageServerInfoSeq* DiskServiceMgrServant::getStorageServerInfoList(const char* serverType) {
  scenario_.answer("DiskServiceMgr.getStorageServerInfoList", Args().str(serverType));
  return new DS::StorageServerInfoSeq();
}

DS::StorageServer* DiskServiceMgrServant::createStorageServer(
    DS::StorageServer* server, DS::StorageServerCredentials* credentials,
    const DS::DataMoverSeq& dataMovers) {
  scenario_.answer("DiskServiceMgr.createStorageServer", Args()
                                                             .other(ValueArg(server))
                                                             .other(ValueArg(credentials))
                                                             .other(Elements(dataMovers.length())));
  return nullptr;
}

void DiskServiceMgrServant::removeStorageServer(const char* serverName, const char* serverType) {
  scenario_.answer("DiskServiceMgr.removeStorageServer", Args().str(serverName).str(serverType));
}

DS::StorageServer* DiskServiceMgrServant::addStorageServer(
    DS::StorageServer* server, DS::StorageServerCredentials* credentials) {
  scenario_.answer("DiskServiceMgr.addStorageServer",
                   Args().other(ValueArg(server)).other(ValueArg(credentials)));
  return nullptr;
}

void DiskServiceMgrServant::deleteStorageServer(const char* serverName, const char* serverType) {
  scenario_.answer("DiskServiceMgr.deleteStorageServer", Args().str(serverName).str(serverType));
}

DS::StorageServer* DiskServiceMgrServant::updateStorageServer(DS::StorageServer* server) {
  scenario_.answer("DiskServiceMgr.updateStorageServer", Args().other(ValueArg(server)));
  return nullptr;
}

DS::DataMover* DiskServiceMgrServant::addDataMover(const char* serverName, const char* serverType,
                                                   DS::DataMover* mover,
                                                   DS::StorageServerCredentials* credentials) {
  scenario_.answer(
      "DiskServiceMgr.addDataMover",
      Args().str(serverName).str(serverType).other(ValueArg(mover)).other(ValueArg(credentials)));
  return nullptr;
}

DS::DataMoverSeq* DiskServiceMgrServant::updateDataMovers(const char* serverName,
                                                          const char* serverType,
                                                          const DS::DataMoverSeq& movers) {
  scenario_.answer("DiskServiceMgr.updateDataMovers",
                   Args().str(serverName).str(serverType).other(Elements(movers.length())));
  return new DS::DataMoverSeq();
}

void DiskServiceMgrServant::deleteDataMover(const char* serverName, const char* serverType,
                                            const char* moverName) {
  scenario_.answer("DiskServiceMgr.deleteDataMover",
                   Args().str(serverName).str(serverType).str(moverName));
}

DS::ServertypeInfo* DiskServiceMgrServant::getServertypeInfo(const char* serverType) {
  scenario_.answer("DiskServiceMgr.getServertypeInfo", Args().str(serverType));
  return nullptr;
}

CORBA::Long DiskServiceMgrServant::ping() {
  return scenario_.answer("DiskServiceMgr.ping", Args()).status();
}

void DiskServiceMgrServant::resetPreCommittedSpaceOnAllVolumes() {
  scenario_.answer("DiskServiceMgr.resetPreCommittedSpaceOnAllVolumes", Args());
}

DS::ObjSpecSeq* DiskServiceMgrServant::getObjectsByMachine(const char* machineName) {
  scenario_.answer("DiskServiceMgr.getObjectsByMachine", Args().str(machineName));
  return new DS::ObjSpecSeq();
}

void DiskServiceMgrServant::setGlobalAttribute(const char* attributeName,
                                               const char* attributeValue) {
  scenario_.answer("DiskServiceMgr.setGlobalAttribute",
                   Args().str(attributeName).str(attributeValue));
}

void DiskServiceMgrServant::queueDiskVolumeMount(const char* mediaServer, const char* serverName,
                                                 const char* serverType, const char* volumeName) {
  scenario_.answer("DiskServiceMgr.queueDiskVolumeMount",
                   Args().str(mediaServer).str(serverName).str(serverType).str(volumeName));
}

void DiskServiceMgrServant::dequeueDiskVolumeMount(const char* mediaServer, const char* serverName,
                                                   const char* serverType, const char* volumeName) {
  scenario_.answer("DiskServiceMgr.dequeueDiskVolumeMount",
                   Args().str(mediaServer).str(serverName).str(serverType).str(volumeName));
}

void DiskServiceMgrServant::queueDiskVolumeUnmount(const char* mediaServer, const char* serverName,
                                                   const char* serverType, const char* volumeName) {
  scenario_.answer("DiskServiceMgr.queueDiskVolumeUnmount",
                   Args().str(mediaServer).str(serverName).str(serverType).str(volumeName));
}

void DiskServiceMgrServant::dequeueDiskVolumeUnmount(const char* mediaServer,
                                                     const char* serverName, const char* serverType,
                                                     const char* volumeName) {
  scenario_.answer("DiskServiceMgr.dequeueDiskVolumeUnmount",
                   Args().str(mediaServer).str(serverName).str(serverType).str(volumeName));
}

DS::MountPoint* DiskServiceMgrServant::getMountPoint(const char* mediaServer,
                                                     const char* serverName, const char* serverType,
                                                     const char* volumeName) {
  scenario_.answer("DiskServiceMgr.getMountPoint",
                   Args().str(mediaServer).str(serverName).str(serverType).str(volumeName));
  return nullptr;
}

DS::StorageServerConfigItemSeq* DiskServiceMgrServant::getStorageServerConfig(
    const char* serverName, const char* serverType) {
  scenario_.answer("DiskServiceMgr.getStorageServerConfig", Args().str(serverName).str(serverType));
  return new DS::StorageServerConfigItemSeq();
}

void DiskServiceMgrServant::updateStorageServerConfig(const char* serverName,
                                                      const char* serverType,
                                                      const DS::StorageServerConfigItemSeq& items) {
  scenario_.answer("DiskServiceMgr.updateStorageServerConfig",
                   Args().str(serverName).str(serverType).other(Elements(items.length())));
}

DS::StorageServerSeq* DiskServiceMgrServant::getStorageServersWithReplicationRelationship(
    const char* serverName, const char* serverType) {
  scenario_.answer("DiskServiceMgr.getStorageServersWithReplicationRelationship",
                   Args().str(serverName).str(serverType));
  return new DS::StorageServerSeq();
}

char* DiskServiceMgrServant::identifyTargetMachine(const char* machineName) {
  return CORBA::string_dup(
      scenario_.answer("DiskServiceMgr.identifyTargetMachine", Args().str(machineName))
          .text("result")
          .c_str());
}

}  // namespace cyclesvc_test
