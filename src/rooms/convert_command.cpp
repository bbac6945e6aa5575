#include "rooms/convert_command.h"

#include <exception>
#include <string>

#include "host/editor.h"
#include "rooms/doc_data.h"

namespace fx::rooms {
namespace {

constexpr size_t kAnswerSize = 133;

// One answer; false when the input was cancelled. An answer longer than
// the buffer is cut, as the editor's buffer cuts it.
bool Ask(const char* prompt, std::string& answer) {
  char buffer[kAnswerSize] = {};
  const int read = acedGetString(0, prompt, buffer, sizeof buffer);
  if (read != RTNORM && read != RTINPUTTRUNCATED) return false;
  answer = buffer;
  return true;
}

}  // namespace

std::optional<ConvertOptions> AskConvertOptions() {
  CDocData& document = DocVars().docData();
  ConvertOptions options;
  bool block = true;
  if (!Ask("\nEnter FloorArea layer: ", options.floor_layer) ||
      !Ask("\nEnter room contours layer: ", options.contour_layer) ||
      !document.AskBlockOrText("\nRoom Identification", block)) {
    return std::nullopt;
  }
  if (block) {
    options.mode = IdentificationMode::kBlock;
    if (!Ask("\nEnter block name: ", options.block_name) ||
        !Ask("\nEnter Name Attribute: ", options.name_tag) ||
        !Ask("\nEnter Category Attribute: ", options.category_tag) ||
        !Ask("\nEnter Description Attribute: ", options.description_tag) ||
        !document.AskYesNo("\nDo you want remove block inserts?", options.remove_inserts)) {
      return std::nullopt;
    }
  } else {
    options.mode = IdentificationMode::kText;
    if (!Ask("\nEnter name attribute text entities layer: ", options.name_layer) ||
        !Ask("\nEnter type attribute text entities layer: ", options.type_layer) ||
        !Ask("\nEnter description attribute text entities layer: ", options.description_layer)) {
      return std::nullopt;
    }
  }
  return options;
}

// The command's exception firewall: nothing thrown leaves a command.
void ConvertCommand() {
  try {
    const std::optional<ConvertOptions> options = AskConvertOptions();
    if (!options) return;
    IdentifyRooms(*options, DocVars().docData());
  } catch (const std::exception& error) {
    acutPrintf("\nvantoryconvert failed: %s", error.what());
  } catch (...) {
    acutPrintf("\nvantoryconvert failed.");
  }
}

}  // namespace fx::rooms
