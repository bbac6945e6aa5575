#include "settings/reg_file.h"

#include <algorithm>
#include <utility>

namespace fx::settings {
namespace {

char FoldAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// True when `path` is `parent` itself or a key below it.
bool IsSameOrBelow(std::string_view path, std::string_view parent) {
  if (path.size() < parent.size()) return false;
  if (!SameRegistryName(path.substr(0, parent.size()), parent)) return false;
  return path.size() == parent.size() || path[parent.size()] == '\\';
}

}  // namespace

bool SameRegistryName(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           return FoldAscii(x) == FoldAscii(y);
         });
}

const RegValue* RegKey::Find(std::string_view name) const {
  for (const RegValue& value : values) {
    if (SameRegistryName(value.name, name)) return &value;
  }
  return nullptr;
}

void RegKey::Set(RegValue value) {
  for (RegValue& existing : values) {
    if (SameRegistryName(existing.name, value.name)) {
      // The registry keeps the spelling the value was created with.
      existing.type = value.type;
      existing.data = std::move(value.data);
      return;
    }
  }
  values.push_back(std::move(value));
}

bool RegKey::Erase(std::string_view name) {
  const auto it = std::find_if(values.begin(), values.end(), [&](const RegValue& value) {
    return SameRegistryName(value.name, name);
  });
  if (it == values.end()) return false;
  values.erase(it);
  return true;
}

const RegKey* RegFile::FindKey(std::string_view path) const {
  for (const RegKey& key : keys) {
    if (SameRegistryName(key.path, path)) return &key;
  }
  return nullptr;
}

RegKey* RegFile::FindKey(std::string_view path) {
  return const_cast<RegKey*>(std::as_const(*this).FindKey(path));
}

RegKey& RegFile::FindOrAddKey(std::string_view path) {
  if (RegKey* key = FindKey(path)) return *key;
  keys.push_back(RegKey{std::string(path), {}});
  return keys.back();
}

void RegFile::EraseKeyTree(std::string_view path) {
  std::erase_if(keys, [&](const RegKey& key) { return IsSameOrBelow(key.path, path); });
}

bool RegFile::HasKeyOrSubkey(std::string_view path) const {
  return std::any_of(keys.begin(), keys.end(),
                     [&](const RegKey& key) { return IsSameOrBelow(key.path, path); });
}

}  // namespace fx::settings
