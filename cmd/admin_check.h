// The local administrator check that guards the state-changing operations.
#ifndef CMD_ADMIN_CHECK_H_
#define CMD_ADMIN_CHECK_H_

// check_if_local_swu_admin_for_secure_command(programName, 0).
void check_if_local_swu_admin(const char* programName);

// Returns when the caller may run a state-changing operation: the
// certificate-use mode is REQUIRED (the services called check), the caller is
// a local administrator, or (mode AUTOMATIC, or PROHIBITED with
// `allowProhibited` set) the caller holds a valid certificate credential.
// Otherwise writes the refusal on standard error, logs it and ends the run
// through CmdExit with 140, or with the status of a failed configuration read
// or role query.
void check_if_local_swu_admin_for_secure_command(const char* programName, int allowProhibited);

#endif  // CMD_ADMIN_CHECK_H_
