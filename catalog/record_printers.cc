// The record printers. A short-form record is one line written field by
// field, the hot path of large listings: no allocation, no table walk. The
// user forms are tables of fields (label, kind, place in the record) in print
// order with one walker, so that adding a field is one row. Lines are
// assembled with LineWriter.
#include "catalog/record_printers.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "catalog/data_classes.h"
#include "catalog/image_query.h"
#include "catalog/slp_state.h"
#include "platform/rguid.h"
#include "util/format.h"
#include "util/line_writer.h"
#include "util/name_table.h"
#include "util/output_form.h"
#include "util/process.h"

using namespace Orvantic::Stashwell;

namespace {

const char kNullShort[] = "*NULL*";
const char kNullUser[] = "(none specified)";
const char kBadGuid[] = "improperly formatted GUID";
const char kRemoteMaster[] = "*Remote*Master*";

// The names of a numbered value; any other value prints the number and
// `fallback`.
struct NamedValues {
  NameTable names;
  const char* fallback;
};

const char* const kDataFormatNames[] = {"DF_UNDEFINED", "DF_TAR", "DF_SNAPSHOT", "DF_NDMP"};
const char* const kMediaTypeNames[] = {"DISK",          "UNITREE", "RMEDIA",   "NDMP",
                                       "UNIMPLEMENTED", "CKPT",    "DISKSTAGE"};
const char* const kMediaSubTypeNames[] = {"DEFAULT",   "BASIC",      "NEARSTORE", "SNAPVAULT",
                                          "ARRAYDISK", "DEDUPSTORE", "STSDYNAMIC"};
const char* const kFragmentStateNames[] = {"ACTIVE", "TO_BE_DELETED", "ELIGIBLE_FOR_EXPIRATION",
                                           "RESTORABLE", "UNDEFINED"};

const NamedValues kImageStates = {NameTable(emmcommon_ss_image_state_str),
                                  " (INVALID_IMAGE_LIFECYCLE_STATE)"};
const NamedValues kCopyStates = {NameTable(emmcommon_ss_image_copy_state_str),
                                 " (INVALID_IMAGE_COPY_STATE)"};
const NamedValues kCopyTypes = {NameTable(dbss_use4_type_str), " (INVALID_COPY_TYPE)"};
const NamedValues kRetentionTypes = {NameTable(dbss_ret_type_str), " (INVALID_RETENTION_TYPE)"};
const NamedValues kDataFormats = {NameTable(kDataFormatNames), " (INVALID_DATA_FORMAT)"};
const NamedValues kMediaTypes = {NameTable(kMediaTypeNames), " (UNKNOWN_STU_TYPE)"};
const NamedValues kMediaSubTypes = {NameTable(kMediaSubTypeNames), " (UNKNOWN_STU_SUBTYPE)"};
const NamedValues kFragmentStates = {NameTable(kFragmentStateNames, 1), " (INVALID_FRAG_STATE)"};

enum FieldKind : uint8_t {
  kText,  // empty: "(none specified)"
  kUInt8,
  kInt16,
  kInt32,
  kInt64,
  kTime,     // the seconds and the local date
  kNamed16,  // the number and its name
  kNamed32,
  kImageState,     // 32 bits: the state without the inactive bit 8, named
  kInactive,       // 32 bits: "true" when the inactive bit 8 is set
  kMpx,            // 16 bits: the number and "(true)" for nonzero
  kGuid,           // 16 bytes in text form
  kClassId,        // the identifier and the classification's name
  kResidence,      // "Remote Master" for the remote-master marker
  kDestinationId,  // labelled "Target ID" on a remote master
};

struct Field {
  const char* label;  // user form, with its blanks
  FieldKind kind;
  size_t offset;
  const NamedValues* names;
};

#define IMAGE_FIELD(label, kind, member) \
  { label, kind, offsetof(EMM_Image, member), nullptr }
#define COPY_FIELD(label, kind, member) \
  { label, kind, offsetof(EMM_ImageCopy, member), nullptr }
#define COPY_NAMED(label, kind, member, names) \
  { label, kind, offsetof(EMM_ImageCopy, member), &names }
#define FRAG_FIELD(label, kind, member) \
  { label, kind, offsetof(EMM_ImageFragment, member), nullptr }
#define FRAG_NAMED(label, kind, member, names) \
  { label, kind, offsetof(EMM_ImageFragment, member), &names }
#define SNAP_FIELD(label, kind, member) \
  { label, kind, offsetof(EMM_SnapshotInfo, member), nullptr }

const Field kImageFields[] = {
    IMAGE_FIELD(" Master Server                 : ", kText, MasterServer),
    IMAGE_FIELD(" Backup ID                     : ", kText, BackupID),
    IMAGE_FIELD(" Client                        : ", kText, ClientName),
    IMAGE_FIELD(" Backup Time                   : ", kTime, BackupTime),
    IMAGE_FIELD(" Policy                        : ", kText, PolicyName),
    IMAGE_FIELD(" Client Type                   : ", kInt32, ClientType),
    IMAGE_FIELD(" Schedule Type                 : ", kInt32, ScheduleType),
    IMAGE_FIELD(" Storage Lifecycle Policy      : ", kText, SLPName),
    IMAGE_FIELD(" Storage Lifecycle State       : ", kImageState, SLPState),
    IMAGE_FIELD(" Storage Lifecycle Is Inactive : ", kInactive, SLPState),
    IMAGE_FIELD(" Time In Process               : ", kTime, TimeInProcess),
    IMAGE_FIELD(" Data Classification ID        : ", kClassId, DataClassificationID),
    IMAGE_FIELD(" Version Number                : ", kInt32, SLPVersion),
    IMAGE_FIELD(" OriginMasterServer            : ", kText, OriginMasterServer),
    IMAGE_FIELD(" OriginMasterServerID          : ", kGuid, OriginMasterServerID),
    IMAGE_FIELD(" Import From Replica Time      : ", kTime, ImportFromReplicaTime),
    IMAGE_FIELD(" Required Expiration Date      : ", kTime, RequiredExpirationDate),
    IMAGE_FIELD(" Created Date Time             : ", kTime, CreatedDateTime),
};

const Field kCopyUserFields[] = {
    COPY_FIELD("   Master Server       : ", kText, MasterServer),
    COPY_FIELD("   Backup ID           : ", kText, BackupID),
    COPY_FIELD("   Copy Number         : ", kInt32, CopyNumber),
    COPY_NAMED("   Copy Type           : ", kNamed32, CopyType, kCopyTypes),
    COPY_FIELD("   Expire Time         : ", kTime, ExpireTime),
    COPY_FIELD("   Expire LC Time      : ", kTime, ExpireLCTime),
    COPY_FIELD("   Try To Keep Time    : ", kTime, TryToKeepTime),
    COPY_FIELD("   Residence           : ", kResidence, Residence),
    COPY_NAMED("   Copy State          : ", kNamed32, CopyState, kCopyStates),
    COPY_FIELD("   Job ID              : ", kInt32, JobID),
    COPY_NAMED("   Retention Type      : ", kNamed16, RetentionType, kRetentionTypes),
    COPY_FIELD("   MPX State           : ", kMpx, MPXState),
    COPY_FIELD("   RetryCount          : ", kInt32, RetryCount),
    COPY_FIELD("   Last Retry Time     : ", kTime, LastRetryTime),
    COPY_FIELD("   Source              : ", kInt32, Source),
    COPY_FIELD("   Destination ID      : ", kDestinationId, DestinationID),
    COPY_FIELD("   Replica:            : ", kInt16, Replica),
    COPY_NAMED("   DataFormat          : ", kNamed16, DataFormat, kDataFormats),
    COPY_FIELD("   SLP Index           : ", kInt32, SLPIndex),
};
const char kTargetIdLabel[] = "   Target ID           : ";

const Field kFragmentFields[] = {
    FRAG_FIELD("     Master Server     : ", kText, MasterServer),
    FRAG_FIELD("     Backup ID         : ", kText, BackupID),
    FRAG_FIELD("     Copy Number       : ", kInt32, CopyNumber),
    FRAG_FIELD("     Fragment Number   : ", kInt32, FragmentNumber),
    FRAG_FIELD("     Resume Count      : ", kInt32, ResumeCount),
    FRAG_FIELD("     Media ID          : ", kText, MediaID),
    FRAG_FIELD("     Media Server      : ", kText, MediaServer),
    FRAG_FIELD("     Storage Server    : ", kText, StorageServer),
    FRAG_NAMED("     Media Type        : ", kNamed32, MediaType, kMediaTypes),
    FRAG_NAMED("     Media Sub-Type    : ", kNamed16, MediaSubType, kMediaSubTypes),
    FRAG_NAMED("     Fragment State    : ", kNamed16, FragmentState, kFragmentStates),
    FRAG_FIELD("     Fragment Size     : ", kInt64, FragmentSize),
    FRAG_FIELD("     Delete Header     : ", kUInt8, DeleteHeader),
    FRAG_FIELD("     Fragment ID       : ", kText, FragmentID),
    FRAG_FIELD("     Snap MountHost    : ", kText, SnapMountHost),
    FRAG_FIELD("     Media Description : ", kText, MediaDescription),
};

const Field kSnapshotFields[] = {
    SNAP_FIELD("     Backup ID           : ", kText, BackupID),
    SNAP_FIELD("     Copy Number         : ", kInt32, CopyNumber),
    SNAP_FIELD("     Storage Server Name : ", kText, StorageServerName),
    SNAP_FIELD("     Storage Server Type : ", kText, StorageServerType),
    SNAP_FIELD("     DiskVolumeName      : ", kText, DiskVolumeName),
    SNAP_FIELD("     DiskMediaID         : ", kText, DiskMediaID),
    SNAP_FIELD("     Snapshot Name       : ", kText, SnapshotName),
};

#undef IMAGE_FIELD
#undef COPY_FIELD
#undef COPY_NAMED
#undef FRAG_FIELD
#undef FRAG_NAMED
#undef SNAP_FIELD

// Reads a field of type T at its place in the record.
template <typename T>
T Read(const char* record, const Field& f) {
  T value;
  memcpy(&value, record + f.offset, sizeof value);
  return value;
}

const char* TextAt(const char* record, const Field& f) { return record + f.offset; }

int64_t NumberOf(const char* record, const Field& f) {
  switch (f.kind) {
    case kUInt8:
      return Read<uint8_t>(record, f);
    case kInt16:
    case kNamed16:
    case kMpx:
      return Read<int16_t>(record, f);
    case kInt64:
    case kTime:
      return Read<int64_t>(record, f);
    case kImageState:
      return Read<int32_t>(record, f) & ~SLP_STATE_INACTIVE;
    default:
      return Read<int32_t>(record, f);
  }
}

// The braced text form of a GUID in `text`, or the text for a GUID that
// cannot be formatted.
const char* GuidText(const unsigned char* guid, char (&text)[RGUID_BRACED_TEXT_SIZE]) {
  return RGUIDAsString(guid, text, sizeof text, 0) != 0 ? kBadGuid : text;
}

void WriteNamed(LineWriter& w, int64_t value, const NamedValues& values) {
  w.Int(value);
  if (const char* name = values.names.Find(value)) {
    w.Text(" (").Text(name).Text(") ");
  } else {
    w.Text(values.fallback);
  }
}

void WriteUserValue(LineWriter& w, const char* record, const Field& f) {
  switch (f.kind) {
    case kText:
    case kDestinationId:
      w.TextOr(TextAt(record, f), kNullUser);
      break;
    case kResidence: {
      const char* residence = TextAt(record, f);
      w.TextOr(strcmp(residence, kRemoteMaster) == 0 ? "Remote Master" : residence, kNullUser);
      break;
    }
    case kClassId: {
      const char* id = TextAt(record, f);
      w.TextOr(id, kNullUser).CatalogText(ConvClassIDtoClassName(id).c_str());
      break;
    }
    case kTime: {
      int64_t t = Read<int64_t>(record, f);
      w.Int(t).Text(" (").Text(FormatTime(t, false).c_str()).Char(')');
      break;
    }
    case kNamed16:
    case kNamed32:
      WriteNamed(w, NumberOf(record, f), *f.names);
      break;
    case kImageState:
      WriteNamed(w, NumberOf(record, f), kImageStates);
      break;
    case kMpx: {
      int64_t mpx = NumberOf(record, f);
      w.Int(mpx).Text(mpx != 0 ? " (true)" : " (false)");
      break;
    }
    case kInactive:
      w.Text((Read<int32_t>(record, f) & SLP_STATE_INACTIVE) ? "true" : "false");
      break;
    case kGuid: {
      char text[RGUID_BRACED_TEXT_SIZE];
      w.Text(GuidText(reinterpret_cast<const unsigned char*>(TextAt(record, f)), text));
      break;
    }
    default:
      w.Int(NumberOf(record, f));
      break;
  }
}

// Short records are written through a span with room for the longest line
// a record can give: its texts are cut to their arrays, so the record's size
// bounds them; each number takes at most kMaxDigits bytes and a blank.
template <typename Record>
constexpr size_t kMaxShortLine = sizeof(Record) + 32 * (LineWriter::kMaxDigits + 1);

// Short-form values: a text ("*NULL*" when empty) or a number, each after the
// blank that separates it from the field before.
template <size_t N>
inline LineWriter::Span& Value(LineWriter::Span& s, const char (&text)[N]) {
  return s.Char(' ').FieldOr(text, kNullShort);
}
inline LineWriter::Span& Value(LineWriter::Span& s, int64_t number) {
  return s.Char(' ').Int(number);
}

// The heading line, one labelled line per field, an empty line.
template <size_t N>
void PrintUser(LineWriter& w, const char* heading, const void* record, const Field (&fields)[N]) {
  const char* base = static_cast<const char*>(record);
  w.Text(heading).Char('\n');
  for (const Field& f : fields) {
    const char* label = f.label;
    if (f.kind == kDestinationId &&
        strcmp(base + offsetof(EMM_ImageCopy, Residence), kRemoteMaster) == 0) {
      label = kTargetIdLabel;
    }
    w.Text(label);
    WriteUserValue(w, base, f);
    w.Char('\n');
  }
  w.Char('\n');
}

}  // namespace

