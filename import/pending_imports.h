// pendimplist and list_import_frags: what the import side still has to do,
// seen from the catalog (images pending import, with their copies and
// fragments) and from the import manager (its queue of fragments).
#ifndef IMPORT_PENDING_IMPORTS_H_
#define IMPORT_PENDING_IMPORTS_H_

// Prints one block per entry of the import manager's queue, header and
// blocks on standard error; failures and an empty queue are messages only.
void ListPendingImportFragments();

#endif  // IMPORT_PENDING_IMPORTS_H_
