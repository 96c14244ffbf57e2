// The SLP definitions of the catalog, every version of every SLP, as the
// reports that check copies against them read them: one owner of the list
// from db_getAllStorageServicesWithAllVersions with the message of a failed
// read, and lookup by name and version.
#ifndef CATALOG_SLP_DEFINITIONS_H_
#define CATALOG_SLP_DEFINITIONS_H_

#include <map>
#include <string>
#include <utility>

#include "platform/emmlib/emmlib.h"

class SlpDefinitions {
 public:
  SlpDefinitions() = default;
  ~SlpDefinitions() { db_freeSS_LISTs(head_); }
  SlpDefinitions(const SlpDefinitions&) = delete;
  SlpDefinitions& operator=(const SlpDefinitions&) = delete;

  // Reads every definition. On failure prints SmeSlp0850N "Can't obtain SLP
  // definitions, error status = <status>" on standard error, logs it at
  // severity 16 and returns false (the list is then empty).
  bool Read();

  // The first definition, in the catalog's order; null when there is none.
  const SS_LIST* head() const { return head_; }
  // Version `version` of the SLP named `name` (exact match), or null.
  const SS_LIST* Find(const char* name, int version) const;

 private:
  SS_LIST* head_ = nullptr;
  std::map<std::pair<std::string, int>, const SS_LIST*> byNameAndVersion_;
};

#endif  // CATALOG_SLP_DEFINITIONS_H_
