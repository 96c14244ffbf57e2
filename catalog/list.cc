// The image listing: one catalog query over images, copies and fragments,
// read as flat rows 500 at a time into one reused buffer, filtered row by row
// and printed so that every image, copy, fragment and snapshot appears once.
// Only the previous row's backup ID and copy number carry over from one row
// (and one batch) to the next, so memory does not grow with the catalog.
#include "catalog/list.h"

#include <cstdio>
#include <cstring>
#include <memory>

#include "catalog/copy_state.h"
#include "catalog/image_query.h"
#include "catalog/record_printers.h"
#include "catalog/record_types.h"
#include "catalog/slp_state.h"
#include "catalog/snapshot_traverser.h"
#include "platform/emmlib/emmlib.h"
#include "util/message.h"
#include "util/process.h"

using Orvantic::Stashwell::LineWriter;

namespace {

const unsigned kRowsPerFetch = 500;
const unsigned kSnapshotsPerFetch = 50;

const int kDataFormatSnapshot = 2;

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
        if ((image.SLPState & ~SLP_STATE_INACTIVE) == SLP_STATE_COMPLETE) return false;
      } else if (*imageState == -2) {
        if ((image.SLPState & SLP_STATE_INACTIVE) == 0) return false;
      } else if (image.SLPState != *imageState) {
        return false;
      }
    }

    if ((copyState != nullptr || destination != nullptr || copyType != nullptr) &&
        copy.CopyKey != 0) {
      if (copyState != nullptr) {
        if (*copyState == -1) {
          if (copy.CopyState == COPY_STATE_COPYCOMPLETE) return false;
        } else if (*copyState == -2) {
          if ((copy.CopyState & COPY_STATE_INACTIVE) == 0) return false;
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

// Prints the row's copy and, for a snapshot copy, the snapshots that belong
// to it; then the row's fragment. `newCopy` is false for the further rows of
// a copy already printed.
void PrintRowRecords(LineWriter& out, outputform_e form, int recordTypes, bool newCopy,
                     const Legacy_ImageView& row, SnapshotTraverser& snapshots) {
  const bool user = form == OUTPUT_USER;
  if (newCopy && row.copy.CopyKey != 0) {
    if (recordTypes & RECORD_TYPE_COPY) {
      user ? PrintCopyUser(out, row.copy) : PrintCopyShort(out, row.copy);
    }
    if ((recordTypes & RECORD_TYPE_SNAPSHOT) && row.copy.DataFormat == kDataFormatSnapshot) {
      EMM_SnapshotInfo* snap = nullptr;
      for (snapshots.next(snap, &row); snap != nullptr; snapshots.next(snap, &row)) {
        user ? PrintSnapshotUser(out, *snap) : PrintSnapshotShort(out, *snap);
      }
    }
  }
  if ((recordTypes & RECORD_TYPE_FRAGMENT) && row.fragment.FragmentKey != 0) {
    user ? PrintFragmentUser(out, row.fragment) : PrintFragmentShort(out, row.fragment);
  }
}

}  // namespace

void List(outputform_e form, const char* lifecycle, const char* destination, const char* backupId,
          const char* client, const char* mediaId, const char* storageServer,
          const char* mediaServer, const int* imageState, const short* copyState,
          const short* fragState, short lifecycleOnly, long version, int recordTypes,
          const int* copyType, int jobId, const char* policy, TimeRangeType timeRange, long time) {
  int catalogState = 0;
  const int* catalogStateArg = CatalogImageState(imageState, &catalogState);

  SnapshotTraverser snapshots(EmmCid, MasterServer.c_str(), kSnapshotsPerFetch);
  if (recordTypes & RECORD_TYPE_SNAPSHOT) {
    unsigned status = snapshots.initQuery(backupId);
    if (status != 0) {
      PrintMsg(stderr, "SmeSlp0180N", "Error querying snapshot list, status= %d",
               static_cast<int>(status));
    }
  }

  ImageQuery query;
  if (!ImageQueryStarted(emmlib_ImageQueryCopyTypeAndFormatExecute(
          &EmmCid, 3, MasterServer.c_str(), backupId, client, mediaId, storageServer, mediaServer,
          0, 0, fragState, 0, 0, catalogStateArg, copyType, 0, -1, lifecycle, query.address()))) {
    return;
  }

  // Default-initialized: the rows' pages are touched only as the catalog
  // fills them.
  std::unique_ptr<Legacy_ImageView[]> rows(new Legacy_ImageView[kRowsPerFetch]);
  const RowFilters filters = {lifecycle, destination, imageState, copyState, lifecycleOnly, version,
                              copyType,  jobId,       policy,     timeRange, time};
  // Records collect here and reach standard output in large writes; the
  // writer is flushed before anything goes to standard error.
  LineWriter out(stdout);
  char previousBackupId[EMM_BACKUPID_SIZE] = "";
  int previousCopy = -1;
  bool anyRows = false;

  unsigned status = ForEachRowBatch(
      query, rows.get(), kRowsPerFetch, [&](const Legacy_ImageView* batch, unsigned count) {
        anyRows = true;
        for (unsigned i = 0; i < count; ++i) {
          const Legacy_ImageView& row = batch[i];
          if (filters.Skips(row)) continue;
          const bool sameImage = strcmp(row.image.BackupID, previousBackupId) == 0;
          const bool sameCopy = sameImage && row.copy.CopyNumber == previousCopy;
          if (filters.Passes(row)) {
            if (!sameImage) PrintImageInForm(out, form, row.image);
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
        // Nobody reads the output any more (a closed pipe): stop.
        return !ferror(stdout);
      });
  if (status != 0) {
    out.Flush();
    PrintImageFetchError(status);
  }

  out.Flush();
  if (!anyRows) {
    PrintMsg(stderr, "SmeSlp0290N", "No images or lifecycles matching criteria found.");
  }
}
