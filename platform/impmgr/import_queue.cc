// The import queue in the catalog: one connection per process, opened by the
// first call (read-only for listing, reopened read-write when something is
// to be queued) and kept with its prepared statements until exit, so that
// queueing many images one call at a time costs one insert each.
#include <sqlite3.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "platform/dal/catalog_file.h"
#include "platform/dal/dal_status.h"
#include "platform/impmgr/impmgr.h"

namespace {

using Corvela::Dal::SqliteHandle;

struct StmtFinalizer {
  void operator()(sqlite3_stmt* stmt) const { sqlite3_finalize(stmt); }
};
using StmtHandle = std::unique_ptr<sqlite3_stmt, StmtFinalizer>;

const char kListSql[] =
    "SELECT BackupID, CopyNumber, MediaServer, LSUName, StorageServerName, StorageServerType,"
    " MediaID, FragmentDescription, OriginMasterServer, SLPName, ImportStatus"
    " FROM SLP_PendingImport ORDER BY PendingImportKey";
const char kInsertSql[] =
    "INSERT INTO SLP_PendingImport (BackupID, CopyNumber, MediaServer, LSUName,"
    " StorageServerName, StorageServerType, MediaID, FragmentDescription, OriginMasterServer,"
    " SLPName, ImportStatus) VALUES (?, 1, ?, ?, ?, ?, '', '', ?, ?, 0)";

// Log lines of one call, with the call's name as their source.
class CallLog {
 public:
  CallLog(LogFunction log, const char* call) : log_(log), call_(call) {}
  void Write(int severity, const std::string& text) const {
    if (log_ != nullptr) log_(severity, text.c_str(), call_);
  }

 private:
  LogFunction log_;
  const char* call_;
};

int StatusFromDal(int dalStatus) {
  switch (dalStatus) {
    case Corvela::Dal::DAL_CATALOG_MISSING:
    case Corvela::Dal::DAL_CATALOG_UNREADABLE:
    case Corvela::Dal::DAL_CATALOG_CORRUPT:
      return IMPMGR_CATALOG_UNAVAILABLE;
    case Corvela::Dal::DAL_BUSY_TIMEOUT:
      return IMPMGR_CATALOG_BUSY;
    case Corvela::Dal::DAL_OUT_OF_MEMORY:
      return IMPMGR_NO_MEMORY;
    default:
      return IMPMGR_CATALOG_ERROR;
  }
}

int StatusFromSqlite(int rc) {
  switch (rc & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return IMPMGR_CATALOG_BUSY;
    case SQLITE_NOMEM:
      return IMPMGR_NO_MEMORY;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_CANTOPEN:
      return IMPMGR_CATALOG_UNAVAILABLE;
    default:
      return IMPMGR_CATALOG_ERROR;
  }
}

// The process's connection to the queue and its statements.
class ImportQueue {
 public:
  // Opens the catalog unless it is open already (read-write when `forWriting`
  // and the open connection is read-only). Returns 0, or the status of the
  // failure that made the catalog unusable for this process.
  int Open(bool forWriting, const CallLog& log) {
    if (unusable_ != IMPMGR_OK) return unusable_;
    if (db_ && (!forWriting || !readOnly_)) return IMPMGR_OK;
    insert_.reset();
    list_.reset();
    db_.reset();
    const Corvela::Dal::CatalogLocation where = Corvela::Dal::ConfiguredCatalog();
    std::string why;
    int dal = Corvela::Dal::OpenCatalogFile(where, !forWriting, &db_, &why);
    if (dal != Corvela::Dal::DAL_SUCCESS) {
      log.Write(16, "cannot open the catalog: " + why);
      unusable_ = StatusFromDal(dal);
      return unusable_;
    }
    readOnly_ = !forWriting;
    return IMPMGR_OK;
  }

  // The statement for `sql` in *slot, prepared on first use; null with
  // *status set when it cannot be prepared.
  sqlite3_stmt* Statement(StmtHandle* slot, const char* sql, const CallLog& log, int* status) {
    *status = IMPMGR_OK;
    if (!*slot) {
      sqlite3_stmt* stmt = nullptr;
      int rc = sqlite3_prepare_v2(db_.get(), sql, -1, &stmt, nullptr);
      if (rc != SQLITE_OK) {
        *status = Fail(rc, log);
        return nullptr;
      }
      slot->reset(stmt);
    }
    sqlite3_reset(slot->get());
    sqlite3_clear_bindings(slot->get());
    return slot->get();
  }

