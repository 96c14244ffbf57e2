// The image-copy row of the import-confirmation report: one image with one
// of its copies, read with the report's own SQL statement. The record is the
// fetch buffer; imageCopyBind maps the statement's 56 columns (in the order
// of imageCopySelectStr) to its fields.
#ifndef CATALOG_IMAGE_COPY_RECORD_H_
#define CATALOG_IMAGE_COPY_RECORD_H_

#include <cstdint>
#include <string>

#include "platform/dal/dal.h"

struct image_copy_record {
  struct image_part {
    uint64_t ImageKey;
    uint64_t ParentImageKey;
    char ParentBackupID[270];
    char ClientMachineName[257];
    char PolicyName[257];
    int64_t BackupTime;
    int64_t BirthTime;
    char BackupID[270];
    int32_t ScheduleType;
    int32_t ClientType;
    int32_t NumberCopies;
    int32_t PrimaryCopy;
    int32_t StreamNumber;
    int32_t PfiType;
    char ScheduleName[129];
    char OriginMasterServer[257];
    char StorageServiceName[257];
    int32_t StorageServiceState;
    int16_t StorageServiceIsInactive;
    int64_t TimeInProcess;
    char ClassificationID[65];
    int32_t StorageServiceVersionNumber;
    int64_t RequiredExpirationDate;
    int64_t ImportFromReplicaTime;
    int32_t NumChildren;
    int32_t NumSiblings;
    int32_t TirInfo;
    uint32_t SLPOperationsMask;
    int16_t HasDependents;
    int16_t HasDependees;
    int32_t JobID;
    int64_t CreatedDateTime;
    int32_t ImageAttribute;
  } image;
  struct copy_part {
    uint64_t ImageCopyKey;
    uint64_t ImageKey;
    int32_t CopyNumber;
    int32_t SLPIndex;
    int32_t CopyType;
    int64_t ExpireTime;
    int16_t MpxState;
    int16_t DataFormat;
    int64_t TryToKeepTime;
    char Residence[1025];
    int32_t CopyState;
    int64_t CopySize;
    int32_t JobID;
    int16_t ExpirationType;
    int32_t RetryCount;
    int64_t LastRetryTime;
    int32_t SLPSourceIndex;
    int64_t DeferredDuplicationTime;
    int64_t SourceCopyExpirationTime;
    int64_t ExpireLifecycleTime;
    int16_t Resumable;
    uint32_t WGKey;
    int16_t ExpirationCount;
  } copy;
};

// Number of columns of the statement and entries of imageCopyBind.
constexpr unsigned int kImageCopyColumns = 56;

// Result binding table of the statement, one entry per column.
extern const Corvela::Dal::DalOdbcView::BindingStruct imageCopyBind[kImageCopyColumns];

// "SELECT " and the 56 column expressions of the statement.
extern const std::string imageCopySelectStr;

// The statement's condition: copies in state 14 (IMPORT_PENDING); of SLP
// `slpName` when it is given (non-null and non-empty; a quote in it is
// doubled so that it stays one text literal); unless `allPendingImages`, only
// copies whose last retry is before `cutoff` (seconds since 1970).
std::string ImportPendingCondition(const char* slpName, bool allPendingImages, int64_t cutoff);

// The whole statement for `condition`: images with their parent image and
// copies, ordered by the copies' last retry time.
std::string ImageCopyStatement(const std::string& condition);

#endif  // CATALOG_IMAGE_COPY_RECORD_H_
