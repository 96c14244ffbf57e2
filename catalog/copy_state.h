// The numbers of an image copy's state and of its type as the catalog stores
// them. Among copy states the value 8 also acts as the inactive bit when
// copies are selected.
#ifndef CATALOG_COPY_STATE_H_
#define CATALOG_COPY_STATE_H_

enum CopyState {
  COPY_STATE_NOT_MANAGED = 0,
  COPY_STATE_NOT_STARTED = 1,
  COPY_STATE_IN_PROCESS = 2,
  COPY_STATE_JOBCOMPLETE = 3,
  COPY_STATE_SIBLING_IN_PROCESS = 4,
  COPY_STATE_COPYCOMPLETE = 5,
  COPY_STATE_CANCELLED = 6,
  COPY_STATE_CANT_PROCESS = 7,
  COPY_STATE_INACTIVE = 8,  // DEFERRED as a state, the inactive bit in filters
  COPY_STATE_DEPENDEES_IN_PROCESS = 11,
  COPY_STATE_IMPORTS_DONE = 12,
  COPY_STATE_REPLICATION_INCOMPLETE = 13,
  COPY_STATE_IMPORT_PENDING = 14,
  COPY_STATE_IMPORT_FAILED = 15,
};

// True for the two states of a copy whose SLP work is done.
inline bool CopyIsComplete(int copyState) {
  return copyState == COPY_STATE_JOBCOMPLETE || copyState == COPY_STATE_COPYCOMPLETE;
}

enum CopyType {
  COPY_TYPE_BACKUP = 0,
  COPY_TYPE_DUPLICATE = 1,
  COPY_TYPE_SNAPSHOT = 2,
  COPY_TYPE_REPLICATE_TO_REMOTE_MASTER = 3,
  COPY_TYPE_IMPORT = 4,
  COPY_TYPE_BACKUP_FROM_SNAPSHOT = 5,
  COPY_TYPE_INDEX_FROM_SNAPSHOT = 6,
  COPY_TYPE_REPLICATION = 7,
  COPY_TYPE_CLOUD_SNAPSHOT_REPLICATION = 8,
  COPY_TYPE_CLOUD_SNAPSHOT_INDEX = 9,
};

#endif  // CATALOG_COPY_STATE_H_
