// The catalog database engine behind one small interface, so that the
// data-access layer, the catalog library, the import manager and
// stashwell-init run unchanged on the embedded SQLite file or on a
// PostgreSQL server. No engine type appears here: each engine lives in its
// own source files of this folder, and this is the only header the folders
// above include to reach a database (as LevelDB's Env keeps the operating
// system out of its database).
//
// Statements are written once, with '?' parameter marks and the catalog's
// table names unqualified; the engine adapts both (PostgreSQL: $n marks, the
// schema search path). Texts are compared and sorted as bytes on both
// engines.
#ifndef PLATFORM_SQLDB_SQLDB_H_
#define PLATFORM_SQLDB_SQLDB_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace sqldb {

enum class Engine { kSqlite, kPostgres };

// What an engine call ended with, independent of the engine. Callers map
// these onto their own statuses (data-access layer, catalog library, import
// manager); the engine's own words are in Database::LastError().
enum class Code {
  kOk,
  kRow,          // Step: a row stands
  kDone,         // Step: no (further) row, or a statement without rows ran
  kBusy,         // a lock was not granted within the busy timeout
  kReadOnly,     // a write through a read-only connection, file or role
  kConstraint,   // a key or check constraint refused the change
  kFull,         // the disk (or the server's) is full
  kIo,           // the operating system failed a read or write
  kCorrupt,      // the file or the schema is not a catalog, or is damaged
  kMissing,      // the database (file, server database or schema) is not there
  kNoAccess,     // it is there but may not be opened (permissions, password)
  kUnreachable,  // the server cannot be reached or went away
  kCanceled,     // the server cancelled the statement
  kNoMemory,
  kRange,   // a value does not fit
  kMisuse,  // a wrong call sequence or argument
  kError,   // anything else the engine reported
};

// Where the catalog is (EMM_CATALOG and its neighbours in the configuration).
struct Location {
  Engine engine = Engine::kSqlite;
  std::string path;  // SQLite: the database file
  // PostgreSQL: a libpq connection string or URI. May hold a password:
  // never write it anywhere; use display for messages.
  std::string conninfo;
  std::string display;  // the file, or "host:port/database", for messages
  // The longest wait for other processes' locks, for the whole run: every
  // open and statement draws from one allowance (lock_wait.h).
  int busyTimeoutMs = 0;
  int connectTimeoutS = 10;
};

// The catalog that a catalog text in EMM_CATALOG's form names: a
// postgresql:// (or postgres://) URI, else a database file, taken from the
// installation root when relative (db/catalog.db when empty); with the
// configured busy timeout.
Location CatalogAt(const std::string& catalog);
// The configured catalog (from the configuration reader).
Location ConfiguredLocation();

// A column's value in the current row, as the engine holds it.
enum class Type : int8_t { kNull, kInteger, kFloat, kText, kBlob };

// The columns of a statement's current row as plain values, so that readers
// of millions of rows pay one engine call per row rather than one per
// column. A Cell's bytes stay valid until the statement moves on.
struct Cell {
  const char* data = nullptr;  // text or blob bytes (not NUL-terminated)
  uint32_t size = 0;
  Type type = Type::kNull;
  // kInteger; kFloat truncated (saturated at the 64-bit ends), with its
  // decimal text in data and size.
  int64_t integer = 0;
};

class Row {
 public:
  // How an engine that keeps the current row's values itself has them read
  // in place, instead of filling cells: plain functions over its handles of
  // the values. The embedded engine is one: a listing reads most columns of
  // millions of rows once each, and a cell filled first would cost as much
  // again as the engine's own read. The cells' rules hold, but for a blob
  // read as a number, which the engine parses as text.
  struct ValueReader {
    Type (*type)(const void* value);
    int64_t (*integer)(const void* value);
    std::string_view (*bytes)(const void* value);
  };

  size_t size() const { return reader_ != nullptr ? columns_ : cells_.size(); }
  Type type(int col) const {
    return reader_ != nullptr ? reader_->type(values_[col]) : cells_[col].type;
  }
  bool IsNull(int col) const { return type(col) == Type::kNull; }
  // The column as a number: integers as they are, texts parsed as decimal
  // (an engine that hands out every value as text), NULL as 0.
  int64_t Int64(int col) const {
    if (reader_ != nullptr) return reader_->integer(values_[col]);
    const Cell& c = cells_[col];
    return c.type == Type::kInteger || c.type == Type::kFloat ? c.integer : ParseInteger(c);
  }
  int32_t Int(int col) const { return static_cast<int32_t>(Int64(col)); }
  // Text or blob bytes (a kFloat's decimal text); empty for NULL and kInteger.
  std::string_view Bytes(int col) const {
    if (reader_ != nullptr) return reader_->bytes(values_[col]);
    const Cell& c = cells_[col];
    return std::string_view(c.data != nullptr ? c.data : "", c.size);
  }

