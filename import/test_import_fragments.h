// add_import_frags: queues the storage-server images that a test file names
// with the import manager, as if a replication had announced them. The file
// holds KEY = VALUE lines; six keys set the context (media server, storage
// server, its type, LSU, origin master, SLP), each STS_IMAGE line queues one
// image with the context in force (format: docs/import-manager.md).
#ifndef IMPORT_TEST_IMPORT_FRAGMENTS_H_
#define IMPORT_TEST_IMPORT_FRAGMENTS_H_

#include <cstdio>
#include <functional>
#include <string>

// The context that image lines are queued with; every text starts empty and
// keeps the first value the file gives it.
struct TestImportContext {
  std::string mediaServer;
  std::string storageServer;
  std::string serverType;
  std::string lsuName;
  std::string originMasterServer;
  std::string slpName;
};

// Called for every image line with the context in force and the image name.
using TestImportImageSink =
    std::function<void(const TestImportContext& context, const char* imageName)>;

// Reads the lines of the file's `text` in pieces of at most 1,023 bytes
// until its end or the first format error, keeping the context and calling
// `onImage` for each image line. Repeated context keys and format errors are
// reported on `err`.
void ReadTestImportFragments(const std::string& text, FILE* err,
                             const TestImportImageSink& onImage);

// Queues every image of the file `fileName` and reports each call's status
// and a summary on standard error. Only a regular file of at most 64 MiB is
// read; any other gives SmeSlp0420N and no summary. Pauses after every
// 1,000th image for the configured time (TEST_IMPORT_PAUSE_MS, 2 seconds by
// default).
void TestAddImportFragments(const std::string& fileName);

#endif  // IMPORT_TEST_IMPORT_FRAGMENTS_H_
