// The settings keys: one application key split into sections, and the handle
// that OpenSettingsKey gives on one of them.
#ifndef FLOORXPORT_SETTINGS_SETTINGS_KEY_H_
#define FLOORXPORT_SETTINGS_SETTINGS_KEY_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace fx::settings {

// Section numbers. Any number other than 0, 1 and 2 addresses the
// application key itself.
constexpr int kSectionExportOptions = 0;
constexpr int kSectionConvertOptions = 1;
constexpr int kSectionServer = 2;
constexpr int kSectionApplication = 3;

// The key path as the plug-in builds it under HKEY_CURRENT_USER, by plain
// concatenation: "Software\PlanVault\" + "VantoryApp" + the section's suffix
// ("\ExportOptions\", "\ConvertOptions\", "\Server\", or nothing). The
// trailing backslash of the three sections is part of the path.
std::string BuildSettingsKeyPath(int section);

// "ExportOptions", "ConvertOptions", "Server", or "VantoryApp" for the
// application key.
const char* SettingsSectionName(int section);

// The key as the settings file names it: "HKEY_CURRENT_USER\" followed by the
// built path without its trailing backslash, which the registry ignores too.
std::string SettingsFileKeyPath(int section);

// An open section key. Queries see the section as it was when the key was
// opened; SetValue writes to the store at once (there is no cache between
// calls). Closed by Close or by the destructor; closing twice is harmless.
class SettingsKey {
 public:
  SettingsKey();
  SettingsKey(SettingsKey&&) noexcept;
  SettingsKey& operator=(SettingsKey&&) noexcept;
  ~SettingsKey();

  bool is_open() const;
  // The built path (BuildSettingsKeyPath); empty when not open.
  std::string path() const;

  // Copies the value's registry type and data when the data has at most
  // `capacity` bytes, as a registry query into a buffer of that size does,
  // whatever the type. False when the key is not open, the value is absent,
  // or its data is longer than `capacity`.
  bool QueryValue(std::string_view name, size_t capacity, uint32_t* type,
                  std::vector<uint8_t>* data) const;
  bool HasValue(std::string_view name) const;

  // Writes one value (any other process's values are kept). False when the
  // key is not open for writing, the name holds a line break, or the store
  // cannot be written (reported once through the settings diagnostics).
  bool SetValue(std::string_view name, uint32_t type, std::vector<uint8_t> data);

  void Close();

 private:
  friend bool OpenSettingsKey(int section, bool for_write, SettingsKey* key);
  struct State;  // defined by the platform's store
  std::unique_ptr<State> state_;
};

// Opens the section's key for reading or for writing. A read never writes:
// a missing key (or a missing file) reads as an empty key. For a write a
// missing key is created. True when `key` is open. False (key closed) when
// there is no settings file location, the file cannot be read, or the
// missing key of a write cannot be created.
bool OpenSettingsKey(int section, bool for_write, SettingsKey* key);

}  // namespace fx::settings

#endif  // FLOORXPORT_SETTINGS_SETTINGS_KEY_H_
