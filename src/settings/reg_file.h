// The settings file in memory: the keys and values of a registry export
// file, in file order, each value with its registry type and raw data bytes
// exactly as the registry would hold them (a string is UTF-16LE with its
// terminating zero). Keys and values the plug-in does not know are kept, so
// that a rewrite loses nothing that was valid.
#ifndef FLOORXPORT_SETTINGS_REG_FILE_H_
#define FLOORXPORT_SETTINGS_REG_FILE_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fx::settings {

// Registry value types (the numbers a .reg file writes as hex(N)).
constexpr uint32_t kRegNone = 0;
constexpr uint32_t kRegSz = 1;
constexpr uint32_t kRegExpandSz = 2;
constexpr uint32_t kRegBinary = 3;
constexpr uint32_t kRegDword = 4;

struct RegValue {
  std::string name;  // UTF-8; empty for the key's default value ("@")
  uint32_t type = kRegNone;
  std::vector<uint8_t> data;
};

struct RegKey {
  // Full path as written between the brackets, without trailing backslashes:
  // "HKEY_CURRENT_USER\Software\PlanVault\VantoryApp\ExportOptions".
  std::string path;
  std::vector<RegValue> values;  // in file order, names unique (see SameRegistryName)

  const RegValue* Find(std::string_view name) const;
  // Replaces the type and data of the value of that name in place (its name
  // keeps the spelling it had), or appends the value.
  void Set(RegValue value);
  // False when there was no such value.
  bool Erase(std::string_view name);
};

// How the file's text is encoded; a rewrite keeps the encoding it was read in.
enum class RegEncoding {
  kUtf16Le,  // with byte order mark: what the registry editor itself writes
  kUtf8,     // without byte order mark
  kUtf8Bom,
};

struct RegFile {
  RegEncoding encoding = RegEncoding::kUtf16Le;
  std::vector<RegKey> keys;  // in file order, paths unique

  const RegKey* FindKey(std::string_view path) const;
  RegKey* FindKey(std::string_view path);
  // The key, appended empty at the end when missing.
  RegKey& FindOrAddKey(std::string_view path);
  // Removes the key and every key below it, as "[-path]" does on import.
  void EraseKeyTree(std::string_view path);
  // True when the key is present or implied by a key below it: importing
  // "[A\B\C]" creates A and A\B as well.
  bool HasKeyOrSubkey(std::string_view path) const;
};

// Registry names compare without regard to case. Only ASCII letters are
// folded; the registry also folds other letters, which our own names never use.
bool SameRegistryName(std::string_view a, std::string_view b);

}  // namespace fx::settings

#endif  // FLOORXPORT_SETTINGS_REG_FILE_H_
