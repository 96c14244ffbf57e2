// Helpers of the logging channels.
#ifndef UTIL_SWDLOG_H_
#define UTIL_SWDLOG_H_

// The part of `path` after its last '/', or the whole path when it has none
// ("a/b/c" gives "c", "a/" the empty text). Points into `path`.
const char* swdlog_basename(const char* path);

#endif  // UTIL_SWDLOG_H_
