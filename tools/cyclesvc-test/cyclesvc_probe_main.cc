// cyclesvc-probe: runs remote steps of the tool the way its operations do
// (ORB start-up, service resolution, calls inside the exception ladder) and
// prints what they return, so that tests can check the remote pieces of a
// run (its output, exit status and the calls the service received) without
// an operation built on them. The master and EMM servers come from the
// installation root's configuration (STASHWELL_ROOT).
//
//   cyclesvc-probe start                      start the ORB only
//   cyclesvc-probe dump                       SubSystemDump on the SLP manager
//   cyclesvc-probe deletedone ID              DeletionDone on the expiration manager
//   cyclesvc-probe ping                       ping on the disk service manager
//   cyclesvc-probe stype MEDIAID...           MediaIdToStype of each id
//   cyclesvc-probe legacy SUBTYPE MEDIAID MEDIASERVER STORAGESERVER [...]
//                                             LegacyToMediaId of each group of four,
//                                             and MediaIdToStype of each id found
//   cyclesvc-probe runtime-error              a std::runtime_error inside the ladder
//   cyclesvc-probe roundtrip N                after one call that opens the
//                                             connection, N SubSystemSuspend calls;
//                                             prints the median microseconds of one
//                                             call
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/config.h"
#include "remote/disk_lookup.h"
#include "remote/exception_ladder.h"
#include "remote/orb_startup.h"
#include "remote/services.h"
#include "util/process.h"

namespace DssSVC = Orvantic::Stashwell::StorageServiceMgmt::DssSVC;
namespace ExpMgrSVC = Orvantic::Stashwell::StorageServiceMgmt::ExpMgrSVC;
namespace DiskService = Orvantic::Stashwell::DL::DiskService;

namespace {

int Start(int, char**) {
  printf("started\n");
  return 0;
}

int Dump(int, char**) {
  DssSVC::Dssvc_var manager = ConnectToSlpManager();
  if (CORBA::is_nil(manager)) return 25;
  DssSVC::stringdata_var lines;
  CORBA::Long status = RunRemote("cyclesvc", [&] {
    return manager->SubSystemDump(DssSVC::SUBSYSTEM_ID_NULL, DssSVC::DUMPFORM_READABLE, "",
                                  lines.out());
  });
  for (CORBA::ULong i = 0; i < lines->length(); ++i) printf("%s\n", lines[i].in());
  printf("status %d\n", static_cast<int>(status));
  return 0;
}

int DeletionDone(int count, char** args) {
  if (count != 1) return 2;
  ExpMgrSVC::ExpMgr_var manager = ConnectToExpirationManager();
  if (CORBA::is_nil(manager)) return 0;
  CORBA::Long status = RunRemote("cyclesvc", [&] { return manager->DeletionDone(atoi(args[0])); });
  printf("status %d\n", static_cast<int>(status));
  return 0;
}

int Ping(int, char**) {
  DiskService::DiskServiceMgr_var manager = ConnectToDSM();
  CORBA::Long status = RunRemote("dsm", [&] { return manager->ping(); });
  printf("status %d\n", static_cast<int>(status));
  return 0;
}

int Stype(int count, char** ids) {
  for (int i = 0; i < count; ++i) printf("%s -> %s\n", ids[i], MediaIdToStype(ids[i]).c_str());
  return 0;
}

int Legacy(int count, char** args) {
  if (count % 4 != 0) return 2;
  for (int i = 0; i < count; i += 4) {
    std::string id =
        LegacyToMediaId(static_cast<short>(atoi(args[i])), args[i + 1], args[i + 2], args[i + 3]);
    if (id.empty()) {
      printf("%s -> \n", args[i + 1]);
    } else {
      printf("%s -> %s (%s)\n", args[i + 1], id.c_str(), MediaIdToStype(id).c_str());
    }
  }
  return 0;
}

int RuntimeError(int, char**) {
  RunRemote("cyclesvc", []() -> int { throw std::runtime_error("probe failure"); });
  return 0;
}

int RoundTrip(int count, char** args) {
  if (count != 1 || atoi(args[0]) < 1) return 2;
  DssSVC::Dssvc_var manager = ConnectToSlpManager();
  if (CORBA::is_nil(manager)) return 25;
  auto call = [&] {
    RunRemote("cyclesvc", [&] { return manager->SubSystemSuspend(DssSVC::SUBSYSTEM_ID_NULL); });
  };
  call();
  std::vector<double> micros;
  for (int i = atoi(args[0]); i > 0; --i) {
    auto start = std::chrono::steady_clock::now();
    call();
    micros.push_back(
        std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start)
            .count());
  }
  std::nth_element(micros.begin(), micros.begin() + micros.size() / 2, micros.end());
  printf("%.1f\n", micros[micros.size() / 2]);
  return 0;
}

struct Step {
  const char* name;
  int (*run)(int count, char** args);  // the arguments after the step's name
};

const Step kSteps[] = {
    {"start", Start}, {"dump", Dump},     {"deletedone", DeletionDone},    {"ping", Ping},
    {"stype", Stype}, {"legacy", Legacy}, {"runtime-error", RuntimeError}, {"roundtrip", RoundTrip},
};

const Step* FindStep(const char* name) {
  for (const Step& step : kSteps) {
    if (strcmp(step.name, name) == 0) return &step;
  }
  return nullptr;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    fputs("usage: cyclesvc-probe STEP [ARGUMENT...]\n", stderr);
    return 2;
  }
  progname = "cyclesvc-probe";
  CmdName = progname;
  const StashwellConfig* config = SW_config();
  EmmServer = config->emmServer;
  if (!config->masterServers.empty()) MasterServer = config->masterServers.front();

  const Step* step = FindStep(argv[1]);
  if (step == nullptr) {
    fprintf(stderr, "cyclesvc-probe: unknown step %s\n", argv[1]);
    return 2;
  }
  StartOrb();
  int status = step->run(argc - 2, argv + 2);
  ReleaseValueFactories();
  return status;
}
