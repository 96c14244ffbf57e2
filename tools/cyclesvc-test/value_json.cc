// JSON to the values the test service sends.
#include "tools/cyclesvc-test/value_json.h"

#include <cstring>

#include "remote/idl/ErrorCodeExceptionDetails.hh"
#include "remote/idl/NumericMessageItem.hh"
#include "remote/idl/StringMessageItem.hh"

namespace cyclesvc_test {

namespace {

namespace Framework = Orvantic::Stashwell::TL::Framework;
namespace DiskService = Orvantic::Stashwell::DL::DiskService;
namespace DssSVC = Orvantic::Stashwell::StorageServiceMgmt::DssSVC;
namespace OBVFramework = OBV_Orvantic::Stashwell::TL::Framework;
namespace OBVDiskService = OBV_Orvantic::Stashwell::DL::DiskService;

const char* Str(json_t* object, const char* key) {
  const char* value = json_string_value(json_object_get(object, key));
  return value != nullptr ? value : "";
}

long long Int(json_t* object, const char* key) {
  json_t* value = json_object_get(object, key);
  return json_is_integer(value) ? json_integer_value(value) : 0;
}

bool Is(const char* a, const char* b) { return strcmp(a, b) == 0; }

void FillBase(Framework::BaseObject& base, json_t* object) {
  json_t* names = json_object_get(object, "expansion");
  Framework::ExpansionAttributeSeq expansion;
  expansion.length(static_cast<CORBA::ULong>(json_array_size(names)));
  for (CORBA::ULong i = 0; i < expansion.length(); ++i) {
    OBVFramework::ExpansionAttribute* attribute = new OBVFramework::ExpansionAttribute();
    const char* name = json_string_value(json_array_get(names, i));
    attribute->name(name != nullptr ? name : "");
    expansion[i] = attribute;
  }
  base.expansion(expansion);
}

Framework::MessageItem* InsertFromJson(json_t* object) {
  if (!json_is_object(object)) return nullptr;
  const char* type = Str(object, "type");
  Framework::MessageItem* item;
  if (Is(type, "NumericMessageItem")) {
    OBVFramework::NumericMessageItem* numeric = new OBVFramework::NumericMessageItem();
    numeric->numericValue(Int(object, "numericValue"));
    item = numeric;
  } else if (Is(type, "MessageItem")) {
    item = new OBVFramework::MessageItem();
  } else {
    OBVFramework::StringMessageItem* text = new OBVFramework::StringMessageItem();
    text->stringValue(Str(object, "stringValue"));
    item = text;
  }
  FillBase(*item, object);
  item->position(static_cast<CORBA::Long>(Int(object, "position")));
  item->name(Str(object, "name"));
  return item;
}

Framework::Message* MessageFromJson(json_t* object) {
  if (!json_is_object(object)) return nullptr;
  OBVFramework::Message* message = new OBVFramework::Message();
  FillBase(*message, object);
  json_t* items = json_object_get(object, "inserts");
  Framework::MessageItemSeq inserts;
  inserts.length(static_cast<CORBA::ULong>(json_array_size(items)));
  for (CORBA::ULong i = 0; i < inserts.length(); ++i) inserts[i] = InsertFromJson(json_array_get(items, i));
  message->inserts(inserts);
  message->textId(static_cast<CORBA::Long>(Int(object, "textId")));
  message->timeStamp(Int(object, "timeStamp"));
  message->originatorId(static_cast<CORBA::Long>(Int(object, "originatorId")));
  return message;
}

void FillDetails(Framework::ServiceExceptionDetails& details, json_t* object) {
  FillBase(details, object);
  details.originatingService(Str(object, "originatingService"));
  details.exceptionClassName(Str(object, "exceptionClassName"));
  Framework::Message_var message = MessageFromJson(json_object_get(object, "message"));
  details.message(message.in());
  details.originatingHost(Str(object, "originatingHost"));
  details.originatingClass(Str(object, "originatingClass"));
  details.originatingMethod(Str(object, "originatingMethod"));
  json_t* causes = json_object_get(object, "rootCauses");
  Framework::ServiceExceptionDetailsSeq rootCauses;
  rootCauses.length(static_cast<CORBA::ULong>(json_array_size(causes)));
  for (CORBA::ULong i = 0; i < rootCauses.length(); ++i) {
    rootCauses[i] = DetailsFromJson(json_array_get(causes, i));
  }
  details.rootCauses(rootCauses);
  details.timeStamp(Int(object, "timeStamp"));
}

DiskService::Property* PropertyFromJson(json_t* pair) {
  if (!json_is_array(pair)) return nullptr;
  OBVDiskService::Property* property = new OBVDiskService::Property();
  const char* name = json_string_value(json_array_get(pair, 0));
  const char* value = json_string_value(json_array_get(pair, 1));
  property->name(name != nullptr ? name : "");
  property->value(value != nullptr ? value : "");
  return property;
}

DiskService::DiskVolume* VolumeFromJson(json_t* object) {
  if (!json_is_object(object)) return nullptr;
  OBVDiskService::DiskVolume* volume = new OBVDiskService::DiskVolume();
  FillBase(*volume, object);
  volume->objId(Str(object, "objId"));
  volume->type(static_cast<CORBA::Long>(Int(object, "type")));
  json_t* pairs = json_object_get(object, "properties");
  DiskService::PropertySeq properties;
  properties.length(static_cast<CORBA::ULong>(json_array_size(pairs)));
  for (CORBA::ULong i = 0; i < properties.length(); ++i) {
    properties[i] = PropertyFromJson(json_array_get(pairs, i));
  }
  volume->properties(properties);
  volume->name(Str(object, "name"));
  volume->size(Int(object, "size"));
  return volume;
}

}  // namespace

Framework::ServiceExceptionDetails* DetailsFromJson(json_t* object) {
  if (!json_is_object(object)) return nullptr;
  const char* type = Str(object, "type");
  Framework::ServiceExceptionDetails* details;
  if (Is(type, "ErrorCodeExceptionDetails")) {
    OBVFramework::ErrorCodeExceptionDetails* coded = new OBVFramework::ErrorCodeExceptionDetails();
    coded->errorCode(static_cast<CORBA::Long>(Int(object, "errorCode")));
    details = coded;
  } else if (Is(type, "IllegalArgumentExceptionDetails")) {
    return IllegalArgumentDetailsFromJson(object);
  } else if (Is(type, "DiskServiceExceptionDetails")) {
    OBVDiskService::DiskServiceExceptionDetails* disk =
        new OBVDiskService::DiskServiceExceptionDetails();
    disk->errorCode(static_cast<CORBA::Long>(Int(object, "errorCode")));
    disk->errorText(Str(object, "errorText"));
    disk->errorDomain(static_cast<CORBA::Long>(Int(object, "errorDomain")));
    details = disk;
  } else {
    details = new OBVFramework::ServiceExceptionDetails();
  }
  FillDetails(*details, object);
  return details;
}

Framework::IllegalArgumentExceptionDetails* IllegalArgumentDetailsFromJson(json_t* object) {
  if (!json_is_object(object)) return nullptr;
  OBVFramework::IllegalArgumentExceptionDetails* details =
      new OBVFramework::IllegalArgumentExceptionDetails();
  FillDetails(*details, object);
  details->argumentName(Str(object, "argumentName"));
  return details;
}

DiskService::DiskVolumeInfo* VolumeInfoFromJson(json_t* object) {
  if (!json_is_object(object)) return nullptr;
  OBVDiskService::DiskVolumeInfo* info = new OBVDiskService::DiskVolumeInfo();
  FillBase(*info, object);
  info->capacity(Int(object, "capacity"));
  info->stsState(static_cast<CORBA::Long>(Int(object, "stsState")));
  DiskService::DiskVolume_var volume = VolumeFromJson(json_object_get(object, "volume"));
  info->volume(volume.in());
  info->servertype(Str(object, "servertype"));
  info->storage_server_name(Str(object, "storage_server_name"));
  info->state(static_cast<CORBA::Long>(Int(object, "state")));
  info->potential_free(Int(object, "potential_free"));
  info->name(Str(object, "name"));
  info->used(Int(object, "used"));
  return info;
}

DssSVC::SLP_CancellableImageSeq* CancellableImagesFromJson(json_t* array) {
  DssSVC::SLP_CancellableImageSeq* images = new DssSVC::SLP_CancellableImageSeq();
  images->length(static_cast<CORBA::ULong>(json_array_size(array)));
  for (CORBA::ULong i = 0; i < images->length(); ++i) {
    json_t* object = json_array_get(array, i);
    DssSVC::SLP_CancellableImage& image = (*images)[i];
    image.backupid = Str(object, "backupid");
    image.copyNumber = static_cast<CORBA::Long>(Int(object, "copyNumber"));
    image.slpName = Str(object, "slpName");
    image.slpVersion = static_cast<CORBA::Long>(Int(object, "slpVersion"));
    image.imageState = static_cast<CORBA::Long>(Int(object, "imageState"));
    image.copyState = static_cast<CORBA::Long>(Int(object, "copyState"));
    image.expireTime = static_cast<CORBA::Long>(Int(object, "expireTime"));
    image.expirationType = static_cast<CORBA::Long>(Int(object, "expirationType"));
  }
  return images;
}

}  // namespace cyclesvc_test
