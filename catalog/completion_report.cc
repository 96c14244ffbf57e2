// The completion report. For each day, newest first, two statements ask the
// catalog which clients had every managed image of the day complete (images
// complete that day, EXCEPT the clients with an unfinished one) and which had
// one unfinished; a client keeps the newest day it was complete on. The
// selection texts reach the statements only as bound parameters, once per
// image alias, each alias with its own binder.
#include "catalog/completion_report.h"

#include <cstdio>
#include <ctime>
#include <map>
#include <set>
#include <string>

#include "catalog/catalog_util.h"
#include "catalog/database_connection.h"
#include "platform/debuglog.h"
#include "util/clock.h"
#include "util/format.h"
#include "util/message.h"
#include "util/process.h"

using namespace Corvela::Dal;
using Orvantic::Stashwell::FormatTime;

namespace {

// Image SLP states the statements name: complete, and not managed.
const int kComplete = 3;
const int kNotManaged = 0;

const int kNoConnection = 25;
const int kStatementFailed = 130;
const size_t kNameSize = 257;
// The walk's mark for "no older day to look at".
const long kNoDay = -1;

// Client name to the start of the newest day it was complete on (0: none).
using ClientDays = std::map<std::string, long>;

// The selection conditions of one image alias with their parameters.
struct Conditions {
  std::string text;
  ParameterBinder binder;
};

void AddCondition(Conditions* c, const std::string& alias, const char* column,
                  const std::string& value) {
  c->text += " AND " + alias + "." + column + " = ?";
  c->binder.bindInputString(value.c_str(), DAL_NTS, false);
}

void BuildConditions(const std::string& policy, const std::string& client,
                     const std::string& lifecycle, long version, Conditions* i, Conditions* i2) {
  for (auto [c, alias] : {std::make_pair(i, "I"), std::make_pair(i2, "I2")}) {
    if (!policy.empty()) AddCondition(c, alias, "PolicyName", policy);
    if (!client.empty()) AddCondition(c, alias, "ClientMachineName", client);
    if (!lifecycle.empty()) {
      AddCondition(c, alias, "StorageServiceName", lifecycle);
      if (version != -1) {
        c->text += std::string(" AND ") + alias +
                   ".StorageServiceVersionNumber = " + std::to_string(version);
      }
    }
  }
}

// 23:59:59 local time of the day that starts at `start`.
long EndOfDay(long start) {
  time_t t = start;
  struct tm local;
  if (localtime_r(&t, &local) == nullptr) return start;
  local.tm_hour = 23;
  local.tm_min = 59;
  local.tm_sec = 59;
  local.tm_isdst = -1;
  return static_cast<long>(mktime(&local));
}

std::string CompleteClientsSql(unsigned key, long start, long end, const Conditions& i,
                               const Conditions& i2) {
  const std::string k = std::to_string(key), s = std::to_string(start), e = std::to_string(end);
  return "SELECT DISTINCT I.ClientMachineName FROM DBM_MAIN.DBM_Image I "
         "  WHERE (I.MasterServerKey = " +
         k + "         AND I.BackupTime BETWEEN " + s + " AND " + e + i.text +
         "         AND I.StorageServiceState = " + std::to_string(kComplete) + ") " +
         "  EXCEPT (SELECT DISTINCT ClientMachineName FROM DBM_MAIN.DBM_Image I2" +
         "          WHERE (I2.MasterServerKey = " + k +
         "                 AND I2.BackupTime BETWEEN " + s + " AND " + e + i2.text +
         " AND I2.StorageServiceState NOT IN (" + std::to_string(kComplete) + "," +
         std::to_string(kNotManaged) + ")))";
}

std::string UnfinishedClientsSql(unsigned key, long start, long end, const Conditions& i2) {
  return "SELECT DISTINCT I2.ClientMachineName FROM DBM_MAIN.DBM_Image I2 "
         "  WHERE (I2.MasterServerKey = " +
         std::to_string(key) + "         AND I2.BackupTime BETWEEN " + std::to_string(start) +
         " AND " + std::to_string(end) + i2.text + "         AND I2.StorageServiceState NOT IN (" +
         std::to_string(kComplete) + "," + std::to_string(kNotManaged) + "))";
}

class Report {
 public:
  Report(DatabaseConnection* db, bool trace) : db_(db), trace_(trace) {}

