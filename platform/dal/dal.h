// Corvela::Dal, the data-access layer: everything a caller needs to reach
// the catalog database with its own SQL (connection manager and leases,
// connections and statement views, binding entries and parameter lists,
// statuses).
#ifndef PLATFORM_DAL_DAL_H_
#define PLATFORM_DAL_DAL_H_

#include "platform/dal/connection_manager.h"
#include "platform/dal/dal_status.h"
#include "platform/dal/dal_types.h"
#include "platform/dal/db_connection.h"
#include "platform/dal/odbc_view.h"
#include "platform/dal/parameter_binder.h"

#endif  // PLATFORM_DAL_DAL_H_