  sqlite3_stmt* ListStatement(const CallLog& log, int* status) {
    return Statement(&list_, kListSql, log, status);
  }
  sqlite3_stmt* InsertStatement(const CallLog& log, int* status) {
    return Statement(&insert_, kInsertSql, log, status);
  }

  // Runs a statement without results (BEGIN, COMMIT, ROLLBACK).
  int Exec(const char* sql, const CallLog& log) {
    int rc = sqlite3_exec(db_.get(), sql, nullptr, nullptr, nullptr);
    return rc == SQLITE_OK ? IMPMGR_OK : Fail(rc, log);
  }

  // Logs the database's error and returns its status; a catalog locked past
  // the timeout is not tried again.
  int Fail(int rc, const CallLog& log) {
    log.Write(16, std::string("catalog database error: ") + sqlite3_errmsg(db_.get()));
    int status = StatusFromSqlite(rc);
    if (status == IMPMGR_CATALOG_BUSY) unusable_ = status;
    return status;
  }

  sqlite3* db() const { return db_.get(); }

 private:
  SqliteHandle db_;  // declared first: destroyed after the statements
  StmtHandle list_;
  StmtHandle insert_;
  bool readOnly_ = false;
  int unusable_ = IMPMGR_OK;
};

ImportQueue& Queue() {
  static ImportQueue queue;
  return queue;
}

// A malloc'ed copy of column `col`'s text; null only when memory runs out.
char* ColumnText(sqlite3_stmt* stmt, int col) {
  const unsigned char* text = sqlite3_column_text(stmt, col);
  size_t n = text != nullptr ? static_cast<size_t>(sqlite3_column_bytes(stmt, col)) : 0;
  char* copy = static_cast<char*>(malloc(n + 1));
  if (copy == nullptr) return nullptr;
  if (n > 0) memcpy(copy, text, n);
  copy[n] = '\0';
  return copy;
}

void FreeFragments(PendingImportFragment* list) {
  while (list != nullptr) {
    PendingImportFragment* next = list->next;
    for (char* text : {list->backupId, list->mediaServer, list->lsuName, list->storageServerName,
                       list->storageServerType, list->mediaId, list->fragmentDescription,
                       list->originMasterServer, list->slpName}) {
      free(text);
    }
    free(list);
    list = next;
  }
}

// A new entry from the statement's current row; null when memory runs out.
PendingImportFragment* FragmentFromRow(sqlite3_stmt* stmt) {
  auto* entry = static_cast<PendingImportFragment*>(calloc(1, sizeof(PendingImportFragment)));
  if (entry == nullptr) return nullptr;
  char** texts[] = {&entry->backupId,          &entry->mediaServer,       &entry->lsuName,
                    &entry->storageServerName, &entry->storageServerType, &entry->mediaId,
                    &entry->fragmentDescription, &entry->originMasterServer, &entry->slpName};
  const int columns[] = {0, 2, 3, 4, 5, 6, 7, 8, 9};
  bool complete = true;
  for (size_t i = 0; i < sizeof(columns) / sizeof(columns[0]); ++i) {
    *texts[i] = ColumnText(stmt, columns[i]);
    complete = complete && *texts[i] != nullptr;
  }
  entry->copyNumber = sqlite3_column_int(stmt, 1);
  entry->importStatus = sqlite3_column_int64(stmt, 10);
  if (!complete) {
    FreeFragments(entry);
    return nullptr;
  }
  return entry;
}

const char* OrEmpty(const char* text) { return text != nullptr ? text : ""; }

// Binds the texts of one image and inserts it.
int InsertImage(ImportQueue& queue, const CallLog& log, const char* mediaServer,
                const char* slpName, const char* originMasterServer,
                const TestImportImage& image) {
  int status;
  sqlite3_stmt* insert = queue.InsertStatement(log, &status);
  if (insert == nullptr) return status;
  const char* texts[] = {image.imageName,         OrEmpty(mediaServer),     OrEmpty(image.lsuName),
                         OrEmpty(image.storageServerName), OrEmpty(image.serverType),
                         OrEmpty(originMasterServer),      OrEmpty(slpName)};
  for (int i = 0; i < 7; ++i) sqlite3_bind_text(insert, i + 1, texts[i], -1, SQLITE_STATIC);
  int rc = sqlite3_step(insert);
  sqlite3_reset(insert);
  if (rc != SQLITE_DONE) return queue.Fail(rc, log);
  log.Write(2, std::string("queued image ") + image.imageName + " of storage server " +
                   texts[3] + " (" + texts[4] + "), LSU " + texts[2] + ", entry " +
                   std::to_string(sqlite3_last_insert_rowid(queue.db())));
  return IMPMGR_OK;
}

}  // namespace

