// The ORB and the two factory registrars of a run.
#include "remote/orb_startup.h"

#include <cstdio>

#include "platform/orb/orb.h"
#include "remote/exception_ladder.h"
#include "remote/value_factories.h"

Orb* SWOrb = nullptr;

namespace {

// Created by StartOrb, destroyed only on the normal end of a run: a run that
// ends through CmdExit leaves them to the operating system.
DiskServiceRegistrar* g_diskServiceRegistrar = nullptr;
FrameworkRegistrar* g_frameworkRegistrar = nullptr;

}  // namespace

void StartOrb() {
  RunRemote("cyclesvc", [] {
    if (SWOrb == nullptr) SWOrb = new Orb("", "", "", false, 1024);
    SWOrb->init();
  });

  g_diskServiceRegistrar = new DiskServiceRegistrar;
  if (g_diskServiceRegistrar->init(SWOrb->orb()) != 0) {
    fputs("Unable to register DSM OBV factory\n", stderr);
  }
  g_frameworkRegistrar = new FrameworkRegistrar;
  if (g_frameworkRegistrar->init(SWOrb->orb()) != 0) {
    fputs("Unable to register exception OBV factory\n", stderr);
  }
}

void ReleaseValueFactories() {
  delete g_frameworkRegistrar;
  g_frameworkRegistrar = nullptr;
  delete g_diskServiceRegistrar;
  g_diskServiceRegistrar = nullptr;
}
