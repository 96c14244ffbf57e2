// The backlog report. For each of the four unfinished SLP states one image
// query is read as flat rows, 1000 at a time into one buffer reused for every
// batch and state. Rows arrive grouped by image and, within an image, by
// copy, so an image is rolled up when its last row has gone by: its
// incomplete copies (from its copies' states, or for a not-started image
// from its SLP's operations) times its size (the fragments of its first
// copy). Only the pending image and the per-state and per-SLP totals outlive
// a batch.
#include "catalog/backlog_report.h"

#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "catalog/copy_state.h"
#include "catalog/image_query.h"
#include "catalog/slp_definitions.h"
#include "catalog/slp_state.h"
#include "platform/debuglog.h"
#include "util/line_writer.h"

namespace {

const unsigned kRowsPerFetch = 1000;
const int64_t kMiB = 1048576;

struct StateHeading {
  int state;
  const char* heading;
};
const StateHeading kStates[] = {
    {SLP_STATE_NOT_STARTED, "\tNot Started (Storage Lifecycle State: 1):\n\t\tNumber of copies:\t"},
    {SLP_STATE_IN_PROCESS, "\tIn Process (Storage Lifecycle State: 2):\n\t\tNumber of copies:\t"},
    {SLP_STATE_NOT_STARTED_INACTIVE,
     "\tNot Started | Inactive (Storage Lifecycle State: 9):\n\t\tNumber of copies:\t"},
    {SLP_STATE_IN_PROCESS_INACTIVE,
     "\tIn Process | Inactive (Storage Lifecycle State: 10):\n\t\tNumber of copies:\t"},
};
const size_t kStateCount = sizeof kStates / sizeof kStates[0];

struct SLPinfo {
  uint32_t copies = 0;
  int64_t bytes = 0;
};

// What the report needs of the SLP definitions: the number of operations of
// each (name, version), and the names of which some version is inactive.
struct Definitions {
  std::map<std::pair<std::string, int>, int> operations;
  std::set<std::string> inactive;
};

// Reads the SLP definitions; false (after the message) when they cannot be
// read.
bool ReadDefinitions(Definitions* definitions) {
  SlpDefinitions list;
  if (!list.Read()) return false;
  for (const SS_LIST* slp = list.head(); slp != nullptr; slp = slp->next) {
    int count = 0;
    for (const SS_OPERATION* op = slp->operations; op != nullptr; op = op->next) ++count;
    definitions->operations[{slp->name, slp->version}] = count;
    if (slp->flags & SS_FLAG_INACTIVE) definitions->inactive.insert(slp->name);
  }
  return true;
}

// The image whose rows are being read.
struct PendingImage {
  std::string backupId;  // empty: none
  std::string slpName;
  int version = 0;
  int state = 0;
  int firstCopy = 0;
  int previousCopy = 0;
  uint32_t complete = 0;
  uint32_t incomplete = 0;
  int64_t bytes = 0;

  void Count(const EMM_ImageCopy& copy) {
    // A row without a copy stands for an image that has none yet.
    if (copy.CopyKey == 0) return;
    if (CopyIsComplete(copy.CopyState)) {
      ++complete;
    } else {
      ++incomplete;
    }
  }
};

class Rollup {
 public:
  Rollup(const Definitions& definitions, const char* lifecycle, long version)
      : definitions_(definitions), lifecycle_(lifecycle), version_(version) {}

  // Starts a state's images.
  void BeginState() {
    copies_ = 0;
    bytes_ = 0;
  }

  void Row(const Legacy_ImageView& row) {
    if (lifecycle_ != nullptr && strcmp(row.image.SLPName, lifecycle_) != 0) return;
    if (pending_.backupId != row.image.BackupID) {
      Finish();
      pending_.backupId = row.image.BackupID;
      pending_.slpName = row.image.SLPName;
      pending_.version = row.image.SLPVersion;
      pending_.state = row.image.SLPState;
      pending_.firstCopy = pending_.previousCopy = row.copy.CopyNumber;
      pending_.complete = pending_.incomplete = 0;
      pending_.Count(row.copy);
      pending_.bytes = row.fragment.FragmentSize;
    } else if (row.copy.CopyNumber != pending_.previousCopy) {
      pending_.Count(row.copy);
      pending_.previousCopy = row.copy.CopyNumber;
    } else if (row.copy.CopyNumber == pending_.firstCopy) {
      pending_.bytes += row.fragment.FragmentSize;
    }
  }

  // Rolls up the pending image, if there is one.
  void Finish() {
    if (pending_.backupId.empty()) return;
    // Images come in runs of one SLP version: the last lookups are kept.
    if (slp_ == nullptr || pending_.slpName != lastName_ || pending_.version != lastVersion_) {
      lastName_ = pending_.slpName;
      lastVersion_ = pending_.version;
      definition_ = definitions_.operations.find({lastName_, lastVersion_});
      slp_ = nullptr;
    }
    uint32_t incomplete = pending_.incomplete;
    if (definition_ == definitions_.operations.end()) {
      // Thousands of these go out in large writes, still before any other
      // message.
      unknown_.Text("Unknown SLP name <").CatalogText(lastName_.c_str()).Text("> version ");
      unknown_.Int(lastVersion_).Char('\n');
    } else if (definition_->second > 0 && (pending_.state == SLP_STATE_NOT_STARTED ||
                                           pending_.state == SLP_STATE_NOT_STARTED_INACTIVE)) {
      // Copies the SLP defines that have not been made yet count too.
      const uint32_t operations = static_cast<uint32_t>(definition_->second);
      incomplete = operations > pending_.complete ? operations - pending_.complete : 0;
    }
    const bool otherVersion = version_ != -1 && version_ != pending_.version;
    if (!(incomplete != 0 && otherVersion)) {
      if (slp_ == nullptr) slp_ = &table_[lastName_];
      SLPinfo& slp = *slp_;
      slp.copies += incomplete;
      slp.bytes += incomplete * pending_.bytes;
      copies_ += incomplete;
      bytes_ += incomplete * pending_.bytes;
    }
    pending_.backupId.clear();
  }

