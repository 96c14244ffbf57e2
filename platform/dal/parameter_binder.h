// ParameterBinder: builds the input-parameter list of a statement, one entry
// per '?' in the order they are appended, and keeps the texts it was asked
// to copy alive until it is destroyed.
//
// The list handed to Execute or ULongReturningQuery must end with one
// terminator entry: getBindings() adds it once (further calls leave the list
// as it is) and the next appended parameter removes it again first, so a
// binder can grow after it has been used.
#ifndef PLATFORM_DAL_PARAMETER_BINDER_H_
#define PLATFORM_DAL_PARAMETER_BINDER_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/dal/dal_types.h"

namespace Corvela {
namespace Dal {

class ParameterBinder {
 public:
  ParameterBinder() = default;
  ParameterBinder(const ParameterBinder&) = delete;
  ParameterBinder& operator=(const ParameterBinder&) = delete;

  // Appends a text parameter (value type 1000, parameter type 1002). With
  // `copy` the text is duplicated and owned by the binder: `size` DAL_NTS
  // copies up to its NUL, otherwise `size` bytes are copied and must be
  // greater than 0. Without `copy` the binder keeps the pointer, which must
  // stay valid until the statement has run; `size` is DAL_NTS or the most
  // bytes to read. Returns 0, or DAL_INVALID_ARGUMENT (nothing appended) for
  // a copy with a size that is neither DAL_NTS nor positive. Throws
  // std::bad_alloc when the copy cannot be allocated.
  int bindInputString(const char* text, int64_t size, bool copy);

  // Appends a signed 32-bit parameter (995/1006) or a signed 64-bit one
  // (997/1014) read from `value` when the statement runs (not copied).
  void bindInputInt32(const int32_t* value);
  void bindInputInt64(const int64_t* value);

  // Appends the parameters of `other` in order; texts that `other` owns are
  // copied again, so the two binders stay independent.
  void appendParameters(const ParameterBinder& other);

  // Number of parameters appended (the terminator does not count).
  size_t parameterCount() const { return entries_.size() - (terminated_ ? 1 : 0); }

  // The list with its terminator entry; valid until the binder changes.
  const DalBinding* getBindings();

 private:
  void append(const DalBinding& entry);

  std::vector<DalBinding> entries_;
  std::vector<std::unique_ptr<char[]>> copies_;  // texts owned by this binder
  bool terminated_ = false;
};

}  // namespace Dal
}  // namespace Corvela

#endif  // PLATFORM_DAL_PARAMETER_BINDER_H_
