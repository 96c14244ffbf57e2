// Moves values between the catalog engine and the caller's memory as binding entries
// describe them: result columns into fields of a row record, input
// parameters from the caller's variables into a prepared statement.
//
// Numbers are range-checked against the field they go into; a numeric field
// declared narrower than its value type (a 4-byte type bound with size 2) is
// written in its declared width. Unsigned 64-bit values keep their bit
// pattern through the engine's signed integers. Texts are cut to the field's
// width minus the NUL. A 16-byte value is a blob (or text) of exactly 16
// bytes.
#ifndef PLATFORM_DAL_VALUE_CODEC_H_
#define PLATFORM_DAL_VALUE_CODEC_H_

#include <cstddef>

#include "platform/dal/dal_types.h"
#include "platform/sqldb/sqldb.h"

namespace Corvela {
namespace Dal {

// 0 when `b` is a valid result binding for a statement of `columnCount`
// columns and a row record of `rowSize` bytes, else DAL_INVALID_ARGUMENT.
int CheckResultBinding(const DalBinding& b, size_t rowSize, int columnCount);

// Stores column b.columnNumber of `current` (a statement's row) into `row`. A
// NULL becomes zero bytes when `nullsAsZero`, else leaves the field as it
// is. A text that does not fit is cut; with `failOnTruncation` that also
// yields DAL_DATA_TRUNCATED. Returns 0 or a status.
int StoreColumn(const sqldb::Row& current, const DalBinding& b, char* row, bool nullsAsZero,
                bool failOnTruncation);

// Binds input parameter `index` (from 1) of `stmt` from `b`. A null target,
// or a text length of -1, binds NULL. Returns 0 or a status.
int BindParameter(sqldb::Statement* stmt, int index, const DalBinding& b);

}  // namespace Dal
}  // namespace Corvela

#endif  // PLATFORM_DAL_VALUE_CODEC_H_
