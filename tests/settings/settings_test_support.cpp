#include "settings_test_support.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "settings/reg_text.h"
#include "settings/settings_diagnostics.h"
#include "settings/settings_path.h"

namespace fx::settings::testing {

void WriteFileBytes(const std::string& path, std::string_view bytes) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  ASSERT_TRUE(out.good()) << path;
}

std::string Utf16LeFile(std::string_view text) {
  std::u16string units;
  EXPECT_TRUE(Utf8ToUtf16(text, &units));
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : units) {
    bytes.push_back(static_cast<char>(unit & 0xFF));
    bytes.push_back(static_cast<char>(unit >> 8));
  }
  return bytes;
}

std::string TextOfFile(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return std::string(bytes.substr(3));
  if (!bytes.starts_with("\xFF\xFE")) return std::string(bytes);
  std::u16string units;
  for (size_t i = 2; i + 1 < bytes.size(); i += 2) {
    units.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                          (static_cast<unsigned char>(bytes[i + 1]) << 8)));
  }
  std::string text;
  EXPECT_TRUE(Utf16ToUtf8(units, &text));
  return text;
}

std::string RegText(std::string_view body) {
  return "Windows Registry Editor Version 5.00\r\n\r\n" + std::string(body);
}

std::string Describe(const RegFile& file) {
  std::ostringstream out;
  for (const RegKey& key : file.keys) {
    out << "[" << key.path << "]\n";
    for (const RegValue& value : key.values) {
      out << "  " << value.name << " type " << value.type << ":";
      for (const uint8_t byte : value.data) out << " " << static_cast<int>(byte);
      out << "\n";
    }
  }
  return out.str();
}

void SettingsFixture::SetUp() {
  SetSettingsFilePath(settings_path_);
  SetSettingsDiagnostics([this](const std::string& message) { diagnostics_.push_back(message); });
}

void SettingsFixture::TearDown() {
  SetSettingsDiagnostics(nullptr);
  SetSettingsFilePath("");
}

}  // namespace fx::settings::testing
