// The option tables: option_e and the option-name table optNames, the
// allowed-option list of every operation, operationOptions (operation to
// list, filled at start-up) and the five groups of mutually exclusive
// options. Option numbers are fixed: messages print the names by number and
// the lists store numbers.
#ifndef CMD_OPTIONS_H_
#define CMD_OPTIONS_H_

#include <map>
#include <string>

#include "cmd/operation_id.h"

enum option_e {
  OPT_NONE = 0,
  OPT_AFTER = 1,
  OPT_ALL_PENDING_IMAGES = 2,
  OPT_ARG1 = 3,
  OPT_ARG2 = 4,
  OPT_ARG3 = 5,
  OPT_B = 6,
  OPT_BACKUPID = 7,
  OPT_BEFORE = 8,
  OPT_BYDATE = 9,
  OPT_CLIENT = 10,
  OPT_COPY_INACTIVE = 11,
  OPT_COPY_INCOMPLETE = 12,
  OPT_COPY_STATE = 13,
  OPT_COPY_TYPE = 14,
  OPT_DAYS = 15,
  OPT_DESTINATION = 16,
  OPT_DF = 17,
  OPT_DOPTS = 18,
  OPT_DP = 19,
  OPT_DT = 20,
  OPT_DURATION = 21,
  OPT_EXPID = 22,
  OPT_FORCE = 23,
  OPT_FRAG_STATE = 24,
  OPT_HELP = 25,
  OPT_HOSTNAME = 26,
  OPT_IMAGE_INACTIVE = 27,
  OPT_IMAGE_INCOMPLETE = 28,
  OPT_IMAGE_STATE = 29,
  OPT_INPUT = 30,
  OPT_JOBID = 31,
  OPT_JSON = 32,
  OPT_JSON_COMPACT = 33,
  OPT_KEY = 34,
  OPT_L = 35,
  OPT_LIFECYCLE = 36,
  OPT_LIFECYCLE_ONLY = 37,
  OPT_LIST_IMPORT_FRAGS = 38,
  OPT_M = 39,
  OPT_MEDIAID = 40,
  OPT_MEDIASERVER = 41,
  OPT_NOWARN = 42,
  OPT_NTYPE = 43,
  OPT_OUTPUT = 44,
  OPT_POLICY = 45,
  OPT_Q = 46,
  OPT_REACTIVATION_TIME = 47,
  OPT_RT = 48,
  OPT_SCHEDTYPE = 49,
  OPT_SCHEDULE = 50,
  OPT_SINCETIME = 51,
  OPT_SLPINDEX = 52,
  OPT_STORAGESERVER = 53,
  OPT_STSSUBTYPE = 54,
  OPT_STYPE = 55,
  OPT_SUBSYS = 56,
  OPT_T = 57,
  OPT_TARGET_DOMAIN = 58,
  OPT_TARGET_INFO = 59,
  OPT_TARGET_MACHINE = 60,
  OPT_TEST_IMPORT_FRAGS = 61,
  OPT_TESTHOOK = 62,
  OPT_TOTALCAP = 63,
  OPT_U = 64,
  OPT_USEDCAP = 65,
  OPT_USEDSPACE = 66,
  OPT_VERSION = 67,
  OPT_VOLUMEID = 68,
  OPT_WAIT = 69,
  OPT_END = 70,  // not an option: ends every allowed-option list
};

// Option names indexed by number; entry 0 is empty.
extern const char optNames[OPT_END][32];

// The allowed-option lists, one per operation, each ended by OPT_END. The
// order inside a list carries no meaning.
extern const option_e NoneOptions[], ActiveOptions[], AddImportFragsOptions[], CancelOptions[],
    CompletionReportOptions[], DeletionDoneOptions[], DiskfullExpirationOptions[],
    DiskSpaceOptions[], DropWGOptions[], DumpOptions[], HelpOptions[], HwmUpdateOptions[],
    InactivateOptions[], InitiateExpirationOptions[], LifeCycleImageListOptions[],
    LifeCycleReportOptions[], ListOptions[], ListImportConfReportOptions[],
    ListImportFragsOptions[], ListImportImagesOptions[], ListImportNotificationsOptions[],
    ListReplicasOptions[], ListWorkGroupOptions[], OneSessionOptions[], QueryExpirationOptions[],
    RedoOptions[], RemoveAllOptions[], RemoveExpOptions[], RemoveReplicationOptions[],
    ResumeOptions[], ShowVolOptions[], StartSessionOptions[], SuspendOptions[], TestHookOptions[],
    UpdatePotentialFreeSpaceOptions[];

// Operation to its allowed-option list; filled by InitOperationOptions with
// one pair per operation id 0 to 34 (ns shares the list of new_session).
extern std::map<operation_e, const option_e*> operationOptions;

// Fills operationOptions with its 35 pairs (idempotent).
void InitOperationOptions();

// The allowed-option list of `op`, or nullptr when operationOptions has none.
const option_e* FindOperationOptions(int op);

// True when `option` stands in `list` before the OPT_END that ends it.
bool IsOptionAllowed(const option_e* list, int option);

// A group of options of which at most one may be given.
struct ExclusiveGroup {
  option_e members[8];  // ended by OPT_END
};

// The five groups in the order they are checked.
extern const ExclusiveGroup exclusiveGroups[5];

// The list text of a group for message SmeSlp0560N: the members' names in
// group order, separated by ", ".
std::string ExclusiveGroupText(const ExclusiveGroup& group);

#endif  // CMD_OPTIONS_H_
