// Start-up of the process's ORB (SWOrb) and registration of the value-type
// factories, done for every operation before dispatch.
#ifndef REMOTE_ORB_STARTUP_H_
#define REMOTE_ORB_STARTUP_H_

// Declared, not included, so that the front end needs no ORB header.
class Orb;

// The process's ORB wrapper: null before StartOrb(), then alive until the
// process ends.
extern Orb* SWOrb;

// Creates SWOrb as Orb("", "", "", false, 1024) and initializes it without a
// timer queue; an exception goes through the exception ladder ("cyclesvc")
// and ends the run with CmdExit(-1). Then registers the disk-service and the
// framework value factories; a family that fails prints
// "Unable to register DSM OBV factory" or
// "Unable to register exception OBV factory" on standard error and the run
// goes on.
void StartOrb();

// Destroys the two factory registrars (normal end of a run).
void ReleaseValueFactories();

#endif  // REMOTE_ORB_STARTUP_H_
