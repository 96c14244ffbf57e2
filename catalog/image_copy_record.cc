// The import-confirmation statement: its binding table, its select list
// (derived from the table, with the columns that are computed) and the
// statement builder.
#include "catalog/image_copy_record.h"

#include <cstddef>
#include <cstring>

#include "catalog/copy_state.h"

using Corvela::Dal::DAL_VT_CHAR;
using Corvela::Dal::DAL_VT_SBIGINT;
using Corvela::Dal::DAL_VT_SHORT;
using Corvela::Dal::DAL_VT_SLONG;
using Corvela::Dal::DAL_VT_UBIGINT;
using Corvela::Dal::DAL_VT_ULONG;
using Corvela::Dal::DalResultColumn;

#define IMAGE_COLUMN(n, field, type)                                                  \
  DalResultColumn(n, "image." #field, type, offsetof(image_copy_record, image.field), \
                  sizeof(image_copy_record::image_part::field))
#define COPY_COLUMN(n, field, type)                                                 \
  DalResultColumn(n, "copy." #field, type, offsetof(image_copy_record, copy.field), \
                  sizeof(image_copy_record::copy_part::field))

const Corvela::Dal::DalOdbcView::BindingStruct imageCopyBind[kImageCopyColumns] = {
    IMAGE_COLUMN(1, ImageKey, DAL_VT_UBIGINT),
    IMAGE_COLUMN(2, ParentImageKey, DAL_VT_UBIGINT),
    IMAGE_COLUMN(3, ParentBackupID, DAL_VT_CHAR),
    IMAGE_COLUMN(4, ClientMachineName, DAL_VT_CHAR),
    IMAGE_COLUMN(5, PolicyName, DAL_VT_CHAR),
    IMAGE_COLUMN(6, BackupTime, DAL_VT_SBIGINT),
    IMAGE_COLUMN(7, BirthTime, DAL_VT_SBIGINT),
    IMAGE_COLUMN(8, BackupID, DAL_VT_CHAR),
    IMAGE_COLUMN(9, ScheduleType, DAL_VT_SLONG),
    IMAGE_COLUMN(10, ClientType, DAL_VT_SLONG),
    IMAGE_COLUMN(11, NumberCopies, DAL_VT_SLONG),
    IMAGE_COLUMN(12, PrimaryCopy, DAL_VT_SLONG),
    IMAGE_COLUMN(13, StreamNumber, DAL_VT_SLONG),
    IMAGE_COLUMN(14, PfiType, DAL_VT_SLONG),
    IMAGE_COLUMN(15, ScheduleName, DAL_VT_CHAR),
    IMAGE_COLUMN(16, OriginMasterServer, DAL_VT_CHAR),
    IMAGE_COLUMN(17, StorageServiceName, DAL_VT_CHAR),
    IMAGE_COLUMN(18, StorageServiceState, DAL_VT_SLONG),
    IMAGE_COLUMN(19, TimeInProcess, DAL_VT_SBIGINT),
    IMAGE_COLUMN(20, ClassificationID, DAL_VT_CHAR),
    IMAGE_COLUMN(21, StorageServiceVersionNumber, DAL_VT_SLONG),
    IMAGE_COLUMN(22, RequiredExpirationDate, DAL_VT_SBIGINT),
    IMAGE_COLUMN(23, ImportFromReplicaTime, DAL_VT_SBIGINT),
    IMAGE_COLUMN(24, NumChildren, DAL_VT_SLONG),
    IMAGE_COLUMN(25, NumSiblings, DAL_VT_SLONG),
    IMAGE_COLUMN(26, TirInfo, DAL_VT_SLONG),
    IMAGE_COLUMN(27, StorageServiceIsInactive, DAL_VT_SHORT),
    IMAGE_COLUMN(28, SLPOperationsMask, DAL_VT_ULONG),
    IMAGE_COLUMN(29, HasDependents, DAL_VT_SHORT),
    IMAGE_COLUMN(30, HasDependees, DAL_VT_SHORT),
    IMAGE_COLUMN(31, JobID, DAL_VT_SLONG),
    IMAGE_COLUMN(32, CreatedDateTime, DAL_VT_SBIGINT),
    COPY_COLUMN(33, ImageCopyKey, DAL_VT_UBIGINT),
    COPY_COLUMN(34, ImageKey, DAL_VT_UBIGINT),
    COPY_COLUMN(35, CopyNumber, DAL_VT_SLONG),
    COPY_COLUMN(36, SLPIndex, DAL_VT_SLONG),
    COPY_COLUMN(37, CopyType, DAL_VT_SLONG),
    COPY_COLUMN(38, ExpireTime, DAL_VT_SBIGINT),
    COPY_COLUMN(39, MpxState, DAL_VT_SHORT),
    COPY_COLUMN(40, Residence, DAL_VT_CHAR),
    COPY_COLUMN(41, DataFormat, DAL_VT_SHORT),
    COPY_COLUMN(42, TryToKeepTime, DAL_VT_SBIGINT),
    COPY_COLUMN(43, CopyState, DAL_VT_SLONG),
    COPY_COLUMN(44, CopySize, DAL_VT_SBIGINT),
    COPY_COLUMN(45, JobID, DAL_VT_SLONG),
    COPY_COLUMN(46, ExpirationType, DAL_VT_SHORT),
    COPY_COLUMN(47, RetryCount, DAL_VT_SLONG),
    COPY_COLUMN(48, LastRetryTime, DAL_VT_SBIGINT),
    COPY_COLUMN(49, SLPSourceIndex, DAL_VT_SLONG),
    COPY_COLUMN(50, DeferredDuplicationTime, DAL_VT_SBIGINT),
    COPY_COLUMN(51, SourceCopyExpirationTime, DAL_VT_SBIGINT),
    COPY_COLUMN(52, ExpireLifecycleTime, DAL_VT_SBIGINT),
    COPY_COLUMN(53, Resumable, DAL_VT_SHORT),
    COPY_COLUMN(54, WGKey, DAL_VT_ULONG),
    COPY_COLUMN(55, ExpirationCount, DAL_VT_SLONG),  // a 2-byte field
    IMAGE_COLUMN(56, ImageAttribute, DAL_VT_SLONG),
};

