// The world-draw interfaces: an entity draws itself by emitting primitives
// into a sink, after setting the traits (colour, layer, linetype,
// lineweight) that apply to them. A block insert pushes its transform and
// draws the block's entities; the sink may take over a whole insert or a
// whole hatch through the two hooks at the end of AcGiWorldGeometry.
#ifndef FLOORXPORT_HOST_WORLD_DRAW_H_
#define FLOORXPORT_HOST_WORLD_DRAW_H_

#include <cstdint>
#include <string>
#include <vector>

#include "host/color.h"
#include "host/geometry.h"
#include "host/ids.h"

class AcDbBlockReference;
class AcDbDatabase;
class AcDbHatch;
struct AcDbHatchLoop;

enum AcGiArcType { kAcGiArcSimple = 0, kAcGiArcSector = 1, kAcGiArcChord = 2 };
enum AcGiFillType { kAcGiFillAlways = 1, kAcGiFillNever = 2 };
enum AcGiRegenType { kAcGiStandardDisplay = 2, kAcGiHideOrShadeCommand = 3, kAcGiForExplode = 5 };

// How a text is to be drawn: the style's font and its modifiers.
class AcGiTextStyle {
 public:
  std::string typeface;    // TrueType face name; empty when only a font file is known
  std::string file_name;   // the style's font file ("txt", "arial.ttf")
  bool bold = false;
  bool italic = false;
  bool vertical = false;
  bool underlined = false;
  double text_size = 0;    // height
  double x_scale = 1;      // width factor
  double obliquing_angle = 0;
};

class AcGiSubEntityTraits {
 public:
  virtual ~AcGiSubEntityTraits() = default;
  virtual void setColor(uint16_t aci) = 0;
  virtual void setTrueColor(const AcCmEntityColor& color) = 0;
  virtual void setLayer(AcDbObjectId layer) = 0;
  virtual void setLineType(AcDbObjectId linetype) = 0;
  virtual void setLineTypeScale(double scale) = 0;
  virtual void setLineWeight(AcDb::LineWeight weight) = 0;
  virtual void setFillType(AcGiFillType fill) = 0;
  virtual void setThickness(double thickness) = 0;

  virtual uint16_t color() const = 0;
  virtual AcCmEntityColor trueColor() const = 0;
  virtual AcDbObjectId layerId() const = 0;
  virtual AcDbObjectId lineTypeId() const = 0;
  virtual double lineTypeScale() const = 0;
  virtual AcDb::LineWeight lineWeight() const = 0;
  virtual AcGiFillType fillType() const = 0;
};

class AcGiContext {
 public:
  virtual ~AcGiContext() = default;
  virtual AcDbDatabase* database() const = 0;
  virtual bool isPsOut() const { return false; }
  virtual bool isPlotGeneration() const { return false; }
  virtual bool isBoundaryClipping() const { return false; }
};

// Primitives in the current model coordinates; the transforms pushed with
// pushModelTransform map them to world coordinates (their product is
// getModelToWorldTransform). Each returns true when drawing should stop.
class AcGiWorldGeometry {
 public:
  virtual ~AcGiWorldGeometry() = default;

  virtual bool circle(const AcGePoint3d& center, double radius, const AcGeVector3d& normal) = 0;
  // An arc of `sweep_angle` radians counter-clockwise about `normal`,
  // starting in direction `start_vector` from the centre.
  virtual bool circularArc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                           const AcGeVector3d& start_vector, double sweep_angle,
                           AcGiArcType arc_type = kAcGiArcSimple) = 0;
  virtual bool polyline(uint32_t count, const AcGePoint3d* points,
                        const AcGeVector3d* normal = nullptr) = 0;
  // A closed, filled area when the fill type is kAcGiFillAlways.
  virtual bool polygon(uint32_t count, const AcGePoint3d* points) = 0;
  // Faces as in a shell: for each face the vertex count followed by the
  // vertex indexes; a negative count marks a hole.
  virtual bool shell(uint32_t vertex_count, const AcGePoint3d* vertices, uint32_t face_list_size,
                     const int32_t* face_list) = 0;
  // One line of text. `direction` is the baseline direction, the text's up
  // direction follows from the normal; `raw` text is drawn as is (no
  // %%-codes); the style gives font, height, width factor and obliquing.
  virtual bool text(const AcGePoint3d& position, const AcGeVector3d& normal,
                    const AcGeVector3d& direction, const char* text, bool raw,
                    const AcGiTextStyle& style) = 0;
  virtual bool xline(const AcGePoint3d& first, const AcGePoint3d& second) = 0;
  virtual bool ray(const AcGePoint3d& base, const AcGePoint3d& through) = 0;

  virtual void pushModelTransform(const AcGeMatrix3d& transform) = 0;
  virtual void popModelTransform() = 0;
  virtual AcGeMatrix3d getModelToWorldTransform() const = 0;

  // Hooks. Before an insert draws its block: return true when the sink has
  // drawn the insert itself (for example as a reference to a reusable block
  // definition); the host then skips the block's entities. endBlockReference
  // follows only when beginBlockReference returned false.
  virtual bool beginBlockReference(const AcDbBlockReference& insert, const AcGeMatrix3d& transform) {
    (void)insert; (void)transform;
    return false;
  }
  virtual void endBlockReference(const AcDbBlockReference& insert) { (void)insert; }
  // Before a hatch draws its fill: return true when the sink has drawn the
  // hatch from its boundary loops (plane coordinates, mapped to model
  // coordinates by `plane_to_model`) and pattern; the host then draws nothing.
  virtual bool hatch(const AcDbHatch& hatch, const std::vector<AcDbHatchLoop>& loops,
                     const AcGeMatrix3d& plane_to_model) {
    (void)hatch; (void)loops; (void)plane_to_model;
    return false;
  }
};

class AcGiWorldDraw {
 public:
  virtual ~AcGiWorldDraw() = default;
  virtual AcGiWorldGeometry& geometry() const = 0;
  virtual AcGiSubEntityTraits& subEntityTraits() const = 0;
  virtual AcGiContext* context() = 0;
  virtual AcGiRegenType regenType() const { return kAcGiStandardDisplay; }
  virtual bool regenAbort() const { return false; }
  // The largest distance a curve approximation may deviate from the curve,
  // in world units.
  virtual double deviation() const = 0;
};

#endif  // FLOORXPORT_HOST_WORLD_DRAW_H_