  // Runs one day's statement and records its clients with `day` (0 for the
  // unfinished ones). Returns 0, kStatementFailed or a failed fetch's status.
  int RunDay(const char* label, const std::string& sql, ParameterBinder* binder, long day) {
    if (trace_) printf("%s: %s\n", label, sql.c_str());
    int status = db_->connection->Execute(db_->view, sql, binder->getBindings(), LOG_AT_VERBOSITY_5,
                                          "CompletionReport", false, false);
    if (trace_) printf("execute status = %d\n", status);
    if (status != DAL_SUCCESS) {
      logmsg(16, PrintMsg(stderr, "SmeSlp0670N", "error executing SQL query, status = %d", status),
             progname.c_str());
      logmsg(2, sql.c_str(), progname.c_str());
      return kStatementFailed;
    }
    char name[kNameSize];
    while ((status = db_->connection->StringReturningFetch(
                db_->view, name, sizeof name, LOG_AT_VERBOSITY_5, "StringReturningFetch",
                "String")) == DAL_SUCCESS) {
      auto [entry, inserted] = clients_.emplace(name, day);
      if (!inserted && entry->second == 0) entry->second = day;
      if (trace_) printf("insert comp: cmn= %s, insert= %d\n", name, inserted ? 1 : 0);
    }
    return status == DAL_NO_DATA ? 0 : status;
  }

  void PrintByClient() const {
    printf("%-50s%s\n", "Client name", "Most recent completion date");
    for (const auto& [name, day] : clients_) {
      printf("%-50s%s\n", name.c_str(), day == 0 ? "None" : FormatTime(day, true).c_str());
    }
  }

  void PrintByDate() const {
    std::map<long, std::set<std::string>> groups;
    for (const auto& [name, day] : clients_) {
      auto [group, created] = groups.try_emplace(day);
      if (created && trace_) printf("new CNS inserted for %s\n", FormatTime(day, false).c_str());
      group->second.insert(name);
    }
    for (const auto& [day, names] : groups) {
      printf("\n%s\n", day == 0 ? "None complete" : FormatTime(day, false).c_str());
      for (const std::string& name : names) printf("%s\n", name.c_str());
    }
    printf("\n");
  }

  bool empty() const { return clients_.empty(); }

 private:
  DatabaseConnection* db_;
  bool trace_;
  ClientDays clients_;
};

}  // namespace

int CompletionReport(const std::string& masterServer, const std::string& policy,
                     const std::string& client, const std::string& lifecycle, long version,
                     long days, bool byDate, bool trace) {
  if (trace) {
    printf("policy= %s, client= %s, lifecycle= %s, version= %ld, days= %ld\n", policy.c_str(),
           client.c_str(), lifecycle.c_str(), version, days);
  }
  DatabaseConnection db(USERID_DBM_ADMIN);
  if (!db.connected) return kNoConnection;
  unsigned key = 0;
  int status = db.GetMasterServerKey(&key, masterServer);
  if (status != 0) {
    logmsg(
        16,
        PrintMsg(stderr, "SmeSlp0680N", "error fetching data from database, status = %d", status),
        progname.c_str());
    return status;
  }

  Conditions i, i2;
  BuildConditions(policy, client, lifecycle, version, &i, &i2);
  // The first statement takes the parameters of both aliases, in order.
  i.binder.appendParameters(i2.binder);

  Report report(&db, trace);
  long start = beginOfDay(static_cast<long>(Orvantic::Stashwell::CurrentTime()));
  // Days that end before the first second of 1970 hold no image: the walk
  // stops after the day that holds it, however many days were asked for.
  for (long d = 0; d < days && start != kNoDay; ++d) {
    const long end = EndOfDay(start);
    if (trace) {
      printf("begin: %s, end: %s\n", FormatTime(start, false).c_str(),
             FormatTime(end, false).c_str());
    }
    status = report.RunDay("SQL1", CompleteClientsSql(key, start, end, i, i2), &i.binder, start);
    if (status == 0) {
      status = report.RunDay("SQL2", UnfinishedClientsSql(key, start, end, i2), &i2.binder, 0);
    }
    if (status == kStatementFailed) return status;
    if (status != 0) {
      logmsg(
          16,
          PrintMsg(stderr, "SmeSlp0680N", "error fetching data from database, status = %d", status),
          progname.c_str());
      return status;
    }
    start = start > 0 ? beginOfDay(start - 1) : kNoDay;
  }

  if (report.empty()) {
    printf("No backup images found for given date range and selection values\n");
  } else if (byDate) {
    report.PrintByDate();
  } else {
    report.PrintByClient();
  }
  return 0;
}
