// The image listing: one catalog query over images, copies and fragments,
// read as flat rows 500 at a time into one reused buffer, filtered row by row
// and printed so that every image, copy, fragment and snapshot appears once.
// Only the previous row's backup ID and copy number carry over from one row
// (and one batch) to the next, so memory does not grow with the catalog.
#include "catalog/list.h"

#include <cstdio>
#include <cstring>
#include <memory>

#include "catalog/record_printers.h"
#include "catalog/snapshot_traverser.h"
#include "platform/emmlib/emmlib.h"
#include "util/message.h"
#include "util/process.h"

using Orvantic::Stashwell::LineWriter;

namespace {

const unsigned kRowsPerFetch = 500;
const unsigned kSnapshotsPerFetch = 50;

enum RecordBits { kImageBit = 1, kCopyBit = 2, kFragmentBit = 4, kSnapshotBit = 8 };
const int kInactiveBit = 8;
const int kImageComplete = 3;
const int kCopyComplete = 5;
const int kDataFormatSnapshot = 2;

// Owns a catalog query handle and releases it.
class ImageQuery {
 public:
  ImageQuery() = default;
  ~ImageQuery() {
    if (handle_ != 0) emmlib_ReleaseImageResultHandle(&EmmCid, handle_);
  }
  ImageQuery(const ImageQuery&) = delete;
  ImageQuery& operator=(const ImageQuery&) = delete;
  uint64_t* address() { return &handle_; }
  uint64_t handle() const { return handle_; }

 private:
  uint64_t handle_ = 0;
};

// The filters that do not depend on the catalog's side of the query, with
// their two outcomes: a row that fails a skip filter is passed over as if it
// had not been read; one that fails a pass filter is not printed but still
// counts as the previous row.
struct RowFilters {
  const char* lifecycle;
  const char* destination;
  const int* imageState;
  const short* copyState;
  short lifecycleOnly;
  long version;
  const int* copyType;
  int jobId;
  const char* policy;
  TimeRangeType timeRange;
  long time;

  bool Skips(const Legacy_ImageView& row) const {
    if (policy != nullptr && strcmp(policy, row.image.PolicyName) != 0) return true;
    if (timeRange == TIME_RANGE_BEFORE) return !(row.image.BackupTime < time);
    if (timeRange == TIME_RANGE_AFTER) return row.image.BackupTime < time;
    return false;
  }

  bool Passes(const Legacy_ImageView& row) const {
    const EMM_Image& image = row.image;
    const EMM_ImageCopy& copy = row.copy;
    if (lifecycle != nullptr) {
      if (strcmp(image.SLPName, lifecycle) != 0) return false;
    } else if (jobId > 0) {
      if (copy.JobID != jobId) return false;
    } else if (lifecycleOnly == 1) {
      if (image.SLPName[0] == '\0') return false;
    }

    if (imageState != nullptr) {
      if (*imageState == -1) {
        if ((image.SLPState & ~kInactiveBit) == kImageComplete) return false;
      } else if (*imageState == -2) {
        if ((image.SLPState & kInactiveBit) == 0) return false;
      } else if (image.SLPState != *imageState) {
        return false;
      }
    }

    if ((copyState != nullptr || destination != nullptr || copyType != nullptr) &&
        copy.CopyKey != 0) {
      if (copyState != nullptr) {
        if (*copyState == -1) {
          if (copy.CopyState == kCopyComplete) return false;
        } else if (*copyState == -2) {
          if ((copy.CopyState & kInactiveBit) == 0) return false;
        } else if (copy.CopyState != *copyState) {
          return false;
        }
      } else if (copyType != nullptr && copy.CopyType != *copyType) {
        return false;
      }
      if (destination != nullptr && strcmp(destination, copy.Residence) != 0) return false;
    }

    return version == -1 || image.SLPVersion == version;
  }
};

void PrintImage(LineWriter& out, outputform_e form, const EMM_Image& image) {
  switch (form) {
    case OUTPUT_SHORT: PrintImageShort(out, image); break;
    case OUTPUT_USER: PrintImageUser(out, image); break;
    case OUTPUT_BRIEF: PrintImageBrief(out, image); break;
    default:
      out.Flush();
      fprintf(stderr, "unrecognized output format: %d\n", static_cast<int>(form));
      break;
  }
}

// Prints the row's copy and, for a snapshot copy, the snapshots that belong
// to it; then the row's fragment. `newCopy` is false for the further rows of
// a copy already printed.
void PrintRowRecords(LineWriter& out, outputform_e form, int recordTypes, bool newCopy,
                     const Legacy_ImageView& row, SnapshotTraverser& snapshots) {
  const bool user = form == OUTPUT_USER;
  if (newCopy && row.copy.CopyKey != 0) {
    if (recordTypes & kCopyBit) {
      user ? PrintCopyUser(out, row.copy) : PrintCopyShort(out, row.copy);
    }
    if ((recordTypes & kSnapshotBit) && row.copy.DataFormat == kDataFormatSnapshot) {
      EMM_SnapshotInfo* snap = nullptr;
      for (snapshots.next(snap, &row); snap != nullptr; snapshots.next(snap, &row)) {
        user ? PrintSnapshotUser(out, *snap) : PrintSnapshotShort(out, *snap);
      }
    }
  }
  if ((recordTypes & kFragmentBit) && row.fragment.FragmentKey != 0) {
    user ? PrintFragmentUser(out, row.fragment) : PrintFragmentShort(out, row.fragment);
  }
}

}  // namespace

