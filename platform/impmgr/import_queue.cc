// The import queue in the catalog: one connection per process, opened by the
// first call (read-only for listing, reopened read-write when something is
// to be queued) and kept with its prepared statements until exit, so that
// queueing many images one call at a time costs one insert each.
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "platform/dal/catalog_file.h"
#include "platform/dal/dal_status.h"
#include "platform/impmgr/impmgr.h"
#include "platform/sqldb/sqldb.h"

namespace {

using StatementSlot = std::unique_ptr<sqldb::Statement>;

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

int StatusFromCode(sqldb::Code code) {
  switch (code) {
    case sqldb::Code::kBusy:
      return IMPMGR_CATALOG_BUSY;
    case sqldb::Code::kNoMemory:
      return IMPMGR_NO_MEMORY;
    case sqldb::Code::kCorrupt:
    case sqldb::Code::kMissing:
    case sqldb::Code::kNoAccess:
    case sqldb::Code::kUnreachable:
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
    const Corvela::Dal::CatalogLocation where = sqldb::ConfiguredLocation();
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
  sqldb::Statement* Statement(StatementSlot* slot, const char* sql, const CallLog& log,
                              int* status) {
    *status = IMPMGR_OK;
    if (!*slot) {
      sqldb::Code code;
      *slot = db_->Prepare(sql, &code);
      if (!*slot) {
        *status = Fail(code, log);
        return nullptr;
      }
    }
    (*slot)->Reset();
    (*slot)->ClearBindings();
    return slot->get();
  }

  sqldb::Statement* ListStatement(const CallLog& log, int* status) {
    return Statement(&list_, kListSql, log, status);
  }
  sqldb::Statement* InsertStatement(const CallLog& log, int* status) {
    return Statement(&insert_, kInsertSql, log, status);
  }

  // A transaction that takes the write lock at once, and its end.
  int Begin(const CallLog& log) { return Result(db_->Begin(), log); }
  int Commit(const CallLog& log) { return Result(db_->Commit(), log); }
  void Rollback() { db_->Rollback(); }

  // Logs the database's error and returns its status; a catalog locked past
  // the timeout is not tried again.
  int Fail(sqldb::Code code, const CallLog& log) {
    log.Write(16, std::string("catalog database error (") + sqldb::CodeText(code) +
                      "): " + db_->LastError());
    int status = StatusFromCode(code);
    if (status == IMPMGR_CATALOG_BUSY) unusable_ = status;
    return status;
  }

  int64_t LastQueuedKey() const {
    return db_->LastInsertKey("SLP_PendingImport", "PendingImportKey");
  }

 private:
  int Result(sqldb::Code code, const CallLog& log) {
    return code == sqldb::Code::kOk ? IMPMGR_OK : Fail(code, log);
  }

  std::unique_ptr<sqldb::Database> db_;  // declared first: ends after the statements
  StatementSlot list_;
  StatementSlot insert_;
  bool readOnly_ = false;
  int unusable_ = IMPMGR_OK;
};

ImportQueue& Queue() {
  static ImportQueue queue;
  return queue;
}

// A malloc'ed copy of column `col`'s text; null only when memory runs out.
char* ColumnText(const sqldb::Row& row, int col) {
  const std::string_view text = row.Bytes(col);
  char* copy = static_cast<char*>(malloc(text.size() + 1));
  if (copy == nullptr) return nullptr;
  if (!text.empty()) memcpy(copy, text.data(), text.size());
  copy[text.size()] = '\0';
  return copy;
}

// A fragment's texts (malloc'ed, freed with it) and the queue's columns
// they are read from.
const struct {
  char* PendingImportFragment::*field;
  int column;
} kFragmentTexts[] = {{&PendingImportFragment::backupId, 0},
                      {&PendingImportFragment::mediaServer, 2},
                      {&PendingImportFragment::lsuName, 3},
                      {&PendingImportFragment::storageServerName, 4},
                      {&PendingImportFragment::storageServerType, 5},
                      {&PendingImportFragment::mediaId, 6},
                      {&PendingImportFragment::fragmentDescription, 7},
                      {&PendingImportFragment::originMasterServer, 8},
                      {&PendingImportFragment::slpName, 9}};

void FreeFragments(PendingImportFragment* list) {
  while (list != nullptr) {
    PendingImportFragment* next = list->next;
    for (const auto& text : kFragmentTexts) free(list->*text.field);
    free(list);
    list = next;
  }
}

// A new entry from the statement's current row; null when memory runs out.
PendingImportFragment* FragmentFromRow(const sqldb::Row& row) {
  auto* entry = static_cast<PendingImportFragment*>(calloc(1, sizeof(PendingImportFragment)));
  if (entry == nullptr) return nullptr;
  bool complete = true;
  for (const auto& text : kFragmentTexts) {
    entry->*text.field = ColumnText(row, text.column);
    complete = complete && entry->*text.field != nullptr;
  }
  entry->copyNumber = row.Int(1);
  entry->importStatus = row.Int64(10);
  if (!complete) {
    FreeFragments(entry);
    return nullptr;
  }
  return entry;
}

const char* OrEmpty(const char* text) { return text != nullptr ? text : ""; }

// Binds the texts of one image and inserts it.
int InsertImage(ImportQueue& queue, const CallLog& log, const char* mediaServer,
                const char* slpName, const char* originMasterServer, const TestImportImage& image) {
  int status;
  sqldb::Statement* insert = queue.InsertStatement(log, &status);
  if (insert == nullptr) return status;
  const char* texts[] = {image.imageName,           OrEmpty(mediaServer),
                         OrEmpty(image.lsuName),    OrEmpty(image.storageServerName),
                         OrEmpty(image.serverType), OrEmpty(originMasterServer),
                         OrEmpty(slpName)};
  for (int i = 0; i < 7; ++i) insert->BindText(i + 1, texts[i]);
  const sqldb::Code code = insert->Step();
  insert->Reset();
  if (code != sqldb::Code::kDone) return queue.Fail(code, log);
  log.Write(2, std::string("queued image ") + image.imageName + " of storage server " + texts[3] +
                   " (" + texts[4] + "), LSU " + texts[2] + ", entry " +
                   std::to_string(queue.LastQueuedKey()));
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
  sqldb::Statement* select = queue.ListStatement(callLog, &status);
  if (select == nullptr) return status;

  PendingImportFragment* head = nullptr;
  PendingImportFragment** tail = &head;
  long count = 0;
  sqldb::Code code;
  while ((code = select->Step()) == sqldb::Code::kRow) {
    PendingImportFragment* entry = FragmentFromRow(select->CurrentRow());
    if (entry == nullptr) {
      status = IMPMGR_NO_MEMORY;
      break;
    }
    *tail = entry;
    tail = &entry->next;
    ++count;
  }
  if (status == IMPMGR_OK && code != sqldb::Code::kDone) status = queue.Fail(code, callLog);
  select->Reset();
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
  if (several && (status = queue.Begin(callLog)) != IMPMGR_OK) return status;
  for (const TestImportImage* image = *images; image != nullptr; image = image->next) {
    status = InsertImage(queue, callLog, mediaServer, slpName, originMasterServer, *image);
    if (status != IMPMGR_OK) break;
  }
  if (several) {
    if (status == IMPMGR_OK) status = queue.Commit(callLog);
    if (status != IMPMGR_OK) queue.Rollback();
  }
  return status;
}
