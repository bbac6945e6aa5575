// The development server's store: one SQLite database (WAL mode) holding
// buildings, floors, each floor's stored drawing (the DWG part and the
// ".drawing" part as blobs) and the rooms the REST endpoint lists.
//
// Every write is one transaction, so a killed server keeps every upload it
// committed. Blobs are written and read through SQLite's incremental blob
// I/O, straight from and into the caller's buffer: a 20 MB drawing is not
// copied into a record first.
#ifndef FLOORXPORT_TOOLS_VANTORY_DEVSERVER_STORAGE_H_
#define FLOORXPORT_TOOLS_VANTORY_DEVSERVER_STORAGE_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

struct sqlite3;

namespace fx::devserver {

// A database that cannot be opened, read or written.
class StorageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct BuildingRecord {
  int id = 0;
  std::string name;
  std::string code;
  std::string city;
  std::string street;
  std::string street2;
  std::string postal_code;
  std::string state_code;
  std::string state_name;
  std::string latitude;  // decimal text, empty when unknown
  std::string longitude;
  std::int64_t created = 0;  // seconds since the epoch
};

struct DrawingRecord {
  std::size_t dwg_size = 0;
  std::size_t drawing_size = 0;
  std::optional<std::string> notes;
  std::optional<std::string> binary_format;
  std::int64_t updated = 0;
};

struct FloorRecord {
  int id = 0;
  int building = 0;
  std::string name;
  std::optional<double> area;
  std::int64_t created = 0;
  std::int64_t updated = 0;
  std::optional<DrawingRecord> drawing;  // absent until a drawing is stored
};

struct BuildingWithFloors {
  BuildingRecord building;
  std::vector<FloorRecord> floors;
};

struct RoomUser {
  std::string name;
  std::string job_title;
};

struct Room {
  std::string name;
  std::string type;
  std::string cost_center;
  std::vector<RoomUser> users;
};

// The two parts of a stored drawing.
enum class DrawingPart { kDwg, kDrawing };

class Storage {
 public:
  // Opens the database, creating it and its tables when absent.
  explicit Storage(std::string path);
  ~Storage();
  Storage(const Storage&) = delete;
  Storage& operator=(const Storage&) = delete;

  const std::string& path() const { return path_; }

  // True while the database holds no building.
  bool Empty();

  int AddBuilding(const BuildingRecord& building);
  // A new floor of `building`; nullopt when there is no such building.
  std::optional<int> CreateFloor(int building, const std::string& name,
                                 std::optional<double> area = std::nullopt);

  // Every building, by id, with its floors by id and each floor's drawing.
  std::vector<BuildingWithFloors> BuildingsAndFloors();

  enum class ReadResult { kRead, kNoFloor, kNoData };
  // Reads one part of a floor's drawing into the buffer `allocate(size)`
  // returns (never called for an empty part). kNoData: the floor has no
  // drawing, or that part of it is empty.
  ReadResult ReadDrawingPart(int floor, DrawingPart part,
                             const std::function<unsigned char*(std::size_t)>& allocate,
                             std::size_t* size);

  // Stores both parts of a floor's drawing with its notes and format, in
  // one transaction. False when there is no such floor.
  bool SaveDrawing(int floor, std::span<const unsigned char> dwg,
                   std::span<const unsigned char> drawing, const std::optional<std::string>& notes,
                   const std::optional<std::string>& binary_format);

  // The floor's rooms in their stored order, at most `limit`; nullopt when
  // there is no such floor.
  std::optional<std::vector<Room>> Rooms(int floor, std::size_t limit);
  // Replaces the floor's rooms. False when there is no such floor.
  bool ReplaceRooms(int floor, const std::vector<Room>& rooms);

 private:
  class Lease;
  sqlite3* Acquire();
  void Release(sqlite3* db);

  std::string path_;
  std::mutex mutex_;
  std::vector<sqlite3*> idle_;  // open connections not in use
};

}  // namespace fx::devserver

#endif  // FLOORXPORT_TOOLS_VANTORY_DEVSERVER_STORAGE_H_
