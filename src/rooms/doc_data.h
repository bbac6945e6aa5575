// The plug-in's data of one open document. One CDocData exists per document,
// made when the document first asks for it and dropped when it closes.
#ifndef FLOORXPORT_ROOMS_DOC_DATA_H_
#define FLOORXPORT_ROOMS_DOC_DATA_H_

#include "host/documents.h"
#include "host/ids.h"

class AcDbDatabase;

namespace fx::rooms {

// The named-object dictionary entry under which a drawing keeps the Vantory
// server and floor it belongs to.
inline constexpr const char* kServerDictionary = "PLANVAULT_DICT_3287";
inline constexpr const char* kServerDataEntry = "PLANVAULT_SERVER_DATA";

class CDocData {
 public:
  // The drawing's $TDUUPDATE as it was when the drawing was opened; the
  // default date until then.
  const AcDbDate& lastUpdateDate() const { return last_update_; }
  void setLastUpdateDate(const AcDbDate& date) { last_update_ = date; }

 private:
  AcDbDate last_update_;
};

// The data of every open document.
AcApDataManager<CDocData>& DocVars();

// True when `database` is associated with a floor of a Vantory server: its
// named-object dictionary holds the dictionary kServerDictionary with the
// entry kServerDataEntry. False for a null database and when the dictionary
// cannot be read.
bool HasServerFloorAssociation(AcDbDatabase* database);

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_DOC_DATA_H_
