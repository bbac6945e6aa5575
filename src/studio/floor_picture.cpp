#include "studio/floor_picture.h"

#include <sstream>

#include "export/export_driver.h"
#include "export/export_settings.h"
#include "host/database.h"

namespace fx::studio {

std::shared_ptr<const FloorPicture> FloorPictureCache::Get(AcDbDatabase& database, uint64_t revision) {
  if (kept_ != nullptr && kept_->revision == revision) return kept_;
  auto picture = std::make_shared<FloorPicture>();
  picture->revision = revision;
  fx::exports::DriverResult result =
      fx::exports::RunExportDriver(database, fx::exports::ReadExportSettings(), fx::exports::DriverOptions{});
  if (result.svg != nullptr) {
    std::ostringstream text;
    result.svg->save(text, "", pugi::format_raw | pugi::format_no_declaration);
    picture->svg = std::move(text).str();
    picture->frame = result.frame;
  }
  kept_ = std::move(picture);
  return kept_;
}

}  // namespace fx::studio
