// Block inserts. With block optimisation an insert is written as
//   <use xlink:href="#CB_n" transform="matrix(a b c d e f)"/>
// of a group "CB_n" under <defs> that holds its block drawn once. The
// definition is drawn in block coordinates scaled by the insert's scale
// factors, so that the <use> transform is a rotation and translation only
// and neither stroke widths nor coordinate precision change with the scale.
// Definitions are kept by "%s_%.6f_%.6f_%.6f" (block name and the three
// scale factors). A definition whose entities take properties from their
// insert (by block, or layer "0") is kept per set of those properties as
// well; one that holds an infinite line is not reused at all.
#include <cmath>
#include <string>

#include "host/database.h"
#include "svg/pv_svg_world_draw.h"
#include "svg/svg_number.h"

using fx::svg::Box2;
using fx::svg::Point2;
using fx::svg::ResolvedStyle;

namespace {

// Block definitions written inside one another, at most.
constexpr size_t kMaxDefinitionDepth = 16;
// How far the <use> transform may be from a rotation and translation.
constexpr double kRigidTolerance = 1e-9;

bool IsRigid2d(const AcGeMatrix3d& m) {
  const double a = m(0, 0), b = m(1, 0), c = m(0, 1), d = m(1, 1);
  return std::abs(a * a + b * b - 1) <= kRigidTolerance && std::abs(c * c + d * d - 1) <= kRigidTolerance &&
         std::abs(a * c + b * d) <= kRigidTolerance && std::abs(m(0, 2)) <= kRigidTolerance &&
         std::abs(m(1, 2)) <= kRigidTolerance;
}

std::string DefinitionKey(const std::string& name, const AcGeScale3d& scale) {
  std::string key = name;
  for (double factor : {scale.sx, scale.sy, scale.sz}) {
    key += '_';
    fx::svg::AppendFixed(key, factor, 6);
  }
  return key;
}

// The properties a definition that inherits was drawn with.
std::string InheritedKey(const fx::svg::InheritedStyle& style) {
  return "|" + fx::svg::ColorText(style.rgb) + "|" + std::to_string(style.weight) + "|" +
         style.linetype.handle().ascii() + "|" + style.layer.handle().ascii();
}

}  // namespace

bool PvSvgWorldDraw::beginBlockReference(const AcDbBlockReference& insert, const AcGeMatrix3d& transform) {
  const ResolvedStyle style = CurrentStyle();
  if (style.hides_block) return true;
  // A block that inserts itself is drawn once, as the host draws it: its
  // inner insert draws nothing.
  const AcDbObjectId block = insert.blockTableRecord();
  for (const Definition& definition : writing_)
    if (definition.block == block) return true;
  if (options_.block_optimization && UseDefinition(insert, transform, style)) return true;
  return BeginInline(style);
}

bool PvSvgWorldDraw::BeginInline(const ResolvedStyle& style) {
  insert_depths_.push_back(transforms_.size());
  PushInherited(fx::svg::StyleResolver::HandDown(style, -1));
  return false;
}

void PvSvgWorldDraw::endBlockReference(const AcDbBlockReference& insert) {
  (void)insert;
  if (!insert_depths_.empty()) insert_depths_.pop_back();
  PopInherited();
}

