// The value types of the data-access layer: the binding entry that describes
// one result column or one input parameter, the codes of the C value types
// and SQL parameter types it carries, the log verbosity of a call and the
// database accounts a connection manager can be created for.
//
// A binding list handed to Execute or ULongReturningQuery is an array of
// input-parameter entries, one per '?' in statement order, ended by one
// terminator entry (column number DAL_TERMINATOR_COLUMN). A result binding
// table handed to Fetch has one entry per bound result column, each naming
// the column number and where the value goes in the caller's row record.
#ifndef PLATFORM_DAL_DAL_TYPES_H_
#define PLATFORM_DAL_DAL_TYPES_H_

#include <cstdint>

namespace Corvela {
namespace Dal {

// C value types: how the bytes at a binding's target are read or written.
enum : uint16_t {
  DAL_VT_USHORT = 991,   // unsigned 16-bit
  DAL_VT_ULONG = 992,    // unsigned 32-bit
  DAL_VT_SHORT = 994,    // signed 16-bit
  DAL_VT_SLONG = 995,    // signed 32-bit
  DAL_VT_UBIGINT = 996,  // unsigned 64-bit
  DAL_VT_SBIGINT = 997,  // signed 64-bit
  DAL_VT_CHAR = 1000,    // character buffer, NUL-terminated
  DAL_VT_SSHORT = 1007,  // signed 16-bit
  DAL_VT_GUID = 1017,    // 16 bytes
};

// SQL parameter types of input parameters.
enum : uint16_t {
  DAL_PT_VARCHAR = 1002,
  DAL_PT_INTEGER = 1006,
  DAL_PT_BIGINT = 1014,
  DAL_PT_GUID = 1017,
};

// Directions.
enum : uint16_t { DAL_RESULT_COLUMN = 0, DAL_INPUT_PARAMETER = 1 };

// Column number of the entry that ends a parameter list.
constexpr uint16_t DAL_TERMINATOR_COLUMN = 65535;
// Length of a NUL-terminated text parameter.
constexpr int64_t DAL_NTS = -3;

// One result column or input parameter. For a result column `target` is the
// offset of the field in the caller's row record and `size` its width in
// bytes; for a parameter `target` is the address of the value (the binding
// does not own it) and `size` its width or DAL_NTS.
struct DalBinding {
  uint16_t columnNumber;    // 1.. for a result column, 0 for a parameter
  const char* name;         // qualified column name, "ptr" for a parameter
  uint16_t direction;       // DAL_RESULT_COLUMN or DAL_INPUT_PARAMETER
  uint16_t valueType;       // DAL_VT_...
  uint16_t parameterType;   // DAL_PT_... for a parameter, else 0
  int64_t parameterLength;  // text length in bytes or DAL_NTS
  intptr_t reserved1;
  uintptr_t target;
  int64_t size;
  intptr_t reserved2;
  intptr_t reserved3;
};

// A result-column entry (usable in constant tables).
constexpr DalBinding DalResultColumn(uint16_t column, const char* name, uint16_t valueType,
                                     uintptr_t offset, int64_t size) {
  return DalBinding{column, name, DAL_RESULT_COLUMN, valueType, 0, 0, 0, offset, size, 0, 0};
}

// An input-parameter entry reading the value at `address` (not owned).
inline DalBinding DalInputParameter(uint16_t valueType, uint16_t parameterType, int64_t length,
                                    const void* address, int64_t size) {
  const uintptr_t target = reinterpret_cast<uintptr_t>(address);
  return DalBinding{
      0, "ptr", DAL_INPUT_PARAMETER, valueType, parameterType, length, 0, target, size, 0, 0};
}

// The entry that ends a parameter list.
constexpr DalBinding DalTerminator() {
  return DalBinding{DAL_TERMINATOR_COLUMN, "", DAL_INPUT_PARAMETER, 0, 0, 0, 0, 0, 0, 0, 0};
}

// The debug-log verbosity at which a call writes its statement and outcome:
// the lines appear when the program's configured verbosity is at least this.
// Failures are always logged.
enum LOG_AT_VERBOSITY : int {
  LOG_AT_VERBOSITY_0 = 0,
  LOG_AT_VERBOSITY_1 = 1,
  LOG_AT_VERBOSITY_2 = 2,
  LOG_AT_VERBOSITY_3 = 3,
  LOG_AT_VERBOSITY_4 = 4,
  LOG_AT_VERBOSITY_5 = 5,
};

// The database account a connection manager is created for. The catalog is
// one local database file, so every account reaches the same tables; the
// value is checked and named in the log. Other values make the manager
// unusable.
enum USERID_TYPES : int {
  USERID_DBM_ADMIN = 6,   // image catalog: reports and replication-record upkeep
  USERID_SLP_ADMIN = 12,  // SLP service tables: notifications, work groups, imports
};

}  // namespace Dal
}  // namespace Corvela

#endif  // PLATFORM_DAL_DAL_TYPES_H_
