// The catalog library: images, copies, fragments, snapshots, replication
// targets and SLP definitions read from (and a few updates written to) the
// catalog database. Every call returns an unsigned status, 0 on success;
// EMMLIB_END_OF_DATA from a fetch means there is nothing more to read. `cid`
// is the address of the caller's connection identifier (EmmCid). Query
// handles are released with emmlib_ReleaseImageResultHandle; lists with the
// matching free function. Results are read in batches, so memory does not
// grow with the catalog. The meaning of the arguments that callers pass as
// fixed constants is documented in docs/catalog.md.
#ifndef PLATFORM_EMMLIB_EMMLIB_H_
#define PLATFORM_EMMLIB_EMMLIB_H_

#include <cstdint>

#include "platform/debuglog.h"
#include "platform/emmlib/emm_records.h"

enum : unsigned {
  EMMLIB_OK = 0,
  EMMLIB_END_OF_DATA = 2007031,       // nothing (more) to read
  EMMLIB_NO_SUCH_RECORD = 2007032,    // an update found no copy or image to change
  EMMLIB_INVALID_ARGUMENT = 2007040,  // null cid, level or mode not supported, ...
  EMMLIB_INVALID_HANDLE = 2007041,    // no open query with that handle
  EMMLIB_NOT_CONNECTED = 2007054,     // cid names no open connection
  EMMLIB_CANNOT_OPEN = 2007060,       // catalog missing, unreadable or not a catalog
  EMMLIB_BUSY = 2007061,              // catalog locked by a writer past the busy timeout
  EMMLIB_DB_ERROR = 2007062,          // any other database failure (corrupt file, ...)
  EMMLIB_NO_MEMORY = 2007063,
};

enum { EMMLIB_READ_ONLY = 1 };  // emmlib_initialize flag: open the catalog read-only

// Opens the catalog: `server` and `port` name the catalog server (recorded in
// the log), `catalog` the database file (absolute, or relative to the
// installation root; null or empty: the configured one). `flags` is 0 or
// EMMLIB_READ_ONLY. `log` receives the library's own log lines with `cmdName`
// as source. Sets *cid to the new connection identifier (a connection that
// *cid named before is closed first).
unsigned emmlib_initialize(int* cid, int flags, const char* server, unsigned short port,
                           const char* catalog, LogFunction log, const char* cmdName);
// Closes the connection *cid (releasing its open queries) and sets *cid to 0.
unsigned emmlib_terminate(int* cid);

// Image query over images, copies and fragments. Null filters select all.
// `level` 3 every column, 2 lifecycle rows (image and copy, no fragment),
// 1 summary rows of managed images (docs/catalog.md).
unsigned emmlib_ImageQueryExecute(int* cid, int level, const char* masterServer,
                                  const char* backupId, const char* client, const char* mediaId,
                                  const char* storageServer, const char* mediaServer, int arg9,
                                  int arg10, int arg11, int arg12, int arg13, const int* imageState,
                                  uint64_t* handle);

unsigned emmlib_ImageQueryCopyTypeAndFormatExecute(
    int* cid, int level, const char* masterServer, const char* backupId, const char* client,
    const char* mediaId, const char* storageServer, const char* mediaServer, int arg9, int arg10,
    const short* fragState, int arg12, int arg13, const int* imageState, const int* copyType,
    int arg16, int arg17, const char* slpName, uint64_t* handle);

// Next images as a linked list (with their copies and fragments; `level` 1
// images only, 2 with copies). `count`: in, how many images are wanted; out,
// how many were returned. Returns 0 also at the end (count 0, empty list).
unsigned emmlib_ImageQueryFetch(int* cid, int level, uint64_t handle, unsigned* count,
                                EMM_Image** list);
// Next flat rows into the caller's buffer of at least *count rows (level 3).
// Returns 0 with every batch that holds rows, EMMLIB_END_OF_DATA (count 0)
// once the rows are exhausted.
unsigned emmlib_ImageQueryFetchRaw(int* cid, int level, uint64_t handle, unsigned* count,
                                   Legacy_ImageView* rows);
void emmlib_FreeImage_List(EMM_Image** list);
unsigned emmlib_ReleaseImageResultHandle(int* cid, uint64_t handle);

// Active snapshots of one image (backupId) or of all images (null), in the
// order of the image query's rows: backup time, backup id, copy number. The
// fetch returns EMMLIB_END_OF_DATA with the last records.
unsigned emmlib_QueryActiveSnapshotInfo(int* cid, int level, const char* masterServer, int arg4,
                                        const char* backupId, int arg6, int arg7, uint64_t* handle);
unsigned emmlib_FetchSnapshotInfo(int* cid, int level, uint64_t handle, unsigned* count,
                                  EMM_SnapshotInfo** list);
void emmlib_FreeSnapshotInfo_List(EMM_SnapshotInfo** list);

// Images with replica copies and their replication targets. The query returns
// EMMLIB_END_OF_DATA when nothing matches, the fetch with the last batch.
unsigned emmlib_QueryReplicaImageCopies(int* cid, int level, const char* masterServer,
                                        int64_t sinceTime, uint64_t* handle);
unsigned emmlib_FetchReplicaImageCopies(int* cid, int level, uint64_t handle, unsigned* count,
                                        EMM_Image** list);

// Images pending import (same end-of-data rule as the replica query).
unsigned emmlib_QueryPendingImportImages(int* cid, int level, const char* masterServer,
                                         int64_t sinceTime, uint64_t* handle);
unsigned emmlib_FetchPendingImportImages(int* cid, int level, uint64_t handle, unsigned* count,
                                         EMM_Image** list);

// Copy update: the copy is found by master server, backup id and SLP index;
// EMMLIB_NO_SUCH_RECORD when there is none.
unsigned emmlib_InitImageCopyExt(EMM_ImageCopyExt** copy);
unsigned emmlib_UpdateImageCopy(int* cid, int mode, const EMM_ImageCopyExt* copy);
void emmlib_FreeImageCopyExt(EMM_ImageCopyExt** copy);
unsigned emmlib_UpdateImageStorageServiceState(int* cid, int mode, const char* masterServer,
                                               const char* backupId, int state);

// Empties the deleted-fragment list.
unsigned emmlib_DeleteDeletedImageFragments(int* cid, int level, const char* masterServer,
                                            const char* backupId, int arg5, int arg6, int arg7,
                                            int arg8);

// All SLP definitions, every version; free with db_freeSS_LISTs.
SS_LIST* db_getAllStorageServicesWithAllVersions(int* status);
void db_freeSS_LISTs(SS_LIST* list);
// Data classifications; free with db_freeDATA_CLASS_LIST.
DATA_CLASS_LIST* db_getDATA_CLASS_LIST(int* status);
void db_freeDATA_CLASS_LIST(DATA_CLASS_LIST* list);
int db_get_Policy_Category();

#endif  // PLATFORM_EMMLIB_EMMLIB_H_