#undef IMAGE_COLUMN
#undef COPY_COLUMN

namespace {

// Columns that are not read as they are stored: computed from the parent
// image, renamed, or defaulted differently.
struct ComputedColumn {
  const char* bindName;
  const char* expression;
};
const ComputedColumn kComputedColumns[] = {
    {"image.ParentImageKey", "ISNULL(PImage.ImageKey, 0) AS ParentImageKey"},
    {"image.ParentBackupID",
     "IF (PImage.ImageKey IS NULL) THEN '' ELSE STRING(PImage.ClientMachineName, '_', "
     "PImage.BackupTime) ENDIF AS ParentBackupID"},
    {"image.BirthTime", "Image.LastBirthTime"},
    {"image.BackupID", "STRING(Image.ClientMachineName, '_', Image.BackupTime) AS BackupID"},
    {"image.NumSiblings",
     "IF (PImage.ImageKey IS NULL) THEN 0 ELSE Pimage.NumChildren - 1 ENDIF AS NumSiblings"},
    {"image.CreatedDateTime", "DATEDIFF(second, '1970-01-01 00:00:00', Image.CreatedDateTime)"},
    {"copy.SLPIndex", "ISNULL(Copy.SLPIndex, 0) AS CopySlpIndex"},
    {"copy.Residence", "Copy.Residence"},
    {"copy.CopySize", "ISNULL(Copy.CopySize, -1)"},
};

const char kImagePrefix[] = "image.";
const char kCopyPrefix[] = "copy.";

// The select expression of one bound column: an image column as
// "Image.<name>", a copy column as "ISNULL(Copy.<name>, 0)".
std::string ColumnExpression(const char* bindName) {
  for (const ComputedColumn& c : kComputedColumns) {
    if (strcmp(c.bindName, bindName) == 0) return c.expression;
  }
  if (strncmp(bindName, kImagePrefix, sizeof kImagePrefix - 1) == 0) {
    return std::string("Image.") + (bindName + sizeof kImagePrefix - 1);
  }
  return std::string("ISNULL(Copy.") + (bindName + sizeof kCopyPrefix - 1) + ", 0)";
}

std::string SelectList() {
  std::string select = "SELECT ";
  for (unsigned int i = 0; i < kImageCopyColumns; ++i) {
    if (i > 0) select += ", ";
    select += ColumnExpression(imageCopyBind[i].name);
  }
  return select;
}

}  // namespace

const std::string imageCopySelectStr = SelectList();

std::string ImportPendingCondition(const char* slpName, bool allPendingImages, int64_t cutoff) {
  std::string condition = " Copy.CopyState = " + std::to_string(COPY_STATE_IMPORT_PENDING);
  if (slpName != nullptr && *slpName != '\0') {
    condition += " AND Image.StorageServiceName = '";
    for (const char* p = slpName; *p; ++p) {
      if (*p == '\'') condition += '\'';
      condition += *p;
    }
    condition += "'";
  }
  if (!allPendingImages) condition += " AND Copy.LastRetryTime < " + std::to_string(cutoff);
  return condition;
}

std::string ImageCopyStatement(const std::string& condition) {
  return imageCopySelectStr + " FROM DBM_Main.DBM_Image AS Image" +
         " LEFT OUTER JOIN DBM_Main.DBM_Image PImage ON Image.ParentImageKey = PImage.ImageKey" +
         " LEFT OUTER JOIN DBM_Main.DBM_ImageCopy Copy ON Image.ImageKey = Copy.ImageKey" +
         " WHERE " + condition + " ORDER BY Copy.LastRetryTime";
}
