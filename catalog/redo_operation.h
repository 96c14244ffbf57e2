// The redo of one SLP operation of an image.
#ifndef CATALOG_REDO_OPERATION_H_
#define CATALOG_REDO_OPERATION_H_

// Makes the SLP service perform again the operation that made the copy with
// SLP index `slpIndex` of the image `backupId`: that copy goes back to not
// started, the copy it is made from to job complete and the image to in
// process. Only replication to a remote master can be redone. Prints
// nothing on success; every failure is a message on standard error, and the
// checks come before the first change.
void RedoOperation(const char* backupId, int slpIndex);

#endif  // CATALOG_REDO_OPERATION_H_
