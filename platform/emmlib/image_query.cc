// The image query: emmlib_ImageQueryExecute and
// emmlib_ImageQueryCopyTypeAndFormatExecute build one statement over images,
// copies and fragments in listing order (backup time, backup id, copy number,
// fragment number) from the filters given; emmlib_ImageQueryFetch and
// emmlib_ImageQueryFetchRaw read it in batches. The meaning of every argument
// is documented in docs/catalog.md.
#include "platform/emmlib/image_query.h"

#include <memory>

#include "platform/emmlib/connection.h"
#include "platform/emmlib/emmlib.h"
#include "platform/emmlib/image_rows.h"
#include "platform/emmlib/record_query.h"

namespace emm {
namespace {

bool Given(const char* text) { return text != nullptr && *text != '\0'; }

// The image-state condition. A value selects the images whose SLP state
// (inactive bit 8 included) equals it; 8 also selects every image that is not
// complete and 4 every inactive image, the encodings of the listings'
// "incomplete" and "inactive" selections.
void AddImageState(int state, std::string* sql, Params* params) {
  params->AddNumber(sql, " AND ((i.StorageServiceState = ?", state & ~8);
  sql->append(state & 8 ? " AND i.StorageServiceIsInactive <> 0)"
                        : " AND i.StorageServiceIsInactive = 0)");
  if (state == 8) sql->append(" OR i.StorageServiceState <> 3");
  if (state == 4) sql->append(" OR i.StorageServiceIsInactive <> 0");
  sql->append(")");
}

}  // namespace

std::string BuildImageQuerySql(const ImageFilter& f, int64_t masterKey, Params* params) {
  std::string sql = "SELECT ";
  if (f.level == 1) {
    sql.append(kSummaryColumns);
  } else if (f.level == 2) {
    sql.append(kLifecycleColumns);
  } else {
    sql.append(kImageColumns).append(", ").append(kCopyColumns).append(", ");
    sql.append(kFragmentColumns);
  }
  // Copy conditions narrow the copies returned; an image keeps only the
  // copies that pass, and an image without one is left out.
  std::string copyJoin;
  if (f.copyType != nullptr) params->AddNumber(&copyJoin, " AND c.CopyType = ?", *f.copyType);
  if (f.copyNumber != 0) params->AddNumber(&copyJoin, " AND c.CopyNumber = ?", f.copyNumber);
  if (f.jobId != 0) params->AddNumber(&copyJoin, " AND c.JobID = ?", f.jobId);
  if (f.slpIndex != 0) params->AddNumber(&copyJoin, " AND c.SLPIndex = ?", f.slpIndex);
  if (f.dataFormat != -1) params->AddNumber(&copyJoin, " AND c.DataFormat = ?", f.dataFormat);
  sql.append(" FROM DBM_Image i ").append(copyJoin.empty() ? "LEFT JOIN" : "JOIN");
  sql.append(" DBM_ImageCopy c ON c.ImageKey = i.ImageKey").append(copyJoin);
  if (f.level != 2) {
    sql.append(" LEFT JOIN DBM_ImageFragment f ON f.ImageCopyKey = c.ImageCopyKey");
  }
  sql.append(" WHERE 1 = 1");
  if (f.master != nullptr) params->AddNumber(&sql, " AND i.MasterServerKey = ?", masterKey);
  if (f.level == 1) sql.append(" AND i.StorageServiceName <> ''");
  if (Given(f.backupId)) params->AddText(&sql, " AND i.BackupID = ?", f.backupId);
  if (Given(f.client)) params->AddText(&sql, " AND i.ClientMachineName = ?", f.client);
  if (Given(f.slpName)) params->AddText(&sql, " AND i.StorageServiceName = ?", f.slpName);
  if (f.earliest != 0) params->AddNumber(&sql, " AND i.BackupTime >= ?", f.earliest);
  if (f.latest != 0) params->AddNumber(&sql, " AND i.BackupTime <= ?", f.latest);
  if (f.imageState != nullptr) AddImageState(*f.imageState, &sql, params);
  // Volume and fragment-state filters select images that have such a
  // fragment; the image is then returned whole.
  if (Given(f.mediaId) || Given(f.storageServer) || Given(f.mediaServer) || f.fragState != 0) {
    sql.append(
        " AND EXISTS (SELECT 1 FROM DBM_ImageCopy c2 JOIN DBM_ImageFragment f2"
        " ON f2.ImageCopyKey = c2.ImageCopyKey WHERE c2.ImageKey = i.ImageKey");
    if (Given(f.mediaId)) params->AddText(&sql, " AND f2.MediaID = ?", f.mediaId);
    if (Given(f.storageServer)) {
      params->AddText(&sql, " AND f2.StorageServer = ?", f.storageServer);
    }
    if (Given(f.mediaServer)) params->AddText(&sql, " AND f2.MediaServer = ?", f.mediaServer);
    if (f.fragState != 0) params->AddNumber(&sql, " AND f2.FragmentState = ?", f.fragState);
    sql.append(")");
  }
  sql.append(" ORDER BY i.BackupTime, i.BackupID, i.ImageKey, c.CopyNumber, c.ImageCopyKey");
  if (f.level != 2) sql.append(", f.FragmentNumber, f.FragmentKey");
  return sql;
}

namespace {

// The filters both image query calls take, in their argument order.
ImageFilter CommonFilter(int level, const char* master, const char* backupId, const char* client,
                         const char* mediaId, const char* storageServer, const char* mediaServer,
                         int earliest, int latest, int copyNumber, int jobId,
                         const int* imageState) {
  ImageFilter f;
  f.level = level;
  f.master = master;
  f.backupId = backupId;
  f.client = client;
  f.mediaId = mediaId;
  f.storageServer = storageServer;
  f.mediaServer = mediaServer;
  f.earliest = earliest;
  f.latest = latest;
  f.copyNumber = copyNumber;
  f.jobId = jobId;
  f.imageState = imageState;
  return f;
}

unsigned Execute(int* cid, const ImageFilter& filter, uint64_t* handle) {
  unsigned status;
  Connection* connection = FindConnection(cid, &status);
  if (connection == nullptr) return status;
  if (handle == nullptr || filter.level < 1 || filter.level > 3) return EMMLIB_INVALID_ARGUMENT;
  int64_t masterKey = -1;
  if (filter.master != nullptr) {
    masterKey = connection->MasterServerKey(filter.master, &status);
    if (status != EMMLIB_OK) return status;
  }
  Params params;
  const std::string sql = BuildImageQuerySql(filter, masterKey, &params);
  static const RecordQuery::Detail kDetail[] = {RecordQuery::Detail::kSummary,
                                                RecordQuery::Detail::kLifecycle,
                                                RecordQuery::Detail::kFragments};
  auto query = std::make_unique<RecordQuery>(connection, kDetail[filter.level - 1]);
  status = query->Start(sql, params);
  if (status != EMMLIB_OK) return status;
  *handle = AddQuery(std::move(query));
  return EMMLIB_OK;
}

// The open image query with `handle`, or null with *status set.
RecordQuery* FindImageQuery(int* cid, uint64_t handle, unsigned* status) {
  Connection* connection = FindConnection(cid, status);
  if (connection == nullptr) return nullptr;
  auto* query = dynamic_cast<RecordQuery*>(FindQuery(connection, handle));
  if (query == nullptr || query->detail() == RecordQuery::Detail::kTargets) {
    *status = EMMLIB_INVALID_HANDLE;
    return nullptr;
  }
  return query;
}

}  // namespace
}  // namespace emm

