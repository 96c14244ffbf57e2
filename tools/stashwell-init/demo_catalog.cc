// FillDemoCatalog and the demo records other than images: machines,
// classifications, SLP definitions, work groups, notifications, the
// deleted-fragment list and the pending-import queue.
#include <cstring>
#include <string>
#include <vector>

#include "tools/stashwell-init/catalog_db.h"
#include "tools/stashwell-init/catalog_setup.h"
#include "tools/stashwell-init/demo_writer.h"

namespace demo {

void Insert::Prepare(const char* table, const char* columns, const char* keyColumn) {
  Finish();
  table_ = table;
  keyed_ = keyColumn != nullptr;
  if (keyed_) {
    const std::unique_ptr<sqldb::Statement> largest =
        db_->Prepare(std::string("SELECT COALESCE(MAX(") + keyColumn + "), 0) FROM " + table);
    key_ = largest && largest->Step() == sqldb::Code::kRow ? largest->CurrentRow().Int64(0) : 0;
  }
  rows_ = db_->Bulk(table, keyed_ ? (std::string(keyColumn) + ", " + columns).c_str() : columns);
}

sqldb::BulkWriter* Insert::Row() {
  if (!rowStarted_) {
    rowStarted_ = true;
    if (keyed_) rows_->Int64(++key_);
  }
  return rows_.get();
}

Insert& Insert::Int(int64_t value) {
  Row()->Int64(value);
  return *this;
}

Insert& Insert::Text(const std::string& value) {
  Row()->Text(value);
  return *this;
}

Insert& Insert::Blob(const void* data, size_t size) {
  Row()->Blob(data, size);
  return *this;
}

Insert& Insert::Null() {
  Row()->Null();
  return *this;
}

void Insert::Run() {
  Row()->EndRow();
  rowStarted_ = false;
}

void Insert::Finish() {
  if (!rows_) return;
  if (rows_->Finish() != sqldb::Code::kOk && error_->empty()) {
    *error_ = table_ + ": " + db_->LastError();
  }
  rows_.reset();
}

DemoWriter::DemoWriter(sqldb::Database* db, int64_t masterKey, long images, unsigned seed,
                       int64_t windowEnd)
    : db_(db),
      masterKey_(masterKey),
      images_(images),
      windowEnd_(windowEnd),
      random_(seed),
      image_(db, &error_),
      copy_(db, &error_),
      fragment_(db, &error_),
      snapshot_(db, &error_),
      target_(db, &error_) {
  for (int k = 0; k < kClientKindCount; ++k) {
    for (int h = 1; h <= kClientKinds[k].hosts; ++h) {
      char name[64];
      snprintf(name, sizeof name, "%s%03d.example.com", kClientKinds[k].prefix, h);
      clients_.push_back({name, &kClientKinds[k]});
    }
  }
  workGroups_ = 12 + static_cast<int>(images / 20000);
}

bool DemoWriter::Write(std::string* error) {
  WriteMachines();
  WriteDefinitions();
  WriteWorkGroups();
  WriteImages();
  WriteNotifications();
  WriteDeletedFragments();
  WritePendingImports();
  if (!error_.empty()) *error = "demo data: " + error_;
  return error_.empty();
}

void DemoWriter::WriteMachines() {
  Insert machine(db_, &error_);
  machine.Prepare("EMM_Machine", "ParentKey, MachinePrimaryName, MachineSwuType", "MachineKey");
  for (int i = 0; i < kMachineCount; ++i) {
    const Machine& m = kMachines[i];
    // A remote master is its own parent: its key is the one being assigned.
    int64_t parent = masterKey_;
    if (m.parent != nullptr) {
      auto it = machineKeys_.find(m.parent);
      parent = it != machineKeys_.end() ? it->second : machine.NextKey();
    }
    machine.Int(parent).Text(m.name).Int(m.type).Run();
    machineKeys_[m.name] = machine.LastKey();
  }
}

void DemoWriter::WriteDefinitions() {
  Insert classification(db_, &error_);
  classification.Prepare("EMM_DataClassification", "ClassificationID, Name, Rank, Description");
  for (int i = 0; i < kClassificationCount; ++i) {
    const Classification& c = kClassifications[i];
    classification.Text(c.id)
        .Text(c.name)
        .Int(c.rank)
        .Text(std::string(c.name) + " protection level")
        .Run();
  }
  Insert slp(db_, &error_);
  slp.Prepare("SLP_StorageService",
              "StorageServiceName, VersionNumber, Flags, ClassificationID, CreatedDateTime",
              "StorageServiceKey");
  Insert operation(db_, &error_);
  operation.Prepare("SLP_StorageServiceOperation",
                    "StorageServiceKey, OperationIndex, SourceIndex, CopyType, Destination,"
                    " TargetDomain, RetentionType, RetentionLevel");
  std::vector<const Slp*> all;
  for (int i = 0; i < kSlpCount; ++i) all.push_back(&kSlps[i]);
  all.push_back(&kImportSlp);
  for (const Slp* s : all) {
    for (int v = 1; v <= s->versions; ++v) {
      // The first version of Snapshot_Protect was deleted while images still
      // name it: the reports meet an SLP missing from the definitions.
      if (strcmp(s->name, "Snapshot_Protect") == 0 && v == 1) continue;
      const int flags = (s->inactiveVersions & (1 << v)) != 0 ? 8 : 0;
      const int64_t created = windowEnd_ - kWindowSeconds - (s->versions - v + 1) * 30 * kDay;
      slp.Text(s->name).Int(v).Int(flags).Text(s->classification).Int(created).Run();
      const int64_t key = slp.LastKey();
      for (int o = 0; o < s->operationCount; ++o) {
        const Operation& op = s->operations[o];
        operation.Int(key)
            .Int(o + 1)
            .Int(o == 0 ? 0 : 1)
            .Int(op.copyType)
            .Text(op.destination)
            .Text(op.targetDomain)
            .Int(op.retentionType)
            .Int(op.retentionDays / 30)
            .Run();
      }
    }
  }
}

void DemoWriter::WriteWorkGroups() {
  Insert group(db_, &error_);
  group.Prepare("SLP_WorkGroup",
                "WorkGroupID, HasSingleSLPImages, SLPName, SLPVersionNumber, PrimaryCopyNumber,"
                " IsFrozen, SrcCopyNumber, SrcMediaType, SrcMediaSubType, SrcAltReadHost,"
                " SrcServerType, SrcStorageServer, SrcParentID, SrcMediaId, IsTargetPreserveMPX,"
                " IsTargetMirror, TargetPriority, TargetNumberCopies, PolicyName, SchedName,"
                " SchedType, WindowCloseOptions, TargetMasterServer, TargetStorageServer,"
                " TargetVolume, TargetImportSLP, ImageBlockSize, CreatedDateTime",
                "WorkGroupKey");
  Insert target(db_, &error_);
  target.Prepare("SLP_TargetCopyInfo",
                 "WorkGroupKey, CopyNumber, SLPIndex, Flags, RetentionLevel, Residence,"
                 " VolumePool, ServerGroup, DestTag");
  static const char* const kWindowOptions[] = {"", "SUSPEND", "CANCEL"};
  for (int i = 0; i < workGroups_; ++i) {
    const Slp& slp = kSlps[i % kSlpCount];
    const int id = 1 + i % 14;
    const bool crossMaster = id >= 4 && id <= 6;  // the O.X.R. kinds
    const StorageUnit* source = FindStorageUnit(slp.operations[0].destination);
    const Client& client = clients_[random_.Below(static_cast<int64_t>(clients_.size()))];
    const char* remote = kRemoteMasters[i % kRemoteMasterCount];
    group.Int(id)
        .Int(random_.Below(2))
        .Text(slp.name)
        .Int(1 + random_.Below(slp.versions))
        .Int(1)
        .Int(random_.Percent(10) ? 1 : 0)
        .Int(1)
        .Int(source->mediaType)
        .Int(source->mediaSubType)
        .Text(random_.Percent(30) ? "ms2.example.com" : "")
        .Text(source->mediaType == 0 ? "DedupeStore" : "")
        .Text(source->storageServer)
        .Text("")
        .Text(source->mediaPrefix)
        .Int(random_.Below(2))
        .Int(0)
        .Int(random_.Below(100))
        .Int(1 + random_.Below(2))
        .Text(client.kind->policy)
        .Text(random_.Percent(25) ? "Full" : "Incr")
        .Int(random_.Percent(25) ? 0 : 1)
        .Text(kWindowOptions[random_.Below(3)])
        .Text(crossMaster ? remote : "")
        .Text(crossMaster ? "remote1-dd.example.com" : "")
        .Text(crossMaster ? "remote_pool_vol1" : "")
        .Text(crossMaster ? kImportSlp.name : "")
        .Int(262144)
        .Int(windowEnd_ - random_.Below(7 * kDay))
        .Run();
    const int64_t key = group.LastKey();
    // The first work group has no target copy, the second has three.
    const int targets = i == 0 ? 0 : i == 1 ? 3 : static_cast<int>(random_.Between(1, 2));
    for (int t = 0; t < targets; ++t) {
      const Operation& op = slp.operations[(t + 1) % slp.operationCount];
      target.Int(key)
          .Int(2 + t)
          .Int(2 + t)
          .Int(random_.Below(8))
          .Int(random_.Below(25))
          .Text(op.destination)
          .Text(random_.Percent(50) ? "stash_pool" : "dr_pool")
          .Text(random_.Percent(30) ? "ms_group1" : "")
          .Text(random_.Percent(20) ? "dr-tag" : "")
          .Run();
    }
  }
}

void DemoWriter::WriteNotifications() {
  Insert in(db_, &error_);
  in.Prepare("SLP_InNotifications",
             "ClientMachineName, BackupTime, SourceImageKey, NotificationType, FromHostName,"
             " FromHostMachineId, FromHostSWVersion, ErrorCode, ErrorString, CreatedDateTime");
  Insert out(db_, &error_);
  out.Prepare("SLP_OutNotifications",
              "ClientMachineName, BackupTime, SourceImageKey, NotificationType,"
              " DestinationHostName, ErrorCode, ErrorString, RetryCount, LastRetryTime,"
              " CreatedDateTime");
  static const struct {
    int code;
    const char* text;
  } kErrors[] = {{191, "image import failed on the target master"},
                 {2074, "disk volume is down"},
                 {227, "no entity was found"}};
  const int count = 6 + static_cast<int>(images_ / 1000);
  for (int i = 0; i < count; ++i) {
    const int type = 1 + i % 3;  // 1 announced, 2 confirmation, 3 error
    const int remote = i % kRemoteMasterCount;
    const auto& err = kErrors[random_.Below(3)];
    const int64_t backupTime = windowEnd_ - random_.Below(kWindowSeconds);
    const std::string guid = MasterGuid(remote);
    in.Text(clients_[random_.Below(static_cast<int64_t>(clients_.size()))].name)
        .Int(backupTime)
        .Int(1 + random_.Below(5000000))
        .Int(type)
        .Text(kRemoteMasters[remote])
        .Blob(guid.data(), 16)
        .Int(910000)
        .Int(type == 3 ? err.code : 0)
        .Text(type == 3 ? err.text : "")
        .Int(backupTime + random_.Between(600, 7200))
        .Run();
  }
  for (int i = 0; i < count; ++i) {
    const int type = 1 + i % 3;
    const auto& err = kErrors[random_.Below(3)];
    const int64_t backupTime = windowEnd_ - random_.Below(kWindowSeconds);
    const int retries = static_cast<int>(random_.Below(6));
    const int64_t created = backupTime + random_.Between(600, 7200);
    out.Text(clients_[random_.Below(static_cast<int64_t>(clients_.size()))].name)
        .Int(backupTime)
        .Int(1 + random_.Below(5000000))
        .Int(type)
        .Text(kRemoteMasters[i % kRemoteMasterCount])
        .Int(type == 3 ? err.code : 0)
        .Text(type == 3 ? err.text : "")
        .Int(retries)
        .Int(created + retries * 1800)
        .Int(created)
        .Run();
  }
}

void DemoWriter::WriteDeletedFragments() {
  Insert deleted(db_, &error_);
  deleted.Prepare("DBM_DeletedFragment",
                  "MasterServerKey, BackupID, CopyNumber, FragmentNumber, MediaID, MediaServer,"
                  " StorageServer, MediaType, MediaSubType, FragmentSize, CreatedDateTime");
  const int count = 3 + static_cast<int>(images_ / 200);
  for (int i = 0; i < count; ++i) {
    const StorageUnit& unit = kStorageUnits[random_.Below(3)];  // the disk units
    deleted.Int(masterKey_)
        .Text(RandomBackupId())
        .Int(1 + random_.Below(2))
        .Int(1 + random_.Below(2))
        .Text(unit.mediaPrefix)
        .Text(unit.mediaServer)
        .Text(unit.storageServer)
        .Int(unit.mediaType)
        .Int(unit.mediaSubType)
        .Int(random_.Between(1 << 20, 1ll << 36))
        .Int(windowEnd_ - random_.Below(kWindowSeconds))
        .Run();
  }
}

void DemoWriter::WritePendingImports() {
  Insert pending(db_, &error_);
  pending.Prepare("SLP_PendingImport",
                  "BackupID, CopyNumber, MediaServer, LSUName, StorageServerName,"
                  " StorageServerType, MediaID, FragmentDescription, OriginMasterServer,"
                  " SLPName, ImportStatus, CreatedDateTime");
  const int count = 4 + static_cast<int>(images_ / 1000);
  for (int i = 0; i < count; ++i) {
    const std::string backupId = RandomBackupId();
    pending.Text(backupId)
        .Int(1)
        .Text("ms1.example.com")
        .Text("remote_import_lsu1")
        .Text("dd1.example.com")
        .Text("DedupeStore")
        .Text("dd1_pool1_vol1")
        .Text(backupId + "_C1_F1")
        .Text(kRemoteMasters[i % kRemoteMasterCount])
        .Text(kImportSlp.name)
        .Int(i % 6)
        .Int(windowEnd_ - random_.Below(kWindowSeconds))
        .Run();
  }
}

std::string DemoWriter::RandomBackupId() {
  return clients_[random_.Below(static_cast<int64_t>(clients_.size()))].name + "_" +
         std::to_string(windowEnd_ - random_.Below(kWindowSeconds));
}

std::string DemoWriter::MasterGuid(int remote) {
  std::string guid(16, '\0');
  for (int i = 0; i < 16; ++i) guid[i] = static_cast<char>(0x10 * (remote + 1) + i);
  return guid;
}

}  // namespace demo

