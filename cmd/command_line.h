// CommandLine: the settled result of parsing one run's arguments: the
// operation with its two table flags, the given-flag of every option and the
// value of every option, with the defaults an operation receives when the
// option is absent. Options that share one value (-before/-after, the three
// image-state options, the three copy-state options, -frag_state/-state, the
// five output forms) share one field here.
#ifndef CMD_COMMAND_LINE_H_
#define CMD_COMMAND_LINE_H_

#include <cstdint>
#include <string>

#include "cmd/operation_id.h"
#include "cmd/option_values.h"
#include "cmd/options.h"
#include "cmd/usage.h"
#include "util/output_form.h"
#include "util/service_enums.h"

// A text option whose default is "none": the text (empty when not given) and
// whether it was given, so that a handler can receive either form.
class OptionalText {
 public:
  void Set(const char* value) {
    text_ = value;
    given_ = true;
  }
  const std::string& text() const { return text_; }
  bool empty() const { return text_.empty(); }
  // The text, or nullptr when the option was not given. Owned by this object.
  const char* get() const { return given_ ? text_.c_str() : nullptr; }

 private:
  std::string text_;
  bool given_ = false;
};

// A filter value that handlers receive as a pointer, absent when not given.
template <typename T>
class OptionalValue {
 public:
  void Set(T value) {
    value_ = value;
    given_ = true;
  }
  // The value, or nullptr when not given. Owned by this object.
  const T* get() const { return given_ ? &value_ : nullptr; }

 private:
  T value_{};
  bool given_ = false;
};

struct CommandLine {
  operation_e operation = OP_NONE;
  bool requiresAdmin = false;
  bool requiresCatalog = false;
  bool helpRequested = false;               // -help, -h
  usage_format_e usageForm = USAGE_PUBLIC;  // -q

  // Given-flags by option number: set when the option was accepted.
  bool optionSeen[OPT_END + 1] = {};
  bool given(option_e option) const { return optionSeen[option]; }

  TimeRangeType timeRange = TIME_RANGE_NONE;  // -before, -after
  long time = 0;                              // seconds since 1970
  bool allPendingImages = false;
  OptionalText arg1;
  OptionalText arg2;
  int arg3 = 0;
  outputform_e outputForm = OUTPUT_SHORT;  // -l, -U, -b, -json, -json_compact
  OptionalText backupId;
  bool byDate = false;
  OptionalText client;
  OptionalValue<int> imageState;   // -image_state, -image_incomplete (-1), -image_inactive (-2)
  OptionalValue<short> copyState;  // -copy_state, -copy_incomplete (-1), -copy_inactive (-2)
  OptionalValue<short> fragState;  // -frag_state, -state
  OptionalValue<int> copyType;
  long days = 30;
  OptionalText destination;
  DumpFormSelector dumpForm = DUMPFORM_READABLE;
  std::string dumpOptions;  // -dopts
  std::string diskPool;     // -dp
  int diskType = 0;         // -dt
  std::string duration;     // hours, converted by the operation
  int expirationId = 0;
  bool force = false;
  std::string hostname;
  bool input = false;
  int jobId = 0;
  int64_t key = 0;
  OptionalText lifecycle;
  short lifecycleOnly = 0;
  OptionalText masterServer;  // -M; also replaces the process-wide MasterServer
  OptionalText mediaId;
  OptionalText mediaServer;
  bool noWarn = false;
  ImportNotificationType_e notificationType = IMPORT_NOTIFICATION_ALL;
  bool output = false;
  OptionalText policy;
  std::string reactivationTime;  // a date, converted by the operation
  int recordTypes = RECORD_TYPE_IMAGE | RECORD_TYPE_COPY | RECORD_TYPE_FRAGMENT;  // -rt
  int schedType = -1;
  OptionalText schedule;
  int sinceTime = 0;
  int slpIndex = 0;
  OptionalText storageServer;
  std::string stsSubtype;
  std::string serverType;  // -stype
  SubSystemID subsystem = SUBSYSTEM_ID_NULL;
  bool trace = false;  // -T
  OptionalText targetDomain;
  std::string targetInfo;
  std::string targetMachine;
  std::string testImportFrags;  // file name
  bool testHook = false;
  int64_t totalCap = 0;
  int64_t usedCap = 0;
  int64_t usedSpace = 0;
  long version = -1;  // -1: not given
  std::string volumeId;

  // -version as handed to the lifecycle image list: nullptr when not given.
  const long* versionGiven() const { return given(OPT_VERSION) ? &version : nullptr; }
};

#endif  // CMD_COMMAND_LINE_H_
