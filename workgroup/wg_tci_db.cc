// The work-group statement, its binding table and the names of the kinds of
// work group.
#include "workgroup/wg_tci_db.h"

#include <cstddef>

#include "util/name_table.h"

using Corvela::Dal::DAL_VT_CHAR;
using Corvela::Dal::DAL_VT_SBIGINT;
using Corvela::Dal::DAL_VT_SLONG;
using Corvela::Dal::DAL_VT_SSHORT;
using Corvela::Dal::DAL_VT_ULONG;
using Corvela::Dal::DAL_VT_USHORT;
using Corvela::Dal::DalResultColumn;

#define WG_COLUMN(n, block, field, type)                                        \
  DalResultColumn(n, #block "." #field, type, offsetof(wg_tci_db, block.field), \
                  sizeof(wg_tci_db::block##_t::field))

const Corvela::Dal::DalOdbcView::BindingStruct wgBind[kWgColumns] = {
    WG_COLUMN(1, wg_values, WorkGroupKey, DAL_VT_ULONG),
    WG_COLUMN(2, wg_values, WorkGroupID, DAL_VT_SLONG),
    WG_COLUMN(3, wg_values, HasSingleSLPImages, DAL_VT_USHORT),
    WG_COLUMN(4, wg_chars, SLPName, DAL_VT_CHAR),
    WG_COLUMN(5, wg_values, SLPVersionNumber, DAL_VT_SLONG),
    WG_COLUMN(6, wg_values, PrimaryCopyNumber, DAL_VT_SLONG),
    WG_COLUMN(7, wg_values, IsFrozen, DAL_VT_USHORT),
    WG_COLUMN(8, wg_values, SrcCopyNumber, DAL_VT_SLONG),
    WG_COLUMN(9, wg_values, SrcMediaType, DAL_VT_SLONG),
    WG_COLUMN(10, wg_values, SrcMediaSubType, DAL_VT_SSHORT),
    WG_COLUMN(11, wg_chars, SrcAltReadHost, DAL_VT_CHAR),
    WG_COLUMN(12, wg_chars, SrcServerType, DAL_VT_CHAR),
    WG_COLUMN(13, wg_chars, SrcStorageServer, DAL_VT_CHAR),
    WG_COLUMN(14, wg_chars, SrcParentId, DAL_VT_CHAR),
    WG_COLUMN(15, wg_values, IsTargetPreserveMPX, DAL_VT_SLONG),
    WG_COLUMN(16, wg_values, IsTargetMirror, DAL_VT_USHORT),
    WG_COLUMN(17, wg_values, TargetPriority, DAL_VT_SLONG),
    WG_COLUMN(18, wg_values, TargetNumberCopies, DAL_VT_SLONG),
    WG_COLUMN(19, wg_chars, PolicyName, DAL_VT_CHAR),
    WG_COLUMN(20, wg_chars, SchedName, DAL_VT_CHAR),
    WG_COLUMN(21, wg_values, SchedType, DAL_VT_SLONG),
    WG_COLUMN(22, wg_chars, WindowCloseOptions, DAL_VT_CHAR),
    WG_COLUMN(23, wg_chars, SourceMediaId, DAL_VT_CHAR),
    WG_COLUMN(24, wg_chars, TargetMasterServer, DAL_VT_CHAR),
    WG_COLUMN(25, wg_chars, TargetStorageServer, DAL_VT_CHAR),
    WG_COLUMN(26, wg_chars, TargetVolume, DAL_VT_CHAR),
    WG_COLUMN(27, wg_chars, TargetImportSLP, DAL_VT_CHAR),
    WG_COLUMN(28, wg_values, CreatedDateTime, DAL_VT_SBIGINT),
    WG_COLUMN(29, tci_values, CopyNumber, DAL_VT_SLONG),
    WG_COLUMN(30, tci_values, SLPIndex, DAL_VT_SLONG),
    WG_COLUMN(31, tci_values, Flags, DAL_VT_ULONG),
    WG_COLUMN(32, tci_values, RetentionLevel, DAL_VT_SLONG),
    WG_COLUMN(33, tci_chars, Residence, DAL_VT_CHAR),
    WG_COLUMN(34, tci_chars, VolumePool, DAL_VT_CHAR),
    WG_COLUMN(35, tci_chars, ServerGroup, DAL_VT_CHAR),
    WG_COLUMN(36, tci_chars, DestTag, DAL_VT_CHAR),
    WG_COLUMN(37, wg_values, BlockSize, DAL_VT_SLONG),
};

const std::string wgSelectStr =
    "SELECT Wg.WorkGroupKey, Wg.WorkGroupID, Wg.HasSingleSLPImages, Wg.SLPName, "
    "Wg.SLPVersionNumber, Wg.PrimaryCopyNumber, Wg.IsFrozen, Wg.SrcCopyNumber, "
    "Wg.SrcMediaType, Wg.SrcMediaSubType, Wg.SrcAltReadHost, Wg.SrcServerType, "
    "Wg.SrcStorageServer, Wg.SrcParentID, Wg.IsTargetPreserveMPX, Wg.IsTargetMirror, "
    "Wg.TargetPriority, Wg.TargetNumberCopies, Wg.PolicyName, Wg.SchedName, Wg.SchedType, "
    "Wg.WindowCloseOptions, Wg.SrcMediaId, Wg.TargetMasterServer, Wg.TargetStorageServer, "
    "Wg.TargetVolume, Wg.TargetImportSLP, DATEDIFF(second, '1970-01-01 00:00:00', "
    "Wg.CreatedDateTime), Tci.CopyNumber, Tci.SLPIndex, Tci.Flags, Tci.RetentionLevel, "
    "Tci.Residence, Tci.VolumePool, Tci.ServerGroup, Tci.DestTag, Wg.ImageBlockSize "
    "FROM SLP_MAIN.SLP_WorkGroup AS Wg LEFT OUTER JOIN SLP_MAIN.SLP_TargetCopyInfo Tci "
    "ON Wg.WorkGroupKey = Tci.WorkGroupKey";

std::string WorkGroupStatement(long key) {
  if (key == 0) return wgSelectStr + " ORDER BY Wg.WorkGroupKey";
  return wgSelectStr + " WHERE Wg.WorkGroupKey = " + std::to_string(key);
}

const char* WorkGroupIDName(int32_t id) {
  static const char* const kNames[] = {
      "NULL",
      "DISK",
      "TAPE",
      "SNAPDUPE",
      "OXR_IMPORT",
      "OXR_REPLICATION",
      "TARGETED_OXR_REPLICATION",
      "SNAPREP",
      "SNAPINDEX",
      "VM_SNAPDUPE",
      "VM_SNAPINDEX",
      "CLOUD_SNAPSHOT_REPLICATION",
      "CLOUD_SNAPSHOT_INDEX",
      "DYNAMIC_STREAMING",
      "CLOUD_SNAPSHOT_BACKUP",
  };
  const char* name = Orvantic::Stashwell::NameTable(kNames).Find(id);
  return name != nullptr ? name : kNames[0];
}
