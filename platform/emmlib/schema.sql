-- The catalog database (SQLite): machines, backup images with their copies,
-- fragments, snapshots and replication targets, SLP definitions, data
-- classifications, import notifications, work groups, the deleted-fragment
-- list and the pending-import queue.
--
-- Conventions (docs/catalog.md explains them):
--  * Keys assigned by the database are INTEGER PRIMARY KEY (rowid aliases).
--  * Texts are NOT NULL DEFAULT '' so that a reader never meets NULL for an
--    empty text; numbers default to 0.
--  * Every time and date-time is an integer: seconds since 1970 (UTC).
--    That holds for the times of backups, copies and fragments (BackupTime,
--    ExpireTime, ...) and for the date-times that statements read through
--    DATEDIFF(SECOND, '1970-01-01 00:00:00', x) or set through DATEADD
--    (CreatedDateTime, LastRetryTime), which default to the current time.
--  * GUIDs are 16-byte blobs.
--  * The backup id of an image is derived: client name, '_', backup time.
--
-- stashwell-init applies the file as a whole when it creates a catalog.

------------------------------------------------------------------------------
-- Machines known to the media manager. MachineSwuType: 1 media server,
-- 3 master server, 5 clustered (virtual) master server, 12 replication target
-- (a storage server reached by replication). ParentKey is the master server
-- the machine belongs to; a master server is its own parent.
------------------------------------------------------------------------------
CREATE TABLE EMM_Machine (
  MachineKey          INTEGER PRIMARY KEY,
  ParentKey           INTEGER NOT NULL DEFAULT 0,
  MachinePrimaryName  TEXT    NOT NULL,
  MachineSwuType      INTEGER NOT NULL,
  MachineDescription  TEXT    NOT NULL DEFAULT ''
);
CREATE INDEX EMM_Machine_Name ON EMM_Machine (MachinePrimaryName, MachineSwuType);

-- Every name a machine answers to (its primary name included), with the
-- machine type the name stands for.
CREATE TABLE EMM_MachineAlias (
  MachineAliasKey     INTEGER PRIMARY KEY,
  MachineKey          INTEGER NOT NULL,
  MachineAliasName    TEXT    NOT NULL,
  MachineSwuType      INTEGER NOT NULL
);
CREATE INDEX EMM_MachineAlias_Machine ON EMM_MachineAlias (MachineKey);
CREATE INDEX EMM_MachineAlias_UpperName ON EMM_MachineAlias (UPPER(MachineAliasName));

-- Catalog-wide settings of the media manager (name, integer value), such as
-- 'PolicyCategory'.
CREATE TABLE EMM_Parameter (
  Name                TEXT    PRIMARY KEY,
  Value               INTEGER NOT NULL DEFAULT 0
) WITHOUT ROWID;

-- Data classifications, listed by rank (highest protection first).
CREATE TABLE EMM_DataClassification (
  ClassificationID    TEXT    PRIMARY KEY,
  Name                TEXT    NOT NULL,
  Rank                INTEGER NOT NULL DEFAULT 0,
  Description         TEXT    NOT NULL DEFAULT ''
);

