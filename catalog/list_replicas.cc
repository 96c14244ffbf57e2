// repllist: the replica query read 100 images at a time; each batch is
// printed and freed before the next is fetched, so memory does not grow with
// the catalog.
#include "catalog/list_replicas.h"

#include <cstdio>

#include "catalog/catalog_util.h"
#include "catalog/image_query.h"
#include "catalog/record_printers.h"
#include "platform/emmlib/emmlib.h"
#include "util/line_writer.h"
#include "util/message.h"
#include "util/process.h"

using Orvantic::Stashwell::LineWriter;

namespace {

const unsigned kImagesPerFetch = 100;
const char kNone[] = "(none specified)";

void PrintTargetUser(LineWriter& out, const EMM_ReplicationTarget& t) {
  out.Text(" Replication Target:\n");
  out.Text("   Source Master Server: ").TextOr(t.SourceMasterServer, kNone).Char('\n');
  out.Text("   Backup ID           : ").TextOr(t.BackupID, kNone).Char('\n');
  out.Text("   Copy Number         : ").Int(t.CopyNumber).Char('\n');
  out.Text("   Target Machine      : ").TextOr(t.TargetMachine, kNone).Char('\n');
  out.Text("   Target Info         : ").TextOr(t.TargetInfo, kNone).Char('\n');
  out.Text("   Remote Master       : ").TextOr(t.RemoteMaster, kNone).Char('\n');
  out.Char('\n');
}

void PrintTargetShort(LineWriter& out, const EMM_ReplicationTarget& t) {
  out.Text("V7.6.0 RT ").Text(StrOrNull(t.SourceMasterServer)).Char(' ');
  out.Text(StrOrNull(t.BackupID)).Char(' ').Int(t.CopyNumber).Char(' ');
  out.Text(StrOrNull(t.TargetMachine)).Char(' ').Text(StrOrNull(t.TargetInfo)).Char(' ');
  out.Text(StrOrNull(t.RemoteMaster)).Char('\n');
}

void PrintReplicaImage(LineWriter& out, outputform_e form, const EMM_Image& image) {
  const bool user = form == OUTPUT_USER;
  PrintImageInForm(out, form, image);
  for (const EMM_ImageCopy* copy = image.copies; copy != nullptr; copy = copy->next) {
    user ? PrintCopyUser(out, *copy) : PrintCopyShort(out, *copy);
    for (const EMM_ReplicationTarget* t = copy->replicationTargets; t != nullptr; t = t->next) {
      user ? PrintTargetUser(out, *t) : PrintTargetShort(out, *t);
    }
  }
}

}  // namespace

void ListReplicas(outputform_e form, int sinceTime) {
  ImageQuery query;
  unsigned status =
      emmlib_QueryReplicaImageCopies(&EmmCid, 3, MasterServer.c_str(), sinceTime, query.address());
  if (status == EMMLIB_END_OF_DATA) {
    PrintMsg(stderr, "SmeSlp0840N", "No replica records found");
    return;
  }
  if (status != 0) {
    PrintMsg(stderr, "SmeSlp0210N", "Error querying image replica list, status=  %d",
             static_cast<int>(status));
    return;
  }
  LineWriter out(stdout);
  status = ForEachImageToLastBatch(
      kImagesPerFetch,
      [&](unsigned* count, EMM_Image** list) {
        return emmlib_FetchReplicaImageCopies(&EmmCid, 3, query.handle(), count, list);
      },
      [&](const EMM_Image& image) { PrintReplicaImage(out, form, image); });
  if (status != 0) {
    out.Flush();
    PrintMsg(stderr, "SmeSlp0060N", "Error fetching image replica list, status= %d",
             static_cast<int>(status));
  }
}
