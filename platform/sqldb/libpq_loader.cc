// Loading libpq on first use, and the libpq functions the engine calls as
// forwarders to the loaded library. sw_sqldb links no libpq: these
// definitions are the ones the linker finds. A libpq function the engine
// starts to call needs its line in SW_LIBPQ_FUNCTIONS and a forwarder below.
#include "platform/sqldb/libpq_loader.h"

#include <dlfcn.h>
#include <libpq-fe.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#define SW_LIBPQ_FUNCTIONS(X)                                                                      \
  X(PQcancel)                                                                                      \
  X(PQclear) X(PQcmdStatus) X(PQcmdTuples) X(PQconndefaults) X(PQconnectdb) X(PQconnectdbParams)   \
      X(PQconninfoFree) X(PQconninfoParse) X(PQenterPipelineMode) X(PQerrorMessage) X(PQexec)      \
          X(PQexecParams) X(PQexitPipelineMode) X(PQfinish) X(PQfreeCancel) X(PQfreemem)           \
              X(PQftype) X(PQgetCancel) X(PQgetResult) X(PQgetisnull) X(PQgetlength) X(PQgetvalue) \
                  X(PQnfields) X(PQntuples) X(PQpipelineSync) X(PQputCopyData) X(PQputCopyEnd)     \
                      X(PQresultErrorField) X(PQresultErrorMessage) X(PQresultStatus)              \
                          X(PQsendDescribePrepared) X(PQsendPrepare) X(PQsendQueryParams)          \
                              X(PQsendQueryPrepared) X(PQsetNoticeProcessor) X(PQsetSingleRowMode) \
                                  X(PQstatus)

