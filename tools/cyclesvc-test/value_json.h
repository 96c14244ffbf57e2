// Values the test service sends, built from the JSON of a scenario:
// exception details (with nested root causes), disk volume information and
// cancellable-image lists. docs/remote.md gives the JSON forms. Absent
// members are 0 or empty texts.
#ifndef TOOLS_CYCLESVC_TEST_VALUE_JSON_H_
#define TOOLS_CYCLESVC_TEST_VALUE_JSON_H_

#include <jansson.h>

#include "remote/idl/DiskService.hh"
#include "remote/idl/IllegalArgumentExceptionDetails.hh"
#include "remote/idl/dssvc.hh"

namespace cyclesvc_test {

// Details of the kind named by "type" (ServiceExceptionDetails,
// ErrorCodeExceptionDetails, IllegalArgumentExceptionDetails or
// DiskServiceExceptionDetails; the first when absent), or null for a null or
// absent object. The caller owns the reference.
Orvantic::Stashwell::TL::Framework::ServiceExceptionDetails* DetailsFromJson(json_t* object);
// Always IllegalArgumentExceptionDetails, whatever "type" says; null for a
// null or absent object.
Orvantic::Stashwell::TL::Framework::IllegalArgumentExceptionDetails* IllegalArgumentDetailsFromJson(
    json_t* object);

// A DiskVolumeInfo, or null for a null or absent object. Caller owns it.
Orvantic::Stashwell::DL::DiskService::DiskVolumeInfo* VolumeInfoFromJson(json_t* object);

// The elements of a JSON array; an absent array gives an empty sequence.
Orvantic::Stashwell::StorageServiceMgmt::DssSVC::SLP_CancellableImageSeq* CancellableImagesFromJson(
    json_t* array);

}  // namespace cyclesvc_test

#endif  // TOOLS_CYCLESVC_TEST_VALUE_JSON_H_
