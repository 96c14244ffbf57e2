// ACE_Thread_Mutex and ACE_Guard: the process-wide lock of the disk-service
// helpers' trace ring and its scope holder, a thin layer over a POSIX mutex
// kept under the names the helpers' interface uses (docs/performance.md).
#ifndef PLATFORM_THREAD_MUTEX_H_
#define PLATFORM_THREAD_MUTEX_H_

#include <errno.h>
#include <pthread.h>

class ACE_Thread_Mutex {
 public:
  ACE_Thread_Mutex() = default;
  ACE_Thread_Mutex(const ACE_Thread_Mutex&) = delete;
  ACE_Thread_Mutex& operator=(const ACE_Thread_Mutex&) = delete;
  ~ACE_Thread_Mutex() { pthread_mutex_destroy(&mutex_); }

  // Both return 0, or -1 with errno set to the reason.
  int acquire() { return Result(pthread_mutex_lock(&mutex_)); }
  int release() { return Result(pthread_mutex_unlock(&mutex_)); }

 private:
  static int Result(int error) {
    if (error == 0) return 0;
    errno = error;
    return -1;
  }

  pthread_mutex_t mutex_ = PTHREAD_MUTEX_INITIALIZER;
};

// Holds `Lock` from construction to the end of the scope. locked() says
// whether acquiring succeeded; only then is the lock released again.
template <class Lock>
class ACE_Guard {
 public:
  explicit ACE_Guard(Lock& lock) : lock_(lock), owner_(lock.acquire()) {}
  ACE_Guard(const ACE_Guard&) = delete;
  ACE_Guard& operator=(const ACE_Guard&) = delete;
  ~ACE_Guard() {
    if (locked()) lock_.release();
  }

  bool locked() const { return owner_ == 0; }

 private:
  Lock& lock_;
  int owner_;
};

#endif  // PLATFORM_THREAD_MUTEX_H_
