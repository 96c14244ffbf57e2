// Printers of one work-group listing row: the short form (a "WG" line for a
// new work group, a "TCI" line for every row), the user form (a labelled
// block per work group and per target copy) and the JSON members of the work
// group and of its target copies.
#ifndef WORKGROUP_WG_PRINTERS_H_
#define WORKGROUP_WG_PRINTERS_H_

#include <jansson.h>

#include "workgroup/wg_tci_db.h"

// Write to standard output; `newGroup` is true when the row starts a work
// group.
void PrintWgShort(const wg_tci_db& row, bool newGroup);
void PrintWgUser(const wg_tci_db& row, bool newGroup);

// Adds the work group's members to `object`.
void JsonFormatWorkGroup(const wg_tci_db& row, json_t* object);
// Appends an object of the row's target-copy members to `array`.
void JsonFormatTargetCopyInfo(const wg_tci_db& row, json_t* array);

#endif  // WORKGROUP_WG_PRINTERS_H_
