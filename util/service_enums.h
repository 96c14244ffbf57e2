// Enumerations the front end fills from the command line and the operations
// below it hand on to the SLP service: the subsystem of -subsys, the dump
// form of -df and the notification type of -ntype. The numbers are those of
// the SLP manager interface.
#ifndef UTIL_SERVICE_ENUMS_H_
#define UTIL_SERVICE_ENUMS_H_

// Subsystems of the SLP service. SUBSYSTEM_ID_NULL addresses all subsystems;
// SUBSYSTEM_ID_MAX only closes the list.
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

// Forms of a subsystem dump (-df).
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

#endif  // UTIL_SERVICE_ENUMS_H_
