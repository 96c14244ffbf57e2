// The demo images: written in listing order (backup time, then backup id) so
// that the rows of a catalog-wide listing lie together in the file, each with
// the copies its SLP state implies, their fragments, snapshots and
// replication targets.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

#include "tools/stashwell-init/demo_writer.h"

namespace demo {
namespace {

// Copy states an operation after the first can be in while its image is in
// process (9 and 10 stand for 1 and 2 when the image is inactive).
const int kInProcessCopyStates[] = {2, 2, 1, 1, 4, 5, 6, 7, 8, 11};
const int kInProcessReplicaStates[] = {14, 14, 13, 2, 5};
const int kPendingImportStates[] = {14, 14, 14, 15, 6};

template <size_t N>
int Pick(Random& random, const int (&states)[N]) {
  return states[random.Below(N)];
}

bool IsReplica(int copyType) {
  return copyType == REPLICATE_TO_REMOTE || copyType == REPLICATION ||
         copyType == CLOUD_SNAPSHOT_REPLICATION;
}

// Try-to-keep time of a capacity-managed copy: half its retention, except
// that the copies of every other second are kept until five years after the
// window's end, so that the catalog holds expired data both before and after
// its time.
int64_t TryToKeepTime(int64_t windowEnd, int64_t backupTime, int retentionDays) {
  return backupTime % 2 == 0 ? windowEnd + 5 * 365 * kDay : backupTime + retentionDays * kDay / 2;
}

bool IsSnapshot(int copyType) {
  return copyType == SNAPSHOT || copyType == CLOUD_SNAPSHOT_REPLICATION;
}

// Whether a copy in `state` holds data on its storage unit.
bool HasData(int state, Random& random) {
  switch (state) {
    case 0:
    case 3:
    case 5:
    case 12:
    case 14:
    case 15:
      return true;
    case 2:
    case 10:
      return random.Percent(30);
    default:
      return false;
  }
}

struct ScheduleKind {
  int type;
  const char* name;
  int percent;
};
const ScheduleKind kSchedules[] = {
    {0, "Full", 25}, {1, "Incr", 55}, {2, "CumulativeIncr", 15}, {3, "UserBackup", 5}};

}  // namespace

void DemoWriter::WriteImages() {
  image_.Prepare("DBM_Image",
                 "MasterServerKey, ClientMachineName, BackupTime, PolicyName, ClientType,"
                 " ScheduleName, ScheduleType, LastBirthTime, NumberCopies, PrimaryCopy,"
                 " StreamNumber, OriginMasterServer, OriginMasterServerID, StorageServiceName,"
                 " StorageServiceState, StorageServiceIsInactive, StorageServiceVersionNumber,"
                 " TimeInProcess, ClassificationID, RequiredExpirationDate,"
                 " ImportFromReplicaTime, SLPOperationsMask, JobID, CreatedDateTime",
                 "ImageKey");
  copy_.Prepare("DBM_ImageCopy",
                "ImageKey, CopyNumber, SLPIndex, SLPSourceIndex, CopyType, ExpireTime,"
                " ExpireLifecycleTime, TryToKeepTime, Residence, CopyState, CopySize, JobID,"
                " ExpirationType, MpxState, RetryCount, LastRetryTime, DestinationID, Source,"
                " Replica, DataFormat, Resumable, WGKey",
                "ImageCopyKey");
  fragment_.Prepare("DBM_ImageFragment",
                    "ImageCopyKey, FragmentNumber, ResumeCount, MediaID, MediaServer,"
                    " StorageServer, MediaType, MediaSubType, FragmentState, FragmentSize,"
                    " DeleteHeader, FragmentID, SnapMountHost, MediaDescription");
  snapshot_.Prepare("DBM_ImageSnapshot",
                    "ImageCopyKey, StorageServerName, StorageServerType, DiskVolumeName,"
                    " DiskMediaID, SnapshotName, IsActive");
  target_.Prepare("DBM_ImageReplicationDestination",
                  "ImageCopyKey, TargetMachineKey, VolumeInfo, RemoteMasterServer,"
                  " CreatedDateTime");
  const int64_t clients = static_cast<int64_t>(clients_.size());
  const int64_t start = windowEnd_ - kWindowSeconds;
  int64_t t = start;
  int64_t previousTime = -1;
  int64_t previousClient = -1;
  for (long n = 0; n < images_ && error_.empty(); ++n) {
    // Image n falls in the n-th of as many equal slots of the window, so that
    // the last images are of the window's last day whatever their number.
    const int64_t slotStart = start + kWindowSeconds * n / images_;
    const int64_t slotEnd = start + kWindowSeconds * (n + 1) / images_;
    t = std::max(t, slotStart + random_.Below(slotEnd - slotStart));
    int64_t client = random_.Below(clients);
    // Images of one backup time follow in backup id order: clients sort in
    // table order and their names never prefix one another.
    if (t == previousTime && client <= previousClient) {
      if (previousClient == clients - 1) {
        ++t;
      } else {
        client = previousClient + 1 + random_.Below(clients - previousClient - 1);
      }
    }
    WriteImage(t, clients_[client]);
    previousTime = t;
    previousClient = client;
  }
  for (Insert* rows : {&image_, &copy_, &fragment_, &snapshot_, &target_}) rows->Finish();
}

void DemoWriter::WriteImage(int64_t backupTime, const Client& client) {
  int64_t roll = random_.Below(1000);
  const StateShare* share = &kStateShares[0];
  for (int i = 0; i < kStateShareCount; ++i) {
    share = &kStateShares[i];
    if (roll < share->perMille) break;
    roll -= share->perMille;
  }
  const ImageKind kind = share->kind;
  const bool fromRemote = kind == ImageKind::kImported || kind == ImageKind::kPendingImport;
  const Slp* slp = nullptr;
  if (fromRemote) {
    slp = &kImportSlp;
  } else if (kind != ImageKind::kUnmanaged) {
    int64_t pick = random_.Below(100);
    for (int i = 0; i < kSlpCount; ++i) {
      slp = &kSlps[i];
      if (pick < slp->weight) break;
      pick -= slp->weight;
    }
  }
  const int remote = static_cast<int>(random_.Below(kRemoteMasterCount));
  int64_t scheduleRoll = random_.Below(100);
  const ScheduleKind* schedule = &kSchedules[0];
  for (const ScheduleKind& s : kSchedules) {
    schedule = &s;
    if (scheduleRoll < s.percent) break;
    scheduleRoll -= s.percent;
  }
  const int64_t size = (1ll << (20 + random_.Below(18))) + random_.Below(1 << 20);

  // The copies: one per SLP operation that has been started; unmanaged
  // images have a backup and now and then a manual duplicate.
  static const Operation kUnmanagedCopies[] = {{BACKUP, "plain_disk_stu", "", 0, 30},
                                               {DUPLICATE, "tape_stu_lib1", "", 0, 365}};
  const Operation* operations = slp != nullptr ? slp->operations : kUnmanagedCopies;
  int copies = slp != nullptr ? slp->operationCount : (random_.Percent(20) ? 2 : 1);
  if (kind == ImageKind::kNotStarted) copies = random_.Percent(20) ? 2 : 1;
  int states[3];
  for (int k = 0; k < copies; ++k) {
    const bool first = k == 0;
    switch (kind) {
      case ImageKind::kUnmanaged:
        states[k] = 0;
        break;
      case ImageKind::kComplete:
      case ImageKind::kDeleted:
        states[k] = first && random_.Percent(30) ? 3 : 5;
        break;
      case ImageKind::kImported:
        states[k] = random_.Percent(40) ? 12 : 5;
        break;
      case ImageKind::kInProcess:
        states[k] = first ? 3
                    : operations[k].copyType == REPLICATE_TO_REMOTE
                        ? Pick(random_, kInProcessReplicaStates)
                        : Pick(random_, kInProcessCopyStates);
        if (share->inactive && (states[k] == 1 || states[k] == 2)) states[k] += 8;
        break;
      case ImageKind::kNotStarted:
        states[k] = first ? 3 : share->inactive ? 9 : 1;
        break;
      case ImageKind::kPendingImport:
        states[k] = Pick(random_, kPendingImportStates);
        break;
    }
  }
  int operationsMask = 0;
  for (int k = 0; k < copies; ++k) operationsMask |= 1 << operations[k].copyType;
  const std::string guid = MasterGuid(remote);
  const bool started = kind == ImageKind::kInProcess || kind == ImageKind::kComplete ||
                       kind == ImageKind::kImported || kind == ImageKind::kDeleted;
  image_.Int(masterKey_)
      .Text(client.name)
      .Int(backupTime)
      .Text(client.kind->policy)
      .Int(client.kind->clientType)
      .Text(schedule->name)
      .Int(schedule->type)
      .Int(backupTime)
      .Int(copies)
      .Int(1)
      .Int(random_.Below(4));
  if (fromRemote) {
    image_.Text(kRemoteMasters[remote]).Blob(guid.data(), 16);
  } else {
    image_.Text("").Null();
  }
  image_.Text(slp != nullptr ? slp->name : "")
      .Int(share->state)
      .Int(share->inactive ? 1 : 0)
      .Int(slp != nullptr ? 1 + random_.Below(slp->versions) : 0)
      .Int(started ? backupTime + random_.Between(60, 7200) : 0)
      .Text(slp != nullptr ? slp->classification : "")
      .Int(random_.Percent(10) ? backupTime + 365 * kDay : 0)
      .Int(kind == ImageKind::kImported ? backupTime + random_.Between(600, 86400) : 0)
      .Int(operationsMask)
      .Int(++lastJobId_)
      .Int(backupTime + random_.Between(30, 900))
      .Run();
  const int64_t imageKey = image_.LastKey();
  for (int k = 0; k < copies; ++k) {
    WriteCopy(imageKey, backupTime, client, k + 1, operations[k], states[k], size,
              kind == ImageKind::kDeleted);
  }
}

int64_t DemoWriter::WriteCopy(int64_t imageKey, int64_t backupTime, const Client& client,
                              int number, const Operation& op, int state, int64_t size,
                              bool deleted) {
  const StorageUnit* unit = FindStorageUnit(op.destination);
  const bool managed = state != 0;
  const bool done = state == 3 || state == 5 || state == 12;
  const bool working = state == 2 || state == 10 || state == 13 || state == 14 || state == 15;
  const int64_t expire = backupTime + op.retentionDays * kDay;
  const int retries = working || state == 7 ? static_cast<int>(random_.Below(4)) : 0;
  const bool snapshot = IsSnapshot(op.copyType);
  copy_.Int(imageKey)
      .Int(number)
      .Int(managed ? number : 0)
      .Int(managed && number > 1 ? 1 : 0)
      .Int(op.copyType)
      .Int(expire)
      .Int(done ? expire : 0)
      .Int(op.retentionType == 1 ? TryToKeepTime(windowEnd_, backupTime, op.retentionDays) : 0)
      .Text(op.destination)
      .Int(state)
      .Int(size)
      .Int(done || working ? ++lastJobId_ : 0)
      .Int(op.retentionType)
      .Int(unit != nullptr && unit->mediaType == 2 ? random_.Below(2) : 0)
      .Int(retries)
      .Int(retries > 0 || state == 14 ? backupTime + random_.Between(600, 2 * kDay) : 0)
      .Text(op.targetDomain)
      .Int(number > 1 ? 1 : 0)
      .Int(IsReplica(op.copyType) ? 1 : 0)
      .Int(snapshot ? 2 : client.kind->dataFormat)
      .Int(random_.Percent(5) ? 1 : 0)
      .Int(working && random_.Percent(60) ? 1 + random_.Below(workGroups_) : 0)
      .Run();
  const int64_t copyKey = copy_.LastKey();
  if (unit != nullptr && HasData(state, random_)) {
    WriteFragments(copyKey, backupTime, client, number, *unit, op.copyType, size, deleted);
    if (snapshot) WriteSnapshots(copyKey, backupTime, client, *unit, deleted);
  }
  if (IsReplica(op.copyType) && (done || state == 14 || state == 13)) {
    WriteTargets(copyKey, op.copyType);
  }
  return copyKey;
}

void DemoWriter::WriteFragments(int64_t copyKey, int64_t backupTime, const Client& client,
                                int number, const StorageUnit& unit, int copyType, int64_t size,
                                bool deleted) {
  const int count =
      random_.Percent(25) ? static_cast<int>(random_.Between(1, unit.maxFragments)) : 1;
  char mediaId[64];
  for (int f = 1; f <= count; ++f) {
    if (strchr(unit.mediaPrefix, '%') != nullptr) {
      snprintf(mediaId, sizeof mediaId, unit.mediaPrefix,
               static_cast<int>(1 + random_.Below(unit.mediaCount)));
    } else if (unit.mediaCount > 1) {
      snprintf(mediaId, sizeof mediaId, "%s%d", unit.mediaPrefix,
               static_cast<int>(1 + random_.Below(unit.mediaCount)));
    } else {
      snprintf(mediaId, sizeof mediaId, "%s", unit.mediaPrefix);
    }
    int state = 1;
    if (deleted) {
      state = random_.Percent(70) ? 2 : 3;
    } else {
      const int64_t roll = random_.Below(1000);
      state = roll < 80 ? 3 : roll < 90 ? 4 : roll < 95 ? 5 : 1;
    }
    const bool tape = unit.mediaType == 2;
    const int64_t part = f < count ? size / count : size - (size / count) * (count - 1);
    fragment_.Int(copyKey)
        .Int(f)
        .Int(random_.Percent(2) ? 1 : 0)
        .Text(mediaId)
        .Text(unit.mediaServer)
        .Text(unit.storageServer)
        .Int(unit.mediaType)
        .Int(unit.mediaSubType)
        .Int(state)
        .Int(part)
        .Int(tape ? 1 : 0)
        .Text(tape ? ""
                   : client.name + "_" + std::to_string(backupTime) + "_C" +
                         std::to_string(number) + "_F" + std::to_string(f) + ".img")
        .Text(IsSnapshot(copyType) ? "mount1.example.com" : "")
        .Text(unit.description)
        .Run();
  }
}

void DemoWriter::WriteSnapshots(int64_t copyKey, int64_t backupTime, const Client& client,
                                const StorageUnit& unit, bool deleted) {
  const int count = random_.Percent(30) ? 2 : 1;
  const std::string host = client.name.substr(0, client.name.find('.'));
  for (int s = 1; s <= count; ++s) {
    snapshot_.Int(copyKey)
        .Text(unit.storageServer)
        .Text(strncmp(unit.name, "cloud", 5) == 0 ? "CloudProvider" : "ArrayType_NAS")
        .Text("vol_" + host)
        .Text(std::string(unit.mediaPrefix) + std::to_string(s))
        .Text("snap_" + host + "_" + std::to_string(backupTime) + "_" + std::to_string(s))
        .Int(deleted ? 0 : 1)
        .Run();
  }
}

void DemoWriter::WriteTargets(int64_t copyKey, int copyType) {
  if (copyType != REPLICATE_TO_REMOTE) {
    target_.Int(copyKey)
        .Int(machineKeys_["dd-dr.example.com"])
        .Text("dd_dr_pool_vol1")
        .Text("")
        .Int(windowEnd_ - random_.Below(kWindowSeconds))
        .Run();
    return;
  }
  const int count = random_.Percent(20) ? 2 : 1;
  for (int r = 0; r < count; ++r) {
    const int remote = (static_cast<int>(copyKey) + r) % kRemoteMasterCount;
    const std::string machine = remote == 0 ? "remote1-dd.example.com" : "remote2-dd.example.com";
    target_.Int(copyKey)
        .Int(machineKeys_[machine])
        .Text("remote" + std::to_string(remote + 1) + "_dd_pool_vol" +
              std::to_string(1 + random_.Below(3)))
        .Text(kRemoteMasters[remote])
        .Int(windowEnd_ - random_.Below(kWindowSeconds))
        .Run();
  }
}

}  // namespace demo
