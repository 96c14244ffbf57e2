// The usage texts as data, and CmdUsage, which writes them. In the synopses
// "<D>" stands for the date-time form of the run's time locale, written
// between the angle brackets; it is asked for afresh each time it stands.
#include "cmd/usage.h"

#include <string>

#include "cmd/option_values.h"
#include "platform/locale.h"
#include "util/process.h"

namespace {

const char kDatePlaceholder[] = "<D>";

const char* const kPublicOperations[] = {
    "   active            - activate SLP operations on image/copies",
    "   cancel            - cancel pending SLP operations on images/copies",
    "   diskspaceinfo     - display amount of space used by disk server type",
    "   inactive          - inactivate SLP operations on image/copies",
    "   list              - list SLP information about images/copies",
    "   list_import_conf  - report on slp import confirmation",
    "   pendimplist       - show O.X.R images waiting to be imported",
    "   completion_report - show latest date for completed processing",
    "   redo              - redo selected SLP operations",
    "   repllist          - show status for completed O.X.R images",
    "   report            - show rollup of incomplete SLP images/copies",
    "   stlilist          - show progress status for SLP managed images/copies",
    nullptr,
};

const char* const kInternalOperations[] = {
    "",
    "   internal use only:",
    "   add_import_frags  - add test fragments for O.X.R. import",
    "   deletedone        - signal deletion done",
    "   diskfull          - initiate expiration on a disk volume",
    "   dropwg            - drop all workgroup allocations",
    "   dump              - dump cyclesvc subsystem state",
    "   initiate_exp      - initiate expiration (old style)",
    "   list_import_notify- list O.X.R. import notification records",
    "   list_import_frags - list fragment info for pending O.X.R. import images",
    "   listwg            - list workgroups",
    "   new_session       - run one set of slp processing sessions",
    "   one_session       - run a single session of one cyclesvc subsystem",
    "   query_exp         - query expiration",
    "   remove_exp        - remove expired fragments from image list",
    "   remove_repl       - remove completed replication records, allowing cleanup",
    "                       of replication host",
    "   resume            - resume execution of an cyclesvc subsystem",
    "   showvol           - show volume space by data classification",
    "   suspend           - suspend execution of an cyclesvc subsystem",
    "   testhook          - display internal revision state",
    "   update_hwm        - update HWM notification for expiration",
    "   update_pfs        - update potential free space on given volume",
    nullptr,
};

const char* const kGeneralClosing[] = {
    "", "To get detailed usage of each operation use:", "   cyclectl operation -help", "", nullptr,
};

const char* const kActive[] = {
    "   -- activate SLP operations on selected image copies",
    "   active [-lifecycle <name>] [-destination <name>] [-M <master_server>]",
    "          [-before <D> | -after <D>]",
    "   active -backupid <id_value>",
    nullptr,
};

const char* const kAddImportFrags[] = {
    "   -- add test fragments for O.X.R. import",
    "   add_import_frags -test_import_frags <import_frag_file> [-M <master_server>]",
    nullptr,
};

const char* const kCancel[] = {
    "   -- cancel pending operations on selected image copies",
    "   cancel -lifecycle <name> [-destination <name>] [-version <number>]",
    "          [-before <D> | -after <D>]",
    "          [-nowarn] [-M <master_server>] [-force]",
    "   cancel -backupid <id_value> [-M <master_server>] [-force]",
    nullptr,
};

const char* const kCompletionReport[] = {
    "   -- completion_report - show completed images for policies, clients,",
    "                          and lifecycles",
    "   completion_report [-policy <policy_name>] [-client <client_name>]",
    "                     [-lifecycle <lifecycle_name>] [-version <number>]",
    "                     [-days <number>] [-bydate]",
    nullptr,
};

const char* const kDeletedone[] = {
    "   -- signal deletion done",
    "   deletedone   [-expid <value>] [-M <master_server>]",
    nullptr,
};

const char* const kDiskfull[] = {
    "   -- initiate image expiration on a disk volume",
    "   diskfull     [-dt <disk_type>] [-mediaid <value>] [-mediaserver <name>]",
    "                [-storageserver <name>] [-volumeid <value>] [-totalcap <value>]",
    "                [-usedspace <value>] [-M <master_server>]",
    nullptr,
};

const char* const kDiskspaceinfo[] = {
    "   -- display amount of space used by disk server type",
    "   diskspaceinfo [-stype <name>] [-M <master_server>]",
    nullptr,
};

const char* const kDropwg[] = {
    "   -- drop all work group allocations",
    "   dropwg [-M <master_server>] [-nowarn]",
    nullptr,
};

const char* const kDump[] = {
    "   -- dump cyclesvc internal state",
    "   dump         [-subsys <id>] [-dopts <string>] [-df <r|j|l>]",
    "                [-M <master_server>]",
    nullptr,
};

const char* const kUpdateHwm[] = {
    "   -- Update HWM notification for image expiration",
    "   update_hwm   [-mediaserver <name>] [-storageserver <name>] [-stssubtype <sts_subtype>]",
    "                [-mediaid <value>] [-totalcap <value>] [-usedcap <value>]",
    "                [-M <master_server>]",
    nullptr,
};

const char* const kInactive[] = {
    "   -- inactivate future SLP operations on selected image copies",
    "   inactive -lifecycle <name> [-destination <name>] [-M <master_server>]",
    "            [-reactivation_time <D> | -duration <hours>]",
    "            [-before <D> | -after <D>]",
    "   inactive -destination <name> [-M <master_server>]",
    "            [-reactivation_time <D> | -duration <hours>]",
    "            [-before <D> | -after <D>]",
    "   inactive -backupid <id_value> [-M <master_server>]",
    nullptr,
};

const char* const kInitiateExp[] = {
    "   -- initiate image expiration on a disk volume (old style)",
    "   initiate_exp [-dp <disk_pool>] [-dt <disk_type>] [-mediaid <value>]",
    "                [-mediaserver <name>] [-storageserver <name>] [-volumeid <value>]",
    "                [-M <master_server>]",
    nullptr,
};

const char* const kStlilist[] = {
    "   -- show progress status for SLP managed images and copies",
    "   stlilist [-l | -U] [-M <master_server>]",
    "            [-lifecycle <name> [-destination <name>] [-version <number>] |",
    "             -backupid <id_value>]",
    "            [-client <name>] [-mediaid <value>]",
    "            [-mediaserver <name>]",
    "            [-image_state <value> -image_incomplete | -image_inactive]",
    "            [-copy_type <value>]",
    nullptr,
};

const char* const kReport[] = {
    "   -- show a point-in-time rollup of incomplete copies of SLP managed images",
    "   report   [-lifecycle <name> [-version <number>]] ",
    "            [-client <name>] [-mediaid <value>] ",
    "            [-storageserver <name>] [-mediaserver <name>] [-M <master_server>]",
    nullptr,
};

const char* const kList[] = {
    "   -- show contents of image list",
    "   list [-l | -U | -b] [-rt I|IC|ICF|ICFS] [-M <master_server>]",
    "        [-lifecycle <name> [-version <number>] [-destination <name>] | ",
    "         -lifecycle_only | -backupid <id_value> | -jobid <value> ] ",
    "        [-client <name>] [-mediaid <value>]",
    "        [-storageserver <name>] [-mediaserver <name>]",
    "        [-image_state <value> | -copy_state <value> | -frag_state <value> |",
    "         -image_incomplete | -image_inactive | -copy_incomplete | -copy_inactive]",
    "        [-copy_type <value>] [-policy <value>]",
    "        [-before <D> | -after <D>]",
    nullptr,
};

const char* const kListImportConf[] = {
    "   -- report on SLP import confirmation",
    "   list_import_conf [-l | -U | -b | -json | -json_compact] [-lifecycle <name>] "
    "[-all_pending_images]",
    "                    [-destination <name>] [-target_domain <name>]",
    nullptr,
};

const char* const kListImportFrags[] = {
    "   -- list_import_frags - list fragment info for pending O.X.R. import images",
    "   list_import_frags [-M <master_server>]",
    nullptr,
};

const char* const kPendimplist[] = {
    "   -- show replicate O.X.R. images waiting to be imported",
    "   pendimplist [-M <master_server>]",
    nullptr,
};

const char* const kListImportNotify[] = {
    "   -- show import notification records",
    "   list_import_notify [-input | -output] [-ntype all|conf|error] [-M <master_server>]",
    "                      [-l | -U | -b | -json | -json_compact] ",
    "                      [-before <D> | -after <D>]",
    "                      [-hostname <name>] [-client <name>]",
    nullptr,
};

const char* const kRepllist[] = {
    "   -- show status for completed O.X.R images and their target devices",
    "   repllist [-l | -U] [-M <master_server>]",
    "            [-sincetime <timeval>]",
    nullptr,
};

const char* const kListwg[] = {
    "   -- listwg - list work group records",
    "   listwg [-l | -U | -b | -json | -json_compact ] [-M <master_server>]",
    "          [-key <value>]",
    nullptr,
};

const char* const kOneSession[] = {
    "   -- run one cyclesvc subsystem session",
    "   one_session  [-subsys <id>] [-arg1 <name>] [-arg2 <name>] [-schedtype <value>]",
    "                [-policy <name>] [-schedule <name>] [-schedtype <value>]",
    "                [-M <master_server>]",
    nullptr,
};

const char* const kQueryExp[] = {
    "   -- query expiration",
    "   query_exp    [-expid <value>] [-M <master_server>]",
    nullptr,
};

const char* const kRedo[] = {
    "   -- redo SLP operation",
    "   redo -backupid <value> -slpindex <value> [-M <master_server>]",
    nullptr,
};

const char* const kRemoveExp[] = {
    "   -- remove expired fragment entries from image list",
    "   remove_exp   [-nowarn] [-M <master_server>]",
    nullptr,
};

const char* const kRemoveRepl[] = {
    "   -- remove_repl - remove completed replication records",
    "   remove_repl -target_machine <machine_name> [-target_info <info>]",
    nullptr,
};

const char* const kResume[] = {
    "   -- resume cyclesvc subsystem",
    "   resume       [-subsys <id>] [-M <master_server>]",
    nullptr,
};

const char* const kShowvol[] = {
    "   -- show volume space usage by data classification",
    "   showvol      [-dt <disk_type>] [-mediaid <value>] [-mediaserver <name>]",
    "                [-storageserver <name>] [-M <master_server>]",
    nullptr,
};

const char* const kNewSession[] = {
    "   -- start a new SLP management session",
    "   new_session  [-M <master_server>]",
    nullptr,
};

const char* const kSuspend[] = {
    "   -- suspend cyclesvc subsystem",
    "   suspend      [-subsys <id>] [-M <master_server>]",
    nullptr,
};

const char* const kTesthook[] = {
    "   -- invoke the test hook",
    "   -testhook",
    nullptr,
};

const char* const kUpdatePfs[] = {
    "   -- update potential free space on a given volume",
    "   update_pfs   [-dt <disk_type>] [-mediaid <value>] ",
    "                [-mediaserver <name>] [-storageserver <name>]",
    "                [-volumeid <value>] [-M <master_server>]",
    nullptr,
};

struct OperationUsage {
  operation_e op;
  const char* const* lines;
  bool closingBlankLine;
  bool subsystemList;  // followed by the subsystem abbreviations
};

const OperationUsage kOperationUsages[] = {
    {OP_ACTIVE, kActive, true, false},
    {OP_ADD_IMPORT_FRAGS, kAddImportFrags, true, false},
    {OP_CANCEL, kCancel, true, false},
    {OP_COMPLETION_REPORT, kCompletionReport, true, false},
    {OP_DELETEDONE, kDeletedone, true, false},
    {OP_DISKFULL, kDiskfull, true, false},
    {OP_DISKSPACEINFO, kDiskspaceinfo, true, false},
    {OP_DROPWG, kDropwg, true, false},
    {OP_DUMP, kDump, true, false},
    {OP_UPDATE_HWM, kUpdateHwm, true, false},
    {OP_INACTIVE, kInactive, true, false},
    {OP_INITIATE_EXP, kInitiateExp, true, false},
    {OP_STLILIST, kStlilist, true, false},
    {OP_REPORT, kReport, true, false},
    {OP_LIST, kList, true, false},
    {OP_LIST_IMPORT_CONF, kListImportConf, false, false},
    {OP_LIST_IMPORT_FRAGS, kListImportFrags, true, false},
    {OP_PENDIMPLIST, kPendimplist, true, false},
    {OP_LIST_IMPORT_NOTIFY, kListImportNotify, false, false},
    {OP_REPLLIST, kRepllist, true, false},
    {OP_LISTWG, kListwg, true, false},
    {OP_ONE_SESSION, kOneSession, true, true},
    {OP_QUERY_EXP, kQueryExp, true, false},
    {OP_REDO, kRedo, true, false},
    {OP_REMOVE_EXP, kRemoveExp, true, false},
    {OP_REMOVE_REPL, kRemoveRepl, true, false},
    {OP_RESUME, kResume, true, false},
    {OP_SHOWVOL, kShowvol, true, false},
    {OP_NEW_SESSION, kNewSession, true, false},
    {OP_SUSPEND, kSuspend, true, false},
    {OP_TESTHOOK, kTesthook, true, false},
    {OP_UPDATE_PFS, kUpdatePfs, true, false},
};

// Writes one line, each date placeholder replaced by the time locale's form.
void WriteLine(std::ostream& out, const char* line) {
  std::string text = line;
  const size_t placeholderLength = sizeof kDatePlaceholder - 1;
  for (size_t at = text.find(kDatePlaceholder); at != std::string::npos;
       at = text.find(kDatePlaceholder, at)) {
    std::string date = std::string("<") + getdtstring(lc_time) + ">";
    text.replace(at, placeholderLength, date);
    at += date.size();
  }
  out << text << '\n';
}

void WriteLines(std::ostream& out, const char* const* lines) {
  for (; *lines != nullptr; ++lines) WriteLine(out, *lines);
}

void WriteGeneralUsage(std::ostream& out, usage_format_e form) {
  out << '\n' << "Usage: " << CmdName << " [operation_name] [options]" << '\n';
  out << '\n' << "Available operations:" << '\n';
  WriteLines(out, kPublicOperations);
  if (form == USAGE_ALL) WriteLines(out, kInternalOperations);
  WriteLines(out, kGeneralClosing);
}

// abrevMap is ordered by the bytes of the abbreviation.
void WriteSubsystemList(std::ostream& out) {
  out << '\n';
  for (const auto& entry : abrevMap) {
    out << "                " << entry.first << ' ' << static_cast<int>(entry.second) << '\n';
  }
}

}  // namespace

void CmdUsage(std::ostream& out, usage_format_e form, operation_e op) {
  if (op == OP_HELP) {
    WriteGeneralUsage(out, form);
    return;
  }
  for (const OperationUsage& usage : kOperationUsages) {
    if (usage.op != op) continue;
    out << '\n';
    WriteLines(out, usage.lines);
    if (usage.subsystemList) WriteSubsystemList(out);
    if (usage.closingBlankLine) out << '\n';
    return;
  }
}
