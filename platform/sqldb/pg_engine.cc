// The PostgreSQL engine: statements prepared on the server with $n marks,
// rows streamed one at a time in libpq's single-row mode (text results),
// bulk rows through COPY, failures mapped from their SQLSTATE.
//
// A connection streams one statement's rows at a time, while the catalog
// library reads snapshots and looks up names in the middle of an image
// listing. So the database keeps links: link 0 carries transactions and
// everything that needs the session; a statement that would have to wait for
// a listing to end runs on another link, opened on first need. Only inside a
// transaction, where every statement must share link 0, is a listing on it
// read to its end into memory first (parked).
#include "platform/sqldb/pg_engine.h"

#include <libpq-fe.h>

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <utility>

#include "platform/debuglog.h"
#include "platform/sqldb/lock_wait.h"
#include "platform/sqldb/pg_text.h"

namespace sqldb {
namespace {

struct ConnFree {
  void operator()(PGconn* conn) const { PQfinish(conn); }
};
using ConnPtr = std::unique_ptr<PGconn, ConnFree>;
struct ResultFree {
  void operator()(PGresult* result) const { PQclear(result); }
};
using ResultPtr = std::unique_ptr<PGresult, ResultFree>;
struct OptionsFree {
  void operator()(PQconninfoOption* options) const { PQconninfoFree(options); }
};
using OptionsPtr = std::unique_ptr<PQconninfoOption, OptionsFree>;

// The catalog's schemas (names fold to lower case on the server).
const char kSearchPath[] = "emm_main,dbm_main,slp_main";
// Plans as SQLite makes them: nested loops over indexes in index order, no
// sorts where an index gives the order, no parallel workers. Listings then
// stream from their first row, and rows that a statement's ORDER BY leaves
// tied come in the same order on both engines.
const char kPlannerOptions[] =
    " -c enable_hashjoin=off -c enable_mergejoin=off -c enable_sort=off"
    " -c max_parallel_workers_per_gather=0";
// Links beyond the first that one database may open; past them a listing is
// parked instead.
const size_t kMaxLinks = 4;
// COPY data sent per command, so that several writers can take turns.
const size_t kBulkChunk = 1 << 20;

// How a result column's text becomes a Cell.
enum class Kind : int8_t { kText, kInteger, kBool, kNumeric, kFloat, kBytea };

Kind KindOf(Oid type) {
  switch (type) {
    case 20:  // int8
    case 21:  // int2
    case 23:  // int4
    case 26:  // oid
      return Kind::kInteger;
    case 16:
      return Kind::kBool;
    case 1700:
      return Kind::kNumeric;  // sum() of bigint, for one
    case 700:                 // float4
    case 701:                 // float8
      return Kind::kFloat;
    case 17:
      return Kind::kBytea;
    default:
      return Kind::kText;
  }
}

int64_t Saturated(double value) {
  if (std::isnan(value)) return 0;
  if (value >= 9223372036854775807.0) return INT64_MAX;
  if (value <= -9223372036854775808.0) return INT64_MIN;
  return static_cast<int64_t>(value);
}

// The first line of `text`, without its line end.
std::string FirstLine(const char* text) {
  std::string line = text != nullptr ? text : "";
  line.erase(std::min(line.find('\n'), line.size()));
  return line;
}

// What a connection string says about where it leads, for messages.
struct Target {
  std::string display;  // host:port/database
  std::string options;  // its own server options, kept beside ours
};

// False when libpq cannot read the string; its message is not repeated, as
// it could quote a password.
bool ReadTarget(const std::string& conninfo, Target* target) {
  char* error = nullptr;
  OptionsPtr parsed(PQconninfoParse(conninfo.c_str(), &error));
  PQfreemem(error);
  if (!parsed) return false;
  OptionsPtr defaults(PQconndefaults());
  auto value = [&](const char* keyword) -> std::string {
    for (const PQconninfoOption* o = parsed.get(); o->keyword != nullptr; ++o) {
      if (strcmp(o->keyword, keyword) == 0 && o->val != nullptr && *o->val != '\0') return o->val;
    }
    for (const PQconninfoOption* o = defaults.get(); o && o->keyword != nullptr; ++o) {
      if (strcmp(o->keyword, keyword) == 0 && o->val != nullptr && *o->val != '\0') return o->val;
    }
    return "";
  };
  std::string host = value("host");
  if (host.empty()) host = value("hostaddr");
  if (host.empty()) host = "localhost";
  std::string port = value("port");
  std::string database = value("dbname");
  if (database.empty()) database = value("user");
  target->display = host + ":" + (port.empty() ? "5432" : port) + "/" + database;
  for (const PQconninfoOption* o = parsed.get(); o->keyword != nullptr; ++o) {
    if (strcmp(o->keyword, "options") == 0 && o->val != nullptr) target->options = o->val;
  }
  return true;
}

// Server notices ("drop cascades to ...", "there is no transaction in
// progress") would otherwise go to standard error, where the tool's own
// messages are the only output; they go to the debug log instead.
void LogNotice(void*, const char* message) {
  std::string text = message != nullptr ? message : "";
  while (!text.empty() && text.back() == '\n') text.pop_back();
  logmsg(2, ("catalog server: " + text).c_str(), program_invocation_short_name);
}

// A connection made with libpq's keywords and values (null when out of
// memory; check PQstatus otherwise).
ConnPtr ConnectWith(const std::vector<std::string>& keywords,
                    const std::vector<std::string>& values) {
  std::vector<const char*> k;
  std::vector<const char*> v;
  for (size_t i = 0; i < keywords.size(); ++i) {
    k.push_back(keywords[i].c_str());
    v.push_back(values[i].c_str());
  }
  k.push_back(nullptr);
  v.push_back(nullptr);
  ConnPtr conn(PQconnectdbParams(k.data(), v.data(), 1));
  if (conn) PQsetNoticeProcessor(conn.get(), LogNotice, nullptr);
  return conn;
}

class PgStatement;
class PgBulkWriter;

// One server connection; `streaming` is the statement whose rows are on
// their way through it.
struct Link {
  ConnPtr conn;
  PgStatement* streaming = nullptr;
  int named = 0;                   // prepared statements named so far
  std::vector<std::string> drops;  // prepared statements no longer wanted
};

class PgDatabase final : public Database {
 public:
  PgDatabase(std::vector<std::string> keywords, std::vector<std::string> values,
             std::string display, int lockTimeoutMs, ConnPtr first);
  ~PgDatabase() override;

