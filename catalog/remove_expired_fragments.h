// Removal of the catalog's deleted-fragment list.
#ifndef CATALOG_REMOVE_EXPIRED_FRAGMENTS_H_
#define CATALOG_REMOVE_EXPIRED_FRAGMENTS_H_

// Removes the entries of the master server's deleted-fragment list, only
// those of the image `backupId` unless it is null, through the run's catalog
// connection. A failure prints SmeSlp0200N with the catalog's status on
// standard error and removes nothing.
void RemoveExpiredFragments(const char* backupId);

#endif  // CATALOG_REMOVE_EXPIRED_FRAGMENTS_H_
