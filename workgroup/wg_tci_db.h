// One row of the work-group listing: a work group joined with one of its
// target copies. The record is the fetch buffer and the printers' input;
// wgBind maps the 37 columns of wgSelectStr to its fields.
#ifndef WORKGROUP_WG_TCI_DB_H_
#define WORKGROUP_WG_TCI_DB_H_

#include <cstdint>
#include <string>

#include "platform/dal/dal.h"

struct wg_tci_db {
  struct wg_values_t {
    uint32_t WorkGroupKey;
    int32_t WorkGroupID;
    uint16_t HasSingleSLPImages;
    int32_t SLPVersionNumber;
    int32_t PrimaryCopyNumber;
    uint16_t IsFrozen;
    int32_t SrcCopyNumber;
    int32_t SrcMediaType;
    int16_t SrcMediaSubType;
    int32_t IsTargetPreserveMPX;
    uint16_t IsTargetMirror;
    int32_t TargetPriority;
    int32_t TargetNumberCopies;
    int32_t SchedType;
    int64_t CreatedDateTime;  // seconds since 1970
    int32_t BlockSize;
  } wg_values;
  struct wg_chars_t {
    char SLPName[125];
    char SrcAltReadHost[257];
    char SrcServerType[65];
    char SrcStorageServer[257];
    char SrcParentId[270];
    char PolicyName[257];
    char SchedName[257];
    char SourceMediaId[257];
    char WindowCloseOptions[9];
    char TargetMasterServer[257];
    char TargetStorageServer[257];
    char TargetVolume[257];
    char TargetImportSLP[125];
  } wg_chars;
  struct tci_values_t {
    int32_t CopyNumber;
    int32_t SLPIndex;
    uint32_t Flags;
    int32_t RetentionLevel;
  } tci_values;
  struct tci_chars_t {
    char Residence[129];
    char VolumePool[129];
    char ServerGroup[129];
    char DestTag[257];
  } tci_chars;
};

// Number of columns of wgSelectStr and entries of wgBind.
constexpr unsigned int kWgColumns = 37;

// Result binding table of the listing's statement, one entry per column.
extern const Corvela::Dal::DalOdbcView::BindingStruct wgBind[kWgColumns];

// The statement of every work group with its target copies (a work group
// without any yields one row with no target-copy values).
extern const std::string wgSelectStr;

// wgSelectStr ordered by key when `key` is 0, otherwise narrowed to the work
// group of that key.
std::string WorkGroupStatement(long key);

// The name of a kind of work group; "NULL" for 0 and for ids out of range.
const char* WorkGroupIDName(int32_t id);

#endif  // WORKGROUP_WG_TCI_DB_H_
