// The numbers of an image's SLP state as the catalog stores them. The state
// sits in the low bits; the value 8 is the inactive bit, so 9 reads
// NOT_STARTED|INACTIVE and 10 IN_PROCESS|INACTIVE.
#ifndef CATALOG_SLP_STATE_H_
#define CATALOG_SLP_STATE_H_

enum SlpState {
  SLP_STATE_NOT_MANAGED = 0,
  SLP_STATE_NOT_STARTED = 1,
  SLP_STATE_IN_PROCESS = 2,
  SLP_STATE_COMPLETE = 3,
  SLP_STATE_DELETED = 4,
  SLP_STATE_INACTIVE = 8,  // the inactive bit
  SLP_STATE_NOT_STARTED_INACTIVE = SLP_STATE_NOT_STARTED | SLP_STATE_INACTIVE,
  SLP_STATE_IN_PROCESS_INACTIVE = SLP_STATE_IN_PROCESS | SLP_STATE_INACTIVE,
};

#endif  // CATALOG_SLP_STATE_H_
