// Batch reading of image-copy-fragment rows, flat or as linked records, and
// the freeing of linked image records.
#include "platform/emmlib/record_query.h"

#include <cstdlib>

#include "platform/emmlib/connection.h"
#include "platform/emmlib/emmlib.h"
#include "platform/emmlib/free_chain.h"
#include "platform/emmlib/image_rows.h"

namespace emm {
namespace {

template <typename T>
T* Allocate() {
  return static_cast<T*>(malloc(sizeof(T)));
}

}  // namespace

unsigned RecordQuery::Start(const std::string& sql, const Params& params) {
  const unsigned status = connection()->Prepare("catalog query", sql, params, &stmt_);
  if (status == EMMLIB_OK) row_.Attach(stmt_.get());
  return status;
}

unsigned RecordQuery::NextRow(bool* row) {
  if (pending_) {
    pending_ = false;
    *row = true;
    return EMMLIB_OK;
  }
  *row = false;
  if (done_) return EMMLIB_OK;
  const sqldb::Code code = stmt_->Step();
  if (code == sqldb::Code::kRow) {
    row_.Next();
    *row = true;
    return EMMLIB_OK;
  }
  done_ = true;
  return code == sqldb::Code::kDone ? EMMLIB_OK : connection()->Fail("catalog fetch", code);
}

unsigned RecordQuery::Peek(bool* any) {
  unsigned status = NextRow(any);
  pending_ = *any;
  return status;
}

unsigned RecordQuery::FetchRaw(unsigned* count, Legacy_ImageView* rows) {
  Connection* conn = connection();
  unsigned n = 0;
  while (n < *count) {
    bool any;
    unsigned status = NextRow(&any);
    if (status != EMMLIB_OK) {
      *count = n;
      return status;
    }
    if (!any) break;
    if (detail_ == Detail::kSummary) {
      ReadSummary(row_, &rows[n++]);
      continue;
    }
    // The next row of the image (and copy) just written takes those parts
    // from the row before it instead of reading their columns again.
    Legacy_ImageView& r = rows[n];
    const Legacy_ImageView* previous = n > 0 ? &rows[n - 1] : nullptr;
    const int64_t imageKey = RowImageKey(row_);
    const uint64_t copyKey = RowCopyKey(row_);
    if (previous != nullptr && imageKey == lastImageKey_) {
      CopyImage(previous->image, lengths_, &r.image);
      if (copyKey == previous->copy.CopyKey && copyKey != 0) {
        CopyCopy(previous->copy, lengths_, &r.copy);
      } else {
        ReadCopy(row_, copyKey, r.image, &lengths_, &r.copy);
      }
    } else {
      ReadImage(row_, conn, &r.image, &lengths_);
      ReadCopy(row_, copyKey, r.image, &lengths_, &r.copy);
    }
    ReadFragment(row_, r.image, lengths_, r.copy.CopyNumber, &r.fragment);
    lastImageKey_ = imageKey;
    ++n;
  }
  *count = n;
  return n == 0 && done_ ? EMMLIB_END_OF_DATA : EMMLIB_OK;
}

unsigned RecordQuery::FetchList(int depth, unsigned* count, EMM_Image** list, bool* atEnd) {
  // Lifecycle rows carry their own few columns and no fragments.
  const bool lifecycle = detail_ == Detail::kLifecycle;
  RowTextLengths lengths;
  EMM_Image* head = nullptr;
  EMM_Image* image = nullptr;
  EMM_ImageCopy* copy = nullptr;
  EMM_ImageFragment* fragment = nullptr;
  EMM_ReplicationTarget* target = nullptr;
  int64_t imageKey = 0;
  unsigned images = 0;
  unsigned status = EMMLIB_OK;
  for (;;) {
    bool any;
    status = NextRow(&any);
    if (status != EMMLIB_OK || !any) break;
    const int64_t key = RowImageKey(row_);
    if (image == nullptr || key != imageKey) {
      if (images == *count) {
        pending_ = true;
        break;
      }
      EMM_Image* next = Allocate<EMM_Image>();
      if (next == nullptr) {
        status = EMMLIB_NO_MEMORY;
        break;
      }
      if (lifecycle) {
        ReadLifecycleImage(row_, next);
      } else {
        ReadImage(row_, connection(), next, &lengths);
      }
      (image != nullptr ? image->next : head) = next;
      image = next;
      imageKey = key;
      copy = nullptr;
      ++images;
    }
    if (depth < 2) continue;
    const uint64_t copyKey =
        lifecycle ? static_cast<uint64_t>(row_.Int64(kLifecycleCopyFirstColumn)) : RowCopyKey(row_);
    if (copyKey == 0) continue;
    if (copy == nullptr || copy->CopyKey != copyKey) {
      EMM_ImageCopy* next = Allocate<EMM_ImageCopy>();
      if (next == nullptr) {
        status = EMMLIB_NO_MEMORY;
        break;
      }
      if (lifecycle) {
        ReadLifecycleCopy(row_, copyKey, next);
      } else {
        ReadCopy(row_, copyKey, *image, &lengths, next);
      }
      (copy != nullptr ? copy->next : image->copies) = next;
      copy = next;
      fragment = nullptr;
      target = nullptr;
    }
    if (depth < 3 || lifecycle || row_.IsNull(kLastGroupFirstColumn)) continue;
    if (detail_ == Detail::kFragments) {
      EMM_ImageFragment* next = Allocate<EMM_ImageFragment>();
      if (next == nullptr) {
        status = EMMLIB_NO_MEMORY;
        break;
      }
      ReadFragment(row_, *image, lengths, copy->CopyNumber, next);
      (fragment != nullptr ? fragment->next : copy->fragments) = next;
      fragment = next;
    } else {
      EMM_ReplicationTarget* next = Allocate<EMM_ReplicationTarget>();
      if (next == nullptr) {
        status = EMMLIB_NO_MEMORY;
        break;
      }
      ReadTarget(row_, *image, lengths, copy->CopyNumber, next);
      (target != nullptr ? target->next : copy->replicationTargets) = next;
      target = next;
    }
  }
  if (status != EMMLIB_OK) {
    emmlib_FreeImage_List(&head);
    images = 0;
  }
  *list = head;
  *count = images;
  *atEnd = done_ && !pending_;
  return status;
}

}  // namespace emm

void emmlib_FreeImage_List(EMM_Image** list) {
  if (list == nullptr) return;
  emm::FreeChain(*list, [](EMM_Image* image) {
    emm::FreeChain(image->copies, [](EMM_ImageCopy* copy) {
      emm::FreeChain(copy->fragments);
      emm::FreeChain(copy->replicationTargets);
    });
  });
  *list = nullptr;
}
