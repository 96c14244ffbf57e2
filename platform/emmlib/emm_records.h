// The catalog library's records: images, copies, fragments, snapshots, the
// flat image-copy-fragment row of the raw fetch, replication targets, SLP
// definitions and data classifications. Texts are NUL-terminated arrays (an
// empty text has NUL as its first byte); times are signed seconds since 1970.
// Records in list shape are allocated by the library and freed with the
// library's free functions (or, where a report frees them one by one, with
// free()); every record is one malloc'ed block.
#ifndef PLATFORM_EMMLIB_EMM_RECORDS_H_
#define PLATFORM_EMMLIB_EMM_RECORDS_H_

#include <cstdint>

enum {
  EMM_HOSTNAME_SIZE = 257,   // master, client, media and storage server names
  EMM_BACKUPID_SIZE = 1025,  // backup ids: at most 1024 characters
  EMM_NAME_SIZE = 257,       // policy, SLP, destination, media id, ...
  EMM_CLASSID_SIZE = 65,     // data classification id
  EMM_LONGTEXT_SIZE = 1025,  // residence, fragment id, descriptions
  EMM_GUID_SIZE = 16,
};

struct EMM_ReplicationTarget;
struct EMM_ImageFragment;
struct EMM_ImageCopy;

// Within each record the numbers come first and sit together, then the
// texts: filling or printing a record touches few cache lines besides the
// used bytes of its texts.
struct EMM_Image {
  int64_t BackupTime;
  int64_t TimeInProcess;
  int64_t ImportFromReplicaTime;
  int64_t RequiredExpirationDate;
  int64_t CreatedDateTime;
  int32_t ClientType;
  int32_t ScheduleType;
  int32_t SLPState;  // state in the low bits, 8 = inactive bit
  int32_t SLPVersion;
  unsigned char OriginMasterServerID[EMM_GUID_SIZE];
  char MasterServer[EMM_HOSTNAME_SIZE];
  char BackupID[EMM_BACKUPID_SIZE];
  char ClientName[EMM_HOSTNAME_SIZE];
  char PolicyName[EMM_NAME_SIZE];
  char SLPName[EMM_NAME_SIZE];
  char DataClassificationID[EMM_CLASSID_SIZE];
  char OriginMasterServer[EMM_HOSTNAME_SIZE];
  // List shape only.
  EMM_ImageCopy* copies;
  EMM_Image* next;
};

struct EMM_ImageCopy {
  uint64_t CopyKey;  // 0 in a flat row: the row has no copy
  int64_t ExpireTime;
  int64_t ExpireLCTime;
  int64_t TryToKeepTime;
  int64_t LastRetryTime;
  int32_t CopyNumber;
  int32_t SLPIndex;
  int32_t SLPSourceIndex;
  int32_t CopyType;
  int32_t CopyState;
  int32_t JobID;
  int32_t RetryCount;
  int32_t Source;
  int16_t RetentionType;
  int16_t MPXState;
  int16_t Replica;
  int16_t DataFormat;  // 2 = DF_SNAPSHOT
  char MasterServer[EMM_HOSTNAME_SIZE];
  char BackupID[EMM_BACKUPID_SIZE];
  char Residence[EMM_LONGTEXT_SIZE];  // "*Remote*Master*": held by a remote master
  char DestinationID[EMM_NAME_SIZE];
  // List shape only.
  EMM_ImageFragment* fragments;
  EMM_ReplicationTarget* replicationTargets;
  EMM_ImageCopy* next;
};

struct EMM_ImageFragment {
  uint64_t FragmentKey;  // 0 in a flat row: the row has no fragment
  int64_t FragmentSize;
  int32_t CopyNumber;
  int32_t FragmentNumber;
  int32_t ResumeCount;
  int32_t MediaType;     // 0 = DISK
  int16_t MediaSubType;  // 6 = STSDYNAMIC
  int16_t FragmentState;
  uint8_t DeleteHeader;
  char MasterServer[EMM_HOSTNAME_SIZE];
  char BackupID[EMM_BACKUPID_SIZE];
  char MediaID[EMM_NAME_SIZE];
  char MediaServer[EMM_HOSTNAME_SIZE];
  char StorageServer[EMM_HOSTNAME_SIZE];
  char FragmentID[EMM_LONGTEXT_SIZE];
  char SnapMountHost[EMM_HOSTNAME_SIZE];
  char MediaDescription[EMM_LONGTEXT_SIZE];
  // List shape only.
  EMM_ImageFragment* next;
};

// One row of the raw fetch: an image, one of its copies, one of that copy's
// fragments. Rows come ordered by image, copy, fragment.
struct Legacy_ImageView {
  EMM_Image image;
  EMM_ImageCopy copy;
  EMM_ImageFragment fragment;
};

struct EMM_SnapshotInfo {
  char BackupID[EMM_BACKUPID_SIZE];
  int32_t CopyNumber;
  int64_t BackupTime;
  char StorageServerName[EMM_HOSTNAME_SIZE];
  char StorageServerType[EMM_NAME_SIZE];
  char DiskVolumeName[EMM_NAME_SIZE];
  char DiskMediaID[EMM_NAME_SIZE];
  char SnapshotName[EMM_LONGTEXT_SIZE];
  EMM_SnapshotInfo* next;
};

// A replication-target record of a copy (list shape).
struct EMM_ReplicationTarget {
  char SourceMasterServer[EMM_HOSTNAME_SIZE];
  char BackupID[EMM_BACKUPID_SIZE];
  int32_t CopyNumber;
  char RemoteMaster[EMM_HOSTNAME_SIZE];
  char TargetMachine[EMM_HOSTNAME_SIZE];
  char TargetInfo[EMM_LONGTEXT_SIZE];
  EMM_ReplicationTarget* next;
};

// One operation of an SLP definition.
struct SS_OPERATION {
  int32_t index;  // the operation's SLP index
  int32_t copyType;
  char destination[EMM_NAME_SIZE];
  char targetDomain[EMM_NAME_SIZE];
  SS_OPERATION* next;
};

enum { SS_FLAG_INACTIVE = 8 };

// One version of an SLP definition.
struct SS_LIST {
  char name[EMM_NAME_SIZE];
  int32_t version;
  int32_t flags;  // SS_FLAG_INACTIVE
  SS_OPERATION* operations;
  SS_LIST* next;
};

struct DATA_CLASS_LIST {
  char name[EMM_NAME_SIZE];
  char identifier[EMM_CLASSID_SIZE];
  DATA_CLASS_LIST* next;
};

// Copy update record: each field is written only when its marker is set.
struct EMM_ImageCopyExt {
  bool hasMasterServer;
  char MasterServer[EMM_HOSTNAME_SIZE];
  bool hasCopyState;
  int32_t CopyState;
  bool hasBackupID;
  char BackupID[EMM_BACKUPID_SIZE];
  bool hasSLPIndex;
  int32_t SLPIndex;
};

#endif  // PLATFORM_EMMLIB_EMM_RECORDS_H_
