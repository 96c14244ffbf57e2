// The two registrars and their tables.
#include "remote/value_factories.h"

#include <exception>

#include "remote/app_error_log.h"
#include "remote/idl/DiskService.hh"
#include "remote/idl/ErrorCodeExceptionDetails.hh"
#include "remote/idl/IllegalArgumentExceptionDetails.hh"
#include "remote/idl/NumericMessageItem.hh"
#include "remote/idl/StringMessageItem.hh"

namespace {

namespace Framework = Orvantic::Stashwell::TL::Framework;
namespace DiskService = Orvantic::Stashwell::DL::DiskService;

// Entry of value type V whose default factory is Init.
template <class V, class Init>
struct Factory {
  static const char* repositoryId() { return V::_PD_repoId; }
  static CORBA::ValueFactoryBase* create() { return new Init(); }
  static constexpr ValueFactoryEntry entry = {&repositoryId, &create};
};

#define SW_FACTORY(ns, type) Factory<ns::type, ns::type##_init>::entry

const ValueFactoryEntry kFrameworkFactories[] = {
    SW_FACTORY(Framework, NumericMessageItem),
    SW_FACTORY(Framework, MessageItem),
    SW_FACTORY(Framework, IllegalArgumentExceptionDetails),
    SW_FACTORY(Framework, Message),
    SW_FACTORY(Framework, ServiceExceptionDetails),
    SW_FACTORY(Framework, ErrorCodeExceptionDetails),
    SW_FACTORY(Framework, StringMessageItem),
};

const ValueFactoryEntry kDiskServiceFactories[] = {
    SW_FACTORY(DiskService, DiskVolume),
    SW_FACTORY(DiskService, MountPoint),
    SW_FACTORY(DiskService, Property),
    SW_FACTORY(DiskService, StorageServerConfigItem),
    SW_FACTORY(DiskService, DiskStorageUnitInfo),
    SW_FACTORY(DiskService, DiskInfo),
    SW_FACTORY(DiskService, StorageServer),
    SW_FACTORY(DiskService, Enclosure),
    SW_FACTORY(DiskService, StorageServerCredentials),
    SW_FACTORY(DiskService, ObjSpec),
    SW_FACTORY(DiskService, DiskStorageUnit),
    SW_FACTORY(DiskService, DiskServiceExceptionDetails),
    SW_FACTORY(DiskService, ServertypeInfo),
    SW_FACTORY(DiskService, EnclosureInfo),
    SW_FACTORY(DiskService, Disk),
    SW_FACTORY(DiskService, DiskGroup),
    SW_FACTORY(DiskService, DiskVolumeInfo),
    SW_FACTORY(DiskService, DiskGroupInfo),
    SW_FACTORY(DiskService, StorageServerInfo),
    SW_FACTORY(DiskService, DataMover),
};

#undef SW_FACTORY

void LogRegistrationFailure(const char* repositoryId, const char* function) {
  LogAppError("100", "%s: cannot register the value factory of %s", {function, repositoryId});
}

}  // namespace

ValueFactoryRegistrar::~ValueFactoryRegistrar() {
  for (CORBA::ValueFactoryBase* factory : factories_) factory->_remove_ref();
}

int ValueFactoryRegistrar::registerAll(CORBA::ORB_ptr orb, const ValueFactoryEntry* entries,
                                       size_t count, const char* function) {
  int failures = 0;
  for (size_t i = 0; i < count; ++i) {
    const char* id = entries[i].repositoryId();
    try {
      CORBA::ValueFactoryBase* factory = entries[i].create();
      factories_.push_back(factory);
      CORBA::ValueFactory previous = orb->register_value_factory(id, factory);
      if (previous != nullptr) previous->_remove_ref();
    } catch (const CORBA::Exception&) {
      LogRegistrationFailure(id, function);
      ++failures;
    } catch (const std::exception&) {
      LogRegistrationFailure(id, function);
      ++failures;
    }
  }
  return failures;
}

int FrameworkRegistrar::init(CORBA::ORB_ptr orb) {
  size_t count = 0;
  const ValueFactoryEntry* entries = FrameworkValueFactories(&count);
  return registerAll(orb, entries, count, "FrameworkRegistrar::init");
}

int DiskServiceRegistrar::init(CORBA::ORB_ptr orb) {
  size_t count = 0;
  const ValueFactoryEntry* entries = DiskServiceValueFactories(&count);
  return registerAll(orb, entries, count, "DiskServiceRegistrar::init");
}

const ValueFactoryEntry* FrameworkValueFactories(size_t* count) {
  *count = sizeof kFrameworkFactories / sizeof kFrameworkFactories[0];
  return kFrameworkFactories;
}

const ValueFactoryEntry* DiskServiceValueFactories(size_t* count) {
  *count = sizeof kDiskServiceFactories / sizeof kDiskServiceFactories[0];
  return kDiskServiceFactories;
}
