// The compiled interface definitions announce the repository ids the
// services match on, and the enumerations have all their enumerators.
#include <gtest/gtest.h>

#include <string>

#include "remote/idl/CSFBasicSeqs.hh"
#include "remote/idl/DiskService.hh"
#include "remote/idl/ExpMgr.hh"
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

// One type of each module, and the types whose definitions needed care: the
// sequence declared before its element type is defined, the members that
// name their type by its scoped name, the handler omniidl adds.
TEST(IdlTest, TypeCodesAnnounceTheirRepositoryIds) {
  const TypeId types[] = {
      {&CSF::_tc_WStringSeq, kCsf + "WStringSeq"},
      {&DssSVC::_tc_SubSystemID, kDss + "SubSystemID"},
      {&DssSVC::_tc_SLP_CancellableImageSeq, kDss + "SLP_CancellableImageSeq"},
      {&ExpMgrSVC::_tc_EXPIRATION_ID, kExp + "EXPIRATION_ID"},
      {&Framework::_tc_Message, kFw + "Message"},
      {&Framework::_tc_ServiceExceptionDetailsSeq, kFw + "ServiceExceptionDetailsSeq"},
      {&Framework::_tc_IllegalArgumentException, kFw + "IllegalArgumentException"},
      {&DiskService::_tc_Disk, kDsk + "Disk"},
      {&DiskService::_tc_Enclosure, kDsk + "Enclosure"},
      {&DiskService::_tc_DiskVolumeInfoSeq, kDsk + "DiskVolumeInfoSeq"},
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
      {&Framework::ServiceException::_PD_repoId, kFw + "ServiceException"},
      {&Framework::ServiceExceptionDetails::_PD_repoId, kFw + "ServiceExceptionDetails"},
      {&DiskService::DiskServiceExceptionDetails::_PD_repoId, kDsk + "DiskServiceExceptionDetails"},
  };
  for (const StubId& stub : stubs) EXPECT_STREQ(*stub.repoId, (stub.expected + ":1.0").c_str());
}

TEST(IdlTest, EnumerationsHaveTheirEnumerators) {
  CORBA::TypeCode_ptr subsystems = DssSVC::_tc_SubSystemID;
  ASSERT_EQ(subsystems->member_count(), 19u);
  EXPECT_STREQ(subsystems->member_name(15), "SUBSYSTEM_ID_EXPIRATION_MGR");
  EXPECT_STREQ(subsystems->member_name(18), "SUBSYSTEM_ID_MAX");
  EXPECT_EQ(DssSVC::_tc_DumpFormSelector->member_count(), 5u);
}

}  // namespace
