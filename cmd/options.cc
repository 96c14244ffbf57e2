// The option tables: names, allowed-option lists, operationOptions and the
// exclusive groups.
#include "cmd/options.h"

const char optNames[OPT_END][32] = {
    "",
    "-after",
    "-all_pending_images",
    "-arg1",
    "-arg2",
    "-arg3",
    "-b",
    "-backupid",
    "-before",
    "-bydate",
    "-client",
    "-copy_inactive",
    "-copy_incomplete",
    "-copy_state",
    "-copy_type",
    "-days",
    "-destination",
    "-df",
    "-dopts",
    "-dp",
    "-dt",
    "-duration",
    "-expid",
    "-force",
    "-frag_state",
    "-help",
    "-hostname",
    "-image_inactive",
    "-image_incomplete",
    "-image_state",
    "-input",
    "-jobid",
    "-json",
    "-json_compact",
    "-key",
    "-l",
    "-lifecycle",
    "-lifecycle_only",
    "-list_import_frags",
    "-M",
    "-mediaid",
    "-mediaserver",
    "-nowarn",
    "-ntype",
    "-output",
    "-policy",
    "-q",
    "-reactivation_time",
    "-rt",
    "-schedtype",
    "-schedule",
    "-sincetime",
    "-slpindex",
    "-storageserver",
    "-stssubtype",
    "-stype",
    "-subsys",
    "-T",
    "-target_domain",
    "-target_info",
    "-target_machine",
    "-test_import_frags",
    "-testhook",
    "-totalcap",
    "-U",
    "-usedcap",
    "-usedspace",
    "-version",
    "-volumeid",
    "-wait",
};

const option_e NoneOptions[] = {OPT_END};
const option_e ActiveOptions[] = {OPT_AFTER,     OPT_BACKUPID, OPT_BEFORE, OPT_DESTINATION,
                                  OPT_LIFECYCLE, OPT_M,        OPT_END};
const option_e AddImportFragsOptions[] = {OPT_M, OPT_TEST_IMPORT_FRAGS, OPT_END};
const option_e CancelOptions[] = {OPT_AFTER,     OPT_BACKUPID, OPT_BEFORE, OPT_DESTINATION,
                                  OPT_LIFECYCLE, OPT_M,        OPT_NOWARN, OPT_VERSION,
                                  OPT_FORCE,     OPT_END};
const option_e CompletionReportOptions[] = {OPT_AFTER, OPT_BYDATE,    OPT_CLIENT,
                                            OPT_DAYS,  OPT_LIFECYCLE, OPT_POLICY,
                                            OPT_T,     OPT_VERSION,   OPT_END};
const option_e DeletionDoneOptions[] = {OPT_M, OPT_EXPID, OPT_END};
const option_e DiskfullExpirationOptions[] = {
    OPT_DT,       OPT_M,         OPT_MEDIAID,  OPT_MEDIASERVER, OPT_STORAGESERVER,
    OPT_TOTALCAP, OPT_USEDSPACE, OPT_VOLUMEID, OPT_END};
const option_e DiskSpaceOptions[] = {OPT_M, OPT_STYPE, OPT_END};
const option_e DropWGOptions[] = {OPT_M, OPT_NOWARN, OPT_END};
const option_e DumpOptions[] = {OPT_DF, OPT_DOPTS, OPT_M, OPT_SUBSYS, OPT_END};
const option_e HelpOptions[] = {OPT_END};
const option_e HwmUpdateOptions[] = {
    OPT_M,          OPT_MEDIAID,  OPT_MEDIASERVER, OPT_STORAGESERVER,
    OPT_STSSUBTYPE, OPT_TOTALCAP, OPT_USEDCAP,     OPT_END};
const option_e InactivateOptions[] = {OPT_AFTER,    OPT_BACKUPID,          OPT_BEFORE,
                                      OPT_DURATION, OPT_DESTINATION,       OPT_LIFECYCLE,
                                      OPT_M,        OPT_REACTIVATION_TIME, OPT_END};
const option_e InitiateExpirationOptions[] = {
    OPT_DP, OPT_DT, OPT_M, OPT_MEDIAID, OPT_MEDIASERVER, OPT_STORAGESERVER, OPT_VOLUMEID, OPT_END};
