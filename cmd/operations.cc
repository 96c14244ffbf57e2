// The operation table and its two lookups.
#include "cmd/operations.h"

#include <strings.h>

const OperInfo operInfo[] = {
    {OP_NONE, "", false, false},
    {OP_ACTIVE, "active", true, false},
    {OP_ADD_IMPORT_FRAGS, "add_import_frags", true, false},
    {OP_CANCEL, "cancel", true, false},
    {OP_COMPLETION_REPORT, "completion_report", false, false},
    {OP_DELETEDONE, "deletedone", true, false},
    {OP_DISKFULL, "diskfull", true, false},
    {OP_DISKSPACEINFO, "diskspaceinfo", false, true},
    {OP_DROPWG, "dropwg", false, false},
    {OP_DUMP, "dump", true, false},
    {OP_HELP, "help", false, false},
    {OP_UPDATE_HWM, "update_hwm", true, false},
    {OP_INACTIVE, "inactive", true, false},
    {OP_INITIATE_EXP, "initiate_exp", true, false},
    {OP_STLILIST, "stlilist", false, true},
    {OP_REPORT, "report", false, true},
    {OP_LIST, "list", false, true},
    {OP_LIST_IMPORT_CONF, "list_import_conf", false, true},
    {OP_LIST_IMPORT_FRAGS, "list_import_frags", false, true},
    {OP_PENDIMPLIST, "pendimplist", false, true},
    {OP_LIST_IMPORT_NOTIFY, "list_import_notify", true, false},
    {OP_REPLLIST, "repllist", false, true},
    {OP_LISTWG, "listwg", false, false},
    {OP_ONE_SESSION, "one_session", true, false},
    {OP_QUERY_EXP, "query_exp", true, false},
    {OP_REDO, "redo", true, true},
    {OP_REMOVE_ALL, "remove_all", true, false},
    {OP_REMOVE_EXP, "remove_exp", true, true},
    {OP_REMOVE_REPL, "remove_repl", true, false},
    {OP_RESUME, "resume", true, false},
    {OP_SHOWVOL, "showvol", false, true},
    {OP_NEW_SESSION, "new_session", true, false},
    {OP_NEW_SESSION, "ns", true, false},
    {OP_SUSPEND, "suspend", true, false},
    {OP_TESTHOOK, "testhook", true, false},
    {OP_UPDATE_PFS, "update_pfs", true, false},
    {OP_END, "", false, false},
};

const size_t operInfoRows = sizeof operInfo / sizeof operInfo[0];

const OperInfo* FindOperation(const char* word) {
  for (const OperInfo* row = operInfo + 1; row->id != OP_END; ++row) {
    if (strcasecmp(row->name, word) == 0) return row;
  }
  return nullptr;
}

const OperInfo* OperationRow(int id) {
  for (const OperInfo& row : operInfo) {
    if (row.id == id) return &row;
  }
  return nullptr;
}

const char* OperationName(int id) {
  const OperInfo* row = OperationRow(id);
  return row != nullptr ? row->name : "";
}
