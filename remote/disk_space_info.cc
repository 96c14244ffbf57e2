// diskspaceinfo: every fragment of every copy of every image of the master
// server, read as image lists 100 images at a time. Only disk fragments
// count; each is charged to the server type of its volume. The volume
// lookups remember what they found, so the disk service is asked once per
// volume however many fragments live on it.
#include "remote/disk_space_info.h"

#include <cstdint>
#include <cstdio>
#include <map>
#include <string>

#include "catalog/image_query.h"
#include "remote/disk_lookup.h"
#include "util/process.h"

namespace {

const unsigned kImagesPerFetch = 100;
const int32_t kMediaTypeDisk = 0;
const int16_t kMediaSubTypeStsDynamic = 6;
const char kUnknownType[] = "Unknown";

// The disk media id of the volume a disk fragment lives on: its own media id
// for a dynamic volume, otherwise the one the disk service finds for its
// legacy facts ("" when none).
std::string DiskMediaId(const EMM_ImageFragment& fragment) {
  if (fragment.MediaSubType == kMediaSubTypeStsDynamic) return fragment.MediaID;
  return LegacyToMediaId(fragment.MediaSubType, fragment.MediaID, fragment.MediaServer,
                         fragment.StorageServer);
}

std::string ServerType(const EMM_ImageFragment& fragment) {
  const std::string diskMediaId = DiskMediaId(fragment);
  return diskMediaId.empty() ? kUnknownType : MediaIdToStype(diskMediaId);
}

}  // namespace

int DiskSpaceInfo(const char* serverType) {
  ImageQuery query;
  if (!ImageQueryStarted(emmlib_ImageQueryExecute(&EmmCid, 3, MasterServer.c_str(), nullptr,
                                                  nullptr, nullptr, nullptr, nullptr, 0, 0, 0, 0, 0,
                                                  nullptr, query.address()))) {
    return 0;
  }

  // Byte-wise order of the names.
  std::map<std::string, int64_t> totals;
  unsigned long images = 0;
  const unsigned status =
      ForEachImage(query, kImagesPerFetch, kNoImageLimit, &images, [&](const EMM_Image& image) {
        for (const EMM_ImageCopy* copy = image.copies; copy != nullptr; copy = copy->next) {
          for (const EMM_ImageFragment* fragment = copy->fragments; fragment != nullptr;
               fragment = fragment->next) {
            if (fragment->MediaType != kMediaTypeDisk) continue;
            totals[ServerType(*fragment)] += fragment->FragmentSize;
          }
        }
      });
  query.Release();
  if (status != 0) {
    PrintImageFetchError(status);
    return 0;
  }

  if (serverType != nullptr) {
    auto total = totals.find(serverType);
    printf("Disktype: %s  TotalUsed: %lld\n", serverType,
           static_cast<long long>(total != totals.end() ? total->second : 0));
    return 0;
  }
  for (const auto& total : totals) {
    printf("Disktype: %s: %lld\n", total.first.c_str(), static_cast<long long>(total.second));
  }
  return 0;
}