bool PvSvgWorldDraw::UseDefinition(const AcDbBlockReference& insert, const AcGeMatrix3d& transform,
                                   const ResolvedStyle& style) {
  if (insert.columnCount() != 1 || insert.rowCount() != 1 || writing_.size() >= kMaxDefinitionDepth) return false;
  const AcGeScale3d scale = insert.scaleFactors();
  if (scale.sx == 0 || scale.sy == 0 || scale.sz == 0 || !std::isfinite(scale.sx * scale.sy * scale.sz)) return false;
  const AcGeMatrix3d scaling = AcGeMatrix3d::scaling(scale.sx, scale.sy, scale.sz);
  // The insert's transform is a placement (rotation, translation, normal)
  // after its scaling; the placement in output coordinates must keep
  // lengths in the plane for the <use> to draw what the host would.
  const AcGeMatrix3d use = transforms_.back() * transform * AcGeMatrix3d::scaling(1 / scale.sx, 1 / scale.sy, 1 / scale.sz);
  if (!IsRigid2d(use)) return false;
  const AcDbObjectId block = insert.blockTableRecord();
  std::string name;
  {
    AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead);
    if (record.openStatus() != Acad::eOk) return false;
    name = record->getName();
  }
  const AcGeMatrix3d to_svg = (writing_.empty() ? AcGeMatrix3d::kIdentity : writing_.back().to_svg) * use;

  const std::string key = DefinitionKey(name, scale);
  Written written;
  auto found = written_.find(key);
  if (found != written_.end() && !found->second.inherits) {
    written = found->second;
  } else {
    // The first definition of a key that inherits stays as a marker that
    // sends later inserts to the key with their own properties.
    const std::string full_key = key + InheritedKey(fx::svg::StyleResolver::HandDown(style, -1));
    auto same = found != written_.end() ? written_.find(full_key) : written_.end();
    if (same != written_.end()) {
      written = same->second;
    } else {
      written = WriteDefinition(block, scaling, to_svg, style);
      if (!written.placed) {
        if (found == written_.end()) written_.emplace(key, written);
        if (written.inherits) written_.emplace(full_key, written);
      }
    }
  }

  // The <use>, when what it shows meets the frame.
  Box2 box;
  if (!written.bounds.empty()) {
    for (double x : {written.bounds.min_x, written.bounds.max_x})
      for (double y : {written.bounds.min_y, written.bounds.max_y}) {
        const AcGePoint3d p = use * AcGePoint3d(x, y, 0);
        box.Add({p.x, p.y});
      }
  }
  if (!box.empty() && Keep(box)) {
    fx::svg::XmlElement node = Element("use");
    node.Attribute("xlink:href", "#CB_" + std::to_string(written.number));
    std::string matrix;
    const double m[6] = {use(0, 0), use(1, 0), use(0, 1), use(1, 1), use(0, 3), use(1, 3)};
    fx::svg::AppendMatrix(matrix, m, decimals_);
    node.Attribute("transform", matrix);
    ProgramAttributes(node, style);
  }
  DrawAttributes(insert, style);
  return true;
}

PvSvgWorldDraw::Written PvSvgWorldDraw::WriteDefinition(AcDbObjectId block, const AcGeMatrix3d& scaling,
                                                        const AcGeMatrix3d& to_svg, const ResolvedStyle& style) {
  Definition definition;
  const int number = definition_count_++;
  definition.group = text_->Define("g", &definition.slot);
  definition.group.Attribute("id", "CB_" + std::to_string(number));
  definition.block = block;
  definition.to_svg = to_svg;
  writing_.push_back(definition);
  parents_.push_back(definition.group);
  transforms_.push_back(scaling);
  PushInherited(fx::svg::StyleResolver::HandDown(style, static_cast<int>(writing_.size() - 1)));

  std::vector<AcDbObjectId> entities;
  {
    AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead);
    if (record.openStatus() == Acad::eOk) entities = record->entityIds();
  }
  for (AcDbObjectId id : entities) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk || entity->visibility() != AcDb::kVisible) continue;
    // An insert draws its attributes, not the block's definitions of them.
    if (dynamic_cast<AcDbAttributeDefinition*>(entity.object()) != nullptr) continue;
    entity->worldDraw(this);
  }

  PopInherited();
  transforms_.pop_back();
  parents_.pop_back();
  definition = writing_.back();
  writing_.pop_back();
  // A block that draws nothing needs no definition; its inserts write no <use>.
  if (definition.bounds.empty()) text_->DropDefinition(definition.slot);
  Written written;
  written.number = number;
  written.inherits = definition.inherits;
  written.placed = definition.placed;
  written.bounds = definition.bounds;
  return written;
}

void PvSvgWorldDraw::DrawAttributes(const AcDbBlockReference& insert, const ResolvedStyle& style) {
  // Attributes are in the insert's own coordinates and take its properties
  // where they are by block.
  insert_depths_.push_back(transforms_.size());
  PushInherited(fx::svg::StyleResolver::HandDown(style, -1));
  for (AcDbObjectId id : insert.attributeIds()) {
    AcDbObjectPointer<AcDbAttribute> attribute(id, AcDb::kForRead);
    if (attribute.openStatus() != Acad::eOk || attribute->visibility() != AcDb::kVisible) continue;
    attribute->worldDraw(this);
  }
  PopInherited();
  insert_depths_.pop_back();
}
