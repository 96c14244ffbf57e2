// Statement views: a DalOdbcView is the cursor a DbConnection runs one
// statement at a time on and fetches its rows from; DalOdbcStatement is the
// part that reports what the last statement did. A connection hands views
// out (DbConnection::GetOdbcView) and owns them until they are handed back.
#ifndef PLATFORM_DAL_ODBC_VIEW_H_
#define PLATFORM_DAL_ODBC_VIEW_H_

#include <cstdint>
#include <memory>
#include <string>

#include "platform/dal/dal_types.h"
#include "platform/sqldb/sqldb.h"

namespace Corvela {
namespace Dal {

class DbConnection;

class DalOdbcStatement {
 public:
  DalOdbcStatement(const DalOdbcStatement&) = delete;
  DalOdbcStatement& operator=(const DalOdbcStatement&) = delete;
  virtual ~DalOdbcStatement();

  // Rows touched by the last INSERT, UPDATE or DELETE run on this view, or
  // the rows fetched so far from the last query. Returns 0, or
  // DAL_NO_RESULT_SET (count 0) when nothing has run yet, DAL_INVALID_ARGUMENT
  // for a null pointer.
  int RowCount(int64_t* count) const;

 protected:
  DalOdbcStatement() = default;

  // Ends the current statement, releasing the database locks it holds.
  void Finish();

 private:
  friend class DbConnection;

  std::unique_ptr<sqldb::Statement> stmt_;  // null when nothing runs
  bool executed_ = false;                   // a statement has run since the view was made
  bool isQuery_ = false;                    // the statement returns rows
  bool rowPending_ = false;                 // a stepped row not yet handed out
  bool exhausted_ = false;                  // the query has no further rows
  int64_t rowCount_ = 0;
  std::string caller_;  // log source of the statement's calls
};

class DalOdbcView : public DalOdbcStatement {
 public:
  using BindingStruct = DalBinding;

 private:
  friend class DbConnection;
  explicit DalOdbcView(const DbConnection* owner) : owner_(owner) {}

  const DbConnection* owner_;
};

}  // namespace Dal
}  // namespace Corvela

#endif  // PLATFORM_DAL_ODBC_VIEW_H_
