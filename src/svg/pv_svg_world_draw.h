// The SVG renderer: the world-draw sink through which each entity draws
// itself, writing one SVG element per primitive into the document's text as
// it goes (docs/svg-conventions.md gives the mapping).
//
// Coordinates: the caller pushes the world-to-SVG transform (WorldToSvg in
// render_model_space.h) as the first model transform; from then on the
// product of the pushed transforms maps model coordinates to SVG
// coordinates, in which the frame is the box (0, 0)-(width, height).
#ifndef FLOORXPORT_SVG_PV_SVG_WORLD_DRAW_H_
#define FLOORXPORT_SVG_PV_SVG_WORLD_DRAW_H_

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include <pugixml.hpp>

#include "host/world_draw.h"
#include "svg/pv_svg_context.h"
#include "svg/pv_svg_sub_entity_traits.h"
#include "svg/svg_document.h"
#include "svg/svg_options.h"
#include "svg/svg_path.h"
#include "svg/svg_style.h"

struct AcDbHatchPatternLine;

class PvSvgWorldDraw : public AcGiWorldDraw, public AcGiWorldGeometry {
 public:
  // Starts the document for `frame`. `database` (may be null) must outlive
  // the renderer; it gives the layer, linetype and block tables.
  PvSvgWorldDraw(AcDbDatabase* database, const fx::svg::Frame& frame, fx::svg::SvgOptions options);
  ~PvSvgWorldDraw() override;
  PvSvgWorldDraw(const PvSvgWorldDraw&) = delete;
  PvSvgWorldDraw& operator=(const PvSvgWorldDraw&) = delete;

  // AcGiWorldDraw.
  AcGiWorldGeometry& geometry() const override;
  AcGiSubEntityTraits& subEntityTraits() const override;
  AcGiContext* context() override { return &context_; }
  // Half a unit of the last decimal written, at least: far below what shows.
  double deviation() const override { return deviation_; }

