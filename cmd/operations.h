// The operation table operInfo: every operation word cyclectl accepts, in
// table order, with the two flags that decide what start-up prepares before
// the operation runs. The table begins with the empty row of OP_NONE and ends
// with the empty row of OP_END. Two rows carry OP_NEW_SESSION (new_session
// and its short form ns), so from OP_SUSPEND on a row's index is one more than
// its id: the table is only ever searched, never indexed by id.
//
// Adding an operation, in this order:
//  1. its number in operation_e (cmd/operation_id.h), before OP_END;
//  2. its row here in operInfo (cmd/operations.cc), with the two flags;
//  3. its allowed-option list in cmd/options.h/.cc and the pair in
//     kOperationOptions;
//  4. its synopsis and its row in kOperationUsages, and its line in
//     kPublicOperations or kInternalOperations (cmd/usage.cc);
//  5. its handler, one .h/.cc pair in its subsystem's folder, and the
//     wrapper and row in kDispatchTable (cmd/dispatch.cc);
//  6. tests/e2e/golden/synopsis/<word>.txt and an end-to-end test of the
//     handler under tests/e2e/ (docs/testing.md).
// cmd/tables_test.cc fails while a row of steps 3 to 5 is missing.
#ifndef CMD_OPERATIONS_H_
#define CMD_OPERATIONS_H_

#include <cstddef>

#include "cmd/operation_id.h"

struct OperInfo {
  operation_e id;
  char name[32];
  bool requiresAdmin;    // the local administrator check runs first
  bool requiresCatalog;  // the catalog library is opened first
};

extern const OperInfo operInfo[];
// Number of rows of operInfo, the two empty rows included (37).
extern const size_t operInfoRows;

// The row whose name equals `word` without regard to case, searching from the
// first named row up to (not including) the end row; nullptr when none does.
const OperInfo* FindOperation(const char* word);

// The first row carrying `id` (so OP_NEW_SESSION is new_session, not ns);
// nullptr when no row does.
const OperInfo* OperationRow(int id);

// The name of the first row carrying `id`, for messages; "" for an id no row
// carries. Points into operInfo.
const char* OperationName(int id);

#endif  // CMD_OPERATIONS_H_
