// The application-message log: Lis argument handling with its exceptions,
// and WriteAppMsg, which builds one application message per call and frees it
// on every path.
#include "util/app_log.h"

#include <cstdlib>
#include <memory>

namespace Corvela {
namespace L10N {
namespace {

// Conversion statuses that still give a usable argument.
bool Usable(int status) {
  switch (status) {
    case -6:
    case -5:
    case -4:
    case -2:
    case -1:
    case 0:
    case 1:
      return true;
    default:
      return false;
  }
}

struct AnyDeleter {
  void operator()(crvlLisAny_t* any) const {
    if (any) free(any->text);
    free(any);
  }
};

}  // namespace

LisX::LisX(int status)
    : status_(status), what_("localizable text error " + std::to_string(status)) {}

Lis& Lis::operator<<(const char* arg) {
  std::unique_ptr<crvlLisAny_t, AnyDeleter> any(
      static_cast<crvlLisAny_t*>(calloc(1, sizeof(crvlLisAny_t))));
  if (!any) throw LisX(CRVL_LIS_NO_MEMORY);
  int status = utf8() ? crvlLisAny_utf8string(any.get(), arg) : crvlLisAny_string(any.get(), arg);
  if (!Usable(status)) throw LisX(status);
  if (crvlLisAddArg(text_, any.get()) != 0) throw LisX(CRVL_LIS_NO_MEMORY);
  any.release();
  return *this;
}

LisMgr::LisMgr(const char* id, const char* format) : Lis(&storage_) {
  if (crvlLisInit(&storage_, id, format, GetCrvlLisGlobalUtf8Setting()) != 0)
    throw LisX(CRVL_LIS_NO_MEMORY);
}

LisMgr::~LisMgr() { crvlLisFree(&storage_); }

}  // namespace L10N

namespace Logging {

AppMsg::AppMsg(crvlLogHandle_t* handle, int kind, crvlLogFlags_t flags) {
  crvlLogInitMsg(handle, &msg_, kind, flags);
}

AppMsg::~AppMsg() { crvlLogFreeMsg(&msg_); }

template <bool Threaded>
Log<Threaded>::Log(const char* name) : handle_(crvlLogOpen(name)), disabled_(handle_ == nullptr) {}

template <bool Threaded>
Log<Threaded>::~Log() {
  crvlLogClose(handle_);
}

template <bool Threaded>
int Log<Threaded>::WriteAppMsg(crvlLogFlags_t flags, crvlLogSeverity_t severity,
                               const L10N::LisMgr& text) {
  if (disabled_) return 1;
  AppMsg msg(handle_, CRVL_MSG_KIND_APP, 0);
  crvlLisCopy(msg.get(), text.get(), GetCrvlLisGlobalUtf8Setting());
  crvlLogSetAppAttr(msg.get(), CRVL_ATTR_SEVERITY, severity);
  if (disabled_) return 0;
  if (!msg.get()->valid) return 3;
  int status = crvlLogMsg(handle_, flags, msg.get());
  if (status == 0 && (flags & CRVL_LOG_FLAG_SECONDARY) && secondary_)
    crvlLogMsg(secondary_, flags, msg.get());
  return status;
}

template class Log<false>;

}  // namespace Logging
}  // namespace Corvela
