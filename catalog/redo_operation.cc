// redo: reads the image through the image query (in batches of 100, as the
// backup id could in principle name images of several batches), checks the
// copy and its source, then makes three catalog updates in order: the copy,
// its source, the image. An update that fails stops there; the ones before
// it stay made.
#include "catalog/redo_operation.h"

#include <cstdio>
#include <cstring>

#include "catalog/copy_state.h"
#include "catalog/image_query.h"
#include "catalog/slp_state.h"
#include "platform/emmlib/emmlib.h"
#include "util/message.h"
#include "util/process.h"

namespace {

const unsigned kImagesPerFetch = 100;

// Owns a copy update record of the catalog library.
class CopyUpdate {
 public:
  CopyUpdate() = default;
  ~CopyUpdate() { emmlib_FreeImageCopyExt(&record_); }
  CopyUpdate(const CopyUpdate&) = delete;
  CopyUpdate& operator=(const CopyUpdate&) = delete;

  EMM_ImageCopyExt** address() { return &record_; }
  EMM_ImageCopyExt* get() const { return record_; }

 private:
  EMM_ImageCopyExt* record_ = nullptr;
};

template <size_t N>
void CopyText(char (&field)[N], const char* text) {
  strncpy(field, text, N - 1);
  field[N - 1] = '\0';
}

// Sets the copy with SLP index `slpIndex` of the image to `state`; false
// (with the message printed) when that fails.
bool SetCopyState(const char* backupId, int slpIndex, int state) {
  CopyUpdate update;
  unsigned status = emmlib_InitImageCopyExt(update.address());
  if (status != 0) {
    PrintMsg(stderr, "SmeSlp0340N", "cannot initialize image copy record, status = %ld",
             static_cast<long>(status));
    return false;
  }
  EMM_ImageCopyExt* copy = update.get();
  copy->hasMasterServer = true;
  CopyText(copy->MasterServer, MasterServer.c_str());
  copy->hasCopyState = true;
  copy->CopyState = state;
  copy->hasBackupID = true;
  CopyText(copy->BackupID, backupId);
  copy->hasSLPIndex = true;
  copy->SLPIndex = slpIndex;
  status = emmlib_UpdateImageCopy(&EmmCid, 1, copy);
  if (status != 0) {
    PrintMsg(stderr, "SmeSlp0350N", "cannot update image copy state, status = %ld",
             static_cast<long>(status));
    return false;
  }
  return true;
}

// True when this image or one after it in the batch has a copy with SLP
// index `index`.
bool HasCopyWithIndex(const EMM_Image* image, int index) {
  for (; image != nullptr; image = image->next) {
    for (const EMM_ImageCopy* c = image->copies; c != nullptr; c = c->next) {
      if (c->SLPIndex == index) return true;
    }
  }
  return false;
}

enum class Outcome { kRedone, kStopped };

// Redoes the copy `copy` of `image`: checks, then the three updates.
Outcome Redo(const EMM_Image* image, const EMM_ImageCopy& copy, const char* backupId,
             int slpIndex) {
  if (copy.CopyType != COPY_TYPE_REPLICATE_TO_REMOTE_MASTER) {
    PrintMsg(stderr, "SmeSlp0390N",
             "The redo operation is not currently supported for image copy type %d", copy.CopyType);
    return Outcome::kStopped;
  }
  const int source = copy.SLPSourceIndex;
  if (!HasCopyWithIndex(image, source)) {
    PrintMsg(stderr, "SmeSlp0330N", "Cannot redo copy %d as its source copy %d is missing",
             slpIndex, source);
    return Outcome::kStopped;
  }
  if (!SetCopyState(backupId, slpIndex, COPY_STATE_NOT_STARTED) ||
      !SetCopyState(backupId, source, COPY_STATE_JOBCOMPLETE)) {
    return Outcome::kStopped;
  }
  const unsigned status = emmlib_UpdateImageStorageServiceState(&EmmCid, 1, MasterServer.c_str(),
                                                                backupId, SLP_STATE_IN_PROCESS);
  if (status != 0) {
    PrintMsg(stderr, "SmeSlp0360N", "cannot update image state, status = %ld",
             static_cast<long>(status));
    return Outcome::kStopped;
  }
  return Outcome::kRedone;
}

}  // namespace

void RedoOperation(const char* backupId, int slpIndex) {
  ImageQuery query;
  if (!ImageQueryStarted(emmlib_ImageQueryExecute(&EmmCid, 3, MasterServer.c_str(), backupId,
                                                  nullptr, nullptr, nullptr, nullptr, 0, 0, 0, 0, 0,
                                                  nullptr, query.address()))) {
    return;
  }
  ImageList images;
  bool redone = false;
  unsigned count;
  do {
    count = kImagesPerFetch;
    const unsigned status =
        emmlib_ImageQueryFetch(&EmmCid, 3, query.handle(), &count, images.address());
    if (status != 0) {
      PrintImageFetchError(status);
      return;
    }
    if (count == 0 || images.head() == nullptr) {
      PrintMsg(stderr, "SmeSlp0400N", "No Image found with backup id %s", backupId);
      return;
    }
    for (const EMM_Image* image = images.head(); image != nullptr; image = image->next) {
      for (const EMM_ImageCopy* copy = image->copies; copy != nullptr; copy = copy->next) {
        if (copy->SLPIndex != slpIndex) continue;
        if (Redo(image, *copy, backupId, slpIndex) == Outcome::kStopped) return;
        redone = true;
      }
    }
  } while (count == kImagesPerFetch);
  if (!redone) {
    PrintMsg(stderr, "SmeSlp0410N", "no copy with SLP index %d found for backup id %s", slpIndex,
             backupId);
  }
}