namespace {

// The secondary indexes of the bulk tables, each as its name and the
// statement that creates it: set aside while the demo images are written and
// built again afterwards, which is much faster than keeping them up to date
// row by row. Primary keys stay: their keys arrive in order. On PostgreSQL
// the indexes whose keys also arrive in order (images come in backup-time
// order, children after their parent) stay as well: the server appends to
// them for less than it takes to build them again (docs/performance.md).
const char kBulkIndexesSqlite[] =
    "SELECT '\"' || name || '\"', sql FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL"
    " AND tbl_name IN ('DBM_Image', 'DBM_ImageCopy', 'DBM_ImageFragment', 'DBM_ImageSnapshot',"
    " 'DBM_ImageReplicationDestination')";
const char kBulkIndexesPostgres[] =
    "SELECT n.nspname || '.' || c.relname, pg_get_indexdef(x.indexrelid) FROM pg_index x"
    " JOIN pg_class c ON c.oid = x.indexrelid JOIN pg_class t ON t.oid = x.indrelid"
    " JOIN pg_namespace n ON n.oid = t.relnamespace WHERE NOT x.indisprimary"
    " AND n.nspname = 'dbm_main' AND t.relname IN ('dbm_image', 'dbm_imagecopy',"
    " 'dbm_imagefragment', 'dbm_imagesnapshot', 'dbm_imagereplicationdestination')"
    " AND c.relname NOT IN ('dbm_image_listing', 'dbm_imagecopy_image', 'dbm_imagefragment_copy',"
    " 'dbm_imagesnapshot_copy', 'dbm_imagereplicationdestination_copy')";

// The key of the master server `master` in the catalog; -1 when it is not
// recorded.
int64_t MasterKey(sqldb::Database* db, const std::string& master) {
  const std::unique_ptr<sqldb::Statement> lookup = db->Prepare(
      "SELECT MachineKey FROM EMM_MachineAlias WHERE MachineSwuType IN (3, 5)"
      " AND UPPER(MachineAliasName) = UPPER(?)");
  if (!lookup || lookup->BindText(1, master) != sqldb::Code::kOk ||
      lookup->Step() != sqldb::Code::kRow) {
    return -1;
  }
  return lookup->CurrentRow().Int64(0);
}

// Sets the bulk tables' secondary indexes aside inside the load's
// transaction: the statements that drop them in *drop and those that build
// them again in *restore.
void IndexesSetAside(sqldb::Database* db, std::string* drop, std::string* restore) {
  const std::unique_ptr<sqldb::Statement> indexes = db->Prepare(
      db->engine() == sqldb::Engine::kSqlite ? kBulkIndexesSqlite : kBulkIndexesPostgres);
  while (indexes && indexes->Step() == sqldb::Code::kRow) {
    const sqldb::Row& row = indexes->CurrentRow();
    drop->append("DROP INDEX ").append(row.Bytes(0)).append(";");
    restore->append(row.Bytes(1)).append(";");
  }
}

}  // namespace