namespace sqldb {

const char kLibpqFile[] = "libpq.so.5";
const char kLibpqPackage[] = "libpq5";

namespace {

// The loaded library's functions.
struct Libpq {
#define SW_LIBPQ_POINTER(name) decltype(&::name) name = nullptr;
  SW_LIBPQ_FUNCTIONS(SW_LIBPQ_POINTER)
#undef SW_LIBPQ_POINTER
};

struct HandleClose {
  void operator()(void* handle) const { dlclose(handle); }
};
using Handle = std::unique_ptr<void, HandleClose>;

template <typename Function>
bool Find(void* handle, const char* name, Function* function) {
  *function = reinterpret_cast<Function>(dlsym(handle, name));
  return *function != nullptr;
}

// Opens `file` and fills *api; null with *why when the library or one of
// the functions is missing.
Handle Open(const char* file, Libpq* api, std::string* why) {
  Handle handle(dlopen(file, RTLD_NOW | RTLD_LOCAL));
  if (!handle) {
    const char* error = dlerror();
    *why = std::string("the PostgreSQL client library ") + file + " cannot be loaded (" +
           (error != nullptr ? error : "not found") + "): install the package " + kLibpqPackage;
    return nullptr;
  }
#define SW_LIBPQ_FIND(name)                                                                  \
  if (!Find(handle.get(), #name, &api->name)) {                                              \
    *why = std::string("the PostgreSQL client library ") + file +                            \
           " has no " #name ": install version 14 or later of the package " + kLibpqPackage; \
    return nullptr;                                                                          \
  }
  SW_LIBPQ_FUNCTIONS(SW_LIBPQ_FIND)
#undef SW_LIBPQ_FIND
  return handle;
}

struct Loaded {
  Libpq api;
  bool ok = false;
  std::string why;
};

// The first use loads the library; it is never unloaded (see LoadLibpq).
const Loaded& Library() {
  static const Loaded loaded = [] {
    Loaded l;
    l.ok = Open(kLibpqFile, &l.api, &l.why).release() != nullptr;
    return l;
  }();
  return loaded;
}

// Opening a PostgreSQL catalog calls LoadLibpq first and fails with its
// message, so the engine never gets here without the library; should a
// caller skip that, it stops with the message rather than jump to null.
const Libpq& Api() {
  const Loaded& loaded = Library();
  if (!loaded.ok) {
    std::fprintf(stderr, "%s\n", loaded.why.c_str());
    std::abort();
  }
  return loaded.api;
}

}  // namespace

bool LoadLibpq(std::string* why) {
  const Loaded& loaded = Library();
  if (!loaded.ok && why != nullptr) *why = loaded.why;
  return loaded.ok;
}

bool CheckLibpqAt(const char* file, std::string* why) {
  Libpq api;
  return Open(file, &api, why) != nullptr;
}

}  // namespace sqldb

using sqldb::Api;

int PQcancel(PGcancel* cancel, char* errbuf, int errbufsize) {
  return Api().PQcancel(cancel, errbuf, errbufsize);
}
void PQclear(PGresult* res) { Api().PQclear(res); }
char* PQcmdStatus(PGresult* res) { return Api().PQcmdStatus(res); }
char* PQcmdTuples(PGresult* res) { return Api().PQcmdTuples(res); }
PQconninfoOption* PQconndefaults() { return Api().PQconndefaults(); }
PGconn* PQconnectdb(const char* conninfo) { return Api().PQconnectdb(conninfo); }
PGconn* PQconnectdbParams(const char* const* keywords, const char* const* values,
                          int expand_dbname) {
  return Api().PQconnectdbParams(keywords, values, expand_dbname);
}
void PQconninfoFree(PQconninfoOption* connOptions) { Api().PQconninfoFree(connOptions); }
PQconninfoOption* PQconninfoParse(const char* conninfo, char** errmsg) {
  return Api().PQconninfoParse(conninfo, errmsg);
}
int PQenterPipelineMode(PGconn* conn) { return Api().PQenterPipelineMode(conn); }
char* PQerrorMessage(const PGconn* conn) { return Api().PQerrorMessage(conn); }
PGresult* PQexec(PGconn* conn, const char* query) { return Api().PQexec(conn, query); }
PGresult* PQexecParams(PGconn* conn, const char* command, int nParams, const Oid* paramTypes,
                       const char* const* paramValues, const int* paramLengths,
                       const int* paramFormats, int resultFormat) {
  return Api().PQexecParams(conn, command, nParams, paramTypes, paramValues, paramLengths,
                            paramFormats, resultFormat);
}
int PQexitPipelineMode(PGconn* conn) { return Api().PQexitPipelineMode(conn); }
void PQfinish(PGconn* conn) { Api().PQfinish(conn); }
void PQfreeCancel(PGcancel* cancel) { Api().PQfreeCancel(cancel); }
void PQfreemem(void* ptr) { Api().PQfreemem(ptr); }
Oid PQftype(const PGresult* res, int field_num) { return Api().PQftype(res, field_num); }
PGcancel* PQgetCancel(PGconn* conn) { return Api().PQgetCancel(conn); }
PGresult* PQgetResult(PGconn* conn) { return Api().PQgetResult(conn); }
int PQgetisnull(const PGresult* res, int tup_num, int field_num) {
  return Api().PQgetisnull(res, tup_num, field_num);
}
int PQgetlength(const PGresult* res, int tup_num, int field_num) {
  return Api().PQgetlength(res, tup_num, field_num);
}
char* PQgetvalue(const PGresult* res, int tup_num, int field_num) {
  return Api().PQgetvalue(res, tup_num, field_num);
}
int PQnfields(const PGresult* res) { return Api().PQnfields(res); }
int PQntuples(const PGresult* res) { return Api().PQntuples(res); }
int PQpipelineSync(PGconn* conn) { return Api().PQpipelineSync(conn); }
int PQputCopyData(PGconn* conn, const char* buffer, int nbytes) {
  return Api().PQputCopyData(conn, buffer, nbytes);
}
int PQputCopyEnd(PGconn* conn, const char* errormsg) { return Api().PQputCopyEnd(conn, errormsg); }
char* PQresultErrorField(const PGresult* res, int fieldcode) {
  return Api().PQresultErrorField(res, fieldcode);
}
char* PQresultErrorMessage(const PGresult* res) { return Api().PQresultErrorMessage(res); }
ExecStatusType PQresultStatus(const PGresult* res) { return Api().PQresultStatus(res); }
int PQsendDescribePrepared(PGconn* conn, const char* stmt) {
  return Api().PQsendDescribePrepared(conn, stmt);
}
int PQsendPrepare(PGconn* conn, const char* stmtName, const char* query, int nParams,
                  const Oid* paramTypes) {
  return Api().PQsendPrepare(conn, stmtName, query, nParams, paramTypes);
}
int PQsendQueryParams(PGconn* conn, const char* command, int nParams, const Oid* paramTypes,
                      const char* const* paramValues, const int* paramLengths,
                      const int* paramFormats, int resultFormat) {
  return Api().PQsendQueryParams(conn, command, nParams, paramTypes, paramValues, paramLengths,
                                 paramFormats, resultFormat);
}
int PQsendQueryPrepared(PGconn* conn, const char* stmtName, int nParams,
                        const char* const* paramValues, const int* paramLengths,
                        const int* paramFormats, int resultFormat) {
  return Api().PQsendQueryPrepared(conn, stmtName, nParams, paramValues, paramLengths, paramFormats,
                                   resultFormat);
}
PQnoticeProcessor PQsetNoticeProcessor(PGconn* conn, PQnoticeProcessor proc, void* arg) {
  return Api().PQsetNoticeProcessor(conn, proc, arg);
}
int PQsetSingleRowMode(PGconn* conn) { return Api().PQsetSingleRowMode(conn); }
ConnStatusType PQstatus(const PGconn* conn) { return Api().PQstatus(conn); }
