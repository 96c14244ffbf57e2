// The work-group listing: one statement over the work groups joined with
// their target copies, fetched a row at a time. The rows of a work group
// arrive together, so a work group is complete when the key changes; in the
// JSON forms only that work group is held while it is built.
#include "workgroup/list_work_groups.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "catalog/database_connection.h"
#include "platform/debuglog.h"
#include "util/json_output.h"
#include "util/message.h"
#include "util/output_form.h"
#include "util/process.h"
#include "workgroup/wg_printers.h"

using Corvela::Dal::DAL_NO_DATA;
using Orvantic::Stashwell::IsJsonForm;
using Orvantic::Stashwell::JsonRef;
using Orvantic::Stashwell::WriteJsonDocument;

namespace {

const int kNotConnected = 25;
const int kDatabaseFailure = 130;

// The work group being built in a JSON form: its object and the array of its
// target copies.
class JsonWorkGroup {
 public:
  explicit JsonWorkGroup(outputform_e form) : form_(form) {}

  void Start(const wg_tci_db& row) {
    group_.reset(new JsonRef(json_object()));
    copies_.reset(new JsonRef(json_array()));
    JsonFormatWorkGroup(row, group_->get());
  }
  void AddTargetCopy(const wg_tci_db& row) { JsonFormatTargetCopyInfo(row, copies_->get()); }

  // Writes the work group built so far, if any, and lets it go.
  void Finish() {
    if (!group_) return;
    json_object_set_new(group_->get(), "TargetCopyInfo", copies_->release());
    WriteJsonDocument(stdout, group_->get(), form_);
    group_.reset();
    copies_.reset();
  }

 private:
  outputform_e form_;
  std::unique_ptr<JsonRef> group_;
  std::unique_ptr<JsonRef> copies_;
};

void PrintRow(outputform_e form, const wg_tci_db& row, bool newGroup, JsonWorkGroup& json) {
  switch (form) {
    case OUTPUT_SHORT:
      PrintWgShort(row, newGroup);
      break;
    case OUTPUT_USER:
      PrintWgUser(row, newGroup);
      break;
    case OUTPUT_BRIEF:
      if (newGroup) printf("%u\n", row.wg_values.WorkGroupKey);
      break;
    case OUTPUT_JSON:
    case OUTPUT_JSON_COMPACT:
      if (newGroup) {
        json.Finish();
        json.Start(row);
      }
      json.AddTargetCopy(row);
      break;
    default:
      PrintUnsupportedForm(form);
      break;
  }
}

}  // namespace

int ListWorkGroups(outputform_e form, long key) {
  DatabaseConnection db(Corvela::Dal::USERID_SLP_ADMIN);
  if (!db.connected) return kNotConnected;

  const std::string sql = WorkGroupStatement(key);
  int status = db.connection->Execute(db.view, sql, nullptr, Corvela::Dal::LOG_AT_VERBOSITY_5,
                                      "DbConnection::Execute", false, false);
  if (status != 0) {
    logmsg(16, PrintMsg(stderr, "SmeSlp0670N", "error executing SQL query, status = %d", status),
           progname.c_str());
    logmsg(2, sql.c_str(), progname.c_str());
    return kDatabaseFailure;
  }

  JsonWorkGroup json(form);
  wg_tci_db row;
  uint32_t previousKey = 0;
  bool anyRow = false;
  for (;;) {
    memset(&row, 0, sizeof row);
    unsigned int rows = 1;
    status =
        db.connection->Fetch(db.view, &row, sizeof row, wgBind, kWgColumns, &rows, false, false);
    if (status != 0) break;
    const bool newGroup = !anyRow || row.wg_values.WorkGroupKey != previousKey;
    PrintRow(form, row, newGroup, json);
    previousKey = row.wg_values.WorkGroupKey;
    anyRow = true;
  }

  if (status != DAL_NO_DATA) {
    fflush(stdout);
    logmsg(
        16,
        PrintMsg(stderr, "SmeSlp0680N", "error fetching data from database, status = %d", status),
        progname.c_str());
    return kDatabaseFailure;
  }
  if (!anyRow) {
    PrintMsg(stderr, "SmeSlp0700N", "No work groups found");
    return 0;
  }
  if (IsJsonForm(form)) json.Finish();
  return 0;
}