------------------------------------------------------------------------------
-- Backup images. StorageServiceState is the SLP state without the inactive
-- flag (0 not managed, 1 not started, 2 in process, 3 complete, 4 deleted);
-- StorageServiceIsInactive is that flag.
------------------------------------------------------------------------------
CREATE TABLE DBM_Image (
  ImageKey                     INTEGER PRIMARY KEY,
  MasterServerKey              INTEGER NOT NULL,
  ParentImageKey               INTEGER,
  ClientMachineName            TEXT    NOT NULL,
  BackupTime                   INTEGER NOT NULL,
  BackupID                     TEXT    GENERATED ALWAYS AS (ClientMachineName || '_' || BackupTime) STORED,
  PolicyName                   TEXT    NOT NULL DEFAULT '',
  ClientType                   INTEGER NOT NULL DEFAULT 0,
  ScheduleName                 TEXT    NOT NULL DEFAULT '',
  ScheduleType                 INTEGER NOT NULL DEFAULT 0,
  LastBirthTime                INTEGER NOT NULL DEFAULT 0,
  NumberCopies                 INTEGER NOT NULL DEFAULT 0,
  PrimaryCopy                  INTEGER NOT NULL DEFAULT 1,
  StreamNumber                 INTEGER NOT NULL DEFAULT 0,
  PfiType                      INTEGER NOT NULL DEFAULT 0,
  OriginMasterServer           TEXT    NOT NULL DEFAULT '',
  OriginMasterServerID         BLOB,
  StorageServiceName           TEXT    NOT NULL DEFAULT '',
  StorageServiceState          INTEGER NOT NULL DEFAULT 0,
  StorageServiceIsInactive     INTEGER NOT NULL DEFAULT 0,
  StorageServiceVersionNumber  INTEGER NOT NULL DEFAULT 0,
  TimeInProcess                INTEGER NOT NULL DEFAULT 0,
  ClassificationID             TEXT    NOT NULL DEFAULT '',
  RequiredExpirationDate       INTEGER NOT NULL DEFAULT 0,
  ImportFromReplicaTime        INTEGER NOT NULL DEFAULT 0,
  NumChildren                  INTEGER NOT NULL DEFAULT 0,
  TirInfo                      INTEGER NOT NULL DEFAULT 0,
  SLPOperationsMask            INTEGER NOT NULL DEFAULT 0,
  HasDependents                INTEGER NOT NULL DEFAULT 0,
  HasDependees                 INTEGER NOT NULL DEFAULT 0,
  JobID                        INTEGER NOT NULL DEFAULT 0,
  ImageAttribute               INTEGER NOT NULL DEFAULT 0,
  CreatedDateTime              INTEGER NOT NULL DEFAULT (unixepoch())
);
-- The listing order: images of one master by backup time and backup id.
CREATE INDEX DBM_Image_Listing ON DBM_Image (MasterServerKey, BackupTime, BackupID);
CREATE UNIQUE INDEX DBM_Image_BackupID ON DBM_Image (BackupID, MasterServerKey);
CREATE INDEX DBM_Image_Client ON DBM_Image (ClientMachineName, BackupTime);
CREATE INDEX DBM_Image_SLP ON DBM_Image (StorageServiceName, StorageServiceVersionNumber);
-- The images of one SLP state in listing order (the backlog report asks
-- for each unfinished state in turn).
CREATE INDEX DBM_Image_State ON DBM_Image (MasterServerKey, StorageServiceState,
  StorageServiceIsInactive, BackupTime, BackupID);

-- Copies of an image. CopyState holds the whole SLP copy state (9 and 10 are
-- the inactive forms of 1 and 2); ExpirationType is the retention type.
CREATE TABLE DBM_ImageCopy (
  ImageCopyKey                 INTEGER PRIMARY KEY,
  ImageKey                     INTEGER NOT NULL,
  CopyNumber                   INTEGER NOT NULL,
  SLPIndex                     INTEGER NOT NULL DEFAULT 0,
  SLPSourceIndex               INTEGER NOT NULL DEFAULT 0,
  CopyType                     INTEGER NOT NULL DEFAULT 0,
  ExpireTime                   INTEGER NOT NULL DEFAULT 0,
  ExpireLifecycleTime          INTEGER NOT NULL DEFAULT 0,
  TryToKeepTime                INTEGER NOT NULL DEFAULT 0,
  Residence                    TEXT    NOT NULL DEFAULT '',
  CopyState                    INTEGER NOT NULL DEFAULT 0,
  CopySize                     INTEGER NOT NULL DEFAULT 0,
  JobID                        INTEGER NOT NULL DEFAULT 0,
  ExpirationType               INTEGER NOT NULL DEFAULT 0,
  MpxState                     INTEGER NOT NULL DEFAULT 0,
  RetryCount                   INTEGER NOT NULL DEFAULT 0,
  LastRetryTime                INTEGER NOT NULL DEFAULT 0,
  DestinationID                TEXT    NOT NULL DEFAULT '',
  Source                       INTEGER NOT NULL DEFAULT 0,
  Replica                      INTEGER NOT NULL DEFAULT 0,
  DataFormat                   INTEGER NOT NULL DEFAULT 1,
  DeferredDuplicationTime      INTEGER NOT NULL DEFAULT 0,
  SourceCopyExpirationTime     INTEGER NOT NULL DEFAULT 0,
  Resumable                    INTEGER NOT NULL DEFAULT 0,
  WGKey                        INTEGER NOT NULL DEFAULT 0,
  ExpirationCount              INTEGER NOT NULL DEFAULT 0
);
CREATE UNIQUE INDEX DBM_ImageCopy_Image ON DBM_ImageCopy (ImageKey, CopyNumber);
CREATE INDEX DBM_ImageCopy_State ON DBM_ImageCopy (CopyState, LastRetryTime);

