// Send to: upload the drawing and its floor document (".drawing") to a
// floor of a server, and record the server and floor in the drawing.
#ifndef FLOORXPORT_SERVER_SEND_TO_H_
#define FLOORXPORT_SERVER_SEND_TO_H_

#include <string>

class AcDbDatabase;

namespace fx::server {

// What the headless host uploads as the drawing file: the DXF it saves.
inline constexpr const char* kUploadFormat = "DXF";
inline constexpr const char* kFloorDocumentName = "DrawingDoc.drawing";

// `interactive`: choose server and floor with the dialogs; otherwise take
// both from the drawing record. `save`: save the drawing to its file before
// uploading it (without it the file on disk is sent as it is). Returns
// kSucceeded, kCanceled or kFailed, with the text in `message`.
int SendTo(AcDbDatabase* database, std::string& message, bool save, bool interactive);

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_SEND_TO_H_