unsigned emmlib_ImageQueryExecute(int* cid, int level, const char* masterServer,
                                  const char* backupId, const char* client, const char* mediaId,
                                  const char* storageServer, const char* mediaServer, int arg9,
                                  int arg10, int arg11, int arg12, int arg13, const int* imageState,
                                  uint64_t* handle) {
  emm::ImageFilter f =
      emm::CommonFilter(level, masterServer, backupId, client, mediaId, storageServer, mediaServer,
                        arg9, arg10, arg12, arg13, imageState);
  f.fragState = arg11;
  return emm::Execute(cid, f, handle);
}

unsigned emmlib_ImageQueryCopyTypeAndFormatExecute(
    int* cid, int level, const char* masterServer, const char* backupId, const char* client,
    const char* mediaId, const char* storageServer, const char* mediaServer, int arg9, int arg10,
    const short* fragState, int arg12, int arg13, const int* imageState, const int* copyType,
    int arg16, int arg17, const char* slpName, uint64_t* handle) {
  emm::ImageFilter f =
      emm::CommonFilter(level, masterServer, backupId, client, mediaId, storageServer, mediaServer,
                        arg9, arg10, arg12, arg13, imageState);
  f.fragState = fragState != nullptr ? *fragState : 0;
  f.copyType = copyType;
  f.slpIndex = arg16;
  f.dataFormat = arg17;
  f.slpName = slpName;
  return emm::Execute(cid, f, handle);
}

unsigned emmlib_ImageQueryFetch(int* cid, int level, uint64_t handle, unsigned* count,
                                EMM_Image** list) {
  if (count == nullptr || list == nullptr || level < 1 || level > 3) {
    return EMMLIB_INVALID_ARGUMENT;
  }
  *list = nullptr;
  unsigned status;
  emm::RecordQuery* query = emm::FindImageQuery(cid, handle, &status);
  if (query == nullptr) {
    *count = 0;
    return status;
  }
  if (query->detail() == emm::RecordQuery::Detail::kSummary) {
    *count = 0;
    return EMMLIB_INVALID_ARGUMENT;
  }
  bool atEnd;
  return query->FetchList(level, count, list, &atEnd);
}

unsigned emmlib_ImageQueryFetchRaw(int* cid, int level, uint64_t handle, unsigned* count,
                                   Legacy_ImageView* rows) {
  if (count == nullptr || (rows == nullptr && *count > 0) || level != 3) {
    return EMMLIB_INVALID_ARGUMENT;
  }
  unsigned status;
  emm::RecordQuery* query = emm::FindImageQuery(cid, handle, &status);
  if (query == nullptr) {
    *count = 0;
    return status;
  }
  if (query->detail() == emm::RecordQuery::Detail::kLifecycle) {
    *count = 0;
    return EMMLIB_INVALID_ARGUMENT;
  }
  return query->FetchRaw(count, rows);
}