bool FillDemoCatalog(const sqldb::Location& where, const std::string& master, long images,
                     unsigned seed, int64_t now, std::string* error) {
  if (images < 0) {
    *error = "the number of demo images must not be negative";
    return false;
  }
  CatalogDb db;
  if (!db.Open(where, /*create=*/false, error)) return false;
  const int64_t masterKey = MasterKey(db.get(), master);
  if (masterKey < 0) {
    *error = "catalog database " + where.display + ": master server " + master + " is not recorded";
    return false;
  }
  // The demo is written again from scratch after a failure: the file need
  // not survive a crash in the middle of the load.
  if (db.get()->engine() == sqldb::Engine::kSqlite &&
      !db.Exec("PRAGMA synchronous = OFF; PRAGMA cache_size = -131072", error)) {
    return false;
  }
  if (db.get()->Begin() != sqldb::Code::kOk) {
    *error = db.Failure();
    return false;
  }
  std::string drop, restore;
  IndexesSetAside(db.get(), &drop, &restore);
  if (!db.Exec(drop, error)) return false;
  demo::DemoWriter writer(db.get(), masterKey, images, seed, now);
  if (!writer.Write(error)) {
    db.get()->Rollback();
    return false;
  }
  if (!db.Exec(restore, error)) return false;
  if (db.get()->Commit() != sqldb::Code::kOk) {
    *error = db.Failure();
    db.get()->Rollback();
    return false;
  }
  return true;
}
