// The completion report: per client, the most recent day (within the given
// number of days back from today) on which all of the client's SLP-managed
// images of that day were complete.
#ifndef CATALOG_COMPLETION_REPORT_H_
#define CATALOG_COMPLETION_REPORT_H_

#include <string>

// Walks back `days` days from today over the images of `masterServer`,
// narrowed by the policy, client and lifecycle texts (empty: no condition)
// and, with a lifecycle, by its SLP `version` (-1: any). Prints the clients
// with their last complete day, or with `byDate` the clients grouped by that
// day; `trace` adds the statements and their results on standard output.
// Returns the run's exit status: 0, 25 (no database connection), 13 (no
// master server key), 130 (a statement failed) or the status of a failed
// fetch.
int CompletionReport(const std::string& masterServer, const std::string& policy,
                     const std::string& client, const std::string& lifecycle, long version,
                     long days, bool byDate, bool trace);

#endif  // CATALOG_COMPLETION_REPORT_H_
