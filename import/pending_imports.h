// pendimplist and list_import_frags: what the import side still has to do,
// seen from the catalog (images pending import, with their copies and
// fragments) and from the import manager (its queue of fragments).
#ifndef IMPORT_PENDING_IMPORTS_H_
#define IMPORT_PENDING_IMPORTS_H_

#include "util/output_form.h"

// Prints the images the catalog holds as pending import (those whose first
// copy is cancelled left out) in `form`, each with its copies and their
// fragments; `sinceTime` is handed to the catalog's query. Failures and an
// empty result are messages on standard error.
void ListPendingImportImages(outputform_e form, int sinceTime);

// Prints one block per entry of the import manager's queue, header and
// blocks on standard error; failures and an empty queue are messages only.
void ListPendingImportFragments();

#endif  // IMPORT_PENDING_IMPORTS_H_
