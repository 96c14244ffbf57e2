// Turns a numbered value into its name from a constant table of names. The
// table's bound is its own size, taken from the array, so that a table and
// the code reading it cannot disagree about how many names there are.
#ifndef UTIL_NAME_TABLE_H_
#define UTIL_NAME_TABLE_H_

#include <cstddef>
#include <cstdint>

namespace Orvantic {
namespace Stashwell {

class NameTable {
 public:
  // `names[0]` names the value `first`. The table refers to `names`, which
  // must outlive it (the tables are constants with static storage).
  template <size_t N>
  constexpr NameTable(const char* const (&names)[N], int64_t first = 0)
      : names_(names), count_(static_cast<int64_t>(N)), first_(first) {}

  // The name of `value`, or nullptr for a value outside the table.
  constexpr const char* Find(int64_t value) const {
    return value >= first_ && value - first_ < count_ ? names_[value - first_] : nullptr;
  }

 private:
  const char* const* names_;
  int64_t count_;
  int64_t first_;
};

}  // namespace Stashwell
}  // namespace Orvantic

#endif  // UTIL_NAME_TABLE_H_
