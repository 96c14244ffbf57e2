// The record printers. Each record's layout is a table of fields (label,
// kind, place in the record) in print order; one walker prints a table in the
// short form and one in the user form, so the two forms of a record cannot
// drift apart and adding a field is one row. Lines are assembled with
// LineWriter: one stdio write per record and no allocation on the short-form
// path that large listings take.
#include "catalog/record_printers.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include "platform/emmlib/emmlib.h"
#include "platform/rguid.h"
#include "util/format.h"
#include "util/line_writer.h"

using namespace Orvantic::Stashwell;

namespace {

const char kVersion[] = "V7.6.0";
const char kNullShort[] = "*NULL*";
const char kNullUser[] = "(none specified)";
const char kBadGuid[] = "improperly formatted GUID";
const char kRemoteMaster[] = "*Remote*Master*";

// Names of a numbered value: names[value - first] for first <= value <
// first + count; any other value prints the number and `fallback`.
struct NameTable {
  const char* const* names;
  int first;
  int count;
  const char* fallback;
};

const char* const kDataFormatNames[] = {"DF_UNDEFINED", "DF_TAR", "DF_SNAPSHOT", "DF_NDMP"};
const char* const kMediaTypeNames[] = {"DISK", "UNITREE", "RMEDIA", "NDMP",
                                       "UNIMPLEMENTED", "CKPT", "DISKSTAGE"};
const char* const kMediaSubTypeNames[] = {"DEFAULT",   "BASIC",      "NEARSTORE", "SNAPVAULT",
                                          "ARRAYDISK", "DEDUPSTORE", "STSDYNAMIC"};
const char* const kFragmentStateNames[] = {"ACTIVE", "TO_BE_DELETED", "ELIGIBLE_FOR_EXPIRATION",
                                           "RESTORABLE", "UNDEFINED"};

const NameTable kImageStates = {emmcommon_ss_image_state_str, 0, 11,
                                " (INVALID_IMAGE_LIFECYCLE_STATE)"};
const NameTable kCopyStates = {emmcommon_ss_image_copy_state_str, 0, 16,
                               " (INVALID_IMAGE_COPY_STATE)"};
const NameTable kCopyTypes = {dbss_use4_type_str, 0, 10, " (INVALID_COPY_TYPE)"};
const NameTable kRetentionTypes = {dbss_ret_type_str, 0, 6, " (INVALID_RETENTION_TYPE)"};
const NameTable kDataFormats = {kDataFormatNames, 0, 4, " (INVALID_DATA_FORMAT)"};
const NameTable kMediaTypes = {kMediaTypeNames, 0, 7, " (UNKNOWN_STU_TYPE)"};
const NameTable kMediaSubTypes = {kMediaSubTypeNames, 0, 7, " (UNKNOWN_STU_SUBTYPE)"};
const NameTable kFragmentStates = {kFragmentStateNames, 1, 5, " (INVALID_FRAG_STATE)"};

enum FieldKind : uint8_t {
  kText,           // empty: "*NULL*" / "(none specified)"
  kRawText,        // printed unchanged in the short form, also when empty
  kUInt8,
  kInt16,
  kInt32,
  kInt64,
  kTime,           // user form: the seconds and the local date
  kNamed16,        // user form: the number and its name
  kNamed32,
  kImageState,     // 32 bits: the state without the inactive bit 8, named
  kInactive,       // 32 bits: "true" when the inactive bit 8 is set
  kMpx,            // 16 bits: user form adds "(true)" for nonzero
  kGuid,           // 16 bytes in text form
  kClassId,        // user form adds the classification's name
  kResidence,      // user form: "Remote Master" for the remote-master marker
  kDestinationId,  // user form: labelled "Target ID" on a remote master
};

struct Field {
  const char* label;  // user form, with its blanks
  FieldKind kind;
  size_t offset;
  const NameTable* names;
};

#define IMAGE_FIELD(label, kind, member) {label, kind, offsetof(EMM_Image, member), nullptr}
#define COPY_FIELD(label, kind, member) {label, kind, offsetof(EMM_ImageCopy, member), nullptr}
#define COPY_NAMED(label, kind, member, names) \
  {label, kind, offsetof(EMM_ImageCopy, member), &names}
#define FRAG_FIELD(label, kind, member) \
  {label, kind, offsetof(EMM_ImageFragment, member), nullptr}
#define FRAG_NAMED(label, kind, member, names) \
  {label, kind, offsetof(EMM_ImageFragment, member), &names}
#define SNAP_FIELD(label, kind, member) \
  {label, kind, offsetof(EMM_SnapshotInfo, member), nullptr}

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
    IMAGE_FIELD(" OriginMasterServer            : ", kRawText, OriginMasterServer),
    IMAGE_FIELD(" OriginMasterServerID          : ", kGuid, OriginMasterServerID),
    IMAGE_FIELD(" Import From Replica Time      : ", kTime, ImportFromReplicaTime),
    IMAGE_FIELD(" Required Expiration Date      : ", kTime, RequiredExpirationDate),
    IMAGE_FIELD(" Created Date Time             : ", kTime, CreatedDateTime),
};

