// Printers of the catalog records shared by the image listing and the other
// image reports: one image, copy, fragment or snapshot per call, in the short
// form (one "V7.6.0 <letter> ..." line, empty texts as "*NULL*"), the user
// form (a heading and one labelled line per field, empty texts as
// "(none specified)", times with their local date, numbers of the catalog's
// enumerations with their names) or, for images, the brief form (the backup
// ID alone). Each printer comes in two kinds: one writes its whole record in
// one piece to a stream (standard output unless a caller names another);
// the other appends the record to a caller's LineWriter, for listings that
// print many records in a row.
#ifndef CATALOG_RECORD_PRINTERS_H_
#define CATALOG_RECORD_PRINTERS_H_

#include <cstdio>

#include "platform/emmlib/emm_records.h"
#include "util/line_writer.h"
#include "util/output_form.h"

void PrintImageShort(const EMM_Image& image, FILE* out = stdout);
void PrintImageUser(const EMM_Image& image, FILE* out = stdout);
void PrintImageBrief(const EMM_Image& image, FILE* out = stdout);
void PrintCopyShort(const EMM_ImageCopy& copy, FILE* out = stdout);
void PrintCopyUser(const EMM_ImageCopy& copy, FILE* out = stdout);
void PrintFragmentShort(const EMM_ImageFragment& fragment, FILE* out = stdout);
void PrintFragmentUser(const EMM_ImageFragment& fragment, FILE* out = stdout);
void PrintSnapshotShort(const EMM_SnapshotInfo& snapshot, FILE* out = stdout);
void PrintSnapshotUser(const EMM_SnapshotInfo& snapshot, FILE* out = stdout);

void PrintImageShort(Orvantic::Stashwell::LineWriter& w, const EMM_Image& image);
void PrintImageUser(Orvantic::Stashwell::LineWriter& w, const EMM_Image& image);
void PrintImageBrief(Orvantic::Stashwell::LineWriter& w, const EMM_Image& image);
// The image in the short, user or brief form; for any other form flushes
// the writer and prints the unrecognized-form message on standard error.
void PrintImageInForm(Orvantic::Stashwell::LineWriter& w, outputform_e form,
                      const EMM_Image& image);
void PrintCopyShort(Orvantic::Stashwell::LineWriter& w, const EMM_ImageCopy& copy);
void PrintCopyUser(Orvantic::Stashwell::LineWriter& w, const EMM_ImageCopy& copy);
void PrintFragmentShort(Orvantic::Stashwell::LineWriter& w, const EMM_ImageFragment& fragment);
void PrintFragmentUser(Orvantic::Stashwell::LineWriter& w, const EMM_ImageFragment& fragment);
void PrintSnapshotShort(Orvantic::Stashwell::LineWriter& w, const EMM_SnapshotInfo& snapshot);
void PrintSnapshotUser(Orvantic::Stashwell::LineWriter& w, const EMM_SnapshotInfo& snapshot);

#endif  // CATALOG_RECORD_PRINTERS_H_
