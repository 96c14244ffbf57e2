// DiskServiceHelper: static helpers that go with the disk service interface
// and are shared with the system's other programs: property lists, value
// builders, server-type tables, error-to-message mapping, number readers,
// exception texts and raising, and the trace ring.
#ifndef REMOTE_DISK_SERVICE_HELPER_H_
#define REMOTE_DISK_SERVICE_HELPER_H_

#include <string>

#include "remote/idl/DiskService.hh"

namespace Orvantic {
namespace Stashwell {
namespace DL {
namespace DiskService {

// Values of DiskServiceExceptionDetails::errorDomain.
enum ErrorDomain {
  ERROR_DOMAIN_DSM = 1,
  ERROR_DOMAIN_EMM = 2,
  ERROR_DOMAIN_RDSM = 3,
  ERROR_DOMAIN_STS = 4,
};

// The service-exception code of a value that could not be created.
constexpr int kDsmErrorCreateFailed = 2050001;

class DiskServiceHelper {
 public:
  // --- Property lists. A property that is null or lacks a name or value is
  // never matched. A null name (or value, where one is taken) raises
  // TL::Framework::IllegalArgumentException naming the argument.

  // A copy of the value of the first property named exactly `name` (free it
  // with CORBA::string_free), or null when there is none.
  static char* getPropertyByName(const PropertySeq& properties, const char* name);
  // Sets the value of the first property named `name`; when there is none
  // and `add` is true, appends a new property.
  static void updateProperty(PropertySeq& properties, const char* name, const char* value,
                             bool add);
  // Appends a new property.
  static void addProperty(PropertySeq& properties, const char* name, const char* value);
  // Replaces the first property named `name` by one with empty name and
  // value, so that the sequence keeps its length; nothing when there is none.
  static void deleteProperty(PropertySeq& properties, const char* name);

  // --- New values (the caller owns one reference). The object types get
  // object id "InVaLiD" and numeric members 0. A value that cannot be
  // created raises a ServiceException in domain DSM, code 2050001.
  static Property* buildProperty(const char* name, const char* value);
  static StorageServer* buildStorageServer(const char* name);
  static DiskVolume* buildDiskVolume(const char* name);
  static Enclosure* buildEnclosure(const char* name);
  static DiskGroup* buildDiskGroup(const char* name);
  static DiskStorageUnit* buildDiskStorageUnit(const char* name);

  // --- Server types.
  // Media sub-type of a server type name: BasicDisk 1, NearStore 2,
  // SnapVault 3, LegacyDisk 0, null 0, any other name 6.
  static short identifyStuSubtype(const char* name);
  // Server type name of a media sub-type: 0 LegacyDisk, 1 BasicDisk,
  // 2 NearStore, 3 SnapVault, any other value DiskPool.
  static const char* identifyStuServerType(int subtype);
  // Membership of a server type name (exact comparison) in the known types,
  // the types served through the external storage interface, and the
  // deprecated types.
  static bool isKnownServerType(const char* name);
  static bool isKnownExtServerType(const char* name);
  static bool isDeprecatedServerType(const char* name);

  // Message number of a disk service error: for domain DSM and codes
  // 2050001 to 2050029 the table's entry, otherwise -1 (also for the
  // table's unused entries).
  static int mapError2Message(int domain, int code);

  // --- Numbers from texts, read with the classic locale: leading blanks
  // skipped, reading stops at the first character that does not belong to
  // the number; null or a text that does not begin with a number gives 0.
  static int ptoi(const char* text);
  static long ptol(const char* text);
  static long long ptoll(const char* text);
  static unsigned long long ptoull(const char* text);
  static short ptos(const char* text);

  // --- Exception texts (free them with CORBA::string_free).
  // "ServiceException", then for DiskServiceExceptionDetails ":" and
  // " method=", " class=", " service=", " host=" (each only when present),
  // " errorDomain=" DSM|EMM|RDSM|STS (nothing for other domains),
  // " errorCode=<n>" and " errorText=<text>".
  static char* ex_str(const TL::Framework::ServiceException& e);
  // "IllegalArgumentException", then with details ":" and the four
  // labelled members only.
  static char* ex_str(const TL::Framework::IllegalArgumentException& e);

  // --- Raising. Both fill the details (originating service "DiskService",
  // this host, the current time, class and method, a message whose text id
  // is mapError2Message(domain, code) with the text and the source line as
  // inserts) and raise the exception.
  [[noreturn]] static void throwSvcException(int domain, int code, const char* text,
                                             const char* className, const char* method, int line);
  [[noreturn]] static void throwIllArgException(int domain, int code, const char* text,
                                                const char* className, const char* method, int line,
                                                const char* argumentName);

  // --- Trace ring: 128 entries of at most 80 characters, the oldest
  // overwritten first. Adds
  // "ICTR-<a> <counter> <<b 24> | <c 16> | <d 16>>" (absent texts as "NULL")
  // and returns 0, or the error of the ring's lock.
  static int ictrace(const char* a, const char* b, const char* c, const char* d);
  // A copy of ring entry `slot` (0 to 127; empty before it is written).
  static std::string ictraceEntry(unsigned slot);
};

}  // namespace DiskService
}  // namespace DL
}  // namespace Stashwell
}  // namespace Orvantic

#endif  // REMOTE_DISK_SERVICE_HELPER_H_
