// Connections of the catalog library and emmlib_initialize/emmlib_terminate.
#include "platform/emmlib/connection.h"

#include <map>
#include <memory>

#include "platform/emmlib/emmlib.h"
#include "platform/emmlib/query_handles.h"

namespace emm {
namespace {

std::map<int, std::unique_ptr<Connection>>& Connections() {
  static std::map<int, std::unique_ptr<Connection>> connections;
  return connections;
}

// The catalog a catalog text names (sqldb::CatalogAt), none the configured
// catalog.
sqldb::Location CatalogLocation(const char* catalog) {
  if (catalog == nullptr || *catalog == '\0') return sqldb::ConfiguredLocation();
  return sqldb::CatalogAt(catalog);
}

}  // namespace

Connection::Connection(std::unique_ptr<sqldb::Database> db, LogFunction log, std::string source)
    : db_(std::move(db)), log_(log), source_(std::move(source)) {}

Connection::~Connection() = default;

void Connection::Log(int severity, const std::string& text) const {
  if (log_ != nullptr) log_(severity, text.c_str(), source_.c_str());
}

unsigned Connection::Fail(const char* call, sqldb::Code code) const {
  Log(16, std::string(call) + ": catalog database error (" + sqldb::CodeText(code) +
              "): " + db_->LastError());
  return StatusFromCode(code);
}

unsigned Connection::Prepare(const char* call, const std::string& sql, const Params& params,
                             std::unique_ptr<sqldb::Statement>* stmt) const {
  sqldb::Code code;
  *stmt = db_->Prepare(sql, &code);
  if (*stmt) code = params.BindAll(stmt->get());
  return code == sqldb::Code::kOk ? EMMLIB_OK : Fail(call, code);
}

int64_t Connection::MasterServerKey(const char* name, unsigned* status) {
  *status = EMMLIB_OK;
  if (!keyLookup_) {
    *status = Prepare("master server lookup",
                      "SELECT m.ParentKey FROM EMM_Machine m JOIN EMM_MachineAlias a"
                      " ON m.ParentKey = a.MachineKey WHERE a.MachineSwuType IN (3, 5)"
                      " AND UPPER(a.MachineAliasName) = UPPER(?) LIMIT 1",
                      Params(), &keyLookup_);
    if (*status != EMMLIB_OK) return -1;
  }
  keyLookup_->Reset();
  if (name != nullptr) {
    keyLookup_->BindText(1, name);
  } else {
    keyLookup_->BindNull(1);
  }
  const sqldb::Code code = keyLookup_->Step();
  int64_t key = -1;
  if (code == sqldb::Code::kRow) {
    key = keyLookup_->CurrentRow().Int64(0);
  } else if (code != sqldb::Code::kDone) {
    *status = Fail("master server lookup", code);
  }
  keyLookup_->Reset();
  return key;
}

const std::string& Connection::MasterServerName(int64_t key) {
  if (key == cachedNameKey_) return cachedName_;
  cachedName_.clear();
  cachedNameKey_ = key;
  if (!nameLookup_ && Prepare("master server name",
                              "SELECT MachinePrimaryName FROM EMM_Machine WHERE MachineKey = ?",
                              Params(), &nameLookup_) != EMMLIB_OK) {
    return cachedName_;
  }
  nameLookup_->Reset();
  nameLookup_->BindInt64(1, key);
  if (nameLookup_->Step() == sqldb::Code::kRow) {
    const std::string_view name = nameLookup_->CurrentRow().Bytes(0);
    cachedName_.assign(name.data(), name.size());
  }
  nameLookup_->Reset();
  return cachedName_;
}

Connection* FindConnection(const int* cid, unsigned* status) {
  if (cid == nullptr) {
    *status = EMMLIB_INVALID_ARGUMENT;
    return nullptr;
  }
  auto it = Connections().find(*cid);
  if (it == Connections().end()) {
    *status = EMMLIB_NOT_CONNECTED;
    return nullptr;
  }
  *status = EMMLIB_OK;
  return it->second.get();
}

Connection* DefaultConnection() {
  return Connections().empty() ? nullptr : Connections().rbegin()->second.get();
}

int AddConnection(Connection* connection) {
  static int lastId = 0;
  Connections()[++lastId].reset(connection);
  return lastId;
}

bool CloseConnection(int id) {
  auto it = Connections().find(id);
  if (it == Connections().end()) return false;
  ReleaseQueriesOf(it->second.get());
  Connections().erase(it);
  return true;
}

unsigned StatusFromCode(sqldb::Code code) {
  switch (code) {
    case sqldb::Code::kBusy:
      return EMMLIB_BUSY;
    case sqldb::Code::kNoMemory:
      return EMMLIB_NO_MEMORY;
    default:
      return EMMLIB_DB_ERROR;
  }
}

}  // namespace emm

unsigned emmlib_initialize(int* cid, int flags, const char* server, unsigned short port,
                           const char* catalog, LogFunction log, const char* cmdName) {
  if (cid == nullptr || server == nullptr || *server == '\0' || (flags & ~EMMLIB_READ_ONLY) != 0) {
    return EMMLIB_INVALID_ARGUMENT;
  }
  if (*cid != 0) emm::CloseConnection(*cid);
  *cid = 0;
  const std::string source = cmdName != nullptr ? cmdName : "emmlib";
  const sqldb::Location where = emm::CatalogLocation(catalog);
  auto failOpen = [&](unsigned status, const std::string& why) {
    if (log != nullptr) {
      log(16, ("emmlib_initialize: cannot open catalog " + why).c_str(), source.c_str());
    }
    return status;
  };
  std::unique_ptr<sqldb::Database> db;
  std::string why;
  sqldb::Code code = sqldb::Open(
      where, (flags & EMMLIB_READ_ONLY) ? sqldb::OpenMode::kReadOnly : sqldb::OpenMode::kReadWrite,
      &db, &why);
  if (code == sqldb::Code::kOk) {
    // Reading the image table proves that the database is a catalog.
    const std::unique_ptr<sqldb::Statement> probe =
        db->Prepare("SELECT ImageKey FROM DBM_Image LIMIT 0", &code);
    if (!probe) why = where.display + ": " + db->LastError();
  }
  if (code != sqldb::Code::kOk) {
    return failOpen(code == sqldb::Code::kBusy ? EMMLIB_BUSY : EMMLIB_CANNOT_OPEN, why);
  }
  auto* connection = new emm::Connection(std::move(db), log, source);
  *cid = emm::AddConnection(connection);
  connection->Log(2, "emmlib_initialize: catalog " + where.display + " of EMM server " + server +
                         ":" + std::to_string(port) + " opened");
  return EMMLIB_OK;
}

unsigned emmlib_terminate(int* cid) {
  if (cid == nullptr) return EMMLIB_INVALID_ARGUMENT;
  if (!emm::CloseConnection(*cid)) return EMMLIB_NOT_CONNECTED;
  *cid = 0;
  return EMMLIB_OK;
}
