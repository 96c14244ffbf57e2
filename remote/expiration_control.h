// The expiration manager's operations: diskfull, initiate_exp, update_hwm,
// update_pfs, query_exp and deletedone. Each resolves the expiration
// manager, makes one call inside the exception ladder ("cyclesvc") and
// prints what it answers; the values are passed through unchanged. The
// exit status is 0, unless an exception ends the run with -1. When the
// expiration manager cannot be reached or narrowed, its message is printed
// and nothing else happens.
#ifndef REMOTE_EXPIRATION_CONTROL_H_
#define REMOTE_EXPIRATION_CONTROL_H_

#include <cstdint>
#include <string>

// The disk and volume facts the operations pass on.
struct VolumeFacts {
  std::string mediaServer;
  std::string storageServer;
  std::string volumeId;
  std::string mediaId;
  std::string diskPool;
  int diskType = 0;
};

// InitiateExpiration; a non-zero status r prints
// "Initiate Expiration return value = <r>" on standard error.
void InitiateExpire(const VolumeFacts& volume);

// HwmUpdate; a non-zero status r prints
// "high watermark update return value = <r>" on standard error.
void UpdateHwm(const std::string& mediaServer, const std::string& storageServer,
               const std::string& mediaId, const std::string& stsSubtype, int64_t totalCapacity,
               int64_t usedCapacity);

// UpdatePotentialFreeSpace; a non-zero status r prints
// "update potential free space return value = <r>" on standard error.
void UpdatePotentialFreeSpace(const VolumeFacts& volume);

// DiskfullExpiration of the normal type; prints the status with its text,
// the expiration id and the expired space on standard output.
void DiskfullExpiration(const VolumeFacts& volume, int64_t totalCapacity, int64_t usedSpace);

// QueryExpiration; prints the status and the operation status with their
// texts and the expired space on standard output.
void QueryExpiration(int expirationId);

// DeletionDone; prints the status with its text on standard output.
void DeletionDone(int expirationId);

#endif  // REMOTE_EXPIRATION_CONTROL_H_
