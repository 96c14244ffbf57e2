// JSON string values for the reports' JSON documents.
#ifndef PLATFORM_JSON_STRING_H_
#define PLATFORM_JSON_STRING_H_

#include <jansson.h>

#include <cstddef>

// A new JSON string (the caller owns the reference) of the first `length`
// bytes of `text`, or of all of it when `length` is 0. A null text gives
// `fallback` (or "" when that is null too). Bytes that are not valid UTF-8
// become '?', so every catalog text can be written. Null only when out of
// memory.
json_t* orv_json_string(const char* text, size_t length, const char* fallback);

#endif  // PLATFORM_JSON_STRING_H_
