// The run's allowance for waiting on other processes' locks. Every open and
// every statement of a run draws from one allowance of the configured busy
// timeout, so that a locked catalog delays a run by that time at most once,
// however many connections and statements meet the lock.
#ifndef PLATFORM_SQLDB_LOCK_WAIT_H_
#define PLATFORM_SQLDB_LOCK_WAIT_H_

namespace sqldb {

// Milliseconds this process may still wait when the configured timeout is
// `timeoutMs` (0 once the waits so far have used it up).
int RemainingLockWaitMs(int timeoutMs);

// Records `ms` milliseconds spent waiting for a lock.
void ChargeLockWait(int ms);

// Starts a fresh allowance (for a test that runs several "runs" in one
// process).
void ResetLockWait();

}  // namespace sqldb

#endif  // PLATFORM_SQLDB_LOCK_WAIT_H_
