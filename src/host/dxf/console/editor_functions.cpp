// The editor functions of the host API (host/editor.h) on the console: they
// read and print through the current command runner. Every one of them is
// defined here, so that a program that calls one links them all.
#include <charconv>
#include <cstdarg>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/database.h"
#include "host/dxf/console/command_runner.h"
#include "host/dxf/console/coordinate_systems.h"
#include "host/dxf/console/keywords.h"
#include "host/dxf/console/presenter.h"
#include "host/dxf/console/system_variables.h"
#include "host/editor.h"

namespace fx::console {
namespace {

// What acedInitGet set up; it applies to the next input call only.
struct InitGet {
  int flags = 0;
  std::string keywords;
};
InitGet g_init_get;

InitGet TakeInitGet() { return std::exchange(g_init_get, InitGet()); }

// Copies an answer into the caller's buffer, cutting it at a character
// boundary when it does not fit.
int CopyAnswer(const std::string& answer, char* result, size_t size) {
  if (answer.size() < size) {
    answer.copy(result, answer.size());
    result[answer.size()] = '\0';
    return RTNORM;
  }
  size_t length = size - 1;
  while (length > 0 && (static_cast<unsigned char>(answer[length]) & 0xC0) == 0x80) --length;
  answer.copy(result, length);
  result[length] = '\0';
  return RTINPUTTRUNCATED;
}

std::string FormatReal(double value) {
  char buffer[32];
  auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value);
  return error == std::errc() ? std::string(buffer, end) : std::string("0");
}

std::optional<double> ParseReal(std::string_view text) {
  if (text.starts_with('+')) text.remove_prefix(1);
  double value = 0;
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

// "x,y" or "x,y,z"; with a leading '@', relative to `base` (or the origin).
bool ParsePoint(std::string_view text, const double* base, ads_point result) {
  const bool relative = text.starts_with('@');
  if (relative) text.remove_prefix(1);
  double values[3] = {0, 0, 0};
  int count = 0;
  for (;;) {
    size_t comma = text.find(',');
    std::optional<double> value = ParseReal(text.substr(0, comma));
    if (!value || count == 3) return false;
    values[count++] = *value;
    if (comma == std::string_view::npos) break;
    text.remove_prefix(comma + 1);
  }
  if (count < 2) return false;
  for (int i = 0; i < 3; ++i) {
    result[i] = values[i] + (relative && base != nullptr ? base[i] : 0.0);
  }
  return true;
}

// The handle of the object an entity name stands for, as ZOOM's object
// selection reads it; empty when the name is not valid.
std::string EntityAnswer(const int64_t* name) {
  AcDbObjectId id;
  if (name == nullptr || acdbGetObjectId(id, name) != Acad::eOk || id.isNull()) return {};
  return id.handle().ascii();
}

}  // namespace
}  // namespace fx::console

using fx::console::CurrentRunner;
using fx::console::ReadStatus;
using fx::console::TokenEnd;

int acutPrintf(const char* format, ...) {
  va_list args;
  va_start(args, format);
  va_list copy;
  va_copy(copy, args);
  int length = std::vsnprintf(nullptr, 0, format, copy);
  va_end(copy);
  if (length <= 0) {
    va_end(args);
    return length < 0 ? 0 : length;
  }
  std::string text(static_cast<size_t>(length) + 1, '\0');
  std::vsnprintf(text.data(), text.size(), format, args);
  va_end(args);
  text.pop_back();
  CurrentRunner().console().Print(text);
  return length;
}

int acedGetString(int cronly, const char* prompt, char* result, size_t size) {
  fx::console::TakeInitGet();
  if (result == nullptr || size == 0) return RTERROR;
  std::string answer;
  if (CurrentRunner().ReadAnswer(prompt != nullptr ? prompt : "",
                                 cronly != 0 ? TokenEnd::kLineEnd : TokenEnd::kBlank,
                                 answer) != ReadStatus::kOk) {
    result[0] = '\0';
    return RTCAN;
  }
  return fx::console::CopyAnswer(answer, result, size);
}

int acedInitGet(int flags, const char* keywords) {
  fx::console::g_init_get = {flags, keywords != nullptr ? keywords : ""};
  return RTNORM;
}

