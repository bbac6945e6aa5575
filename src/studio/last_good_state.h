// What a failed command goes back to: the drawing as it was after the last
// command that ran to its end. At first that is the file the drawing was
// read from; after each command that changed the drawing and ran to its end,
// the drawing is written (whole, without stamping its update time) into a
// private temporary folder, and that file is the state to go back to. The
// drawing's own file changes only when the user saves.
//
// Writing resets the database's modified flag, so the flag always tells
// whether the drawing changed since the last kept state.
#ifndef FLOORXPORT_STUDIO_LAST_GOOD_STATE_H_
#define FLOORXPORT_STUDIO_LAST_GOOD_STATE_H_

#include <memory>
#include <string>

#include "server/temp_folder.h"

class AcDbDatabase;

namespace fx::dxf {
struct DwgSource;
}

namespace fx::studio {

class LastGoodState {
 public:
  // `source` is the file the drawing was read from.
  explicit LastGoodState(std::string source) : source_(std::move(source)) {}

  // Whether `database` changed since the state kept last.
  static bool Changed(const AcDbDatabase& database);
  // Keeps `database` as the state to go back to when it changed. False, with
  // *error, when it could not be written (the state kept before stays).
  bool Keep(AcDbDatabase& database, std::string* error);
  // Starts over from `source` (a drawing opened or saved as another file).
  void Reset(std::string source);

  // Reads the kept state back, under the name `name` (the drawing's file, as
  // filename() reports it) and, for a drawing read from a DWG, with its
  // `dwg` source. nullptr, with *error, when it cannot be read.
  std::unique_ptr<AcDbDatabase> Read(const std::string& name, const fx::dxf::DwgSource* dwg,
                                     std::string* error) const;

 private:
  std::string source_;
  std::unique_ptr<fx::server::TempFolder> folder_;  // made on the first Keep
  std::string kept_;                                // empty: source_ is the state
};

}  // namespace fx::studio

#endif  // FLOORXPORT_STUDIO_LAST_GOOD_STATE_H_
