// The listing of images with replica copies and their replication targets.
#ifndef CATALOG_LIST_REPLICAS_H_
#define CATALOG_LIST_REPLICAS_H_

#include "util/output_form.h"

// Prints every image of the master server backed up at or after
// `sinceTime` (0: all) that has copies with replication targets: the image
// in `form`, each such copy in the user form (form OUTPUT_USER) or the short
// form (any other), and each copy's targets below it.
void ListReplicas(outputform_e form, int sinceTime);

#endif  // CATALOG_LIST_REPLICAS_H_
