// The rows of the option rules and the small store functions they use.
// Integers are read as base-10 numbers (strtol: trailing characters are
// ignored, a value without leading digits reads 0) and kept in the width of
// their field; a number that does not fit the field is refused instead of
// wrapping into another value (the state filters alone are kept as 16-bit
// whatever was given).
#include "cmd/option_rules.h"

#include <cstdlib>

#include "platform/locale.h"
#include "util/message.h"
#include "util/process.h"

namespace {

template <bool CommandLine::*field>
bool SetFlag(CommandLine& line, const char*) {
  line.*field = true;
  return true;
}

template <OptionalText CommandLine::*field>
bool StoreOptionalText(CommandLine& line, const char* value) {
  (line.*field).Set(value);
  return true;
}

template <std::string CommandLine::*field>
bool StoreText(CommandLine& line, const char* value) {
  line.*field = value;
  return true;
}

template <typename T, T CommandLine::*field>
bool StoreInteger(CommandLine& line, const char* value) {
  return ParseInteger(value, &(line.*field));
}

// An SLP version travels to the SLP manager as a 32-bit number, though the
// field is wider.
bool StoreVersion(CommandLine& line, const char* value) {
  int32_t version;
  if (!ParseInteger(value, &version)) return false;
  line.version = version;
  return true;
}

template <outputform_e form>
bool SetOutputForm(CommandLine& line, const char*) {
  line.outputForm = form;
  return true;
}

template <TimeRangeType range>
bool StoreTime(CommandLine& line, const char* value) {
  long seconds = 0;
  if (convert2unixdatel(value, &seconds, 1, lc_time, 0) == 0) return false;
  line.time = seconds;
  line.timeRange = range;
  return true;
}

// For an option whose only effect is the operation it selects.
bool SelectsOnly(CommandLine&, const char*) { return true; }

bool SetHelp(CommandLine& line, const char*) {
  line.helpRequested = true;
  return true;
}

bool ReportDeprecated(CommandLine&, const char*) {
  PrintMsg(stderr, "SmeSlp0480N", "option '%s' is no longer necessary and has been deprecated",
           optNames[OPT_WAIT]);
  return true;
}

bool SetUsageAll(CommandLine& line, const char*) {
  line.usageForm = USAGE_ALL;
  return true;
}

bool SetLifecycleOnly(CommandLine& line, const char*) {
  line.lifecycleOnly = 1;
  return true;
}

bool StoreImageState(CommandLine& line, const char* value) {
  int state;
  if (!ParseInteger(value, &state)) return false;
  line.imageState.Set(state);
  return true;
}

template <int state>
bool SetImageState(CommandLine& line, const char*) {
  line.imageState.Set(state);
  return true;
}

template <OptionalValue<short> CommandLine::*field>
bool StoreShortState(CommandLine& line, const char* value) {
  (line.*field).Set(static_cast<short>(strtol(value, nullptr, 10)));
  return true;
}

template <short state>
bool SetCopyState(CommandLine& line, const char*) {
  line.copyState.Set(state);
  return true;
}

bool StoreCopyType(CommandLine& line, const char* value) {
  int copyType;
  if (!ParseCopyType(value, &copyType)) return false;
  line.copyType.Set(copyType);
  return true;
}

bool StoreRecordTypes(CommandLine& line, const char* value) {
  return ParseRecordTypes(value, &line.recordTypes);
}

bool StoreDumpForm(CommandLine& line, const char* value) {
  return ParseDumpForm(value, &line.dumpForm);
}

bool StoreNotificationType(CommandLine& line, const char* value) {
  return ParseNotificationType(value, &line.notificationType);
}

bool StoreSubsystem(CommandLine& line, const char* value) {
  return ParseSubsystem(value, &line.subsystem);
}

constexpr bool kValue = true;
constexpr bool kFlag = false;
constexpr ValueError kAny = VALUE_NEVER_REJECTED;

}  // namespace

