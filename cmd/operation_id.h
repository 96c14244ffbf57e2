// operation_e: the number of each operation cyclectl can run. The numbers are
// fixed (messages print them and the allowed-option lists are keyed by them);
// the table that joins them to their words and flags is in cmd/operations.h.
// This header holds only the enumeration so that handlers taking an operation
// need not see the tables.
#ifndef CMD_OPERATION_ID_H_
#define CMD_OPERATION_ID_H_

enum operation_e {
  OP_NONE = 0,  // no operation given yet
  OP_ACTIVE = 1,
  OP_ADD_IMPORT_FRAGS = 2,
  OP_CANCEL = 3,
  OP_COMPLETION_REPORT = 4,
  OP_DELETEDONE = 5,
  OP_DISKFULL = 6,
  OP_DISKSPACEINFO = 7,
  OP_DROPWG = 8,
  OP_DUMP = 9,
  OP_HELP = 10,
  OP_UPDATE_HWM = 11,
  OP_INACTIVE = 12,
  OP_INITIATE_EXP = 13,
  OP_STLILIST = 14,
  OP_REPORT = 15,
  OP_LIST = 16,
  OP_LIST_IMPORT_CONF = 17,
  OP_LIST_IMPORT_FRAGS = 18,
  OP_PENDIMPLIST = 19,
  OP_LIST_IMPORT_NOTIFY = 20,
  OP_REPLLIST = 21,
  OP_LISTWG = 22,
  OP_ONE_SESSION = 23,
  OP_QUERY_EXP = 24,
  OP_REDO = 25,
  OP_REMOVE_ALL = 26,
  OP_REMOVE_EXP = 27,
  OP_REMOVE_REPL = 28,
  OP_RESUME = 29,
  OP_SHOWVOL = 30,
  OP_NEW_SESSION = 31,  // also spelled ns
  OP_SUSPEND = 32,
  OP_TESTHOOK = 33,
  OP_UPDATE_PFS = 34,
  OP_END = 35,  // marks the end of the operation table
};

#endif  // CMD_OPERATION_ID_H_
