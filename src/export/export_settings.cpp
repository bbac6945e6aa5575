#include "export/export_settings.h"

#include "settings/known_settings.h"
#include "settings/settings.h"
#include "settings/settings_key.h"

namespace fx::exports {
namespace {

bool Flag(const char* name, bool default_value) {
  return fx::settings::GetSettingInt(name, default_value ? 1 : 0, fx::settings::kSectionExportOptions) != 0;
}

}  // namespace

DrawingPosition ExportSettings::position() const {
  if (drawing_position == 0) return DrawingPosition::kExtents;
  if (drawing_position == 2) return DrawingPosition::kLayerEntity;
  return DrawingPosition::kActiveView;
}

ExportSettings ReadExportSettings() {
  namespace s = fx::settings;
  ExportSettings settings;
  settings.save_all_attributes = Flag(s::kSaveAllAttributes, false);
  settings.approximate_arc = Flag(s::kApproximateArc, false);
  settings.block_optimization = Flag(s::kBlockOptimization, true);
  settings.hatch_optimization = Flag(s::kHatchOptimization, false);
  settings.drawing_position = s::GetSettingInt(s::kDrawingPosition, 0, s::kSectionExportOptions);
  settings.frame_layer = s::GetSettingString(s::kViewboxPolyExtLayer, s::kSectionExportOptions);
  settings.draw_box = Flag(s::kDrawBox, false);
  settings.draw_import_layer = Flag(s::kDrawImportLayer, false);
  return settings;
}

}  // namespace fx::exports
