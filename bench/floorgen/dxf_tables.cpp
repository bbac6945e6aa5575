// TABLES section: viewport, linetypes, layers, text style, views, UCSs,
// registered applications, dimension style and block records.
#include <algorithm>
#include <cstddef>

#include "annotations.h"
#include "blocks.h"
#include "dxf_sections.h"
#include "layers.h"

namespace floorgen {

namespace {

constexpr double kViewWidthToHeight = 1.6;
constexpr double kViewMargin = 1.1;

void BeginTable(DxfStream& out, std::string_view name, Handle handle, int entries) {
  out.Text(0, "TABLE");
  out.Text(2, name);
  out.HandleValue(5, handle);
  out.HandleValue(330, 0);  // tables have no owner
  out.Text(100, "AcDbSymbolTable");
  out.Integer(70, entries);
}

void EndTable(DxfStream& out) { out.Text(0, "ENDTAB"); }

void BeginRecord(DxfStream& out, std::string_view type, Handle handle, Handle table, std::string_view subclass,
                 std::string_view name, int handle_code = 5) {
  out.Text(0, type);
  out.HandleValue(handle_code, handle);
  out.HandleValue(330, table);
  out.Text(100, "AcDbSymbolTableRecord");
  out.Text(100, subclass);
  out.Text(2, name);
  out.Integer(70, 0);
}

// The active viewport shows the whole drawing.
void WriteViewportTable(DxfStream& out, const FixedHandles& h, const Box& extents) {
  BeginTable(out, "VPORT", h.vport_table, 1);
  BeginRecord(out, "VPORT", h.active_vport, h.vport_table, "AcDbViewportTableRecord", "*Active");
  out.Point2(10, {0.0, 0.0});  // lower-left and upper-right corner on screen
  out.Point2(11, {1.0, 1.0});
  out.Point2(12, extents.Center());
  out.Point2(13, {0.0, 0.0});  // snap base
  out.Point2(14, {10.0, 10.0});  // snap spacing
  out.Point2(15, {10.0, 10.0});  // grid spacing
  out.Point3(16, {0.0, 0.0});   // view direction, z follows
  out.Real(36, 1.0);
  out.Point3(17, {0.0, 0.0});  // view target
  out.Real(40, std::max(extents.Height(), extents.Width() / kViewWidthToHeight) * kViewMargin);
  out.Real(41, kViewWidthToHeight);
  out.Real(42, 50.0);  // lens length
  out.Real(43, 0.0);   // front and back clipping planes
  out.Real(44, 0.0);
  out.Real(50, 0.0);  // snap rotation
  out.Real(51, 0.0);  // view twist
  out.Integer(71, 0);     // view mode
  out.Integer(72, 1000);  // circle zoom percent
  out.Integer(73, 1);     // fast zoom
  out.Integer(74, 3);     // UCS icon
  out.Integer(75, 0);     // snap off
  out.Integer(76, 0);     // grid off
  out.Integer(77, 0);     // snap style
  out.Integer(78, 0);     // snap isopair
  out.Integer(281, 0);    // render mode
  out.Integer(65, 1);     // UCS follows the viewport
  out.Point3(110, {0.0, 0.0});  // UCS origin, x axis and y axis
  out.Point3(111, {1.0, 0.0});
  out.Point3(112, {0.0, 1.0});
  out.Integer(79, 0);  // orthographic type
  out.Real(146, 0.0);  // elevation
  EndTable(out);
}

void WriteLinetype(DxfStream& out, Handle handle, Handle table, std::string_view name,
                   std::string_view description, std::initializer_list<double> dashes) {
  BeginRecord(out, "LTYPE", handle, table, "AcDbLinetypeTableRecord", name);
  out.Text(3, description);
  out.Integer(72, 65);  // alignment code, always 'A'
  out.Integer(73, static_cast<long long>(dashes.size()));
  double length = 0.0;
  for (double dash : dashes) length += dash < 0 ? -dash : dash;
  out.Real(40, length);
  for (double dash : dashes) {
    out.Real(49, dash);  // positive: dash, negative: gap
    out.Integer(74, 0);  // plain element
  }
}

void WriteLinetypeTable(DxfStream& out, const FixedHandles& h) {
  BeginTable(out, "LTYPE", h.ltype_table, 4);
  WriteLinetype(out, h.ltype_by_block, h.ltype_table, "ByBlock", "", {});
  WriteLinetype(out, h.ltype_by_layer, h.ltype_table, "ByLayer", "", {});
  WriteLinetype(out, h.ltype_continuous, h.ltype_table, kLinetypeContinuous, "Solid line", {});
  WriteLinetype(out, h.ltype_dashed, h.ltype_table, kLinetypeDashed, "Dashed __ __ __ __", {12.7, -6.35});
  EndTable(out);
}

void WriteLayerTable(DxfStream& out, const FixedHandles& h) {
  BeginTable(out, "LAYER", h.layer_table, static_cast<int>(kLayers.size()));
  for (std::size_t i = 0; i < kLayers.size(); ++i) {
    const LayerProperties& layer = kLayers[i];
    BeginRecord(out, "LAYER", h.layers[i], h.layer_table, "AcDbLayerTableRecord", layer.name);
    out.Integer(62, layer.color);
    if (layer.true_color != kNoTrueColor) out.Integer(420, layer.true_color);
    out.Text(6, layer.linetype);
    out.Integer(290, layer.plotted ? 1 : 0);
    out.Integer(370, layer.lineweight);
    out.HandleValue(390, h.normal_plot_style);
  }
  EndTable(out);
}

void WriteStyleTable(DxfStream& out, const FixedHandles& h) {
  BeginTable(out, "STYLE", h.style_table, 1);
  BeginRecord(out, "STYLE", h.standard_style, h.style_table, "AcDbTextStyleTableRecord", kStandardName);
  out.Real(40, 0.0);  // no fixed height
  out.Real(41, 1.0);  // width factor
  out.Real(50, 0.0);  // oblique angle
  out.Integer(71, 0);  // generation flags
  out.Real(42, 2.5);  // last height used
  out.Text(3, "txt");  // primary font file
  out.Text(4, "");     // big font file
  EndTable(out);
}

void WriteDimensionStyleTable(DxfStream& out, const FixedHandles& h) {
  BeginTable(out, "DIMSTYLE", h.dimstyle_table, 1);
  out.Text(100, "AcDbDimStyleTable");
  BeginRecord(out, "DIMSTYLE", h.standard_dimstyle, h.dimstyle_table, "AcDbDimStyleTableRecord", kStandardName,
              105);  // dimension styles carry their handle in group 105
  out.Real(40, kDimScale);
  out.Real(41, kDimArrowSize);
  out.Real(42, kDimExtensionOffset);
  out.Real(43, 3.75);  // baseline spacing
  out.Real(44, kDimExtensionBeyond);
  out.Real(140, kDimTextHeight);
  out.Real(141, 2.5);  // centre mark size
  out.Real(147, kDimTextGap);
  out.Integer(73, 0);   // text inside extension lines is aligned with the dimension line
  out.Integer(74, 0);   // so is text outside them
  out.Integer(77, 1);   // text above the dimension line
  out.Integer(78, 8);   // suppress trailing zeros
  out.Integer(172, 1);  // dimension line drawn between extension lines
  out.Integer(271, 0);  // no decimal places: whole millimetres
  out.Integer(277, 2);  // decimal units
  out.Integer(278, 46);  // '.' as decimal separator
  out.HandleValue(340, h.standard_style);
  EndTable(out);
}

void WriteBlockRecordTable(DxfStream& out, const FixedHandles& h) {
  BeginTable(out, "BLOCK_RECORD", h.block_record_table, kBlockCount);
  for (int i = 0; i < kBlockCount; ++i) {
    BeginRecord(out, "BLOCK_RECORD", h.blocks[static_cast<std::size_t>(i)].record, h.block_record_table,
                "AcDbBlockTableRecord", kBlockNames[static_cast<std::size_t>(i)]);
    // Model and paper space records point to their layout; other blocks have none.
    const Handle layout = i == kModelSpaceBlock ? h.model_layout : i == kPaperSpaceBlock ? h.paper_layout : 0;
    out.HandleValue(340, layout);
    out.Integer(280, 1);  // explodable
    out.Integer(281, 0);  // not restricted to uniform scaling
  }
  EndTable(out);
}

}  // namespace

void WriteTablesSection(DxfStream& out, const FixedHandles& handles, const Box& extents) {
  BeginSection(out, "TABLES");
  WriteViewportTable(out, handles, extents);
  WriteLinetypeTable(out, handles);
  WriteLayerTable(out, handles);
  WriteStyleTable(out, handles);
  BeginTable(out, "VIEW", handles.view_table, 0);
  EndTable(out);
  BeginTable(out, "UCS", handles.ucs_table, 0);
  EndTable(out);
  BeginTable(out, "APPID", handles.appid_table, 1);
  BeginRecord(out, "APPID", handles.acad_appid, handles.appid_table, "AcDbRegAppTableRecord", "ACAD");
  EndTable(out);
  WriteDimensionStyleTable(out, handles);
  WriteBlockRecordTable(out, handles);
  EndSection(out);
}

}  // namespace floorgen
