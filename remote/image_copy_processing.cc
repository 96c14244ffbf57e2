// cancel, inactive, active and new_session against the SLP manager.
#include "remote/image_copy_processing.h"

#include <cctype>
#include <cstdio>
#include <ctime>
#include <limits>

#include "platform/debuglog.h"
#include "platform/locale.h"
#include "platform/msgcat.h"
#include "remote/exception_ladder.h"
#include "remote/services.h"
#include "util/format.h"
#include "util/message.h"
#include "util/name_table.h"
#include "util/process.h"

namespace DssSVC = Orvantic::Stashwell::StorageServiceMgmt::DssSVC;
using Orvantic::Stashwell::emmcommon_ss_image_copy_state_str;
using Orvantic::Stashwell::emmcommon_ss_image_state_str;
using Orvantic::Stashwell::FormatTime;
using Orvantic::Stashwell::NameTable;

namespace {

const uint64_t kNoReactivationTime = 2147483647;

// Status values of the SLP manager that the flow treats apart.
const CORBA::Long kPartialListing = 1626;  // the listing holds only part of the copies
const CORBA::Long kSessionInProgress = 134;
const CORBA::Long kNothingMatches = 227;

// Reads an unsigned decimal number after leading blanks, up to the first
// non-digit. False when there is no digit or the number passes `limit`.
bool ReadHours(const std::string& text, uint64_t limit, uint64_t* hours) {
  size_t i = 0;
  while (i < text.size() && isspace(static_cast<unsigned char>(text[i]))) ++i;
  if (i == text.size() || !isdigit(static_cast<unsigned char>(text[i]))) return false;
  uint64_t n = 0;
  for (; i < text.size() && isdigit(static_cast<unsigned char>(text[i])); ++i) {
    unsigned digit = static_cast<unsigned>(text[i] - '0');
    if (n > (limit - digit) / 10) return false;
    n = n * 10 + digit;
  }
  *hours = n;
  return true;
}

// "<n> (<name>) " from `names`, or "<n> (<invalid>)" for a value outside it.
std::string StatePart(CORBA::Long value, NameTable names, const char* invalid) {
  std::string part = std::to_string(value);
  const char* name = names.Find(value);
  if (name == nullptr) return part + " (" + invalid + ")";
  return part + " (" + name + ") ";
}

// Logs one cancelled copy (debug log only, not the terminal).
void LogCancelledCopy(const DssSVC::SLP_CancellableImage& image) {
  std::string line =
      std::string(image.backupid.in()) + ", cn = " + std::to_string(image.copyNumber) +
      ", slp = " + image.slpName.in() + ", slp version = " + std::to_string(image.slpVersion) +
      ", image state = " +
      StatePart(image.imageState, emmcommon_ss_image_state_str, "INVALID_IMAGE_LIFECYCLE_STATE") +
      ", copy state = " +
      StatePart(image.copyState, emmcommon_ss_image_copy_state_str, "INVALID_IMAGE_COPY_STATE") +
      ", expire time = " + FormatTime(image.expireTime, false);
  logmsg(2, line.c_str(), progname.c_str());
}

// Lists, on standard error and in the debug log, when each copy of `images`
// would expire if the cancellation went ahead.
void ShowExpiringCopies(const DssSVC::SLP_CancellableImageSeq& images, int64_t now) {
  for (CORBA::ULong i = 0; i < images.length(); ++i) {
    const DssSVC::SLP_CancellableImage& image = images[i];
    const char* text;
    if (image.expireTime == 0 || image.expirationType == 2) {
      text = LocalizeMsg("SmeSlp0880N",
                         "%s, copy number = %d, slp = %s, slp version = %d, will be expired "
                         "immediately",
                         image.backupid.in(), static_cast<int>(image.copyNumber),
                         image.slpName.in(), static_cast<int>(image.slpVersion));
    } else {
      long hours = static_cast<long>((static_cast<int64_t>(image.expireTime) - now) / 3600);
      text = LocalizeMsg("SmeSlp0890N",
                         "%s, copy number = %d, slp = %s, slp version = %d, will be expired in "
                         "%ld hours",
                         image.backupid.in(), static_cast<int>(image.copyNumber),
                         image.slpName.in(), static_cast<int>(image.slpVersion), hours);
    }
    fprintf(stderr, "\t%u. %s\n", static_cast<unsigned>(i + 1), text);
    logmsg(2, text, progname.c_str());
  }
}

// Reports status `s` of the SLP manager and returns the exit status.
int ReportStatus(CORBA::Long s) {
  long processed = 0;
  if (s < 0) {
    processed = -static_cast<long>(s);
    s = 0;
  }
  logmsgv(2, "Received status = %d, images or lifecycles processed = %ld", static_cast<int>(s),
          processed);
  if (s == kSessionInProgress) {
    PrintMsg(stderr, "SmeSlp0280N", "Session in progress.  Try again later.");
  } else if (s == kNothingMatches) {
    PrintMsg(stderr, "SmeSlp0290N", "No images or lifecycles matching criteria found.");
  } else if (s != 0) {
    PrintMsg(stderr, "SmeSlp0300N", "Operation not successful: status = %d (%s)",
             static_cast<int>(s), getECmsg(s));
  } else if (processed > 0) {
    PrintMsg(stderr, "SmeSlp0310N", "Operation successful: %d images or lifecycles processed",
             static_cast<int>(processed));
  }
  return s;
}

// One CancelImageCopyProcessing call; `images` receives the returned list.
CORBA::Long CallCancel(DssSVC::Dssvc_ptr manager, const CopyProcessingRequest& r, bool doCancel,
                       DssSVC::SLP_CancellableImageSeq_var& images) {
  return RunRemote(kSlpManager.ladderName, [&] {
    return manager->CancelImageCopyProcessing(
        r.destination.c_str(), r.lifecycle.c_str(), r.backupId.c_str(), r.slpVersion,
        static_cast<DssSVC::TimeRangeType>(r.rangeType), r.rangeTime, doCancel, images.out());
  });
}

// cancel: unless forced, lists the cancellable copies, shows which would
// expire and asks; then cancels. Returns the exit status.
int Cancel(DssSVC::Dssvc_ptr manager, const CopyProcessingRequest& r, int64_t now) {
  DssSVC::SLP_CancellableImageSeq_var images;
  if (!r.force) {
    CORBA::Long s = CallCancel(manager, r, false, images);
    if (s == kNothingMatches) return ReportStatus(s);
    if (s != 0 && s != kPartialListing) {
      logmsg(16,
             PrintMsg(stderr, "SmeSlp0860N", "failed to list cancellable images, error = %d",
                      static_cast<int>(s)),
             progname.c_str());
      return ReportStatus(s);
    }
    if (images->length() == 0) return 0;
    if (r.askYesNo(LocalizeMsg("SmeSlp0870N",
                               "Canceling these images will cause some or all of the images to "
                               "be expired. Do you want to see the list of images that will be "
                               "expired? (y/n):"))) {
      ShowExpiringCopies(images.in(), now);
    }
    if (!r.askYesNo(LocalizeMsg("SmeSlp0900N",
                                "Canceling these images will cause some or all of the images to "
                                "be expired. Do you want to proceed with the cancellation? "
                                "(y/n):"))) {
      PrintMsg(stdout, "SmeSlp0910N", "No SLP operations canceled");
      return 0;
    }
  }
  CORBA::Long s = CallCancel(manager, r, true, images);
  if (s == 0) {
    PrintMsg(stderr, "SmeSlp0920N", "%d image copies have been canceled successfully",
             static_cast<int>(images->length()));
    for (CORBA::ULong i = 0; i < images->length(); ++i) LogCancelledCopy(images[i]);
  }
  return ReportStatus(s);
}

}  // namespace