  // AcGiWorldGeometry. Primitives on a layer that is off or frozen, or on
  // the import layer when it is left out, write nothing. None asks to stop.
  bool circle(const AcGePoint3d& center, double radius, const AcGeVector3d& normal) override;
  bool circularArc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                   const AcGeVector3d& start_vector, double sweep_angle,
                   AcGiArcType arc_type = kAcGiArcSimple) override;
  bool polyline(uint32_t count, const AcGePoint3d* points, const AcGeVector3d* normal = nullptr) override;
  bool polygon(uint32_t count, const AcGePoint3d* points) override;
  bool shell(uint32_t vertex_count, const AcGePoint3d* vertices, uint32_t face_list_size,
             const int32_t* face_list) override;
  bool text(const AcGePoint3d& position, const AcGeVector3d& normal, const AcGeVector3d& direction,
            const char* text, bool raw, const AcGiTextStyle& style) override;
  bool xline(const AcGePoint3d& first, const AcGePoint3d& second) override;
  bool ray(const AcGePoint3d& base, const AcGePoint3d& through) override;

  void pushModelTransform(const AcGeMatrix3d& transform) override;
  void popModelTransform() override;
  AcGeMatrix3d getModelToWorldTransform() const override;

  // With block optimisation, writes the insert as a <use> of its block's
  // definition (written first when new) and draws its attributes; false
  // (the host draws the block) without it, for MINSERT arrays and for
  // inserts whose transform is not a rotation and translation after its
  // scaling. An insert on a frozen layer, and one of a block that is being
  // written already (a block that inserts itself), draws nothing.
  bool beginBlockReference(const AcDbBlockReference& insert, const AcGeMatrix3d& transform) override;
  void endBlockReference(const AcDbBlockReference& insert) override;
  // Always draws the hatch itself (or nothing: hidden, left out, or an
  // invalid loop, which prints "Invalid hatch loop!").
  bool hatch(const AcDbHatch& hatch, const std::vector<AcDbHatchLoop>& loops,
             const AcGeMatrix3d& plane_to_model) override;

  // The coordinate decimals of this frame (fx::svg::CoordinateDecimals).
  int decimals() const { return decimals_; }
  // The layer "!VANTORYIMPORT"; null when the drawing has none.
  AcDbObjectId importLayerId() const { return styles_.import_layer(); }
  // The document so far, parsed as a tree (which writes the same text).
  const pugi::xml_document& document() const;
  // Hands the document over, as text or as a tree; the renderer must not
  // draw afterwards.
  std::unique_ptr<fx::svg::SvgText> takeText() { return std::move(text_); }
  std::unique_ptr<pugi::xml_document> takeDocument();
  // Block definitions written and hatch clip paths made so far.
  int definitionCount() const { return definition_count_; }
  unsigned hatchCount() const { return hatch_count_; }

 private:
  // A block definition being written.
  struct Definition {
    fx::svg::XmlElement group;
    size_t slot = 0;  // in the document's definitions
    AcDbObjectId block;
    AcGeMatrix3d to_svg;  // its coordinates to SVG coordinates, for the insert it is written for
    fx::svg::Box2 bounds;
    bool inherits = false;  // consults its insert's properties
    bool placed = false;    // depends on where its insert is (an infinite line)
  };
  struct Written {
    int number = -1;        // "CB_%i"
    bool inherits = false;  // kept per set of inherited properties too
    bool placed = false;    // written for one insert only, not kept
    fx::svg::Box2 bounds;   // in its own coordinates; empty: draws nothing
  };

  const fx::svg::ResolvedStyle& CurrentStyle();
  void PushInherited(const fx::svg::InheritedStyle& style);
  void PopInherited();
  fx::svg::Point2 Out(const AcGePoint3d& p) const;
  fx::svg::Point2 OutVector(const AcGeVector3d& v) const;
  // Whether an element with these bounds is written: inside a definition
  // always (its bounds grow), else when it meets the frame.
  bool Keep(const fx::svg::Box2& box);
  fx::svg::XmlElement Element(const char* name);
  // stroke, stroke-width, dashes, fill (when `filled`), then the ss: attributes.
  void Stroke(const fx::svg::XmlElement& node, const fx::svg::ResolvedStyle& style, bool filled);
  void ProgramAttributes(const fx::svg::XmlElement& node, const fx::svg::ResolvedStyle& style);
  // "#RRGGBB" of `rgb`, kept while the colour stays the same.
  const std::string& ColorOf(uint32_t rgb);
  bool Points(const char* name, const std::vector<fx::svg::Point2>& points, bool filled);
  bool InfiniteLine(const AcGePoint3d& base, const AcGePoint3d& through, bool both_ways);

  bool BeginInline(const fx::svg::ResolvedStyle& style);
  bool UseDefinition(const AcDbBlockReference& insert, const AcGeMatrix3d& transform,
                     const fx::svg::ResolvedStyle& style);
  Written WriteDefinition(AcDbObjectId block, const AcGeMatrix3d& scaling, const AcGeMatrix3d& to_svg,
                          const fx::svg::ResolvedStyle& style);
  void DrawAttributes(const AcDbBlockReference& insert, const fx::svg::ResolvedStyle& style);

  bool LoopPath(const AcDbHatchLoop& loop, const AcGeMatrix3d& to_output,
                std::vector<std::vector<fx::svg::Point2>>& polygons, fx::svg::Box2& box);
  bool PatternPath(const std::vector<AcDbHatchPatternLine>& families,
                   const std::vector<std::vector<fx::svg::Point2>>& polygons, const AcGeMatrix3d& to_output);

  AcDbDatabase* database_;
  fx::svg::Frame frame_;
  fx::svg::SvgOptions options_;
  int decimals_;
  double deviation_;
  double shortest_dash_;           // a unit of the last decimal written
  double drawing_linetype_scale_;  // $LTSCALE
  std::unique_ptr<fx::svg::SvgText> text_;
  mutable std::unique_ptr<pugi::xml_document> parsed_;  // document()
  mutable PvSvgSubEntityTraits traits_;
  PvSvgContext context_;
  fx::svg::StyleResolver styles_;

  std::vector<AcGeMatrix3d> transforms_;  // model to output, cumulative; [0] identity
  std::vector<fx::svg::InheritedStyle> inherited_;  // [0] the top level
  std::vector<size_t> insert_depths_;  // transforms_.size() at each insert drawn by the host
  std::vector<fx::svg::XmlElement> parents_;
  std::vector<Definition> writing_;
  std::unordered_map<std::string, Written> written_;
  int definition_count_ = 0;
  unsigned hatch_count_ = 0;

  // The last resolved style, while neither the traits nor the inherited
  // styles change.
  fx::svg::ResolvedStyle style_;
  uint64_t style_traits_ = ~uint64_t{0};
  uint64_t style_inherited_ = ~uint64_t{0};
  uint64_t inherited_generation_ = 0;
  bool style_inherits_ = false;

  fx::svg::PathWriter path_;
  std::string dash_array_, dash_offset_;
  // The texts of the last colour and stroke width written, and what they are of.
  uint32_t color_rgb_ = 0;
  std::string color_text_;
  int width_weight_ = 0;
  std::string width_text_;
  // The font family of the last face written.
  std::string family_face_, family_text_;
};

#endif  // FLOORXPORT_SVG_PV_SVG_WORLD_DRAW_H_