// The short copy line holds the expire LC time twice (fields 13 and 15).
const Field kCopyShortFields[] = {
    COPY_FIELD(nullptr, kText, MasterServer),
    COPY_FIELD(nullptr, kText, BackupID),
    COPY_FIELD(nullptr, kInt32, CopyNumber),
    COPY_FIELD(nullptr, kInt64, ExpireTime),
    COPY_FIELD(nullptr, kInt64, TryToKeepTime),
    COPY_FIELD(nullptr, kText, Residence),
    COPY_FIELD(nullptr, kInt32, CopyState),
    COPY_FIELD(nullptr, kInt32, JobID),
    COPY_FIELD(nullptr, kInt16, RetentionType),
    COPY_FIELD(nullptr, kInt16, MPXState),
    COPY_FIELD(nullptr, kInt32, Source),
    COPY_FIELD(nullptr, kText, DestinationID),
    COPY_FIELD(nullptr, kInt64, ExpireLCTime),
    COPY_FIELD(nullptr, kInt64, LastRetryTime),
    COPY_FIELD(nullptr, kInt64, ExpireLCTime),
    COPY_FIELD(nullptr, kInt32, RetryCount),
    COPY_FIELD(nullptr, kInt32, CopyType),
    COPY_FIELD(nullptr, kInt16, Replica),
    COPY_FIELD(nullptr, kInt16, DataFormat),
    COPY_FIELD(nullptr, kInt32, SLPIndex),
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
    case kUInt8: return Read<uint8_t>(record, f);
    case kInt16:
    case kNamed16:
    case kMpx: return Read<int16_t>(record, f);
    case kInt64:
    case kTime: return Read<int64_t>(record, f);
    case kImageState: return Read<int32_t>(record, f) & ~8;
    default: return Read<int32_t>(record, f);
  }
}

void WriteGuid(LineWriter& w, const unsigned char* guid) {
  char text[RGUID_BRACED_TEXT_SIZE];
  if (RGUIDAsString(guid, text, sizeof text, 0) != 0) {
    w.Text(kBadGuid);
  } else {
    w.Text(text);
  }
}

void WriteNamed(LineWriter& w, int64_t value, const NameTable& table) {
  w.Int(value);
  if (value >= table.first && value < table.first + table.count) {
    w.Text(" (").Text(table.names[value - table.first]).Text(") ");
  } else {
    w.Text(table.fallback);
  }
}

void WriteShortValue(LineWriter& w, const char* record, const Field& f) {
  switch (f.kind) {
    case kText:
    case kClassId:
    case kResidence:
    case kDestinationId: w.TextOr(TextAt(record, f), kNullShort); break;
    case kRawText: w.Text(TextAt(record, f)); break;
    case kInactive: w.Text((Read<int32_t>(record, f) & 8) ? "true" : "false"); break;
    case kGuid: WriteGuid(w, reinterpret_cast<const unsigned char*>(TextAt(record, f))); break;
    default: w.Int(NumberOf(record, f)); break;
  }
}

