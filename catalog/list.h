// The image listing of the list operation.
#ifndef CATALOG_LIST_H_
#define CATALOG_LIST_H_

#include "util/output_form.h"

// Prints the SLP-managed images matching the filters with, as the record-type
// mask asks (1 images, 2 copies, 4 fragments, 8 snapshots), their copies,
// fragments and snapshots. A null pointer means the option was not given.
void List(outputform_e form, const char* lifecycle, const char* destination, const char* backupId,
          const char* client, const char* mediaId, const char* storageServer,
          const char* mediaServer, const int* imageState, const short* copyState,
          const short* fragState, short lifecycleOnly, long version, int recordTypes,
          const int* copyType, int jobId, const char* policy, TimeRangeType timeRange, long time);

#endif  // CATALOG_LIST_H_
