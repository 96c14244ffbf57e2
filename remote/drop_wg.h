// The remote side of the dropwg operation (the confirmation runs before it).
#ifndef REMOTE_DROP_WG_H_
#define REMOTE_DROP_WG_H_

// Asks the SLP manager to drop every work-group allocation and reports a
// refusal or failure on standard error. Returns 0 once the call was made,
// whatever it answered; 25 when the SLP manager cannot be reached or
// narrowed. Remote exceptions end the run through the exception ladder.
int DropWG();

#endif  // REMOTE_DROP_WG_H_
