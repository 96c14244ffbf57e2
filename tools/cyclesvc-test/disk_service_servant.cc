// The disk service manager servant: each operation records its arguments;
// the lookups answer from the scenario.
#include "tools/cyclesvc-test/disk_service_servant.h"

#include <string>

#include "tools/cyclesvc-test/servant_args.h"
#include "tools/cyclesvc-test/value_json.h"

namespace cyclesvc_test {

namespace {

std::string ValueArg(const DS::ObjSpec* value) {
  if (value == nullptr) return "null";
  return std::string("<") + value->_PD_repoId + " " + value->name() + ">";
}

std::string ValueArg(const Orvantic::Stashwell::TL::Framework::BaseObject* value) {
  return value == nullptr ? "null" : "<value>";
}

}  // namespace

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
