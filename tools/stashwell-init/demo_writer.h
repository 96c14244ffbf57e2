// Writes the demo catalog: machines, data classifications, SLP definitions,
// work groups, the images with their copies, fragments, snapshots and
// replication targets, import notifications, the deleted-fragment list and
// the pending-import queue, all drawn from the tables of demo_model.h with
// one seeded random source.
#ifndef TOOLS_STASHWELL_INIT_DEMO_WRITER_H_
#define TOOLS_STASHWELL_INIT_DEMO_WRITER_H_

#include <sqlite3.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/emmlib/sqlite_stmt.h"
#include "tools/stashwell-init/demo_model.h"

namespace demo {

// One prepared INSERT whose values are bound in column order. A failure is
// recorded in the shared error text (the first one wins) and later runs do
// nothing, so that a writer checks once at the end of a loop.
class Insert {
 public:
  Insert(sqlite3* db, std::string* error) : db_(db), error_(error) {}
  // Prepares "INSERT INTO <table> (<columns>) VALUES (?, ...)".
  void Prepare(const char* table, const char* columns);

  Insert& Int(int64_t value);
  Insert& Text(const std::string& value);
  Insert& Blob(const void* data, int size);
  // Runs the statement with the values bound since the last run.
  void Run();
  int64_t LastKey() const { return sqlite3_last_insert_rowid(db_); }

 private:
  sqlite3* db_;
  std::string* error_;
  emm::Statement stmt_;
  int next_ = 1;
};

class DemoWriter {
 public:
  // `windowEnd`: end of the backup window, seconds since the epoch.
  DemoWriter(sqlite3* db, int64_t masterKey, long images, unsigned seed, int64_t windowEnd);
  DemoWriter(const DemoWriter&) = delete;
  DemoWriter& operator=(const DemoWriter&) = delete;

  // Writes everything; false with *error set on the first failure.
  bool Write(std::string* error);

 private:
  struct Client {
    std::string name;
    const ClientKind* kind;
  };

  void WriteMachines();
  void WriteDefinitions();
  void WriteWorkGroups();
  void WriteImages();
  void WriteImage(int64_t backupTime, const Client& client);
  // Writes copy `number` of an image made by operation `op`; returns its key.
  int64_t WriteCopy(int64_t imageKey, int64_t backupTime, const Client& client, int number,
                    const Operation& op, int state, int64_t size, bool deleted);
  void WriteFragments(int64_t copyKey, int64_t backupTime, const Client& client, int number,
                      const StorageUnit& unit, int copyType, int64_t size, bool deleted);
  void WriteSnapshots(int64_t copyKey, int64_t backupTime, const Client& client,
                      const StorageUnit& unit, bool deleted);
  void WriteTargets(int64_t copyKey, int copyType);
  void WriteNotifications();
  void WriteDeletedFragments();
  void WritePendingImports();

  // A random client's backup id at a random time of the window.
  std::string RandomBackupId();
  // The GUID of a remote master (16 bytes, derived from its index).
  static std::string MasterGuid(int remote);

  sqlite3* db_;
  int64_t masterKey_;
  long images_;
  int64_t windowEnd_;
  Random random_;
  std::string error_;
  std::vector<Client> clients_;
  std::map<std::string, int64_t> machineKeys_;
  int workGroups_ = 0;
  int64_t lastJobId_ = 100000;
  Insert image_, copy_, fragment_, snapshot_, target_;
};

}  // namespace demo

#endif  // TOOLS_STASHWELL_INIT_DEMO_WRITER_H_
