// Reading image, copy, fragment and replication-target columns of a catalog
// statement into the records. Statements select the column groups below in
// this order (image, copy, then fragment or target), so each reader knows its
// columns by position. Every field of a record is set, texts by copying only
// their own bytes and the NUL.
#ifndef PLATFORM_EMMLIB_IMAGE_ROWS_H_
#define PLATFORM_EMMLIB_IMAGE_ROWS_H_

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>

#include "platform/emmlib/emm_records.h"

namespace emm {

class Connection;

// Column lists of the groups, with the tables aliased i (DBM_Image),
// c (DBM_ImageCopy), f (DBM_ImageFragment), rd
// (DBM_ImageReplicationDestination) and m (EMM_Machine of the target).
extern const char kImageColumns[];
extern const char kCopyColumns[];
extern const char kFragmentColumns[];
extern const char kTargetColumns[];

enum : int {
  kImageColumnCount = 19,
  kCopyColumnCount = 19,
  kFragmentColumnCount = 14,
  kTargetColumnCount = 4,
  kCopyFirstColumn = kImageColumnCount,
  kLastGroupFirstColumn = kImageColumnCount + kCopyColumnCount,
};

// The image key of the current row (column 0).
inline int64_t RowImageKey(sqlite3_stmt* stmt) { return sqlite3_column_int64(stmt, 0); }

// Reads the image columns. The master server name comes from the
// connection's cache of machine names.
void ReadImage(sqlite3_stmt* stmt, Connection* connection, EMM_Image* image);

// Copies an image record of the same result (every field but the list
// links), texts by their length; cheaper than reading the columns again for
// the next row of one image.
void CopyImage(const EMM_Image& from, EMM_Image* to);

// The copy key of the current row (0: no copy).
inline uint64_t RowCopyKey(sqlite3_stmt* stmt) {
  return static_cast<uint64_t>(sqlite3_column_int64(stmt, kCopyFirstColumn));
}

// Reads the copy columns after the key, which the caller has read; returns
// the copy key (0 when the row has no copy, the record then holds zeros and
// empty texts). Master server and backup id are taken from `image`.
uint64_t ReadCopy(sqlite3_stmt* stmt, uint64_t key, const EMM_Image& image,
                  EMM_ImageCopy* copy);

// Copies a copy record of the same result for the next row of one copy.
void CopyCopy(const EMM_ImageCopy& from, EMM_ImageCopy* to);

inline uint64_t ReadCopy(sqlite3_stmt* stmt, const EMM_Image& image, EMM_ImageCopy* copy) {
  return ReadCopy(stmt, RowCopyKey(stmt), image, copy);
}

// Reads the fragment columns that follow the copy columns; returns the
// fragment key (0: no fragment, zeros and empty texts).
uint64_t ReadFragment(sqlite3_stmt* stmt, const EMM_Image& image, int32_t copyNumber,
                      EMM_ImageFragment* fragment);

// Reads the target columns that follow the copy columns; returns the target's
// key (0: none).
uint64_t ReadTarget(sqlite3_stmt* stmt, const EMM_Image& image, int32_t copyNumber,
                    EMM_ReplicationTarget* target);

}  // namespace emm

#endif  // PLATFORM_EMMLIB_IMAGE_ROWS_H_
