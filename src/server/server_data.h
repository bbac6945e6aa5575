// The drawing's own record of the Vantory server and floor it belongs to.
//
// In the named-object dictionary, the dictionary kServerDictionary
// ("PLANVAULT_DICT_3287", made on the first write) holds the xrecord
// kServerDataEntry ("PLANVAULT_SERVER_DATA") with exactly four values:
//   1000  the record's version, "1.0"
//   1000  the server address ("https://example.vantory.example/")
//   1071  the first identifier, kept and passed back to the service
//   1071  the id of the floor the drawing was last sent to
#ifndef FLOORXPORT_SERVER_SERVER_DATA_H_
#define FLOORXPORT_SERVER_SERVER_DATA_H_

#include <cstdint>
#include <string>

#include "host/status.h"

class AcDbDatabase;

namespace fx::server {

inline constexpr const char* kServerDataVersion = "1.0";

struct ServerData {
  int32_t first_id = -1;  // -1: none
  int32_t floor_id = -1;  // -1: none
  std::string server;
  bool read = false;  // the values came from the drawing's record
};

// The drawing's record; the empty record (ids -1, no server, not read) when
// `database` is null or has no record. Reads only: nothing is made. The
// version is read past, not checked; a value of another type than expected
// keeps its default.
ServerData ReadServerData(AcDbDatabase* database);

// Stores the two ids and the server address as the drawing's record,
// replacing any earlier one. When they equal the record already stored (or,
// without a record, the empty one), nothing is written and the drawing stays
// unmodified. eOk when the record holds the values afterwards; otherwise the
// host's status (eInvalidInput for a null database), and the drawing is left
// unchanged when its named-object dictionary cannot be opened for write.
Acad::ErrorStatus WriteServerData(const ServerData& data, AcDbDatabase* database);

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_SERVER_DATA_H_
