// Column readers for image, copy, fragment and replication-target rows. This
// is the inner loop of a catalog-wide listing: each column is read once, and
// texts are copied with their known length, never by clearing whole records
// or scanning them for their end.
#include "platform/emmlib/image_rows.h"

#include <cstddef>
#include <cstring>

#include "platform/emmlib/connection.h"
#include "platform/emmlib/statement.h"

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
const char kSummaryColumns[] =
    "i.ImageKey, i.BackupID, i.StorageServiceName, i.StorageServiceVersionNumber,"
    " i.StorageServiceState, i.StorageServiceIsInactive, c.ImageCopyKey, c.CopyNumber,"
    " c.CopyState, f.FragmentKey, f.FragmentSize";
const char kLifecycleColumns[] =
    "i.ImageKey, i.BackupID, i.StorageServiceName, i.StorageServiceVersionNumber,"
    " i.StorageServiceState, i.StorageServiceIsInactive, c.ImageCopyKey, c.CopyNumber,"
    " c.CopyType, c.CopyState, c.Residence";

namespace {

// Copies the text of a record of the same result, whose length is known.
template <size_t N>
inline void CopyKnown(char (&dst)[N], const char (&src)[N], size_t length) {
  memcpy(dst, src, length + 1);
}

// Master server and backup id of a copy, fragment or target record: the
// image's, whose lengths are known.
template <typename Record>
inline void CopyImageIds(const EMM_Image& image, const RowTextLengths& lengths, Record* to) {
  CopyText(to->MasterServer, sizeof to->MasterServer, image.MasterServer, lengths.master);
  CopyText(to->BackupID, sizeof to->BackupID, image.BackupID, lengths.backupId);
}

}  // namespace

void ReadImage(const ResultRow& row, Connection* connection, EMM_Image* image,
               RowTextLengths* lengths) {
  const std::string& master = connection->MasterServerName(row.Int64(1));
  lengths->master =
      CopyText(image->MasterServer, sizeof image->MasterServer, master.data(), master.size());
  lengths->backupId = row.Text(2, image->BackupID, sizeof image->BackupID);
  lengths->client = row.Text(3, image->ClientName, sizeof image->ClientName);
  image->BackupTime = row.Int64(4);
  lengths->policy = row.Text(5, image->PolicyName, sizeof image->PolicyName);
  image->ClientType = row.Int(6);
  image->ScheduleType = row.Int(7);
  lengths->slpName = row.Text(8, image->SLPName, sizeof image->SLPName);
  const int32_t state = row.Int(9);
  image->SLPState = row.Int(10) != 0 ? (state | 8) : state;
  image->TimeInProcess = row.Int64(11);
  lengths->classificationId =
      row.Text(12, image->DataClassificationID, sizeof image->DataClassificationID);
  image->SLPVersion = row.Int(13);
  lengths->originMaster = row.Text(14, image->OriginMasterServer, sizeof image->OriginMasterServer);
  row.Blob(15, image->OriginMasterServerID, sizeof image->OriginMasterServerID);
  image->ImportFromReplicaTime = row.Int64(16);
  image->RequiredExpirationDate = row.Int64(17);
  image->CreatedDateTime = row.Int64(18);
  image->copies = nullptr;
  image->next = nullptr;
}

void CopyImage(const EMM_Image& from, const RowTextLengths& lengths, EMM_Image* to) {
  // The numbers lead the record: one copy up to its first text.
  memcpy(to, &from, offsetof(EMM_Image, MasterServer));
  CopyKnown(to->MasterServer, from.MasterServer, lengths.master);
  CopyKnown(to->BackupID, from.BackupID, lengths.backupId);
  CopyKnown(to->ClientName, from.ClientName, lengths.client);
  CopyKnown(to->PolicyName, from.PolicyName, lengths.policy);
  CopyKnown(to->SLPName, from.SLPName, lengths.slpName);
  CopyKnown(to->DataClassificationID, from.DataClassificationID, lengths.classificationId);
  CopyKnown(to->OriginMasterServer, from.OriginMasterServer, lengths.originMaster);
  to->copies = nullptr;
  to->next = nullptr;
}

