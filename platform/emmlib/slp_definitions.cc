// The db_... calls: SLP definitions with all their versions and operations,
// data classifications and the policy-category setting, read through the
// connection opened last.
#include <cstdlib>

#include "platform/emmlib/connection.h"
#include "platform/emmlib/emmlib.h"
#include "platform/emmlib/free_chain.h"
#include "platform/emmlib/sqlite_stmt.h"

namespace emm {
namespace {

template <typename T>
T* Allocate() {
  return static_cast<T*>(calloc(1, sizeof(T)));
}

// Prepares `sql` on the default connection; null with *status set on failure.
Connection* Prepare(const char* call, const char* sql, Statement* stmt, int* status) {
  Connection* connection = DefaultConnection();
  if (connection == nullptr) {
    *status = static_cast<int>(EMMLIB_NOT_CONNECTED);
    return nullptr;
  }
  int rc = stmt->Prepare(connection->db(), sql);
  if (rc != SQLITE_OK) {
    *status = static_cast<int>(connection->Fail(call, rc));
    return nullptr;
  }
  *status = 0;
  return connection;
}

}  // namespace
}  // namespace emm

SS_LIST* db_getAllStorageServicesWithAllVersions(int* status) {
  int ignored;
  if (status == nullptr) status = &ignored;
  emm::Statement stmt;
  emm::Connection* connection = emm::Prepare(
      "db_getAllStorageServicesWithAllVersions",
      "SELECT s.StorageServiceKey, s.StorageServiceName, s.VersionNumber, s.Flags,"
      " o.OperationIndex, o.CopyType, o.Destination, o.TargetDomain"
      " FROM SLP_StorageService s LEFT JOIN SLP_StorageServiceOperation o"
      " ON o.StorageServiceKey = s.StorageServiceKey"
      " ORDER BY s.StorageServiceName, s.VersionNumber, s.StorageServiceKey, o.OperationIndex",
      &stmt, status);
  if (connection == nullptr) return nullptr;
  sqlite3_stmt* st = stmt.get();
  SS_LIST* head = nullptr;
  SS_LIST* slp = nullptr;
  SS_OPERATION* operation = nullptr;
  int64_t slpKey = 0;
  int rc;
  while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
    const int64_t key = sqlite3_column_int64(st, 0);
    if (slp == nullptr || key != slpKey) {
      SS_LIST* next = emm::Allocate<SS_LIST>();
      if (next == nullptr) {
        rc = SQLITE_NOMEM;
        break;
      }
      emm::CopyColumnText(st, 1, next->name, sizeof next->name);
      next->version = sqlite3_column_int(st, 2);
      next->flags = sqlite3_column_int(st, 3);
      (slp != nullptr ? slp->next : head) = next;
      slp = next;
      slpKey = key;
      operation = nullptr;
    }
    if (sqlite3_column_type(st, 4) == SQLITE_NULL) continue;
    SS_OPERATION* next = emm::Allocate<SS_OPERATION>();
    if (next == nullptr) {
      rc = SQLITE_NOMEM;
      break;
    }
    next->index = sqlite3_column_int(st, 4);
    next->copyType = sqlite3_column_int(st, 5);
    emm::CopyColumnText(st, 6, next->destination, sizeof next->destination);
    emm::CopyColumnText(st, 7, next->targetDomain, sizeof next->targetDomain);
    (operation != nullptr ? operation->next : slp->operations) = next;
    operation = next;
  }
  if (rc != SQLITE_DONE) {
    *status = static_cast<int>(rc == SQLITE_NOMEM ? EMMLIB_NO_MEMORY
                                                  : connection->Fail("db_getAllStorageServices", rc));
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
  emm::Statement stmt;
  emm::Connection* connection = emm::Prepare(
      "db_getDATA_CLASS_LIST",
      "SELECT Name, ClassificationID FROM EMM_DataClassification ORDER BY Rank, Name", &stmt,
      status);
  if (connection == nullptr) return nullptr;
  sqlite3_stmt* st = stmt.get();
  DATA_CLASS_LIST* head = nullptr;
  DATA_CLASS_LIST* tail = nullptr;
  int rc;
  while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
    DATA_CLASS_LIST* next = emm::Allocate<DATA_CLASS_LIST>();
    if (next == nullptr) {
      rc = SQLITE_NOMEM;
      break;
    }
    emm::CopyColumnText(st, 0, next->name, sizeof next->name);
    emm::CopyColumnText(st, 1, next->identifier, sizeof next->identifier);
    (tail != nullptr ? tail->next : head) = next;
    tail = next;
  }
  if (rc != SQLITE_DONE) {
    *status = static_cast<int>(rc == SQLITE_NOMEM ? EMMLIB_NO_MEMORY
                                                  : connection->Fail("db_getDATA_CLASS_LIST", rc));
    db_freeDATA_CLASS_LIST(head);
    return nullptr;
  }
  return head;
}

void db_freeDATA_CLASS_LIST(DATA_CLASS_LIST* list) { emm::FreeChain(list); }

int db_get_Policy_Category() {
  int status;
  emm::Statement stmt;
  if (emm::Prepare("db_get_Policy_Category",
                   "SELECT Value FROM EMM_Parameter WHERE Name = 'PolicyCategory'", &stmt,
                   &status) == nullptr) {
    return 0;
  }
  return sqlite3_step(stmt.get()) == SQLITE_ROW ? sqlite3_column_int(stmt.get(), 0) : 0;
}
