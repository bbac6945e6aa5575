#include "svg/svg_style.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <string_view>

#include "host/database.h"
#include "svg/svg_number.h"

namespace fx::svg {
namespace {

constexpr const char* kImportLayerName = "!VANTORYIMPORT";
constexpr uint16_t kForegroundIndex = 7;

// Symbol names compare without regard to case, as the editor's do.
bool SameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
  });
}

AcDbObjectId FindLayer(AcDbDatabase* database, const char* name) {
  AcDbObjectId id;
  AcDbLayerTable* table = nullptr;
  if (database == nullptr || database->getLayerTable(table, AcDb::kForRead) != Acad::eOk) return id;
  if (table->getAt(name, id) != Acad::eOk) id = AcDbObjectId::kNull;
  table->close();
  return id;
}

}  // namespace

StyleResolver::StyleResolver(AcDbDatabase* database, const SvgOptions& options)
    : options_(options),
      zero_layer_(FindLayer(database, "0")),
      import_layer_(FindLayer(database, kImportLayerName)) {}

uint32_t StyleResolver::Rgb(const AcCmEntityColor& color) const {
  if (color.isByColor()) return color.rgb();
  if (color.isByACI() && color.colorIndex() != kForegroundIndex) return color.rgb();
  return options_.foreground_rgb;
}

InheritedStyle StyleResolver::Root() const {
  InheritedStyle root;
  root.rgb = options_.foreground_rgb;
  return root;
}

InheritedStyle StyleResolver::HandDown(const ResolvedStyle& style, int definition) {
  InheritedStyle down;
  down.rgb = style.rgb;
  down.weight = style.weight;
  down.linetype = style.linetype;
  down.layer = style.layer;
  down.definition = definition;
  return down;
}

const LayerStyle& StyleResolver::Layer(AcDbObjectId layer) {
  if (layer.isNull()) layer = zero_layer_;
  auto found = layers_.find(layer);
  if (found != layers_.end()) return found->second;
  LayerStyle style;
  style.rgb = options_.foreground_rgb;
  AcDbObjectPointer<AcDbLayerTableRecord> record(layer, AcDb::kForRead);
  if (record.openStatus() == Acad::eOk) {
    style.name = record->getName();
    style.rgb = Rgb(record->color());
    style.weight = record->lineWeight();
    style.linetype = record->linetypeObjectId();
    style.off = record->isOff();
    style.frozen = record->isFrozen();
  }
  style.import = !layer.isNull() && layer == import_layer_;
  if (const auto& exported = options_.exported_layers) {
    style.left_out = std::none_of(exported->begin(), exported->end(),
                                  [&](const std::string& name) { return SameName(name, style.name); });
  }
  if (options_.layer_id && !layer.isNull()) style.lid = options_.layer_id(layer);
  return layers_.emplace(layer, std::move(style)).first->second;
}

const StyleResolver::Linetype& StyleResolver::LinetypeOf(AcDbObjectId linetype) {
  auto found = linetypes_.find(linetype);
  if (found != linetypes_.end()) return found->second;
  Linetype type;
  // A linetype that cannot be found is taken as by layer, the default.
  type.kind = LinetypeKind::kByLayer;
  AcDbObjectPointer<AcDbLinetypeTableRecord> record(linetype, AcDb::kForRead);
  if (record.openStatus() == Acad::eOk) {
    const std::string name = record->getName();
    if (SameName(name, "ByBlock")) {
      type.kind = LinetypeKind::kByBlock;
    } else if (!SameName(name, "ByLayer")) {
      type.kind = LinetypeKind::kOwn;
      for (int i = 0; i < record->numDashes(); ++i) type.dashes.push_back(record->dashLengthAt(i));
    }
  }
  return linetypes_.emplace(linetype, std::move(type)).first->second;
}

