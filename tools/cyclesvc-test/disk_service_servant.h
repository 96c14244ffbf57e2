// The test service's disk service manager: every operation records its
// call; the volume lookups and identifyTargetMachine answer from the
// scenario (tools/cyclesvc-test/scenario.h), the others with empty sequences
// and null values.
#ifndef TOOLS_CYCLESVC_TEST_DISK_SERVICE_SERVANT_H_
#define TOOLS_CYCLESVC_TEST_DISK_SERVICE_SERVANT_H_

#include "remote/idl/DiskService.hh"
#include "tools/cyclesvc-test/scenario.h"

namespace cyclesvc_test {

namespace DS = Orvantic::Stashwell::DL::DiskService;

class DiskServiceMgrServant : public POA_Orvantic::Stashwell::DL::DiskService::DiskServiceMgr {
 public:
  explicit DiskServiceMgrServant(Scenario& scenario) : scenario_(scenario) {}

  DS::DiskSeq* getDiskList(const char* serverName, const char* serverType) override;
  DS::DiskInfo* getDiskInfo(const char* serverName, const char* serverType,
                            const char* diskName) override;
  DS::DiskInfoSeq* getDiskInfoList(const char* serverName, const char* serverType) override;
  DS::EnclosureSeq* getEnclosureList(const char* serverName, const char* serverType) override;
  DS::EnclosureInfo* getEnclosureInfo(const char* serverName, const char* serverType,
                                      const char* enclosureName) override;
  DS::EnclosureInfoSeq* getEnclosureInfoList(const char* serverName,
                                             const char* serverType) override;
  DS::Enclosure* importEnclosure(const char* serverName, const char* serverType,
                                 const char* enclosureName) override;
  DS::DiskVolumeSeq* getDiskVolumeList(const char* serverName, const char* serverType) override;
  DS::DiskVolume* createDiskVolume(const char* serverName, const char* serverType,
                                   DS::DiskVolume* volume) override;
  DS::DiskVolumeInfo* getDiskVolumeInfo(const char* serverName, const char* serverType,
                                        const char* volumeName) override;
  DS::DiskVolumeInfo* getDiskVolumeInfoByMediaId(const char* diskMediaId) override;
  DS::DiskVolumeInfo* getDiskVolumeInfoByLegacyInfo(const char* masterServer,
                                                    const char* storageServer,
                                                    const char* serverType,
                                                    const char* mediaId) override;
  DS::DiskVolumeInfo* getDiskVolumeInfoByName(const char* serverName, const char* serverType,
                                              const char* diskGroupName,
                                              const char* volumeName) override;
  DS::DiskVolumeInfoSeq* getDiskVolumeInfoList(const char* serverName, const char* serverType,
                                               const char* diskGroupName) override;
  DS::DiskGroupInfoSeq* getDiskGroupInfoListByStorageUnitLabel(
      const char* storageUnitLabel) override;
  DS::MountPointSeq* getExtendedMountpointListByStorageUnitLabel(const char* storageUnitLabel,
                                                                 const char* mediaServer) override;
  void updateDiskVolumeState(const char* serverName, const char* serverType, const char* volumeName,
                             CORBA::Long state) override;
  void deleteDiskVolume(const char* serverName, const char* serverType,
                        const char* volumeName) override;
  DS::DiskVolume* updateDiskVolume(const char* serverName, const char* serverType,
                                   DS::DiskVolume* volume) override;
  DS::DiskVolumeSeq* updateDiskVolumeList(const char* serverName, const char* serverType,
                                          const DS::DiskVolumeSeq& volumes) override;
  DS::MountPoint* mountDiskVolume(const char* mediaServer, const char* serverName,
                                  const char* serverType, const char* volumeName) override;
  void unmountDiskVolume(const char* mediaServer, const char* serverName, const char* serverType,
                         const char* volumeName) override;
  DS::MountPointSeq* getMountPointList(const char* mediaServer) override;
  DS::DiskGroupSeq* getDiskGroupList(const char* serverName, const char* serverType) override;
  DS::DiskGroup* importDiskGroup(const char* serverName, const char* serverType,
                                 const char* groupName) override;
  DS::DiskGroup* createDiskGroup(const char* serverName, const char* serverType,
                                 DS::DiskGroup* group, const DS::DiskVolumeSeq& volumes) override;
  DS::DiskGroup* mergeDiskGroups(const char* serverType, const char* targetGroup,
                                 const Corvela::CSF::StringSeq& sourceGroups) override;
  DS::DiskGroupInfo* getDiskGroupInfo(const char* serverName, const char* serverType,
                                      const char* groupName) override;
  DS::DiskGroupInfo* getPotentialDiskGroupInfo(const char* serverName, const char* serverType,
                                               const char* groupName) override;
  DS::DiskGroupInfoSeq* getDiskGroupInfoList(const char* serverType) override;
  void updateDiskGroupState(const char* serverType, const char* groupName,
                            CORBA::Long state) override;
  void deleteDiskGroup(const char* serverType, const char* groupName) override;
  DS::DiskGroup* updateDiskGroup(const char* serverType, DS::DiskGroup* group) override;
  DS::DiskStorageUnitSeq* getDiskStorageUnitList() override;
  DS::DiskStorageUnitSeq* getDiskStorageUnitListByDiskGroup(const char* serverType,
                                                            const char* groupName) override;
  DS::DiskStorageUnit* createDiskStorageUnit(DS::DiskStorageUnit* unit) override;
  DS::DiskStorageUnitInfo* getDiskStorageUnitInfo(const char* unitName) override;
  DS::DiskStorageUnitInfoSeq* getDiskStorageUnitInfoList() override;
  void deleteDiskStorageUnit(const char* unitName) override;
  DS::DiskStorageUnit* updateDiskStorageUnit(DS::DiskStorageUnit* unit) override;
  DS::DiskStorageUnitSeq* updateDiskStorageUnitList(const DS::DiskStorageUnitSeq& units) override;
  DS::StorageServerInfo* getStorageServerInfo(const char* serverName,
                                              const char* serverType) override;
  DS::StorageServerInfoSeq* getStorageServerInfoList(const char* serverType) override;
  DS::StorageServer* createStorageServer(DS::StorageServer* server,
                                         DS::StorageServerCredentials* credentials,
                                         const DS::DataMoverSeq& dataMovers) override;
  void removeStorageServer(const char* serverName, const char* serverType) override;
  DS::StorageServer* addStorageServer(DS::StorageServer* server,
                                      DS::StorageServerCredentials* credentials) override;
  void deleteStorageServer(const char* serverName, const char* serverType) override;
  DS::StorageServer* updateStorageServer(DS::StorageServer* server) override;
  DS::DataMover* addDataMover(const char* serverName, const char* serverType, DS::DataMover* mover,
                              DS::StorageServerCredentials* credentials) override;
  DS::DataMoverSeq* updateDataMovers(const char* serverName, const char* serverType,
                                     const DS::DataMoverSeq& movers) override;
  void deleteDataMover(const char* serverName, const char* serverType,
                       const char* moverName) override;
  DS::ServertypeInfo* getServertypeInfo(const char* serverType) override;
  CORBA::Long ping() override;
  void resetPreCommittedSpaceOnAllVolumes() override;
  DS::ObjSpecSeq* getObjectsByMachine(const char* machineName) override;
  void setGlobalAttribute(const char* attributeName, const char* attributeValue) override;
  void queueDiskVolumeMount(const char* mediaServer, const char* serverName, const char* serverType,
                            const char* volumeName) override;
  void dequeueDiskVolumeMount(const char* mediaServer, const char* serverName,
                              const char* serverType, const char* volumeName) override;
  void queueDiskVolumeUnmount(const char* mediaServer, const char* serverName,
                              const char* serverType, const char* volumeName) override;
  void dequeueDiskVolumeUnmount(const char* mediaServer, const char* serverName,
                                const char* serverType, const char* volumeName) override;
  DS::MountPoint* getMountPoint(const char* mediaServer, const char* serverName,
                                const char* serverType, const char* volumeName) override;
  DS::StorageServerConfigItemSeq* getStorageServerConfig(const char* serverName,
                                                         const char* serverType) override;
  void updateStorageServerConfig(const char* serverName, const char* serverType,
                                 const DS::StorageServerConfigItemSeq& items) override;
  DS::StorageServerSeq* getStorageServersWithReplicationRelationship(
      const char* serverName, const char* serverType) override;
  char* identifyTargetMachine(const char* machineName) override;

 private:
  Scenario& scenario_;
};

}  // namespace cyclesvc_test

#endif  // TOOLS_CYCLESVC_TEST_DISK_SERVICE_SERVANT_H_