void List(outputform_e form, const char* lifecycle, const char* destination,
          const char* backupId, const char* client, const char* mediaId,
          const char* storageServer, const char* mediaServer, const int* imageState,
          const short* copyState, const short* fragState, short lifecycleOnly, long version,
          int recordTypes, const int* copyType, int jobId, const char* policy,
          TimeRangeType timeRange, long time) {
  // The catalog knows the incomplete (-1) and inactive (-2) selections as
  // the states 8 and 4.
  int catalogState = 0;
  const int* catalogStateArg = nullptr;
  if (imageState != nullptr) {
    if (*imageState >= 1) {
      catalogState = *imageState;
    } else if (*imageState == -1) {
      catalogState = 8;
    } else if (*imageState == -2) {
      catalogState = 4;
    }
    if (catalogState != 0) catalogStateArg = &catalogState;
  }

  SnapshotTraverser snapshots(EmmCid, MasterServer.c_str(), kSnapshotsPerFetch);
  if (recordTypes & kSnapshotBit) {
    unsigned status = snapshots.initQuery(backupId);
    if (status != 0) {
      PrintMsg(stderr, "SmeSlp0180N", "Error querying snapshot list, status= %d",
               static_cast<int>(status));
    }
  }

  ImageQuery query;
  unsigned status = emmlib_ImageQueryCopyTypeAndFormatExecute(
      &EmmCid, 3, MasterServer.c_str(), backupId, client, mediaId, storageServer, mediaServer,
      0, 0, fragState, 0, 0, catalogStateArg, copyType, 0, -1, lifecycle, query.address());
  if (status != 0) {
    PrintMsg(stderr, "SmeSlp0080N", "Error querying image list, status= %d",
             static_cast<int>(status));
    return;
  }

  // Default-initialized: the rows' pages are touched only as the catalog
  // fills them.
  std::unique_ptr<Legacy_ImageView[]> rows(new Legacy_ImageView[kRowsPerFetch]);
  const RowFilters filters = {lifecycle, destination, imageState, copyState, lifecycleOnly,
                              version,   copyType,    jobId,      policy,    timeRange,
                              time};
  // Records collect here and reach standard output in large writes; the
  // writer is flushed before anything goes to standard error.
  LineWriter out(stdout);
  char previousBackupId[EMM_BACKUPID_SIZE] = "";
  int previousCopy = -1;
  bool anyRows = false;

  for (;;) {
    unsigned count = kRowsPerFetch;
    status = emmlib_ImageQueryFetchRaw(&EmmCid, 3, query.handle(), &count, rows.get());
    if (status != 0 && status != EMMLIB_END_OF_DATA) {
      out.Flush();
      PrintMsg(stderr, "SmeSlp0090N", "Error fetching image list, status= %d",
               static_cast<int>(status));
      break;
    }
    if (count > kRowsPerFetch) count = kRowsPerFetch;
    if (count > 0) anyRows = true;

    for (unsigned i = 0; i < count; ++i) {
      const Legacy_ImageView& row = rows[i];
      if (filters.Skips(row)) continue;
      const bool sameImage = strcmp(row.image.BackupID, previousBackupId) == 0;
      const bool sameCopy = sameImage && row.copy.CopyNumber == previousCopy;
      if (filters.Passes(row)) {
        if (!sameImage) PrintImage(out, form, row.image);
        if (form != OUTPUT_BRIEF) {
          PrintRowRecords(out, form, recordTypes, !sameCopy, row, snapshots);
        }
      }
      if (!sameImage) {
        size_t length = strnlen(row.image.BackupID, EMM_BACKUPID_SIZE - 1);
        memcpy(previousBackupId, row.image.BackupID, length);
        previousBackupId[length] = '\0';
      }
      previousCopy = row.copy.CopyNumber;
    }

    // End of data, or nobody reads the output any more (a closed pipe).
    if (status == EMMLIB_END_OF_DATA || ferror(stdout)) break;
  }

  out.Flush();
  if (!anyRows) {
    PrintMsg(stderr, "SmeSlp0290N", "No images or lifecycles matching criteria found.");
  }
}
