#include "storage.h"

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace fx::devserver {
namespace {

// Version 1 of the schema. Times are seconds since the epoch; a floor's
// drawing shares the floor's id (drawings.floor is its rowid, which the
// incremental blob functions address). The DWG part, the large one, is the
// last column: only a record's last zero blob is stored without SQLite
// first making its zeros in memory.
constexpr const char* kSchema = R"sql(
CREATE TABLE IF NOT EXISTS buildings (
  id INTEGER PRIMARY KEY,
  name TEXT NOT NULL,
  code TEXT NOT NULL DEFAULT '',
  city TEXT NOT NULL DEFAULT '',
  street TEXT NOT NULL DEFAULT '',
  street2 TEXT NOT NULL DEFAULT '',
  postal_code TEXT NOT NULL DEFAULT '',
  state_code TEXT NOT NULL DEFAULT '',
  state_name TEXT NOT NULL DEFAULT '',
  latitude TEXT NOT NULL DEFAULT '',
  longitude TEXT NOT NULL DEFAULT '',
  created INTEGER NOT NULL
);
CREATE TABLE IF NOT EXISTS floors (
  id INTEGER PRIMARY KEY,
  building INTEGER NOT NULL REFERENCES buildings(id) ON DELETE CASCADE,
  name TEXT NOT NULL,
  area REAL,
  created INTEGER NOT NULL,
  updated INTEGER NOT NULL
);
CREATE INDEX IF NOT EXISTS floors_by_building ON floors(building);
CREATE TABLE IF NOT EXISTS drawings (
  floor INTEGER PRIMARY KEY REFERENCES floors(id) ON DELETE CASCADE,
  notes TEXT,
  binary_format TEXT,
  updated INTEGER NOT NULL,
  drawing BLOB NOT NULL,
  dwg BLOB NOT NULL
);
CREATE TABLE IF NOT EXISTS rooms (
  id INTEGER PRIMARY KEY,
  floor INTEGER NOT NULL REFERENCES floors(id) ON DELETE CASCADE,
  position INTEGER NOT NULL,
  name TEXT NOT NULL,
  type TEXT NOT NULL DEFAULT '',
  cost_center TEXT NOT NULL DEFAULT ''
);
CREATE INDEX IF NOT EXISTS rooms_by_floor ON rooms(floor, position);
CREATE TABLE IF NOT EXISTS room_users (
  room INTEGER NOT NULL REFERENCES rooms(id) ON DELETE CASCADE,
  position INTEGER NOT NULL,
  name TEXT NOT NULL,
  job_title TEXT NOT NULL DEFAULT ''
);
CREATE INDEX IF NOT EXISTS room_users_by_room ON room_users(room, position);
PRAGMA user_version = 1;
)sql";

std::int64_t Now() {
  return std::chrono::duration_cast<std::chrono::seconds>(
             std::chrono::system_clock::now().time_since_epoch())
      .count();
}

[[noreturn]] void Fail(sqlite3* db, const std::string& what) {
  throw StorageError(what + ": " + (db ? sqlite3_errmsg(db) : "out of memory"));
}

void Exec(sqlite3* db, const char* sql) {
  char* message = nullptr;
  if (sqlite3_exec(db, sql, nullptr, nullptr, &message) != SQLITE_OK) {
    std::string text = message ? message : sqlite3_errmsg(db);
    sqlite3_free(message);
    throw StorageError(text);
  }
}

// A prepared statement, finalised when it goes out of scope.
class Statement {
 public:
  Statement(sqlite3* db, const char* sql) : db_(db) {
    if (sqlite3_prepare_v2(db, sql, -1, &stmt_, nullptr) != SQLITE_OK) Fail(db, "prepare");
  }
  ~Statement() { sqlite3_finalize(stmt_); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  Statement& Bind(int index, std::int64_t value) {
    Check(sqlite3_bind_int64(stmt_, index, value));
    return *this;
  }
  Statement& Bind(int index, const std::string& value) {
    Check(sqlite3_bind_text(stmt_, index, value.data(), static_cast<int>(value.size()),
                            SQLITE_STATIC));
    return *this;
  }
  Statement& Bind(int index, const std::optional<std::string>& value) {
    return value ? Bind(index, *value) : BindNull(index);
  }
  Statement& Bind(int index, std::optional<double> value) {
    Check(value ? sqlite3_bind_double(stmt_, index, *value) : sqlite3_bind_null(stmt_, index));
    return *this;
  }
  Statement& BindNull(int index) {
    Check(sqlite3_bind_null(stmt_, index));
    return *this;
  }
  // The bytes stay the caller's until the statement has run.
  Statement& BindBlob(int index, std::span<const unsigned char> bytes) {
    Check(sqlite3_bind_blob64(stmt_, index, bytes.empty() ? "" : static_cast<const void*>(bytes.data()),
                              bytes.size(), SQLITE_STATIC));
    return *this;
  }
  // A blob of `size` zero bytes, filled afterwards through WriteBlob.
  Statement& BindZeroBlob(int index, std::size_t size) {
    Check(sqlite3_bind_zeroblob64(stmt_, index, size));
    return *this;
  }

  // Ready to run again with new bindings.
  Statement& Reset() {
    sqlite3_reset(stmt_);
    sqlite3_clear_bindings(stmt_);
    return *this;
  }

  // True while a row is available.
  bool Step() {
    const int rc = sqlite3_step(stmt_);
    if (rc == SQLITE_ROW) return true;
    if (rc == SQLITE_DONE) return false;
    Fail(db_, "step");
  }
  void Run() {
    while (Step()) {
    }
  }

  bool IsNull(int column) const { return sqlite3_column_type(stmt_, column) == SQLITE_NULL; }
  std::int64_t Int(int column) const { return sqlite3_column_int64(stmt_, column); }
  double Double(int column) const { return sqlite3_column_double(stmt_, column); }
  std::string Text(int column) const {
    const auto* text = sqlite3_column_text(stmt_, column);
    return text ? std::string(reinterpret_cast<const char*>(text),
                              static_cast<std::size_t>(sqlite3_column_bytes(stmt_, column)))
                : std::string();
  }
  std::optional<std::string> OptionalText(int column) const {
    if (IsNull(column)) return std::nullopt;
    return Text(column);
  }

 private:
  void Check(int rc) {
    if (rc != SQLITE_OK) Fail(db_, "bind");
  }

  sqlite3* db_;
  sqlite3_stmt* stmt_ = nullptr;
};

// A transaction rolled back unless committed. Writers begin IMMEDIATE so
// that two writers wait on the busy timeout instead of failing to upgrade.
class Transaction {
 public:
  enum Kind { kRead, kWrite };
  Transaction(sqlite3* db, Kind kind) : db_(db) {
    Exec(db, kind == kWrite ? "BEGIN IMMEDIATE" : "BEGIN");
  }
  ~Transaction() {
    if (!done_) sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  void Commit() {
    Exec(db_, "COMMIT");
    done_ = true;
  }

 private:
  sqlite3* db_;
  bool done_ = false;
};

const char* ColumnOf(DrawingPart part) { return part == DrawingPart::kDwg ? "dwg" : "drawing"; }

// Writes `data` into the zero blob already stored in drawings.<column> of
// the row `floor`, in place.
void WriteBlob(sqlite3* db, int floor, const char* column, std::span<const unsigned char> data) {
  if (data.empty()) return;
  sqlite3_blob* blob = nullptr;
  if (sqlite3_blob_open(db, "main", "drawings", column, floor, 1, &blob) != SQLITE_OK) {
    sqlite3_blob_close(blob);
    Fail(db, "open blob");
  }
  // sqlite3_blob_write takes an int count: write in pieces below 2 GiB.
  constexpr std::size_t kPiece = std::size_t{1} << 30;
  for (std::size_t offset = 0; offset < data.size(); offset += kPiece) {
    const std::size_t n = std::min(kPiece, data.size() - offset);
    if (sqlite3_blob_write(blob, data.data() + offset, static_cast<int>(n),
                           static_cast<int>(offset)) != SQLITE_OK) {
      sqlite3_blob_close(blob);
      Fail(db, "write blob");
    }
  }
  if (sqlite3_blob_close(blob) != SQLITE_OK) Fail(db, "close blob");
}

bool FloorExists(sqlite3* db, int floor) {
  Statement exists(db, "SELECT 1 FROM floors WHERE id = ?");
  exists.Bind(1, floor);
  return exists.Step();
}

}  // namespace

// A connection of the pool, given back when it goes out of scope.
class Storage::Lease {
 public:
  explicit Lease(Storage& storage) : storage_(storage), db_(storage.Acquire()) {}
  ~Lease() { storage_.Release(db_); }
  Lease(const Lease&) = delete;
  Lease& operator=(const Lease&) = delete;
  sqlite3* get() const { return db_; }

 private:
  Storage& storage_;
  sqlite3* db_;
};

Storage::Storage(std::string path) : path_(std::move(path)) {
  Lease lease(*this);
  sqlite3* db = lease.get();
  // WAL: readers never wait for the writer, and a commit is one append.
  // Both settings are kept in the file by the first start.
  // Pages of 64 KiB: a drawing of megabytes is a short chain of overflow
  // pages, written and read in few large pieces.
  bool fresh = false;
  {
    Statement page_count(db, "PRAGMA page_count");
    fresh = page_count.Step() && page_count.Int(0) == 0;
  }
  if (fresh) {
    Exec(db, "PRAGMA page_size = 65536");
    // The cache limit was counted in pages of the old size: count again,
    // or this connection would keep 32 MiB of pages.
    Exec(db, "PRAGMA cache_size = -2000");
  }
  {
    Statement journal(db, "PRAGMA journal_mode = WAL");
    if (!journal.Step() || journal.Text(0) != "wal") {
      throw StorageError(path_ + ": the database cannot use WAL mode");
    }
  }
  Exec(db, kSchema);
}

Storage::~Storage() {
  for (sqlite3* db : idle_) sqlite3_close(db);
}

sqlite3* Storage::Acquire() {
  {
    std::lock_guard lock(mutex_);
    if (!idle_.empty()) {
      sqlite3* db = idle_.back();
      idle_.pop_back();
      return db;
    }
  }
  sqlite3* db = nullptr;
  const int rc = sqlite3_open_v2(path_.c_str(), &db,
                                 SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX,
                                 nullptr);
  if (rc != SQLITE_OK) {
    const std::string message = db ? sqlite3_errmsg(db) : "out of memory";
    sqlite3_close(db);
    throw StorageError(path_ + ": " + message);
  }
  sqlite3_busy_timeout(db, 30000);
  try {
    // NORMAL in WAL mode: a commit is in the log file when COMMIT returns,
    // so it survives the process being killed (not a power cut before the
    // next checkpoint).
    // The log is cut back to 64 MiB after a checkpoint, whatever size a
    // large upload made it.
    Exec(db,
         "PRAGMA foreign_keys = ON; PRAGMA synchronous = NORMAL; "
         "PRAGMA journal_size_limit = 67108864;");
  } catch (...) {
    sqlite3_close(db);
    throw;
  }
  return db;
}

void Storage::Release(sqlite3* db) {
  if (!sqlite3_get_autocommit(db)) {  // a transaction left open: do not reuse
    sqlite3_close(db);
    return;
  }
  std::lock_guard lock(mutex_);
  idle_.push_back(db);
}

bool Storage::Empty() {
  Lease lease(*this);
  Statement any(lease.get(), "SELECT 1 FROM buildings LIMIT 1");
  return !any.Step();
}

int Storage::AddBuilding(const BuildingRecord& b) {
  Lease lease(*this);
  Statement insert(lease.get(),
                   "INSERT INTO buildings (name, code, city, street, street2, postal_code, "
                   "state_code, state_name, latitude, longitude, created) "
                   "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
  insert.Bind(1, b.name).Bind(2, b.code).Bind(3, b.city).Bind(4, b.street).Bind(5, b.street2);
  insert.Bind(6, b.postal_code).Bind(7, b.state_code).Bind(8, b.state_name);
  insert.Bind(9, b.latitude).Bind(10, b.longitude).Bind(11, b.created ? b.created : Now());
  insert.Run();
  return static_cast<int>(sqlite3_last_insert_rowid(lease.get()));
}

std::optional<int> Storage::CreateFloor(int building, const std::string& name,
                                        std::optional<double> area) {
  Lease lease(*this);
  sqlite3* db = lease.get();
  Transaction transaction(db, Transaction::kWrite);
  Statement exists(db, "SELECT 1 FROM buildings WHERE id = ?");
  exists.Bind(1, building);
  if (!exists.Step()) return std::nullopt;
  const std::int64_t now = Now();
  Statement insert(db,
                   "INSERT INTO floors (building, name, area, created, updated) "
                   "VALUES (?, ?, ?, ?, ?)");
  insert.Bind(1, building).Bind(2, name).Bind(3, area).Bind(4, now).Bind(5, now);
  insert.Run();
  const int id = static_cast<int>(sqlite3_last_insert_rowid(db));
  transaction.Commit();
  return id;
}

std::vector<BuildingWithFloors> Storage::BuildingsAndFloors() {
  Lease lease(*this);
  sqlite3* db = lease.get();
  Transaction transaction(db, Transaction::kRead);  // one snapshot for both queries
  std::vector<BuildingWithFloors> result;
  Statement buildings(db,
                      "SELECT id, name, code, city, street, street2, postal_code, state_code, "
                      "state_name, latitude, longitude, created FROM buildings ORDER BY id");
  while (buildings.Step()) {
    BuildingRecord b;
    b.id = static_cast<int>(buildings.Int(0));
    b.name = buildings.Text(1);
    b.code = buildings.Text(2);
    b.city = buildings.Text(3);
    b.street = buildings.Text(4);
    b.street2 = buildings.Text(5);
    b.postal_code = buildings.Text(6);
    b.state_code = buildings.Text(7);
    b.state_name = buildings.Text(8);
    b.latitude = buildings.Text(9);
    b.longitude = buildings.Text(10);
    b.created = buildings.Int(11);
    result.push_back({std::move(b), {}});
  }
  // length() of a blob reads its size from the record, not its content.
  Statement floors(db,
                   "SELECT f.id, f.building, f.name, f.area, f.created, f.updated, d.floor, "
                   "length(d.dwg), length(d.drawing), d.notes, d.binary_format, d.updated "
                   "FROM floors f LEFT JOIN drawings d ON d.floor = f.id "
                   "ORDER BY f.building, f.id");
  std::size_t at = 0;
  while (floors.Step()) {
    FloorRecord f;
    f.id = static_cast<int>(floors.Int(0));
    f.building = static_cast<int>(floors.Int(1));
    f.name = floors.Text(2);
    if (!floors.IsNull(3)) f.area = floors.Double(3);
    f.created = floors.Int(4);
    f.updated = floors.Int(5);
    if (!floors.IsNull(6)) {
      DrawingRecord d;
      d.dwg_size = static_cast<std::size_t>(floors.Int(7));
      d.drawing_size = static_cast<std::size_t>(floors.Int(8));
      d.notes = floors.OptionalText(9);
      d.binary_format = floors.OptionalText(10);
      d.updated = floors.Int(11);
      f.drawing = std::move(d);
    }
    while (at < result.size() && result[at].building.id < f.building) ++at;
    if (at < result.size() && result[at].building.id == f.building) {
      result[at].floors.push_back(std::move(f));
    }
  }
  transaction.Commit();
  return result;
}

Storage::ReadResult Storage::ReadDrawingPart(
    int floor, DrawingPart part, const std::function<unsigned char*(std::size_t)>& allocate,
    std::size_t* size) {
  *size = 0;
  Lease lease(*this);
  sqlite3* db = lease.get();
  Transaction transaction(db, Transaction::kRead);  // the size and the bytes of one version
  const std::string sql = std::string("SELECT d.floor, length(d.") + ColumnOf(part) +
                          ") FROM floors f LEFT JOIN drawings d ON d.floor = f.id WHERE f.id = ?";
  Statement query(db, sql.c_str());
  query.Bind(1, floor);
  if (!query.Step()) return ReadResult::kNoFloor;
  if (query.IsNull(0) || query.Int(1) <= 0) return ReadResult::kNoData;
  const auto length = static_cast<std::size_t>(query.Int(1));

  sqlite3_blob* blob = nullptr;
  if (sqlite3_blob_open(db, "main", "drawings", ColumnOf(part), floor, 0, &blob) != SQLITE_OK) {
    sqlite3_blob_close(blob);
    Fail(db, "open blob");
  }
  unsigned char* buffer = allocate(length);
  if (!buffer) {
    sqlite3_blob_close(blob);
    throw StorageError("out of memory for a drawing of " + std::to_string(length) + " bytes");
  }
  constexpr std::size_t kPiece = std::size_t{1} << 30;
  for (std::size_t offset = 0; offset < length; offset += kPiece) {
    const std::size_t n = std::min(kPiece, length - offset);
    if (sqlite3_blob_read(blob, buffer + offset, static_cast<int>(n), static_cast<int>(offset)) !=
        SQLITE_OK) {
      sqlite3_blob_close(blob);
      Fail(db, "read blob");
    }
  }
  sqlite3_blob_close(blob);
  transaction.Commit();
  *size = length;
  return ReadResult::kRead;
}

bool Storage::SaveDrawing(int floor, std::span<const unsigned char> dwg,
                          std::span<const unsigned char> drawing,
                          const std::optional<std::string>& notes,
                          const std::optional<std::string>& binary_format) {
  Lease lease(*this);
  sqlite3* db = lease.get();
  Transaction transaction(db, Transaction::kWrite);
  if (!FloorExists(db, floor)) return false;
  const std::int64_t now = Now();
  // The DWG part is written as a zero blob of its size, which the blob
  // write then fills in place, so it is never copied into a record in
  // memory. The drawing part (a compressed floor document, small) is bound
  // from the caller's buffer.
  Statement upsert(db,
                   "INSERT INTO drawings (floor, notes, binary_format, updated, drawing, dwg) "
                   "VALUES (?1, ?2, ?3, ?4, ?5, ?6) ON CONFLICT (floor) DO UPDATE SET "
                   "notes = ?2, binary_format = ?3, updated = ?4, drawing = ?5, dwg = ?6");
  upsert.Bind(1, floor).Bind(2, notes).Bind(3, binary_format).Bind(4, now);
  upsert.BindBlob(5, drawing).BindZeroBlob(6, dwg.size());
  upsert.Run();
  WriteBlob(db, floor, "dwg", dwg);
  Statement touch(db, "UPDATE floors SET updated = ? WHERE id = ?");
  touch.Bind(1, now).Bind(2, floor);
  touch.Run();
  transaction.Commit();
  return true;
}

std::optional<std::vector<Room>> Storage::Rooms(int floor, std::size_t limit) {
  Lease lease(*this);
  sqlite3* db = lease.get();
  Transaction transaction(db, Transaction::kRead);
  if (!FloorExists(db, floor)) return std::nullopt;
  std::vector<Room> rooms;
  std::vector<std::int64_t> ids;
  Statement query(db,
                  "SELECT id, name, type, cost_center FROM rooms WHERE floor = ? "
                  "ORDER BY position, id LIMIT ?");
  query.Bind(1, floor).Bind(2, static_cast<std::int64_t>(limit));
  while (query.Step()) {
    ids.push_back(query.Int(0));
    rooms.push_back({query.Text(1), query.Text(2), query.Text(3), {}});
  }
  Statement users(db,
                  "SELECT name, job_title FROM room_users WHERE room = ? ORDER BY position");
  for (std::size_t i = 0; i < rooms.size(); ++i) {
    users.Reset().Bind(1, ids[i]);
    while (users.Step()) rooms[i].users.push_back({users.Text(0), users.Text(1)});
  }
  transaction.Commit();
  return rooms;
}

bool Storage::ReplaceRooms(int floor, const std::vector<Room>& rooms) {
  Lease lease(*this);
  sqlite3* db = lease.get();
  Transaction transaction(db, Transaction::kWrite);
  if (!FloorExists(db, floor)) return false;
  Statement clear(db, "DELETE FROM rooms WHERE floor = ?");
  clear.Bind(1, floor);
  clear.Run();
  Statement insert(db,
                   "INSERT INTO rooms (floor, position, name, type, cost_center) "
                   "VALUES (?, ?, ?, ?, ?)");
  Statement user(db, "INSERT INTO room_users (room, position, name, job_title) VALUES (?, ?, ?, ?)");
  for (std::size_t i = 0; i < rooms.size(); ++i) {
    const Room& room = rooms[i];
    insert.Reset().Bind(1, floor).Bind(2, static_cast<std::int64_t>(i)).Bind(3, room.name);
    insert.Bind(4, room.type).Bind(5, room.cost_center);
    insert.Run();
    const std::int64_t id = sqlite3_last_insert_rowid(db);
    for (std::size_t j = 0; j < room.users.size(); ++j) {
      user.Reset().Bind(1, id).Bind(2, static_cast<std::int64_t>(j)).Bind(3, room.users[j].name);
      user.Bind(4, room.users[j].job_title);
      user.Run();
    }
  }
  transaction.Commit();
  return true;
}

}  // namespace fx::devserver
