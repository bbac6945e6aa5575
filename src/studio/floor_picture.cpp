#include "studio/floor_picture.h"

#include <sstream>

#include "export/export_driver.h"
#include "export/export_settings.h"
#include "host/database.h"
#include "svg/render_model_space.h"

namespace fx::studio {

std::shared_ptr<const FloorPicture> FloorPictureCache::Get(AcDbDatabase& database, uint64_t revision) {
  if (kept_ != nullptr && kept_->revision == revision) return kept_;
  auto picture = std::make_shared<FloorPicture>();
  picture->revision = revision;
  // The frame is the model-space extents, found without the export's ZOOM:
  // drawing the picture must not change the editor's view or the drawing.
  fx::svg::Frame frame;
  if (fx::svg::ModelSpaceExtents(&database, frame)) {
    const fx::svg::SvgOptions options =
        fx::exports::RendererOptions(fx::exports::ReadExportSettings(), fx::exports::DriverOptions{});
    std::unique_ptr<pugi::xml_document> svg = fx::svg::RenderModelSpace(&database, frame, options);
    if (svg != nullptr) {
      std::ostringstream text;
      svg->save(text, "", pugi::format_raw | pugi::format_no_declaration);
      picture->svg = std::move(text).str();
      picture->frame = frame;
    }
  }
  kept_ = std::move(picture);
  return kept_;
}

}  // namespace fx::studio
