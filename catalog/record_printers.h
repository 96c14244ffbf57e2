// Printers of the catalog records shared by the image listing and the other
// image reports: one image, copy, fragment or snapshot per call, in the short
// form (one "V7.6.0 <letter> ..." line, empty texts as "*NULL*"), the user
// form (a heading and one labelled line per field, empty texts as
// "(none specified)", times with their local date, numbers of the catalog's
// enumerations with their names) or, for images, the brief form (the backup
// ID alone). Each call writes its whole record in one piece to `out`
// (standard output unless a caller names another stream).
#ifndef CATALOG_RECORD_PRINTERS_H_
#define CATALOG_RECORD_PRINTERS_H_

#include <cstdio>
#include <string>

#include "platform/emmlib/emm_records.h"

void PrintImageShort(const EMM_Image& image, FILE* out = stdout);
void PrintImageUser(const EMM_Image& image, FILE* out = stdout);
void PrintImageBrief(const EMM_Image& image, FILE* out = stdout);

void PrintCopyShort(const EMM_ImageCopy& copy, FILE* out = stdout);
void PrintCopyUser(const EMM_ImageCopy& copy, FILE* out = stdout);

void PrintFragmentShort(const EMM_ImageFragment& fragment, FILE* out = stdout);
void PrintFragmentUser(const EMM_ImageFragment& fragment, FILE* out = stdout);

void PrintSnapshotShort(const EMM_SnapshotInfo& snapshot, FILE* out = stdout);
void PrintSnapshotUser(const EMM_SnapshotInfo& snapshot, FILE* out = stdout);

// " (<name>)" of the data classification whose identifier is `classId`, or
// the empty text when there is none or the classifications cannot be read.
// The classification list is read from the catalog once per run.
std::string ConvClassIDtoClassName(const char* classId);

#endif  // CATALOG_RECORD_PRINTERS_H_
