// The subsystem operations of the SLP service: suspend, resume and run one
// session of a subsystem (or of all of them), and dump a subsystem's state.
// Each resolves the SLP manager and makes one call inside the exception
// ladder ("cyclesvc"); failures are reported here and never change the exit
// status, except an exception, which ends the run with status -1.
#ifndef REMOTE_SUBSYSTEM_CONTROL_H_
#define REMOTE_SUBSYSTEM_CONTROL_H_

#include <string>

#include "util/service_enums.h"

enum class SubsystemAction { kSuspend, kResume, kOneSession };

// Makes the action's call for `subsystem` (SUBSYSTEM_ID_NULL: all of them),
// logs "<call> executed with subsys ID <n>, status= <s>" and reports a
// non-zero status on standard error. `arg1`, `arg2` (null: empty) and `arg3`
// are the session arguments; only kOneSession sends them.
void SuspendResumeSubSystem(SubsystemAction action, SubSystemID subsystem, const char* arg1,
                            const char* arg2, int arg3);

// Asks `subsystem` for a dump in `form` with `options` and writes each
// returned line to standard output; a non-zero status prints only
// "error <s> (<status text>) returned by 'dump' operation" on standard error.
void Dump(SubSystemID subsystem, const std::string& options, DumpFormSelector form);

#endif  // REMOTE_SUBSYSTEM_CONTROL_H_
