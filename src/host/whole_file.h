// Files written whole or not at all: every file the product writes (drawing
// saves, exports, the settings file, reports, downloads) goes through here.
// The bytes go to a temporary file beside the target, which is flushed to
// disk and renamed over the target; the folder is flushed too, so that the
// rename survives a crash. A reader, or a run after a kill, sees the old
// file or the new one, never a part.
//
// A temporary file is named ".NAME.fxtmp-PID-RANDOM" (NAME the target's
// file name, PID the writing process). One left by a killed process is
// removed by the next write into the same folder, once that process is gone.
#ifndef FLOORXPORT_HOST_WHOLE_FILE_H_
#define FLOORXPORT_HOST_WHOLE_FILE_H_

#include <string>
#include <string_view>

namespace fx {

struct WholeFileOptions {
  // Permission bits of a file that does not exist yet, less the umask. A
  // replaced file keeps its own bits.
  unsigned new_file_mode = 0666;
};

// The new content of one file, committed in one step.
class WholeFile {
 public:
  // Removes stale temporary files from the target's folder, then creates a
  // new, empty temporary file there; check ok().
  explicit WholeFile(std::string target, WholeFileOptions options = {});
  // Removes the temporary file unless it was committed.
  ~WholeFile();
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;

  bool ok() const { return fd_ >= 0; }
  // "TARGET: what failed: the system's reason", after a failure.
  const std::string& error() const { return error_; }
  const std::string& temporary_path() const { return temporary_; }

  // Writes all of `bytes`; false on failure.
  bool Write(std::string_view bytes);
  // A second descriptor of the temporary file, for a library that closes
  // what it is given (zlib's gzclose); -1 on failure. CloseDuplicate closes
  // one that was not handed over.
  int Duplicate() const;
  static void CloseDuplicate(int fd);
  // Flushes to disk, closes, and renames over the target; false on failure,
  // when the temporary file is removed and the target left as it was.
  bool Commit();

 private:
  bool Fail(const std::string& what);

  std::string target_;
  std::string temporary_;
  std::string error_;
  int fd_ = -1;
  bool committed_ = false;
};

// Replaces `path` with `bytes` through a WholeFile. False with *error (when
// given) set to WholeFile::error() on failure; `path` is then unchanged.
bool WriteWholeFile(const std::string& path, std::string_view bytes, std::string* error = nullptr,
                    WholeFileOptions options = {});

// ".NAME.fxtmp-PID-RANDOM" for the target file name NAME.
std::string TemporaryFileName(std::string_view file_name, long pid, std::string_view random);

// The PID in a name made by TemporaryFileName; 0 for any other name.
long TemporaryFileOwner(std::string_view file_name);

// Removes the temporary files in `directory` whose process no longer runs;
// returns how many. Files of running processes, ours included, stay.
int RemoveStaleTemporaryFiles(const std::string& directory);

}  // namespace fx

#endif  // FLOORXPORT_HOST_WHOLE_FILE_H_
