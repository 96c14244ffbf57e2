// Name tables of the enumerated option values and the lookups over them.
#include "cmd/option_values.h"

#include <strings.h>

#include <cctype>
#include <cstdlib>

std::map<std::string, SubSystemID> abrevMap;

const NamedValue kRecordTypes[] = {
    {"I", RECORD_TYPE_IMAGE},
    {"IC", RECORD_TYPE_IMAGE | RECORD_TYPE_COPY},
    {"C", RECORD_TYPE_IMAGE | RECORD_TYPE_COPY},
    {"ICF", RECORD_TYPE_IMAGE | RECORD_TYPE_COPY | RECORD_TYPE_FRAGMENT},
    {"F", RECORD_TYPE_IMAGE | RECORD_TYPE_COPY | RECORD_TYPE_FRAGMENT},
    {"ICFS", RECORD_TYPE_IMAGE | RECORD_TYPE_COPY | RECORD_TYPE_FRAGMENT | RECORD_TYPE_SNAPSHOT},
    {"S", RECORD_TYPE_IMAGE | RECORD_TYPE_COPY | RECORD_TYPE_FRAGMENT | RECORD_TYPE_SNAPSHOT},
    {nullptr, 0},
};

const NamedValue kNotificationTypes[] = {
    {"all", IMPORT_NOTIFICATION_ALL},
    {"conf", IMPORT_NOTIFICATION_CONF},
    {"error", IMPORT_NOTIFICATION_ERROR},
    {nullptr, 0},
};

const NamedValue kDumpForms[] = {
    {"r", DUMPFORM_READABLE},
    {"j", DUMPFORM_JSON},
    {"l", DUMPFORM_LOGFILE},
    {nullptr, 0},
};

const NamedValue kCopyTypes[] = {
    {"backup", 0},
    {"duplicate", 1},
    {"snapshot", 2},
    {"duplicate to remote master", 3},
    {"replica", 3},
    {"import", 4},
    {"backup from snapshot", 5},
    {"index from snapshot", 6},
    {"snapreplica", 7},
    {"cloudsnapreplica", 8},
    {"cloudsnapindex", 9},
    {nullptr, 0},
};

const NamedValue kSubsystemAbbreviations[] = {
    {"null", SUBSYSTEM_ID_NULL},
    {"alm", SUBSYSTEM_ID_APPL_LOG_MGR},
    {"cem", SUBSYSTEM_ID_CHANGE_EVENT_MGR},
    {"wgm", SUBSYSTEM_ID_WORKGROUP_MGR},
    {"js", SUBSYSTEM_ID_JOB_SUBMITTER},
    {"wm", SUBSYSTEM_ID_WIN_MGR},
    {"cfr", SUBSYSTEM_ID_CONFIG_FILE_READER},
    {"sdm", SUBSYSTEM_ID_SLP_DEF_MGR},
    {"im", SUBSYSTEM_ID_IMAGE_MGR},
    {"scm", SUBSYSTEM_ID_STU_CACHE_MGR},
    {"cm", SUBSYSTEM_ID_CLEANUP_MGR},
    {"wdm", SUBSYSTEM_ID_SWU_DATA_MGR},
    {"em", SUBSYSTEM_ID_ERROR_MGR},
    {"nm", SUBSYSTEM_ID_NOTIFICATION_MGR},
    {"impm", SUBSYSTEM_ID_IMPORT_MGR},
    {"expm", SUBSYSTEM_ID_EXPIRATION_MGR},
    {"ipn", SUBSYSTEM_ID_IP_NOTIFIER},
    {"rm", SUBSYSTEM_ID_REPORT_MGR},
    {nullptr, 0},
};

namespace {

// The value of the row whose name equals `text` without regard to case.
bool LookupIgnoringCase(const NamedValue* table, const char* text, int* value) {
  for (; table->name != nullptr; ++table) {
    if (strcasecmp(table->name, text) == 0) {
      *value = table->value;
      return true;
    }
  }
  return false;
}

}  // namespace

void InitAbrevMap() {
  for (const NamedValue* row = kSubsystemAbbreviations; row->name != nullptr; ++row) {
    abrevMap.emplace(row->name, static_cast<SubSystemID>(row->value));
  }
}

bool ParseRecordTypes(const char* text, int* mask) {
  return LookupIgnoringCase(kRecordTypes, text, mask);
}

bool ParseNotificationType(const char* text, ImportNotificationType_e* type) {
  int value;
  if (!LookupIgnoringCase(kNotificationTypes, text, &value)) return false;
  *type = static_cast<ImportNotificationType_e>(value);
  return true;
}

bool ParseDumpForm(const char* text, DumpFormSelector* form) {
  int value;
  if (!LookupIgnoringCase(kDumpForms, text, &value)) return false;
  *form = static_cast<DumpFormSelector>(value);
  return true;
}

bool ParseCopyType(const char* text, int* copyType) {
  if (isdigit(static_cast<unsigned char>(text[0]))) return ParseInteger(text, copyType);
  return LookupIgnoringCase(kCopyTypes, text, copyType);
}

bool ParseSubsystem(const char* text, SubSystemID* subsystem) {
  auto it = abrevMap.find(text);
  if (it != abrevMap.end()) {
    *subsystem = it->second;
    return true;
  }
  if (text[0] == '\0') return false;
  int value = 0;
  for (const char* p = text; *p != '\0'; ++p) {
    if (!isdigit(static_cast<unsigned char>(*p))) return false;
    value = value * 10 + (*p - '0');
    if (value > SUBSYSTEM_ID_REPORT_MGR) return false;
  }
  *subsystem = static_cast<SubSystemID>(value);
  return true;
}
