// Column readers for image, copy, fragment and replication-target rows. This
// is the inner loop of a catalog-wide listing: each column is read once, and
// texts are copied with their length, never by clearing whole records.
#include "platform/emmlib/image_rows.h"

#include <cstring>

#include "platform/emmlib/connection.h"
#include "platform/emmlib/sqlite_stmt.h"

namespace emm {

const char kImageColumns[] =
    "i.ImageKey, i.MasterServerKey, i.BackupID, i.ClientMachineName, i.BackupTime,"
    " i.PolicyName, i.ClientType, i.ScheduleType, i.StorageServiceName,"
    " i.StorageServiceState, i.StorageServiceIsInactive, i.TimeInProcess,"
    " i.ClassificationID, i.StorageServiceVersionNumber, i.OriginMasterServer,"
    " i.OriginMasterServerID, i.ImportFromReplicaTime, i.RequiredExpirationDate,"
    " i.CreatedDateTime";
const char kCopyColumns[] =
    "c.ImageCopyKey, c.CopyNumber, c.SLPIndex, c.SLPSourceIndex, c.CopyType,"
    " c.ExpireTime, c.ExpireLifecycleTime, c.TryToKeepTime, c.Residence, c.CopyState,"
    " c.JobID, c.ExpirationType, c.MpxState, c.RetryCount, c.LastRetryTime,"
    " c.DestinationID, c.Source, c.Replica, c.DataFormat";
const char kFragmentColumns[] =
    "f.FragmentKey, f.FragmentNumber, f.ResumeCount, f.MediaID, f.MediaServer,"
    " f.StorageServer, f.MediaType, f.MediaSubType, f.FragmentState, f.FragmentSize,"
    " f.DeleteHeader, f.FragmentID, f.SnapMountHost, f.MediaDescription";
const char kTargetColumns[] =
    "rd.ReplicationDestinationKey, m.MachinePrimaryName, rd.VolumeInfo,"
    " rd.RemoteMasterServer";

namespace {

inline int32_t Int(sqlite3_stmt* st, int col) { return sqlite3_column_int(st, col); }
inline int64_t Int64(sqlite3_stmt* st, int col) { return sqlite3_column_int64(st, col); }

// Copies a text already NUL-terminated in a record of the same row.
inline void CopyFrom(char* dst, size_t size, const char* src) {
  CopyText(dst, size, src, strlen(src));
}

}  // namespace

void ReadImage(sqlite3_stmt* st, Connection* connection, EMM_Image* image) {
  const std::string& master = connection->MasterServerName(Int64(st, 1));
  CopyText(image->MasterServer, sizeof image->MasterServer, master.data(), master.size());
  CopyColumnText(st, 2, image->BackupID, sizeof image->BackupID);
  CopyColumnText(st, 3, image->ClientName, sizeof image->ClientName);
  image->BackupTime = Int64(st, 4);
  CopyColumnText(st, 5, image->PolicyName, sizeof image->PolicyName);
  image->ClientType = Int(st, 6);
  image->ScheduleType = Int(st, 7);
  CopyColumnText(st, 8, image->SLPName, sizeof image->SLPName);
  const int32_t state = Int(st, 9);
  image->SLPState = Int(st, 10) != 0 ? (state | 8) : state;
  image->TimeInProcess = Int64(st, 11);
  CopyColumnText(st, 12, image->DataClassificationID, sizeof image->DataClassificationID);
  image->SLPVersion = Int(st, 13);
  CopyColumnText(st, 14, image->OriginMasterServer, sizeof image->OriginMasterServer);
  const void* guid = sqlite3_column_blob(st, 15);
  size_t guidLen = guid != nullptr ? static_cast<size_t>(sqlite3_column_bytes(st, 15)) : 0;
  if (guidLen > sizeof image->OriginMasterServerID) guidLen = sizeof image->OriginMasterServerID;
  if (guidLen > 0) memcpy(image->OriginMasterServerID, guid, guidLen);
  memset(image->OriginMasterServerID + guidLen, 0, sizeof image->OriginMasterServerID - guidLen);
  image->ImportFromReplicaTime = Int64(st, 16);
  image->RequiredExpirationDate = Int64(st, 17);
  image->CreatedDateTime = Int64(st, 18);
  image->copies = nullptr;
  image->next = nullptr;
}

void CopyImage(const EMM_Image& from, EMM_Image* to) {
  CopyFrom(to->MasterServer, sizeof to->MasterServer, from.MasterServer);
  CopyFrom(to->BackupID, sizeof to->BackupID, from.BackupID);
  CopyFrom(to->ClientName, sizeof to->ClientName, from.ClientName);
  to->BackupTime = from.BackupTime;
  CopyFrom(to->PolicyName, sizeof to->PolicyName, from.PolicyName);
  to->ClientType = from.ClientType;
  to->ScheduleType = from.ScheduleType;
  CopyFrom(to->SLPName, sizeof to->SLPName, from.SLPName);
  to->SLPState = from.SLPState;
  to->TimeInProcess = from.TimeInProcess;
  CopyFrom(to->DataClassificationID, sizeof to->DataClassificationID, from.DataClassificationID);
  to->SLPVersion = from.SLPVersion;
  CopyFrom(to->OriginMasterServer, sizeof to->OriginMasterServer, from.OriginMasterServer);
  memcpy(to->OriginMasterServerID, from.OriginMasterServerID, sizeof to->OriginMasterServerID);
  to->ImportFromReplicaTime = from.ImportFromReplicaTime;
  to->RequiredExpirationDate = from.RequiredExpirationDate;
  to->CreatedDateTime = from.CreatedDateTime;
  to->copies = nullptr;
  to->next = nullptr;
}

void CopyCopy(const EMM_ImageCopy& from, EMM_ImageCopy* to) {
  to->CopyKey = from.CopyKey;
  CopyFrom(to->MasterServer, sizeof to->MasterServer, from.MasterServer);
  CopyFrom(to->BackupID, sizeof to->BackupID, from.BackupID);
  to->CopyNumber = from.CopyNumber;
  to->SLPIndex = from.SLPIndex;
  to->SLPSourceIndex = from.SLPSourceIndex;
  to->CopyType = from.CopyType;
  to->ExpireTime = from.ExpireTime;
  to->ExpireLCTime = from.ExpireLCTime;
  to->TryToKeepTime = from.TryToKeepTime;
  CopyFrom(to->Residence, sizeof to->Residence, from.Residence);
  to->CopyState = from.CopyState;
  to->JobID = from.JobID;
  to->RetentionType = from.RetentionType;
  to->MPXState = from.MPXState;
  to->RetryCount = from.RetryCount;
  to->LastRetryTime = from.LastRetryTime;
  CopyFrom(to->DestinationID, sizeof to->DestinationID, from.DestinationID);
  to->Source = from.Source;
  to->Replica = from.Replica;
  to->DataFormat = from.DataFormat;
  to->fragments = nullptr;
  to->replicationTargets = nullptr;
  to->next = nullptr;
}

uint64_t ReadCopy(sqlite3_stmt* st, uint64_t key, const EMM_Image& image, EMM_ImageCopy* copy) {
  const int b = kCopyFirstColumn;
  copy->CopyKey = key;
  CopyFrom(copy->MasterServer, sizeof copy->MasterServer, image.MasterServer);
  CopyFrom(copy->BackupID, sizeof copy->BackupID, image.BackupID);
  copy->fragments = nullptr;
  copy->replicationTargets = nullptr;
  copy->next = nullptr;
  if (key == 0) {
    copy->CopyNumber = copy->SLPIndex = copy->SLPSourceIndex = copy->CopyType = 0;
    copy->ExpireTime = copy->ExpireLCTime = copy->TryToKeepTime = copy->LastRetryTime = 0;
    copy->Residence[0] = copy->DestinationID[0] = '\0';
    copy->CopyState = copy->JobID = copy->RetryCount = copy->Source = 0;
    copy->RetentionType = copy->MPXState = copy->Replica = copy->DataFormat = 0;
    return 0;
  }
  copy->CopyNumber = Int(st, b + 1);
  copy->SLPIndex = Int(st, b + 2);
  copy->SLPSourceIndex = Int(st, b + 3);
  copy->CopyType = Int(st, b + 4);
  copy->ExpireTime = Int64(st, b + 5);
  copy->ExpireLCTime = Int64(st, b + 6);
  copy->TryToKeepTime = Int64(st, b + 7);
  CopyColumnText(st, b + 8, copy->Residence, sizeof copy->Residence);
  copy->CopyState = Int(st, b + 9);
  copy->JobID = Int(st, b + 10);
  copy->RetentionType = static_cast<int16_t>(Int(st, b + 11));
  copy->MPXState = static_cast<int16_t>(Int(st, b + 12));
  copy->RetryCount = Int(st, b + 13);
  copy->LastRetryTime = Int64(st, b + 14);
  CopyColumnText(st, b + 15, copy->DestinationID, sizeof copy->DestinationID);
  copy->Source = Int(st, b + 16);
  copy->Replica = static_cast<int16_t>(Int(st, b + 17));
  copy->DataFormat = static_cast<int16_t>(Int(st, b + 18));
  return key;
}

uint64_t ReadFragment(sqlite3_stmt* st, const EMM_Image& image, int32_t copyNumber,
                      EMM_ImageFragment* fragment) {
  const int b = kLastGroupFirstColumn;
  const uint64_t key = static_cast<uint64_t>(Int64(st, b));
  fragment->FragmentKey = key;
  CopyFrom(fragment->MasterServer, sizeof fragment->MasterServer, image.MasterServer);
  CopyFrom(fragment->BackupID, sizeof fragment->BackupID, image.BackupID);
  fragment->CopyNumber = copyNumber;
  fragment->next = nullptr;
  if (key == 0) {
    fragment->FragmentNumber = fragment->ResumeCount = fragment->MediaType = 0;
    fragment->MediaSubType = fragment->FragmentState = 0;
    fragment->FragmentSize = 0;
    fragment->DeleteHeader = 0;
    fragment->MediaID[0] = fragment->MediaServer[0] = fragment->StorageServer[0] = '\0';
    fragment->FragmentID[0] = fragment->SnapMountHost[0] = fragment->MediaDescription[0] = '\0';
    return 0;
  }
  fragment->FragmentNumber = Int(st, b + 1);
  fragment->ResumeCount = Int(st, b + 2);
  CopyColumnText(st, b + 3, fragment->MediaID, sizeof fragment->MediaID);
  CopyColumnText(st, b + 4, fragment->MediaServer, sizeof fragment->MediaServer);
  CopyColumnText(st, b + 5, fragment->StorageServer, sizeof fragment->StorageServer);
  fragment->MediaType = Int(st, b + 6);
  fragment->MediaSubType = static_cast<int16_t>(Int(st, b + 7));
  fragment->FragmentState = static_cast<int16_t>(Int(st, b + 8));
  fragment->FragmentSize = Int64(st, b + 9);
  fragment->DeleteHeader = static_cast<uint8_t>(Int(st, b + 10));
  CopyColumnText(st, b + 11, fragment->FragmentID, sizeof fragment->FragmentID);
  CopyColumnText(st, b + 12, fragment->SnapMountHost, sizeof fragment->SnapMountHost);
  CopyColumnText(st, b + 13, fragment->MediaDescription, sizeof fragment->MediaDescription);
  return key;
}

uint64_t ReadTarget(sqlite3_stmt* st, const EMM_Image& image, int32_t copyNumber,
                    EMM_ReplicationTarget* target) {
  const int b = kLastGroupFirstColumn;
  const uint64_t key = static_cast<uint64_t>(Int64(st, b));
  CopyFrom(target->SourceMasterServer, sizeof target->SourceMasterServer, image.MasterServer);
  CopyFrom(target->BackupID, sizeof target->BackupID, image.BackupID);
  target->CopyNumber = copyNumber;
  CopyColumnText(st, b + 1, target->TargetMachine, sizeof target->TargetMachine);
  CopyColumnText(st, b + 2, target->TargetInfo, sizeof target->TargetInfo);
  CopyColumnText(st, b + 3, target->RemoteMaster, sizeof target->RemoteMaster);
  target->next = nullptr;
  return key;
}

}  // namespace emm