void CopyCopy(const EMM_ImageCopy& from, const RowTextLengths& lengths, EMM_ImageCopy* to) {
  memcpy(to, &from, offsetof(EMM_ImageCopy, MasterServer));
  CopyKnown(to->MasterServer, from.MasterServer, lengths.master);
  CopyKnown(to->BackupID, from.BackupID, lengths.backupId);
  CopyKnown(to->Residence, from.Residence, lengths.residence);
  CopyKnown(to->DestinationID, from.DestinationID, lengths.destinationId);
  to->fragments = nullptr;
  to->replicationTargets = nullptr;
  to->next = nullptr;
}

uint64_t ReadCopy(const ResultRow& row, uint64_t key, const EMM_Image& image,
                  RowTextLengths* lengths, EMM_ImageCopy* copy) {
  const int b = kCopyFirstColumn;
  copy->CopyKey = key;
  CopyImageIds(image, *lengths, copy);
  copy->fragments = nullptr;
  copy->replicationTargets = nullptr;
  copy->next = nullptr;
  if (key == 0) {
    memset(&copy->ExpireTime, 0,
           offsetof(EMM_ImageCopy, MasterServer) - offsetof(EMM_ImageCopy, ExpireTime));
    copy->Residence[0] = copy->DestinationID[0] = '\0';
    lengths->residence = lengths->destinationId = 0;
    return 0;
  }
  copy->CopyNumber = row.Int(b + 1);
  copy->SLPIndex = row.Int(b + 2);
  copy->SLPSourceIndex = row.Int(b + 3);
  copy->CopyType = row.Int(b + 4);
  copy->ExpireTime = row.Int64(b + 5);
  copy->ExpireLCTime = row.Int64(b + 6);
  copy->TryToKeepTime = row.Int64(b + 7);
  lengths->residence = row.Text(b + 8, copy->Residence, sizeof copy->Residence);
  copy->CopyState = row.Int(b + 9);
  copy->JobID = row.Int(b + 10);
  copy->RetentionType = static_cast<int16_t>(row.Int(b + 11));
  copy->MPXState = static_cast<int16_t>(row.Int(b + 12));
  copy->RetryCount = row.Int(b + 13);
  copy->LastRetryTime = row.Int64(b + 14);
  lengths->destinationId = row.Text(b + 15, copy->DestinationID, sizeof copy->DestinationID);
  copy->Source = row.Int(b + 16);
  copy->Replica = static_cast<int16_t>(row.Int(b + 17));
  copy->DataFormat = static_cast<int16_t>(row.Int(b + 18));
  return key;
}

uint64_t ReadFragment(const ResultRow& row, const EMM_Image& image, const RowTextLengths& lengths,
                      int32_t copyNumber, EMM_ImageFragment* fragment) {
  const int b = kLastGroupFirstColumn;
  const uint64_t key = static_cast<uint64_t>(row.Int64(b));
  fragment->FragmentKey = key;
  CopyImageIds(image, lengths, fragment);
  fragment->next = nullptr;
  if (key == 0) {
    memset(&fragment->FragmentSize, 0,
           offsetof(EMM_ImageFragment, MasterServer) - offsetof(EMM_ImageFragment, FragmentSize));
    fragment->MediaID[0] = fragment->MediaServer[0] = fragment->StorageServer[0] = '\0';
    fragment->FragmentID[0] = fragment->SnapMountHost[0] = fragment->MediaDescription[0] = '\0';
    fragment->CopyNumber = copyNumber;
    return 0;
  }
  fragment->CopyNumber = copyNumber;
  fragment->FragmentNumber = row.Int(b + 1);
  fragment->ResumeCount = row.Int(b + 2);
  row.Text(b + 3, fragment->MediaID, sizeof fragment->MediaID);
  row.Text(b + 4, fragment->MediaServer, sizeof fragment->MediaServer);
  row.Text(b + 5, fragment->StorageServer, sizeof fragment->StorageServer);
  fragment->MediaType = row.Int(b + 6);
  fragment->MediaSubType = static_cast<int16_t>(row.Int(b + 7));
  fragment->FragmentState = static_cast<int16_t>(row.Int(b + 8));
  fragment->FragmentSize = row.Int64(b + 9);
  fragment->DeleteHeader = static_cast<uint8_t>(row.Int(b + 10));
  row.Text(b + 11, fragment->FragmentID, sizeof fragment->FragmentID);
  row.Text(b + 12, fragment->SnapMountHost, sizeof fragment->SnapMountHost);
  row.Text(b + 13, fragment->MediaDescription, sizeof fragment->MediaDescription);
  return key;
}

