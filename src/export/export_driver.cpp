#include "export/export_driver.h"

#include "export/export_frame.h"
#include "host/database.h"
#include "host/editor.h"
#include "rooms/doc_data.h"
#include "svg/render_model_space.h"

namespace fx::exports {
namespace {

const char* Text(Acad::ErrorStatus status) { return Acad::acadErrorStatusText(status); }

// Step 1 of the driver: model space opens and can be walked.
bool ModelSpaceReadable() {
  AcDbObjectId model_id;
  if (fx::rooms::DocVars().docData().GetBlockID(AcDbBlockTableRecord::kModelSpace, model_id) != Acad::eOk) {
    return false;  // printed by GetBlockID
  }
  AcDbObjectPointer<AcDbBlockTableRecord> model(model_id, AcDb::kForRead);
  if (model.openStatus() != Acad::eOk) {
    acutPrintf("\npModelSpace.openStatus = %s", Text(model.openStatus()));
    return false;
  }
  AcDbBlockTableRecordIterator* iterator = nullptr;
  const Acad::ErrorStatus status = model->newIterator(iterator);
  delete iterator;
  if (status != Acad::eOk) {
    acutPrintf("\npModelSpace->newIterator = %s", Text(status));
    return false;
  }
  return true;
}

}  // namespace

fx::svg::SvgOptions RendererOptions(const ExportSettings& settings, const DriverOptions& options) {
  fx::svg::SvgOptions svg;
  svg.approximate_arc = settings.approximate_arc;
  svg.block_optimization = settings.block_optimization;
  svg.hatch_optimization = settings.hatch_optimization;
  svg.draw_box = settings.draw_box;
  svg.draw_import_layer = settings.draw_import_layer;
  svg.drawing_document = options.drawing_document;
  svg.program_attributes = options.program_attributes;
  svg.layer_id = options.layer_id;
  svg.exported_layers = fx::rooms::DocVars().docData().exportedLayers();
  return svg;
}

DriverResult RunExportDriver(AcDbDatabase& database, const ExportSettings& settings, const DriverOptions& options) {
  DriverResult result;
  if (!ModelSpaceReadable() || !FindExportFrame(database, settings, result.frame)) return result;
  result.world_to_svg = fx::svg::WorldToSvg(result.frame);
  result.svg_to_world = fx::svg::SvgToWorld(result.frame);
  // Model space draws itself entity by entity in database order, then the
  // frame outline when "Draw Box" is set.
  Acad::ErrorStatus status = Acad::eOk;
  result.svg = fx::svg::RenderModelSpaceText(&database, result.frame, RendererOptions(settings, options), &status);
  if (result.svg == nullptr) acutPrintf("\npModelSpace.openStatus = %s", Text(status));
  return result;
}

}  // namespace fx::exports
