// Writers of individual DXF entities (R2018 group codes and subclass markers).
#pragma once

#include <span>
#include <string_view>

#include "dxf_stream.h"
#include "geometry.h"
#include "handles.h"

namespace floorgen {

inline constexpr int kColorByBlock = 0;
inline constexpr int kColorByLayer = 256;

// Writes the part every entity starts with and hands out its handle. Entities
// are owned by the block record of the block (or layout) they belong to.
class EntityWriter {
 public:
  EntityWriter(DxfStream& out, HandleAllocator& handles, Handle owner)
      : out_(out), handles_(handles), owner_(owner) {}

  // Entity type, new handle, owner, layer and colour (omitted if by layer);
  // returns the new handle.
  Handle Begin(std::string_view type, std::string_view layer, int color = kColorByLayer);
  // The same for an entity owned by another entity (attributes and SEQEND of an insert).
  Handle BeginOwnedBy(Handle owner, std::string_view type, std::string_view layer);

  DxfStream& Out() { return out_; }

 private:
  DxfStream& out_;
  HandleAllocator& handles_;
  Handle owner_;
};

void WriteLine(EntityWriter& writer, std::string_view layer, Segment segment, int color = kColorByLayer);
// Counter-clockwise arc from `start_degrees` to `end_degrees`.
void WriteArc(EntityWriter& writer, std::string_view layer, Point center, double radius, double start_degrees,
              double end_degrees);
void WriteClosedPolyline(EntityWriter& writer, std::string_view layer, std::span<const Point> vertices);
void WritePoint(EntityWriter& writer, std::string_view layer, Point point);
// Filled triangle, given as the four corners of a SOLID whose last two coincide.
void WriteFilledTriangle(EntityWriter& writer, std::string_view layer, Point a, Point b, Point c,
                         int color = kColorByLayer);

// Single-line text centred (horizontally and vertically) on `center`.
void WriteCenteredText(EntityWriter& writer, std::string_view layer, Point center, double height,
                       std::string_view text);

enum class MTextAttachment { kTopLeft = 1, kBottomCenter = 8 };

// Multi-line text; `text` may contain paragraph breaks written as "\P".
void WriteMText(EntityWriter& writer, std::string_view layer, int color, Point insertion,
                MTextAttachment attachment, double height, double reference_width, std::string_view text);

// Attribute definition of a block, centred on `center`.
void WriteAttributeDefinition(EntityWriter& writer, std::string_view tag, std::string_view prompt,
                              Point center, double height);

struct AttributeValue {
  std::string_view tag;
  std::string_view value;
  Point center;  // in drawing coordinates
  double height = 0.0;
};

void WriteInsert(EntityWriter& writer, std::string_view layer, std::string_view block, Point position,
                 double rotation_degrees, double scale);
// Block reference followed by its attributes and the closing SEQEND.
void WriteInsertWithAttributes(EntityWriter& writer, std::string_view layer, std::string_view block,
                               Point position, std::span<const AttributeValue> attributes);

}  // namespace floorgen