uint64_t ReadTarget(const ResultRow& row, const EMM_Image& image, const RowTextLengths& lengths,
                    int32_t copyNumber, EMM_ReplicationTarget* target) {
  const int b = kLastGroupFirstColumn;
  const uint64_t key = static_cast<uint64_t>(row.Int64(b));
  CopyText(target->SourceMasterServer, sizeof target->SourceMasterServer, image.MasterServer,
           lengths.master);
  CopyText(target->BackupID, sizeof target->BackupID, image.BackupID, lengths.backupId);
  target->CopyNumber = copyNumber;
  row.Text(b + 1, target->TargetMachine, sizeof target->TargetMachine);
  row.Text(b + 2, target->TargetInfo, sizeof target->TargetInfo);
  row.Text(b + 3, target->RemoteMaster, sizeof target->RemoteMaster);
  target->next = nullptr;
  return key;
}

void ReadSummary(const ResultRow& row, Legacy_ImageView* to) {
  EMM_Image& image = to->image;
  row.Text(1, image.BackupID, sizeof image.BackupID);
  row.Text(2, image.SLPName, sizeof image.SLPName);
  image.SLPVersion = row.Int(3);
  const int32_t state = row.Int(4);
  image.SLPState = row.Int(5) != 0 ? (state | 8) : state;
  to->copy.CopyKey = static_cast<uint64_t>(row.Int64(6));
  to->copy.CopyNumber = row.Int(7);
  to->copy.CopyState = row.Int(8);
  to->fragment.FragmentKey = static_cast<uint64_t>(row.Int64(9));
  to->fragment.FragmentSize = row.Int64(10);
}

void ReadLifecycleImage(const ResultRow& row, EMM_Image* image) {
  memset(image, 0, offsetof(EMM_Image, MasterServer));
  image->MasterServer[0] = image->ClientName[0] = image->PolicyName[0] = '\0';
  image->DataClassificationID[0] = image->OriginMasterServer[0] = '\0';
  row.Text(1, image->BackupID, sizeof image->BackupID);
  row.Text(2, image->SLPName, sizeof image->SLPName);
  image->SLPVersion = row.Int(3);
  const int32_t state = row.Int(4);
  image->SLPState = row.Int(5) != 0 ? (state | 8) : state;
  image->copies = nullptr;
  image->next = nullptr;
}

void ReadLifecycleCopy(const ResultRow& row, uint64_t key, EMM_ImageCopy* copy) {
  const int b = kLifecycleCopyFirstColumn;
  memset(copy, 0, offsetof(EMM_ImageCopy, MasterServer));
  copy->CopyKey = key;
  copy->CopyNumber = row.Int(b + 1);
  copy->CopyType = row.Int(b + 2);
  copy->CopyState = row.Int(b + 3);
  row.Text(b + 4, copy->Residence, sizeof copy->Residence);
  copy->MasterServer[0] = copy->BackupID[0] = copy->DestinationID[0] = '\0';
  copy->fragments = nullptr;
  copy->replicationTargets = nullptr;
  copy->next = nullptr;
}

}  // namespace emm
