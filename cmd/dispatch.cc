// The dispatch table, the wrappers that pass each handler its values in its
// own order, and the dispatcher that walks the table.
#include "cmd/dispatch.h"

#include <cstdio>

#include "catalog/backlog_report.h"
#include "catalog/completion_report.h"
#include "catalog/lifecycle_image_list.h"
#include "catalog/list.h"
#include "catalog/list_replicas.h"
#include "catalog/redo_operation.h"
#include "catalog/remove_expired_fragments.h"
#include "catalog/remove_replicas.h"
#include "catalog/volume_space_report.h"
#include "cmd/confirm.h"
#include "import/import_conf_report.h"
#include "import/list_import_notifications.h"
#include "import/pending_imports.h"
#include "import/test_import_fragments.h"
#include "remote/disk_space_info.h"
#include "remote/drop_wg.h"
#include "remote/expiration_control.h"
#include "remote/image_copy_processing.h"
#include "remote/subsystem_control.h"
#include "util/process.h"
#include "workgroup/list_work_groups.h"

namespace {

bool ConfirmCancel(const CommandLine& line) {
  return line.destination.empty() || ConfirmDestinationCancel();
}

bool ConfirmDropWG(const CommandLine&) { return ConfirmWorkGroupDrop(); }

bool ConfirmRemoveExp(const CommandLine&) { return ConfirmExpiredFragmentRemoval(); }

int cmd_completion_report(const CommandLine& l) {
  return CompletionReport(MasterServer, l.policy.text(), l.client.text(), l.lifecycle.text(),
                          l.version, l.days, l.byDate, l.trace);
}

int cmd_list(const CommandLine& l) {
  List(l.outputForm, l.lifecycle.get(), l.destination.get(), l.backupId.get(), l.client.get(),
       l.mediaId.get(), l.storageServer.get(), l.mediaServer.get(), l.imageState.get(),
       l.copyState.get(), l.fragState.get(), l.lifecycleOnly, l.version, l.recordTypes,
       l.copyType.get(), l.jobId, l.policy.get(), l.timeRange, l.time);
  return 0;
}

int cmd_diskspaceinfo(const CommandLine& l) {
  return DiskSpaceInfo(l.given(OPT_STYPE) ? l.serverType.c_str() : nullptr);
}

int cmd_dropwg(const CommandLine&) { return DropWG(); }

int cmd_listwg(const CommandLine& l) { return ListWorkGroups(l.outputForm, l.key); }

int cmd_list_import_conf(const CommandLine& l) {
  return ListImportConfReport(l.outputForm, l.lifecycle.get(), l.destination.get(),
                              l.targetDomain.get(), l.allPendingImages);
}

int cmd_list_import_notify(const CommandLine& l) {
  ListImportNotifications(l, ListInputImportNotifications, ListOutputImportNotifications);
  return 0;
}

int cmd_repllist(const CommandLine& l) {
  ListReplicas(l.outputForm, l.sinceTime);
  return 0;
}

int cmd_redo(const CommandLine& l) {
  RedoOperation(l.backupId.get(), l.slpIndex);
  return 0;
}

int cmd_remove_exp(const CommandLine& l) {
  RemoveExpiredFragments(l.backupId.get());
  return 0;
}

int cmd_remove_repl(const CommandLine& l) { return RemoveReplicas(l.targetMachine, l.targetInfo); }

int cmd_pendimplist(const CommandLine& l) {
  ListPendingImportImages(l.outputForm, l.sinceTime);
  return 0;
}

int cmd_list_import_frags(const CommandLine&) {
  ListPendingImportFragments();
  return 0;
}

int cmd_add_import_frags(const CommandLine& l) {
  TestAddImportFragments(l.testImportFrags);
  return 0;
}

int cmd_stlilist(const CommandLine& l) {
  LifeCycleImageList(l.outputForm, l.lifecycle.get(), l.versionGiven(), l.destination.get(),
                     l.backupId.get(), l.client.get(), l.mediaId.get(), l.storageServer.get(),
                     l.mediaServer.get(), l.imageState.get(), l.copyType.get());
  return 0;
}

int cmd_report(const CommandLine& l) {
  LifeCycleReport(l.outputForm, l.lifecycle.get(), l.version, l.client.get(), l.mediaId.get(),
                  l.storageServer.get(), l.mediaServer.get(), l.copyType.get());
  return 0;
}

int cmd_showvol(const CommandLine& l) {
  ShowVolume(l.outputForm, l.diskType, l.mediaId.get(), l.mediaServer.get(), l.storageServer.get());
  return 0;
}

int RunCopyProcessing(CopyProcessingOp op, const CommandLine& l) {
  CopyProcessingRequest r;
  r.destination = l.destination.text();
  r.lifecycle = l.lifecycle.text();
  r.backupId = l.backupId.text();
  r.slpVersion = l.version;
  r.rangeType = l.timeRange;
  r.rangeTime = l.time;
  r.duration = l.duration;
  r.reactivationDate = l.reactivationTime;
  r.force = l.force;
  r.askYesNo = [](const std::string& prompt) { return AskForUserConfirmation(prompt); };
  return ImageCopyProcessing(op, r);
}

int cmd_active(const CommandLine& l) { return RunCopyProcessing(CopyProcessingOp::kActive, l); }
int cmd_cancel(const CommandLine& l) { return RunCopyProcessing(CopyProcessingOp::kCancel, l); }
int cmd_inactive(const CommandLine& l) { return RunCopyProcessing(CopyProcessingOp::kInactive, l); }
int cmd_new_session(const CommandLine& l) {
  return RunCopyProcessing(CopyProcessingOp::kNewSession, l);
}

int RunSubsystemAction(SubsystemAction action, const CommandLine& l) {
  SubsystemArguments args = SubsystemSessionArguments(l);
  SuspendResumeSubSystem(action, l.subsystem, args.first, args.second, args.third);
  return 0;
}

int cmd_suspend(const CommandLine& l) { return RunSubsystemAction(SubsystemAction::kSuspend, l); }
int cmd_resume(const CommandLine& l) { return RunSubsystemAction(SubsystemAction::kResume, l); }
int cmd_one_session(const CommandLine& l) {
  return RunSubsystemAction(SubsystemAction::kOneSession, l);
}

int cmd_dump(const CommandLine& l) {
  Dump(l.subsystem, l.dumpOptions, l.dumpForm);
  return 0;
}

VolumeFacts Volume(const CommandLine& l) {
  VolumeFacts v;
  v.mediaServer = l.mediaServer.text();
  v.storageServer = l.storageServer.text();
  v.volumeId = l.volumeId;
  v.mediaId = l.mediaId.text();
  v.diskPool = l.diskPool;
  v.diskType = l.diskType;
  return v;
}

int cmd_diskfull(const CommandLine& l) {
  DiskfullExpiration(Volume(l), l.totalCap, l.usedSpace);
  return 0;
}

int cmd_initiate_exp(const CommandLine& l) {
  InitiateExpire(Volume(l));
  return 0;
}

int cmd_update_hwm(const CommandLine& l) {
  UpdateHwm(l.mediaServer.text(), l.storageServer.text(), l.mediaId.text(), l.stsSubtype,
            l.totalCap, l.usedCap);
  return 0;
}

int cmd_update_pfs(const CommandLine& l) {
  UpdatePotentialFreeSpace(Volume(l));
  return 0;
}

int cmd_query_exp(const CommandLine& l) {
  QueryExpiration(l.expirationId);
  return 0;
}

int cmd_deletedone(const CommandLine& l) {
  DeletionDone(l.expirationId);
  return 0;
}

int cmd_remove_all(const CommandLine&) {
  fputs("This operation has been deprecated and is no longer available.\n", stdout);
  return 0;
}

// help and testhook end the run while parsing and have no row.
const DispatchEntry kDispatchTable[] = {
    {OP_ACTIVE, nullptr, cmd_active, STATUS_FROM_BODY},
    {OP_ADD_IMPORT_FRAGS, nullptr, cmd_add_import_frags, STATUS_ZERO},
    {OP_CANCEL, ConfirmCancel, cmd_cancel, STATUS_FROM_BODY},
    {OP_COMPLETION_REPORT, nullptr, cmd_completion_report, STATUS_RESULT},
    {OP_DELETEDONE, nullptr, cmd_deletedone, STATUS_FROM_BODY},
    {OP_DISKFULL, nullptr, cmd_diskfull, STATUS_FROM_BODY},
    {OP_DISKSPACEINFO, nullptr, cmd_diskspaceinfo, STATUS_FROM_BODY},
    {OP_DROPWG, ConfirmDropWG, cmd_dropwg, STATUS_RESULT},
    {OP_DUMP, nullptr, cmd_dump, STATUS_ZERO},
    {OP_UPDATE_HWM, nullptr, cmd_update_hwm, STATUS_ZERO},
    {OP_INACTIVE, nullptr, cmd_inactive, STATUS_FROM_BODY},
    {OP_INITIATE_EXP, nullptr, cmd_initiate_exp, STATUS_ZERO},
    {OP_STLILIST, nullptr, cmd_stlilist, STATUS_ZERO},
    {OP_REPORT, nullptr, cmd_report, STATUS_ZERO},
    {OP_LIST, nullptr, cmd_list, STATUS_ZERO},
    {OP_LIST_IMPORT_CONF, nullptr, cmd_list_import_conf, STATUS_ZERO},
    {OP_LIST_IMPORT_FRAGS, nullptr, cmd_list_import_frags, STATUS_ZERO},
    {OP_PENDIMPLIST, nullptr, cmd_pendimplist, STATUS_ZERO},
    {OP_LIST_IMPORT_NOTIFY, nullptr, cmd_list_import_notify, STATUS_ZERO},
    {OP_REPLLIST, nullptr, cmd_repllist, STATUS_ZERO},
    {OP_LISTWG, nullptr, cmd_listwg, STATUS_RESULT},
    {OP_ONE_SESSION, nullptr, cmd_one_session, STATUS_ZERO},
    {OP_QUERY_EXP, nullptr, cmd_query_exp, STATUS_ZERO},
    {OP_REDO, nullptr, cmd_redo, STATUS_ZERO},
    {OP_REMOVE_ALL, nullptr, cmd_remove_all, STATUS_ZERO},
    {OP_REMOVE_EXP, ConfirmRemoveExp, cmd_remove_exp, STATUS_ZERO},
    {OP_REMOVE_REPL, nullptr, cmd_remove_repl, STATUS_RESULT},
    {OP_RESUME, nullptr, cmd_resume, STATUS_ZERO},
    {OP_SHOWVOL, nullptr, cmd_showvol, STATUS_ZERO},
    {OP_NEW_SESSION, nullptr, cmd_new_session, STATUS_FROM_BODY},
    {OP_SUSPEND, nullptr, cmd_suspend, STATUS_ZERO},
    {OP_UPDATE_PFS, nullptr, cmd_update_pfs, STATUS_ZERO},
};

int UnrecognizedOperation(int op) {
  fprintf(stderr, "%s: unrecognized operation %d\n", CmdName.c_str(), op);
  return 144;
}

}  // namespace

