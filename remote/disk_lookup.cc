// The two disk-volume lookups and their caches.
#include "remote/disk_lookup.h"

#include <cstdio>
#include <map>

#include "catalog/legacy_info.h"
#include "remote/disk_service_helper.h"
#include "remote/exception_ladder.h"
#include "remote/services.h"
#include "util/message.h"
#include "util/process.h"

namespace DiskService = Orvantic::Stashwell::DL::DiskService;

namespace {

// Process-wide, filled on demand and never emptied during the run.
std::map<std::string, std::string> MediaIdToStypeMap;
std::map<LegacyInfo, std::string, LegacyCmp> LegacyToMediaIdMap;

const char kDiskMediaIdProperty[] = "DSM::diskMediaId";

struct SubtypeServerType {
  short subtype;
  const char* serverType;
};

// The server type names a legacy lookup sends, by media sub-type.
const SubtypeServerType kLegacyServerTypes[] = {
    {1, "BasicDisk"},
    {2, "NearStore"},
    {6, "DiskPool"},
};

// The server type name for `subtype`, or null when it has none.
const char* LegacyServerType(short subtype) {
  for (const SubtypeServerType& entry : kLegacyServerTypes) {
    if (entry.subtype == subtype) return entry.serverType;
  }
  return nullptr;
}

std::string TextOrEmpty(const char* text) { return text != nullptr ? text : ""; }

}  // namespace

std::string MediaIdToStype(const std::string& diskMediaId) {
  auto cached = MediaIdToStypeMap.find(diskMediaId);
  if (cached != MediaIdToStypeMap.end()) return cached->second;

  return RunRemote("dsm", [&]() -> std::string {
    DiskService::DiskVolumeInfo_var info;
    {
      DiskService::DiskServiceMgr_var manager = ConnectToDSM();
      info = manager->getDiskVolumeInfoByMediaId(diskMediaId.c_str());
    }
    if (info.in() == nullptr) return "Unknown";
    std::string serverType = TextOrEmpty(info->servertype());
    MediaIdToStypeMap[diskMediaId] = serverType;
    return serverType;
  });
}

std::string LegacyToMediaId(short mediaSubType, const std::string& mediaId,
                            const std::string& mediaServer, const std::string& storageServer) {
  // A volume is known by its media id and servers; the sub-type only chooses
  // the server type name of the query.
  LegacyInfo key;
  key.mediaId = mediaId;
  key.mediaServer = mediaServer;
  key.storageServer = storageServer;
  auto cached = LegacyToMediaIdMap.find(key);
  if (cached != LegacyToMediaIdMap.end()) return cached->second;

  const char* serverType = LegacyServerType(mediaSubType);
  if (serverType == nullptr) {
    PrintMsg(stderr, "SmeSlp0030N", "unrecognized disk subtype encountered");
    serverType = "";
  }

  return RunRemote("dsm", [&]() -> std::string {
    DiskService::DiskVolumeInfo_var info;
    {
      DiskService::DiskServiceMgr_var manager = ConnectToDSM();
      info = manager->getDiskVolumeInfoByLegacyInfo(MasterServer.c_str(), storageServer.c_str(),
                                                    serverType, mediaId.c_str());
    }
    if (info.in() == nullptr) return "";
    std::string diskMediaId;
    if (const DiskService::DiskVolume* volume = info->volume()) {
      CORBA::String_var value = DiskService::DiskServiceHelper::getPropertyByName(
          volume->properties(), kDiskMediaIdProperty);
      diskMediaId = TextOrEmpty(value.in());
    }
    LegacyToMediaIdMap[key] = diskMediaId;
    if (MediaIdToStypeMap.find(diskMediaId) == MediaIdToStypeMap.end()) {
      MediaIdToStypeMap[diskMediaId] = TextOrEmpty(info->servertype());
    }
    return diskMediaId;
  });
}
