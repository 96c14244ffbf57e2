// dropwg: one call, DropAllWorkGroupAllocations, on the SLP manager, and the
// message for the status it returns.
#include "remote/drop_wg.h"

#include <cstdio>

#include "platform/msgcat.h"
#include "remote/exception_ladder.h"
#include "remote/services.h"
#include "util/message.h"

namespace {

const int kUnreachable = 25;

// The statuses the service gives a meaning of its own have their messages;
// each call carries its id and default text for the message catalog.
void ReportDropStatus(int status) {
  switch (status) {
    case 0:
      break;
    case 133:
      PrintMsg(stderr, "SmeSlp0770N",
               "Work groups cannot be removed.  There are still in-process SLP managed images");
      break;
    case 13:
      PrintMsg(stderr, "SmeSlp0780N", "Cannot query work group information from the database");
      break;
    case 14:
      PrintMsg(stderr, "SmeSlp0790N", "Cannot update work group information in the database");
      break;
    default:
      PrintMsg(stderr, "SmeSlp0110N", "error %d (%s) returned by '%s' operation", status,
               getECmsg(status), "dropwg");
      break;
  }
}

}  // namespace

int DropWG() {
  Orvantic::Stashwell::StorageServiceMgmt::DssSVC::Dssvc_var manager = ConnectToSlpManager();
  if (CORBA::is_nil(manager)) return kUnreachable;
  const CORBA::Long status =
      RunRemote(kSlpManager.ladderName, [&] { return manager->DropAllWorkGroupAllocations(); });
  ReportDropStatus(status);
  return 0;
}
