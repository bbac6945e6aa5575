// HEADER section: drawing variables.
#include "dxf_sections.h"

namespace floorgen {

namespace {

// All time stamps are fixed (2024-01-01 00:00 UTC as a Julian date), so that a
// seed always gives the same file.
constexpr double kDrawingDate = 2460310.5;
constexpr int kUnitsMillimetres = 4;
constexpr int kLinearUnitsDecimal = 2;
constexpr int kMeasurementMetric = 1;
// DASHED is defined in millimetres per plotted dash; this scales it to the plan.
constexpr double kLinetypeScale = 20.0;

void Variable(DxfStream& out, std::string_view name) { out.Text(9, name); }

}  // namespace

void BeginSection(DxfStream& out, std::string_view name) {
  out.Text(0, "SECTION");
  out.Text(2, name);
}

void EndSection(DxfStream& out) { out.Text(0, "ENDSEC"); }

void WriteHeaderSection(DxfStream& out, Handle handle_seed, const Box& extents) {
  BeginSection(out, "HEADER");
  Variable(out, "$ACADVER");
  out.Text(1, "AC1032");
  Variable(out, "$DWGCODEPAGE");
  out.Text(3, "ANSI_1252");
  Variable(out, "$INSBASE");
  out.Point3(10, {});
  Variable(out, "$EXTMIN");
  out.Point3(10, extents.Min());
  Variable(out, "$EXTMAX");
  out.Point3(10, extents.Max());
  Variable(out, "$LIMMIN");
  out.Point2(10, extents.Min());
  Variable(out, "$LIMMAX");
  out.Point2(10, extents.Max());
  Variable(out, "$LTSCALE");
  out.Real(40, kLinetypeScale);
  Variable(out, "$TEXTSTYLE");
  out.Text(7, kStandardName);
  Variable(out, "$CLAYER");
  out.Text(8, "0");
  Variable(out, "$CELTYPE");
  out.Text(6, "ByLayer");
  Variable(out, "$CECOLOR");
  out.Integer(62, 256);
  Variable(out, "$DIMSTYLE");
  out.Text(2, kStandardName);
  Variable(out, "$LUNITS");
  out.Integer(70, kLinearUnitsDecimal);
  Variable(out, "$LUPREC");
  out.Integer(70, 0);
  for (std::string_view date : {"$TDCREATE", "$TDUCREATE", "$TDUPDATE", "$TDUUPDATE"}) {
    Variable(out, date);
    out.Real(40, kDrawingDate);
  }
  Variable(out, "$HANDSEED");
  out.HandleValue(5, handle_seed);
  Variable(out, "$CMLSTYLE");
  out.Text(2, kStandardName);
  Variable(out, "$PSTYLEMODE");  // named plot styles are not used
  out.Integer(290, 1);
  Variable(out, "$MEASUREMENT");
  out.Integer(70, kMeasurementMetric);
  Variable(out, "$LWDISPLAY");
  out.Integer(290, 1);
  Variable(out, "$INSUNITS");
  out.Integer(70, kUnitsMillimetres);
  EndSection(out);
}

}  // namespace floorgen
