// The floor as the page draws it: the current drawing through our SVG
// renderer with the saved export options (so it looks as an export does),
// framed by the model-space extents, kept until the drawing changes.
#ifndef FLOORXPORT_STUDIO_FLOOR_PICTURE_H_
#define FLOORXPORT_STUDIO_FLOOR_PICTURE_H_

#include <cstdint>
#include <memory>
#include <string>

#include "svg/svg_options.h"

class AcDbDatabase;

namespace fx::studio {

struct FloorPicture {
  std::string svg;        // the whole document; empty when nothing could be drawn
  fx::svg::Frame frame;   // world to picture: x' = x - min x, y' = max y - y
  uint64_t revision = 0;  // the drawing's revision it shows
};

class FloorPictureCache {
 public:
  // The picture of `database` at `revision`, rendered again only when the
  // revision differs from the one kept. On the host thread.
  std::shared_ptr<const FloorPicture> Get(AcDbDatabase& database, uint64_t revision);

 private:
  std::shared_ptr<const FloorPicture> kept_;
};

}  // namespace fx::studio

#endif  // FLOORXPORT_STUDIO_FLOOR_PICTURE_H_