const DispatchEntry* FindDispatchEntry(int op) {
  for (const DispatchEntry& entry : kDispatchTable) {
    if (entry.op == op) return &entry;
  }
  return nullptr;
}

int Dispatch(const CommandLine& line) {
  const DispatchEntry* entry = FindDispatchEntry(line.operation);
  if (entry == nullptr || entry->run == nullptr) return UnrecognizedOperation(line.operation);
  if (entry->confirm != nullptr && !line.noWarn && !entry->confirm(line)) return 0;
  int status = entry->run(line);
  return entry->status == STATUS_ZERO ? 0 : status;
}

SubsystemArguments SubsystemSessionArguments(const CommandLine& line) {
  SubsystemArguments args;
  args.first = line.arg1.get() != nullptr ? line.arg1.get() : line.policy.get();
  args.second = line.arg2.get() != nullptr ? line.arg2.get() : line.schedule.get();
  args.third = line.arg3 != 0 ? line.arg3 : line.schedType;
  return args;
}

void ListImportNotifications(const CommandLine& line, NotificationListing incoming,
                             NotificationListing outgoing) {
  bool both = line.input == line.output;
  if (line.input || both) {
    incoming(line.outputForm, line.notificationType, line.timeRange, line.time, line.client.text(),
             line.hostname);
  }
  if (line.output || both) {
    outgoing(line.outputForm, line.notificationType, line.timeRange, line.time, line.client.text(),
             line.hostname);
  }
}