  Engine engine() const override { return Engine::kPostgres; }
  std::unique_ptr<Statement> Prepare(std::string_view sql, Code* code) override;
  Code Exec(std::string_view sql) override;
  Code Begin() override;
  Code Commit() override;
  void Rollback() override;
  int64_t LastInsertKey(const char* table, const char* keyColumn) override;
  std::unique_ptr<BulkWriter> Bulk(const char* table, const char* columns) override;
  const std::string& LastError() const override { return lastError_; }

  // For statements and bulk writers.
  bool inTransaction() const { return inTransaction_; }
  // A link on which a statement prepared on `home` can run now (see the top
  // of this file); null with LastError set when a further link cannot be
  // opened.
  Link* LinkFor(Link* home, Code* code);
  // Link 0 with nothing streaming on it and no COPY waiting for its end.
  Link* Primary();
  // `writer` has sent a COPY on link 0 and not yet read how it ended: the
  // server stores those rows while the writer makes its next ones. Whoever
  // uses link 0 next reads the end first (SettleCopy).
  void CopyInFlight(PgBulkWriter* writer) { copying_ = writer; }
  void SettleCopy();
  // Records the failure of `result` (or of the connection when it is null)
  // and returns its code.
  Code Fail(PGconn* conn, const PGresult* result, bool isQuery);
  // Forgets the prepared statement `name` of `link` (on the server with the
  // link's next preparation).
  void Drop(Link* link, const std::string& name) { link->drops.push_back(name); }
  void SentInsert(Link* link) { insertLink_ = link; }

 private:
  ConnPtr Connect(std::string* message) const;