const option_e LifeCycleImageListOptions[] = {
    OPT_COPY_TYPE,        OPT_BACKUPID,    OPT_CLIENT, OPT_DESTINATION, OPT_IMAGE_INACTIVE,
    OPT_IMAGE_INCOMPLETE, OPT_IMAGE_STATE, OPT_L,      OPT_LIFECYCLE,   OPT_M,
    OPT_MEDIAID,          OPT_MEDIASERVER, OPT_U,      OPT_VERSION,     OPT_END};
const option_e LifeCycleReportOptions[] = {OPT_CLIENT,  OPT_LIFECYCLE,   OPT_M,
                                           OPT_MEDIAID, OPT_MEDIASERVER, OPT_STORAGESERVER,
                                           OPT_VERSION, OPT_END};
const option_e ListOptions[] = {OPT_AFTER,
                                OPT_B,
                                OPT_BACKUPID,
                                OPT_BEFORE,
                                OPT_CLIENT,
                                OPT_COPY_INACTIVE,
                                OPT_COPY_INCOMPLETE,
                                OPT_COPY_STATE,
                                OPT_COPY_TYPE,
                                OPT_DESTINATION,
                                OPT_FRAG_STATE,
                                OPT_IMAGE_INACTIVE,
                                OPT_IMAGE_INCOMPLETE,
                                OPT_IMAGE_STATE,
                                OPT_JOBID,
                                OPT_L,
                                OPT_LIFECYCLE,
                                OPT_LIFECYCLE_ONLY,
                                OPT_M,
                                OPT_MEDIAID,
                                OPT_MEDIASERVER,
                                OPT_POLICY,
                                OPT_RT,
                                OPT_STORAGESERVER,
                                OPT_U,
                                OPT_VERSION,
                                OPT_END};
const option_e ListImportConfReportOptions[] = {OPT_ALL_PENDING_IMAGES,
                                                OPT_B,
                                                OPT_DESTINATION,
                                                OPT_JSON,
                                                OPT_JSON_COMPACT,
                                                OPT_L,
                                                OPT_LIFECYCLE,
                                                OPT_TARGET_DOMAIN,
                                                OPT_U,
                                                OPT_END};
const option_e ListImportFragsOptions[] = {OPT_LIST_IMPORT_FRAGS, OPT_M, OPT_END};
const option_e ListImportImagesOptions[] = {OPT_M, OPT_END};
const option_e ListImportNotificationsOptions[] = {
    OPT_AFTER,        OPT_B, OPT_BEFORE, OPT_CLIENT, OPT_HOSTNAME, OPT_INPUT, OPT_JSON,
    OPT_JSON_COMPACT, OPT_L, OPT_M,      OPT_NTYPE,  OPT_OUTPUT,   OPT_U,     OPT_END};
const option_e ListReplicasOptions[] = {OPT_L, OPT_M, OPT_SINCETIME, OPT_U, OPT_END};
const option_e ListWorkGroupOptions[] = {OPT_B,   OPT_JSON, OPT_JSON_COMPACT, OPT_L, OPT_M,
                                         OPT_KEY, OPT_U,    OPT_END};
const option_e OneSessionOptions[] = {OPT_M,        OPT_ARG1,      OPT_ARG2,   OPT_ARG3, OPT_POLICY,
                                      OPT_SCHEDULE, OPT_SCHEDTYPE, OPT_SUBSYS, OPT_END};
const option_e QueryExpirationOptions[] = {OPT_EXPID, OPT_M, OPT_END};
const option_e RedoOptions[] = {OPT_BACKUPID, OPT_M, OPT_SLPINDEX, OPT_END};
const option_e RemoveAllOptions[] = {OPT_END};
const option_e RemoveExpOptions[] = {OPT_M, OPT_NOWARN, OPT_END};
const option_e RemoveReplicationOptions[] = {OPT_TARGET_INFO, OPT_TARGET_MACHINE, OPT_END};
const option_e ResumeOptions[] = {OPT_M, OPT_SUBSYS, OPT_END};
const option_e ShowVolOptions[] = {OPT_DT, OPT_M, OPT_MEDIAID, OPT_MEDIASERVER, OPT_STORAGESERVER,
                                   OPT_END};
