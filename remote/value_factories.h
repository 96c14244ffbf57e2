// Value-factory registration: before a reply that carries a value type can
// be read, the ORB needs that type's factory. FrameworkRegistrar registers
// the framework's detail and message types, DiskServiceRegistrar the disk
// service's value types, each family in a fixed order.
#ifndef REMOTE_VALUE_FACTORIES_H_
#define REMOTE_VALUE_FACTORIES_H_

#include <omniORB4/CORBA.h>

#include <cstddef>
#include <vector>

// One value type: its repository id and the creation of its default factory
// (a new factory holding one reference).
struct ValueFactoryEntry {
  const char* (*repositoryId)();
  CORBA::ValueFactoryBase* (*create)();
};

// Holds the factories it registered and releases its references to them when
// destroyed; the ORB keeps its own.
class ValueFactoryRegistrar {
 public:
  ValueFactoryRegistrar() = default;
  ValueFactoryRegistrar(const ValueFactoryRegistrar&) = delete;
  ValueFactoryRegistrar& operator=(const ValueFactoryRegistrar&) = delete;
  virtual ~ValueFactoryRegistrar();

 protected:
  // Creates and registers each entry's factory with `orb`, in order. A
  // creation or registration that throws is caught and logged to the
  // unified log (severity 3, message number 100, the repository id and
  // `function`), and the next entry follows. Returns 0 when every entry was
  // registered, otherwise the number of failures.
  int registerAll(CORBA::ORB_ptr orb, const ValueFactoryEntry* entries, size_t count,
                  const char* function);

 private:
  std::vector<CORBA::ValueFactoryBase*> factories_;
};

// NumericMessageItem, MessageItem, IllegalArgumentExceptionDetails, Message,
// ServiceExceptionDetails, ErrorCodeExceptionDetails, StringMessageItem.
class FrameworkRegistrar : public ValueFactoryRegistrar {
 public:
  // 0 when every factory was registered, non-zero otherwise.
  int init(CORBA::ORB_ptr orb);
};

// Every value type of the disk service, DiskVolume to DataMover.
class DiskServiceRegistrar : public ValueFactoryRegistrar {
 public:
  // 0 when every factory was registered, non-zero otherwise.
  int init(CORBA::ORB_ptr orb);
};

// The registration tables themselves, in registration order (for tests).
const ValueFactoryEntry* FrameworkValueFactories(size_t* count);
const ValueFactoryEntry* DiskServiceValueFactories(size_t* count);

#endif  // REMOTE_VALUE_FACTORIES_H_
