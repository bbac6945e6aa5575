#include "export/floor_checks.h"

#include <cmath>

#include "host/editor.h"

namespace fx::exports {
namespace {

// A warning that stops (strict) or a question whose Yes goes on.
bool WarnOrAsk(bool strict, const char* warning, const char* question) {
  if (strict) {
    acedMessageBox(warning, "", MB_OK | MB_ICONWARNING);
    return false;
  }
  return acedMessageBox(question, "", MB_YESNO | MB_ICONWARNING) == IDYES;
}

}  // namespace

bool IsZeroArea(double area) { return std::abs(area) <= 1e-6; }

bool CheckFloor(bool floor_found, double area, bool strict) {
  if (!floor_found) return WarnOrAsk(strict, kNoFloorWarning, kNoFloorQuestion);
  if (IsZeroArea(area)) return WarnOrAsk(strict, kZeroAreaWarning, kZeroAreaQuestion);
  return true;
}

}  // namespace fx::exports
