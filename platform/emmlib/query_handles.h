// The table of open catalog queries, keyed by the 64-bit handles that the
// query calls hand out and emmlib_ReleaseImageResultHandle takes back. Each
// open query holds its own live SQLite statement, so a result is read in
// batches without being held in memory.
#ifndef PLATFORM_EMMLIB_QUERY_HANDLES_H_
#define PLATFORM_EMMLIB_QUERY_HANDLES_H_

#include <cstdint>
#include <memory>

namespace emm {

class Connection;

// An open query of one connection. Concrete queries (images, snapshots,
// replicas, pending imports) derive from it.
class OpenQuery {
 public:
  explicit OpenQuery(Connection* connection) : connection_(connection) {}
  virtual ~OpenQuery() = default;
  OpenQuery(const OpenQuery&) = delete;
  OpenQuery& operator=(const OpenQuery&) = delete;

  Connection* connection() const { return connection_; }

 private:
  Connection* connection_;
};

// Takes ownership of `query` and returns its new handle (never 0, never
// reused within the process).
uint64_t AddQuery(std::unique_ptr<OpenQuery> query);
// The open query with `handle` belonging to `connection`, or null.
OpenQuery* FindQuery(const Connection* connection, uint64_t handle);
// Destroys the query with `handle` of `connection`; false when there is none.
bool ReleaseQuery(const Connection* connection, uint64_t handle);
// Destroys every open query of `connection`.
void ReleaseQueriesOf(const Connection* connection);

}  // namespace emm

#endif  // PLATFORM_EMMLIB_QUERY_HANDLES_H_