  std::vector<std::string> keywords_;
  std::vector<std::string> values_;
  std::string display_;
  int lockTimeoutMs_;       // the sessions' lock_timeout
  std::deque<Link> links_;  // stable addresses
  Link* insertLink_ = nullptr;
  PgBulkWriter* copying_ = nullptr;
  bool inTransaction_ = false;
  std::string lastError_;
};

class PgStatement final : public Statement {
 public:
  PgStatement(PgDatabase* db, Link* home, std::string name, std::string_view sql, std::string text,
              int params, int columns)
      : db_(db),
        home_(home),
        name_(std::move(name)),
        sql_(sql),
        text_(std::move(text)),
        values_(params),
        lengths_(params),
        formats_(params),
        isNull_(params, true),
        columns_(columns) {}
  ~PgStatement() override {
    Reset();
    db_->Drop(home_, name_);
  }

  int ParameterCount() const override { return static_cast<int>(values_.size()); }
  Code BindNull(int index) override {
    if (!InRange(index)) return Code::kRange;
    isNull_[index - 1] = true;
    return Code::kOk;
  }
  Code BindInt64(int index, int64_t value) override { return Set(index, std::to_string(value), 0); }
  Code BindText(int index, std::string_view text) override {
    return Set(index, std::string(text), 0);
  }
  Code BindBlob(int index, const void* data, size_t size) override {
    return Set(index, std::string(static_cast<const char*>(data), size), 1);
  }
  void ClearBindings() override { isNull_.assign(isNull_.size(), true); }

  Code Step() override;
  void Reset() override;
  int ColumnCount() const override { return columns_; }
  const Row& CurrentRow() override { return row_; }
  int64_t Changes() const override { return changes_; }
  std::string Sql() const override { return text_; }
  std::string ExpandedSql() const override;

  // Reads the rest of the rows into memory, freeing the link for others.
  void Park();

 private:
  bool InRange(int index) const { return index >= 1 && index <= ParameterCount(); }
  Code Set(int index, std::string value, int format);
  Code Start();
  // Takes the next result off the link: a row, the end, or a failure.
  Code Receive();
  // Handles one result that is not a row; returns the statement's end.
  Code Ended(PGresult* result);
  // Reads the link's remaining results and lets it go.
  void Release();
  void Fill(PGresult* result);

  PgDatabase* db_;
  Link* home_;
  std::string name_;
  std::string sql_;   // as written, with '?' marks (for ExpandedSql)
  std::string text_;  // as sent, with $n marks
  std::vector<std::string> values_;
  std::vector<int> lengths_;
  std::vector<int> formats_;
  std::vector<bool> isNull_;
  int columns_;

