// Saving an export whole or not at all: the text goes to a new file beside
// the target, which replaces the target only when all of it was written;
// on failure the new file is removed and the target stays as it was.
#ifndef FLOORXPORT_EXPORT_DOCUMENT_FILE_H_
#define FLOORXPORT_EXPORT_DOCUMENT_FILE_H_

#include <cstdint>
#include <string>

#include <pugixml.hpp>

namespace fx::exports {

// The SVG files are saved by the SVG module (svg_save.h), .svgz with zlib
// mode "wb6f"; the floor files here.
enum class Compression {
  kNone,     // the UTF-8 text (.xml, .planvault)
  kGzipBest  // gzip, zlib mode "wb9" (.drawing)
};

// Writes the document's text (unindented, with its declaration; the same
// serialisation as the SVG module's). On failure prints
// "\nPlanVault: Cannot export: " and the reason (naming the file) on the
// command line and returns false.
bool SaveDocumentFile(const pugi::xml_document& document, const std::string& path, Compression compression);

// The message printed when a save fails.
std::string SaveFailureMessage(const std::string& reason);

// A ".drawing" above this many bytes (600 KB) draws a warning.
inline constexpr uintmax_t kDrawingWarningSize = 600 * 1024;
inline constexpr const char* kLargeDrawingWarning =
    "Warning: The .Drawing file is over 600kb and could impact performance. Please use the items under the "
    "Shortcut button to reduce the file size.";
// True for a size above kDrawingWarningSize (614,400 bytes gives none).
bool IsLargeDrawingFile(uintmax_t size);

}  // namespace fx::exports

#endif  // FLOORXPORT_EXPORT_DOCUMENT_FILE_H_
