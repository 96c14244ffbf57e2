// The image-query kit's out-of-line parts: releasing the handle and the
// messages.
#include "catalog/image_query.h"

#include <cstdio>

#include "util/message.h"

void ImageQuery::Release() {
  if (handle_ != 0) emmlib_ReleaseImageResultHandle(&EmmCid, handle_);
  handle_ = 0;
}

const int* CatalogImageState(const int* imageState, int* storage) {
  if (imageState == nullptr) return nullptr;
  if (*imageState >= 1) {
    *storage = *imageState;
  } else if (*imageState == -1) {
    *storage = 8;
  } else if (*imageState == -2) {
    *storage = 4;
  } else {
    return nullptr;
  }
  return storage;
}

bool ImageQueryStarted(unsigned status) {
  if (status == 0) return true;
  PrintMsg(stderr, "SmeSlp0080N", "Error querying image list, status= %d",
           static_cast<int>(status));
  return false;
}

void PrintImageFetchError(unsigned status) {
  PrintMsg(stderr, "SmeSlp0090N", "Error fetching image list, status= %d",
           static_cast<int>(status));
}
