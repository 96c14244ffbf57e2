// Status: the result of a catalog or data-access wrapper call, a numeric code
// (0 = success, otherwise the data-access or catalog-library status) with a
// text for the log. Wrappers pass it up with `if (!s.ok()) return s;`;
// operation handlers still return the integer exit statuses of the tool.
#ifndef UTIL_STATUS_H_
#define UTIL_STATUS_H_

#include <string>
#include <utility>

namespace Orvantic {
namespace Stashwell {

class Status {
 public:
  Status() = default;
  Status(long code, std::string message) : code_(code), message_(std::move(message)) {}

  static Status OK() { return Status(); }

  bool ok() const { return code_ == 0; }
  long code() const { return code_; }
  const std::string& message() const { return message_; }

  // "OK", or "status <code>: <message>".
  std::string ToString() const {
    if (ok()) return "OK";
    return "status " + std::to_string(code_) + (message_.empty() ? "" : ": " + message_);
  }

 private:
  long code_ = 0;
  std::string message_;
};

}  // namespace Stashwell
}  // namespace Orvantic

#endif  // UTIL_STATUS_H_
