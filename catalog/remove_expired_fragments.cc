// remove_exp after its confirmation: one call of the catalog library, which
// removes the entries in one statement (all or none).
#include "catalog/remove_expired_fragments.h"

#include <cstdio>

#include "platform/emmlib/emmlib.h"
#include "util/message.h"
#include "util/process.h"

void RemoveExpiredFragments(const char* backupId) {
  // Every copy (0), fragment, media type and media sub-type (-1).
  const unsigned status =
      emmlib_DeleteDeletedImageFragments(&EmmCid, 3, MasterServer.c_str(), backupId, 0, -1, -1, -1);
  if (status != 0) {
    PrintMsg(stderr, "SmeSlp0200N",
             "error removing all entries in deleted fragment list, status= %d",
             static_cast<int>(status));
  }
}