void PrintImageShort(LineWriter& w, const EMM_Image& image) {
  LineWriter::Span s(w, kMaxShortLine<EMM_Image>);
  s.Literal(CmdVersion).Literal(" I ").FieldOr(image.MasterServer, kNullShort);
  Value(s, image.BackupID);
  Value(s, image.ClientName);
  Value(s, image.BackupTime);
  Value(s, image.PolicyName);
  Value(s, image.ClientType);
  Value(s, image.ScheduleType);
  Value(s, image.SLPName);
  Value(s, image.SLPState & ~SLP_STATE_INACTIVE);
  if (image.SLPState & SLP_STATE_INACTIVE) {
    s.Literal(" true");
  } else {
    s.Literal(" false");
  }
  Value(s, image.TimeInProcess);
  Value(s, image.DataClassificationID);
  Value(s, image.SLPVersion);
  s.Char(' ').Field(image.OriginMasterServer).Char(' ');  // unchanged, also when empty
  char guid[RGUID_BRACED_TEXT_SIZE];
  const char* guidText = GuidText(image.OriginMasterServerID, guid);
  s.Text(guidText, strlen(guidText));
  Value(s, image.ImportFromReplicaTime);
  Value(s, image.RequiredExpirationDate);
  Value(s, image.CreatedDateTime).Char('\n');
}

