#include "users.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/rand.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <sstream>
#include <vector>

#include "atomic_file.h"

namespace fx::devserver {
namespace {

template <std::size_t N>
std::string Hex(const std::array<unsigned char, N>& bytes) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  text.reserve(2 * N);
  for (unsigned char byte : bytes) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

template <std::size_t N>
bool FromHex(std::string_view text, std::array<unsigned char, N>* bytes) {
  if (text.size() != 2 * N) return false;
  auto nibble = [](char c) -> int {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
  };
  for (std::size_t i = 0; i < N; ++i) {
    const int high = nibble(text[2 * i]);
    const int low = nibble(text[2 * i + 1]);
    if (high < 0 || low < 0) return false;
    (*bytes)[i] = static_cast<unsigned char>(high << 4 | low);
  }
  return true;
}

template <std::size_t S, std::size_t D>
void DeriveKey(std::string_view password, const std::array<unsigned char, S>& salt,
               std::array<unsigned char, D>* out) {
  if (PKCS5_PBKDF2_HMAC(password.data(), static_cast<int>(password.size()), salt.data(),
                        static_cast<int>(salt.size()), kPasswordIterations, EVP_sha256(),
                        static_cast<int>(out->size()), out->data()) != 1) {
    throw UsersFileError("PBKDF2 failed");
  }
}

bool ValidName(std::string_view name) {
  if (name.empty() || name.front() == '#') return false;
  for (char c : name) {
    if (c == ':' || c == '\n' || c == '\r' || c == '\0') return false;
  }
  return true;
}

// The name of a `name:salt:hash` line; empty for blank and comment lines.
std::string_view NameOf(std::string_view line) {
  if (line.empty() || line.front() == '#') return {};
  return line.substr(0, line.find(':'));
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(std::move(line));
  }
  return lines;
}

}  // namespace

UserStore::UserStore(std::string path) : path_(std::move(path)) {
  if (RAND_bytes(cache_key_.data(), static_cast<int>(cache_key_.size())) != 1) {
    throw UsersFileError("no random bytes for the password cache");
  }
  std::lock_guard lock(mutex_);
  ReloadIfChanged();
}

void UserStore::ReloadIfChanged() {
  struct stat info {};
  if (stat(path_.c_str(), &info) != 0) {
    throw UsersFileError(path_ + ": " + std::strerror(errno));
  }
  const FileStamp stamp{static_cast<std::int64_t>(info.st_mtim.tv_sec) * 1000000000 +
                            info.st_mtim.tv_nsec,
                        static_cast<std::int64_t>(info.st_size),
                        static_cast<std::uint64_t>(info.st_ino)};
  if (stamp == stamp_ && stamp_.inode != 0) return;

  std::map<std::string, Entry, std::less<>> users;
  std::string text;
  try {
    text = ReadWholeFile(path_);
  } catch (const std::exception& error) {
    throw UsersFileError(error.what());
  }
  int number = 0;
  for (const std::string& line : Lines(text)) {
    ++number;
    if (line.empty() || line.front() == '#') continue;
    const auto first = line.find(':');
    const auto second = first == std::string::npos ? first : line.find(':', first + 1);
    Entry entry{};
    if (second == std::string::npos || first == 0 ||
        !FromHex(std::string_view(line).substr(first + 1, second - first - 1), &entry.salt) ||
        !FromHex(std::string_view(line).substr(second + 1), &entry.hash)) {
      throw UsersFileError(path_ + ":" + std::to_string(number) +
                           ": not a name:salt:hash line");
    }
    users[line.substr(0, first)] = entry;
  }
  users_ = std::move(users);
  verified_.clear();
  stamp_ = stamp;
}

UserStore::Digest UserStore::Remembered(std::string_view password) const {
  Digest digest{};
  unsigned int length = 0;
  HMAC(EVP_sha256(), cache_key_.data(), static_cast<int>(cache_key_.size()),
       reinterpret_cast<const unsigned char*>(password.data()), password.size(), digest.data(),
       &length);
  return digest;
}

bool UserStore::Verify(std::string_view name, std::string_view password) {
  Entry entry{};
  bool known = false;
  const Digest remembered = Remembered(password);
  {
    std::lock_guard lock(mutex_);
    try {
      ReloadIfChanged();
    } catch (const UsersFileError&) {
      // A file removed or broken while the server runs: keep the users read last.
    }
    if (auto it = verified_.find(name); it != verified_.end()) {
      if (CRYPTO_memcmp(it->second.data(), remembered.data(), remembered.size()) == 0) {
        return true;
      }
    }
    if (auto it = users_.find(name); it != users_.end()) {
      entry = it->second;
      known = true;
    }
  }
  // The slow hash runs outside the lock, and for unknown names too, so the
  // answer takes as long whether or not the name exists.
  Digest hash{};
  DeriveKey(password, entry.salt, &hash);
  const bool match = CRYPTO_memcmp(hash.data(), entry.hash.data(), hash.size()) == 0;
  if (!known || !match) return false;
  std::lock_guard lock(mutex_);
  verified_[std::string(name)] = remembered;
  return true;
}

void UserStore::AddUser(const std::string& path, const std::string& name,
                        std::string_view password) {
  if (!ValidName(name)) {
    throw UsersFileError("a user name must be non-empty, must not start with '#' and must not "
                         "contain ':' or a line break");
  }
  if (password.empty()) throw UsersFileError("the password is empty");
  std::vector<std::string> lines;
  struct stat info {};
  if (stat(path.c_str(), &info) == 0) {
    try {
      lines = Lines(ReadWholeFile(path));
    } catch (const std::exception& error) {
      throw UsersFileError(error.what());
    }
  }
  Salt salt{};
  if (RAND_bytes(salt.data(), static_cast<int>(salt.size())) != 1) {
    throw UsersFileError("no random bytes for the salt");
  }
  Digest hash{};
  DeriveKey(password, salt, &hash);
  const std::string entry = name + ":" + Hex(salt) + ":" + Hex(hash);
  bool replaced = false;
  for (std::string& line : lines) {
    if (NameOf(line) == name) {
      line = entry;
      replaced = true;
    }
  }
  if (!replaced) lines.push_back(entry);
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  try {
    WriteFileAtomically(path, text, 0600);
  } catch (const std::exception& error) {
    throw UsersFileError(error.what());
  }
}

}  // namespace fx::devserver
