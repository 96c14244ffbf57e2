// The work-group printers walk field tables: each field is listed once, in
// user-form order, with its user label, its JSON member name and where it
// lies in the row. The short form keeps the same order except that the
// fields JSON leaves out (the block size) close the line.
#include "workgroup/wg_printers.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "platform/json_string.h"
#include "util/format.h"
#include "util/line_writer.h"

using Orvantic::Stashwell::FormatTime;
using Orvantic::Stashwell::LineWriter;

namespace {

const char kVersion[] = "V7.6.0";
const char kNullShort[] = "*NULL*";
const char kNullUser[] = "(none specified)";

enum Kind : uint8_t { kU16, kI16, kU32, kI32, kI64, kText, kGroupId, kCreated };

struct Field {
  const char* label;  // user form, with its blanks
  const char* json;   // member name; null: not in JSON
  Kind kind;
  size_t offset;  // in wg_tci_db
};

#define WG_NUM(label, json, kind, field) \
  { label, json, kind, offsetof(wg_tci_db, wg_values.field) }
#define WG_TEXT(label, json, field) \
  { label, json, kText, offsetof(wg_tci_db, wg_chars.field) }
#define TCI_NUM(label, json, kind, field) \
  { label, json, kind, offsetof(wg_tci_db, tci_values.field) }
#define TCI_TEXT(label, json, field) \
  { label, json, kText, offsetof(wg_tci_db, tci_chars.field) }

const Field kGroupFields[] = {
    WG_NUM(" WorkGroup Key                 : ", "WorkGroupKey", kU32, WorkGroupKey),
    WG_NUM(" WorkGroup ID                  : ", "WorkGroupID", kGroupId, WorkGroupID),
    WG_TEXT(" Policy                        : ", "Policy", PolicyName),
    WG_TEXT(" Schedule                      : ", "Schedule", SchedName),
    WG_NUM(" Schedule Type                 : ", "ScheduleType", kI32, SchedType),
    WG_NUM(" Has Single SLP?               : ", "HasSingleSLP", kU16, HasSingleSLPImages),
    WG_TEXT(" Storage Lifecycle Policy      : ", "SLPName", SLPName),
    WG_NUM(" Version Number                : ", "VersionNumber", kI32, SLPVersionNumber),
    WG_NUM(" Primary Copy Number           : ", "PrimaryCopyNumber", kI32, PrimaryCopyNumber),
    WG_NUM(" is Frozen?                    : ", "is Frozen", kU16, IsFrozen),
    WG_NUM(" Source Copy Number            : ", "SourceCopyNumber", kI32, SrcCopyNumber),
    WG_TEXT(" Source Media ID               : ", "SourceMediaID", SourceMediaId),
    WG_NUM(" Source Media Type             : ", "SourceMediaType", kI32, SrcMediaType),
    WG_NUM(" Source Media SubType          : ", "SourceMediaSubType", kI16, SrcMediaSubType),
    WG_TEXT(" Alternate Read Host           : ", "AlternateReadHost", SrcAltReadHost),
    WG_TEXT(" Server Type                   : ", "ServerType", SrcServerType),
    WG_TEXT(" Source Storage Server         : ", "SourceStorageServer", SrcStorageServer),
    WG_TEXT(" Parent ID                     : ", "ParentID", SrcParentId),
    WG_NUM(" Block Size                    : ", nullptr, kI32, BlockSize),
    WG_NUM(" Target Preserve MPX           : ", "TargetPreserveMPX", kI32, IsTargetPreserveMPX),
    WG_NUM(" Target Mirror                 : ", "TargetMirror", kU16, IsTargetMirror),
    WG_NUM(" Target Priority               : ", "TargetPriority", kI32, TargetPriority),
    WG_NUM(" Target Number Copies          : ", "TargetNumberCopies", kI32, TargetNumberCopies),
    WG_TEXT(" Window Close Option           : ", "WindowCloseOption", WindowCloseOptions),
    WG_TEXT(" Target Master Server          : ", "TargetMasterServer", TargetMasterServer),
    WG_TEXT(" Target Storage Server         : ", "TargetStorageServer", TargetStorageServer),
    WG_TEXT(" Target Volume                 : ", "TargetVolume", TargetVolume),
    WG_TEXT(" Target Import SLP             : ", "TargetImportSLP", TargetImportSLP),
    WG_NUM(" Created Date/Time             : ", "CreatedDateTime", kCreated, CreatedDateTime),
};

const Field kTargetCopyFields[] = {
    TCI_NUM("   Copy Number                 : ", "CopyNumber", kI32, CopyNumber),
    TCI_NUM("   SLP Index                   : ", "SLPIndex", kI32, SLPIndex),
    TCI_NUM("   Flags                       : ", "Flags", kU32, Flags),
    TCI_NUM("   Retention Level             : ", "RetentionLevel", kI32, RetentionLevel),
    TCI_TEXT("   Residence                   : ", "Residence", Residence),
    TCI_TEXT("   Volume Pool                 : ", "VolumePool", VolumePool),
    TCI_TEXT("   Server Group                : ", "ServerGroup", ServerGroup),
    TCI_TEXT("   Destination Tag             : ", "DestinationTag", DestTag),
};

const char* At(const wg_tci_db& row, const Field& f) {
  return reinterpret_cast<const char*>(&row) + f.offset;
}

const char* Text(const wg_tci_db& row, const Field& f) { return At(row, f); }

// The field's number; fields are read through memcpy so that no alignment
// is assumed of the offsets.
int64_t Number(const wg_tci_db& row, const Field& f) {
  const char* p = At(row, f);
  switch (f.kind) {
    case kU16: {
      uint16_t v;
      memcpy(&v, p, sizeof v);
      return v;
    }
    case kI16: {
      int16_t v;
      memcpy(&v, p, sizeof v);
      return v;
    }
    case kU32: {
      uint32_t v;
      memcpy(&v, p, sizeof v);
      return v;
    }
    case kI32:
    case kGroupId: {
      int32_t v;
      memcpy(&v, p, sizeof v);
      return v;
    }
    default: {
      int64_t v;
      memcpy(&v, p, sizeof v);
      return v;
    }
  }
}

void Short(LineWriter& out, const wg_tci_db& row, const Field& f) {
  out.Char(' ');
  if (f.kind == kText) {
    out.TextOr(Text(row, f), kNullShort);
  } else {
    out.Int(Number(row, f));
  }
}

void User(LineWriter& out, const wg_tci_db& row, const Field& f) {
  out.Text(f.label);
  if (f.kind == kText) {
    out.TextOr(Text(row, f), kNullUser);
  } else {
    const int64_t value = Number(row, f);
    out.Int(value);
    if (f.kind == kGroupId) {
      out.Char('(').Text(WorkGroupIDName(static_cast<int32_t>(value))).Char(')');
    } else if (f.kind == kCreated) {
      out.Char('(').Text(FormatTime(value, false).c_str()).Char(')');
    }
  }
  out.Char('\n');
}

void AddMember(json_t* object, const char* name, json_t* value) {
  json_object_set_new(object, name, value);
}

void Json(json_t* object, const wg_tci_db& row, const Field& f) {
  if (f.kind == kText) {
    AddMember(object, f.json, orv_json_string(Text(row, f), 0, ""));
    return;
  }
  const int64_t value = Number(row, f);
  AddMember(object, f.json, json_integer(value));
  if (f.kind == kGroupId) {
    AddMember(object, "WorkGroupIDName", json_string(WorkGroupIDName(static_cast<int32_t>(value))));
  }
}

}  // namespace

