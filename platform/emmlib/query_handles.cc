// Open-query table of the catalog library.
#include "platform/emmlib/query_handles.h"

#include <map>

#include "platform/emmlib/connection.h"
#include "platform/emmlib/emmlib.h"

namespace emm {
namespace {

std::map<uint64_t, std::unique_ptr<OpenQuery>>& Queries() {
  static std::map<uint64_t, std::unique_ptr<OpenQuery>> queries;
  return queries;
}

}  // namespace

uint64_t AddQuery(std::unique_ptr<OpenQuery> query) {
  static uint64_t lastHandle = 0;
  Queries()[++lastHandle] = std::move(query);
  return lastHandle;
}

OpenQuery* FindQuery(const Connection* connection, uint64_t handle) {
  auto it = Queries().find(handle);
  if (it == Queries().end() || it->second->connection() != connection) return nullptr;
  return it->second.get();
}

bool ReleaseQuery(const Connection* connection, uint64_t handle) {
  auto it = Queries().find(handle);
  if (it == Queries().end() || it->second->connection() != connection) return false;
  Queries().erase(it);
  return true;
}

void ReleaseQueriesOf(const Connection* connection) {
  for (auto it = Queries().begin(); it != Queries().end();) {
    if (it->second->connection() == connection) {
      it = Queries().erase(it);
    } else {
      ++it;
    }
  }
}

}  // namespace emm

unsigned emmlib_ReleaseImageResultHandle(int* cid, uint64_t handle) {
  unsigned status;
  emm::Connection* connection = emm::FindConnection(cid, &status);
  if (connection == nullptr) return status;
  return emm::ReleaseQuery(connection, handle) ? EMMLIB_OK : EMMLIB_INVALID_HANDLE;
}
