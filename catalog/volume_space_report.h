// The volume space report of the showvol operation.
#ifndef CATALOG_VOLUME_SPACE_REPORT_H_
#define CATALOG_VOLUME_SPACE_REPORT_H_

#include "util/output_form.h"

// Prints how the data of the images on one disk volume (selected by media
// id, media server and storage server; null when not given) divides between
// data classifications and between active data and expired data before and
// after its try-to-keep time. The form and the disk type have no effect.
void ShowVolume(outputform_e form, int diskType, const char* mediaId, const char* mediaServer,
                const char* storageServer);

#endif  // CATALOG_VOLUME_SPACE_REPORT_H_