  // For engines that fill every cell of each row: the cells, sized to the
  // statement's columns.
  std::vector<Cell>& cells() { return cells_; }
  // For engines read in place: the row's `columns` value handles, read
  // through `reader`; both stay the engine's.
  void ReadInPlace(const ValueReader* reader, const void* const* values, size_t columns) {
    reader_ = reader;
    values_ = values;
    columns_ = columns;
  }

 private:
  static int64_t ParseInteger(const Cell& c);
  std::vector<Cell> cells_;
  const ValueReader* reader_ = nullptr;
  const void* const* values_ = nullptr;
  size_t columns_ = 0;
};

// One prepared statement. Owned by its caller; must end before the
// Database that made it.
class Statement {
 public:
  virtual ~Statement() = default;
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  virtual int ParameterCount() const = 0;
  // Parameters count from 1. Values are copied.
  virtual Code BindNull(int index) = 0;
  virtual Code BindInt64(int index, int64_t value) = 0;
  virtual Code BindText(int index, std::string_view text) = 0;
  virtual Code BindBlob(int index, const void* data, size_t size) = 0;
  virtual void ClearBindings() = 0;

  // Runs the statement (first call) or moves to its next row: kRow, kDone,
  // or a failure. Rows arrive in batches from a server; memory stays flat
  // however many rows a query yields.
  virtual Code Step() = 0;
  // Ends the current run (releasing what it holds) so that the statement
  // can run again; bindings are kept.
  virtual void Reset() = 0;

  virtual int ColumnCount() const = 0;
  // The current row (after Step returned kRow).
  virtual const Row& CurrentRow() = 0;
  // Rows touched by the last INSERT, UPDATE or DELETE run.
  virtual int64_t Changes() const = 0;

  // The statement as the engine runs it, and with the bound values in place
  // of the marks (for the debug log).
  virtual std::string Sql() const = 0;
  virtual std::string ExpandedSql() const = 0;

 protected:
  Statement() = default;
};

// Rows of one table written in bulk (stashwell-init's demo catalog):
// PostgreSQL COPY, SQLite one prepared INSERT inside the caller's
// transaction. Values are given column by column, row by row. Several
// writers may be open on one Database at once (a parent's rows between its
// children's), so an engine that streams sends its rows in chunks, and a
// table's rows may arrive before the rows they refer to.
class BulkWriter {
 public:
  virtual ~BulkWriter() = default;
  virtual void Int64(int64_t value) = 0;
  virtual void Null() = 0;
  virtual void Text(std::string_view text) = 0;
  virtual void Blob(const void* data, size_t size) = 0;
  // Ends the row; the first failure is kept and returned by Finish.
  virtual void EndRow() = 0;
  virtual Code Finish() = 0;
};

// One open connection to the catalog.
class Database {
 public:
  virtual ~Database() = default;
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  virtual Engine engine() const = 0;

  // Prepares one statement (trailing ';' allowed, a second statement is an
  // error). Null with LastError set on failure; *code (when given) says why.
  virtual std::unique_ptr<Statement> Prepare(std::string_view sql, Code* code = nullptr) = 0;
  // Runs SQL text of any number of statements without parameters or rows.
  virtual Code Exec(std::string_view sql) = 0;

  // A transaction that takes the write lock at once (SQLite BEGIN
  // IMMEDIATE), and its end. Commit returns once the change is durable.
  virtual Code Begin() = 0;
  virtual Code Commit() = 0;
  virtual void Rollback() = 0;

  // The key the database gave the row of the last INSERT of `table`, whose
  // key column is `keyColumn`.
  virtual int64_t LastInsertKey(const char* table, const char* keyColumn) = 0;

  // Bulk rows of `table`, columns as listed ("A, B, C").
  virtual std::unique_ptr<BulkWriter> Bulk(const char* table, const char* columns) = 0;

  // The engine's words for the last failure, with no password in them.
  virtual const std::string& LastError() const = 0;

 protected:
  Database() = default;
};

enum class OpenMode {
  kReadWrite,  // the catalog must exist
  kReadOnly,
  kCreate,  // stashwell-init: create the file (or the schemas) as needed
};

// Opens the catalog at `where`. Checks that it is a database holding
// tables (unless kCreate), reading its schema once so that a damaged file or
// a lock held past the wait allowance shows here. Returns the code; *db is
// set on kOk, and *why holds a message naming the file or host, port and
// database otherwise.
Code Open(const Location& where, OpenMode mode, std::unique_ptr<Database>* db, std::string* why);

// A short English word for `code` ("disk full", "read-only", "locked", ...)
// for the debug log.
const char* CodeText(Code code);

}  // namespace sqldb

#endif  // PLATFORM_SQLDB_SQLDB_H_
