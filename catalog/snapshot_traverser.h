// SnapshotTraverser: merges the snapshot records of an image query into a
// listing of flat image-copy-fragment rows. The catalog returns snapshots in
// the rows' order (backup time, backup ID, copy number), so the traverser
// reads them in batches alongside the rows and never looks back: for each
// row's copy it hands out the snapshots that belong to it and drops those
// that sort before it.
#ifndef CATALOG_SNAPSHOT_TRAVERSER_H_
#define CATALOG_SNAPSHOT_TRAVERSER_H_

#include <cstdint>
#include <string>

#include "platform/emmlib/emm_records.h"

class SnapshotTraverser {
 public:
  // Nothing is queried until initQuery.
  SnapshotTraverser(int connectionId, const char* masterServer, unsigned int batchSize);
  // Frees the record handed out last and the current batch, and releases the
  // query handle.
  virtual ~SnapshotTraverser();
  SnapshotTraverser(const SnapshotTraverser&) = delete;
  SnapshotTraverser& operator=(const SnapshotTraverser&) = delete;

  // Starts the query for the active snapshots of `backupId` (null: of every
  // image). Returns the catalog status, 0 on success.
  unsigned initQuery(const char* backupId);

  // Sets `out` to the next snapshot of the row's copy, or to null when it has
  // no more. The record stays owned by the traverser until the next call.
  // Returns 0, or the catalog status of a failed fetch (which is logged and
  // ends the merge).
  unsigned next(EMM_SnapshotInfo*& out, const Legacy_ImageView* row);

  // Orders a snapshot against the row's copy by (backup time, backup ID,
  // copy number): 0 when it sorts before the copy, 1 when it belongs to it
  // (or there is no row), 2 when it sorts after it.
  static int compareToCurrentImage(const EMM_SnapshotInfo& snap, const Legacy_ImageView* row);

 private:
  int cid_;
  uint64_t handle_ = 0;
  std::string masterServer_;
  unsigned int batchSize_;
  bool fetchPending_ = false;
  bool exhausted_ = false;
  EMM_SnapshotInfo* batch_ = nullptr;     // head of the unread part of the batch
  EMM_SnapshotInfo* returned_ = nullptr;  // handed out by the last call to next
};

#endif  // CATALOG_SNAPSHOT_TRAVERSER_H_
