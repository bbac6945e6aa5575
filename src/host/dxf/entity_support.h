// Helpers shared by the typed entity classes of the headless host: where an
// entity's own tags are, the reads the DXF layouts have in common (normals,
// angles, text), the traits an entity sets before it draws, and the hook
// through which drawing reports what it had to work around.
#ifndef FLOORXPORT_HOST_DXF_ENTITY_SUPPORT_H_
#define FLOORXPORT_HOST_DXF_ENTITY_SUPPORT_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <functional>
#include <string>
#include <string_view>

#include "host/db_object.h"
#include "host/dxf/imp_object.h"
#include "host/dxf/tag_list.h"

class AcGiTextStyle;
class AcGiWorldDraw;

namespace fx::dxf {

using Range = TagList::Range;

// The tags of subclass `marker` of a record (its whole body in files before
// R13), ending before an embedded object (group 101), whose tags repeat
// codes of the entity's own. A record that has markers but not this one
// answers everything after its AcDbEntity data.
Range DataOf(const TagList& tags, std::string_view marker);

// Group 210, of unit length; +Z when absent or of zero length.
AcGeVector3d ReadNormal(const TagList& tags, Range range);
// Sets group 210 in `range` to `normal` made unit length; a +Z normal is
// left out when the entity has none, as drawing files do.
void WriteNormal(TagList& tags, Range range, const AcGeVector3d& normal);
// An angle the file stores in degrees, in radians.
double ReadDegrees(const TagList& tags, int code, Range range, double fallback = 0);
// A name (layer, block, style) as stored, without padding blanks.
std::string_view ReadName(const TagList& tags, int code, Range range,
                          std::string_view fallback = {});

// Object coordinates of the plane of `normal` (arbitrary-axis frame) to
// world coordinates and back.
AcGePoint3d OcsToWorld(const AcGeVector3d& normal, const AcGePoint3d& point);
AcGePoint3d WorldToOcs(const AcGeVector3d& normal, const AcGePoint3d& point);

// A stored string value as UTF-8: the drawing's code page, "\U+" escapes
// and caret escapes ("^J") decoded. EncodeText is the reverse, for setters.
std::string DecodeText(const AcDbObject& object, std::string_view stored);
std::string EncodeText(const AcDbObject& object, std::string_view utf8);

// The tags of a new entity in the R2000+ layout: 0 `type`, 100 AcDbEntity,
// 8 0, 100 `subclass`; the type's own tags are appended after them. The
// database adds the handle and owner and strips markers for R12 files.
TagList NewEntityTags(std::string_view type, std::string_view subclass);
void AppendDouble(TagList& tags, int code, double value);
void AppendInt(TagList& tags, int code, int64_t value);
void AppendPoint(TagList& tags, int code, const AcGePoint3d& point);

// The name of a symbol table record (layer, block, style) as its drawing
// stores it, for a reference to it; empty when the record cannot be opened.
std::string StoredSymbolName(AcDbObjectId record_id);

// The font of a text style record for drawing (file, typeface, bold,
// italic, vertical); the rest of `style` is left as it is. Nothing changes
// when the record cannot be opened.
void LoadTextStyle(AcDbObjectId style_id, AcGiTextStyle& style);
// The width factor of a text style record; 1 when it cannot be opened.
double TextStyleWidthFactor(AcDbObjectId style_id);

// Sets the traits of `entity` as it stores them (by-layer and by-block
// values are passed on unresolved: resolving them is the sink's job), with
// no fill and the entity's thickness (group 39, 0 when absent).
void SetEntityTraits(const AcDbEntity& entity, AcGiWorldDraw& draw);

// The deviation a curve approximation may have in the current model
// coordinates: the sink's world deviation divided by the largest stretch of
// the model transform.
double ModelDeviation(const AcGiWorldDraw& draw);

// Reports a problem that drawing or extents worked around (a block that
// inserts itself, nesting deeper than the limit, a hatch pattern too dense to
// draw). Without a handler the message is dropped: host code never prints.
// The handler belongs to the process; set it before drawing starts.
using DrawWarningHandler = std::function<void(const std::string& message)>;
void SetDrawWarningHandler(DrawWarningHandler handler);
void ReportDrawWarning(std::string message);

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_ENTITY_SUPPORT_H_
