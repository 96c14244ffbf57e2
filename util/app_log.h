// The application-message log in C++: localizable texts with their string
// arguments (Corvela::L10N) and the log that writes them as application
// messages (Corvela::Logging), over the C interface of platform/crvl.h.
//
//   Corvela::Logging::Log<false> log("dsm");
//   Corvela::L10N::LisMgr text("SmeSlp0010N", "volume %s not found on %s");
//   text << volume << server;
//   int status = log.WriteAppMsg(0, CRVL_SEV_ERROR, text);
#ifndef UTIL_APP_LOG_H_
#define UTIL_APP_LOG_H_

#include <exception>
#include <string>

#include "platform/crvl.h"

namespace Corvela {
namespace L10N {

// Thrown by Lis::operator<< for an argument that cannot be added; status()
// is the conversion status (platform/crvl.h), -3 when out of memory.
class LisX : public std::exception {
 public:
  explicit LisX(int status);
  int status() const { return status_; }
  const char* what() const noexcept override { return what_.c_str(); }

 private:
  int status_;
  std::string what_;
};

// A localizable text to which arguments are added; does not own the text.
class Lis {
 public:
  // Adds one string argument, converted as UTF-8 in UTF-8 mode, else as a
  // plain string; returns *this for chaining. Throws LisX when the holder
  // cannot be allocated or the conversion fails.
  Lis& operator<<(const char* arg);

  bool utf8() const { return text_->utf8 != 0; }
  const crvlLis_t* get() const { return text_; }

 protected:
  explicit Lis(crvlLis_t* text) : text_(text) {}

 private:
  crvlLis_t* text_;
};

// Owns a localizable text: message id and default format, in UTF-8 mode when
// GetCrvlLisGlobalUtf8Setting says so.
class LisMgr : public Lis {
 public:
  LisMgr(const char* id, const char* format);
  ~LisMgr();
  LisMgr(const LisMgr&) = delete;
  LisMgr& operator=(const LisMgr&) = delete;

 private:
  crvlLis_t storage_;
};

}  // namespace L10N

namespace Logging {

// One application message, freed when it goes out of scope.
class AppMsg {
 public:
  AppMsg(crvlLogHandle_t* handle, int kind, crvlLogFlags_t flags);
  ~AppMsg();
  AppMsg(const AppMsg&) = delete;
  AppMsg& operator=(const AppMsg&) = delete;

  crvlLogMsg_t* get() { return &msg_; }

 private:
  crvlLogMsg_t msg_;
};

// An application-message log. `Threaded` is part of the type only; the
// program instantiates Log<false>.
template <bool Threaded>
class Log {
 public:
  // Opens the log `name` under <root>/logs; a log that cannot be opened is
  // disabled.
  explicit Log(const char* name);
  ~Log();
  Log(const Log&) = delete;
  Log& operator=(const Log&) = delete;

  // Writes `text` as an application message of `severity`: 1 when the log is
  // disabled, 3 when the text could not be attached, else the status of
  // crvlLogMsg (0 = written). With flag bit 32 a written message also goes to
  // the secondary sink, when one is attached.
  int WriteAppMsg(crvlLogFlags_t flags, crvlLogSeverity_t severity, const L10N::LisMgr& text);

  bool disabled() const { return disabled_; }
  void set_disabled(bool disabled) { disabled_ = disabled || !handle_; }
  // Attaches a second log (not owned) that receives flagged messages.
  void set_secondary(crvlLogHandle_t* sink) { secondary_ = sink; }

 private:
  crvlLogHandle_t* handle_;
  crvlLogHandle_t* secondary_ = nullptr;
  bool disabled_;
};

extern template class Log<false>;

}  // namespace Logging
}  // namespace Corvela

#endif  // UTIL_APP_LOG_H_
