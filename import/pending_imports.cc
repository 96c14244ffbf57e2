// pendimplist over the catalog library's pending-import query, and
// list_import_frags over the import manager's queue.
#include "import/pending_imports.h"

#include <cstdlib>
#include <string>

#include "catalog/copy_state.h"
#include "catalog/image_query.h"
#include "catalog/record_printers.h"
#include "platform/debuglog.h"
#include "platform/emmlib/emmlib.h"
#include "platform/impmgr/impmgr.h"
#include "util/line_writer.h"
#include "util/message.h"
#include "util/output_form.h"
#include "util/process.h"

using Orvantic::Stashwell::LineWriter;

namespace {

const unsigned kImagesPerFetch = 100;

// One image, then its copies, each followed by its fragments: the image in
// `form`, copies and fragments in the user form for -U and the short form
// otherwise.
void PrintPendingImage(outputform_e form, const EMM_Image& image) {
  switch (form) {
    case OUTPUT_SHORT:
      PrintImageShort(image);
      break;
    case OUTPUT_USER:
      PrintImageUser(image);
      break;
    case OUTPUT_BRIEF:
      PrintImageBrief(image);
      break;
    case OUTPUT_JSON:
    case OUTPUT_JSON_COMPACT:
      fputs("Not implemented\n", stderr);
      break;
    default:
      PrintUnsupportedForm(form);
      break;
  }
  const bool user = form == OUTPUT_USER;
  for (const EMM_ImageCopy* copy = image.copies; copy != nullptr; copy = copy->next) {
    if (user) {
      PrintCopyUser(*copy);
    } else {
      PrintCopyShort(*copy);
    }
    for (const EMM_ImageFragment* f = copy->fragments; f != nullptr; f = f->next) {
      if (user) {
        PrintFragmentUser(*f);
      } else {
        PrintFragmentShort(*f);
      }
    }
  }
}

// The labels of a fragment's block, in the order of its lines; each is
// padded to 35 characters and followed directly by the value.
enum FragmentLabel {
  kBackupId,
  kCopyNumber,
  kMediaServer,
  kLsuName,
  kStorageServerName,
  kStorageServerType,
  kMediaId,
  kDescription,
  kOriginMaster,
  kSlpName,
  kImportStatus,
  kImportComplete,
  kImportPending,
  kLabelCount
};

const struct {
  const char* id;
  const char* text;
} kFragmentLabels[kLabelCount] = {
    {"SmeImp0910N", "Backup ID:                         "},
    {"SmeImp0920N", "Copy Num:                          "},
    {"SmeImp0930N", "Media Server:                      "},
    {"SmeImp0940N", "LSU Name:                          "},
    {"SmeImp0950N", "Storage Server Name:               "},
    {"SmeImp0960N", "Storage Server Type:               "},
    {"SmeImp0970N", "Media ID:                          "},
    {"SmeImp0980N", "Fragment Description:              "},
    {"SmeImp0990N", "Origin Master Server:              "},
    {"SmeImp1000N", "Storage Lifecycle Policy:          "},
    {"SmeImp1002N", "Import Status:                     "},
    {"SmeImp1011N", "Import Complete"},
    {"SmeImp1003N", "Import Pending"},
};

bool ImportComplete(int64_t status) { return status == IMPORT_DONE || status == IMPORT_DUPLICATE; }

// Writes one fragment's block with the localized labels.
void PrintFragmentBlock(LineWriter& w, const std::string* labels, const PendingImportFragment& f) {
  w.Text("****************************************\n");
  const std::string copyNumber = std::to_string(f.copyNumber);
  const struct {
    FragmentLabel label;
    const char* value;
  } lines[] = {
      {kBackupId, f.backupId},
      {kCopyNumber, copyNumber.c_str()},
      {kMediaServer, f.mediaServer},
      {kLsuName, f.lsuName},
      {kStorageServerName, f.storageServerName},
      {kStorageServerType, f.storageServerType},
      {kMediaId, f.mediaId},
      {kDescription, f.fragmentDescription},
      {kOriginMaster, f.originMasterServer},
      {kSlpName, f.slpName},
      {kImportStatus,
       labels[ImportComplete(f.importStatus) ? kImportComplete : kImportPending].c_str()},
  };
  for (const auto& line : lines) {
    w.Text(labels[line.label].data(), labels[line.label].size());
    w.Text(line.value != nullptr ? line.value : "").Char('\n');
  }
}

void FreeFragment(PendingImportFragment* f) {
  for (char* text :
       {f->backupId, f->mediaServer, f->lsuName, f->storageServerName, f->storageServerType,
        f->mediaId, f->fragmentDescription, f->originMasterServer, f->slpName}) {
    free(text);
  }
  free(f);
}

}  // namespace

void ListPendingImportImages(outputform_e form, int sinceTime) {
  ImageQuery query;
  unsigned status =
      emmlib_QueryPendingImportImages(&EmmCid, 3, MasterServer.c_str(), sinceTime, query.address());
  if (status == EMMLIB_END_OF_DATA) {
    PrintMsg(stderr, "SmeSlp0810N", "No pending import records found");
    return;
  }
  if (status != 0) {
    PrintMsg(stderr, "SmeSlp0210N", "Error querying image replica list, status=  %d",
             static_cast<int>(status));
    return;
  }
  status = ForEachImageToLastBatch(
      kImagesPerFetch,
      [&](unsigned* count, EMM_Image** list) {
        return emmlib_FetchPendingImportImages(&EmmCid, 3, query.handle(), count, list);
      },
      [&](const EMM_Image& image) {
        if (image.copies == nullptr || image.copies->CopyState != COPY_STATE_CANCELLED) {
          PrintPendingImage(form, image);
        }
      });
  if (status != 0) {
    PrintMsg(stderr, "SmeSlp0230N", "Error fetch pending image list, status= %d",
             static_cast<int>(status));
  }
}

void ListPendingImportFragments() {
  PendingImportFragment* list = nullptr;
  if (ImpMgrComm_ListAllImportPendingFragments(0, MasterServer.c_str(), logmsg, &list) != 0) {
    PrintMsg(stderr, "SmeImp0011N", "Failed to list pending import fragments");
    return;
  }
  if (list == nullptr) {
    PrintMsg(stderr, "SmeImp0020N", "No Images Pending Import were found");
    return;
  }
  PrintMsg(stderr, "SmeImp0900N", "Pending Import Image/Fragments found:");

  std::string labels[kLabelCount];
  for (int i = 0; i < kLabelCount; ++i) {
    labels[i] = LocalizeMsg(kFragmentLabels[i].id, kFragmentLabels[i].text);
  }
  LineWriter w(stderr);
  while (list != nullptr) {
    PendingImportFragment* next = list->next;
    PrintFragmentBlock(w, labels, *list);
    FreeFragment(list);
    list = next;
  }
}
