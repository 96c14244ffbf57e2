// cyclesvc-test: a CORBA test service for the tool's remote operations. It
// serves the SLP manager and the expiration manager of daemon "cyclesvc" and
// the disk service manager of daemon "SWDSMFSM" on 127.0.0.1, on the ports
// the installation root's configuration gives those daemons, answers as a
// scenario file says and records every call. It prints "ready" on standard
// output once it serves, and stops on SIGTERM, SIGINT or SIGHUP, or after its
// lifetime. With "--objects mismatched" each object name is served by an
// object of another interface, so that narrowing the reference fails.
//
//   cyclesvc-test --root DIR --scenario FILE --calls FILE [--lifetime SECONDS]
//                 [--objects normal|mismatched]
#include <errno.h>
#include <signal.h>
#include <stdlib.h>

#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>

#include "platform/config.h"
#include "platform/orb/orb.h"
#include "remote/value_factories.h"
#include "tools/cyclesvc-test/disk_service_servant.h"
#include "tools/cyclesvc-test/exp_mgr_servant.h"
#include "tools/cyclesvc-test/scenario.h"
#include "tools/cyclesvc-test/slp_manager_servant.h"

namespace {

struct Options {
  std::string root;
  std::string scenario;
  std::string calls;
  long lifetimeSeconds = 120;
  bool mismatched = false;
};

const char kUsage[] =
    "usage: cyclesvc-test --root DIR --scenario FILE --calls FILE [--lifetime SECONDS]\n"
    "                     [--objects normal|mismatched]\n";

bool ParseOptions(int argc, char** argv, Options* options) {
  for (int i = 1; i + 1 < argc; i += 2) {
    const char* name = argv[i];
    const char* value = argv[i + 1];
    if (strcmp(name, "--root") == 0) {
      options->root = value;
    } else if (strcmp(name, "--scenario") == 0) {
      options->scenario = value;
    } else if (strcmp(name, "--calls") == 0) {
      options->calls = value;
    } else if (strcmp(name, "--lifetime") == 0) {
      char* end = nullptr;
      options->lifetimeSeconds = strtol(value, &end, 10);
      if (*end != '\0' || options->lifetimeSeconds <= 0) return false;
    } else if (strcmp(name, "--objects") == 0) {
      if (strcmp(value, "mismatched") != 0 && strcmp(value, "normal") != 0) return false;
      options->mismatched = strcmp(value, "mismatched") == 0;
    } else {
      return false;
    }
  }
  return argc % 2 == 1 && !options->root.empty() && !options->scenario.empty() &&
         !options->calls.empty();
}

enum class Kind { kSlpManager, kExpirationManager, kDiskServiceManager };

struct ServedObject {
  const char* name;
  Kind kind;
  Kind mismatchedKind;
};

const ServedObject kObjects[] = {
    {"StorageService.StorageServiceMgr", Kind::kSlpManager, Kind::kExpirationManager},
    {"StorageService.ExpirationMgr", Kind::kExpirationManager, Kind::kDiskServiceManager},
    {"DiskService.DiskServiceMgr", Kind::kDiskServiceManager, Kind::kSlpManager},
};

PortableServer::ServantBase* NewServant(Kind kind, cyclesvc_test::Scenario& scenario) {
  switch (kind) {
    case Kind::kSlpManager:
      return new cyclesvc_test::DssvcServant(scenario);
    case Kind::kExpirationManager:
      return new cyclesvc_test::ExpMgrServant(scenario);
    case Kind::kDiskServiceManager:
      break;
  }
  return new cyclesvc_test::DiskServiceMgrServant(scenario);
}

// Activates each object in the INS adapter under its name, so that
// corbaloc::<host>:<port>/<name> reaches it.
void ServeAll(Orb& orb, cyclesvc_test::Scenario& scenario, bool mismatched) {
  for (const ServedObject& object : kObjects) {
    PortableServer::ServantBase* servant =
        NewServant(mismatched ? object.mismatchedKind : object.kind, scenario);
    PortableServer::ObjectId_var id = PortableServer::string_to_ObjectId(object.name);
    orb.insPoa()->activate_object_with_id(id, servant);
    servant->_remove_ref();  // the adapter holds it now
  }
}

// Returns when one of `signals` arrives or `seconds` have passed.
void WaitForStop(const sigset_t& signals, long seconds) {
  timespec deadline;
  clock_gettime(CLOCK_MONOTONIC, &deadline);
  deadline.tv_sec += seconds;
  for (;;) {
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    long long left =
        (deadline.tv_sec - now.tv_sec) * 1000000000LL + (deadline.tv_nsec - now.tv_nsec);
    if (left <= 0) return;
    timespec wait = {static_cast<time_t>(left / 1000000000LL),
                     static_cast<long>(left % 1000000000LL)};
    if (sigtimedwait(&signals, nullptr, &wait) >= 0) return;
    if (errno != EINTR) return;
  }
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  if (!ParseOptions(argc, argv, &options)) {
    fputs(kUsage, stderr);
    return 2;
  }
  setenv("STASHWELL_ROOT", options.root.c_str(), 1);
  int cyclesvcPort = SW_daemon_port("cyclesvc");
  int dsmPort = SW_daemon_port("SWDSMFSM");
  if (cyclesvcPort == 0 || dsmPort == 0) {
    fprintf(stderr,
            "cyclesvc-test: %s/etc/stashwell.conf gives no DAEMON_PORT.cyclesvc or "
            "DAEMON_PORT.SWDSMFSM\n",
            options.root.c_str());
    return 2;
  }

  // The ORB's threads inherit this mask, so the signals wait for sigtimedwait.
  sigset_t stopSignals;
  sigemptyset(&stopSignals);
  sigaddset(&stopSignals, SIGTERM);
  sigaddset(&stopSignals, SIGINT);
  sigaddset(&stopSignals, SIGHUP);
  pthread_sigmask(SIG_BLOCK, &stopSignals, nullptr);

  cyclesvc_test::Scenario scenario(options.scenario, options.calls);
  std::string endPoints = "giop:tcp:127.0.0.1:" + std::to_string(cyclesvcPort) +
                          " giop:tcp:127.0.0.1:" + std::to_string(dsmPort);
  Orb orb("", endPoints, "", true, 0);
  try {
    orb.init();
    // Value-typed arguments of the disk service are read with these.
    DiskServiceRegistrar diskServiceFactories;
    FrameworkRegistrar frameworkFactories;
    if (diskServiceFactories.init(orb.orb()) != 0 || frameworkFactories.init(orb.orb()) != 0) {
      fputs("cyclesvc-test: cannot register the value factories\n", stderr);
      return 1;
    }
    ServeAll(orb, scenario, options.mismatched);
    printf("ready\n");
    fflush(stdout);

    WaitForStop(stopSignals, options.lifetimeSeconds);
    orb.orb()->shutdown(true);
  } catch (const CORBA::Exception& e) {
    fprintf(stderr, "cyclesvc-test: %s\n", e._name());
    return 1;
  }
  return 0;
}
