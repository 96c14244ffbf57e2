// Start-up of the process's ORB and registration of the value-type factories.
#ifndef REMOTE_ORB_STARTUP_H_
#define REMOTE_ORB_STARTUP_H_

// Creates SWOrb and initializes it; an exception goes through the exception
// ladder and ends the run with CmdExit(-1). Then registers the disk-service
// and framework value factories, printing one line per failed family.
void StartOrb();

// Destroys the two factory registrars (normal end of a run).
void ReleaseValueFactories();

#endif  // REMOTE_ORB_STARTUP_H_
