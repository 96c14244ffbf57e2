// Statement execution and fetching over a catalog connection.
#include "platform/dal/db_connection.h"

#include <algorithm>
#include <new>

#include "platform/dal/dal_log.h"
#include "platform/dal/dal_status.h"
#include "platform/dal/sql_tokenizer.h"
#include "platform/dal/value_codec.h"

namespace Corvela {
namespace Dal {

namespace {

// Statements after which "no row touched" is reported as DAL_NO_DATA.
const char* const kSearchedWrites[] = {"UPDATE", "DELETE"};

bool IsSearchedWrite(const std::string& sql) {
  for (const SqlToken& t : TokenizeSql(sql)) {
    if (!t.IsSignificant()) continue;
    for (const char* w : kSearchedWrites) {
      if (t.IsWord(w)) return true;
    }
    return false;
  }
  return false;
}

std::string Describe(int status) {
  return "status " + std::to_string(status) + " (" + DalStatusText(status) + ")";
}

// `what` with the engine's reason for `code` ("disk full", "read-only",
// "locked", ...) and its own words: the status alone does not tell a full
// disk from other I/O failures.
std::string EngineFailure(const char* what, sqldb::Code code, const sqldb::Database& db) {
  return std::string(what) + " (" + sqldb::CodeText(code) + "): " + db.LastError();
}

}  // namespace

DbConnection::DbConnection(std::unique_ptr<sqldb::Database> db, SqlTranslationCache* translations)
    : db_(std::move(db)), translations_(translations) {}

DbConnection::~DbConnection() {
  views_.clear();  // finalizes their statements before the database closes
}

bool DbConnection::Owns(const DalOdbcView* view) const {
  return view != nullptr && view->owner_ == this;
}

DalOdbcView* DbConnection::GetOdbcView(int* status) {
  try {
    views_.emplace_back(new DalOdbcView(this));
  } catch (const std::bad_alloc&) {
    if (status) *status = DAL_OUT_OF_MEMORY;
    return nullptr;
  }
  if (status) *status = DAL_SUCCESS;
  return views_.back().get();
}

void DbConnection::ReturnOdbcView(DalOdbcView* view) {
  auto it = std::find_if(views_.begin(), views_.end(),
                         [view](const std::unique_ptr<DalOdbcView>& v) { return v.get() == view; });
  if (it != views_.end()) views_.erase(it);
}

int DbConnection::Fail(DalOdbcView* view, int status, const std::string& what,
                       const std::string& sql) {
  const char* caller = view ? view->caller_.c_str() : nullptr;
  std::string text = what + ": " + Describe(status);
  if (!sql.empty()) text += "; statement: " + sql;
  DalError(caller, text);
  if (view) view->Finish();
  return status;
}

int DbConnection::Prepare(DalOdbcView* view, const std::string& sql, const char* caller) {
  view->Finish();
  view->caller_ = caller ? caller : "";
  view->executed_ = true;
  view->rowCount_ = 0;
  const SqlTranslation& translation = translations_->Translate(sql);
  if (!translation.ok) {
    return Fail(view, DAL_SQL_ERROR, "cannot translate the statement: " + translation.text, sql);
  }
  sqldb::Code code;
  view->stmt_ = db_->Prepare(translation.text, &code);
  if (!view->stmt_) {
    return Fail(view, DalStatusFromCode(code), EngineFailure("prepare failed", code, *db_), sql);
  }
  view->isQuery_ = view->stmt_->ColumnCount() > 0;
  return DAL_SUCCESS;
}

int DbConnection::BindAll(DalOdbcView* view, const DalBinding* bindings, const std::string& sql) {
  const int expected = view->stmt_->ParameterCount();
  // Reads at most one entry past the expected parameters, so that a list
  // without its terminator is refused rather than walked off its end.
  int given = 0;
  while (bindings != nullptr && given <= expected &&
         bindings[given].columnNumber != DAL_TERMINATOR_COLUMN) {
    ++given;
  }
  if (given != expected) {
    return Fail(view, DAL_PARAMETER_MISMATCH,
                "statement has " + std::to_string(expected) + " parameter marks, " +
                    std::to_string(given) + (given > expected ? " or more" : "") + " bound",
                sql);
  }
  for (int i = 0; i < given; ++i) {
    const int status = BindParameter(view->stmt_.get(), i + 1, bindings[i]);
    if (status != DAL_SUCCESS) {
      return Fail(view, status, "cannot bind parameter " + std::to_string(i + 1), sql);
    }
  }
  return DAL_SUCCESS;
}

int DbConnection::Execute(DalOdbcView* view, const std::string& sql, const DalBinding* bindings,
                          LOG_AT_VERBOSITY verbosity, const char* callerName, bool allowNoData,
                          bool logParameters) {
  if (!Owns(view))
    return Fail(nullptr, DAL_INVALID_ARGUMENT, "Execute without a view of this connection", sql);
  DalTrace(verbosity, callerName, "executing: " + sql);
  int status = Prepare(view, sql, callerName);
  if (status == DAL_SUCCESS) status = BindAll(view, bindings, sql);
  if (status != DAL_SUCCESS) return status;
  if (logParameters) {
    DalTrace(verbosity, callerName, "with parameters: " + view->stmt_->ExpandedSql());
  }

  const sqldb::Code code = view->stmt_->Step();
  if (code == sqldb::Code::kRow && view->isQuery_) {
    view->rowPending_ = true;
  } else if (code == sqldb::Code::kDone || code == sqldb::Code::kRow) {
    view->exhausted_ = true;
    view->stmt_->Reset();
  } else {
    return Fail(view, DalStatusFromCode(code), EngineFailure("execute failed", code, *db_), sql);
  }
  if (!view->isQuery_) {
    view->rowCount_ = view->stmt_->Changes();
    if (view->rowCount_ == 0 && !allowNoData && IsSearchedWrite(view->stmt_->Sql())) {
      DalTrace(verbosity, callerName, "no row touched");
      return DAL_NO_DATA;
    }
  }
  DalTrace(verbosity, callerName, "status 0, rows touched " + std::to_string(view->rowCount_));
  return DAL_SUCCESS;
}

int DbConnection::Fetch(DalOdbcView* view, void* rowBuffer, size_t rowSize,
                        const DalBinding* bindingTable, unsigned int bindingCount,
                        unsigned int* rows, bool nullsAsZero, bool failOnTruncation) {
  if (!Owns(view))
    return Fail(nullptr, DAL_INVALID_ARGUMENT, "Fetch without a view of this connection", "");
  if (rowBuffer == nullptr || rows == nullptr || *rows == 0 || rowSize == 0 ||
      (bindingTable == nullptr && bindingCount > 0)) {
    if (rows) *rows = 0;
    return Fail(nullptr, DAL_INVALID_ARGUMENT, "Fetch with an empty row buffer", "");
  }
  const unsigned int capacity = *rows;
  *rows = 0;
  if (!view->stmt_ || !view->isQuery_) {
    return view->executed_ && view->exhausted_ ? DAL_NO_DATA : DAL_NO_RESULT_SET;
  }
  const int columns = view->stmt_->ColumnCount();
  for (unsigned int i = 0; i < bindingCount; ++i) {
    if (CheckResultBinding(bindingTable[i], rowSize, columns) != DAL_SUCCESS) {
      DalError(view->caller_.c_str(), "Fetch: result binding " + std::to_string(i + 1) +
                                          " does not fit the row or the statement");
      return DAL_INVALID_ARGUMENT;
    }
  }

  char* row = static_cast<char*>(rowBuffer);
  while (*rows < capacity) {
    if (!view->rowPending_) {
      if (view->exhausted_) break;
      const sqldb::Code code = view->stmt_->Step();
      if (code == sqldb::Code::kDone) {
        view->exhausted_ = true;
        view->stmt_->Reset();  // releases the read lock
        break;
      }
      if (code != sqldb::Code::kRow) {
        const int status = DalStatusFromCode(code);
        DalError(view->caller_.c_str(),
                 EngineFailure("fetch failed", code, *db_) + ": " + Describe(status));
        view->exhausted_ = true;
        view->stmt_->Reset();
        return status;
      }
      view->rowPending_ = true;
    }
    view->rowPending_ = false;
    ++view->rowCount_;
    const sqldb::Row& current = view->stmt_->CurrentRow();
    for (unsigned int i = 0; i < bindingCount; ++i) {
      const int status = StoreColumn(current, bindingTable[i], row + *rows * rowSize, nullsAsZero,
                                     failOnTruncation);
      if (status != DAL_SUCCESS) {
        DalError(view->caller_.c_str(), "fetch: column " +
                                            std::to_string(bindingTable[i].columnNumber) + ": " +
                                            Describe(status));
        return status;
      }
    }
    ++*rows;
  }
  return *rows > 0 ? DAL_SUCCESS : DAL_NO_DATA;
}

int DbConnection::ULongReturningQuery(DalOdbcView* view, const std::string& sql,
                                      const DalBinding* bindings, uint32_t* value,
                                      LOG_AT_VERBOSITY verbosity, const char* functionName,
                                      const char* typeName) {
  if (value == nullptr)
    return Fail(nullptr, DAL_INVALID_ARGUMENT, "ULongReturningQuery without a value", sql);
  int status = Execute(view, sql, bindings, verbosity, functionName, true, false);
  if (status != DAL_SUCCESS) return status;
  if (!view->isQuery_) return Fail(view, DAL_NO_RESULT_SET, "statement returns no value", sql);
  uint32_t result = 0;
  const DalBinding column = DalResultColumn(1, typeName, DAL_VT_ULONG, 0, sizeof result);
  unsigned int rows = 1;
  status = Fetch(view, &result, sizeof result, &column, 1, &rows, true, false);
  view->Finish();
  if (status == DAL_SUCCESS) {
    *value = result;
    DalTrace(verbosity, functionName,
             std::string(typeName ? typeName : "value") + " = " + std::to_string(result));
  } else if (status == DAL_NO_DATA) {
    DalTrace(verbosity, functionName, "no row");
  }
  return status;
}

int DbConnection::StringReturningFetch(DalOdbcView* view, char* buffer, size_t size,
                                       LOG_AT_VERBOSITY verbosity, const char* functionName,
                                       const char* typeName) {
  if (buffer == nullptr || size == 0) {
    return Fail(nullptr, DAL_INVALID_ARGUMENT, "StringReturningFetch without a buffer", "");
  }
  const DalBinding column =
      DalResultColumn(1, typeName, DAL_VT_CHAR, 0, static_cast<int64_t>(size));
  unsigned int rows = 1;
  const int status = Fetch(view, buffer, size, &column, 1, &rows, true, false);
  if (status == DAL_SUCCESS) {
    DalTrace(verbosity, functionName, std::string(typeName ? typeName : "text") + " = " + buffer);
  }
  return status;
}

}  // namespace Dal
}  // namespace Corvela
