// The import confirmation report of list_import_conf: copies replicated to
// another master that still wait for that master to confirm their import.
#ifndef IMPORT_IMPORT_CONF_REPORT_H_
#define IMPORT_IMPORT_CONF_REPORT_H_

#include <jansson.h>

#include "catalog/image_copy_record.h"
#include "util/output_form.h"

// Prints the copies in state IMPORT_PENDING, longest waiting first: those
// of SLP `lifecycle` when it is not null, and unless `allPendingImages` only
// those whose last retry lies longer ago than ImportConfThreshold. A copy is
// reported only when the SLP version it was made under has an operation at
// the copy's SLP index, with destination `destination` and target domain
// `targetDomain` when they are not null. Returns 0 (also when nothing
// matched), 25 when the catalog cannot be reached, 130 when the SLP
// definitions or the query fail, or the status of a failed fetch; every
// failure has been reported on standard error.
int ListImportConfReport(outputform_e form, const char* lifecycle, const char* destination,
                         const char* targetDomain, bool allPendingImages);

// The row's line (BackupID, copy number, last retry time, SLP name and
// version) and its user-form block on standard output.
void PrintImportConfShort(const image_copy_record& row);
void PrintImportConfUser(const image_copy_record& row);
// Appends the row's object to `array`; nothing when it cannot be made.
void JsonFormatImportConf(const image_copy_record& row, json_t* array);

#endif  // IMPORT_IMPORT_CONF_REPORT_H_
