// The SQLite engine: a catalog file opened without the per-call mutex (a
// connection is used by one thread at a time), every write durable before
// its call returns, the dialect's functions registered, and lock waits drawn
// from the run's allowance (lock_wait.h).
#include "platform/sqldb/sqlite_engine.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <chrono>
#include <cstring>

#include "platform/sqldb/lock_wait.h"
#include "platform/sqldb/sqlite_functions.h"

namespace sqldb {
namespace {

struct CodeMapping {
  int sqlite;  // a primary result code
  Code code;
};
const CodeMapping kCodeMappings[] = {
    {SQLITE_OK, Code::kOk},
    {SQLITE_ROW, Code::kRow},
    {SQLITE_DONE, Code::kDone},
    {SQLITE_BUSY, Code::kBusy},
    {SQLITE_LOCKED, Code::kBusy},
    {SQLITE_READONLY, Code::kReadOnly},
    {SQLITE_CONSTRAINT, Code::kConstraint},
    {SQLITE_FULL, Code::kFull},
    {SQLITE_IOERR, Code::kIo},
    {SQLITE_CORRUPT, Code::kCorrupt},
    {SQLITE_NOTADB, Code::kCorrupt},
    {SQLITE_CANTOPEN, Code::kNoAccess},
    {SQLITE_PERM, Code::kNoAccess},
    {SQLITE_AUTH, Code::kNoAccess},
    {SQLITE_NOMEM, Code::kNoMemory},
    {SQLITE_TOOBIG, Code::kRange},
    {SQLITE_MISMATCH, Code::kRange},
    {SQLITE_RANGE, Code::kMisuse},
    {SQLITE_MISUSE, Code::kMisuse},
};

Code CodeOf(int rc) {
  for (const CodeMapping& m : kCodeMappings) {
    if (m.sqlite == (rc & 0xff)) return m.code;
  }
  return Code::kError;
}

// Waits for another process's lock while the run's allowance lasts, in
// steps that grow as SQLite's own busy timeout does.
int WaitForLock(void* timeoutMs, int count) {
  static const int kSteps[] = {1, 2, 5, 10, 15, 20, 25, 25, 25, 50, 50, 100};
  const int left = RemainingLockWaitMs(*static_cast<const int*>(timeoutMs));
  if (left <= 0) return 0;
  int step = count < static_cast<int>(sizeof kSteps / sizeof kSteps[0]) ? kSteps[count] : 100;
  if (step > left) step = left;
  const auto start = std::chrono::steady_clock::now();
  sqlite3_sleep(step);
  ChargeLockWait(static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(
                                      std::chrono::steady_clock::now() - start)
                                      .count()));
  return 1;
}

// Reading a value of the current row in place (Row::ValueReader).
sqlite3_value* Value(const void* value) {
  return static_cast<sqlite3_value*>(const_cast<void*>(value));
}
Type ValueType(const void* value) {
  switch (sqlite3_value_type(Value(value))) {
    case SQLITE_INTEGER:
      return Type::kInteger;
    case SQLITE_FLOAT:
      return Type::kFloat;
    case SQLITE_TEXT:
      return Type::kText;
    case SQLITE_BLOB:
      return Type::kBlob;
    default:
      return Type::kNull;
  }
}
// SQLite's own conversion follows the cells' rules: texts parsed as decimal
// (leading blanks skipped, saturated), floats truncated and saturated,
// NULL 0.
int64_t ValueInteger(const void* value) { return sqlite3_value_int64(Value(value)); }
// Texts and blobs asked for as blobs: a text's bytes as they are, without
// SQLite first giving them a terminating NUL.
std::string_view ValueBytes(const void* value) {
  sqlite3_value* v = Value(value);
  const char* data;
  switch (sqlite3_value_type(v)) {
    case SQLITE_TEXT:
    case SQLITE_BLOB:
      data = static_cast<const char*>(sqlite3_value_blob(v));
      break;
    case SQLITE_FLOAT:
      data = reinterpret_cast<const char*>(sqlite3_value_text(v));
      break;
    default:
      return std::string_view();
  }
  if (data == nullptr) return std::string_view();
  return std::string_view(data, static_cast<size_t>(sqlite3_value_bytes(v)));
}
const Row::ValueReader kValueReader = {ValueType, ValueInteger, ValueBytes};

class SqliteDatabase;

class SqliteStatement final : public Statement {
 public:
  SqliteStatement(SqliteDatabase* db, sqlite3_stmt* stmt)
      : db_(db), stmt_(stmt), values_(static_cast<size_t>(sqlite3_column_count(stmt))) {}
  ~SqliteStatement() override { sqlite3_finalize(stmt_); }

