// Error entries of the remote pieces in the unified application-message log
// of the program (<root>/logs/<program name>): failed value-factory
// registrations and the exceptions the disk-service helpers raise.
#ifndef REMOTE_APP_ERROR_LOG_H_
#define REMOTE_APP_ERROR_LOG_H_

#include <initializer_list>

// Writes one application message of severity 3 with `messageNumber` as its
// message id and `format` ("%s" for each argument) with `args`. A log that
// cannot be written is ignored: the entry only helps diagnosis.
void LogAppError(const char* messageNumber, const char* format,
                 std::initializer_list<const char*> args);

#endif  // REMOTE_APP_ERROR_LOG_H_