void PrintImageUser(LineWriter& w, const EMM_Image& image) {
  PrintUser(w, "Image:", &image, kImageFields);
}

void PrintImageBrief(LineWriter& w, const EMM_Image& image) {
  LineWriter::Span(w, kMaxShortLine<EMM_Image>).FieldOr(image.BackupID, kNullShort).Char('\n');
}

// The expire LC time stands twice: fields 13 and 15.
void PrintCopyShort(LineWriter& w, const EMM_ImageCopy& copy) {
  LineWriter::Span s(w, kMaxShortLine<EMM_ImageCopy>);
  s.Literal(CmdVersion).Literal(" C ").FieldOr(copy.MasterServer, kNullShort);
  Value(s, copy.BackupID);
  Value(s, copy.CopyNumber);
  Value(s, copy.ExpireTime);
  Value(s, copy.TryToKeepTime);
  Value(s, copy.Residence);
  Value(s, copy.CopyState);
  Value(s, copy.JobID);
  Value(s, copy.RetentionType);
  Value(s, copy.MPXState);
  Value(s, copy.Source);
  Value(s, copy.DestinationID);
  Value(s, copy.ExpireLCTime);
  Value(s, copy.LastRetryTime);
  Value(s, copy.ExpireLCTime);
  Value(s, copy.RetryCount);
  Value(s, copy.CopyType);
  Value(s, copy.Replica);
  Value(s, copy.DataFormat);
  Value(s, copy.SLPIndex).Char('\n');
}

