// The snapshot merge of the image listing; see snapshot_traverser.h.
#include "catalog/snapshot_traverser.h"

#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/debuglog.h"
#include "platform/emmlib/emmlib.h"
#include "util/process.h"

SnapshotTraverser::SnapshotTraverser(int connectionId, const char* masterServer,
                                     unsigned int batchSize)
    : cid_(connectionId), masterServer_(masterServer ? masterServer : ""), batchSize_(batchSize) {}

SnapshotTraverser::~SnapshotTraverser() {
  free(returned_);
  if (batch_ != nullptr) emmlib_FreeSnapshotInfo_List(&batch_);
  if (handle_ != 0) emmlib_ReleaseImageResultHandle(&cid_, handle_);
}

unsigned SnapshotTraverser::initQuery(const char* backupId) {
  unsigned status =
      emmlib_QueryActiveSnapshotInfo(&cid_, 1, masterServer_.c_str(), 0, backupId, -1, 0, &handle_);
  if (status == 0) fetchPending_ = true;
  return status;
}

unsigned SnapshotTraverser::next(EMM_SnapshotInfo*& out, const Legacy_ImageView* row) {
  unsigned status = 0;
  out = nullptr;
  free(returned_);
  returned_ = nullptr;
  for (;;) {
    if (exhausted_) return status;
    if (fetchPending_) {
      unsigned count = batchSize_;
      status = emmlib_FetchSnapshotInfo(&cid_, 0, handle_, &count, &batch_);
      fetchPending_ = false;
      if (status == EMMLIB_END_OF_DATA) status = 0;
      if (status != 0) {
        exhausted_ = true;
        std::string text =
            "ERROR calling emmlib_FetchSnapshotInfo, , status= " + std::to_string(status);
        logmsg(16, text.c_str(), progname.c_str());
      } else if (count == 0) {
        exhausted_ = true;
      }
      continue;
    }
    if (batch_ == nullptr) {
      fetchPending_ = true;
      continue;
    }
    EMM_SnapshotInfo* head = batch_;
    switch (compareToCurrentImage(*head, row)) {
      case 1:
        batch_ = head->next;
        head->next = nullptr;
        returned_ = out = head;
        return status;
      case 0:
        batch_ = head->next;
        free(head);
        break;
      default:
        return status;
    }
  }
}

int SnapshotTraverser::compareToCurrentImage(const EMM_SnapshotInfo& snap,
                                             const Legacy_ImageView* row) {
  if (row == nullptr) return 1;
  if (snap.BackupTime != row->image.BackupTime) {
    return snap.BackupTime > row->image.BackupTime ? 2 : 0;
  }
  int byId = strcmp(snap.BackupID, row->image.BackupID);
  if (byId != 0) return byId > 0 ? 2 : 0;
  if (snap.CopyNumber != row->copy.CopyNumber)
    return snap.CopyNumber > row->copy.CopyNumber ? 2 : 0;
  return 1;
}
