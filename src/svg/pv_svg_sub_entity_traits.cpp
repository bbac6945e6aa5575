#include "svg/pv_svg_sub_entity_traits.h"

void PvSvgSubEntityTraits::setColor(uint16_t aci) {
  true_color_ = AcCmEntityColor::fromIndex(aci > AcCmEntityColor::kACIbyLayer ? AcCmEntityColor::kACIbyLayer : aci);
  ++generation_;
}

void PvSvgSubEntityTraits::setTrueColor(const AcCmEntityColor& color) {
  true_color_ = color;
  ++generation_;
}

void PvSvgSubEntityTraits::setLayer(AcDbObjectId layer) {
  layer_ = layer;
  ++generation_;
}

void PvSvgSubEntityTraits::setLineType(AcDbObjectId linetype) {
  linetype_ = linetype;
  ++generation_;
}

void PvSvgSubEntityTraits::setLineTypeScale(double scale) {
  linetype_scale_ = scale;
  ++generation_;
}

void PvSvgSubEntityTraits::setLineWeight(AcDb::LineWeight weight) {
  weight_ = weight;
  ++generation_;
}

void PvSvgSubEntityTraits::setFillType(AcGiFillType fill) {
  fill_ = fill;
  ++generation_;
}

void PvSvgSubEntityTraits::setThickness(double thickness) {
  thickness_ = thickness;
}
