// Makes the typed object for an open record: the class follows the record's
// type and where it lives.
#ifndef FLOORXPORT_HOST_DXF_OBJECT_FACTORY_H_
#define FLOORXPORT_HOST_DXF_OBJECT_FACTORY_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <memory>
#include <string_view>

#include "host/db_object.h"
#include "host/dxf/db_stub.h"

namespace fx::dxf {

// The type of a record from its 0-tag's value (without blanks): "LINE" is kLine.
RecordType RecordTypeOf(std::string_view type);

// `type` is the record's (RecordTypeOf its 0-tag); `table` names the table of a table record
// ("LAYER"), empty otherwise.
AcDbObject* MakeTypedObject(std::unique_ptr<AcDbImpObject> imp, StubKind kind, RecordType type,
                            std::string_view table);

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_OBJECT_FACTORY_H_