const std::vector<double>& StyleResolver::Dashes(AcDbObjectId linetype) {
  static const std::vector<double> kContinuous;
  if (linetype.isNull()) return kContinuous;
  const Linetype& type = LinetypeOf(linetype);
  return type.kind == LinetypeKind::kOwn ? type.dashes : kContinuous;
}

ResolvedStyle StyleResolver::Resolve(const PvSvgSubEntityTraits& traits, const InheritedStyle& context,
                                     bool& inherited) {
  ResolvedStyle style;
  // Layer "0" inside a block stands for the insert's layer.
  AcDbObjectId layer = traits.layerId().isNull() ? zero_layer_ : traits.layerId();
  if (layer == zero_layer_ && !context.layer.isNull()) {
    layer = context.layer;
    inherited = true;
  }
  const LayerStyle& layer_style = Layer(layer);
  style.layer = layer;
  style.hides_block =
      layer_style.frozen || layer_style.left_out || (layer_style.import && !options_.draw_import_layer);
  style.hidden = style.hides_block || layer_style.off;

  const AcCmEntityColor color = traits.trueColor();
  if (color.isByLayer()) {
    style.rgb = layer_style.rgb;
  } else if (color.isByBlock()) {
    style.rgb = context.rgb;
    style.color_source = "byBlock";
    inherited = true;
  } else {
    style.rgb = Rgb(color);
    style.color_source = "byG";
  }

  const int weight = traits.lineWeight();
  if (weight == AcDb::kLnWtByLayer) {
    style.weight = layer_style.weight;
  } else if (weight == AcDb::kLnWtByBlock) {
    style.weight = context.weight;
    style.weight_source = "byBlock";
    inherited = true;
  } else {
    style.weight = weight;
    style.weight_source = "byG";
  }

  style.linetype_scale = traits.lineTypeScale();
  const Linetype& linetype = LinetypeOf(traits.lineTypeId());
  if (traits.lineTypeId().isNull() || linetype.kind == LinetypeKind::kByLayer) {
    style.linetype = layer_style.linetype;
  } else if (linetype.kind == LinetypeKind::kByBlock) {
    style.linetype = context.linetype;
    inherited = true;
  } else {
    style.linetype = traits.lineTypeId();
  }
  return style;
}

bool DashAttributes(const std::vector<double>& dashes, double scale, double shortest, std::string& array,
                    std::string& offset) {
  if (dashes.empty() || !(scale > 0)) return false;
  double total = 0;
  for (double dash : dashes) total += std::abs(dash);
  total *= scale;
  if (!(total > shortest) || !std::isfinite(total)) return false;
  // A dot is written as a dash of a hundredth of the pattern: with butt
  // ends a dash of length 0 would not show.
  const double dot = total / 100;
  // SVG alternates dash and gap starting with a dash; two dashes or two
  // gaps in a row are joined by a gap or dash of length 0.
  std::vector<double> lengths;
  bool want_dash = true;
  double leading_gap = 0;
  for (double dash : dashes) {
    const bool is_gap = dash < 0;
    const double length = is_gap ? -dash * scale : (dash == 0 ? dot : dash * scale);
    if (lengths.empty() && is_gap) {
      // Rotated to the end; the offset starts the line where the gap starts.
      leading_gap += length;
      continue;
    }
    if (is_gap == want_dash) lengths.push_back(0);
    lengths.push_back(length);
    want_dash = is_gap;
  }
  if (lengths.empty()) return false;  // only gaps
  if (leading_gap > 0) {
    if (want_dash) lengths.push_back(0);
    lengths.push_back(leading_gap);
    want_dash = true;
  }
  if (!want_dash) lengths.push_back(0);  // end on a gap
  array.clear();
  offset.clear();
  for (size_t i = 0; i < lengths.size(); ++i) {
    if (i > 0) array += ' ';
    AppendGeneral(array, lengths[i], 4);
  }
  double pattern = 0;
  for (double length : lengths) pattern += length;
  if (leading_gap > 0) AppendGeneral(offset, pattern - leading_gap, 4);
  return true;
}

}  // namespace fx::svg
