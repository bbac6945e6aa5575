#include "settings/settings.h"

#include <utility>
#include <vector>

#include "settings/duplicate_names_flag.h"
#include "settings/known_settings.h"
#include "settings/reg_file.h"
#include "settings/reg_text.h"

namespace fx::settings {
namespace {

constexpr size_t kIntegerBytes = 4;
constexpr size_t kStringBytes = 520;  // 260 UTF-16 units, the terminator included

bool IsDuplicateNamesFlag(std::string_view name, int section) {
  return section == kSectionExportOptions &&
         SameRegistryName(name, kAutomaticallyResolveDuplicateNames);
}

}  // namespace

int32_t GetSettingInt(std::string_view name, int32_t default_value, int section) {
  SettingsKey key;
  if (!OpenSettingsKey(section, false, &key)) return default_value;
  uint32_t type = 0;
  std::vector<uint8_t> data;
  if (!key.QueryValue(name, kIntegerBytes, &type, &data)) return default_value;
  uint32_t bits = 0;
  for (size_t i = 0; i < data.size(); ++i) bits |= static_cast<uint32_t>(data[i]) << (8 * i);
  return static_cast<int32_t>(bits);
}

std::string GetSettingString(std::string_view name, int section) {
  SettingsKey key;
  if (!OpenSettingsKey(section, false, &key)) return {};
  uint32_t type = 0;
  std::vector<uint8_t> data;
  if (!key.QueryValue(name, kStringBytes, &type, &data)) return {};
  return DecodeRegSz(data);
}

bool SetSettingInt(std::string_view name, int32_t value, int section) {
  SettingsKey key;
  if (!OpenSettingsKey(section, true, &key)) return false;
  const auto bits = static_cast<uint32_t>(value);
  std::vector<uint8_t> data;
  for (size_t i = 0; i < kIntegerBytes; ++i) data.push_back(static_cast<uint8_t>(bits >> (8 * i)));
  if (!key.SetValue(name, kRegNone, std::move(data))) return false;
  if (IsDuplicateNamesFlag(name, section)) SetAutoResolveDuplicateNamesFlag(value != 0);
  return true;
}

bool SetSettingString(std::string_view name, std::string_view text, int section) {
  std::vector<uint8_t> data;
  if (!EncodeRegSz(text, &data)) return false;
  SettingsKey key;
  if (!OpenSettingsKey(section, true, &key)) return false;
  return key.SetValue(name, kRegSz, std::move(data));
}

}  // namespace fx::settings
