// Reading image, copy, fragment and replication-target columns of a catalog
// statement into the records. Statements select the column groups below in
// this order (image, copy, then fragment or target), so each reader knows its
// columns by position. Every field of a record is set, texts by copying only
// their own bytes and the NUL.
#ifndef PLATFORM_EMMLIB_IMAGE_ROWS_H_
#define PLATFORM_EMMLIB_IMAGE_ROWS_H_

#include <cstddef>
#include <cstdint>

#include "platform/emmlib/emm_records.h"
#include "platform/emmlib/result_row.h"

namespace emm {

class Connection;

// Column lists of the groups, with the tables aliased i (DBM_Image),
// c (DBM_ImageCopy), f (DBM_ImageFragment), rd
// (DBM_ImageReplicationDestination) and m (EMM_Machine of the target).
extern const char kImageColumns[];
extern const char kCopyColumns[];
extern const char kFragmentColumns[];
extern const char kTargetColumns[];
// The few columns of a summary row (a query of detail level 1): what a
// backlog count reads of an image, a copy and a fragment.
extern const char kSummaryColumns[];
// The columns of a lifecycle row (a query of detail level 2): what the
// lifecycle image list reads of an image and a copy. No fragment columns.
extern const char kLifecycleColumns[];

enum : int {
  kImageColumnCount = 19,
  kCopyColumnCount = 19,
  kFragmentColumnCount = 14,
  kTargetColumnCount = 4,
  kCopyFirstColumn = kImageColumnCount,
  kLastGroupFirstColumn = kImageColumnCount + kCopyColumnCount,
  kLifecycleCopyFirstColumn = 6,
};

// Lengths of the texts of the image and the copy last read: the further
// rows of one image (or copy) repeat those texts, and copy them by length.
struct RowTextLengths {
  size_t master = 0;
  size_t backupId = 0;
  size_t client = 0;
  size_t policy = 0;
  size_t slpName = 0;
  size_t classificationId = 0;
  size_t originMaster = 0;
  size_t residence = 0;
  size_t destinationId = 0;
};

// The image key of the current row (column 0).
inline int64_t RowImageKey(const ResultRow& row) { return row.Int64(0); }

// The copy key of the current row (0: no copy).
inline uint64_t RowCopyKey(const ResultRow& row) {
  return static_cast<uint64_t>(row.Int64(kCopyFirstColumn));
}

// Reads the image columns and records the lengths of its texts. The master
// server name comes from the connection's cache of machine names.
void ReadImage(const ResultRow& row, Connection* connection, EMM_Image* image,
               RowTextLengths* lengths);

// Copies an image record of the same result whose text lengths are
// `lengths` (every field but the list links): cheaper than reading the
// columns again for the next row of one image.
void CopyImage(const EMM_Image& from, const RowTextLengths& lengths, EMM_Image* to);

// Reads the copy columns after the key, which the caller has read; returns
// the copy key (0 when the row has no copy, the record then holds zeros and
// empty texts). Master server and backup id are taken from `image`, whose
// text lengths `lengths` holds; the copy's own are recorded there.
uint64_t ReadCopy(const ResultRow& row, uint64_t key, const EMM_Image& image,
                  RowTextLengths* lengths, EMM_ImageCopy* copy);

// Copies a copy record of the same result for the next row of one copy.
void CopyCopy(const EMM_ImageCopy& from, const RowTextLengths& lengths, EMM_ImageCopy* to);

// Reads the fragment columns that follow the copy columns; returns the
// fragment key (0: no fragment, zeros and empty texts).
uint64_t ReadFragment(const ResultRow& row, const EMM_Image& image, const RowTextLengths& lengths,
                      int32_t copyNumber, EMM_ImageFragment* fragment);

// Reads the target columns that follow the copy columns; returns the target's
// key (0: none).
uint64_t ReadTarget(const ResultRow& row, const EMM_Image& image, const RowTextLengths& lengths,
                    int32_t copyNumber, EMM_ReplicationTarget* target);

// Reads a summary row into `to`: the image's backup id, SLP name, version
// and state, the copy's key, number and state, the fragment's key and size.
// The other fields of `to` are left as they are: a summary row is read into
// a reused buffer many times over and touches only what it carries.
void ReadSummary(const ResultRow& row, Legacy_ImageView* to);

// Read a lifecycle row: the image's backup id, SLP name, version and state;
// the copy's key (the caller's, read from kLifecycleCopyFirstColumn), number,
// type, state and residence. The other numbers are zero, the other texts
// empty and the list links null.
void ReadLifecycleImage(const ResultRow& row, EMM_Image* image);
void ReadLifecycleCopy(const ResultRow& row, uint64_t key, EMM_ImageCopy* copy);

}  // namespace emm

#endif  // PLATFORM_EMMLIB_IMAGE_ROWS_H_
