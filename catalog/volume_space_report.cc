// The volume space report: every fragment of every image the volume query
// returns is added to its image's data classification (or to the
// unclassified entry) as active, expired before its copy's try-to-keep time,
// or expired after it. Images are read in batches, so memory stays flat; the
// total read is capped at the catalog's one-fetch limit.
#include "catalog/volume_space_report.h"

#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <vector>

#include "catalog/data_classes.h"
#include "catalog/image_query.h"
#include "util/clock.h"
#include "util/message.h"

namespace {

const unsigned kImagesPerFetch = 1000;
const unsigned long kMaxImages = 2134765;
const size_t kClassIdCompared = 48;

enum FragmentState { kActive = 1, kEligibleForExpiration = 3 };

struct volume_map_s {
  const DATA_CLASS_LIST* dataClass;  // null: unclassified
  int64_t active;
  int64_t beforeTtk;
  int64_t afterTtk;
};

// The entry of the first classification whose identifier matches the
// image's, else the last (unclassified) one.
volume_map_s& EntryOf(std::vector<volume_map_s>& entries, const EMM_Image& image) {
  for (volume_map_s& entry : entries) {
    if (entry.dataClass != nullptr &&
        strncmp(entry.dataClass->identifier, image.DataClassificationID, kClassIdCompared) == 0) {
      return entry;
    }
  }
  return entries.back();
}

void PrintRow(const char* label, int64_t active, int64_t before, int64_t after) {
  printf("%-18s  %12" PRId64 "  %12" PRId64 "  %12" PRId64 "  %12" PRId64 "\n", label, active,
         before, after, active + before + after);
}

void PrintRule() {
  printf("%-18s  %12s  %12s  %12s  %12s\n", "----------------", "----------", "----------",
         "----------", "----------");
}

}  // namespace

void ShowVolume(outputform_e, int, const char* mediaId, const char* mediaServer,
                const char* storageServer) {
  DataClassList classes;
  int classStatus = classes.Read();
  if (classStatus != 0) {
    PrintMsg(stderr, "SmeSlp0240N", "Error retrieving data classification, status= %d",
             classStatus);
    return;
  }
  std::vector<volume_map_s> entries;
  for (const DATA_CLASS_LIST* c = classes.head(); c != nullptr; c = c->next) {
    entries.push_back({c, 0, 0, 0});
  }
  entries.push_back({nullptr, 0, 0, 0});

  ImageQuery query;
  if (!ImageQueryStarted(emmlib_ImageQueryExecute(&EmmCid, 3, MasterServer.c_str(), nullptr,
                                                  nullptr, mediaId, storageServer, mediaServer, 0,
                                                  0, 0, 0, 0, nullptr, query.address()))) {
    return;
  }
  const int64_t now = Orvantic::Stashwell::CurrentTime();
  unsigned long images = 0;
  unsigned status =
      ForEachImage(query, kImagesPerFetch, kMaxImages, &images, [&](const EMM_Image& image) {
        volume_map_s& entry = EntryOf(entries, image);
        for (const EMM_ImageCopy* copy = image.copies; copy != nullptr; copy = copy->next) {
          for (const EMM_ImageFragment* f = copy->fragments; f != nullptr; f = f->next) {
            if (f->FragmentState == kActive) {
              entry.active += f->FragmentSize;
            } else if (f->FragmentState == kEligibleForExpiration) {
              (now <= copy->TryToKeepTime ? entry.beforeTtk : entry.afterTtk) += f->FragmentSize;
            }
          }
        }
      });
  query.Release();
  if (status != 0) {
    PrintImageFetchError(status);
    return;
  }

  printf("\nSpace utilization for volume with ");
  if (mediaId != nullptr) printf("mediaID %s", mediaId);
  if (mediaServer != nullptr) printf(", MediaServer %s", mediaServer);
  if (storageServer != nullptr) printf(", StorageServer %s", storageServer);
  printf("\n");
  printf("%-18s  %12s  %12s  %12s  %12s\n", "Protection Level", "Active", "Before TTK", "After TTK",
         "Total");
  PrintRule();
  volume_map_s total = {nullptr, 0, 0, 0};
  for (const volume_map_s& entry : entries) {
    if (entry.active == 0 && entry.beforeTtk == 0 && entry.afterTtk == 0) continue;
    PrintRow(entry.dataClass != nullptr ? entry.dataClass->name : "Unclassified", entry.active,
             entry.beforeTtk, entry.afterTtk);
    total.active += entry.active;
    total.beforeTtk += entry.beforeTtk;
    total.afterTtk += entry.afterTtk;
  }
  PrintRule();
  PrintRow("Total", total.active, total.beforeTtk, total.afterTtk);
  printf("\n");
}
