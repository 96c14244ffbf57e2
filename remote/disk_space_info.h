// The disk-space report of the diskspaceinfo operation.
#ifndef REMOTE_DISK_SPACE_INFO_H_
#define REMOTE_DISK_SPACE_INFO_H_

// Adds up the sizes of the catalog's disk fragments by the server type of
// the volume each lives on (asked of the disk service manager once per
// volume) and prints the totals in name order, or with `serverType` (null:
// not given) only that type's total. Returns 0; a failed catalog query or
// fetch prints its message and returns 0 without totals. Remote failures go
// through the exception ladder and end the run.
int DiskSpaceInfo(const char* serverType);

#endif  // REMOTE_DISK_SPACE_INFO_H_