void PrintCopyUser(LineWriter& w, const EMM_ImageCopy& copy) {
  PrintUser(w, " Copy:", &copy, kCopyUserFields);
}

void PrintFragmentShort(LineWriter& w, const EMM_ImageFragment& fragment) {
  LineWriter::Span s(w, kMaxShortLine<EMM_ImageFragment>);
  s.Literal(CmdVersion).Literal(" F ").FieldOr(fragment.MasterServer, kNullShort);
  Value(s, fragment.BackupID);
  Value(s, fragment.CopyNumber);
  Value(s, fragment.FragmentNumber);
  Value(s, fragment.ResumeCount);
  Value(s, fragment.MediaID);
  Value(s, fragment.MediaServer);
  Value(s, fragment.StorageServer);
  Value(s, fragment.MediaType);
  Value(s, fragment.MediaSubType);
  Value(s, fragment.FragmentState);
  Value(s, fragment.FragmentSize);
  Value(s, fragment.DeleteHeader);
  Value(s, fragment.FragmentID);
  Value(s, fragment.SnapMountHost);
  Value(s, fragment.MediaDescription).Char('\n');
}

void PrintFragmentUser(LineWriter& w, const EMM_ImageFragment& fragment) {
  PrintUser(w, "   Fragment:", &fragment, kFragmentFields);
}

