// DbConnection: one open connection to the catalog database. It hands out
// statement views and runs statements on them: Execute (any statement, with
// an input-parameter list), Fetch (rows of the last query into the caller's
// row records, as a result binding table describes), ULongReturningQuery
// (one unsigned number) and StringReturningFetch (the next row's one text).
// Every statement is sent in the catalog's native dialect and translated to
// the engine's dialect here (sql_dialect.h). Every call returns 0 or a status of
// dal_status.h; failures are also written to the debug log.
//
// MSRDbConnection is the form in which a DbConnectionManager leases
// connections out (connection_manager.h).
#ifndef PLATFORM_DAL_DB_CONNECTION_H_
#define PLATFORM_DAL_DB_CONNECTION_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/dal/catalog_file.h"
#include "platform/dal/dal_types.h"
#include "platform/dal/odbc_view.h"
#include "platform/dal/sql_dialect.h"

namespace Corvela {
namespace Dal {

class DbConnection {
 public:
  DbConnection(const DbConnection&) = delete;
  DbConnection& operator=(const DbConnection&) = delete;
  // Ends every view still handed out, then closes the database.
  virtual ~DbConnection();

  // A new statement view, owned by the connection until ReturnOdbcView (or
  // the connection's end). *status (when given) is 0, or DAL_OUT_OF_MEMORY
  // with null returned.
  DalOdbcView* GetOdbcView(int* status);
  // Ends the view's statement and destroys it; views of other connections
  // and null are ignored.
  void ReturnOdbcView(DalOdbcView* view);

  // Runs `sql` on `view`, replacing the statement it held. `bindings` is a
  // parameter list ended by its terminator entry, or null for none; their
  // number must match the statement's '?' marks. A query is positioned
  // before its first row for Fetch. A searched UPDATE or DELETE that touches
  // no row returns DAL_NO_DATA unless `allowNoData`. The statement is
  // traced at `verbosity` under `callerName`; with `logParameters` also as
  // the engine runs it, with the parameter values in place of the marks.
  int Execute(DalOdbcView* view, const std::string& sql, const DalBinding* bindings,
              LOG_AT_VERBOSITY verbosity, const char* callerName, bool allowNoData,
              bool logParameters);

  // Fetches up to *rows rows (the capacity, at least 1) of the view's query
  // into consecutive row records of `rowSize` bytes at `rowBuffer`, each
  // column as the `bindingCount` entries of `bindingTable` direct. *rows is
  // set to the number fetched. Returns 0 when at least one row was fetched,
  // DAL_NO_DATA when none was left, else a status (rows fetched before a
  // failure are counted). NULL columns become zeros when `nullsAsZero`, else
  // leave their fields alone; a text longer than its field is cut and, with
  // `failOnTruncation`, reported as DAL_DATA_TRUNCATED.
  int Fetch(DalOdbcView* view, void* rowBuffer, size_t rowSize, const DalBinding* bindingTable,
            unsigned int bindingCount, unsigned int* rows, bool nullsAsZero, bool failOnTruncation);

  // Runs `sql` and stores the first column of its first row, an unsigned
  // 32-bit number (NULL reads as 0), in *value. Returns 0, DAL_NO_DATA when
  // the query yields no row, or a status. Traced at `verbosity` under
  // `functionName`; `typeName` names the value in the log.
  int ULongReturningQuery(DalOdbcView* view, const std::string& sql, const DalBinding* bindings,
                          uint32_t* value, LOG_AT_VERBOSITY verbosity, const char* functionName,
                          const char* typeName);

  // Reads the next row of the view's query and stores its first column as a
  // NUL-terminated text of at most size - 1 bytes in `buffer` (NULL reads as
  // an empty text). Returns 0 when a row was read, DAL_NO_DATA at the end.
  int StringReturningFetch(DalOdbcView* view, char* buffer, size_t size, LOG_AT_VERBOSITY verbosity,
                           const char* functionName, const char* typeName);

 protected:
  // Takes over `db`; statements are translated through `translations`,
  // which must outlive the connection.
  DbConnection(std::unique_ptr<sqldb::Database> db, SqlTranslationCache* translations);

 private:
  bool Owns(const DalOdbcView* view) const;
  int Prepare(DalOdbcView* view, const std::string& sql, const char* caller);
  int BindAll(DalOdbcView* view, const DalBinding* bindings, const std::string& sql);
  int Fail(DalOdbcView* view, int status, const std::string& what, const std::string& sql);

  std::unique_ptr<sqldb::Database> db_;
  SqlTranslationCache* translations_;
  std::vector<std::unique_ptr<DalOdbcView>> views_;
};

class MSRDbConnection : public DbConnection {
 public:
  MSRDbConnection(std::unique_ptr<sqldb::Database> db, SqlTranslationCache* translations)
      : DbConnection(std::move(db), translations) {}

  bool leased() const { return leased_; }
  void setLeased(bool leased) { leased_ = leased; }

 private:
  bool leased_ = false;
};

}  // namespace Dal
}  // namespace Corvela

#endif  // PLATFORM_DAL_DB_CONNECTION_H_
