// Small helpers of the catalog reports: the local start of a day and the
// short-form text of a possibly empty field.
#ifndef CATALOG_CATALOG_UTIL_H_
#define CATALOG_CATALOG_UTIL_H_

// The local-time start (00:00:00) of the day that holds `t`, in seconds
// since 1970; on a day whose midnight falls into a daylight-saving gap, the
// first second that exists on that day. -1 (with a message on standard
// error) when the local time cannot be computed.
long beginOfDay(long t);

// `text` itself, or "*NULL*" when it is empty (or null).
const char* StrOrNull(const char* text);

#endif  // CATALOG_CATALOG_UTIL_H_
