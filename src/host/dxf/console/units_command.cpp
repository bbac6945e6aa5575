// UNITS on the console (see host_commands.h).
#include <charconv>
#include <string>

#include "host/database.h"
#include "host/dxf/console/command_runner.h"
#include "host/dxf/console/host_commands.h"
#include "host/dxf/console/units_names.h"
#include "host/editor.h"

namespace fx::console {

void UnitsCommand() {
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  if (database == nullptr) {
    acutPrintf("\nNo drawing is open.");
    CurrentRunner().FailCommand();
    return;
  }
  const int current = database->insunits();
  acutPrintf("\nInsertion units ($INSUNITS): %d (%s)", current, InsunitsName(current));
  const std::string prompt =
      "\nEnter units (0-" + std::to_string(kMaxInsunits) + ") <" + std::to_string(current) + ">: ";
  for (;;) {
    char answer[32];
    int status = acedGetString(0, prompt.c_str(), answer, sizeof answer);
    if (status == RTCAN) return;
    const std::string text = status == RTNORM ? answer : "?";
    if (text.empty()) return;
    int units = -1;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), units);
    if (error == std::errc() && end == text.data() + text.size() && units >= 0 &&
        units <= kMaxInsunits) {
      Acad::ErrorStatus set = database->setInsunits(static_cast<AcDb::UnitsValue>(units));
      if (set != Acad::eOk) {
        acutPrintf("\nUNITS: %s", Acad::acadErrorStatusText(set));
        CurrentRunner().FailCommand();
      } else {
        acutPrintf("\nInsertion units set to %d (%s).", units, InsunitsName(units));
      }
      return;
    }
    acutPrintf("\nRequires an integer between 0 and %d.", kMaxInsunits);
  }
}

}  // namespace fx::console
