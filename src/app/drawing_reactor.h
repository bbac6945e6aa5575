// The editor reactor that offers to send a changed drawing back to Vantory
// when it closes. It keeps no state: the date it compares is the last-update
// date in the document's CDocData.
#ifndef FLOORXPORT_APP_DRAWING_REACTOR_H_
#define FLOORXPORT_APP_DRAWING_REACTOR_H_

#include "host/documents.h"

namespace fx::app {

inline constexpr const char* kSendChangesQuestion =
    "Drawing has been changed.\nWould you like to send updates to Vantory?";

class CPvDrawingReactor : public AcEditorReactor {
 public:
  // Stores the drawing's $TDUUPDATE as its document's last-update date.
  void endDwgOpen(const char* file_name, AcDbDatabase* database) override;
  // Asks kSendChangesQuestion (Yes/No, warning icon) only when $TDUUPDATE is
  // now later than the stored date and the drawing is associated with a
  // server floor; on Yes sends the drawing and shows the outcome in a plain
  // message box. The close goes on in every case.
  void beginClose(AcDbDatabase* database) override;
};

}  // namespace fx::app

#endif  // FLOORXPORT_APP_DRAWING_REACTOR_H_
