// Removal of the replication-target records of one target machine.
#ifndef CATALOG_REMOVE_REPLICAS_H_
#define CATALOG_REMOVE_REPLICAS_H_

#include <string>

// Deletes the replication-target records of the replication target machine
// `targetMachine` (a machine of type 12, its name matched exactly), only
// those of the volume `targetInfo` unless that is empty, and reports how
// many went. Returns the run's exit status: 0 (also when none matched), 152
// (no machine given), 25 (no database connection), 48 (unknown machine) or
// 130 (a statement failed).
int RemoveReplicas(const std::string& targetMachine, const std::string& targetInfo);

#endif  // CATALOG_REMOVE_REPLICAS_H_
