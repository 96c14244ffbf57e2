// suspend, resume, one_session and dump against the SLP manager.
#include "remote/subsystem_control.h"

#include <cstdio>

#include "platform/debuglog.h"
#include "platform/msgcat.h"
#include "remote/exception_ladder.h"
#include "remote/services.h"
#include "util/message.h"
#include "util/process.h"

namespace DssSVC = Orvantic::Stashwell::StorageServiceMgmt::DssSVC;

namespace {

// The call of each action, in the order of SubsystemAction, and the name its
// log line gives it.
const struct ActionRow {
  const char* callName;
  CORBA::Long (*call)(DssSVC::Dssvc_ptr manager, DssSVC::SubSystemID subsystem, const char* arg1,
                      const char* arg2, int arg3);
} kActions[] = {
    {"SubSystemSuspend", [](DssSVC::Dssvc_ptr m, DssSVC::SubSystemID s, const char*, const char*,
                            int) { return m->SubSystemSuspend(s); }},
    {"SubSystemResume", [](DssSVC::Dssvc_ptr m, DssSVC::SubSystemID s, const char*, const char*,
                           int) { return m->SubSystemResume(s); }},
    {"SubSystemOneSession",
     [](DssSVC::Dssvc_ptr m, DssSVC::SubSystemID s, const char* a1, const char* a2, int a3) {
       return m->SubSystemOneSession(s, a1, a2, a3);
     }},
};

const char* TextOrEmpty(const char* text) { return text != nullptr ? text : ""; }

}  // namespace

void SuspendResumeSubSystem(SubsystemAction action, SubSystemID subsystem, const char* arg1,
                            const char* arg2, int arg3) {
  DssSVC::Dssvc_var manager = ConnectToSlpManager();
  if (CORBA::is_nil(manager)) return;
  const ActionRow* row = &kActions[static_cast<int>(action)];
  CORBA::Long status = RunRemote(kSlpManager.ladderName, [&] {
    return row->call(manager.in(), static_cast<DssSVC::SubSystemID>(subsystem), TextOrEmpty(arg1),
                     TextOrEmpty(arg2), arg3);
  });
  logmsgv(2, "%s executed with subsys ID %d, status= %d", row->callName,
          static_cast<int>(subsystem), static_cast<int>(status));
  if (status == 0) return;
  if (subsystem != SUBSYSTEM_ID_NULL) {
    PrintMsg(stderr, "SmeSlp0150N",
             "unable to suspend, resume, or operate on subsystem ID %d, status= %d",
             static_cast<int>(subsystem), static_cast<int>(status));
  } else {
    PrintMsg(stderr, "SmeSlp0140N", "unable to suspend, resume, or operate on all subsystems");
  }
}

void Dump(SubSystemID subsystem, const std::string& options, DumpFormSelector form) {
  DssSVC::Dssvc_var manager = ConnectToSlpManager();
  if (CORBA::is_nil(manager)) return;
  DssSVC::stringdata_var lines;
  CORBA::Long status = RunRemote(kSlpManager.ladderName, [&] {
    return manager->SubSystemDump(static_cast<DssSVC::SubSystemID>(subsystem),
                                  static_cast<DssSVC::DumpFormSelector>(form), options.c_str(),
                                  lines.out());
  });
  if (status != 0) {
    PrintMsg(stderr, "SmeSlp0110N", "error %d (%s) returned by '%s' operation",
             static_cast<int>(status), getECmsg(status), "dump");
    return;
  }
  for (CORBA::ULong i = 0; i < lines->length(); ++i) {
    fputs(lines[i].in(), stdout);
    fputc('\n', stdout);
  }
}
