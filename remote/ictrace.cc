// The trace ring of the disk-service helpers: 128 fixed entries of 81 bytes
// and a 16-bit running counter, guarded by one process-wide mutex so that any
// thread may trace. The ring is only ever read by a debugger or a test.
#include <cstdio>
#include <cstdlib>

#include "platform/thread_mutex.h"
#include "remote/disk_service_helper.h"

namespace Orvantic {
namespace Stashwell {
namespace DL {
namespace DiskService {

namespace {

constexpr unsigned kEntries = 128;
constexpr unsigned kEntrySize = 81;

char* g_ring = nullptr;  // kEntries * kEntrySize bytes, zeroed, allocated on first use
unsigned short g_counter = 0;

ACE_Thread_Mutex& RingMutex() {
  static ACE_Thread_Mutex mutex;  // created on first use
  return mutex;
}

const char* OrNull(const char* text) { return text != nullptr ? text : "NULL"; }

}  // namespace

int DiskServiceHelper::ictrace(const char* a, const char* b, const char* c, const char* d) {
  ACE_Thread_Mutex& mutex = RingMutex();
  int locked = mutex.acquire();
  if (locked != 0) return locked;
  if (g_ring == nullptr) g_ring = static_cast<char*>(calloc(kEntries, kEntrySize));
  if (g_ring != nullptr) {
    char* entry = g_ring + (g_counter % kEntries) * kEntrySize;
    snprintf(entry, kEntrySize, "%4s-%-4s %5d <%24.24s | %16.16s | %16.16s>", "ICTR", OrNull(a),
             static_cast<int>(g_counter), OrNull(b), OrNull(c), OrNull(d));
    g_counter = static_cast<unsigned short>(g_counter + 1);  // wraps at 65536
  }
  return mutex.release();
}

std::string DiskServiceHelper::ictraceEntry(unsigned slot) {
  ACE_Guard<ACE_Thread_Mutex> guard(RingMutex());
  if (g_ring == nullptr || slot >= kEntries) return "";
  return std::string(g_ring + slot * kEntrySize);
}

}  // namespace DiskService
}  // namespace DL
}  // namespace Stashwell
}  // namespace Orvantic
