// The settings file on disk: reading it, and changing it safely when several
// processes write at once. Writes replace the file whole (a temporary file
// beside it, flushed to disk, renamed over it), so a reader never sees a
// half-written file and a failed or killed write leaves the old one.
#ifndef FLOORXPORT_SETTINGS_SETTINGS_FILE_H_
#define FLOORXPORT_SETTINGS_SETTINGS_FILE_H_

#include <functional>
#include <string>
#include <vector>

#include "settings/reg_file.h"
#include "settings/reg_file_reader.h"

namespace fx::settings {

// A settings file as read.
struct LoadedSettingsFile {
  bool exists = false;                   // false: no file yet, `file` is empty
  RegFile file;                          // every valid key and value
  std::vector<RegFileProblem> problems;  // damaged lines; empty for a sound file
};

// Suffix of the lock file beside the settings file ("VantoryApp.reg.lock").
// It is never removed: removing it would let a process lock a file that a
// waiting process no longer sees.
constexpr char kLockFileSuffix[] = ".lock";

// Reads `path` without taking the lock (a rename makes every write appear
// whole). A missing file is an empty store. False, with *failure, when the
// file exists but cannot be read; a damaged file still loads.
bool LoadSettingsFile(const std::string& path, LoadedSettingsFile* loaded, std::string* failure);

// Changes the file under an exclusive lock on `path` + kLockFileSuffix: it
// creates missing directories, takes the lock, reads the file afresh, calls
// `change`, and when `change` returns true writes the result (in the
// encoding it was read in, UTF-16LE for a new file) and releases the lock.
// So a value written by another process between our read and our write is
// never lost. A damaged file is rewritten from its valid part plus the
// change. The file keeps its permission bits, a new one gets 0600; a
// symbolic link is followed, so the link stays and its target changes. False,
// with *failure, when the file cannot be read, locked or written; the file is
// then unchanged.
bool UpdateSettingsFile(const std::string& path,
                        const std::function<bool(LoadedSettingsFile& loaded)>& change,
                        std::string* failure);

}  // namespace fx::settings

#endif  // FLOORXPORT_SETTINGS_SETTINGS_FILE_H_
