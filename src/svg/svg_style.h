// Resolving the traits an entity draws with into the colour, width, dash
// pattern and layer written in the SVG: by layer from the layer table
// record, by block from the insert that draws the block (its own
// properties resolved in turn), and layer "0" inside a block standing for
// the insert's layer, as the editor draws them.
#ifndef FLOORXPORT_SVG_SVG_STYLE_H_
#define FLOORXPORT_SVG_SVG_STYLE_H_

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/color.h"
#include "host/ids.h"
#include "svg/pv_svg_sub_entity_traits.h"
#include "svg/svg_options.h"

class AcDbDatabase;

namespace fx::svg {

// What the renderer needs of a layer table record.
struct LayerStyle {
  std::string name;
  uint32_t rgb = 0;
  int weight = AcDb::kLnWtByLwDefault;
  AcDbObjectId linetype;
  bool off = false;
  bool frozen = false;
  bool import = false;  // the occupant import layer "!VANTORYIMPORT"
  bool left_out = false;  // not among the exported layers
  std::optional<long> lid;
};

// The properties an insert (or a dimension) hands down to the entities of
// its block: its own, resolved. At the top level: the foreground colour,
// the default lineweight, a continuous line and no layer.
struct InheritedStyle {
  uint32_t rgb = 0;
  int weight = AcDb::kLnWtByLwDefault;
  AcDbObjectId linetype;  // a linetype record; null for continuous
  AcDbObjectId layer;     // the insert's effective layer; null at the top
  // The block definition being written whose insert this is (an index the
  // renderer gives it), or -1: what consults this style makes that
  // definition depend on its insert.
  int definition = -1;
};

struct ResolvedStyle {
  bool hidden = false;  // on a layer that is off or frozen, or left out
  // On a frozen layer or one left out: an insert draws none of its block,
  // whatever layers the block's entities are on.
  bool hides_block = false;
  uint32_t rgb = 0;
  int weight = AcDb::kLnWtByLwDefault;
  AcDbObjectId linetype;
  double linetype_scale = 1;
  AcDbObjectId layer;  // the effective layer
  const char* color_source = "byLayer";  // ss:color
  const char* weight_source = "byLayer"; // ss:lw
};

class StyleResolver {
 public:
  // Reads the layer "0" and "!VANTORYIMPORT" ids; `database` may be null
  // (then every layer looks like a default layer "0").
  StyleResolver(AcDbDatabase* database, const SvgOptions& options);

  InheritedStyle Root() const;
  // `inherited` is set true when the result depends on `context`.
  ResolvedStyle Resolve(const PvSvgSubEntityTraits& traits, const InheritedStyle& context,
                        bool& inherited);
  static InheritedStyle HandDown(const ResolvedStyle& style, int definition);

  const LayerStyle& Layer(AcDbObjectId layer);
  // The dash pattern of a linetype record (positive dash, negative gap, 0
  // dot); empty for continuous, a missing record, or by layer / by block.
  const std::vector<double>& Dashes(AcDbObjectId linetype);

  AcDbObjectId zero_layer() const { return zero_layer_; }
  AcDbObjectId import_layer() const { return import_layer_; }

  // The rgb of a colour that is neither by layer nor by block.
  uint32_t Rgb(const AcCmEntityColor& color) const;

 private:
  enum class LinetypeKind { kByLayer, kByBlock, kOwn };
  struct Linetype {
    LinetypeKind kind = LinetypeKind::kOwn;
    std::vector<double> dashes;
  };
  const Linetype& LinetypeOf(AcDbObjectId linetype);

  const SvgOptions& options_;
  AcDbObjectId zero_layer_;
  AcDbObjectId import_layer_;
  std::unordered_map<AcDbObjectId, LayerStyle> layers_;
  std::unordered_map<AcDbObjectId, Linetype> linetypes_;
};

// stroke-dasharray and stroke-dashoffset of `dashes` scaled by `scale`, in
// output units. False, for a continuous line, when there are no dashes or
// the pattern would be shorter than `shortest` (too dense to show).
bool DashAttributes(const std::vector<double>& dashes, double scale, double shortest,
                    std::string& array, std::string& offset);

}  // namespace fx::svg

#endif  // FLOORXPORT_SVG_SVG_STYLE_H_
