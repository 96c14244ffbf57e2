// Queries of images in list shape that a report reads whole: images with
// replica copies and their replication targets (repllist), and images pending
// import (pendimplist). Both answer EMMLIB_END_OF_DATA at once when nothing
// matches, and mark the last batch with EMMLIB_END_OF_DATA.
#include <memory>
#include <string>

#include "platform/emmlib/connection.h"
#include "platform/emmlib/emmlib.h"
#include "platform/emmlib/image_rows.h"
#include "platform/emmlib/record_query.h"

namespace emm {
namespace {

// Opens a list-shape query: `from` is the statement after the column list
// up to its conditions, which get the master server and since-time filters.
unsigned OpenListQuery(int* cid, int level, const char* master, int64_t since,
                       RecordQuery::Detail detail, const std::string& from, const char* order,
                       uint64_t* handle) {
  unsigned status;
  Connection* connection = FindConnection(cid, &status);
  if (connection == nullptr) return status;
  if (handle == nullptr || (level != 1 && level != 3)) return EMMLIB_INVALID_ARGUMENT;
  *handle = 0;
  Params params;
  std::string sql = "SELECT ";
  sql.append(kImageColumns).append(", ").append(kCopyColumns).append(", ");
  sql.append(detail == RecordQuery::Detail::kFragments ? kFragmentColumns : kTargetColumns);
  sql.append(from);
  if (master != nullptr) {
    int64_t key = connection->MasterServerKey(master, &status);
    if (status != EMMLIB_OK) return status;
    params.AddNumber(&sql, " AND i.MasterServerKey = ?", key);
  }
  if (level == 1) sql.append(" AND i.StorageServiceName <> ''");
  if (since != 0) params.AddNumber(&sql, " AND i.BackupTime >= ?", since);
  sql.append(" ORDER BY i.BackupTime, i.BackupID, i.ImageKey, c.CopyNumber, c.ImageCopyKey, ");
  sql.append(order);
  auto query = std::make_unique<RecordQuery>(connection, detail);
  status = query->Start(sql, params);
  if (status != EMMLIB_OK) return status;
  bool any;
  status = query->Peek(&any);
  if (status != EMMLIB_OK) return status;
  if (!any) return EMMLIB_END_OF_DATA;
  *handle = AddQuery(std::move(query));
  return EMMLIB_OK;
}

unsigned FetchListQuery(int* cid, int level, uint64_t handle, RecordQuery::Detail detail,
                        unsigned* count, EMM_Image** list) {
  if (count == nullptr || list == nullptr || level < 1 || level > 3) {
    return EMMLIB_INVALID_ARGUMENT;
  }
  *list = nullptr;
  unsigned status;
  Connection* connection = FindConnection(cid, &status);
  if (connection == nullptr) return status;
  auto* query = dynamic_cast<RecordQuery*>(FindQuery(connection, handle));
  if (query == nullptr || query->detail() != detail) {
    *count = 0;
    return EMMLIB_INVALID_HANDLE;
  }
  bool atEnd;
  status = query->FetchList(level, count, list, &atEnd);
  if (status != EMMLIB_OK) return status;
  return atEnd ? EMMLIB_END_OF_DATA : EMMLIB_OK;
}

// Copies with replication targets: only the copies that have targets come
// with the image, each with its targets and without fragments.
const char kReplicaFrom[] =
    " FROM DBM_Image i JOIN DBM_ImageCopy c ON c.ImageKey = i.ImageKey"
    " JOIN DBM_ImageReplicationDestination rd ON rd.ImageCopyKey = c.ImageCopyKey"
    " LEFT JOIN EMM_Machine m ON m.MachineKey = rd.TargetMachineKey WHERE 1 = 1";

// Images replicated from another master whose import is not done yet, whole.
const char kPendingImportFrom[] =
    " FROM DBM_Image i LEFT JOIN DBM_ImageCopy c ON c.ImageKey = i.ImageKey"
    " LEFT JOIN DBM_ImageFragment f ON f.ImageCopyKey = c.ImageCopyKey"
    " WHERE i.OriginMasterServer <> '' AND i.ImportFromReplicaTime = 0";

}  // namespace
}  // namespace emm

unsigned emmlib_QueryReplicaImageCopies(int* cid, int level, const char* masterServer,
                                        int64_t sinceTime, uint64_t* handle) {
  return emm::OpenListQuery(cid, level, masterServer, sinceTime, emm::RecordQuery::Detail::kTargets,
                            emm::kReplicaFrom, "rd.ReplicationDestinationKey", handle);
}

unsigned emmlib_FetchReplicaImageCopies(int* cid, int level, uint64_t handle, unsigned* count,
                                        EMM_Image** list) {
  return emm::FetchListQuery(cid, level, handle, emm::RecordQuery::Detail::kTargets, count, list);
}

unsigned emmlib_QueryPendingImportImages(int* cid, int level, const char* masterServer,
                                         int64_t sinceTime, uint64_t* handle) {
  return emm::OpenListQuery(cid, level, masterServer, sinceTime,
                            emm::RecordQuery::Detail::kFragments, emm::kPendingImportFrom,
                            "f.FragmentNumber, f.FragmentKey", handle);
}

unsigned emmlib_FetchPendingImportImages(int* cid, int level, uint64_t handle, unsigned* count,
                                         EMM_Image** list) {
  return emm::FetchListQuery(cid, level, handle, emm::RecordQuery::Detail::kFragments, count, list);
}
