// Input-parameter lists with the terminator rule and owned text copies.
#include "platform/dal/parameter_binder.h"

#include <cstring>

#include "platform/dal/dal_status.h"

namespace Corvela {
namespace Dal {

void ParameterBinder::append(const DalBinding& entry) {
  if (terminated_) {
    entries_.pop_back();
    terminated_ = false;
  }
  entries_.push_back(entry);
}

int ParameterBinder::bindInputString(const char* text, int64_t size, bool copy) {
  if (!copy || text == nullptr) {
    append(DalInputParameter(DAL_VT_CHAR, DAL_PT_VARCHAR, size, text, size));
    return DAL_SUCCESS;
  }
  if (size != DAL_NTS && size <= 0) return DAL_INVALID_ARGUMENT;
  const size_t bytes = size == DAL_NTS ? strlen(text) : static_cast<size_t>(size);
  std::unique_ptr<char[]> dup(new char[bytes + 1]);
  memcpy(dup.get(), text, bytes);
  dup[bytes] = '\0';
  append(DalInputParameter(DAL_VT_CHAR, DAL_PT_VARCHAR, static_cast<int64_t>(bytes), dup.get(),
                           static_cast<int64_t>(bytes)));
  copies_.push_back(std::move(dup));
  return DAL_SUCCESS;
}

void ParameterBinder::bindInputInt32(const int32_t* value) {
  append(DalInputParameter(DAL_VT_SLONG, DAL_PT_INTEGER, 4, value, 4));
}

void ParameterBinder::bindInputInt64(const int64_t* value) {
  append(DalInputParameter(DAL_VT_SBIGINT, DAL_PT_BIGINT, 8, value, 8));
}

void ParameterBinder::appendParameters(const ParameterBinder& other) {
  for (const DalBinding& entry : other.entries_) {
    if (entry.columnNumber == DAL_TERMINATOR_COLUMN) continue;
    bool owned = false;
    for (const auto& c : other.copies_) {
      if (reinterpret_cast<uintptr_t>(c.get()) == entry.target) owned = true;
    }
    if (owned) {
      bindInputString(reinterpret_cast<const char*>(entry.target),
                      entry.parameterLength > 0 ? entry.parameterLength : DAL_NTS, true);
    } else {
      append(entry);
    }
  }
}

const DalBinding* ParameterBinder::getBindings() {
  if (!terminated_) {
    entries_.push_back(DalTerminator());
    terminated_ = true;
  }
  return entries_.data();
}

}  // namespace Dal
}  // namespace Corvela