  bool started_ = false;
  Link* link_ = nullptr;  // while rows stream
  Code end_ = Code::kDone;
  std::deque<ResultPtr> parked_;
  ResultPtr current_;
  std::vector<Kind> kinds_;
  std::vector<std::string> bytes_;  // decoded bytea values of the current row
  Row row_;
  int64_t changes_ = 0;
};

Code PgStatement::Set(int index, std::string value, int format) {
  if (!InRange(index)) return Code::kRange;
  values_[index - 1] = std::move(value);
  lengths_[index - 1] = static_cast<int>(values_[index - 1].size());
  formats_[index - 1] = format;
  isNull_[index - 1] = false;
  return Code::kOk;
}

Code PgStatement::Start() {
  Code code = Code::kOk;
  Link* link = db_->LinkFor(home_, &code);
  if (link == nullptr) return code;
  std::vector<const char*> values(values_.size());
  for (size_t i = 0; i < values_.size(); ++i) {
    values[i] = isNull_[i] ? nullptr : values_[i].c_str();
  }
  const int count = ParameterCount();
  PGconn* conn = link->conn.get();
  const int sent = link == home_
                       ? PQsendQueryPrepared(conn, name_.c_str(), count, values.data(),
                                             lengths_.data(), formats_.data(), 0)
                       : PQsendQueryParams(conn, text_.c_str(), count, nullptr, values.data(),
                                           lengths_.data(), formats_.data(), 0);
  if (sent == 0) return db_->Fail(conn, nullptr, columns_ > 0);
  PQsetSingleRowMode(conn);
  link->streaming = this;
  link_ = link;
  return Code::kOk;
}

Code PgStatement::Step() {
  if (!started_) {
    started_ = true;
    end_ = Code::kDone;
    const Code code = Start();
    if (code != Code::kOk) return end_ = code;
  }
  if (!parked_.empty()) {
    current_ = std::move(parked_.front());
    parked_.pop_front();
    Fill(current_.get());
    return Code::kRow;
  }
  current_.reset();
  if (link_ == nullptr) return end_;
  return Receive();
}

Code PgStatement::Receive() {
  ResultPtr result(PQgetResult(link_->conn.get()));
  if (!result) {
    Release();
    return end_;
  }
  if (PQresultStatus(result.get()) == PGRES_SINGLE_TUPLE) {
    current_ = std::move(result);
    Fill(current_.get());
    return Code::kRow;
  }
  Ended(result.get());
  Release();
  return end_;
}

Code PgStatement::Ended(PGresult* result) {
  switch (PQresultStatus(result)) {
    case PGRES_COMMAND_OK:
      changes_ = strtoll(PQcmdTuples(result), nullptr, 10);
      if (strncmp(PQcmdStatus(result), "INSERT", 6) == 0) db_->SentInsert(link_);
      return end_ = Code::kDone;
    case PGRES_TUPLES_OK:
    case PGRES_EMPTY_QUERY:
      return end_ = Code::kDone;
    default:
      return end_ = db_->Fail(link_->conn.get(), result, columns_ > 0);
  }
}

void PgStatement::Release() {
  if (link_ == nullptr) return;
  while (PGresult* rest = PQgetResult(link_->conn.get())) PQclear(rest);
  link_->streaming = nullptr;
  link_ = nullptr;
}

void PgStatement::Park() {
  while (link_ != nullptr) {
    ResultPtr result(PQgetResult(link_->conn.get()));
    if (!result) break;
    if (PQresultStatus(result.get()) == PGRES_SINGLE_TUPLE) {
      parked_.push_back(std::move(result));
    } else {
      Ended(result.get());
    }
  }
  Release();
}

void PgStatement::Reset() {
  if (link_ != nullptr) {
    // Rows the caller no longer wants: ask the server to stop sending them
    // rather than reading them all; but not inside a transaction, which a
    // cancelled statement would abort.
    PGcancel* cancel = db_->inTransaction() ? nullptr : PQgetCancel(link_->conn.get());
    if (cancel != nullptr) {
      char ignored[256];
      PQcancel(cancel, ignored, sizeof ignored);
      PQfreeCancel(cancel);
    }
    Release();
  }
  parked_.clear();
  current_.reset();
  started_ = false;
  end_ = Code::kDone;
}

void PgStatement::Fill(PGresult* result) {
  const int n = PQnfields(result);
  if (kinds_.size() != static_cast<size_t>(n)) {
    kinds_.resize(n);
    for (int c = 0; c < n; ++c) kinds_[c] = KindOf(PQftype(result, c));
    bytes_.resize(n);
  }
  std::vector<Cell>& cells = row_.cells();
  cells.resize(n);
  for (int c = 0; c < n; ++c) {
    Cell& cell = cells[c];
    cell = Cell();
    if (PQgetisnull(result, 0, c)) continue;
    char* text = PQgetvalue(result, 0, c);
    cell.data = text;
    cell.size = static_cast<uint32_t>(PQgetlength(result, 0, c));
    switch (kinds_[c]) {
      // An integer cell has no bytes, as on SQLite.
      case Kind::kInteger:
        cell = Cell{nullptr, 0, Type::kInteger, strtoll(text, nullptr, 10)};
        break;
      case Kind::kBool:
        cell = Cell{nullptr, 0, Type::kInteger, text[0] == 't' ? 1 : 0};
        break;
      case Kind::kNumeric: {
        // A whole number is an integer, as SQLite's sum() gives it.
        char* end = nullptr;
        errno = 0;
        const int64_t whole = strtoll(text, &end, 10);
        if (*end == '\0' && errno == 0) {
          cell = Cell{nullptr, 0, Type::kInteger, whole};
          break;
        }
      }
        [[fallthrough]];
      case Kind::kFloat:
        cell.type = Type::kFloat;
        cell.integer = Saturated(strtod(text, nullptr));
        break;
      case Kind::kBytea:
        cell.type = Type::kBlob;
        DecodeByteaHex(std::string_view(text, cell.size), &bytes_[c]);
        cell.data = bytes_[c].data();
        cell.size = static_cast<uint32_t>(bytes_[c].size());
        break;
      case Kind::kText:
        cell.type = Type::kText;
        break;
    }
  }
}

std::string PgStatement::ExpandedSql() const {
  std::string out;
  size_t from = 0;
  size_t i = 0;
  for (size_t at : MarkOffsets(sql_)) {
    out.append(sql_, from, at - from);
    from = at + 1;
    if (i >= values_.size() || isNull_[i]) {
      out += "NULL";
    } else if (formats_[i] == 1) {
      out += "'\\x";
      static const char kHex[] = "0123456789abcdef";
      for (unsigned char b : values_[i]) {
        out += kHex[b >> 4];
        out += kHex[b & 15];
      }
      out += "'::bytea";
    } else {
      out += '\'';
      for (char c : values_[i]) out += c == '\'' ? std::string("''") : std::string(1, c);
      out += '\'';
    }
    ++i;
  }
  out.append(sql_, from, std::string::npos);
  return out;
}

// Rows of one table sent through COPY in chunks.
class PgBulkWriter final : public BulkWriter {
 public:
  PgBulkWriter(PgDatabase* db, std::string table, std::string columns)
      : db_(db), table_(std::move(table)), columns_(std::move(columns)) {}
  ~PgBulkWriter() override { db_->SettleCopy(); }

