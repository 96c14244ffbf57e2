// Connections of the catalog library and emmlib_initialize/emmlib_terminate.
#include "platform/emmlib/connection.h"

#include <map>
#include <memory>

#include "platform/config.h"
#include "platform/emmlib/emmlib.h"
#include "platform/emmlib/query_handles.h"
#include "platform/root.h"

namespace emm {
namespace {

std::map<int, std::unique_ptr<Connection>>& Connections() {
  static std::map<int, std::unique_ptr<Connection>> connections;
  return connections;
}

// The database file a catalog text names: an absolute path as it is, a
// relative one under the installation root, none the configured catalog.
std::string CatalogPath(const char* catalog) {
  if (catalog == nullptr || *catalog == '\0') return SW_catalog_path();
  if (*catalog == '/') return catalog;
  return StashwellPath(catalog);
}

}  // namespace

Connection::Connection(sqlite3* db, LogFunction log, std::string source)
    : db_(db), log_(log), source_(std::move(source)) {}

// sqlite3_close_v2 defers the close until the member statements are
// finalized right after.
Connection::~Connection() { sqlite3_close_v2(db_); }

void Connection::Log(int severity, const std::string& text) const {
  if (log_ != nullptr) log_(severity, text.c_str(), source_.c_str());
}

unsigned Connection::Fail(const char* call, int rc) const {
  Log(16, std::string(call) + ": catalog database error " + std::to_string(rc) + ": " +
              sqlite3_errmsg(db_));
  return StatusFromSqlite(rc);
}

int64_t Connection::MasterServerKey(const char* name, unsigned* status) {
  *status = EMMLIB_OK;
  if (!keyLookup_) {
    int rc = keyLookup_.Prepare(
        db_,
        "SELECT m.ParentKey FROM EMM_Machine m JOIN EMM_MachineAlias a"
        " ON m.ParentKey = a.MachineKey WHERE a.MachineSwuType IN (3, 5)"
        " AND UPPER(a.MachineAliasName) = UPPER(?) LIMIT 1");
    if (rc != SQLITE_OK) {
      *status = Fail("master server lookup", rc);
      return -1;
    }
  }
  sqlite3_stmt* st = keyLookup_.get();
  sqlite3_reset(st);
  sqlite3_bind_text(st, 1, name, -1, SQLITE_TRANSIENT);
  int rc = sqlite3_step(st);
  int64_t key = -1;
  if (rc == SQLITE_ROW) {
    key = sqlite3_column_int64(st, 0);
  } else if (rc != SQLITE_DONE) {
    *status = Fail("master server lookup", rc);
  }
  sqlite3_reset(st);
  return key;
}

const std::string& Connection::MasterServerName(int64_t key) {
  if (key == cachedNameKey_) return cachedName_;
  cachedName_.clear();
  cachedNameKey_ = key;
  if (!nameLookup_ &&
      nameLookup_.Prepare(db_, "SELECT MachinePrimaryName FROM EMM_Machine WHERE MachineKey = ?") !=
          SQLITE_OK) {
    return cachedName_;
  }
  sqlite3_stmt* st = nameLookup_.get();
  sqlite3_reset(st);
  sqlite3_bind_int64(st, 1, key);
  if (sqlite3_step(st) == SQLITE_ROW) {
    const unsigned char* text = sqlite3_column_text(st, 0);
    if (text != nullptr) cachedName_.assign(reinterpret_cast<const char*>(text));
  }
  sqlite3_reset(st);
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

unsigned StatusFromSqlite(int rc) {
  switch (rc & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return EMMLIB_BUSY;
    case SQLITE_NOMEM:
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
  const std::string path = emm::CatalogPath(catalog);
  // The library is used from one thread; without SQLite's per-call mutex
  // reading a column costs a fraction of what it does otherwise.
  const int openFlags = SQLITE_OPEN_NOMUTEX |
                        ((flags & EMMLIB_READ_ONLY) ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE);
  sqlite3* db = nullptr;
  int rc = sqlite3_open_v2(path.c_str(), &db, openFlags, nullptr);
  auto failOpen = [&](unsigned status, const std::string& why) {
    if (log != nullptr) {
      log(16, ("emmlib_initialize: cannot open catalog " + path + ": " + why).c_str(),
          source.c_str());
    }
    sqlite3_close_v2(db);
    return status;
  };
  if (rc != SQLITE_OK) return failOpen(EMMLIB_CANNOT_OPEN, sqlite3_errstr(rc));
  sqlite3_busy_timeout(db, SW_catalog_busy_timeout_ms());
  // Every update is on disk before its call returns (docs/catalog.md, "Writes").
  sqlite3_exec(db, "PRAGMA synchronous = FULL", nullptr, nullptr, nullptr);
  // Reading the schema proves that the file is a catalog database.
  sqlite3_stmt* probe = nullptr;
  rc = sqlite3_prepare_v2(db, "SELECT ImageKey FROM DBM_Image LIMIT 0", -1, &probe, nullptr);
  sqlite3_finalize(probe);
  if (rc != SQLITE_OK) {
    const unsigned status = (rc & 0xff) == SQLITE_BUSY ? EMMLIB_BUSY : EMMLIB_CANNOT_OPEN;
    return failOpen(status, sqlite3_errmsg(db));
  }
  auto* connection = new emm::Connection(db, log, source);
  *cid = emm::AddConnection(connection);
  connection->Log(2, "emmlib_initialize: catalog " + path + " of EMM server " + server + ":" +
                         std::to_string(port) + " opened");
  return EMMLIB_OK;
}

unsigned emmlib_terminate(int* cid) {
  if (cid == nullptr) return EMMLIB_INVALID_ARGUMENT;
  if (!emm::CloseConnection(*cid)) return EMMLIB_NOT_CONNECTED;
  *cid = 0;
  return EMMLIB_OK;
}
