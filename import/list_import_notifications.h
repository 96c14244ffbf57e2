// The import notification listings of list_import_notify: the incoming
// notifications (what other masters told this one) and the outgoing ones
// (what this master has to tell others).
#ifndef IMPORT_LIST_IMPORT_NOTIFICATIONS_H_
#define IMPORT_LIST_IMPORT_NOTIFICATIONS_H_

#include <string>

#include "util/output_form.h"
#include "util/service_enums.h"

// Print the notification records that match every given filter: `client`
// and `hostname` when not empty (the sending master for incoming records,
// the destination for outgoing ones), `type` unless IMPORT_NOTIFICATION_ALL,
// and the creation time before or after `time` as `range` says. Records go
// to standard output in `form`; an empty result and every failure are
// reported on standard error only (there is no status).
void ListInputImportNotifications(outputform_e form, ImportNotificationType_e type,
                                  TimeRangeType range, long time, const std::string& client,
                                  const std::string& hostname);
void ListOutputImportNotifications(outputform_e form, ImportNotificationType_e type,
                                   TimeRangeType range, long time, const std::string& client,
                                   const std::string& hostname);

#endif  // IMPORT_LIST_IMPORT_NOTIFICATIONS_H_