-- Fragments of a copy. MediaType 0 is disk; MediaSubType 6 (STSDYNAMIC) means
-- MediaID is the disk media id itself.
CREATE TABLE DBM_ImageFragment (
  FragmentKey                  INTEGER PRIMARY KEY,
  ImageCopyKey                 INTEGER NOT NULL,
  FragmentNumber               INTEGER NOT NULL,
  ResumeCount                  INTEGER NOT NULL DEFAULT 0,
  MediaID                      TEXT    NOT NULL DEFAULT '',
  MediaServer                  TEXT    NOT NULL DEFAULT '',
  StorageServer                TEXT    NOT NULL DEFAULT '',
  MediaType                    INTEGER NOT NULL DEFAULT 0,
  MediaSubType                 INTEGER NOT NULL DEFAULT 0,
  FragmentState                INTEGER NOT NULL DEFAULT 1,
  FragmentSize                 INTEGER NOT NULL DEFAULT 0,
  DeleteHeader                 INTEGER NOT NULL DEFAULT 0,
  FragmentID                   TEXT    NOT NULL DEFAULT '',
  SnapMountHost                TEXT    NOT NULL DEFAULT '',
  MediaDescription             TEXT    NOT NULL DEFAULT ''
);
CREATE INDEX DBM_ImageFragment_Copy ON DBM_ImageFragment (ImageCopyKey, FragmentNumber);
CREATE INDEX DBM_ImageFragment_Media ON DBM_ImageFragment (MediaID);

-- Snapshots held by snapshot copies (DataFormat 2).
CREATE TABLE DBM_ImageSnapshot (
  SnapshotKey                  INTEGER PRIMARY KEY,
  ImageCopyKey                 INTEGER NOT NULL,
  StorageServerName            TEXT    NOT NULL DEFAULT '',
  StorageServerType            TEXT    NOT NULL DEFAULT '',
  DiskVolumeName               TEXT    NOT NULL DEFAULT '',
  DiskMediaID                  TEXT    NOT NULL DEFAULT '',
  SnapshotName                 TEXT    NOT NULL DEFAULT '',
  IsActive                     INTEGER NOT NULL DEFAULT 1
);
CREATE INDEX DBM_ImageSnapshot_Copy ON DBM_ImageSnapshot (ImageCopyKey, SnapshotKey);

-- Replication targets of a copy: the target machine (an EMM_Machine of type
-- 12), the volume on it and the master server that owns it.
CREATE TABLE DBM_ImageReplicationDestination (
  ReplicationDestinationKey    INTEGER PRIMARY KEY,
  ImageCopyKey                 INTEGER NOT NULL,
  TargetMachineKey             INTEGER NOT NULL,
  VolumeInfo                   TEXT    NOT NULL DEFAULT '',
  RemoteMasterServer           TEXT    NOT NULL DEFAULT '',
  CreatedDateTime              INTEGER NOT NULL DEFAULT (unixepoch())
);
CREATE INDEX DBM_ImageReplicationDestination_Copy ON DBM_ImageReplicationDestination (ImageCopyKey);
CREATE INDEX DBM_ImageReplicationDestination_Target ON DBM_ImageReplicationDestination (TargetMachineKey, VolumeInfo);

-- Fragments removed from the catalog whose media still hold their data.
CREATE TABLE DBM_DeletedFragment (
  DeletedFragmentKey           INTEGER PRIMARY KEY,
  MasterServerKey              INTEGER NOT NULL,
  BackupID                     TEXT    NOT NULL,
  CopyNumber                   INTEGER NOT NULL DEFAULT 1,
  FragmentNumber               INTEGER NOT NULL DEFAULT 1,
  MediaID                      TEXT    NOT NULL DEFAULT '',
  MediaServer                  TEXT    NOT NULL DEFAULT '',
  StorageServer                TEXT    NOT NULL DEFAULT '',
  MediaType                    INTEGER NOT NULL DEFAULT 0,
  MediaSubType                 INTEGER NOT NULL DEFAULT 0,
  FragmentSize                 INTEGER NOT NULL DEFAULT 0,
  CreatedDateTime              INTEGER NOT NULL DEFAULT (unixepoch())
);
CREATE INDEX DBM_DeletedFragment_Image ON DBM_DeletedFragment (MasterServerKey, BackupID);