void WriteUserValue(LineWriter& w, const char* record, const Field& f) {
  switch (f.kind) {
    case kText:
    case kRawText:
    case kDestinationId: w.TextOr(TextAt(record, f), kNullUser); break;
    case kResidence: {
      const char* residence = TextAt(record, f);
      w.TextOr(strcmp(residence, kRemoteMaster) == 0 ? "Remote Master" : residence, kNullUser);
      break;
    }
    case kClassId: {
      const char* id = TextAt(record, f);
      w.TextOr(id, kNullUser).Text(ConvClassIDtoClassName(id).c_str());
      break;
    }
    case kTime: {
      int64_t t = Read<int64_t>(record, f);
      w.Int(t).Text(" (").Text(FormatTime(t, false).c_str()).Char(')');
      break;
    }
    case kNamed16:
    case kNamed32: WriteNamed(w, NumberOf(record, f), *f.names); break;
    case kImageState: WriteNamed(w, NumberOf(record, f), kImageStates); break;
    case kMpx: {
      int64_t mpx = NumberOf(record, f);
      w.Int(mpx).Text(mpx != 0 ? " (true)" : " (false)");
      break;
    }
    default: WriteShortValue(w, record, f); break;
  }
}

// "V7.6.0", the record letter between blanks, the fields separated by one
// blank, a newline.
template <size_t N>
void PrintShort(FILE* out, const char* letter, const void* record, const Field (&fields)[N]) {
  const char* base = static_cast<const char*>(record);
  LineWriter w(out);
  w.Text(kVersion).Text(letter);
  for (size_t i = 0; i < N; ++i) {
    if (i != 0) w.Char(' ');
    WriteShortValue(w, base, fields[i]);
  }
  w.Char('\n');
}

// The heading line, one labelled line per field, an empty line.
template <size_t N>
void PrintUser(FILE* out, const char* heading, const void* record, const Field (&fields)[N]) {
  const char* base = static_cast<const char*>(record);
  LineWriter w(out);
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

// Identifier and name of every data classification, read once per run.
using DataClasses = std::vector<std::pair<std::string, std::string>>;

DataClasses ReadDataClasses() {
  DataClasses classes;
  int status = 0;
  std::unique_ptr<DATA_CLASS_LIST, void (*)(DATA_CLASS_LIST*)> list(
      db_getDATA_CLASS_LIST(&status), [](DATA_CLASS_LIST* l) {
        if (l != nullptr) db_freeDATA_CLASS_LIST(l);
      });
  if (status != 0) return classes;
  for (const DATA_CLASS_LIST* c = list.get(); c != nullptr; c = c->next) {
    classes.emplace_back(c->identifier, c->name);
  }
  return classes;
}

}  // namespace

void PrintImageShort(const EMM_Image& image, FILE* out) {
  PrintShort(out, " I ", &image, kImageFields);
}

void PrintImageUser(const EMM_Image& image, FILE* out) {
  PrintUser(out, "Image:", &image, kImageFields);
}

void PrintImageBrief(const EMM_Image& image, FILE* out) {
  LineWriter w(out);
  w.TextOr(image.BackupID, kNullShort).Char('\n');
}

void PrintCopyShort(const EMM_ImageCopy& copy, FILE* out) {
  PrintShort(out, " C ", &copy, kCopyShortFields);
}

void PrintCopyUser(const EMM_ImageCopy& copy, FILE* out) {
  PrintUser(out, " Copy:", &copy, kCopyUserFields);
}

void PrintFragmentShort(const EMM_ImageFragment& fragment, FILE* out) {
  PrintShort(out, " F ", &fragment, kFragmentFields);
}

void PrintFragmentUser(const EMM_ImageFragment& fragment, FILE* out) {
  PrintUser(out, "   Fragment:", &fragment, kFragmentFields);
}

// The five texts after the copy number are each followed by two blanks.
void PrintSnapshotShort(const EMM_SnapshotInfo& snapshot, FILE* out) {
  LineWriter w(out);
  w.Text(kVersion).Text(" S ").TextOr(snapshot.BackupID, kNullShort).Char(' ');
  w.Int(snapshot.CopyNumber).Char(' ');
  for (const char* text : {snapshot.StorageServerName, snapshot.StorageServerType,
                           snapshot.DiskVolumeName, snapshot.DiskMediaID,
                           snapshot.SnapshotName}) {
    w.TextOr(text, kNullShort).Text("  ");
  }
  w.Char('\n');
}

void PrintSnapshotUser(const EMM_SnapshotInfo& snapshot, FILE* out) {
  PrintUser(out, "   Snapshot : ", &snapshot, kSnapshotFields);
}

std::string ConvClassIDtoClassName(const char* classId) {
  static const DataClasses classes = ReadDataClasses();
  for (const auto& c : classes) {
    if (c.first == classId) return " (" + c.second + ")";
  }
  return std::string();
}
