// The test-file reader and add_import_frags. The reader knows only the file
// format; the handler hands each image to the import manager, one call per
// image, and keeps the counters and the pause.
#include "import/test_import_fragments.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>

#include "platform/config.h"
#include "platform/debuglog.h"
#include "platform/file_util.h"
#include "platform/impmgr/impmgr.h"
#include "util/message.h"
#include "util/process.h"

namespace {

// A line is taken in pieces of at most one byte less than this, each piece
// handled as a line of its own.
const size_t kLineBuffer = 1024;
// The largest test file read: some 100,000 image lines take a few MB.
const size_t kTestFileLimit = 64 << 20;
// The import manager gets a breather after every this many images.
const int kImagesPerPause = 1000;

const char kImageKey[] = "STS_IMAGE";

// The context keys in the order they are tried, with the warning for a key
// given twice.
const struct ContextKey {
  const char* name;
  std::string TestImportContext::*field;
  const char* warning;
} kContextKeys[] = {
    {"MEDIA_SERVER", &TestImportContext::mediaServer, "WARNING: multiple Media Servers specified:"},
    {"STORAGE_SERVER", &TestImportContext::storageServer,
     "WARNING: multiple Storage Servers specified:"},
    {"SERVER_TYPE", &TestImportContext::serverType,
     "WARNING: multiple Storage Servers Types specified:"},
    {"LSU_NAME", &TestImportContext::lsuName, "WARNING: multiple LSU Names specified:"},
    {"ORIGIN_MASTER_SERVER", &TestImportContext::originMasterServer,
     "WARNING: multiple Origin Master Hosts specified:"},
    {"SLP_NAME", &TestImportContext::slpName, "WARNING: multiple SLP Names specified:"},
};

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

// True when `line` starts with the key `name` (a longer word that starts
// with it counts too).
bool StartsWithKey(const char* line, const char* name) {
  return strncmp(line, name, strlen(name)) == 0;
}

void FormatError(FILE* err, const char* what, const char* line) {
  fprintf(err, "%s\nRead line: %s\nThe correct format is \"<key name> = <value>\"\n", what, line);
}

// Pauses for `ms` milliseconds, resuming after signals that interrupt it.
void Pause(int ms) {
  struct timespec left = {ms / 1000, (ms % 1000) * 1000000L};
  while (nanosleep(&left, &left) != 0 && errno == EINTR) {
  }
}

// The error number SmeSlp0420N shows for a ReadWholeFile failure.
int ReadFailureNumber(int failure) {
  if (failure == FILE_NOT_REGULAR) return EINVAL;
  if (failure == FILE_TOO_LARGE) return EFBIG;
  return failure;
}

// The image entry for one call: texts duplicated with strdup, freed (with the
// entry) once the call is done.
struct ImageEntryDeleter {
  void operator()(TestImportImage* image) const {
    free(image->storageServerName);
    free(image->serverType);
    free(image->lsuName);
    free(image->imageName);
    free(image);
  }
};
using ImageEntry = std::unique_ptr<TestImportImage, ImageEntryDeleter>;

ImageEntry NewImageEntry(const TestImportContext& context, const char* imageName) {
  auto* image = static_cast<TestImportImage*>(calloc(1, sizeof(TestImportImage)));
  if (image == nullptr) return nullptr;
  image->storageServerName = strdup(context.storageServer.c_str());
  image->serverType = strdup(context.serverType.c_str());
  image->lsuName = strdup(context.lsuName.c_str());
  image->imageName = strdup(imageName);
  return ImageEntry(image);
}

}  // namespace

void ReadTestImportFragments(const std::string& text, FILE* err,
                             const TestImportImageSink& onImage) {
  TestImportContext context;
  char line[kLineBuffer];
  size_t pos = 0;
  while (pos < text.size()) {
    // A piece ends after its newline or at the buffer's size; like a C
    // string, it ends at its first NUL byte.
    size_t n = std::min(text.size() - pos, kLineBuffer - 1);
    const void* newline = memchr(text.data() + pos, '\n', n);
    if (newline != nullptr) n = static_cast<const char*>(newline) - (text.data() + pos) + 1;
    memcpy(line, text.data() + pos, n);
    line[n] = '\0';
    pos += n;
    n = strlen(line);
    while (n > 0 && (IsBlank(line[n - 1]) || line[n - 1] == '\n' || line[n - 1] == '\r')) --n;
    line[n] = '\0';
    if (n == 0) continue;

    const char* equals = strchr(line, '=');
    if (equals == nullptr) {
      FormatError(err, "Format error in test file - missing '='", line);
      return;
    }
    const char* value = equals + 1;
    while (IsBlank(*value)) ++value;

    const ContextKey* key = nullptr;
    for (const ContextKey& k : kContextKeys) {
      if (StartsWithKey(line, k.name)) {
        key = &k;
        break;
      }
    }
    if (key != nullptr) {
      std::string& field = context.*(key->field);
      if (field.empty()) {
        field = value;
      } else {
        fprintf(err, "%s%s and %s\n", key->warning, field.c_str(), value);
      }
    } else if (StartsWithKey(line, kImageKey)) {
      onImage(context, value);
    } else {
      FormatError(err, "Format error in test file - unrecognized key name", line);
      return;
    }
  }
}

void TestAddImportFragments(const std::string& fileName) {
  const time_t start = time(nullptr);
  // Read whole and only when a regular file of bounded size, so that a
  // FIFO, a device or an endless file ends the run at once.
  std::string text;
  const int failure = ReadWholeFile(fileName, kTestFileLimit, &text);
  if (failure != 0) {
    PrintMsg(stderr, "SmeSlp0420N", "failed to open test file for import fragments, error = %d(%s)",
             ReadFailureNumber(failure), ReadFailureText(failure, kTestFileLimit).c_str());
    return;
  }

  const int pauseMs = SW_config()->testImportPauseMs;
  int found = 0;
  int accepted = 0;
  ReadTestImportFragments(
      text, stderr, [&](const TestImportContext& context, const char* imageName) {
        ImageEntry image = NewImageEntry(context, imageName);
        TestImportImage* head = image.get();
        const int status =
            image ? ImpMgrComm_AddEXTImageToImportQueue(
                        0, MasterServer.c_str(), logmsg, context.mediaServer.c_str(),
                        context.slpName.c_str(), context.originMasterServer.c_str(), &head)
                  : IMPMGR_NO_MEMORY;
        ++found;
        if (status == 0) ++accepted;
        fprintf(stderr, "Import Manager returned: %d for fragment name %s. Total images = %d\n",
                status, imageName, found);
        if (found % kImagesPerPause == 0) {
          logmsgv(2, "pausing %d ms after image %d", pauseMs, found);
          Pause(pauseMs);
        }
      });
  fprintf(stderr, "Successfully notified import manager of %d out of a total of %d images found\n",
          accepted, found);
  fprintf(stderr, "Operation took %ld seconds, total\n", static_cast<long>(time(nullptr) - start));
}
