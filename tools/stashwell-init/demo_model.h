// The demo catalog's model: the constant tables it is drawn from (clients,
// storage units, SLPs, classifications, machines, SLP state mixes) and the
// seeded random source, so that one seed always gives the same catalog.
#ifndef TOOLS_STASHWELL_INIT_DEMO_MODEL_H_
#define TOOLS_STASHWELL_INIT_DEMO_MODEL_H_

#include <cstdint>

namespace demo {

// Images lie in the 90 days before the end of the demo's backup window, the
// time the root is made unless one is given: a seed gives the same catalog
// for the same window end.
constexpr int64_t kWindowSeconds = 90 * 86400;
constexpr int64_t kDay = 86400;

// Copy types, copy states and image SLP states used by the tables.
enum CopyType {
  BACKUP = 0,
  DUPLICATE = 1,
  SNAPSHOT = 2,
  REPLICATE_TO_REMOTE = 3,
  IMPORT = 4,
  BACKUP_FROM_SNAPSHOT = 5,
  INDEX_FROM_SNAPSHOT = 6,
  REPLICATION = 7,
  CLOUD_SNAPSHOT_REPLICATION = 8,
  CLOUD_SNAPSHOT_INDEX = 9
};

// A storage unit: where the copies of an operation go and what their
// fragments look like. Media ids are `mediaPrefix` and a number below
// `mediaCount` (1: the prefix alone, a disk volume).
struct StorageUnit {
  const char* name;
  int mediaType;     // 0 disk, 2 removable (tape)
  int mediaSubType;  // 0 default, 1 basic, 4 array disk, 5 dedup store, 6 dynamic
  const char* storageServer;
  const char* mediaServer;
  const char* mediaPrefix;
  int mediaCount;
  int maxFragments;
  const char* description;
};
extern const StorageUnit kStorageUnits[];
extern const int kStorageUnitCount;
// The storage unit named `name`, or null (a copy held by a remote master).
const StorageUnit* FindStorageUnit(const char* name);

// One operation of a demo SLP.
struct Operation {
  int copyType;
  const char* destination;  // a storage unit, or "*Remote*Master*"
  const char* targetDomain;
  int retentionType;  // 0 fixed, 1 capacity managed, 2 expire after copy, ...
  int retentionDays;
};

struct Slp {
  const char* name;
  const char* classification;  // a classification id
  int versions;
  int inactiveVersions;  // bit v set: version v carries the inactive flag
  int weight;            // share of managed images
  int operationCount;
  Operation operations[3];
};
extern const Slp kSlps[];
extern const int kSlpCount;
// The SLP of images replicated in from another master.
extern const Slp kImportSlp;

struct Classification {
  const char* id;
  const char* name;
  int rank;
};
extern const Classification kClassifications[];
extern const int kClassificationCount;

// Kinds of clients: host-name prefix, how many hosts, client type, policy
// and data format of their copies.
struct ClientKind {
  const char* prefix;
  int hosts;
  int clientType;
  const char* policy;
  int dataFormat;
};
extern const ClientKind kClientKinds[];
extern const int kClientKindCount;

// Machines besides this master: media servers, remote masters and
// replication targets (type 12), with the machine they belong to (null: this
// master, or themselves for a remote master).
struct Machine {
  const char* name;
  int type;
  const char* parent;
};
extern const Machine kMachines[];
extern const int kMachineCount;
extern const char* const kRemoteMasters[];
extern const int kRemoteMasterCount;

// How images divide between SLP states (weights in per mille). `kind` tells
// the generator which copy pattern to make.
enum class ImageKind {
  kUnmanaged,
  kComplete,
  kInProcess,
  kNotStarted,
  kDeleted,
  kImported,
  kPendingImport
};
struct StateShare {
  int perMille;
  ImageKind kind;
  int state;  // SLP state without the inactive bit
  bool inactive;
};
extern const StateShare kStateShares[];
extern const int kStateShareCount;

// Deterministic random numbers (splitmix64).
class Random {
 public:
  explicit Random(uint64_t seed) : state_(seed * 0x9E3779B97F4A7C15ull + 0x632BE59BD9B4E019ull) {}
  uint64_t Next() {
    uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
  }
  // A number in [0, n); 0 when n <= 0.
  int64_t Below(int64_t n) { return n <= 0 ? 0 : static_cast<int64_t>(Next() % n); }
  // A number in [lo, hi].
  int64_t Between(int64_t lo, int64_t hi) { return lo + Below(hi - lo + 1); }
  bool Percent(int p) { return Below(100) < p; }

 private:
  uint64_t state_;
};

}  // namespace demo

#endif  // TOOLS_STASHWELL_INIT_DEMO_MODEL_H_
