// Snapshot records of snapshot copies, in the order of the image query's rows
// (backup time, backup id, copy number), read in batches of separately
// allocated records.
#include <cstdlib>
#include <memory>
#include <string>

#include "platform/emmlib/connection.h"
#include "platform/emmlib/emmlib.h"
#include "platform/emmlib/free_chain.h"
#include "platform/emmlib/query_handles.h"
#include "platform/emmlib/statement.h"

namespace emm {
namespace {

class SnapshotQuery : public OpenQuery {
 public:
  using OpenQuery::OpenQuery;

  unsigned Start(const std::string& sql, const Params& params) {
    return connection()->Prepare("snapshot query", sql, params, &stmt_);
  }

  // Up to *count records; EMMLIB_END_OF_DATA once the result is exhausted
  // (the last records may come with it).
  unsigned Fetch(unsigned* count, EMM_SnapshotInfo** list) {
    EMM_SnapshotInfo* head = nullptr;
    EMM_SnapshotInfo* tail = nullptr;
    unsigned n = 0;
    unsigned status = EMMLIB_OK;
    while (n < *count && !done_) {
      const sqldb::Code code = stmt_->Step();
      if (code != sqldb::Code::kRow) {
        done_ = true;
        if (code != sqldb::Code::kDone) status = connection()->Fail("snapshot fetch", code);
        break;
      }
      auto* record = static_cast<EMM_SnapshotInfo*>(malloc(sizeof(EMM_SnapshotInfo)));
      if (record == nullptr) {
        status = EMMLIB_NO_MEMORY;
        break;
      }
      const sqldb::Row& row = stmt_->CurrentRow();
      CopyCellText(row, 0, record->BackupID, sizeof record->BackupID);
      record->CopyNumber = row.Int(1);
      record->BackupTime = row.Int64(2);
      CopyCellText(row, 3, record->StorageServerName, sizeof record->StorageServerName);
      CopyCellText(row, 4, record->StorageServerType, sizeof record->StorageServerType);
      CopyCellText(row, 5, record->DiskVolumeName, sizeof record->DiskVolumeName);
      CopyCellText(row, 6, record->DiskMediaID, sizeof record->DiskMediaID);
      CopyCellText(row, 7, record->SnapshotName, sizeof record->SnapshotName);
      record->next = nullptr;
      (tail != nullptr ? tail->next : head) = record;
      tail = record;
      ++n;
    }
    if (status != EMMLIB_OK) {
      emmlib_FreeSnapshotInfo_List(&head);
      n = 0;
    }
    *list = head;
    *count = n;
    if (status == EMMLIB_OK && done_) status = EMMLIB_END_OF_DATA;
    return status;
  }

 private:
  std::unique_ptr<sqldb::Statement> stmt_;
  bool done_ = false;
};

}  // namespace
}  // namespace emm

unsigned emmlib_QueryActiveSnapshotInfo(int* cid, int level, const char* masterServer, int arg4,
                                        const char* backupId, int arg6, int arg7,
                                        uint64_t* handle) {
  unsigned status;
  emm::Connection* connection = emm::FindConnection(cid, &status);
  if (connection == nullptr) return status;
  if (handle == nullptr || (level != 1 && level != 3) || arg7 < 0) {
    return EMMLIB_INVALID_ARGUMENT;
  }
  emm::Params params;
  std::string sql =
      "SELECT i.BackupID, c.CopyNumber, i.BackupTime, s.StorageServerName,"
      " s.StorageServerType, s.DiskVolumeName, s.DiskMediaID, s.SnapshotName"
      " FROM DBM_ImageSnapshot s JOIN DBM_ImageCopy c ON c.ImageCopyKey = s.ImageCopyKey"
      " JOIN DBM_Image i ON i.ImageKey = c.ImageKey WHERE 1 = 1";
  if (masterServer != nullptr) {
    int64_t key = connection->MasterServerKey(masterServer, &status);
    if (status != EMMLIB_OK) return status;
    params.AddNumber(&sql, " AND i.MasterServerKey = ?", key);
  }
  if (level == 1) sql.append(" AND s.IsActive <> 0");
  if (backupId != nullptr && *backupId != '\0') {
    params.AddText(&sql, " AND i.BackupID = ?", backupId);
  }
  if (arg4 != 0) params.AddNumber(&sql, " AND c.CopyNumber = ?", arg4);
  if (arg6 != -1) params.AddNumber(&sql, " AND c.CopyType = ?", arg6);
  sql.append(
      " ORDER BY i.BackupTime, i.BackupID, i.ImageKey, c.CopyNumber, c.ImageCopyKey,"
      " s.SnapshotKey");
  if (arg7 > 0) params.AddNumber(&sql, " LIMIT ?", arg7);
  auto query = std::make_unique<emm::SnapshotQuery>(connection);
  status = query->Start(sql, params);
  if (status != EMMLIB_OK) return status;
  *handle = emm::AddQuery(std::move(query));
  return EMMLIB_OK;
}

unsigned emmlib_FetchSnapshotInfo(int* cid, int level, uint64_t handle, unsigned* count,
                                  EMM_SnapshotInfo** list) {
  if (count == nullptr || list == nullptr) return EMMLIB_INVALID_ARGUMENT;
  *list = nullptr;
  unsigned status;
  emm::Connection* connection = emm::FindConnection(cid, &status);
  if (connection == nullptr) return status;
  auto* query = dynamic_cast<emm::SnapshotQuery*>(emm::FindQuery(connection, handle));
  if (query == nullptr) {
    *count = 0;
    return EMMLIB_INVALID_HANDLE;
  }
  return query->Fetch(count, list);
}

void emmlib_FreeSnapshotInfo_List(EMM_SnapshotInfo** list) {
  if (list == nullptr) return;
  emm::FreeChain(*list);
  *list = nullptr;
}
