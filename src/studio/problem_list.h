// The problems of the last room analysis as the page highlights them: for
// each of the five kinds its label, the command that zooms to the next one,
// and each problem's entity (handle, layer, room name, box in world
// coordinates); plus the entity each zoom-to-next command visited last.
#ifndef FLOORXPORT_STUDIO_PROBLEM_LIST_H_
#define FLOORXPORT_STUDIO_PROBLEM_LIST_H_

#include <nlohmann/json.hpp>

namespace fx::studio {

// The current document's problems:
//   {"analysed": bool, "kinds": [{"kind", "label", "command", "visited",
//    "problems": [{"handle", "layer", "name", "box": [x0, y0, x1, y1]}]}]}
// The empty-contour command asks for the contours' layer: its "command"
// carries the layer of the first empty contour as the answer.
nlohmann::json ProblemListJson();

}  // namespace fx::studio

#endif  // FLOORXPORT_STUDIO_PROBLEM_LIST_H_
