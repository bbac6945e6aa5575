// What a drawing's run left: the analysis summary and the first problem in
// its transcript, and the files it wrote.
#ifndef FLOORXPORT_TOOLS_FLOORXPORT_BATCH_RESULTS_H_
#define FLOORXPORT_TOOLS_FLOORXPORT_BATCH_RESULTS_H_

#include <chrono>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace fx::cli {

// The "Room analysis:" block that analyze and review print, as an object
// whose keys are its labels in snake case ("rooms_identified") and whose
// values are numbers where the text is one ({"floor_outline": "handle 2F",
// "room_contours": 12, ...}); null when the transcript has none.
nlohmann::ordered_json ParseAnalysisSummary(const std::string& transcript);

// The first "floorxport: ..." line of the transcript that is no warning
// (the first thing that went wrong), or "".
std::string FirstProblem(const std::string& transcript);

// The options of the subcommand that name a file or folder it writes
// (-o, --output, --report), as given in `args`.
std::vector<std::string> OutputOptions(const std::vector<std::string>& args);

// The regular files among `places` (files, or folders searched recursively)
// modified at or after `since`, sorted, without duplicates and without
// `exclude`.
std::vector<std::string> FilesWrittenSince(const std::vector<std::string>& places,
                                           std::chrono::system_clock::time_point since,
                                           const std::string& exclude);

}  // namespace fx::cli

#endif  // FLOORXPORT_TOOLS_FLOORXPORT_BATCH_RESULTS_H_
