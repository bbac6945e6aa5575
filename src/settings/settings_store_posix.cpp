// The settings keys over the settings file (settings_file.h): the store on
// platforms without a registry. Each open reads the file; each write locks,
// re-reads, changes one value and replaces the file. Reads never change a
// setting; the first open of a process removes what a killed write left.
#include <mutex>
#include <string>
#include <utility>

#include "host/whole_file.h"
#include "settings/reg_file.h"
#include "settings/settings_diagnostics.h"
#include "settings/settings_file.h"
#include "settings/settings_key.h"
#include "settings/settings_path.h"

namespace fx::settings {

struct SettingsKey::State {
  std::string file_path;
  std::string built_path;
  bool for_write = false;
  RegKey snapshot;  // the key's values when opened, plus our own writes since
};

namespace {

// One report per file and process: the first damaged line, how many more.
void ReportDamage(const std::string& path, const LoadedSettingsFile& loaded) {
  if (loaded.problems.empty()) return;
  const RegFileProblem& first = loaded.problems.front();
  std::string message = path + ":" + std::to_string(first.line) + ": " + first.message;
  if (loaded.problems.size() > 1) {
    message += " (and " + std::to_string(loaded.problems.size() - 1) + " more damaged lines)";
  }
  message +=
      "; the settings file is read as far as it is valid, and the next change rewrites it "
      "without the damaged lines";
  ReportSettingsProblemOnce("damaged:" + path, message);
}

void ReportReadFailure(const std::string& path, const std::string& failure) {
  ReportSettingsProblemOnce("unreadable:" + path,
                            "cannot read the settings file: " + failure + "; defaults are used");
}

void ReportWriteFailure(const std::string& path, const std::string& failure) {
  ReportSettingsProblemOnce("unwritable:" + path, "cannot change the settings file: " + failure +
                                                      "; settings are not saved");
}

// A write killed in an earlier run may have left its temporary file beside
// the settings file; it is removed at the first open of each process.
void RemoveLeftoversOnce(const std::string& path) {
  static std::mutex mutex;
  static std::string cleaned;
  const std::lock_guard<std::mutex> lock(mutex);
  if (cleaned == path) return;
  cleaned = path;
  const size_t slash = path.rfind('/');
  fx::RemoveStaleTemporaryFiles(slash == std::string::npos ? "." : path.substr(0, slash + 1));
}

RegKey SnapshotOf(const RegFile& file, const std::string& key_path) {
  const RegKey* key = file.FindKey(key_path);
  return key != nullptr ? *key : RegKey{key_path, {}};
}

// Creates the missing key for a write, unless it appeared meanwhile; sets
// *snapshot.
bool CreateKey(const std::string& path, const std::string& key_path, RegKey* snapshot) {
  std::string failure;
  const bool updated = UpdateSettingsFile(
      path,
      [&](LoadedSettingsFile& loaded) {
        ReportDamage(path, loaded);
        const bool found = loaded.file.HasKeyOrSubkey(key_path);
        *snapshot = found ? SnapshotOf(loaded.file, key_path) : loaded.file.FindOrAddKey(key_path);
        return !found;
      },
      &failure);
  if (!updated) ReportWriteFailure(path, failure);
  return updated;
}

}  // namespace

SettingsKey::SettingsKey() = default;
SettingsKey::SettingsKey(SettingsKey&&) noexcept = default;
SettingsKey& SettingsKey::operator=(SettingsKey&&) noexcept = default;
SettingsKey::~SettingsKey() = default;

bool SettingsKey::is_open() const { return state_ != nullptr; }

std::string SettingsKey::path() const { return state_ ? state_->built_path : std::string(); }

bool SettingsKey::QueryValue(std::string_view name, size_t capacity, uint32_t* type,
                             std::vector<uint8_t>* data) const {
  if (!state_) return false;
  const RegValue* value = state_->snapshot.Find(name);
  if (value == nullptr || value->data.size() > capacity) return false;
  *type = value->type;
  *data = value->data;
  return true;
}

bool SettingsKey::HasValue(std::string_view name) const {
  return state_ && state_->snapshot.Find(name) != nullptr;
}

bool SettingsKey::SetValue(std::string_view name, uint32_t type, std::vector<uint8_t> data) {
  if (!state_ || !state_->for_write) return false;
  // A .reg file cannot hold a line break in a name; NUL ends names in the registry.
  if (name.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos) return false;
  RegValue value{std::string(name), type, std::move(data)};
  std::string failure;
  const bool written = UpdateSettingsFile(
      state_->file_path,
      [&](LoadedSettingsFile& loaded) {
        ReportDamage(state_->file_path, loaded);
        loaded.file.FindOrAddKey(state_->snapshot.path).Set(value);
        return true;
      },
      &failure);
  if (!written) {
    ReportWriteFailure(state_->file_path, failure);
    return false;
  }
  state_->snapshot.Set(std::move(value));
  return true;
}

void SettingsKey::Close() { state_.reset(); }

bool OpenSettingsKey(int section, bool for_write, SettingsKey* key) {
  key->Close();
  const std::string path = SettingsFilePath();
  if (path.empty()) {
    ReportSettingsProblemOnce("no-path", std::string("no settings file: HOME is not set; set ") +
                                             kSettingsFileVariable + " to a file");
    return false;
  }
  RemoveLeftoversOnce(path);
  const std::string key_path = SettingsFileKeyPath(section);
  LoadedSettingsFile loaded;
  std::string failure;
  if (!LoadSettingsFile(path, &loaded, &failure)) {
    ReportReadFailure(path, failure);
    return false;
  }
  ReportDamage(path, loaded);
  // A read never writes: a missing key reads as an empty one.
  RegKey snapshot = SnapshotOf(loaded.file, key_path);
  if (for_write && !loaded.file.HasKeyOrSubkey(key_path) && !CreateKey(path, key_path, &snapshot)) {
    return false;
  }
  key->state_ = std::make_unique<SettingsKey::State>(
      SettingsKey::State{path, BuildSettingsKeyPath(section), for_write, std::move(snapshot)});
  return true;
}

}  // namespace fx::settings
