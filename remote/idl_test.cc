// The compiled interface definitions announce the repository ids the
// services match on, and keep the enumerators and members in wire order.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "remote/idl/CSFBasicSeqs.hh"
#include "remote/idl/DiskService.hh"
#include "remote/idl/ExpMgr.hh"
#include "remote/idl/NumericMessageItem.hh"
#include "remote/idl/StringMessageItem.hh"
#include "remote/idl/dssvc.hh"

namespace {

namespace CSF = Corvela::CSF;
namespace DssSVC = Orvantic::Stashwell::StorageServiceMgmt::DssSVC;
namespace ExpMgrSVC = Orvantic::Stashwell::StorageServiceMgmt::ExpMgrSVC;
namespace Framework = Orvantic::Stashwell::TL::Framework;
namespace DiskService = Orvantic::Stashwell::DL::DiskService;

const std::string kCsf = "IDL:Corvela/CSF/";
const std::string kDss = "IDL:Orvantic/Stashwell/StorageServiceMgmt/DssSVC/";
const std::string kExp = "IDL:Orvantic/Stashwell/StorageServiceMgmt/ExpMgrSVC/";
const std::string kFw = "IDL:Orvantic/Stashwell/TL/Framework/";
const std::string kDsk = "IDL:Orvantic/Stashwell/DL/DiskService/";

struct TypeId {
  const CORBA::TypeCode_ptr* typeCode;
  std::string expected;  // without ":1.0"
};

TEST(IdlTest, TypeCodesAnnounceTheirRepositoryIds) {
  const TypeId types[] = {
      {&CSF::_tc_BooleanSeq, kCsf + "BooleanSeq"},
      {&CSF::_tc_CharSeq, kCsf + "CharSeq"},
      {&CSF::_tc_ShortSeq, kCsf + "ShortSeq"},
      {&CSF::_tc_LongSeq, kCsf + "LongSeq"},
      {&CSF::_tc_LongLongSeq, kCsf + "LongLongSeq"},
      {&CSF::_tc_UShortSeq, kCsf + "UShortSeq"},
      {&CSF::_tc_ULongSeq, kCsf + "ULongSeq"},
      {&CSF::_tc_ULongLongSeq, kCsf + "ULongLongSeq"},
      {&CSF::_tc_FloatSeq, kCsf + "FloatSeq"},
      {&CSF::_tc_DoubleSeq, kCsf + "DoubleSeq"},
      {&CSF::_tc_LongDoubleSeq, kCsf + "LongDoubleSeq"},
      {&CSF::_tc_OctetSeq, kCsf + "OctetSeq"},
      {&CSF::_tc_StringSeq, kCsf + "StringSeq"},
      {&CSF::_tc_AnySeq, kCsf + "AnySeq"},
      {&CSF::_tc_WCharSeq, kCsf + "WCharSeq"},
      {&CSF::_tc_WStringSeq, kCsf + "WStringSeq"},
      {&DssSVC::_tc_stringdata, kDss + "stringdata"},
      {&DssSVC::_tc_SubSystemID, kDss + "SubSystemID"},
      {&DssSVC::_tc_DumpFormSelector, kDss + "DumpFormSelector"},
      {&DssSVC::_tc_TimeRangeType, kDss + "TimeRangeType"},
      {&DssSVC::_tc_SLP_ImportNotification, kDss + "SLP_ImportNotification"},
      {&DssSVC::_tc_SLP_ImportNotificationSeq, kDss + "SLP_ImportNotificationSeq"},
      {&DssSVC::_tc_SLP_CancellableImage, kDss + "SLP_CancellableImage"},
      {&DssSVC::_tc_SLP_CancellableImageSeq, kDss + "SLP_CancellableImageSeq"},
      {&DssSVC::_tc_Dssvc, kDss + "Dssvc"},
      {&ExpMgrSVC::_tc_EXPIRATION_TYPE, kExp + "EXPIRATION_TYPE"},
      {&ExpMgrSVC::_tc_EXPIRATION_ID, kExp + "EXPIRATION_ID"},
      {&ExpMgrSVC::_tc_ExpMgr, kExp + "ExpMgr"},
      {&Framework::_tc_ExpansionAttribute, kFw + "ExpansionAttribute"},
      {&Framework::_tc_ExpansionAttributeSeq, kFw + "ExpansionAttributeSeq"},
      {&Framework::_tc_BaseObject, kFw + "BaseObject"},
      {&Framework::_tc_BaseObjectSeq, kFw + "BaseObjectSeq"},
      {&Framework::_tc_MessageItem, kFw + "MessageItem"},
      {&Framework::_tc_MessageItemSeq, kFw + "MessageItemSeq"},
      {&Framework::_tc_StringMessageItem, kFw + "StringMessageItem"},
      {&Framework::_tc_StringMessageItemSeq, kFw + "StringMessageItemSeq"},
      {&Framework::_tc_NumericMessageItem, kFw + "NumericMessageItem"},
      {&Framework::_tc_NumericMessageItemSeq, kFw + "NumericMessageItemSeq"},
      {&Framework::_tc_Message, kFw + "Message"},
      {&Framework::_tc_MessageSeq, kFw + "MessageSeq"},
      {&Framework::_tc_ServiceExceptionDetails, kFw + "ServiceExceptionDetails"},
      {&Framework::_tc_ServiceExceptionDetailsSeq, kFw + "ServiceExceptionDetailsSeq"},
      {&Framework::_tc_ErrorCodeExceptionDetails, kFw + "ErrorCodeExceptionDetails"},
      {&Framework::_tc_ErrorCodeExceptionDetailsSeq, kFw + "ErrorCodeExceptionDetailsSeq"},
      {&Framework::_tc_IllegalArgumentExceptionDetails, kFw + "IllegalArgumentExceptionDetails"},
      {&Framework::_tc_IllegalArgumentExceptionDetailsSeq,
       kFw + "IllegalArgumentExceptionDetailsSeq"},
      {&Framework::_tc_ServiceException, kFw + "ServiceException"},
      {&Framework::_tc_IllegalArgumentException, kFw + "IllegalArgumentException"},
      {&DiskService::_tc_Property, kDsk + "Property"},
      {&DiskService::_tc_PropertySeq, kDsk + "PropertySeq"},
      {&DiskService::_tc_ObjSpec, kDsk + "ObjSpec"},
      {&DiskService::_tc_ObjSpecSeq, kDsk + "ObjSpecSeq"},
      {&DiskService::_tc_StorageServer, kDsk + "StorageServer"},
      {&DiskService::_tc_StorageServerSeq, kDsk + "StorageServerSeq"},
      {&DiskService::_tc_DiskGroup, kDsk + "DiskGroup"},
      {&DiskService::_tc_DiskGroupSeq, kDsk + "DiskGroupSeq"},
      {&DiskService::_tc_DiskVolume, kDsk + "DiskVolume"},
      {&DiskService::_tc_DiskVolumeSeq, kDsk + "DiskVolumeSeq"},
      {&DiskService::_tc_Disk, kDsk + "Disk"},
      {&DiskService::_tc_DiskSeq, kDsk + "DiskSeq"},
      {&DiskService::_tc_DataMover, kDsk + "DataMover"},
      {&DiskService::_tc_DataMoverSeq, kDsk + "DataMoverSeq"},
      {&DiskService::_tc_DiskStorageUnit, kDsk + "DiskStorageUnit"},
      {&DiskService::_tc_DiskStorageUnitSeq, kDsk + "DiskStorageUnitSeq"},
      {&DiskService::_tc_Enclosure, kDsk + "Enclosure"},
      {&DiskService::_tc_EnclosureSeq, kDsk + "EnclosureSeq"},
      {&DiskService::_tc_StorageServerConfigItem, kDsk + "StorageServerConfigItem"},
      {&DiskService::_tc_StorageServerConfigItemSeq, kDsk + "StorageServerConfigItemSeq"},
      {&DiskService::_tc_DiskVolumeInfo, kDsk + "DiskVolumeInfo"},
      {&DiskService::_tc_DiskVolumeInfoSeq, kDsk + "DiskVolumeInfoSeq"},
      {&DiskService::_tc_DiskGroupInfo, kDsk + "DiskGroupInfo"},
      {&DiskService::_tc_DiskGroupInfoSeq, kDsk + "DiskGroupInfoSeq"},
      {&DiskService::_tc_DiskInfo, kDsk + "DiskInfo"},
      {&DiskService::_tc_DiskInfoSeq, kDsk + "DiskInfoSeq"},
      {&DiskService::_tc_DiskStorageUnitInfo, kDsk + "DiskStorageUnitInfo"},
      {&DiskService::_tc_DiskStorageUnitInfoSeq, kDsk + "DiskStorageUnitInfoSeq"},
      {&DiskService::_tc_EnclosureInfo, kDsk + "EnclosureInfo"},
      {&DiskService::_tc_EnclosureInfoSeq, kDsk + "EnclosureInfoSeq"},
      {&DiskService::_tc_MountPoint, kDsk + "MountPoint"},
      {&DiskService::_tc_MountPointSeq, kDsk + "MountPointSeq"},
      {&DiskService::_tc_ServertypeInfo, kDsk + "ServertypeInfo"},
      {&DiskService::_tc_ServertypeInfoSeq, kDsk + "ServertypeInfoSeq"},
      {&DiskService::_tc_StorageServerCredentials, kDsk + "StorageServerCredentials"},
      {&DiskService::_tc_StorageServerCredentialsSeq, kDsk + "StorageServerCredentialsSeq"},
      {&DiskService::_tc_StorageServerInfo, kDsk + "StorageServerInfo"},
      {&DiskService::_tc_StorageServerInfoSeq, kDsk + "StorageServerInfoSeq"},
      {&DiskService::_tc_DiskServiceExceptionDetails, kDsk + "DiskServiceExceptionDetails"},
      {&DiskService::_tc_DiskServiceExceptionDetailsSeq, kDsk + "DiskServiceExceptionDetailsSeq"},
      {&DiskService::_tc_DiskServiceMgr, kDsk + "DiskServiceMgr"},
      {&DiskService::_tc_AMI_DiskServiceMgrHandler, kDsk + "AMI_DiskServiceMgrHandler"},
  };
  for (const TypeId& type : types) {
    EXPECT_STREQ((*type.typeCode)->id(), (type.expected + ":1.0").c_str());
  }
}

TEST(IdlTest, StubsAnnounceTheirRepositoryIds) {
  struct StubId {
    const char* const* repoId;
    std::string expected;
  };
  const StubId stubs[] = {
      {&DssSVC::Dssvc::_PD_repoId, kDss + "Dssvc"},
      {&ExpMgrSVC::ExpMgr::_PD_repoId, kExp + "ExpMgr"},
      {&DiskService::DiskServiceMgr::_PD_repoId, kDsk + "DiskServiceMgr"},
      {&DiskService::AMI_DiskServiceMgrHandler::_PD_repoId, kDsk + "AMI_DiskServiceMgrHandler"},
      {&Framework::ServiceException::_PD_repoId, kFw + "ServiceException"},
      {&Framework::IllegalArgumentException::_PD_repoId, kFw + "IllegalArgumentException"},
      {&Framework::ServiceExceptionDetails::_PD_repoId, kFw + "ServiceExceptionDetails"},
      {&Framework::ErrorCodeExceptionDetails::_PD_repoId, kFw + "ErrorCodeExceptionDetails"},
      {&Framework::Message::_PD_repoId, kFw + "Message"},
      {&DiskService::DiskVolumeInfo::_PD_repoId, kDsk + "DiskVolumeInfo"},
      {&DiskService::DiskServiceExceptionDetails::_PD_repoId, kDsk + "DiskServiceExceptionDetails"},
  };
  for (const StubId& stub : stubs) EXPECT_STREQ(*stub.repoId, (stub.expected + ":1.0").c_str());
}

std::vector<std::string> MemberNames(CORBA::TypeCode_ptr tc) {
  std::vector<std::string> names;
  for (CORBA::ULong i = 0; i < tc->member_count(); ++i) names.push_back(tc->member_name(i));
  return names;
}

TEST(IdlTest, EnumeratorsAndMembersKeepTheirWireOrder) {
  struct Members {
    const CORBA::TypeCode_ptr* typeCode;
    std::vector<std::string> names;
  };
  const Members types[] = {
      {&DssSVC::_tc_DumpFormSelector,
       {"DUMPFORM_NULL", "DUMPFORM_READABLE", "DUMPFORM_JSON", "DUMPFORM_LOGFILE",
        "DUMPFORM_MAX"}},
      {&DssSVC::_tc_TimeRangeType, {"TIME_RANGE_NONE", "TIME_RANGE_BEFORE", "TIME_RANGE_AFTER"}},
      {&ExpMgrSVC::_tc_EXPIRATION_TYPE, {"EXP_TYPE_NORMAL", "EXP_TYPE_AGGRESSIVE"}},
      {&DssSVC::_tc_SLP_ImportNotification,
       {"notificationType", "client", "backupTime", "sourceImageKey", "errorCode",
        "errorString"}},
      {&DssSVC::_tc_SLP_CancellableImage,
       {"backupid", "copyNumber", "slpName", "slpVersion", "imageState", "copyState",
        "expireTime", "expirationType"}},
      {&Framework::_tc_Message, {"inserts", "textId", "timeStamp", "originatorId"}},
      {&Framework::_tc_ServiceExceptionDetails,
       {"originatingService", "exceptionClassName", "message", "originatingHost",
        "originatingClass", "originatingMethod", "rootCauses", "timeStamp"}},
      {&DiskService::_tc_ObjSpec, {"objId", "type", "properties", "name"}},
      {&DiskService::_tc_Property, {"value", "name"}},
      {&DiskService::_tc_DiskVolumeInfo,
       {"capacity", "stsState", "volume", "servertype", "storage_server_name", "state",
        "potential_free", "name", "used"}},
      {&DiskService::_tc_DiskServiceExceptionDetails, {"errorText", "errorDomain"}},
  };
  for (const Members& type : types) {
    EXPECT_EQ(MemberNames(*type.typeCode), type.names) << (*type.typeCode)->id();
  }

  CORBA::TypeCode_ptr subsystems = DssSVC::_tc_SubSystemID;
  ASSERT_EQ(subsystems->member_count(), 19u);
  EXPECT_STREQ(subsystems->member_name(0), "SUBSYSTEM_ID_NULL");
  EXPECT_STREQ(subsystems->member_name(15), "SUBSYSTEM_ID_EXPIRATION_MGR");
  EXPECT_STREQ(subsystems->member_name(18), "SUBSYSTEM_ID_MAX");
  EXPECT_EQ(DssSVC::_tc_DumpFormSelector->member_count(), 5u);
}

TEST(IdlTest, ValueTypesDeriveFromTheirBases) {
  struct Base {
    const CORBA::TypeCode_ptr* typeCode;
    const CORBA::TypeCode_ptr* base;
  };
  const Base types[] = {
      {&Framework::_tc_ServiceExceptionDetails, &Framework::_tc_BaseObject},
      {&Framework::_tc_ErrorCodeExceptionDetails, &Framework::_tc_ServiceExceptionDetails},
      {&Framework::_tc_IllegalArgumentExceptionDetails, &Framework::_tc_ServiceExceptionDetails},
      {&Framework::_tc_StringMessageItem, &Framework::_tc_MessageItem},
      {&DiskService::_tc_DiskVolume, &DiskService::_tc_ObjSpec},
      {&DiskService::_tc_DiskVolumeInfo, &Framework::_tc_BaseObject},
      {&DiskService::_tc_DiskServiceExceptionDetails, &Framework::_tc_ErrorCodeExceptionDetails},
  };
  for (const Base& type : types) {
    CORBA::TypeCode_var base = (*type.typeCode)->concrete_base_type();
    ASSERT_FALSE(CORBA::is_nil(base)) << (*type.typeCode)->id();
    EXPECT_STREQ(base->id(), (*type.base)->id());
  }
  CORBA::TypeCode_var none = Framework::_tc_BaseObject->concrete_base_type();
  EXPECT_TRUE(CORBA::is_nil(none) || none->kind() == CORBA::tk_null);
}

}  // namespace
