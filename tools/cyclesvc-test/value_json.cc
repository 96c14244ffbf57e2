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

// The values `make` builds from the elements of a JSON array (each a new
// reference the sequence takes); an absent array gives an empty sequence.
template <class Seq, class Make>
Seq SequenceFromJson(json_t* array, Make make) {
  Seq sequence;
  sequence.length(static_cast<CORBA::ULong>(json_array_size(array)));
  for (CORBA::ULong i = 0; i < sequence.length(); ++i) sequence[i] = make(json_array_get(array, i));
  return sequence;
}

Framework::ExpansionAttribute* ExpansionFromJson(json_t* name) {
  OBVFramework::ExpansionAttribute* attribute = new OBVFramework::ExpansionAttribute();
  const char* text = json_string_value(name);
  attribute->name(text != nullptr ? text : "");
  return attribute;
}

void FillBase(Framework::BaseObject& base, json_t* object) {
  base.expansion(SequenceFromJson<Framework::ExpansionAttributeSeq>(
      json_object_get(object, "expansion"), ExpansionFromJson));
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
  message->inserts(SequenceFromJson<Framework::MessageItemSeq>(json_object_get(object, "inserts"),
                                                               InsertFromJson));
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
  details.rootCauses(SequenceFromJson<Framework::ServiceExceptionDetailsSeq>(
      json_object_get(object, "rootCauses"), DetailsFromJson));
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
  volume->properties(SequenceFromJson<DiskService::PropertySeq>(
      json_object_get(object, "properties"), PropertyFromJson));
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
