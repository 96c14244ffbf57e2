// Statement views: ending a statement and its row count.
#include "platform/dal/odbc_view.h"

#include "platform/dal/dal_status.h"

namespace Corvela {
namespace Dal {

DalOdbcStatement::~DalOdbcStatement() { Finish(); }

void DalOdbcStatement::Finish() {
  stmt_.reset();
  isQuery_ = false;
  rowPending_ = false;
  exhausted_ = false;
}

int DalOdbcStatement::RowCount(int64_t* count) const {
  if (count == nullptr) return DAL_INVALID_ARGUMENT;
  *count = executed_ ? rowCount_ : 0;
  return executed_ ? DAL_SUCCESS : DAL_NO_RESULT_SET;
}

}  // namespace Dal
}  // namespace Corvela
