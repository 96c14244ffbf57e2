// The one way cyclectl prints a message that carries an id (SmeSlp0470N and
// the like): the text is looked up in the message catalog for the run's
// message locale, falling back to the English default given at the call site,
// formatted with the arguments into the process-wide buffer localizedMsg and
// written to the stream the caller names.
#ifndef UTIL_MESSAGE_H_
#define UTIL_MESSAGE_H_

#include <cstdio>

// Receives every localized message before it is printed (8192 bytes).
extern char localizedMsg[8192];
// Scratch buffer for composed message arguments such as option lists.
extern char msgBuffer[8192];

// Formats message `id` for lc_messages with the arguments into localizedMsg
// and returns localizedMsg. Never fails: an unknown id or a missing catalog
// gives the default text.
const char* LocalizeMsg(const char* id, const char* defaultFormat, ...)
    __attribute__((format(printf, 2, 3)));

// LocalizeMsg, then writes localizedMsg to `stream` after the output still
// pending (WritePendingOutput), followed by a newline unless defaultFormat
// itself ends with one. Returns localizedMsg, so that a
// caller that must also log the text can do so.
const char* PrintMsg(FILE* stream, const char* id, const char* defaultFormat, ...)
    __attribute__((format(printf, 3, 4)));

#endif  // UTIL_MESSAGE_H_
