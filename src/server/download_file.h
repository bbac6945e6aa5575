// Where a downloaded drawing goes: a file name made from the building and
// floor names that is safe whatever the server sent, the extension of what
// the bytes are, and a whole-or-nothing write that never replaces the
// drawing open in the session.
#ifndef FLOORXPORT_SERVER_DOWNLOAD_FILE_H_
#define FLOORXPORT_SERVER_DOWNLOAD_FILE_H_

#include <span>
#include <string>
#include <string_view>

namespace fx::server {

// "dwg" for a DWG file (it starts with "AC1"), otherwise "dxf" (ASCII or
// binary DXF, which the service stores from headless sends).
std::string DrawingExtension(std::span<const unsigned char> bytes);

// A name usable as one path component: separators, control characters and
// characters other systems refuse become "_", invalid UTF-8 is replaced,
// leading dots and blanks go, the length is bounded; "floor" when nothing
// is left.
std::string SafeFileNamePart(std::string_view name);

// "<building>_<floor>.<extension>", each part made safe.
std::string DownloadFileName(std::string_view building, std::string_view floor,
                             std::string_view extension);

// The download folder: the current directory unless set.
void SetDownloadFolder(const std::string& folder);
std::string DownloadFolder();

inline constexpr int kSaveDenied = -2;

// Writes `bytes` to `path` whole or not at all. 0 on success; kSaveDenied
// when `path` is the drawing open in the session (`open_drawing`) or an
// existing file that cannot be replaced; -1 on any other failure.
int SaveDownloadedFile(const std::string& path, std::span<const unsigned char> bytes,
                       const std::string& open_drawing);

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_DOWNLOAD_FILE_H_