const option_e StartSessionOptions[] = {OPT_M, OPT_END};
const option_e SuspendOptions[] = {OPT_M, OPT_SUBSYS, OPT_END};
const option_e TestHookOptions[] = {OPT_END};
const option_e UpdatePotentialFreeSpaceOptions[] = {
    OPT_DT, OPT_M, OPT_MEDIAID, OPT_MEDIASERVER, OPT_STORAGESERVER, OPT_VOLUMEID, OPT_END};

std::map<operation_e, const option_e*> operationOptions;

namespace {

struct OperationOptionsPair {
  operation_e op;
  const option_e* list;
};

const OperationOptionsPair kOperationOptions[] = {
    {OP_NONE, NoneOptions},
    {OP_ACTIVE, ActiveOptions},
    {OP_ADD_IMPORT_FRAGS, AddImportFragsOptions},
    {OP_CANCEL, CancelOptions},
    {OP_COMPLETION_REPORT, CompletionReportOptions},
    {OP_DELETEDONE, DeletionDoneOptions},
    {OP_DISKFULL, DiskfullExpirationOptions},
    {OP_DISKSPACEINFO, DiskSpaceOptions},
    {OP_DROPWG, DropWGOptions},
    {OP_DUMP, DumpOptions},
    {OP_HELP, HelpOptions},
    {OP_UPDATE_HWM, HwmUpdateOptions},
    {OP_INACTIVE, InactivateOptions},
    {OP_INITIATE_EXP, InitiateExpirationOptions},
    {OP_STLILIST, LifeCycleImageListOptions},
    {OP_REPORT, LifeCycleReportOptions},
    {OP_LIST, ListOptions},
    {OP_LIST_IMPORT_CONF, ListImportConfReportOptions},
    {OP_LIST_IMPORT_FRAGS, ListImportFragsOptions},
    {OP_PENDIMPLIST, ListImportImagesOptions},
    {OP_LIST_IMPORT_NOTIFY, ListImportNotificationsOptions},
    {OP_REPLLIST, ListReplicasOptions},
    {OP_LISTWG, ListWorkGroupOptions},
    {OP_ONE_SESSION, OneSessionOptions},
    {OP_QUERY_EXP, QueryExpirationOptions},
    {OP_REDO, RedoOptions},
    {OP_REMOVE_ALL, RemoveAllOptions},
    {OP_REMOVE_EXP, RemoveExpOptions},
    {OP_REMOVE_REPL, RemoveReplicationOptions},
    {OP_RESUME, ResumeOptions},
    {OP_SHOWVOL, ShowVolOptions},
    {OP_NEW_SESSION, StartSessionOptions},
    {OP_SUSPEND, SuspendOptions},
    {OP_TESTHOOK, TestHookOptions},
    {OP_UPDATE_PFS, UpdatePotentialFreeSpaceOptions},
};

}  // namespace

void InitOperationOptions() {
  for (const OperationOptionsPair& pair : kOperationOptions) {
    operationOptions.emplace(pair.op, pair.list);
  }
}

const option_e* FindOperationOptions(int op) {
  auto it = operationOptions.find(static_cast<operation_e>(op));
  return it != operationOptions.end() ? it->second : nullptr;
}

bool IsOptionAllowed(const option_e* list, int option) {
  for (; *list != OPT_END; ++list) {
    if (*list == option) return true;
  }
  return false;
}

const ExclusiveGroup exclusiveGroups[5] = {
    {{OPT_LIFECYCLE, OPT_LIFECYCLE_ONLY, OPT_END}},
    {{OPT_REACTIVATION_TIME, OPT_DURATION, OPT_END}},
    {{OPT_IMAGE_STATE, OPT_COPY_STATE, OPT_FRAG_STATE, OPT_IMAGE_INCOMPLETE, OPT_IMAGE_INACTIVE,
      OPT_COPY_INCOMPLETE, OPT_COPY_INACTIVE, OPT_END}},
    {{OPT_B, OPT_L, OPT_U, OPT_JSON, OPT_JSON_COMPACT, OPT_END}},
    {{OPT_AFTER, OPT_BEFORE, OPT_END}},
};

std::string ExclusiveGroupText(const ExclusiveGroup& group) {
  std::string text;
  for (const option_e* member = group.members; *member != OPT_END; ++member) {
    if (!text.empty()) text += ", ";
    text += optNames[*member];
  }
  return text;
}