// The five texts after the copy number are each followed by two blanks.
void PrintSnapshotShort(LineWriter& w, const EMM_SnapshotInfo& snapshot) {
  w.Text(CmdVersion).Text(" S ").TextOr(snapshot.BackupID, kNullShort).Char(' ');
  w.Int(snapshot.CopyNumber).Char(' ');
  for (const char* text : {snapshot.StorageServerName, snapshot.StorageServerType,
                           snapshot.DiskVolumeName, snapshot.DiskMediaID, snapshot.SnapshotName}) {
    w.TextOr(text, kNullShort).Text("  ");
  }
  w.Char('\n');
}

void PrintSnapshotUser(LineWriter& w, const EMM_SnapshotInfo& snapshot) {
  PrintUser(w, "   Snapshot : ", &snapshot, kSnapshotFields);
}

// The stream forms: one writer per record.
#define STREAM_PRINTER(name, Record)           \
  void name(const Record& record, FILE* out) { \
    LineWriter w(out);                         \
    name(w, record);                           \
  }
STREAM_PRINTER(PrintImageShort, EMM_Image)
STREAM_PRINTER(PrintImageUser, EMM_Image)
STREAM_PRINTER(PrintImageBrief, EMM_Image)
STREAM_PRINTER(PrintCopyShort, EMM_ImageCopy)
STREAM_PRINTER(PrintCopyUser, EMM_ImageCopy)
STREAM_PRINTER(PrintFragmentShort, EMM_ImageFragment)
STREAM_PRINTER(PrintFragmentUser, EMM_ImageFragment)
STREAM_PRINTER(PrintSnapshotShort, EMM_SnapshotInfo)
STREAM_PRINTER(PrintSnapshotUser, EMM_SnapshotInfo)
#undef STREAM_PRINTER

void PrintImageInForm(LineWriter& w, outputform_e form, const EMM_Image& image) {
  switch (form) {
    case OUTPUT_SHORT:
      PrintImageShort(w, image);
      break;
    case OUTPUT_USER:
      PrintImageUser(w, image);
      break;
    case OUTPUT_BRIEF:
      PrintImageBrief(w, image);
      break;
    default:
      w.Flush();
      PrintUnsupportedForm(form);
      break;
  }
}
