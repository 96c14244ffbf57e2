// The current time as the reports see it. Reports that compare catalog times
// with "now" read it here, so that a test can fix the second it runs at
// instead of racing the wall clock; a run of the tool never fixes it.
#ifndef UTIL_CLOCK_H_
#define UTIL_CLOCK_H_

#include <cstdint>

namespace Orvantic {
namespace Stashwell {

// Seconds since 1970: the fixed time when one is set, else the system clock.
int64_t CurrentTime();

// Fixes CurrentTime() at `seconds`; a negative value gives the system clock
// back. For tests that run a report in their own process.
void FixCurrentTime(int64_t seconds);

}  // namespace Stashwell
}  // namespace Orvantic

#endif  // UTIL_CLOCK_H_