int ImpMgrComm_ListAllImportPendingFragments(int flags, const char* masterServer, LogFunction log,
                                             PendingImportFragment** list) {
  const CallLog callLog(log, "ImpMgrComm_ListAllImportPendingFragments");
  if (list == nullptr) return IMPMGR_INVALID_ARGUMENT;
  *list = nullptr;
  if (flags != 0 || masterServer == nullptr || *masterServer == '\0') {
    callLog.Write(16, "invalid argument");
    return IMPMGR_INVALID_ARGUMENT;
  }
  ImportQueue& queue = Queue();
  int status = queue.Open(false, callLog);
  if (status != IMPMGR_OK) return status;
  sqlite3_stmt* select = queue.ListStatement(callLog, &status);
  if (select == nullptr) return status;

  PendingImportFragment* head = nullptr;
  PendingImportFragment** tail = &head;
  long count = 0;
  int rc;
  while ((rc = sqlite3_step(select)) == SQLITE_ROW) {
    PendingImportFragment* entry = FragmentFromRow(select);
    if (entry == nullptr) {
      status = IMPMGR_NO_MEMORY;
      break;
    }
    *tail = entry;
    tail = &entry->next;
    ++count;
  }
  if (status == IMPMGR_OK && rc != SQLITE_DONE) status = queue.Fail(rc, callLog);
  sqlite3_reset(select);
  if (status != IMPMGR_OK) {
    FreeFragments(head);
    return status;
  }
  callLog.Write(2, std::to_string(count) + " entries in the import queue of " + masterServer);
  *list = head;
  return IMPMGR_OK;
}

int ImpMgrComm_AddEXTImageToImportQueue(int flags, const char* masterServer, LogFunction log,
                                        const char* mediaServer, const char* slpName,
                                        const char* originMasterServer, TestImportImage** images) {
  const CallLog callLog(log, "ImpMgrComm_AddEXTImageToImportQueue");
  if (flags != 0 || masterServer == nullptr || *masterServer == '\0' || images == nullptr ||
      *images == nullptr) {
    callLog.Write(16, "invalid argument");
    return IMPMGR_INVALID_ARGUMENT;
  }
  for (const TestImportImage* image = *images; image != nullptr; image = image->next) {
    if (image->imageName == nullptr || *image->imageName == '\0') {
      callLog.Write(16, "refused an image without a name");
      return IMPMGR_EMPTY_IMAGE_NAME;
    }
  }
  ImportQueue& queue = Queue();
  int status = queue.Open(true, callLog);
  if (status != IMPMGR_OK) return status;

  // A list is stored whole or not at all; one image needs no transaction
  // of its own.
  const bool several = (*images)->next != nullptr;
  if (several && (status = queue.Exec("BEGIN IMMEDIATE", callLog)) != IMPMGR_OK) return status;
  for (const TestImportImage* image = *images; image != nullptr; image = image->next) {
    status = InsertImage(queue, callLog, mediaServer, slpName, originMasterServer, *image);
    if (status != IMPMGR_OK) break;
  }
  if (several) {
    if (status == IMPMGR_OK) status = queue.Exec("COMMIT", callLog);
    if (status != IMPMGR_OK) sqlite3_exec(queue.db(), "ROLLBACK", nullptr, nullptr, nullptr);
  }
  return status;
}
