// Server types of disk volumes, found through the disk service manager: by
// a volume's disk media id (MediaIdToStype), or first the disk media id from
// an image fragment's legacy disk facts (LegacyToMediaId). Both keep what
// they found for the rest of the run, so a report over many fragments makes
// one remote call per distinct volume.
#ifndef REMOTE_DISK_LOOKUP_H_
#define REMOTE_DISK_LOOKUP_H_

#include <string>

// The server type name of the volume with `diskMediaId`, or "Unknown" when
// the service knows no such volume (not remembered, so asked again next
// time). Remote failures go through the exception ladder ("dsm") and end the
// run.
std::string MediaIdToStype(const std::string& diskMediaId);

// The disk media id of the volume a fragment with these legacy facts lives
// on, or "" when the service finds none (not remembered). The server type
// name sent is "BasicDisk" for sub-type 1, "NearStore" for 2, "DiskPool" for
// 6; any other sub-type prints SmeSlp0030N and sends "". Found volumes are
// remembered by (media id, media server, storage server), and their server
// type by disk media id for MediaIdToStype. Remote failures go through the
// exception ladder ("dsm") and end the run.
std::string LegacyToMediaId(short mediaSubType, const std::string& mediaId,
                            const std::string& mediaServer, const std::string& storageServer);

#endif  // REMOTE_DISK_LOOKUP_H_
