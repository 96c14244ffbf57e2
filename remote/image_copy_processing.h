// The image-copy operations of the SLP manager: cancel (with its listing of
// the copies a cancellation would expire and two prompts), inactive, active
// and new_session. They share one flow: the reactivation time, the SLP
// manager, the operation's call or calls inside the exception ladder
// ("cyclesvc"), and one report of the returned status, which becomes the
// exit status.
#ifndef REMOTE_IMAGE_COPY_PROCESSING_H_
#define REMOTE_IMAGE_COPY_PROCESSING_H_

#include <cstdint>
#include <string>

#include "util/output_form.h"

enum class CopyProcessingOp { kActive, kInactive, kNewSession, kCancel };

// What the operations take from the command line; absent texts are empty.
struct CopyProcessingRequest {
  std::string destination;
  std::string lifecycle;
  std::string backupId;
  long slpVersion = -1;
  TimeRangeType rangeType = TIME_RANGE_NONE;
  long rangeTime = 0;            // seconds since 1970, with rangeType
  std::string duration;          // hours from now
  std::string reactivationDate;  // a date-time of the time locale
  bool force = false;            // cancel without listing or asking
  // The yes/no prompt of cancel: writes `prompt`, returns true for yes.
  bool (*askYesNo)(const std::string& prompt) = nullptr;
};

// Runs `op` and returns the exit status: the SLP manager's status (a
// negative one counts processed images and becomes 0), 20 for a duration or
// date that cannot be read, 25 when the SLP manager cannot be reached or
// narrowed, 0 when the user declines.
int ImageCopyProcessing(CopyProcessingOp op, const CopyProcessingRequest& request);

// The reactivation time in seconds since 1970 for `duration` (hours added
// to `now`; leading blanks, then digits up to the first other character) and
// `date` (replaces the duration's value when given); 2147483647 when both
// are empty. Returns 0, or 20 after printing "unable to convert duration to
// time" or "unable to convert date to time" on standard error.
int ReactivationTime(const std::string& duration, const std::string& date, int64_t now,
                     uint64_t* seconds);

#endif  // REMOTE_IMAGE_COPY_PROCESSING_H_
