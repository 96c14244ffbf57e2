// Catalog opening for the data-access layer, with the engine's codes turned
// into the layer's statuses.
#include "platform/dal/catalog_file.h"

#include "platform/dal/dal_status.h"

namespace Corvela {
namespace Dal {

int OpenCatalogFile(const CatalogLocation& where, bool readOnly,
                    std::unique_ptr<sqldb::Database>* db, std::string* why) {
  const sqldb::Code code = sqldb::Open(
      where, readOnly ? sqldb::OpenMode::kReadOnly : sqldb::OpenMode::kReadWrite, db, why);
  if (code == sqldb::Code::kOk) return DAL_SUCCESS;
  // An engine that cannot open the database at all (an engine error or a
  // refused call here) leaves the catalog unreadable for this run.
  const int status = DalStatusFromCode(code);
  return status == DAL_SQL_ERROR || status == DAL_INVALID_ARGUMENT ? DAL_CATALOG_UNREADABLE
                                                                   : status;
}

}  // namespace Dal
}  // namespace Corvela