int acedGetKword(const char* prompt, char* result, size_t size) {
  const fx::console::InitGet init = fx::console::TakeInitGet();
  if (result == nullptr || size == 0) return RTERROR;
  result[0] = '\0';
  const fx::console::KeywordList keywords(init.keywords);
  fx::console::CommandRunner& runner = CurrentRunner();
  for (;;) {
    std::string answer;
    if (runner.ReadAnswer(prompt != nullptr ? prompt : "", TokenEnd::kBlank, answer) !=
        ReadStatus::kOk) {
      return RTCAN;
    }
    if (answer.empty()) {
      if ((init.flags & RSG_NONULL) == 0) return RTNONE;
      runner.console().Print("\nRequires a keyword.");
      continue;
    }
    if (keywords.empty()) return fx::console::CopyAnswer(answer, result, size);
    if (std::optional<std::string> keyword = keywords.Match(answer)) {
      return fx::console::CopyAnswer(*keyword, result, size);
    }
    runner.console().Print("\nInvalid option keyword.");
  }
}

int acedGetPoint(const ads_point base, const char* prompt, ads_point result) {
  const fx::console::InitGet init = fx::console::TakeInitGet();
  fx::console::CommandRunner& runner = CurrentRunner();
  for (;;) {
    std::string answer;
    if (runner.ReadAnswer(prompt != nullptr ? prompt : "", TokenEnd::kBlank, answer) !=
        ReadStatus::kOk) {
      return RTCAN;
    }
    if (answer.empty()) {
      if ((init.flags & RSG_NONULL) == 0) return RTNONE;
      runner.console().Print("\nRequires a point.");
      continue;
    }
    if (fx::console::ParsePoint(answer, base, result)) return RTNORM;
    runner.console().Print("\nInvalid point.");
  }
}

int acedCommandS(int rtype, ...) {
  va_list args;
  va_start(args, rtype);
  std::vector<std::string> tokens;
  bool valid = true;
  for (int type = rtype; type != RTNONE && type != 0; type = va_arg(args, int)) {
    switch (type) {
      case RTSTR: {
        const char* text = va_arg(args, const char*);
        tokens.emplace_back(text != nullptr ? text : "");
        break;
      }
      case RTENAME:
        tokens.push_back(fx::console::EntityAnswer(va_arg(args, const int64_t*)));
        valid = !tokens.back().empty();
        break;
      case RTREAL: tokens.push_back(fx::console::FormatReal(va_arg(args, double))); break;
      case RTSHORT:
      case RTLONG: tokens.push_back(std::to_string(va_arg(args, int))); break;
      case RTPOINT:
      case RT3DPOINT: {
        const double* point = va_arg(args, const double*);
        std::string text =
            fx::console::FormatReal(point[0]) + "," + fx::console::FormatReal(point[1]);
        if (type == RT3DPOINT) text += "," + fx::console::FormatReal(point[2]);
        tokens.push_back(std::move(text));
        break;
      }
      default: valid = false; break;
    }
    // Past a value it cannot read, the rest of the list cannot be read either.
    if (!valid) break;
  }
  va_end(args);
  if (!valid) {
    CurrentRunner().console().Print("\nacedCommandS: an argument cannot be used as an answer.");
    return RTERROR;
  }
  return CurrentRunner().RunWithAnswers(std::move(tokens));
}

int acedGetVar(const char* name, resbuf* result) { return fx::console::GetSystemVariable(name, result); }

int acedSetVar(const char* name, const resbuf* value) { return fx::console::SetSystemVariable(name, value); }

int acedTrans(const ads_point point, const resbuf* from, const resbuf* to, int disp, ads_point result) {
  return fx::console::TransformPoint(point, from, to, disp, result);
}

int acedMessageBox(const char* text, const char* caption, unsigned type) {
  return CurrentRunner().console().MessageBox(text != nullptr ? text : "",
                                              caption != nullptr ? caption : "", type);
}

int acedSetStatusBarProgressMeter(const char* label, int min_pos, int max_pos) {
  fx::console::Console& console = CurrentRunner().console();
  console.progress().Start(label != nullptr ? label : "", min_pos, max_pos);
  if (console.presenter() != nullptr) {
    console.presenter()->ProgressStarted(label != nullptr ? label : "", min_pos, max_pos);
  }
  return 0;
}

int acedSetStatusBarProgressMeterPos(int pos) {
  fx::console::Console& console = CurrentRunner().console();
  console.progress().SetPosition(pos);
  if (console.presenter() != nullptr) console.presenter()->ProgressMoved(pos);
  return 0;
}

void acedRestoreStatusBar() {
  fx::console::Console& console = CurrentRunner().console();
  console.progress().Stop();
  if (console.presenter() != nullptr) console.presenter()->ProgressStopped();
}