void PrintWgShort(const wg_tci_db& row, bool newGroup) {
  LineWriter out(stdout);
  if (newGroup) {
    out.Text(kVersion).Text(" WG");
    for (const Field& f : kGroupFields) {
      if (f.json != nullptr) Short(out, row, f);
    }
    for (const Field& f : kGroupFields) {
      if (f.json == nullptr) Short(out, row, f);
    }
    out.Char('\n');
  }
  out.Text(kVersion).Text(" TCI");
  for (const Field& f : kTargetCopyFields) Short(out, row, f);
  out.Text(" \n");
}

void PrintWgUser(const wg_tci_db& row, bool newGroup) {
  LineWriter out(stdout);
  if (newGroup) {
    out.Text("\nWorkGroup:\n");
    for (const Field& f : kGroupFields) User(out, row, f);
  }
  out.Text(" Target Copy:\n");
  for (const Field& f : kTargetCopyFields) User(out, row, f);
}

void JsonFormatWorkGroup(const wg_tci_db& row, json_t* object) {
  for (const Field& f : kGroupFields) {
    if (f.json != nullptr) Json(object, row, f);
  }
}

void JsonFormatTargetCopyInfo(const wg_tci_db& row, json_t* array) {
  json_t* object = json_object();
  for (const Field& f : kTargetCopyFields) Json(object, row, f);
  json_array_append_new(array, object);
}
