// The statement of the image query: images with their copies and fragments
// in listing order, narrowed by the query's filters.
#ifndef PLATFORM_EMMLIB_IMAGE_QUERY_H_
#define PLATFORM_EMMLIB_IMAGE_QUERY_H_

#include <cstdint>
#include <string>

#include "platform/emmlib/statement.h"

namespace emm {

// Filters of one image query; null texts and unset flags select all.
struct ImageFilter {
  int level = 3;
  const char* master = nullptr;
  const char* backupId = nullptr;
  const char* client = nullptr;
  const char* mediaId = nullptr;
  const char* storageServer = nullptr;
  const char* mediaServer = nullptr;
  const char* slpName = nullptr;
  int64_t earliest = 0;  // backup time at or after; 0 = none
  int64_t latest = 0;    // backup time at or before; 0 = none
  int fragState = 0;     // 0 = any
  int copyNumber = 0;    // 0 = any
  int jobId = 0;         // 0 = any
  int slpIndex = 0;      // 0 = any
  int dataFormat = -1;   // -1 = any
  const int* imageState = nullptr;
  const int* copyType = nullptr;
};

// The statement text for `filter`, its parameters appended to *params. The
// master server is given by its key (-1, an unknown master, selects nothing).
std::string BuildImageQuerySql(const ImageFilter& filter, int64_t masterKey, Params* params);

}  // namespace emm

#endif  // PLATFORM_EMMLIB_IMAGE_QUERY_H_
