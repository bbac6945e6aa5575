#include "review/atlas.h"

#include <filesystem>
#include <system_error>

#include "host/whole_file.h"
#include "review/atlas_floor.h"
#include "review/atlas_page.h"
#include "review/findings_json.h"
#include "rooms/doc_data.h"

namespace fx::review {
namespace {

bool MakeFolder(const std::string& dir, std::string* error) {
  std::error_code code;
  std::filesystem::create_directories(dir, code);
  if (code || !std::filesystem::is_directory(dir, code)) {
    *error = dir + ": cannot make the folder" + (code ? ": " + code.message() : "");
    return false;
  }
  return true;
}

bool WriteWhole(fx::WholeFile& file, const std::string& text, std::string* error) {
  if (file.ok() && file.Write(text)) return true;
  *error = file.error();
  return false;
}

}  // namespace

bool WriteAtlas(AcDbDatabase& database, const fx::rooms::CDocData& data, const std::string& drawing,
                const std::string& dir, AtlasResult* result, std::string* error) {
  ReviewData& review = result->review;
  review.drawing = drawing;
  review.rooms_identified = data.identifiedRoomCount();
  review.findings = CollectFindings(data);
  AtlasFloor floor;
  if (!RenderAtlasFloor(database, &floor, error)) return false;
  review.view = floor.view;
  AddMarks(floor, review.findings);
  const std::string json = FindingsJson(review);
  std::string page;
  AppendAtlasPage(review, floor, page);
  floor.svg.reset();

  if (!MakeFolder(dir, error)) return false;
  const std::filesystem::path folder(dir);
  fx::WholeFile json_file((folder / kFindingsFile).string());
  fx::WholeFile page_file((folder / kPageFile).string());
  if (!WriteWhole(json_file, json, error) || !WriteWhole(page_file, page, error)) return false;
  if (!json_file.Commit()) {
    *error = json_file.error();
    return false;
  }
  if (!page_file.Commit()) {
    *error = page_file.error();
    return false;
  }
  result->json_bytes = json.size();
  result->page_bytes = page.size();
  return true;
}

}  // namespace fx::review
