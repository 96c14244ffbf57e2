// What every image report shares around the catalog library's image query:
// an owner of the query handle, an owner of a fetched image list, the two
// batch loops (flat rows into a caller's buffer; image lists of a fixed
// size) and the messages of a failed query, a failed fetch and an output
// form a report does not print.
//
//   ImageQuery query;
//   if (!ImageQueryStarted(emmlib_ImageQueryExecute(..., query.address()))) return;
//   unsigned long images = 0;
//   unsigned status = ForEachImage(query, 100, kNoImageLimit, &images,
//                                  [&](const EMM_Image& image) { ... });
//   if (status != 0) PrintImageFetchError(status);
#ifndef CATALOG_IMAGE_QUERY_H_
#define CATALOG_IMAGE_QUERY_H_

#include <cstdint>

#include "platform/emmlib/emmlib.h"
#include "util/output_form.h"
#include "util/process.h"

// Owns a catalog query handle (0 = none) and releases it through
// emmlib_ReleaseImageResultHandle when it goes away or on Release().
class ImageQuery {
 public:
  ImageQuery() = default;
  ~ImageQuery() { Release(); }
  ImageQuery(const ImageQuery&) = delete;
  ImageQuery& operator=(const ImageQuery&) = delete;

  // Where a query call stores the new handle.
  uint64_t* address() { return &handle_; }
  uint64_t handle() const { return handle_; }
  void Release();

 private:
  uint64_t handle_ = 0;
};

// Owns the head of an image list from emmlib_ImageQueryFetch (or another
// fetch of linked images) and frees the whole list with
// emmlib_FreeImage_List.
class ImageList {
 public:
  ImageList() = default;
  ~ImageList() { Reset(); }
  ImageList(const ImageList&) = delete;
  ImageList& operator=(const ImageList&) = delete;

  // Frees the list held so far; returns where a fetch stores the next one.
  EMM_Image** address() {
    Reset();
    return &head_;
  }
  const EMM_Image* head() const { return head_; }
  void Reset() { emmlib_FreeImage_List(&head_); }

 private:
  EMM_Image* head_ = nullptr;
};

// The image-state filter of list and stlilist as the catalog knows it: a
// state of at least 1 unchanged, -1 (incomplete) as 8, -2 (inactive) as 4.
// Returns `storage` holding that value, or null for no filter.
const int* CatalogImageState(const int* imageState, int* storage);

// True for status 0; otherwise prints SmeSlp0080N "Error querying image
// list" with the status on standard error and returns false.
bool ImageQueryStarted(unsigned status);

// Prints SmeSlp0090N "Error fetching image list" with the status on
// standard error.
void PrintImageFetchError(unsigned status);

// Reads the query's flat rows into `rows` (room for `capacity`), one fetch
// at a time, and hands each batch to `batch(rows, count)`, which returns
// false to stop early. Ends at the end of data, with a batch that brings no
// rows, or on a failed fetch. Returns 0, or the status of the failed fetch
// (the caller reports it).
template <typename Batch>
unsigned ForEachRowBatch(const ImageQuery& query, Legacy_ImageView* rows, unsigned capacity,
                         Batch batch) {
  for (;;) {
    unsigned count = capacity;
    unsigned status = emmlib_ImageQueryFetchRaw(&EmmCid, 3, query.handle(), &count, rows);
    if (status != 0 && status != EMMLIB_END_OF_DATA) return status;
    if (count > capacity) count = capacity;
    if (count > 0 && !batch(rows, count)) return 0;
    if (status == EMMLIB_END_OF_DATA || count == 0) return 0;
  }
}

const unsigned long kNoImageLimit = ~0UL;

// Fetches the query's images as linked lists of `batchSize` images and hands
// every image to `visit`, in order, freeing each list after it. Ends after a
// fetch that brings fewer than `batchSize` images, or once `limit` images
// have been read. *fetched receives the number of images read. Returns 0,
// or the status of a failed fetch (the caller reports it with
// PrintImageFetchError once its own output is out).
template <typename Visit>
unsigned ForEachImage(const ImageQuery& query, unsigned batchSize, unsigned long limit,
                      unsigned long* fetched, Visit visit) {
  *fetched = 0;
  ImageList list;
  while (*fetched < limit) {
    unsigned count = batchSize;
    if (limit - *fetched < count) count = static_cast<unsigned>(limit - *fetched);
    const unsigned wanted = count;
    unsigned status = emmlib_ImageQueryFetch(&EmmCid, 3, query.handle(), &count, list.address());
    if (status != 0) return status;
    if (count == 0 || list.head() == nullptr) break;
    *fetched += count;
    for (const EMM_Image* image = list.head(); image != nullptr; image = image->next) {
      visit(*image);
    }
    if (count != wanted) break;
  }
  return 0;
}

// Fetches image lists of `batchSize` images through `fetch(&count, address)`
// for the catalog library's fetches that answer EMMLIB_END_OF_DATA with their
// last batch (replica copies, pending imports), and hands every image to
// `visit`, in order, freeing each list after it. Returns 0 after the last
// batch (or a batch that brings nothing), or the status of a failed fetch,
// which the caller reports; the images of earlier batches have been visited.
template <typename Fetch, typename Visit>
unsigned ForEachImageToLastBatch(unsigned batchSize, Fetch fetch, Visit visit) {
  ImageList list;
  for (;;) {
    unsigned count = batchSize;
    unsigned status = fetch(&count, list.address());
    if (status != 0 && status != EMMLIB_END_OF_DATA) return status;
    for (const EMM_Image* image = list.head(); image != nullptr; image = image->next) {
      visit(*image);
    }
    if (status == EMMLIB_END_OF_DATA || list.head() == nullptr) return 0;
  }
}

#endif  // CATALOG_IMAGE_QUERY_H_
