// The dispatch table: one row per operation id with the confirmation it asks
// first, the wrapper that hands the operation's values to its handler, and
// how the run's status is formed. An operation without a handler falls to
// the default row.
#ifndef CMD_DISPATCH_H_
#define CMD_DISPATCH_H_

#include <string>

#include "cmd/command_line.h"

// How the status of a row is formed.
enum DispatchStatus {
  STATUS_RESULT,     // the handler's return value
  STATUS_ZERO,       // 0 whatever the handler did; it reports its own failures
  STATUS_FROM_BODY,  // set by the operation's body itself
};

struct DispatchEntry {
  operation_e op;
  // Asked before the handler unless -nowarn was given; false ends the
  // operation with status 0 (the prompt has said so). Null: no prompt.
  bool (*confirm)(const CommandLine& line);
  // Calls the handler with the operation's values. Null: no handler yet.
  int (*run)(const CommandLine& line);
  DispatchStatus status;
};

// The row of `op`, or nullptr for an operation without one (help and
// testhook end the run while parsing) and for an id no row carries.
const DispatchEntry* FindDispatchEntry(int op);

// Runs the operation of `line` through its row and returns its status; the
// default row writes "<CmdName>: unrecognized operation <id>" to standard
// error and returns 144.
int Dispatch(const CommandLine& line);

// The three session arguments of one_session, resume and suspend: -arg1,
// else -policy, else absent; -arg2, else -schedule, else absent; -arg3 when
// not 0, else -schedtype (-1 when not given). The texts point into `line`.
struct SubsystemArguments {
  const char* first;
  const char* second;
  int third;
};
SubsystemArguments SubsystemSessionArguments(const CommandLine& line);

// A listing of import notifications: output form, notification type, time
// range, time, client, host name.
typedef void (*NotificationListing)(outputform_e form, ImportNotificationType_e type,
                                    TimeRangeType range, long time, const std::string& client,
                                    const std::string& hostname);

// list_import_notify: -input alone lists the incoming notifications,
// -output alone the outgoing ones; both or neither list incoming, then
// outgoing.
void ListImportNotifications(const CommandLine& line, NotificationListing incoming,
                             NotificationListing outgoing);

#endif  // CMD_DISPATCH_H_
