// The db_... calls: SLP definitions with all their versions and operations,
// data classifications and the policy-category setting, read through the
// connection opened last.
#include <cstdlib>
#include <memory>

#include "platform/emmlib/connection.h"
#include "platform/emmlib/emmlib.h"
#include "platform/emmlib/free_chain.h"
#include "platform/emmlib/statement.h"

namespace emm {
namespace {

template <typename T>
T* Allocate() {
  return static_cast<T*>(calloc(1, sizeof(T)));
}

// Prepares `sql` on the default connection; null with *status set on failure.
Connection* Prepare(const char* call, const char* sql, std::unique_ptr<sqldb::Statement>* stmt,
                    int* status) {
  Connection* connection = DefaultConnection();
  if (connection == nullptr) {
    *status = static_cast<int>(EMMLIB_NOT_CONNECTED);
    return nullptr;
  }
  *status = static_cast<int>(connection->Prepare(call, sql, Params(), stmt));
  return *status == 0 ? connection : nullptr;
}

// The status of a read that ended with `code` (kDone: complete) or ran out
// of memory.
int ReadStatus(Connection* connection, const char* call, sqldb::Code code, bool noMemory) {
  if (noMemory) return static_cast<int>(EMMLIB_NO_MEMORY);
  return code == sqldb::Code::kDone ? 0 : static_cast<int>(connection->Fail(call, code));
}

}  // namespace
}  // namespace emm

SS_LIST* db_getAllStorageServicesWithAllVersions(int* status) {
  int ignored;
  if (status == nullptr) status = &ignored;
  std::unique_ptr<sqldb::Statement> stmt;
  emm::Connection* connection = emm::Prepare(
      "db_getAllStorageServicesWithAllVersions",
      "SELECT s.StorageServiceKey, s.StorageServiceName, s.VersionNumber, s.Flags,"
      " o.OperationIndex, o.CopyType, o.Destination, o.TargetDomain"
      " FROM SLP_StorageService s LEFT JOIN SLP_StorageServiceOperation o"
      " ON o.StorageServiceKey = s.StorageServiceKey"
      " ORDER BY s.StorageServiceName, s.VersionNumber, s.StorageServiceKey, o.OperationIndex",
      &stmt, status);
  if (connection == nullptr) return nullptr;
  SS_LIST* head = nullptr;
  SS_LIST* slp = nullptr;
  SS_OPERATION* operation = nullptr;
  int64_t slpKey = 0;
  sqldb::Code code;
  bool noMemory = false;
  while ((code = stmt->Step()) == sqldb::Code::kRow) {
    const sqldb::Row& row = stmt->CurrentRow();
    const int64_t key = row.Int64(0);
    if (slp == nullptr || key != slpKey) {
      SS_LIST* next = emm::Allocate<SS_LIST>();
      if ((noMemory = next == nullptr)) break;
      emm::CopyCellText(row, 1, next->name, sizeof next->name);
      next->version = row.Int(2);
      next->flags = row.Int(3);
      (slp != nullptr ? slp->next : head) = next;
      slp = next;
      slpKey = key;
      operation = nullptr;
    }
    if (row.IsNull(4)) continue;
    SS_OPERATION* next = emm::Allocate<SS_OPERATION>();
    if ((noMemory = next == nullptr)) break;
    next->index = row.Int(4);
    next->copyType = row.Int(5);
    emm::CopyCellText(row, 6, next->destination, sizeof next->destination);
    emm::CopyCellText(row, 7, next->targetDomain, sizeof next->targetDomain);
    (operation != nullptr ? operation->next : slp->operations) = next;
    operation = next;
  }
  *status = emm::ReadStatus(connection, "db_getAllStorageServices", code, noMemory);
  if (*status != 0) {
    db_freeSS_LISTs(head);
    return nullptr;
  }
  return head;
}

void db_freeSS_LISTs(SS_LIST* list) {
  emm::FreeChain(list, [](SS_LIST* definition) { emm::FreeChain(definition->operations); });
}

DATA_CLASS_LIST* db_getDATA_CLASS_LIST(int* status) {
  int ignored;
  if (status == nullptr) status = &ignored;
  std::unique_ptr<sqldb::Statement> stmt;
  emm::Connection* connection =
      emm::Prepare("db_getDATA_CLASS_LIST",
                   "SELECT Name, ClassificationID FROM EMM_DataClassification ORDER BY Rank, Name",
                   &stmt, status);
  if (connection == nullptr) return nullptr;
  DATA_CLASS_LIST* head = nullptr;
  DATA_CLASS_LIST* tail = nullptr;
  sqldb::Code code;
  bool noMemory = false;
  while ((code = stmt->Step()) == sqldb::Code::kRow) {
    DATA_CLASS_LIST* next = emm::Allocate<DATA_CLASS_LIST>();
    if ((noMemory = next == nullptr)) break;
    const sqldb::Row& row = stmt->CurrentRow();
    emm::CopyCellText(row, 0, next->name, sizeof next->name);
    emm::CopyCellText(row, 1, next->identifier, sizeof next->identifier);
    (tail != nullptr ? tail->next : head) = next;
    tail = next;
  }
  *status = emm::ReadStatus(connection, "db_getDATA_CLASS_LIST", code, noMemory);
  if (*status != 0) {
    db_freeDATA_CLASS_LIST(head);
    return nullptr;
  }
  return head;
}

void db_freeDATA_CLASS_LIST(DATA_CLASS_LIST* list) { emm::FreeChain(list); }

int db_get_Policy_Category() {
  int status;
  std::unique_ptr<sqldb::Statement> stmt;
  if (emm::Prepare("db_get_Policy_Category",
                   "SELECT Value FROM EMM_Parameter WHERE Name = 'PolicyCategory'", &stmt,
                   &status) == nullptr) {
    return 0;
  }
  return stmt->Step() == sqldb::Code::kRow ? stmt->CurrentRow().Int(0) : 0;
}