  int ParameterCount() const override { return sqlite3_bind_parameter_count(stmt_); }
  Code BindNull(int index) override { return Bound(sqlite3_bind_null(stmt_, index)); }
  Code BindInt64(int index, int64_t value) override {
    return Bound(sqlite3_bind_int64(stmt_, index, value));
  }
  Code BindText(int index, std::string_view text) override {
    return Bound(
        sqlite3_bind_text64(stmt_, index, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
  }
  Code BindBlob(int index, const void* data, size_t size) override {
    return Bound(sqlite3_bind_blob64(stmt_, index, data, size, SQLITE_TRANSIENT));
  }
  void ClearBindings() override { sqlite3_clear_bindings(stmt_); }

  Code Step() override;
  void Reset() override { sqlite3_reset(stmt_); }

  int ColumnCount() const override { return sqlite3_column_count(stmt_); }
  const Row& CurrentRow() override;
  int64_t Changes() const override { return changes_; }

  std::string Sql() const override { return sqlite3_sql(stmt_); }
  std::string ExpandedSql() const override {
    char* expanded = sqlite3_expanded_sql(stmt_);
    std::string text = expanded != nullptr ? expanded : "";
    sqlite3_free(expanded);
    return text;
  }

 private:
  Code Bound(int rc);

  SqliteDatabase* db_;
  sqlite3_stmt* stmt_;  // owned
  Row row_;
  // The values of the current row. SQLite keeps a statement's result row in
  // one array whose place rarely changes from row to row; asking for each
  // column's value costs several times reading it (statement checks, error
  // bookkeeping), so the values are asked for again only when the first
  // one's address shows that the array moved.
  std::vector<const void*> values_;  // sqlite3_value*, read through kValueReader
  bool valuesTaken_ = false;
  int64_t changes_ = 0;
};

class SqliteBulkWriter final : public BulkWriter {
 public:
  SqliteBulkWriter(std::unique_ptr<Statement> insert, Code prepared)
      : insert_(std::move(insert)), first_(prepared) {}

  void Int64(int64_t value) override {
    Keep(insert_ ? insert_->BindInt64(next_++, value) : first_);
  }
  void Null() override { Keep(insert_ ? insert_->BindNull(next_++) : first_); }
  void Text(std::string_view text) override {
    Keep(insert_ ? insert_->BindText(next_++, text) : first_);
  }
  void Blob(const void* data, size_t size) override {
    Keep(insert_ ? insert_->BindBlob(next_++, data, size) : first_);
  }
  void EndRow() override {
    next_ = 1;
    if (first_ != Code::kOk) return;
    const Code code = insert_->Step();
    insert_->Reset();
    if (code != Code::kDone) first_ = code;
  }
  Code Finish() override { return first_; }

 private:
  void Keep(Code code) {
    if (first_ == Code::kOk && code != Code::kOk) first_ = code;
  }

  std::unique_ptr<Statement> insert_;  // null when it could not be prepared
  Code first_;
  int next_ = 1;
};

class SqliteDatabase final : public Database {
 public:
  SqliteDatabase(sqlite3* db, int timeoutMs) : db_(db), timeoutMs_(timeoutMs) {
    sqlite3_busy_handler(db_, WaitForLock, &timeoutMs_);
  }
  // sqlite3_close_v2 waits for statements still open to be finalized.
  ~SqliteDatabase() override { sqlite3_close_v2(db_); }

  Engine engine() const override { return Engine::kSqlite; }

  std::unique_ptr<Statement> Prepare(std::string_view sql, Code* code) override;
  Code Exec(std::string_view sql) override;
  Code Begin() override { return Exec("BEGIN IMMEDIATE"); }
  Code Commit() override { return Exec("COMMIT"); }
  void Rollback() override {
    if (!sqlite3_get_autocommit(db_)) sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
  }
  int64_t LastInsertKey(const char*, const char*) override {
    return sqlite3_last_insert_rowid(db_);
  }
  std::unique_ptr<BulkWriter> Bulk(const char* table, const char* columns) override;
  const std::string& LastError() const override { return lastError_; }

  sqlite3* handle() const { return db_; }

  // Records the engine's words for the failure `rc` and returns its code.
  Code Failure(int rc) {
    lastError_ = sqlite3_errmsg(db_);
    return CodeOf(rc);
  }
  Code Failure(Code code, const std::string& what) {
    lastError_ = what;
    return code;
  }

 private:
  sqlite3* db_;  // owned
  int timeoutMs_;
  std::string lastError_;
};

Code SqliteStatement::Bound(int rc) { return rc == SQLITE_OK ? Code::kOk : db_->Failure(rc); }

Code SqliteStatement::Step() {
  const int rc = sqlite3_step(stmt_);
  if (rc == SQLITE_ROW) return Code::kRow;
  if (rc == SQLITE_DONE) {
    changes_ = sqlite3_stmt_readonly(stmt_) ? 0 : sqlite3_changes64(db_->handle());
    return Code::kDone;
  }
  return db_->Failure(rc);
}

const Row& SqliteStatement::CurrentRow() {
  const size_t n = values_.size();
  if (n != 0 && (!valuesTaken_ || sqlite3_column_value(stmt_, 0) != values_[0])) {
    for (size_t i = 0; i < n; ++i) values_[i] = sqlite3_column_value(stmt_, static_cast<int>(i));
    valuesTaken_ = true;
    row_.ReadInPlace(&kValueReader, values_.data(), n);
  }
  return row_;
}

bool OnlySeparators(const char* tail) {
  for (; tail != nullptr && *tail != '\0'; ++tail) {
    if (*tail != ';' && !isspace(static_cast<unsigned char>(*tail))) return false;
  }
  return true;
}

std::unique_ptr<Statement> SqliteDatabase::Prepare(std::string_view sql, Code* code) {
  Code ignored;
  if (code == nullptr) code = &ignored;
  sqlite3_stmt* stmt = nullptr;
  const char* tail = nullptr;
  const int rc = sqlite3_prepare_v2(db_, sql.data(), static_cast<int>(sql.size()), &stmt, &tail);
  if (rc != SQLITE_OK) {
    *code = Failure(rc);
    return nullptr;
  }
  const std::string_view rest =
      tail != nullptr ? sql.substr(static_cast<size_t>(tail - sql.data())) : std::string_view();
  if (stmt == nullptr || !OnlySeparators(std::string(rest).c_str())) {
    sqlite3_finalize(stmt);
    *code = Failure(Code::kError,
                    stmt == nullptr ? "empty statement" : "more than one statement in one call");
    return nullptr;
  }
  *code = Code::kOk;
  return std::unique_ptr<Statement>(new SqliteStatement(this, stmt));
}

Code SqliteDatabase::Exec(std::string_view sql) {
  char* message = nullptr;
  const int rc = sqlite3_exec(db_, std::string(sql).c_str(), nullptr, nullptr, &message);
  if (rc == SQLITE_OK) return Code::kOk;
  lastError_ = message != nullptr ? message : sqlite3_errmsg(db_);
  sqlite3_free(message);
  return CodeOf(rc);
}

std::unique_ptr<BulkWriter> SqliteDatabase::Bulk(const char* table, const char* columns) {
  std::string sql = std::string("INSERT INTO ") + table + " (" + columns + ") VALUES (?";
  for (const char* c = columns; *c != '\0'; ++c) {
    if (*c == ',') sql += ", ?";
  }
  sql += ")";
  Code code;
  std::unique_ptr<Statement> insert = Prepare(sql, &code);
  if (code != Code::kOk) lastError_ = std::string(table) + ": " + lastError_;
  return std::unique_ptr<BulkWriter>(new SqliteBulkWriter(std::move(insert), code));
}

// Checks the file before SQLite sees it: SQLite alone would create a missing
// file or report every problem alike. kOk or a code with *why set.
Code CheckFile(const std::string& path, std::string* why) {
  struct stat st;
  if (path.empty()) {
    *why = "no catalog database is configured";
    return Code::kMissing;
  }
  if (stat(path.c_str(), &st) != 0) {
    const int err = errno;
    *why = path + ": " + strerror(err);
    return (err == ENOENT || err == ENOTDIR) ? Code::kMissing : Code::kNoAccess;
  }
  if (!S_ISREG(st.st_mode)) {
    *why = path + ": not a regular file";
    return Code::kNoAccess;
  }
  if (access(path.c_str(), R_OK) != 0) {
    *why = path + ": " + strerror(errno);
    return Code::kNoAccess;
  }
  if (st.st_size == 0) {
    *why = path + ": empty file, not a catalog database";
    return Code::kCorrupt;
  }
  return Code::kOk;
}

// Reads the schema once, so that a damaged file or a lock held past the
// timeout shows at open time; a database without tables is not a catalog.
Code CheckSchema(SqliteDatabase* db, const std::string& path, std::string* why) {
  Code code;
  std::unique_ptr<Statement> count =
      db->Prepare("SELECT count(*) FROM sqlite_master WHERE type = 'table'", &code);
  if (count) code = count->Step();
  if (code != Code::kRow) {
    *why = path + ": " + db->LastError();
    return code;
  }
  if (count->CurrentRow().Int64(0) == 0) {
    *why = path + ": holds no tables, not a catalog database";
    return Code::kCorrupt;
  }
  return Code::kOk;
}

}  // namespace

Code OpenSqlite(const Location& where, OpenMode mode, std::unique_ptr<Database>* db,
                std::string* why) {
  if (mode != OpenMode::kCreate) {
    const Code code = CheckFile(where.path, why);
    if (code != Code::kOk) return code;
  }
  const int flags = SQLITE_OPEN_NOMUTEX |
                    (mode == OpenMode::kReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE) |
                    (mode == OpenMode::kCreate ? SQLITE_OPEN_CREATE : 0);
  sqlite3* raw = nullptr;
  int rc = sqlite3_open_v2(where.path.c_str(), &raw, flags, nullptr);
  if (rc != SQLITE_OK) {
    *why = where.path + ": " + (raw != nullptr ? sqlite3_errmsg(raw) : sqlite3_errstr(rc));
    sqlite3_close_v2(raw);
    return rc == SQLITE_NOMEM ? Code::kNoMemory : Code::kNoAccess;
  }
  auto opened = std::make_unique<SqliteDatabase>(raw, where.busyTimeoutMs);
  // A write is on disk before the call that made it returns, whatever the
  // library's compiled-in default (docs/catalog.md, "Writes").
  opened->Exec("PRAGMA synchronous = FULL");
  rc = RegisterDialectFunctions(raw);
  if (rc != SQLITE_OK) {
    *why = std::string("cannot register SQL functions: ") + sqlite3_errstr(rc);
    return CodeOf(rc);
  }
  if (mode != OpenMode::kCreate) {
    const Code code = CheckSchema(opened.get(), where.path, why);
    if (code != Code::kOk) return code;
  }
  *db = std::move(opened);
  return Code::kOk;
}

}  // namespace sqldb
