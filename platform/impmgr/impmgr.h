// The import manager's communication calls: the queue of fragments that the
// import side of replication still has to import, kept in the catalog's table
// SLP_PendingImport (what each entry holds, the statuses and how an entry
// becomes complete: docs/import-manager.md). C-style like the library it
// stands in for: every text and entry handed out is allocated with malloc and
// freed by the caller with free. Each process uses one catalog connection for
// all its calls; it is opened by the first call and closed at exit.
#ifndef PLATFORM_IMPMGR_IMPMGR_H_
#define PLATFORM_IMPMGR_IMPMGR_H_

#include <cstdint>

#include "platform/debuglog.h"

enum : int {
  IMPMGR_OK = 0,
  IMPMGR_INVALID_ARGUMENT = 2008001,     // flags not 0, no master server, null entry or list
  IMPMGR_EMPTY_IMAGE_NAME = 2008002,     // an image entry without an image name
  IMPMGR_CATALOG_UNAVAILABLE = 2008003,  // catalog missing, unreadable or not a catalog
  IMPMGR_CATALOG_BUSY = 2008004,         // catalog locked by another process past the timeout
  IMPMGR_CATALOG_ERROR = 2008005,        // any other database failure (no queue table, ...)
  IMPMGR_NO_MEMORY = 2008006,
};

// Import statuses of a queue entry; 3 and 5 mean the import is complete,
// every other value that it is still pending.
enum : int64_t {
  IMPORT_QUEUED = 0,       // waiting for the import service
  IMPORT_IN_PROGRESS = 1,  // the import service is reading the fragment
  IMPORT_RETRY = 2,        // an attempt failed; the import service tries again
  IMPORT_DONE = 3,         // imported into the catalog
  IMPORT_HELD = 4,         // held by an administrator; not tried until released
  IMPORT_DUPLICATE = 5,    // the catalog already held the image: nothing to import
};

// One fragment of the queue, as listed.
struct PendingImportFragment {
  char* backupId;
  int32_t copyNumber;
  char* mediaServer;
  char* lsuName;
  char* storageServerName;
  char* storageServerType;
  char* mediaId;
  char* fragmentDescription;
  char* originMasterServer;
  char* slpName;
  int64_t importStatus;
  PendingImportFragment* next;
};

// One image of a storage server to be queued, and the next of a list.
struct TestImportImage {
  char* storageServerName;
  char* serverType;
  char* lsuName;
  char* imageName;
  TestImportImage* next;
};

// Every entry of the queue, oldest first, complete ones included, as a list
// in *list (null when the queue is empty). `flags` must be 0; `masterServer`
// names the master whose import manager is asked. `log` (may be null)
// receives the library's log lines. Returns IMPMGR_OK or a failure status
// with *list null.
int ImpMgrComm_ListAllImportPendingFragments(int flags, const char* masterServer, LogFunction log,
                                             PendingImportFragment** list);

// Queues every image of the list *images for import with status
// IMPORT_QUEUED: media server, SLP name and origin master server as given
// (null counts as empty), backup ID the image name, copy number 1, no media
// ID or fragment description yet. The list stays the caller's. Returns
// IMPMGR_OK once all of them are stored in the catalog, or a failure status
// with none stored. A catalog that could not be opened or stayed locked is
// not tried again by later calls of the same process: they return the same
// status at once.
int ImpMgrComm_AddEXTImageToImportQueue(int flags, const char* masterServer, LogFunction log,
                                        const char* mediaServer, const char* slpName,
                                        const char* originMasterServer, TestImportImage** images);

#endif  // PLATFORM_IMPMGR_IMPMGR_H_
