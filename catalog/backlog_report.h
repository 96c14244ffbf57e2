// The backlog report of the report operation.
#ifndef CATALOG_BACKLOG_REPORT_H_
#define CATALOG_BACKLOG_REPORT_H_

#include "util/output_form.h"

// Prints how many copies of the images not yet fully processed (SLP states
// not started and in process, active or inactive) are still to be made and
// how much data that is, per state and per SLP. `version` -1 and null
// pointers select all. The form and the copy type have no effect.
void LifeCycleReport(outputform_e form, const char* lifecycle, long version, const char* client,
                     const char* mediaId, const char* storageServer, const char* mediaServer,
                     const int* copyType);

#endif  // CATALOG_BACKLOG_REPORT_H_