  void Int64(int64_t value) override {
    Separate();
    row_ += std::to_string(value);
  }
  void Null() override {
    Separate();
    row_ += "\\N";
  }
  void Text(std::string_view text) override {
    Separate();
    AppendCopyText(text, &row_);
  }
  void Blob(const void* data, size_t size) override {
    Separate();
    AppendCopyBytea(data, size, &row_);
  }
  void EndRow() override {
    row_ += '\n';
    first_ = true;
    if (row_.size() >= kBulkChunk) Flush();
  }
  Code Finish() override;
  // Reads how the COPY sent last ended (see PgDatabase::CopyInFlight).
  void Settle();

 private:
  void Separate() {
    if (!first_) row_ += '\t';
    first_ = false;
  }
  void Flush();
  // Moves the table's key sequence past the keys the rows brought along.
  void AdvanceKeys();

  PgDatabase* db_;
  std::string table_;
  std::string columns_;
  std::string row_;
  bool first_ = true;
  Code code_ = Code::kOk;
};

void PgBulkWriter::Flush() {
  if (row_.empty() || code_ != Code::kOk) return;
  Link* link = db_->Primary();
  if (code_ != Code::kOk) return;  // this writer's COPY before failed
  PGconn* conn = link->conn.get();
  const std::string copy = "COPY " + table_ + " (" + columns_ + ") FROM STDIN";
  ResultPtr start(PQexec(conn, copy.c_str()));
  if (PQresultStatus(start.get()) != PGRES_COPY_IN) {
    code_ = db_->Fail(conn, start.get(), false);
  } else if (PQputCopyData(conn, row_.data(), static_cast<int>(row_.size())) != 1 ||
             PQputCopyEnd(conn, nullptr) != 1) {
    code_ = db_->Fail(conn, nullptr, false);
  } else {
    db_->CopyInFlight(this);
    row_.clear();
    return;
  }
  while (PGresult* rest = PQgetResult(conn)) PQclear(rest);
  row_.clear();
}

void PgBulkWriter::Settle() {
  PGconn* conn = db_->Primary()->conn.get();
  ResultPtr end(PQgetResult(conn));
  if (PQresultStatus(end.get()) != PGRES_COMMAND_OK) code_ = db_->Fail(conn, end.get(), false);
  while (PGresult* rest = PQgetResult(conn)) PQclear(rest);
}

void PgBulkWriter::AdvanceKeys() {
  PGconn* conn = db_->Primary()->conn.get();
  const char* params[] = {table_.c_str()};
  ResultPtr key(PQexecParams(conn,
                             "SELECT attname FROM pg_attribute WHERE attrelid = $1::regclass "
                             "AND attnum > 0 AND attidentity <> ''",
                             1, nullptr, params, nullptr, nullptr, 0));
  if (PQresultStatus(key.get()) != PGRES_TUPLES_OK) {
    code_ = db_->Fail(conn, key.get(), true);
    return;
  }
  if (PQntuples(key.get()) == 0) return;
  const std::string column = PQgetvalue(key.get(), 0, 0);
  // Was the key among the columns written? Names compare as the server
  // folds them.
  std::string listed = "," + columns_ + ",";
  std::string folded;
  for (char c : listed) {
    if (c != ' ') folded += static_cast<char>(tolower(static_cast<unsigned char>(c)));
  }
  if (folded.find("," + column + ",") == std::string::npos) return;
  const std::string sql = "SELECT setval(pg_get_serial_sequence($1, $2), max(" + column +
                          ")) FROM " + table_ + " HAVING max(" + column + ") IS NOT NULL";
  const char* both[] = {table_.c_str(), column.c_str()};
  ResultPtr set(PQexecParams(conn, sql.c_str(), 2, nullptr, both, nullptr, nullptr, 0));
  if (PQresultStatus(set.get()) != PGRES_TUPLES_OK) code_ = db_->Fail(conn, set.get(), false);
}

Code PgBulkWriter::Finish() {
  Flush();
  db_->SettleCopy();
  if (code_ == Code::kOk) AdvanceKeys();
  return code_;
}

PgDatabase::PgDatabase(std::vector<std::string> keywords, std::vector<std::string> values,
                       std::string display, int lockTimeoutMs, ConnPtr first)
    : keywords_(std::move(keywords)),
      values_(std::move(values)),
      display_(std::move(display)),
      lockTimeoutMs_(lockTimeoutMs) {
  links_.emplace_back();
  links_.back().conn = std::move(first);
}

PgDatabase::~PgDatabase() = default;

ConnPtr PgDatabase::Connect(std::string* message) const {
  ConnPtr conn = ConnectWith(keywords_, values_);
  if (conn && PQstatus(conn.get()) == CONNECTION_OK) return conn;
  *message = conn ? PQerrorMessage(conn.get()) : "out of memory";
  return nullptr;
}

void PgDatabase::SettleCopy() {
  PgBulkWriter* writer = copying_;
  copying_ = nullptr;
  if (writer != nullptr) writer->Settle();
}

Link* PgDatabase::LinkFor(Link* home, Code* code) {
  SettleCopy();
  if (inTransaction_) return Primary();
  if (home != nullptr && home->streaming == nullptr) return home;
  for (Link& link : links_) {
    if (link.streaming == nullptr) return &link;
  }
  if (links_.size() >= kMaxLinks) return Primary();
  std::string message;
  ConnPtr conn = Connect(&message);
  if (!conn) {
    *code = CodeForConnectFailure(message);
    lastError_ =
        "cannot open a further connection to " + display_ + ": " + ConnectFailureReason(message);
    return nullptr;
  }
  links_.emplace_back();
  links_.back().conn = std::move(conn);
  return &links_.back();
}

Link* PgDatabase::Primary() {
  SettleCopy();
  Link* link = &links_.front();
  if (link->streaming != nullptr) link->streaming->Park();
  return link;
}

Code PgDatabase::Fail(PGconn* conn, const PGresult* result, bool isQuery) {
  const char* state = result != nullptr ? PQresultErrorField(result, PG_DIAG_SQLSTATE) : nullptr;
  const char* primary =
      result != nullptr ? PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY) : nullptr;
  lastError_ = primary != nullptr ? primary : FirstLine(PQerrorMessage(conn));
  if (state != nullptr) {
    lastError_ += std::string(" (SQLSTATE ") + state + ")";
    // A lock not granted in time used up the run's allowance for waiting.
    if (strcmp(state, "55P03") == 0) ChargeLockWait(lockTimeoutMs_);
    return CodeForSqlState(state, isQuery);
  }
  return PQstatus(conn) == CONNECTION_OK ? Code::kError : Code::kUnreachable;
}

std::unique_ptr<Statement> PgDatabase::Prepare(std::string_view sql, Code* code) {
  Code ignored;
  if (code == nullptr) code = &ignored;
  *code = Code::kOk;
  Link* link = LinkFor(nullptr, code);
  if (link == nullptr) return nullptr;
  int params = 0;
  std::string text = NumberMarks(sql, &params);
  std::string name = "sw" + std::to_string(++link->named);
  PGconn* conn = link->conn.get();
  // One round trip: the statements let go since the last preparation, this
  // one's preparation and the description of its columns.
  const std::vector<std::string> drops = std::move(link->drops);
  link->drops.clear();
  bool sent = PQenterPipelineMode(conn) == 1;
  for (const std::string& drop : drops) {
    const std::string deallocate = "DEALLOCATE " + drop;
    sent = sent && PQsendQueryParams(conn, deallocate.c_str(), 0, nullptr, nullptr, nullptr,
                                     nullptr, 0) == 1;
  }
  sent = sent && PQsendPrepare(conn, name.c_str(), text.c_str(), 0, nullptr) == 1 &&
         PQsendDescribePrepared(conn, name.c_str()) == 1 && PQpipelineSync(conn) == 1;
  // A result for every command (aborted ones after a failure), each followed
  // by a null, then the sync.
  const size_t commands = drops.size() + 2;
  std::vector<ResultPtr> results;
  size_t ends = 0;
  while (sent) {
    PGresult* result = PQgetResult(conn);
    if (result == nullptr) {
      if (++ends > commands || PQstatus(conn) != CONNECTION_OK) break;
      continue;
    }
    if (PQresultStatus(result) == PGRES_PIPELINE_SYNC) {
      PQclear(result);
      break;
    }
    results.emplace_back(result);
  }
  PQexitPipelineMode(conn);
  const bool prepared =
      results.size() == commands && PQresultStatus(results[commands - 2].get()) == PGRES_COMMAND_OK;
  if (!prepared || PQresultStatus(results.back().get()) != PGRES_COMMAND_OK) {
    if (prepared) Drop(link, name);
    const PGresult* failed = nullptr;
    for (const ResultPtr& result : results) {
      if (failed == nullptr && PQresultStatus(result.get()) == PGRES_FATAL_ERROR) {
        failed = result.get();
      }
    }
    *code = Fail(conn, failed, false);
    return nullptr;
  }
  return std::make_unique<PgStatement>(this, link, std::move(name), sql, std::move(text), params,
                                       PQnfields(results.back().get()));
}

Code PgDatabase::Exec(std::string_view sql) {
  PGconn* conn = Primary()->conn.get();
  ResultPtr result(PQexec(conn, std::string(sql).c_str()));
  switch (PQresultStatus(result.get())) {
    case PGRES_COMMAND_OK:
    case PGRES_TUPLES_OK:
    case PGRES_EMPTY_QUERY:
      return Code::kOk;
    default:
      return Fail(conn, result.get(), false);
  }
}

Code PgDatabase::Begin() {
  const Code code = Exec("BEGIN");
  inTransaction_ = code == Code::kOk;
  return code;
}

Code PgDatabase::Commit() {
  PGconn* conn = Primary()->conn.get();
  inTransaction_ = false;
  ResultPtr result(PQexec(conn, "COMMIT"));
  if (PQresultStatus(result.get()) != PGRES_COMMAND_OK) return Fail(conn, result.get(), false);
  // The server answers COMMIT of a failed transaction with ROLLBACK.
  if (strcmp(PQcmdStatus(result.get()), "COMMIT") != 0) {
    lastError_ = "the transaction failed and was rolled back";
    return Code::kError;
  }
  return Code::kOk;
}

void PgDatabase::Rollback() {
  inTransaction_ = false;
  ResultPtr result(PQexec(Primary()->conn.get(), "ROLLBACK"));
}

int64_t PgDatabase::LastInsertKey(const char* table, const char* keyColumn) {
  SettleCopy();
  Link* link =
      insertLink_ != nullptr && insertLink_->streaming == nullptr ? insertLink_ : Primary();
  // The table name folds to lower case on the server, the column name not.
  std::string column = keyColumn;
  for (char& c : column) c = static_cast<char>(tolower(static_cast<unsigned char>(c)));
  const char* params[] = {table, column.c_str()};
  ResultPtr result(PQexecParams(link->conn.get(), "SELECT currval(pg_get_serial_sequence($1, $2))",
                                2, nullptr, params, nullptr, nullptr, 0));
  if (PQresultStatus(result.get()) != PGRES_TUPLES_OK || PQntuples(result.get()) != 1) {
    Fail(link->conn.get(), result.get(), true);
    return 0;
  }
  return strtoll(PQgetvalue(result.get(), 0, 0), nullptr, 10);
}

std::unique_ptr<BulkWriter> PgDatabase::Bulk(const char* table, const char* columns) {
  return std::make_unique<PgBulkWriter>(this, table, columns);
}

}  // namespace

