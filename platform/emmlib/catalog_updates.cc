// The catalog library's updates: a copy's state (through the extended copy
// record), an image's SLP state, and the emptying of the deleted-fragment
// list. Each is one statement, so it is applied whole or not at all.
#include <cstdlib>
#include <memory>
#include <string>

#include "platform/emmlib/connection.h"
#include "platform/emmlib/emmlib.h"
#include "platform/emmlib/statement.h"

namespace emm {
namespace {

// Runs a data-changing statement; *changed receives the rows it touched.
unsigned Run(Connection* connection, const char* call, const std::string& sql, const Params& params,
             int* changed) {
  std::unique_ptr<sqldb::Statement> stmt;
  const unsigned status = connection->Prepare(call, sql, params, &stmt);
  if (status != EMMLIB_OK) return status;
  const sqldb::Code code = stmt->Step();
  if (code != sqldb::Code::kDone) return connection->Fail(call, code);
  *changed = static_cast<int>(stmt->Changes());
  return EMMLIB_OK;
}

// Runs an update of one record; EMMLIB_NO_SUCH_RECORD when it touched none.
unsigned Update(Connection* connection, const char* call, const std::string& sql,
                const Params& params) {
  int changed = 0;
  const unsigned status = Run(connection, call, sql, params, &changed);
  if (status != EMMLIB_OK) return status;
  return changed > 0 ? EMMLIB_OK : EMMLIB_NO_SUCH_RECORD;
}

}  // namespace
}  // namespace emm

unsigned emmlib_InitImageCopyExt(EMM_ImageCopyExt** copy) {
  if (copy == nullptr) return EMMLIB_INVALID_ARGUMENT;
  *copy = static_cast<EMM_ImageCopyExt*>(calloc(1, sizeof(EMM_ImageCopyExt)));
  return *copy != nullptr ? EMMLIB_OK : EMMLIB_NO_MEMORY;
}

void emmlib_FreeImageCopyExt(EMM_ImageCopyExt** copy) {
  if (copy == nullptr) return;
  free(*copy);
  *copy = nullptr;
}

unsigned emmlib_UpdateImageCopy(int* cid, int mode, const EMM_ImageCopyExt* copy) {
  unsigned status;
  emm::Connection* connection = emm::FindConnection(cid, &status);
  if (connection == nullptr) return status;
  if (mode != 1 || copy == nullptr || !copy->hasMasterServer || !copy->hasBackupID ||
      !copy->hasSLPIndex) {
    return EMMLIB_INVALID_ARGUMENT;
  }
  if (!copy->hasCopyState) return EMMLIB_OK;
  const int64_t masterKey = connection->MasterServerKey(copy->MasterServer, &status);
  if (status != EMMLIB_OK) return status;
  emm::Params params;
  std::string sql;
  params.AddNumber(&sql, "UPDATE DBM_ImageCopy SET CopyState = ?", copy->CopyState);
  params.AddNumber(&sql, " WHERE SLPIndex = ?", copy->SLPIndex);
  params.AddText(&sql, " AND ImageKey = (SELECT ImageKey FROM DBM_Image WHERE BackupID = ?",
                 copy->BackupID);
  params.AddNumber(&sql, " AND MasterServerKey = ?)", masterKey);
  return emm::Update(connection, "emmlib_UpdateImageCopy", sql, params);
}

unsigned emmlib_UpdateImageStorageServiceState(int* cid, int mode, const char* masterServer,
                                               const char* backupId, int state) {
  unsigned status;
  emm::Connection* connection = emm::FindConnection(cid, &status);
  if (connection == nullptr) return status;
  if (mode != 1 || masterServer == nullptr || backupId == nullptr || state < 0) {
    return EMMLIB_INVALID_ARGUMENT;
  }
  const int64_t masterKey = connection->MasterServerKey(masterServer, &status);
  if (status != EMMLIB_OK) return status;
  emm::Params params;
  std::string sql;
  params.AddNumber(&sql, "UPDATE DBM_Image SET StorageServiceState = ?", state & ~8);
  params.AddNumber(&sql, ", StorageServiceIsInactive = ?", (state & 8) != 0 ? 1 : 0);
  params.AddText(&sql, " WHERE BackupID = ?", backupId);
  params.AddNumber(&sql, " AND MasterServerKey = ?", masterKey);
  return emm::Update(connection, "emmlib_UpdateImageStorageServiceState", sql, params);
}

unsigned emmlib_DeleteDeletedImageFragments(int* cid, int level, const char* masterServer,
                                            const char* backupId, int arg5, int arg6, int arg7,
                                            int arg8) {
  unsigned status;
  emm::Connection* connection = emm::FindConnection(cid, &status);
  if (connection == nullptr) return status;
  emm::Params params;
  std::string sql = "DELETE FROM DBM_DeletedFragment WHERE 1 = 1";
  if (masterServer != nullptr) {
    const int64_t masterKey = connection->MasterServerKey(masterServer, &status);
    if (status != EMMLIB_OK) return status;
    params.AddNumber(&sql, " AND MasterServerKey = ?", masterKey);
  }
  if (backupId != nullptr && *backupId != '\0') {
    params.AddText(&sql, " AND BackupID = ?", backupId);
  }
  if (arg5 != 0) params.AddNumber(&sql, " AND CopyNumber = ?", arg5);
  if (arg6 != -1) params.AddNumber(&sql, " AND FragmentNumber = ?", arg6);
  if (arg7 != -1) params.AddNumber(&sql, " AND MediaType = ?", arg7);
  if (arg8 != -1) params.AddNumber(&sql, " AND MediaSubType = ?", arg8);
  int changed = 0;
  status = emm::Run(connection, "emmlib_DeleteDeletedImageFragments", sql, params, &changed);
  if (status == EMMLIB_OK) {
    connection->Log(2, "emmlib_DeleteDeletedImageFragments: " + std::to_string(changed) +
                           " deleted fragment entries removed");
  }
  return status;
}
