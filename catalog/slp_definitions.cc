// Reading and indexing the SLP definitions.
#include "catalog/slp_definitions.h"

#include <cstdio>

#include "platform/debuglog.h"
#include "util/message.h"
#include "util/process.h"

bool SlpDefinitions::Read() {
  int status = 0;
  head_ = db_getAllStorageServicesWithAllVersions(&status);
  if (status != 0) {
    logmsg(
        16,
        PrintMsg(stderr, "SmeSlp0850N", "Can't obtain SLP definitions, error status = %d", status),
        progname.c_str());
    return false;
  }
  // The first of two equal definitions wins, as a walk of the list would.
  for (const SS_LIST* s = head_; s != nullptr; s = s->next) {
    byNameAndVersion_.emplace(std::make_pair(std::string(s->name), s->version), s);
  }
  return true;
}

const SS_LIST* SlpDefinitions::Find(const char* name, int version) const {
  auto it = byNameAndVersion_.find(std::make_pair(std::string(name), version));
  return it != byNameAndVersion_.end() ? it->second : nullptr;
}