std::string PostgresDisplay(const std::string& conninfo) {
  Target target;
  return ReadTarget(conninfo, &target) ? target.display : "an unreadable connection string";
}

Code OpenPostgres(const Location& where, OpenMode mode, std::unique_ptr<Database>* db,
                  std::string* why) {
  Target target;
  if (!ReadTarget(where.conninfo, &target)) {
    *why = "the catalog's connection string is not valid";
    return Code::kMisuse;
  }
  const std::string& display = where.display.empty() ? target.display : where.display;
  // What is left of the run's allowance for lock waits; lock_timeout 0
  // would wait without end, so the least wait is 1 ms.
  const int lockTimeoutMs = std::max(RemainingLockWaitMs(where.busyTimeoutMs), 1);
  std::string options = target.options + " -c search_path=" + kSearchPath +
                        " -c lock_timeout=" + std::to_string(lockTimeoutMs) +
                        " -c synchronous_commit=on" + kPlannerOptions +
                        // A run killed while its statement waits for a lock
                        // must not have the statement finish later on.
                        " -c client_connection_check_interval=500";
  if (mode == OpenMode::kReadOnly) options += " -c default_transaction_read_only=on";
  // Later keywords override what the connection string says; keepalives
  // notice a server that went away without a word.
  std::vector<std::string> keywords = {
      "dbname",          "fallback_application_name", "connect_timeout", "options",
      "keepalives_idle", "keepalives_interval",       "keepalives_count"};
  std::vector<std::string> values = {where.conninfo,
                                     "stashwell-catalog",
                                     std::to_string(std::max(where.connectTimeoutS, 2)),
                                     options,
                                     "30",
                                     "10",
                                     "3"};
  ConnPtr conn = ConnectWith(keywords, values);
  if (!conn) {
    *why = "cannot connect to the catalog at " + display + ": out of memory";
    return Code::kNoMemory;
  }
  if (PQstatus(conn.get()) != CONNECTION_OK) {
    const char* message = PQerrorMessage(conn.get());
    *why = "cannot connect to the catalog at " + display + ": " + ConnectFailureReason(message);
    return CodeForConnectFailure(message);
  }
  if (mode != OpenMode::kCreate) {
    // The schemas that are missing, and whether the image table is there.
    const std::string sql = std::string("SELECT (SELECT string_agg(s, ', ') FROM ") +
                            "unnest(string_to_array('" + kSearchPath + "', ',')) s " +
                            "WHERE s NOT IN (SELECT nspname FROM pg_namespace)), " +
                            "to_regclass('dbm_main.dbm_image') IS NOT NULL";
    ResultPtr check(PQexec(conn.get(), sql.c_str()));
    if (PQresultStatus(check.get()) != PGRES_TUPLES_OK) {
      *why = "cannot read the catalog at " + display + ": " +
             FirstLine(PQresultErrorMessage(check.get()));
      const char* state = PQresultErrorField(check.get(), PG_DIAG_SQLSTATE);
      return state != nullptr ? CodeForSqlState(state, true) : Code::kUnreachable;
    }
    if (!PQgetisnull(check.get(), 0, 0)) {
      *why = "the catalog database " + display + " has no schema " + PQgetvalue(check.get(), 0, 0);
      return Code::kMissing;
    }
    if (PQgetvalue(check.get(), 0, 1)[0] != 't') {
      *why = "the database " + display + " holds no catalog";
      return Code::kCorrupt;
    }
  }
  *db = std::make_unique<PgDatabase>(std::move(keywords), std::move(values), display, lockTimeoutMs,
                                     std::move(conn));
  return Code::kOk;
}

}  // namespace sqldb
