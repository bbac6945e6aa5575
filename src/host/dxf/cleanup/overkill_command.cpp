// OVERKILL on the console: object selection, options and the report (see
// cleanup_commands.h).
#include <algorithm>
#include <charconv>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "host/dxf/cleanup/cleanup_commands.h"
#include "host/dxf/cleanup/command_support.h"
#include "host/dxf/cleanup/overkill.h"
#include "host/dxf/imp_database.h"
#include "host/editor.h"

namespace fx::cleanup {
namespace {

std::vector<AcDbStub*> ModelSpace(AcDbImpDatabase& db) {
  std::vector<AcDbStub*> entities;
  if (fx::dxf::BlockContents* block = db.BlockOf(db.model_space()))
    for (AcDbStub* entity : block->entities)
      if (!entity->erased) entities.push_back(entity);
  return entities;
}

// Reads "Select objects:" until an empty answer; false when cancelled.
bool SelectObjects(AcDbImpDatabase& db, std::vector<AcDbStub*>& selection) {
  const std::vector<AcDbStub*> model_space = ModelSpace(db);
  std::unordered_set<const AcDbStub*> in_model_space(model_space.begin(), model_space.end());
  std::unordered_set<const AcDbStub*> chosen;
  for (;;) {
    char answer[256];
    if (acedGetString(0, "\nSelect objects: ", answer, sizeof answer) != RTNORM) return false;
    const std::string text = answer;
    if (text.empty()) break;
    size_t found = 0;
    if (fx::dxf::FoldCase(text) == "all") {
      for (AcDbStub* entity : model_space) {
        if (chosen.insert(entity).second) selection.push_back(entity);
        ++found;
      }
      acutPrintf("\n%zu found", found);
      continue;
    }
    AcDbHandle handle(text);
    AcDbStub* stub = handle.isNull() ? nullptr : db.FindHandle(handle);
    if (stub == nullptr || stub->erased || stub->synthetic_handle || !in_model_space.count(stub)) {
      acutPrintf("\nNo object in model space has the handle \"%s\".", text.c_str());
      continue;
    }
    if (chosen.insert(stub).second) selection.push_back(stub);
    acutPrintf("\n1 found, %zu total", selection.size());
  }
  // The first in drawing order stays: put the selection in that order.
  std::unordered_map<const AcDbStub*, size_t> position;
  for (size_t i = 0; i < model_space.size(); ++i) position[model_space[i]] = i;
  std::sort(selection.begin(), selection.end(),
            [&](const AcDbStub* a, const AcDbStub* b) { return position[a] < position[b]; });
  return true;
}

// The options prompt until Done; false when cancelled.
bool AskOptions(OverkillOptions& options) {
  for (;;) {
    acedInitGet(0, "Tolerance Done");
    char option[16];
    int status = acedGetKword("\nEnter an option [Tolerance/Done] <Done>: ", option, sizeof option);
    if (status == RTNONE || (status == RTNORM && std::string(option) == "Done")) return true;
    if (status != RTNORM) return false;
    const std::string prompt = "\nEnter tolerance <" + std::to_string(options.tolerance) + ">: ";
    char answer[64];
    if (acedGetString(0, prompt.c_str(), answer, sizeof answer) != RTNORM) return false;
    const std::string text = answer;
    if (text.empty()) continue;
    double value = -1;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !(value >= 0)) {
      acutPrintf("\nRequires a number of 0 or more.");
      continue;
    }
    options.tolerance = value;
  }
}

}  // namespace

void OverkillCommand() {
  AcDbImpDatabase* db = DrawingOrFail();
  if (db == nullptr) return;
  std::vector<AcDbStub*> selection;
  if (!SelectObjects(*db, selection)) return;
  if (selection.empty()) {
    acutPrintf("\nNothing selected.");
    return;
  }
  OverkillOptions options;
  if (!AskOptions(options)) return;
  const OverkillResult result = Overkill(*db, selection, options);
  acutPrintf("\n%d duplicate(s) deleted, %d overlapping object(s) or segment(s) deleted", result.duplicates,
             result.overlaps);
}

}  // namespace fx::cleanup
