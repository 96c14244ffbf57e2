// One process-wide tally of the time spent waiting for locks.
#include "platform/sqldb/lock_wait.h"

#include <atomic>

namespace sqldb {
namespace {

std::atomic<long long> g_waitedMs{0};

}  // namespace

int RemainingLockWaitMs(int timeoutMs) {
  const long long left = static_cast<long long>(timeoutMs) - g_waitedMs.load();
  return left > 0 ? static_cast<int>(left) : 0;
}

void ChargeLockWait(int ms) {
  if (ms > 0) g_waitedMs += ms;
}

void ResetLockWait() { g_waitedMs = 0; }

}  // namespace sqldb