const OptionRule optionRules[] = {
    {"-after", OPT_AFTER, kValue, OP_NONE, VALUE_INVALID, StoreTime<TIME_RANGE_AFTER>},
    {"-all_pending_images", OPT_ALL_PENDING_IMAGES, kFlag, OP_NONE, kAny,
     SetFlag<&CommandLine::allPendingImages>},
    {"-arg1", OPT_ARG1, kValue, OP_NONE, kAny, StoreOptionalText<&CommandLine::arg1>},
    {"-arg2", OPT_ARG2, kValue, OP_NONE, kAny, StoreOptionalText<&CommandLine::arg2>},
    {"-arg3", OPT_ARG3, kValue, OP_NONE, VALUE_INVALID, StoreInteger<int, &CommandLine::arg3>},
    {"-b", OPT_B, kFlag, OP_NONE, kAny, SetOutputForm<OUTPUT_BRIEF>},
    {"-backupid", OPT_BACKUPID, kValue, OP_NONE, kAny, StoreOptionalText<&CommandLine::backupId>},
    {"-before", OPT_BEFORE, kValue, OP_NONE, VALUE_INVALID, StoreTime<TIME_RANGE_BEFORE>},
    {"-bydate", OPT_BYDATE, kFlag, OP_NONE, kAny, SetFlag<&CommandLine::byDate>},
    {"-client", OPT_CLIENT, kValue, OP_NONE, kAny, StoreOptionalText<&CommandLine::client>},
    {"-copy_inactive", OPT_COPY_INACTIVE, kFlag, OP_NONE, kAny, SetCopyState<-2>},
    {"-copy_incomplete", OPT_COPY_INCOMPLETE, kFlag, OP_NONE, kAny, SetCopyState<-1>},
    {"-copy_state", OPT_COPY_STATE, kValue, OP_NONE, kAny,
     StoreShortState<&CommandLine::copyState>},
    {"-copy_type", OPT_COPY_TYPE, kValue, OP_NONE, VALUE_INVALID, StoreCopyType},
    {"-days", OPT_DAYS, kValue, OP_NONE, VALUE_INVALID, StoreInteger<long, &CommandLine::days>},
    {"-destination", OPT_DESTINATION, kValue, OP_NONE, kAny,
     StoreOptionalText<&CommandLine::destination>},
    {"-df", OPT_DF, kValue, OP_NONE, VALUE_NOT_RECOGNIZED, StoreDumpForm},
    {"-dopts", OPT_DOPTS, kValue, OP_NONE, kAny, StoreText<&CommandLine::dumpOptions>},
    {"-dp", OPT_DP, kValue, OP_NONE, kAny, StoreText<&CommandLine::diskPool>},
    {"-dt", OPT_DT, kValue, OP_NONE, VALUE_INVALID, StoreInteger<int, &CommandLine::diskType>},
    {"-duration", OPT_DURATION, kValue, OP_NONE, kAny, StoreText<&CommandLine::duration>},
    {"-expid", OPT_EXPID, kValue, OP_NONE, VALUE_INVALID,
     StoreInteger<int, &CommandLine::expirationId>},
    {"-force", OPT_FORCE, kFlag, OP_NONE, kAny, SetFlag<&CommandLine::force>},
    {"-frag_state", OPT_FRAG_STATE, kValue, OP_NONE, kAny,
     StoreShortState<&CommandLine::fragState>},
    {"-help", OPT_NONE, kFlag, OP_HELP, kAny, SetHelp},
    {"-h", OPT_NONE, kFlag, OP_HELP, kAny, SetHelp},
    {"-hostname", OPT_HOSTNAME, kValue, OP_NONE, kAny, StoreText<&CommandLine::hostname>},
    {"-image_inactive", OPT_IMAGE_INACTIVE, kFlag, OP_NONE, kAny, SetImageState<-2>},
    {"-image_incomplete", OPT_IMAGE_INCOMPLETE, kFlag, OP_NONE, kAny, SetImageState<-1>},
    {"-image_state", OPT_IMAGE_STATE, kValue, OP_NONE, VALUE_INVALID, StoreImageState},
    {"-input", OPT_INPUT, kFlag, OP_NONE, kAny, SetFlag<&CommandLine::input>},
    {"-jobid", OPT_JOBID, kValue, OP_NONE, VALUE_INVALID, StoreInteger<int, &CommandLine::jobId>},
    {"-json", OPT_JSON, kFlag, OP_NONE, kAny, SetOutputForm<OUTPUT_JSON>},
    {"-json_compact", OPT_JSON_COMPACT, kFlag, OP_NONE, kAny, SetOutputForm<OUTPUT_JSON_COMPACT>},
    {"-key", OPT_KEY, kValue, OP_NONE, VALUE_INVALID, StoreInteger<int64_t, &CommandLine::key>},
    {"-l", OPT_L, kFlag, OP_NONE, kAny, SetOutputForm<OUTPUT_SHORT>},
    {"-lifecycle", OPT_LIFECYCLE, kValue, OP_NONE, kAny,
     StoreOptionalText<&CommandLine::lifecycle>},
    {"-lifecycle_only", OPT_LIFECYCLE_ONLY, kFlag, OP_NONE, kAny, SetLifecycleOnly},
    {"-list_import_frags", OPT_LIST_IMPORT_FRAGS, kFlag, OP_LIST_IMPORT_FRAGS, kAny, SelectsOnly},
    // Matching ignores case, so this row also takes the spelling -m.
    {"-M", OPT_M, kValue, OP_NONE, kAny, StoreOptionalText<&CommandLine::masterServer>},
    {"-mediaid", OPT_MEDIAID, kValue, OP_NONE, kAny, StoreOptionalText<&CommandLine::mediaId>},
    {"-mediaserver", OPT_MEDIASERVER, kValue, OP_NONE, kAny,
     StoreOptionalText<&CommandLine::mediaServer>},
    {"-nowarn", OPT_NOWARN, kFlag, OP_NONE, kAny, SetFlag<&CommandLine::noWarn>},
    {"-ntype", OPT_NTYPE, kValue, OP_NONE, VALUE_INVALID, StoreNotificationType},
    {"-output", OPT_OUTPUT, kFlag, OP_NONE, kAny, SetFlag<&CommandLine::output>},
    {"-policy", OPT_POLICY, kValue, OP_NONE, kAny, StoreOptionalText<&CommandLine::policy>},
    {"-q", OPT_Q, kFlag, OP_NONE, kAny, SetUsageAll},
    {"-reactivation_time", OPT_REACTIVATION_TIME, kValue, OP_NONE, kAny,
     StoreText<&CommandLine::reactivationTime>},
    {"-rt", OPT_RT, kValue, OP_NONE, VALUE_NOT_RECOGNIZED, StoreRecordTypes},
    {"-schedtype", OPT_SCHEDTYPE, kValue, OP_NONE, VALUE_INVALID,
     StoreInteger<int, &CommandLine::schedType>},
    {"-schedule", OPT_SCHEDULE, kValue, OP_NONE, kAny, StoreOptionalText<&CommandLine::schedule>},
    {"-sincetime", OPT_SINCETIME, kValue, OP_NONE, VALUE_INVALID,
     StoreInteger<int, &CommandLine::sinceTime>},
    {"-slpindex", OPT_SLPINDEX, kValue, OP_NONE, VALUE_INVALID,
     StoreInteger<int, &CommandLine::slpIndex>},
    {"-state", OPT_FRAG_STATE, kValue, OP_NONE, kAny, StoreShortState<&CommandLine::fragState>},
    {"-storageserver", OPT_STORAGESERVER, kValue, OP_NONE, kAny,
     StoreOptionalText<&CommandLine::storageServer>},
    {"-stssubtype", OPT_STSSUBTYPE, kValue, OP_NONE, kAny, StoreText<&CommandLine::stsSubtype>},
    {"-stype", OPT_STYPE, kValue, OP_NONE, kAny, StoreText<&CommandLine::serverType>},
    {"-subsys", OPT_SUBSYS, kValue, OP_NONE, VALUE_INVALID, StoreSubsystem},
    {"-T", OPT_T, kFlag, OP_NONE, kAny, SetFlag<&CommandLine::trace>},
    {"-target_domain", OPT_TARGET_DOMAIN, kValue, OP_NONE, kAny,
     StoreOptionalText<&CommandLine::targetDomain>},
    {"-target_info", OPT_TARGET_INFO, kValue, OP_NONE, kAny, StoreText<&CommandLine::targetInfo>},
    {"-target_machine", OPT_TARGET_MACHINE, kValue, OP_NONE, kAny,
     StoreText<&CommandLine::targetMachine>},
    {"-test_import_frags", OPT_TEST_IMPORT_FRAGS, kValue, OP_ADD_IMPORT_FRAGS, kAny,
     StoreText<&CommandLine::testImportFrags>},
    {"-testhook", OPT_TESTHOOK, kFlag, OP_TESTHOOK, kAny, SetFlag<&CommandLine::testHook>},
    {"-totalcap", OPT_TOTALCAP, kValue, OP_NONE, VALUE_INVALID,
     StoreInteger<int64_t, &CommandLine::totalCap>},
    {"-U", OPT_U, kFlag, OP_NONE, kAny, SetOutputForm<OUTPUT_USER>},
    {"-usedcap", OPT_USEDCAP, kValue, OP_NONE, VALUE_INVALID,
     StoreInteger<int64_t, &CommandLine::usedCap>},
    {"-usedspace", OPT_USEDSPACE, kValue, OP_NONE, VALUE_INVALID,
     StoreInteger<int64_t, &CommandLine::usedSpace>},
    {"-version", OPT_VERSION, kValue, OP_NONE, VALUE_INVALID, StoreVersion},
    {"-volumeid", OPT_VOLUMEID, kValue, OP_NONE, kAny, StoreText<&CommandLine::volumeId>},
    {"-wait", OPT_NONE, kFlag, OP_NONE, kAny, ReportDeprecated},
    {nullptr, OPT_NONE, kFlag, OP_NONE, kAny, nullptr},
};
