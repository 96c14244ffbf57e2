// The cross-option rules. "Empty" means an empty text, whether the option
// was absent or given an empty argument.
#include "cmd/cross_rules.h"

#include <initializer_list>

#include "util/message.h"

namespace {

bool IsOneOf(operation_e op, std::initializer_list<operation_e> ops) {
  for (operation_e candidate : ops) {
    if (candidate == op) return true;
  }
  return false;
}

// The rules of the image-selection operations: a backup id names one image,
// so it excludes every other way of choosing images.
bool CheckImageSelection(const CommandLine& line) {
  operation_e op = line.operation;
  bool hasBackupId = !line.backupId.empty();
  if (IsOneOf(op, {OP_ACTIVE, OP_CANCEL, OP_INACTIVE, OP_LIST, OP_STLILIST}) && hasBackupId &&
      (!line.destination.empty() || !line.lifecycle.empty())) {
    PrintMsg(stderr, "SmeSlp0580N", "-backupid is not allowed with -lifecycle or -destination");
    return false;
  }
  if (IsOneOf(op, {OP_ACTIVE, OP_CANCEL, OP_INACTIVE})) {
    if (!hasBackupId && line.destination.empty() && line.lifecycle.empty()) {
      PrintMsg(stderr, "SmeSlp0590N",
               "One of -backupid, -destination, -lifecycle must be provided");
      return false;
    }
    if (hasBackupId && line.timeRange != TIME_RANGE_NONE) {
      PrintMsg(stderr, "SmeSlp0600N", "-backupid is not allowed with -before or -after");
      return false;
    }
    // The SLP manager takes the time as unsigned seconds: one before 1970
    // would arrive as a date far in the future.
    if (line.timeRange != TIME_RANGE_NONE && line.time < 0) {
      PrintMsg(stderr, "SmeSlp0570N", "Invalid value supplied for %s option",
               optNames[line.timeRange == TIME_RANGE_BEFORE ? OPT_BEFORE : OPT_AFTER]);
      return false;
    }
  }
  if (op == OP_INACTIVE && hasBackupId &&
      (line.given(OPT_REACTIVATION_TIME) || line.given(OPT_DURATION))) {
    PrintMsg(stderr, "SmeSlp0610N",
             "You cannot specify -reactivation_time or -duration when specifying -backupid");
    return false;
  }
  if (op == OP_LIST && line.jobId != 0 &&
      (hasBackupId || !line.destination.empty() || !line.lifecycle.empty() ||
       !line.client.empty())) {
    PrintMsg(stderr, "SmeSlp0620N", "-jobid cannot be used with other selection values");
    return false;
  }
  return true;
}

bool ReportRequired(const char* option) {
  PrintMsg(stderr, "SmeSlp0630N", "The %s option is required for this operation", option);
  return false;
}

bool CheckRedo(const CommandLine& line) {
  if (line.operation != OP_REDO) return true;
  if (line.backupId.empty()) return ReportRequired(optNames[OPT_BACKUPID]);
  if (line.slpIndex == 0) {
    PrintMsg(stderr, "SmeSlp0640N", "The '%s' value cannot be %d", optNames[OPT_SLPINDEX], 0);
    return false;
  }
  return true;
}

// What update_hwm needs, in the order it is checked.
struct Requirement {
  option_e option;
  bool (*missing)(const CommandLine&);
};

const Requirement kUpdateHwmRequirements[] = {
    {OPT_MEDIASERVER, [](const CommandLine& l) { return l.mediaServer.empty(); }},
    {OPT_STORAGESERVER, [](const CommandLine& l) { return l.storageServer.empty(); }},
    {OPT_STSSUBTYPE, [](const CommandLine& l) { return l.stsSubtype.empty(); }},
    {OPT_MEDIAID, [](const CommandLine& l) { return l.mediaId.empty(); }},
    {OPT_TOTALCAP, [](const CommandLine& l) { return l.totalCap <= 0; }},
    {OPT_USEDCAP, [](const CommandLine& l) { return l.usedCap <= 0; }},
};

bool CheckUpdateHwm(const CommandLine& line) {
  if (line.operation != OP_UPDATE_HWM) return true;
  for (const Requirement& requirement : kUpdateHwmRequirements) {
    if (requirement.missing(line)) return ReportRequired(optNames[requirement.option]);
  }
  return true;
}

// -version selects one version of a lifecycle, so it needs the lifecycle and
// excludes choosing by backup id or destination.
bool CheckVersion(const CommandLine& line) {
  if (line.version == -1) return true;
  if (!line.backupId.empty() || !line.destination.empty()) {
    PrintMsg(stderr, "SmeSlp0650N", "-version cannot be used with -backupid or -destination");
    return false;
  }
  if (line.lifecycle.empty()) {
    PrintMsg(stderr, "SmeSlp0120N", "The '%s' option requires use of the '%s' option",
             optNames[OPT_VERSION], optNames[OPT_LIFECYCLE]);
    return false;
  }
  return true;
}

}  // namespace

bool CheckCrossOptionRules(const CommandLine& line) {
  return CheckImageSelection(line) && CheckRedo(line) && CheckUpdateHwm(line) && CheckVersion(line);
}
