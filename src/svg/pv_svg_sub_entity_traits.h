// The traits the renderer draws with: what the entity being drawn set,
// unresolved (by layer and by block stay as they are; the renderer
// resolves them when it writes an element).
#ifndef FLOORXPORT_SVG_PV_SVG_SUB_ENTITY_TRAITS_H_
#define FLOORXPORT_SVG_PV_SVG_SUB_ENTITY_TRAITS_H_

#include <cstdint>

#include "host/world_draw.h"

class PvSvgSubEntityTraits : public AcGiSubEntityTraits {
 public:
  // setColor sets an index colour (256 by layer, 0 by block); setTrueColor
  // sets any colour, and its index where it has one. The last call wins.
  void setColor(uint16_t aci) override;
  void setTrueColor(const AcCmEntityColor& color) override;
  void setLayer(AcDbObjectId layer) override;
  void setLineType(AcDbObjectId linetype) override;
  void setLineTypeScale(double scale) override;
  void setLineWeight(AcDb::LineWeight weight) override;
  void setFillType(AcGiFillType fill) override;
  void setThickness(double thickness) override;

  uint16_t color() const override { return true_color_.colorIndex(); }
  AcCmEntityColor trueColor() const override { return true_color_; }
  AcDbObjectId layerId() const override { return layer_; }
  AcDbObjectId lineTypeId() const override { return linetype_; }
  double lineTypeScale() const override { return linetype_scale_; }
  AcDb::LineWeight lineWeight() const override { return weight_; }
  AcGiFillType fillType() const override { return fill_; }
  double thickness() const { return thickness_; }

  // Counts the changes, so that a resolved style can be reused while the
  // traits stay as they were.
  uint64_t generation() const { return generation_; }

 private:
  AcCmEntityColor true_color_;  // by layer
  AcDbObjectId layer_;
  AcDbObjectId linetype_;
  double linetype_scale_ = 1;
  AcDb::LineWeight weight_ = AcDb::kLnWtByLayer;
  AcGiFillType fill_ = kAcGiFillNever;
  double thickness_ = 0;
  uint64_t generation_ = 0;
};

#endif  // FLOORXPORT_SVG_PV_SVG_SUB_ENTITY_TRAITS_H_