------------------------------------------------------------------------------
-- Storage lifecycle policies: one row per version of a policy (Flags 8 =
-- inactive) and its operations. OperationIndex is the SLP index of the copy
-- an operation makes; CopyType is the copy type it makes (0 backup,
-- 1 duplicate, 3 replication to a remote master, ...).
------------------------------------------------------------------------------
CREATE TABLE SLP_StorageService (
  StorageServiceKey            INTEGER PRIMARY KEY,
  StorageServiceName           TEXT    NOT NULL,
  VersionNumber                INTEGER NOT NULL,
  Flags                        INTEGER NOT NULL DEFAULT 0,
  ClassificationID             TEXT    NOT NULL DEFAULT '',
  CreatedDateTime              INTEGER NOT NULL DEFAULT (unixepoch())
);
CREATE UNIQUE INDEX SLP_StorageService_Name ON SLP_StorageService (StorageServiceName, VersionNumber);

CREATE TABLE SLP_StorageServiceOperation (
  OperationKey                 INTEGER PRIMARY KEY,
  StorageServiceKey            INTEGER NOT NULL,
  OperationIndex               INTEGER NOT NULL,
  SourceIndex                  INTEGER NOT NULL DEFAULT 0,
  CopyType                     INTEGER NOT NULL DEFAULT 0,
  Destination                  TEXT    NOT NULL DEFAULT '',
  TargetDomain                 TEXT    NOT NULL DEFAULT '',
  RetentionType                INTEGER NOT NULL DEFAULT 0,
  RetentionLevel               INTEGER NOT NULL DEFAULT 0
);
CREATE UNIQUE INDEX SLP_StorageServiceOperation_Index ON SLP_StorageServiceOperation (StorageServiceKey, OperationIndex);

------------------------------------------------------------------------------
-- Import notifications between master servers. NotificationType 2 is an
-- import confirmation, 3 an import error.
------------------------------------------------------------------------------
CREATE TABLE SLP_InNotifications (
  NotificationKey              INTEGER PRIMARY KEY,
  ClientMachineName            TEXT    NOT NULL DEFAULT '',
  BackupTime                   INTEGER NOT NULL DEFAULT 0,
  SourceImageKey               INTEGER NOT NULL DEFAULT 0,
  NotificationType             INTEGER NOT NULL DEFAULT 0,
  FromHostName                 TEXT    NOT NULL DEFAULT '',
  FromHostMachineId            BLOB,
  FromHostSWVersion            INTEGER NOT NULL DEFAULT 0,
  ErrorCode                    INTEGER NOT NULL DEFAULT 0,
  ErrorString                  TEXT    NOT NULL DEFAULT '',
  CreatedDateTime              INTEGER NOT NULL DEFAULT (unixepoch())
);

-- LastRetryTime: when the notification was last sent (its creation time
-- until the first retry).
CREATE TABLE SLP_OutNotifications (
  NotificationKey              INTEGER PRIMARY KEY,
  ClientMachineName            TEXT    NOT NULL DEFAULT '',
  BackupTime                   INTEGER NOT NULL DEFAULT 0,
  SourceImageKey               INTEGER NOT NULL DEFAULT 0,
  NotificationType             INTEGER NOT NULL DEFAULT 0,
  DestinationHostName          TEXT    NOT NULL DEFAULT '',
  ErrorCode                    INTEGER NOT NULL DEFAULT 0,
  ErrorString                  TEXT    NOT NULL DEFAULT '',
  RetryCount                   INTEGER NOT NULL DEFAULT 0,
  LastRetryTime                INTEGER NOT NULL DEFAULT (unixepoch()),
  CreatedDateTime              INTEGER NOT NULL DEFAULT (unixepoch())
);

