// cyclectl's entry point: the start-up order of a run. It fills the tables,
// reads the configuration and the master configuration, learns the locale,
// opens the debug log and logs the start, checks the master server name,
// then hands the parsed command line to run_builtin and logs the exit status.
#include <sys/stat.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <string>

#include "cmd/parse.h"
#include "cmd/run_builtin.h"
#include "platform/config.h"
#include "platform/debuglog.h"
#include "platform/locale.h"
#include "remote/orb_startup.h"
#include "util/cmd_exit.h"
#include "util/message.h"
#include "util/process.h"
#include "util/swdlog.h"

namespace {

// The name a run goes by when the last component of argv[0] is empty
// (argv[0] "" or "dir/"): messages and log lines need one.
const char kOwnName[] = "cyclectl";

// Reads the configuration (steps 3 and 4); `name` names the program in the
// messages.
void ReadConfiguration(const char* name) {
  std::unique_ptr<QbConfReader> reader(new QbConfReader());
  if (!reader->hasData()) {
    PrintMsg(stderr, "SmeSlp0430N", "%s: unable to read Stashwell configuration", name);
    CmdExit(1);
  }
  if (reader->getEmmServer().empty()) {
    PrintMsg(stderr, "SmeSlp0440N",
             "%s: invalid Stashwell configuration: EMM Server is not defined", name);
    CmdExit(1);
  }
  EmmServer = reader->getEmmServer();
  EmmPort = reader->getEmmPort();
  EmmCatalog = reader->getEmmCatalog();
  if (SW_read_master_config() != 0) {
    PrintMsg(stderr, "SmeSlp0430N", "%s: unable to read Stashwell configuration", name);
    CmdExit(1);
  }
  const SW_MASTER_CONFIG* master = get_master_config_ptr();
  ImportConfThreshold = computeConfigUnitsBaseValue(master->importConfThresholdValue,
                                                    master->importConfThresholdUnits);
}

// Step 8: the debug log, when its directory exists. Only an administrator is
// stopped by a log that cannot be opened.
void OpenDebugLog() {
  std::string dir = std::string(swdlog_root()) + "/" + "admin";
  struct stat st;
  if (stat(dir.c_str(), &st) != 0) return;
  int err = 0;
  if (open_debug_log(swdlog_root(), "admin", progname.c_str(), 0666, &err) < 0 &&
      is_user_admin(2)) {
    PrintMsg(stderr, "SmeCom0020N", "%s: terminating - cannot open debug file: %s (%d)\n",
             progname.c_str(), strerror(err), err);
    CmdExit(12);
  }
}

// An argument longer than this is logged cut, with its length, so that a
// huge argument does not add its whole size to the log on every run.
const size_t kLoggedArgumentBytes = 4096;

void LogInitiating(int argc, char** argv) {
  std::string banner = std::string("INITIATING: ") + "Stashwell 9.1.0.1" + " created: " + "0";
  logmsg(2, banner.c_str(), progname.c_str());
  std::string args;
  for (int i = 0; i < argc && argv[i]; ++i) {
    const size_t length = strlen(argv[i]);
    if (length > kLoggedArgumentBytes) {
      args.append(argv[i], kLoggedArgumentBytes);
      args += "...[" + std::to_string(length) + " bytes]";
    } else {
      args += argv[i];
    }
    args += ' ';
  }
  logmsg(2, args.c_str(), progname.c_str());
}

}  // namespace

int main(int argc, char** argv) {
  InitCommandTables();
  umask(022);

  const char* base = swdlog_basename(argc > 0 ? argv[0] : nullptr);
  const char* name = *base != '\0' ? base : kOwnName;
  ReadConfiguration(name);

  zkgetlocaleEx(lc_messages, sizeof lc_messages, lc_ctype, sizeof lc_ctype, lc_time, sizeof lc_time,
                lc_collate, sizeof lc_collate, lc_numeric, sizeof lc_numeric, lc_status);

  // Keeping the name is the only thing that can fail here.
  try {
    progname = name;
  } catch (const std::bad_alloc&) {
    PrintMsg(stderr, "SmeCom0010N", "cannot malloc progname\n");
    CmdExit(36);
  }

  int r = SW_read_master_config();
  if (r != 0) {
    PrintMsg(stderr, "SmeSlp0190N", "%s: error %d reading master config", progname.c_str(), r);
    CmdExit(1);
  }

  OpenDebugLog();
  CmdName = progname;
  LogInitiating(argc, argv);

  const SW_MASTER_CONFIG* master = get_master_config_ptr();
  if (!master->hasMasterList) {
    PrintMsg(stderr, "SmeSlp0450N", "%s: no master server record found", CmdName.c_str());
    CmdExit(1);
  }
  if (master->masterServers.empty() || master->masterServers[0].empty()) {
    PrintMsg(stderr, "SmeSlp0460N", "%s: no master server name found", CmdName.c_str());
    CmdExit(1);
  }
  MasterServer = master->masterServers[0];

  CommandLine cmd = ParseCommandLine(argc, argv);
  int status = run_builtin(cmd);

  std::string exiting = "EXITING, status = " + std::to_string(status);
  logmsg(2, exiting.c_str(), progname.c_str());
  ReleaseValueFactories();
  return status;
}
