// DiskServiceHelper: property lists, builders, type tables, error mapping,
// number readers and the exception texts and raising.
#include "remote/disk_service_helper.h"

#include <unistd.h>

#include <cstring>
#include <ctime>
#include <locale>
#include <new>
#include <sstream>

#include "platform/swlogger.h"
#include "remote/app_error_log.h"
#include "remote/idl/NumericMessageItem.hh"
#include "remote/idl/StringMessageItem.hh"

namespace Orvantic {
namespace Stashwell {
namespace DL {
namespace DiskService {

namespace {

namespace Framework = ::Orvantic::Stashwell::TL::Framework;

const char kHelperClass[] = "DiskServiceHelper";
const char kInvalidObjectId[] = "InVaLiD";

struct SubtypeName {
  short subtype;
  const char* name;
};

// Server type names and their media sub-types; names not listed are
// sub-type 6, sub-types not listed are "DiskPool".
const SubtypeName kSubtypeNames[] = {
    {1, "BasicDisk"},
    {0, "LegacyDisk"},
    {2, "NearStore"},
    {3, "SnapVault"},
};
constexpr short kOtherSubtype = 6;
const char kOtherServerType[] = "DiskPool";

const char* const kKnownServerTypes[] = {"BasicDisk", "LegacyDisk", "NearStore", "SANDisk",
                                         "SnapVault"};
// Types served through the external storage interface.
const char* const kExtServerTypes[] = {"ExtDisk", "ExtDedup", "ExtCloud"};
const char* const kDeprecatedServerTypes[] = {"LegacyDisk", "NearStore",   "SnapVault", "SANDisk",
                                              "TapeStage",  "OpticalDisk", "RemoteDisk"};

// Message numbers of the DSM codes 2050001 to 2050029.
constexpr int kFirstDsmCode = 2050001;
const int kDsmMessageNumbers[29] = {
    20, -1, -1, -1, -1, -1, -1, -1, -1, 8,   // 2050001 - 2050010
    23, 27, -1, -1, -1, -1, -1, -1, -1, 22,  // 2050011 - 2050020
    -1, -1, 24, -1, -1, -1, -1, 25, 26,      // 2050021 - 2050029
};

const char* const kDomainNames[] = {"DSM", "EMM", "RDSM", "STS"};

template <size_t N>
bool InList(const char* const (&list)[N], const char* name) {
  if (name == nullptr) return false;
  for (const char* entry : list) {
    if (strcmp(entry, name) == 0) return true;
  }
  return false;
}

template <typename T>
T ReadNumber(const char* text) {
  T value = 0;
  if (text == nullptr) return value;
  std::istringstream in(text);
  in.imbue(std::locale::classic());
  in >> value;  // a failed read leaves 0, an overflow the type's limit
  return value;
}

bool Usable(const Property* p) {
  return p != nullptr && p->name() != nullptr && p->value() != nullptr;
}

// Index of the first usable property named `name`, or -1.
long FindProperty(const PropertySeq& properties, const char* name) {
  for (CORBA::ULong i = 0; i < properties.length(); ++i) {
    const Property* p = properties[i];
    if (Usable(p) && strcmp(p->name(), name) == 0) return static_cast<long>(i);
  }
  return -1;
}

void RequireArgument(const char* value, const char* argumentName, const char* method, int line) {
  if (value != nullptr) return;
  std::string text = std::string(argumentName) + " must not be null";
  DiskServiceHelper::throwIllArgException(ERROR_DOMAIN_DSM, 0, text.c_str(), kHelperClass, method,
                                          line, argumentName);
}

void AppendLabelled(std::string& text, const char* label, const char* value) {
  if (value == nullptr) return;
  text += label;
  text += value;
}

// ":" and the labelled origin members of an exception text.
void AppendOrigin(std::string& text, const Framework::ServiceExceptionDetails& details) {
  text += ":";
  AppendLabelled(text, " method=", details.originatingMethod());
  AppendLabelled(text, " class=", details.originatingClass());
  AppendLabelled(text, " service=", details.originatingService());
  AppendLabelled(text, " host=", details.originatingHost());
}

// The members every raised exception's details share.
void FillDetails(Framework::ServiceExceptionDetails& details, const char* exceptionClass,
                 int domain, int code, const char* text, const char* className, const char* method,
                 int line) {
  char host[256] = "";
  if (gethostname(host, sizeof host - 1) != 0) host[0] = '\0';
  CORBA::LongLong now = static_cast<CORBA::LongLong>(time(nullptr));

  Framework::MessageItemSeq inserts;
  inserts.length(2);
  OBV_Orvantic::Stashwell::TL::Framework::StringMessageItem* textItem =
      new OBV_Orvantic::Stashwell::TL::Framework::StringMessageItem();
  textItem->position(1);
  textItem->name("text");
  textItem->stringValue(text != nullptr ? text : "");
  inserts[0] = textItem;
  OBV_Orvantic::Stashwell::TL::Framework::NumericMessageItem* lineItem =
      new OBV_Orvantic::Stashwell::TL::Framework::NumericMessageItem();
  lineItem->position(2);
  lineItem->name("line");
  lineItem->numericValue(line);
  inserts[1] = lineItem;

  OBV_Orvantic::Stashwell::TL::Framework::Message* message =
      new OBV_Orvantic::Stashwell::TL::Framework::Message();
  message->inserts(inserts);
  message->textId(DiskServiceHelper::mapError2Message(domain, code));
  message->timeStamp(now);
  message->originatorId(domain);

  details.originatingService("DiskService");
  details.exceptionClassName(exceptionClass);
  details.message(message);
  message->_remove_ref();                                   // the setter took its own reference
  details.originatingHost(static_cast<const char*>(host));  // the char* setter would adopt it
  details.originatingClass(className != nullptr ? className : "");
  details.originatingMethod(method != nullptr ? method : "");
  details.timeStamp(now);

  std::string messageNumber = std::to_string(DiskServiceHelper::mapError2Message(domain, code));
  std::string domainText = std::to_string(domain);
  std::string codeText = std::to_string(code);
  std::string lineText = std::to_string(line);
  LogAppError(
      messageNumber.c_str(), "%s %s::%s: %s (domain %s, code %s, line %s)",
      {exceptionClass, details.originatingClass(), details.originatingMethod(),
       text != nullptr ? text : "", domainText.c_str(), codeText.c_str(), lineText.c_str()});
}

}  // namespace

char* DiskServiceHelper::getPropertyByName(const PropertySeq& properties, const char* name) {
  Tracer trace(SWLogger::s_default, nullptr, "DiskServiceHelper::getPropertyByName", __FILE__,
               __LINE__);
  RequireArgument(name, "name", "getPropertyByName", __LINE__);
  long i = FindProperty(properties, name);
  return i < 0 ? nullptr : CORBA::string_dup(properties[i]->value());
}

void DiskServiceHelper::updateProperty(PropertySeq& properties, const char* name, const char* value,
                                       bool add) {
  Tracer trace(SWLogger::s_default, nullptr, "DiskServiceHelper::updateProperty", __FILE__,
               __LINE__);
  RequireArgument(name, "name", "updateProperty", __LINE__);
  RequireArgument(value, "value", "updateProperty", __LINE__);
  long i = FindProperty(properties, name);
  if (i >= 0) {
    properties[i]->value(value);
  } else if (add) {
    addProperty(properties, name, value);
  }
}

void DiskServiceHelper::addProperty(PropertySeq& properties, const char* name, const char* value) {
  Tracer trace(SWLogger::s_default, nullptr, "DiskServiceHelper::addProperty", __FILE__, __LINE__);
  RequireArgument(name, "name", "addProperty", __LINE__);
  RequireArgument(value, "value", "addProperty", __LINE__);
  CORBA::ULong n = properties.length();
  properties.length(n + 1);
  properties[n] = buildProperty(name, value);
}

void DiskServiceHelper::deleteProperty(PropertySeq& properties, const char* name) {
  Tracer trace(SWLogger::s_default, nullptr, "DiskServiceHelper::deleteProperty", __FILE__,
               __LINE__);
  RequireArgument(name, "name", "deleteProperty", __LINE__);
  long i = FindProperty(properties, name);
  if (i >= 0) properties[i] = buildProperty("", "");
}

Property* DiskServiceHelper::buildProperty(const char* name, const char* value) {
  Tracer trace(SWLogger::s_default, nullptr, "DiskServiceHelper::buildProperty", __FILE__,
               __LINE__);
  OBV_Orvantic::Stashwell::DL::DiskService::Property* p =
      new (std::nothrow) OBV_Orvantic::Stashwell::DL::DiskService::Property();
  if (p == nullptr) {
    throwSvcException(ERROR_DOMAIN_DSM, kDsmErrorCreateFailed, "cannot create Property",
                      kHelperClass, "buildProperty", __LINE__);
  }
  p->name(name != nullptr ? name : "");
  p->value(value != nullptr ? value : "");
  return p;
}

namespace {

// A new object value of type T (an OBV class deriving from ObjSpec) with the
// given name, the invalid object id and zero type; raises on failure.
template <class T>
T* BuildObject(const char* name, const char* typeName, const char* method, int line) {
  Tracer trace(SWLogger::s_default, nullptr, method, __FILE__, __LINE__);
  T* object = new (std::nothrow) T();
  if (object == nullptr) {
    std::string text = std::string("cannot create ") + typeName;
    DiskServiceHelper::throwSvcException(ERROR_DOMAIN_DSM, kDsmErrorCreateFailed, text.c_str(),
                                         kHelperClass, method, line);
  }
  object->objId(kInvalidObjectId);
  object->type(0);
  object->name(name != nullptr ? name : "");
  return object;
}

}  // namespace

StorageServer* DiskServiceHelper::buildStorageServer(const char* name) {
  auto* server = BuildObject<OBV_Orvantic::Stashwell::DL::DiskService::StorageServer>(
      name, "StorageServer", "buildStorageServer", __LINE__);
  server->servertype("");
  return server;
}

DiskVolume* DiskServiceHelper::buildDiskVolume(const char* name) {
  auto* volume = BuildObject<OBV_Orvantic::Stashwell::DL::DiskService::DiskVolume>(
      name, "DiskVolume", "buildDiskVolume", __LINE__);
  volume->size(0);
  return volume;
}

Enclosure* DiskServiceHelper::buildEnclosure(const char* name) {
  return BuildObject<OBV_Orvantic::Stashwell::DL::DiskService::Enclosure>(
      name, "Enclosure", "buildEnclosure", __LINE__);
}

DiskGroup* DiskServiceHelper::buildDiskGroup(const char* name) {
  auto* group = BuildObject<OBV_Orvantic::Stashwell::DL::DiskService::DiskGroup>(
      name, "DiskGroup", "buildDiskGroup", __LINE__);
  group->size(0);
  return group;
}

DiskStorageUnit* DiskServiceHelper::buildDiskStorageUnit(const char* name) {
  return BuildObject<OBV_Orvantic::Stashwell::DL::DiskService::DiskStorageUnit>(
      name, "DiskStorageUnit", "buildDiskStorageUnit", __LINE__);
}

short DiskServiceHelper::identifyStuSubtype(const char* name) {
  if (name == nullptr) return 0;
  for (const SubtypeName& entry : kSubtypeNames) {
    if (strcmp(entry.name, name) == 0) return entry.subtype;
  }
  return kOtherSubtype;
}

const char* DiskServiceHelper::identifyStuServerType(int subtype) {
  for (const SubtypeName& entry : kSubtypeNames) {
    if (entry.subtype == subtype) return entry.name;
  }
  return kOtherServerType;
}

bool DiskServiceHelper::isKnownServerType(const char* name) {
  return InList(kKnownServerTypes, name);
}

bool DiskServiceHelper::isKnownExtServerType(const char* name) {
  return InList(kExtServerTypes, name);
}

bool DiskServiceHelper::isDeprecatedServerType(const char* name) {
  return InList(kDeprecatedServerTypes, name);
}

int DiskServiceHelper::mapError2Message(int domain, int code) {
  if (domain != ERROR_DOMAIN_DSM) return -1;
  long index = static_cast<long>(code) - kFirstDsmCode;
  if (index < 0 || index >= static_cast<long>(sizeof kDsmMessageNumbers / sizeof(int))) return -1;
  return kDsmMessageNumbers[index];
}

int DiskServiceHelper::ptoi(const char* text) { return ReadNumber<int>(text); }
long DiskServiceHelper::ptol(const char* text) { return ReadNumber<long>(text); }
long long DiskServiceHelper::ptoll(const char* text) { return ReadNumber<long long>(text); }
unsigned long long DiskServiceHelper::ptoull(const char* text) {
  return ReadNumber<unsigned long long>(text);
}
short DiskServiceHelper::ptos(const char* text) { return ReadNumber<short>(text); }

char* DiskServiceHelper::ex_str(const Framework::ServiceException& e) {
  Tracer trace(SWLogger::s_default, nullptr, "DiskServiceHelper::ex_str", __FILE__, __LINE__);
  std::string text = e._name();
  const DiskServiceExceptionDetails* details =
      DiskServiceExceptionDetails::_downcast(e.details.in());
  if (details != nullptr) {
    AppendOrigin(text, *details);
    text += " errorDomain=";
    int domain = details->errorDomain();
    if (domain >= ERROR_DOMAIN_DSM && domain <= ERROR_DOMAIN_STS) {
      text += kDomainNames[domain - ERROR_DOMAIN_DSM];
    }
    text += " errorCode=" + std::to_string(details->errorCode());
    AppendLabelled(text, " errorText=", details->errorText());
  }
  return CORBA::string_dup(text.c_str());
}

char* DiskServiceHelper::ex_str(const Framework::IllegalArgumentException& e) {
  Tracer trace(SWLogger::s_default, nullptr, "DiskServiceHelper::ex_str", __FILE__, __LINE__);
  std::string text = e._name();
  const Framework::IllegalArgumentExceptionDetails* details = e.details.in();
  if (details != nullptr) AppendOrigin(text, *details);
  return CORBA::string_dup(text.c_str());
}

void DiskServiceHelper::throwSvcException(int domain, int code, const char* text,
                                          const char* className, const char* method, int line) {
  OBV_Orvantic::Stashwell::DL::DiskService::DiskServiceExceptionDetails* details =
      new OBV_Orvantic::Stashwell::DL::DiskService::DiskServiceExceptionDetails();
  FillDetails(*details, "ServiceException", domain, code, text, className, method, line);
  details->errorCode(code);
  details->errorText(text != nullptr ? text : "");
  details->errorDomain(domain);
  throw Framework::ServiceException(details);  // the exception takes the reference
}

void DiskServiceHelper::throwIllArgException(int domain, int code, const char* text,
                                             const char* className, const char* method, int line,
                                             const char* argumentName) {
  OBV_Orvantic::Stashwell::TL::Framework::IllegalArgumentExceptionDetails* details =
      new OBV_Orvantic::Stashwell::TL::Framework::IllegalArgumentExceptionDetails();
  FillDetails(*details, "IllegalArgumentException", domain, code, text, className, method, line);
  details->argumentName(argumentName != nullptr ? argumentName : "");
  throw Framework::IllegalArgumentException(details);  // the exception takes the reference
}

}  // namespace DiskService
}  // namespace DL
}  // namespace Stashwell
}  // namespace Orvantic