int ReactivationTime(const std::string& duration, const std::string& date, int64_t now,
                     uint64_t* seconds) {
  uint64_t t = 0;
  if (!duration.empty()) {
    uint64_t base = static_cast<uint64_t>(now);
    uint64_t hours;
    if (!ReadHours(duration, (std::numeric_limits<uint64_t>::max() - base) / 3600, &hours)) {
      PrintMsg(stderr, "SmeSlp0250N", "unable to convert duration to time");
      return 20;
    }
    t = base + hours * 3600;
  }
  if (!date.empty()) {
    long converted = 0;
    if (convert2unixdatel(date.c_str(), &converted, 0, lc_time) == 0 || converted < 0) {
      PrintMsg(stderr, "SmeSlp0260N", "unable to convert date to time");
      return 20;
    }
    t = static_cast<uint64_t>(converted);
  }
  *seconds = t == 0 ? kNoReactivationTime : t;
  return 0;
}

int ImageCopyProcessing(CopyProcessingOp op, const CopyProcessingRequest& r) {
  int64_t now = time(nullptr);
  uint64_t reactivation;
  int status = ReactivationTime(r.duration, r.reactivationDate, now, &reactivation);
  if (status != 0) return status;

  DssSVC::Dssvc_var manager = ConnectToSlpManager();
  if (CORBA::is_nil(manager)) return 25;
  auto report = [&](auto call) { return ReportStatus(RunRemote(kSlpManager.ladderName, call)); };
  auto range = static_cast<DssSVC::TimeRangeType>(r.rangeType);
  switch (op) {
    case CopyProcessingOp::kActive:
      return report([&] {
        return manager->ResumeImageCopyProcessing(r.destination.c_str(), r.lifecycle.c_str(),
                                                  r.backupId.c_str(), range, r.rangeTime);
      });
    case CopyProcessingOp::kInactive:
      return report([&] {
        return manager->SuspendImageCopyProcessing(r.destination.c_str(), r.lifecycle.c_str(),
                                                   r.backupId.c_str(), reactivation, range,
                                                   r.rangeTime);
      });
    case CopyProcessingOp::kNewSession:
      return report([&] { return manager->StartImageDupSession(); });
    case CopyProcessingOp::kCancel:
      return Cancel(manager.in(), r, now);
  }
  PrintMsg(stderr, "SmeSlp0270N", "unexpected SLP manager operation");
  return 133;
}
