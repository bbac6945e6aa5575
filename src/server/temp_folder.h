// The private folder a send writes its files into: under $TEMP (or the
// system's temporary folder when TEMP is unset), named by a new UUID,
// readable by its owner only, and removed with its files when the object
// goes out of scope.
#ifndef FLOORXPORT_SERVER_TEMP_FOLDER_H_
#define FLOORXPORT_SERVER_TEMP_FOLDER_H_

#include <string>

namespace fx::server {

// A random (version 4) UUID in its string form.
std::string NewUuidText();

class TempFolder {
 public:
  // Creates the folder; ok() tells whether it was made.
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  bool ok() const { return !path_.empty(); }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_TEMP_FOLDER_H_
