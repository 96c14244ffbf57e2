// The import confirmation report: one statement over images and their
// copies in state IMPORT_PENDING, read 100 rows at a time, each row checked
// against the operations of its SLP version before it is printed (or, in
// the JSON forms, collected into one document written at the end).
#include "import/import_conf_report.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "catalog/database_connection.h"
#include "catalog/slp_definitions.h"
#include "platform/debuglog.h"
#include "platform/json_string.h"
#include "util/clock.h"
#include "util/format.h"
#include "util/json_output.h"
#include "util/message.h"
#include "util/output_form.h"
#include "util/process.h"

using Orvantic::Stashwell::FormatTime;
using Orvantic::Stashwell::IsJsonForm;
using Orvantic::Stashwell::JsonRef;

namespace {

const unsigned int kRowsPerFetch = 100;

// Statuses of the report.
const int kNotConnected = 25;
const int kQueryFailed = 130;

// True when `slp` has an operation at the copy's SLP index that goes to
// `destination` and `targetDomain` (each when not null). The first operation
// at that index decides.
bool HasMatchingOperation(const SS_LIST& slp, int slpIndex, const char* destination,
                          const char* targetDomain) {
  for (const SS_OPERATION* op = slp.operations; op != nullptr; op = op->next) {
    if (op->index != slpIndex) continue;
    if (destination != nullptr && strcmp(op->destination, destination) != 0) continue;
    if (targetDomain != nullptr && strcmp(op->targetDomain, targetDomain) != 0) continue;
    return true;
  }
  return false;
}

void ReportAndLog(const char* text) { logmsg(16, text, progname.c_str()); }

}  // namespace

void PrintImportConfShort(const image_copy_record& row) {
  printf("%s %d %lld %s %d\n", row.image.BackupID, row.copy.CopyNumber,
         static_cast<long long>(row.copy.LastRetryTime), row.image.StorageServiceName,
         row.image.StorageServiceVersionNumber);
}

void PrintImportConfUser(const image_copy_record& row) {
  const int64_t t = row.copy.LastRetryTime;
  printf(
      "Backup ID           %s\n"
      "Copy number         %d\n"
      "Replication time    %lld(%s)\n"
      "SLP name            %s\n"
      "SLP version         %d\n\n",
      row.image.BackupID, row.copy.CopyNumber, static_cast<long long>(t),
      FormatTime(t, false).c_str(), row.image.StorageServiceName,
      row.image.StorageServiceVersionNumber);
}

void JsonFormatImportConf(const image_copy_record& row, json_t* array) {
  JsonRef object(json_object());
  if (object.get() == nullptr) return;
  json_object_set_new(object.get(), "BackupID", orv_json_string(row.image.BackupID, 0, ""));
  json_object_set_new(object.get(), "CopyNumber", json_integer(row.copy.CopyNumber));
  json_object_set_new(object.get(), "ReplicationTime", json_integer(row.copy.LastRetryTime));
  json_object_set_new(object.get(), "SLPName",
                      orv_json_string(row.image.StorageServiceName, 0, ""));
  json_object_set_new(object.get(), "SLPVersion",
                      json_integer(row.image.StorageServiceVersionNumber));
  json_array_append_new(array, object.release());
}

int ListImportConfReport(outputform_e form, const char* lifecycle, const char* destination,
                         const char* targetDomain, bool allPendingImages) {
  DatabaseConnection db(Corvela::Dal::USERID_SLP_ADMIN);
  if (!db.connected) return kNotConnected;
  SlpDefinitions definitions;
  if (!definitions.Read()) return kQueryFailed;

  const int64_t cutoff = Orvantic::Stashwell::CurrentTime() - ImportConfThreshold;
  const std::string sql =
      ImageCopyStatement(ImportPendingCondition(lifecycle, allPendingImages, cutoff));
  int status = db.connection->Execute(db.view, sql, nullptr, Corvela::Dal::LOG_AT_VERBOSITY_5,
                                      "DbConnection::Execute", false, false);
  if (status != 0) {
    ReportAndLog(PrintMsg(stderr, "SmeSlp0670N", "error executing SQL query, status = %d", status));
    logmsg(2, sql.c_str(), progname.c_str());
    return kQueryFailed;
  }

  std::unique_ptr<image_copy_record[]> rows(new image_copy_record[kRowsPerFetch]);
  // The JSON forms collect the rows and write one document at the end.
  JsonRef array(IsJsonForm(form) ? json_array() : nullptr);
  unsigned long reported = 0;
  for (;;) {
    memset(rows.get(), 0, sizeof(image_copy_record) * kRowsPerFetch);
    unsigned int count = kRowsPerFetch;
    status = db.connection->Fetch(db.view, rows.get(), sizeof(image_copy_record), imageCopyBind,
                                  kImageCopyColumns, &count, true, false);
    if (status != 0) break;
    for (unsigned int i = 0; i < count; ++i) {
      const image_copy_record& row = rows[i];
      const SS_LIST* slp =
          definitions.Find(row.image.StorageServiceName, row.image.StorageServiceVersionNumber);
      if (slp == nullptr ||
          !HasMatchingOperation(*slp, row.copy.SLPIndex, destination, targetDomain)) {
        continue;
      }
      ++reported;
      switch (form) {
        case OUTPUT_SHORT:
          PrintImportConfShort(row);
          break;
        case OUTPUT_USER:
          PrintImportConfUser(row);
          break;
        case OUTPUT_BRIEF:
          printf("%s\n", row.image.BackupID);
          break;
        case OUTPUT_JSON:
        case OUTPUT_JSON_COMPACT:
          if (array.get() != nullptr) JsonFormatImportConf(row, array.get());
          break;
        default:
          fflush(stdout);
          PrintUnsupportedForm(form);
          break;
      }
    }
  }

  if (status != Corvela::Dal::DAL_NO_DATA) {
    ReportAndLog(
        PrintMsg(stderr, "SmeSlp0680N", "error fetching data from database, status = %d", status));
    return status;
  }
  if (reported == 0) {
    PrintMsg(stderr, "SmeSlp0290N", "No images or lifecycles matching criteria found.");
  } else if (IsJsonForm(form) && array.get() != nullptr) {
    JsonRef document(json_object());
    if (document.get() != nullptr &&
        json_object_set_new(document.get(), "ImportPendingInfo", array.release()) == 0) {
      Orvantic::Stashwell::WriteJsonDocument(stdout, document.get(), form);
    }
  }
  return 0;
}
