// The reports' clock: the system clock unless a test has fixed the time.
#include "util/clock.h"

#include <ctime>

namespace Orvantic {
namespace Stashwell {
namespace {

int64_t g_fixedTime = -1;

}  // namespace

int64_t CurrentTime() {
  return g_fixedTime >= 0 ? g_fixedTime : static_cast<int64_t>(time(nullptr));
}

void FixCurrentTime(int64_t seconds) { g_fixedTime = seconds; }

}  // namespace Stashwell
}  // namespace Orvantic
