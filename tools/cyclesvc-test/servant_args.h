// What the servants share when they record a call: enumerators by name and
// sequences by their length.
#ifndef TOOLS_CYCLESVC_TEST_SERVANT_ARGS_H_
#define TOOLS_CYCLESVC_TEST_SERVANT_ARGS_H_

#include <omniORB4/CORBA.h>

#include <cstddef>
#include <string>

namespace cyclesvc_test {

// The enumerator's name; a value outside the list (not possible on the
// wire) shows as its number.
template <size_t N>
std::string EnumName(const char* const (&names)[N], unsigned value) {
  return value < N ? names[value] : std::to_string(value);
}

// A sequence argument recorded as "<N elements>".
inline std::string Elements(CORBA::ULong count) {
  return "<" + std::to_string(count) + " elements>";
}

}  // namespace cyclesvc_test

#endif  // TOOLS_CYCLESVC_TEST_SERVANT_ARGS_H_