  uint32_t stateCopies() const { return copies_; }
  int64_t stateBytes() const { return bytes_; }
  const std::map<std::string, SLPinfo>& table() const { return table_; }

 private:
  const Definitions& definitions_;
  const char* lifecycle_;
  long version_;
  PendingImage pending_;
  // The SLP version of the image rolled up last, its definition and its
  // entry of the table (null until the entry is needed).
  std::string lastName_;
  int lastVersion_ = 0;
  std::map<std::pair<std::string, int>, int>::const_iterator definition_;
  SLPinfo* slp_ = nullptr;
  Orvantic::Stashwell::LineWriter unknown_{stderr};  // the "Unknown SLP name" lines
  uint32_t copies_ = 0;
  int64_t bytes_ = 0;
  std::map<std::string, SLPinfo> table_;  // by name, all versions together
};

struct StateTotal {
  uint32_t copies = 0;
  int64_t mebibytes = 0;
};

void Print(const StateTotal (&states)[kStateCount], const std::map<std::string, SLPinfo>& table,
           const Definitions& definitions) {
  printf("\nBacklog of incomplete SLP Copies\n");
  for (size_t i = 0; i < kStateCount; ++i) {
    if (states[i].mebibytes < 1) continue;
    printf("%s%" PRIu32 "\n\t\tTotal expected size\t", kStates[i].heading, states[i].copies);
    if (states[i].mebibytes >= 2) {
      printf("%" PRId64 " MB\n", states[i].mebibytes);
    } else {
      printf(" <1 MB\n");
    }
  }
  printf("\n%-50s%-18s%-7s\n", "SLP Name: (state)", "Number of copies:", "Size:");
  uint32_t totalCopies = 0;
  int64_t totalMebibytes = 0;
  for (const auto& entry : table) {
    const std::string& name = entry.first;
    std::string label = name.size() > 39 ? name.substr(0, 35) + "..." : name;
    label += definitions.inactive.count(name) ? " (inactive)" : " (active)";
    const int64_t mebibytes = entry.second.bytes / kMiB;
    printf("%-50s%14" PRIu32, label.c_str(), entry.second.copies);
    if (mebibytes == 0) {
      printf("%12s MB\n", "<1");
    } else {
      printf("%12" PRId64 " MB\n", mebibytes);
    }
    totalCopies += entry.second.copies;
    totalMebibytes += mebibytes;
  }
  printf("\n%-50s%14" PRIu32 "%12" PRId64 " MB\n\n", "Total:", totalCopies, totalMebibytes);
}

}  // namespace

void LifeCycleReport(outputform_e, const char* lifecycle, long version, const char* client,
                     const char* mediaId, const char* storageServer, const char* mediaServer,
                     const int*) {
  Definitions definitions;
  if (!ReadDefinitions(&definitions)) return;

  // Default-initialized: the rows' pages are touched only as the catalog
  // fills them.
  std::unique_ptr<Legacy_ImageView[]> rows(new Legacy_ImageView[kRowsPerFetch]);
  Rollup rollup(definitions, lifecycle, version);
  StateTotal states[kStateCount];
  bool anyRows = false;

  for (size_t i = 0; i < kStateCount; ++i) {
    const int state = kStates[i].state;
    ImageQuery query;
    unsigned status = emmlib_ImageQueryExecute(&EmmCid, 1, MasterServer.c_str(), nullptr, client,
                                               mediaId, storageServer, mediaServer, 0, 0, 0, 0, 0,
                                               &state, query.address());
    if (status != 0) {
      logmsgv(16, "Error querying image list, status= %u", status);
      return;
    }
    logmsgv(2, "Fetching images with state %d", state);

    rollup.BeginState();
    status = ForEachRowBatch(query, rows.get(), kRowsPerFetch,
                             [&](const Legacy_ImageView* batch, unsigned count) {
                               anyRows = true;
                               logmsgv(2, " Read <%u> image records", count);
                               for (unsigned r = 0; r < count; ++r) rollup.Row(batch[r]);
                               return true;
                             });
    if (status != 0) {
      Orvantic::Stashwell::WritePendingOutput();
      fprintf(stderr, " Error fetching result set <%u>\n", status);
    }
    rollup.Finish();

    states[i].copies = rollup.stateCopies();
    states[i].mebibytes = rollup.stateBytes() / kMiB;
    if (states[i].mebibytes == 0 && rollup.stateBytes() > 0) states[i].mebibytes = 1;
  }

  // The report follows the lines about unknown SLPs.
  Orvantic::Stashwell::WritePendingOutput();
  if (!anyRows) {
    printf("\nNo images to process\n\n");
    return;
  }
  Print(states, rollup.table(), definitions);
}
