// The work-group listing of the listwg operation.
#ifndef WORKGROUP_LIST_WORK_GROUPS_H_
#define WORKGROUP_LIST_WORK_GROUPS_H_

#include "util/output_form.h"

// Prints every work group with its target copies, or only the one of `key`
// when it is not 0, in `form`. Returns 0 (also when none was found), 25 when
// the catalog cannot be reached, 130 when the query or a fetch fails.
int ListWorkGroups(outputform_e form, long key);

#endif  // WORKGROUP_LIST_WORK_GROUPS_H_
