// Saving an SVG document whole or not at all: the text goes to a new file
// beside the target, which is renamed over the target only when all of it
// was written; on any failure the new file is removed and the target is
// left as it was.
#ifndef FLOORXPORT_SVG_SVG_SAVE_H_
#define FLOORXPORT_SVG_SVG_SAVE_H_

#include <string>

#include <pugixml.hpp>

#include "host/code_page.h"
#include "svg/svg_document.h"

namespace fx::svg {

// The document's text, plain or (with a zlib mode such as "wb9") through
// zlib's gzip file interface. False with *error (when given) set to a
// message naming the file on failure. The floor document files use it too.
bool SaveXmlDocument(const pugi::xml_document& document, const std::string& path, const char* gzip_mode,
                     std::string* error = nullptr);

// ".svg": the rendered document's UTF-8 text. False with *error (when
// given) set to a message naming the file on failure.
bool SaveSvg(const SvgText& document, const std::string& path, std::string* error = nullptr);

// ".svgz": the same text compressed with zlib's gzip file interface, mode
// "wb6f" (compression level 6, filtered strategy), in `code_page` (the
// export gives the room report's, rooms/report.h) with a declaration naming
// it; see WriteDocument in svg_document.h.
bool SaveSvgz(const SvgText& document, const std::string& path, std::string* error = nullptr,
              unsigned code_page = kCodePageUtf8);

}  // namespace fx::svg

#endif  // FLOORXPORT_SVG_SVG_SAVE_H_
