// The lifecycle image list of the stlilist operation.
#ifndef CATALOG_LIFECYCLE_IMAGE_LIST_H_
#define CATALOG_LIFECYCLE_IMAGE_LIST_H_

#include "util/output_form.h"

// Prints the SLP-managed images matching the filters, each with those of its
// copies the SLP has not finished, in the short (0) or user (1) form; other
// forms print no images. A null pointer means the option was not given.
// Prints SmeSlp0290N when the catalog has no matching image at all.
void LifeCycleImageList(outputform_e form, const char* lifecycle, const long* version,
                        const char* destination, const char* backupId, const char* client,
                        const char* mediaId, const char* storageServer, const char* mediaServer,
                        const int* imageState, const int* copyType);

#endif  // CATALOG_LIFECYCLE_IMAGE_LIST_H_
