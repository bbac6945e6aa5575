// The users file of the development server: one `name:salt:hash` a line,
// the salt 16 random bytes and the hash PBKDF2-HMAC-SHA256 of the password
// (kPasswordIterations rounds, 32 bytes), both in lowercase hex. Blank lines
// and lines starting with '#' are kept and ignored. Passwords are never
// stored.
#ifndef FLOORXPORT_TOOLS_VANTORY_DEVSERVER_USERS_H_
#define FLOORXPORT_TOOLS_VANTORY_DEVSERVER_USERS_H_

#include <array>
#include <cstdint>
#include <ctime>
#include <map>
#include <mutex>
#include <stdexcept>
#include <string>
#include <string_view>

namespace fx::devserver {

inline constexpr int kPasswordIterations = 600000;

class UsersFileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The users a running server accepts. The file is read again when it
// changes on disk, so `adduser` takes effect without a restart.
class UserStore {
 public:
  // Reads the file; throws UsersFileError when it is missing or malformed.
  explicit UserStore(std::string path);

  // True when `name` is a user and `password` is theirs. Thread-safe. A
  // password once verified is remembered as a keyed digest, so only the
  // first request of a user pays for the slow hash.
  bool Verify(std::string_view name, std::string_view password);

  // Adds `name` to the users file, or gives an existing user the new
  // password. The file is replaced whole (temporary file, then rename),
  // readable by its owner only. Throws UsersFileError.
  static void AddUser(const std::string& path, const std::string& name,
                      std::string_view password);

 private:
  using Salt = std::array<unsigned char, 16>;
  using Digest = std::array<unsigned char, 32>;
  struct Entry {
    Salt salt;
    Digest hash;
  };
  struct FileStamp {
    std::int64_t mtime_ns = 0;
    std::int64_t size = 0;
    std::uint64_t inode = 0;
    bool operator==(const FileStamp&) const = default;
  };

  void ReloadIfChanged();  // with mutex_ held
  Digest Remembered(std::string_view password) const;

  std::string path_;
  std::mutex mutex_;
  FileStamp stamp_;
  std::map<std::string, Entry, std::less<>> users_;
  std::map<std::string, Digest, std::less<>> verified_;
  Digest cache_key_{};
};

}  // namespace fx::devserver

#endif  // FLOORXPORT_TOOLS_VANTORY_DEVSERVER_USERS_H_
