#include "host/dxf/console/system_variables.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>

#include "host/database.h"
#include "host/dxf/console/command_runner.h"
#include "host/dxf/console/text_case.h"
#include "host/dxf/dxf_header_variables.h"
#include "host/dxf/dxf_values.h"
#include "host/dxf/imp_database.h"

namespace fx::console {
namespace {

enum class Home { kHeader, kSession };

// What a set accepts: integers in [min, max]; reals above `min`.
struct Range {
  double min = 0;
  double max = 0;
};

struct Variable {
  const char* name;
  short type;  // RTSHORT, RTREAL or RT3DPOINT
  Home home;
  // Header variables: the header name, the group code of the value (of x
  // for a point) and the value when the header lacks it.
  const char* header;
  int code;
  double fallback[3];
  bool settable;
  Range range;
};

constexpr double kHuge = 1e20;  // the editor's empty extents run from +1e20 to -1e20

// clang-format off
constexpr Variable kVariables[] = {
    {"CMDECHO",     RTSHORT,   Home::kSession, nullptr,        0,  {},                       true,  {0, 1}},
    {"EXTMAX",      RT3DPOINT, Home::kHeader,  "$EXTMAX",      10, {-kHuge, -kHuge, -kHuge}, false, {}},
    {"EXTMIN",      RT3DPOINT, Home::kHeader,  "$EXTMIN",      10, {kHuge, kHuge, kHuge},    false, {}},
    {"INSUNITS",    RTSHORT,   Home::kHeader,  "$INSUNITS",    70, {0},                      true,  {0, 20}},
    {"LTSCALE",     RTREAL,    Home::kHeader,  "$LTSCALE",     40, {1},                      true,  {0, 0}},
    {"LUNITS",      RTSHORT,   Home::kHeader,  "$LUNITS",      70, {2},                      true,  {1, 5}},
    {"LUPREC",      RTSHORT,   Home::kHeader,  "$LUPREC",      70, {4},                      true,  {0, 8}},
    {"UCSORG",      RT3DPOINT, Home::kHeader,  "$UCSORG",      10, {0, 0, 0},                false, {}},
    {"UCSXDIR",     RT3DPOINT, Home::kHeader,  "$UCSXDIR",     10, {1, 0, 0},                false, {}},
    {"UCSYDIR",     RT3DPOINT, Home::kHeader,  "$UCSYDIR",     10, {0, 1, 0},                false, {}},
};
// clang-format on

const Variable* Find(const char* name) {
  if (name == nullptr) return nullptr;
  for (const Variable& variable : kVariables) {
    if (EqualNoCase(variable.name, name)) return &variable;
  }
  return nullptr;
}

AcDbDatabase* Drawing() { return acdbHostApplicationServices()->workingDatabase(); }

// The value tag with `code` of a header variable; empty when absent.
std::string_view HeaderTag(AcDbDatabase& database, const char* header, int code) {
  for (const fx::dxf::Tag& tag : fx::dxf::GetHeaderVariable(database.impl()->document(), header)) {
    if (tag.code == code) return fx::dxf::TrimBlanks(tag.value);
  }
  return {};
}

double HeaderNumber(AcDbDatabase& database, const Variable& variable, int axis) {
  const std::string_view text = HeaderTag(database, variable.header, variable.code + 10 * axis);
  const std::optional<double> value = fx::dxf::ParseDouble(text);
  return value && std::isfinite(*value) ? *value : variable.fallback[axis];
}

int GetHeader(AcDbDatabase& database, const Variable& variable, resbuf& result) {
  result.restype = variable.type;
  switch (variable.type) {
    case RTSHORT:
      result.resval.rint = static_cast<short>(std::clamp(HeaderNumber(database, variable, 0), -32768.0, 32767.0));
      break;
    case RTREAL: result.resval.rreal = HeaderNumber(database, variable, 0); break;
    default:
      for (int axis = 0; axis < 3; ++axis) {
        result.resval.rpoint[axis] = HeaderNumber(database, variable, axis);
      }
      break;
  }
  return RTNORM;
}

// The number a set gives, or false when the value is refused.
bool AcceptedNumber(const Variable& variable, const resbuf& value, double& number) {
  if (value.restype == RTSHORT) {
    number = value.resval.rint;
  } else if (value.restype == RTLONG) {
    number = value.resval.rlong;
  } else if (value.restype == RTREAL && variable.type == RTREAL) {
    number = value.resval.rreal;
  } else {
    return false;
  }
  if (variable.type == RTREAL) return std::isfinite(number) && number > variable.range.min;
  return number >= variable.range.min && number <= variable.range.max;
}

int SetHeader(AcDbDatabase& database, const Variable& variable, double number) {
  const std::string text = variable.type == RTSHORT ? std::to_string(static_cast<int>(number))
                                                    : fx::dxf::FormatDouble(number);
  const fx::dxf::Tag tags[] = {{variable.code, text}};
  AcDbImpDatabase& drawing = *database.impl();
  if (HeaderTag(database, variable.header, variable.code) != text) {
    fx::dxf::SetHeaderVariable(drawing.document(), variable.header, tags);
    drawing.MarkModified();
  }
  return RTNORM;
}

}  // namespace

int GetSystemVariable(const char* name, resbuf* result) {
  const Variable* variable = Find(name);
  if (variable == nullptr || result == nullptr) return RTERROR;
  if (variable->home == Home::kSession) {
    result->restype = RTSHORT;
    result->resval.rint = CurrentRunner().console().commandEcho() ? 1 : 0;
    return RTNORM;
  }
  AcDbDatabase* database = Drawing();
  if (database == nullptr) return RTERROR;
  return GetHeader(*database, *variable, *result);
}

int SetSystemVariable(const char* name, const resbuf* value) {
  const Variable* variable = Find(name);
  if (variable == nullptr || value == nullptr) return RTERROR;
  AcDbDatabase* database = Drawing();
  if (variable->home != Home::kSession && database == nullptr) return RTERROR;
  double number = 0;
  if (!variable->settable || !AcceptedNumber(*variable, *value, number)) return RTREJ;
  if (variable->home == Home::kSession) {
    CurrentRunner().console().SetCommandEcho(number != 0);
    return RTNORM;
  }
  return SetHeader(*database, *variable, number);
}

}  // namespace fx::console