------------------------------------------------------------------------------
-- Work groups of the SLP service and their target copies.
------------------------------------------------------------------------------
CREATE TABLE SLP_WorkGroup (
  WorkGroupKey                 INTEGER PRIMARY KEY,
  WorkGroupID                  INTEGER NOT NULL DEFAULT 0,
  HasSingleSLPImages           INTEGER NOT NULL DEFAULT 0,
  SLPName                      TEXT    NOT NULL DEFAULT '',
  SLPVersionNumber             INTEGER NOT NULL DEFAULT 0,
  PrimaryCopyNumber            INTEGER NOT NULL DEFAULT 0,
  IsFrozen                     INTEGER NOT NULL DEFAULT 0,
  SrcCopyNumber                INTEGER NOT NULL DEFAULT 0,
  SrcMediaType                 INTEGER NOT NULL DEFAULT 0,
  SrcMediaSubType              INTEGER NOT NULL DEFAULT 0,
  SrcAltReadHost               TEXT    NOT NULL DEFAULT '',
  SrcServerType                TEXT    NOT NULL DEFAULT '',
  SrcStorageServer             TEXT    NOT NULL DEFAULT '',
  SrcParentID                  TEXT    NOT NULL DEFAULT '',
  SrcMediaId                   TEXT    NOT NULL DEFAULT '',
  IsTargetPreserveMPX          INTEGER NOT NULL DEFAULT 0,
  IsTargetMirror               INTEGER NOT NULL DEFAULT 0,
  TargetPriority               INTEGER NOT NULL DEFAULT 0,
  TargetNumberCopies           INTEGER NOT NULL DEFAULT 0,
  PolicyName                   TEXT    NOT NULL DEFAULT '',
  SchedName                    TEXT    NOT NULL DEFAULT '',
  SchedType                    INTEGER NOT NULL DEFAULT 0,
  WindowCloseOptions           TEXT    NOT NULL DEFAULT '',
  TargetMasterServer           TEXT    NOT NULL DEFAULT '',
  TargetStorageServer          TEXT    NOT NULL DEFAULT '',
  TargetVolume                 TEXT    NOT NULL DEFAULT '',
  TargetImportSLP              TEXT    NOT NULL DEFAULT '',
  ImageBlockSize               INTEGER NOT NULL DEFAULT 0,
  CreatedDateTime              INTEGER NOT NULL DEFAULT (unixepoch())
);

CREATE TABLE SLP_TargetCopyInfo (
  TargetCopyInfoKey            INTEGER PRIMARY KEY,
  WorkGroupKey                 INTEGER NOT NULL,
  CopyNumber                   INTEGER NOT NULL DEFAULT 0,
  SLPIndex                     INTEGER NOT NULL DEFAULT 0,
  Flags                        INTEGER NOT NULL DEFAULT 0,
  RetentionLevel               INTEGER NOT NULL DEFAULT 0,
  Residence                    TEXT    NOT NULL DEFAULT '',
  VolumePool                   TEXT    NOT NULL DEFAULT '',
  ServerGroup                  TEXT    NOT NULL DEFAULT '',
  DestTag                      TEXT    NOT NULL DEFAULT ''
);
CREATE INDEX SLP_TargetCopyInfo_WorkGroup ON SLP_TargetCopyInfo (WorkGroupKey, TargetCopyInfoKey);

------------------------------------------------------------------------------
-- The import manager's queue: fragments announced by a replication (or a
-- test file) that still have to be imported. ImportStatus 3 and 5 mean the
-- import is complete; every other value that it is pending.
------------------------------------------------------------------------------
CREATE TABLE SLP_PendingImport (
  PendingImportKey             INTEGER PRIMARY KEY,
  BackupID                     TEXT    NOT NULL DEFAULT '',
  CopyNumber                   INTEGER NOT NULL DEFAULT 1,
  MediaServer                  TEXT    NOT NULL DEFAULT '',
  LSUName                      TEXT    NOT NULL DEFAULT '',
  StorageServerName            TEXT    NOT NULL DEFAULT '',
  StorageServerType            TEXT    NOT NULL DEFAULT '',
  MediaID                      TEXT    NOT NULL DEFAULT '',
  FragmentDescription          TEXT    NOT NULL DEFAULT '',
  OriginMasterServer           TEXT    NOT NULL DEFAULT '',
  SLPName                      TEXT    NOT NULL DEFAULT '',
  ImportStatus                 INTEGER NOT NULL DEFAULT 0,
  CreatedDateTime              INTEGER NOT NULL DEFAULT (unixepoch())
);
