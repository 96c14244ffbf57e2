// Writes the demo catalog: machines, data classifications, SLP definitions,
// work groups, the images with their copies, fragments, snapshots and
// replication targets, import notifications, the deleted-fragment list and
// the pending-import queue, all drawn from the tables of demo_model.h with
// one seeded random source.
#ifndef TOOLS_STASHWELL_INIT_DEMO_WRITER_H_
#define TOOLS_STASHWELL_INIT_DEMO_WRITER_H_

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/sqldb/sqldb.h"
#include "tools/stashwell-init/demo_model.h"

namespace demo {

// The rows of one table, written in bulk with their values in column order.
// A bulk load hands no keys back, so the rows of a table that others refer
// to get their keys from here: one more than the table's largest key so far.
// The first failure is recorded in the shared error text when the rows are
// finished.
class Insert {
 public:
  Insert(sqldb::Database* db, std::string* error) : db_(db), error_(error) {}
  ~Insert() { Finish(); }
  // Starts the rows of `table` with `columns`; with `keyColumn` every row
  // gets its key first, in that column.
  void Prepare(const char* table, const char* columns, const char* keyColumn = nullptr);

  Insert& Int(int64_t value);
  Insert& Text(const std::string& value);
  Insert& Blob(const void* data, size_t size);
  Insert& Null();
  // Ends the row of the values given since the last one.
  void Run();
  // The key of the last row, and of the next (tables with a key column).
  int64_t LastKey() const { return key_; }
  int64_t NextKey() const { return key_ + 1; }
  // Ends the rows, recording a failure in the error text.
  void Finish();

 private:
  // Gives the row its key before its first value.
  sqldb::BulkWriter* Row();

  sqldb::Database* db_;
  std::string* error_;
  std::string table_;
  std::unique_ptr<sqldb::BulkWriter> rows_;
  bool keyed_ = false;
  bool rowStarted_ = false;
  int64_t key_ = 0;
};

class DemoWriter {
 public:
  // `windowEnd`: end of the backup window, seconds since the epoch.
  DemoWriter(sqldb::Database* db, int64_t masterKey, long images, unsigned seed, int64_t windowEnd);
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

  sqldb::Database* db_;
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
