// CmdExit.
#include "util/cmd_exit.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/debuglog.h"
#include "util/line_writer.h"
#include "util/process.h"

void CmdExit(int status) {
  // exit() runs no destructor of a live LineWriter: write its text out here.
  Orvantic::Stashwell::WritePendingOutput();
  std::string line = "EXITING, status= " + std::to_string(status);
  logmsg(2, line.c_str(), progname.c_str());
  exit(status);
}
