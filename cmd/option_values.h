// The enumerated option values: the record-type mask of -rt, the notification
// type of -ntype, the dump form of -df, the copy-type names of -copy_type and
// the subsystem abbreviations of -subsys (abrevMap, filled at start-up). Each
// Parse function turns the text given on the command line into its number and
// returns false for a text it does not know.
#ifndef CMD_OPTION_VALUES_H_
#define CMD_OPTION_VALUES_H_

#include <map>
#include <string>

// Subsystems of the SLP service, numbered as the SLP manager interface
// numbers them. SUBSYSTEM_ID_NULL addresses all subsystems; SUBSYSTEM_ID_MAX
// only closes the list.
enum SubSystemID {
  SUBSYSTEM_ID_NULL = 0,
  SUBSYSTEM_ID_APPL_LOG_MGR = 1,
  SUBSYSTEM_ID_CHANGE_EVENT_MGR = 2,
  SUBSYSTEM_ID_WORKGROUP_MGR = 3,
  SUBSYSTEM_ID_JOB_SUBMITTER = 4,
  SUBSYSTEM_ID_WIN_MGR = 5,
  SUBSYSTEM_ID_CONFIG_FILE_READER = 6,
  SUBSYSTEM_ID_SLP_DEF_MGR = 7,
  SUBSYSTEM_ID_IMAGE_MGR = 8,
  SUBSYSTEM_ID_STU_CACHE_MGR = 9,
  SUBSYSTEM_ID_CLEANUP_MGR = 10,
  SUBSYSTEM_ID_SWU_DATA_MGR = 11,
  SUBSYSTEM_ID_ERROR_MGR = 12,
  SUBSYSTEM_ID_NOTIFICATION_MGR = 13,
  SUBSYSTEM_ID_IMPORT_MGR = 14,
  SUBSYSTEM_ID_EXPIRATION_MGR = 15,
  SUBSYSTEM_ID_IP_NOTIFIER = 16,
  SUBSYSTEM_ID_REPORT_MGR = 17,
  SUBSYSTEM_ID_MAX = 18,
};

// Forms of a subsystem dump (-df), numbered as the SLP manager interface.
enum DumpFormSelector {
  DUMPFORM_NULL = 0,
  DUMPFORM_READABLE = 1,
  DUMPFORM_JSON = 2,
  DUMPFORM_LOGFILE = 3,
  DUMPFORM_MAX = 4,
};

// Which import notifications to list (-ntype).
enum ImportNotificationType_e {
  IMPORT_NOTIFICATION_ALL = 1,
  IMPORT_NOTIFICATION_CONF = 2,
  IMPORT_NOTIFICATION_ERROR = 3,
};

// Bits of the -rt record-type mask.
enum {
  RECORD_TYPE_IMAGE = 1,
  RECORD_TYPE_COPY = 2,
  RECORD_TYPE_FRAGMENT = 4,
  RECORD_TYPE_SNAPSHOT = 8,
};

// Subsystem abbreviation to subsystem, compared with case.
extern std::map<std::string, SubSystemID> abrevMap;

// Fills abrevMap with its 18 pairs (idempotent).
void InitAbrevMap();

// -rt: I, IC or C, ICF or F, ICFS or S (case ignored) to the mask 1, 3, 7, 15.
bool ParseRecordTypes(const char* text, int* mask);

// -ntype: all, conf, error (case ignored).
bool ParseNotificationType(const char* text, ImportNotificationType_e* type);

// -df: r, j, l (case ignored).
bool ParseDumpForm(const char* text, DumpFormSelector* form);

// -copy_type: a text beginning with a decimal digit is read as a base-10
// integer (strtol: trailing characters ignored) and taken as it is;
// otherwise a copy-type name, case ignored.
bool ParseCopyType(const char* text, int* copyType);

// -subsys: an abbreviation of abrevMap (case counts), else a text made only
// of decimal digits whose value is at most 17.
bool ParseSubsystem(const char* text, SubSystemID* subsystem);

#endif  // CMD_OPTION_VALUES_H_
