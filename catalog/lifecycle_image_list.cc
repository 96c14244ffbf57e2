// The lifecycle image list: images read as linked lists 100 at a time, one
// line per image that has a copy at the wanted destination and one per such
// copy whose SLP work is not done. Nothing but the current batch is held.
// The query asks for lifecycle rows (detail level 2): the few image and copy
// fields printed here, no fragments.
#include "catalog/lifecycle_image_list.h"

#include <cstring>

#include "catalog/catalog_util.h"
#include "catalog/copy_state.h"
#include "catalog/image_query.h"
#include "catalog/slp_state.h"
#include "util/format.h"
#include "util/line_writer.h"
#include "util/message.h"
#include "util/name_table.h"

using Orvantic::Stashwell::dbss_use4_type_str;
using Orvantic::Stashwell::emmcommon_ss_image_copy_state_str;
using Orvantic::Stashwell::emmcommon_ss_image_state_str;
using Orvantic::Stashwell::LineWriter;
using Orvantic::Stashwell::NameTable;

namespace {

const unsigned kImagesPerFetch = 100;

// The name of `value` from `names`, or "<invalid>(<value>) " for a value
// outside the table.
void WriteName(LineWriter& out, int value, NameTable names, const char* invalid) {
  if (const char* name = names.Find(value)) {
    out.Text(name);
  } else {
    out.Text(invalid).Char('(').Int(value).Text(") ");
  }
}

void PrintImageLine(LineWriter& out, outputform_e form, const EMM_Image& image) {
  if (form == OUTPUT_SHORT) {
    out.Text("V7.6.0 I ").Text(StrOrNull(image.BackupID)).Char(' ');
    out.Text(StrOrNull(image.SLPName)).Char(' ').Int(image.SLPState).Text(" \n");
  } else {
    out.Text("Image ").Text(image.BackupID).Text(" for Lifecycle ").Text(image.SLPName);
    out.Text(" is ");
    WriteName(out, image.SLPState, emmcommon_ss_image_state_str, "INVALID_IMAGE_LIFECYCLE_STATE");
    out.Char('\n');
  }
}

void PrintCopyLine(LineWriter& out, outputform_e form, const EMM_ImageCopy& copy) {
  if (form == OUTPUT_SHORT) {
    out.Text("V7.6.0 C ").Text(StrOrNull(copy.Residence)).Char(' ').Int(copy.CopyState);
    out.Char(' ').Int(copy.CopyType).Text(" \n");
  } else {
    out.Text("  Copy to ").Text(copy.Residence).Text(" of type ");
    WriteName(out, copy.CopyType, dbss_use4_type_str, "INVALID_COPY_TYPE");
    out.Text(" is ");
    WriteName(out, copy.CopyState, emmcommon_ss_image_copy_state_str, "INVALID_IMAGE_COPY_STATE");
    out.Char('\n');
  }
}

// The filters the catalog's query does not apply. -1 (incomplete) passes
// over only the state COMPLETE itself: an inactive image is never complete.
bool Selected(const EMM_Image& image, const char* lifecycle, const long* version,
              const int* imageState) {
  if (image.SLPName[0] == '\0') return false;
  if (lifecycle != nullptr && strcmp(image.SLPName, lifecycle) != 0) return false;
  if (version != nullptr && image.SLPVersion != *version) return false;
  if (imageState == nullptr) return true;
  if (*imageState == -1) return image.SLPState != SLP_STATE_COMPLETE;
  if (*imageState == -2) return (image.SLPState & SLP_STATE_INACTIVE) != 0;
  return image.SLPState == *imageState;
}

}  // namespace

void LifeCycleImageList(outputform_e form, const char* lifecycle, const long* version,
                        const char* destination, const char* backupId, const char* client,
                        const char* mediaId, const char* storageServer, const char* mediaServer,
                        const int* imageState, const int* copyType) {
  int catalogState = 0;
  ImageQuery query;
  if (!ImageQueryStarted(emmlib_ImageQueryCopyTypeAndFormatExecute(
          &EmmCid, 2, MasterServer.c_str(), backupId, client, mediaId, storageServer, mediaServer,
          0, 0, nullptr, 0, 0, CatalogImageState(imageState, &catalogState), copyType, 0, -1,
          lifecycle, query.address()))) {
    return;
  }

  const bool prints = form == OUTPUT_SHORT || form == OUTPUT_USER;
  LineWriter out(stdout);
  unsigned long images = 0;
  unsigned status =
      ForEachImage(query, kImagesPerFetch, kNoImageLimit, &images, [&](const EMM_Image& image) {
        if (!prints || !Selected(image, lifecycle, version, imageState)) return;
        bool imagePrinted = false;
        for (const EMM_ImageCopy* copy = image.copies; copy != nullptr; copy = copy->next) {
          if (destination != nullptr && strcmp(copy->Residence, destination) != 0) continue;
          if (!imagePrinted) {
            PrintImageLine(out, form, image);
            imagePrinted = true;
          }
          if (!CopyIsComplete(copy->CopyState)) PrintCopyLine(out, form, *copy);
        }
      });
  out.Flush();
  if (status != 0) {
    PrintImageFetchError(status);
    return;
  }
  if (images == 0) {
    PrintMsg(stderr, "SmeSlp0290N", "No images or lifecycles matching criteria found.");
  }
}
