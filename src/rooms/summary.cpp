#include "rooms/summary.h"

#include "host/documents.h"
#include "host/editor.h"
#include "rooms/room_list_fields.h"
#include "settings/known_settings.h"
#include "settings/settings.h"

namespace fx::rooms {
namespace {

// kProblemLines is indexed by kind.
constexpr bool LinesInKindOrder() {
  for (size_t i = 0; i < kProblemLines.size(); ++i) {
    if (static_cast<size_t>(kProblemLines[i].kind) != i) return false;
  }
  return true;
}
static_assert(LinesInKindOrder());

// A caption without its mnemonic mark: "&Area not found :" -> "Area not found :".
std::string WithoutMnemonic(const char* caption) {
  std::string text;
  for (const char* c = caption; *c != '\0'; ++c) {
    if (*c != '&') text += *c;
  }
  return text;
}

void SendToCommandLine(const std::string& line) {
  AcApDocManager* documents = acDocManagerPtr();
  documents->sendStringToExecute(documents->curDocument(), line.c_str());
}

void StartNavigation(const ProblemLine& line) {
  const std::string command = std::string("_") + line.command;
  if (line.kind != ProblemKind::kEmptyContour) {
    SendToCommandLine(command + " ");
    return;
  }
  const std::string layer = fx::settings::GetSettingString(fx::settings::kContourLayer,
                                                           fx::settings::kSectionConvertOptions);
  acedCommandS(RTSTR, command.c_str(), RTSTR, layer.c_str(), RTSTR, "", RTNONE);
}

}  // namespace

AnalysisCounts CountAnalysis(const CDocData& data) {
  AnalysisCounts counts;
  counts.rooms = data.identifiedRoomCount();
  for (const ProblemLine& line : kProblemLines) {
    counts.problems[static_cast<size_t>(line.kind)] = data.problemCount(line.kind);
  }
  return counts;
}

CReportDlg::CReportDlg(AnalysisCounts counts) : counts_(counts) {}

std::vector<DialogField> CReportDlg::fields() const {
  std::vector<DialogField> fields = {
      ReadOnlyField("Rooms Identified :", std::to_string(counts_.rooms))};
  for (const ProblemLine& line : kProblemLines) {
    fields.push_back(
        ReadOnlyField(WithoutMnemonic(line.caption), std::to_string(counts_.problem(line.kind))));
  }
  return fields;
}

std::string CReportDlg::SetField(size_t, const std::string&) { return kReadOnlyReason; }

std::vector<CReportDlg::ButtonAction> CReportDlg::actions() const {
  std::vector<ButtonAction> actions = {{Action::kClose, {}}, {Action::kOpenRoomList, {}}};
  for (const ProblemLine& line : kProblemLines) {
    if (isEnabled(line.kind)) actions.push_back({Action::kProblem, line.kind});
  }
  return actions;
}

std::vector<std::string> CReportDlg::buttons() const {
  std::vector<std::string> labels;
  for (const ButtonAction& action : actions()) {
    switch (action.action) {
      case Action::kClose:
        labels.emplace_back("OK");
        break;
      case Action::kOpenRoomList:
        labels.emplace_back("&Open room list");
        break;
      case Action::kProblem:
        labels.emplace_back(kProblemLines[static_cast<size_t>(action.kind)].caption);
        break;
    }
  }
  return labels;
}

DialogAction CReportDlg::Press(size_t index) {
  const std::vector<ButtonAction> all = actions();
  if (index >= all.size()) return DialogAction::kStay;
  switch (all[index].action) {
    case Action::kClose:
      break;
    case Action::kOpenRoomList:
      SendToCommandLine(kOpenRoomListLine);
      break;
    case Action::kProblem:
      StartNavigation(kProblemLines[static_cast<size_t>(all[index].kind)]);
      break;
  }
  return DialogAction::kClose;
}

void ShowAnalysisSummary() {
  AcApDocument* document = acDocManagerPtr()->curDocument();
  if (document == nullptr) return;
  CReportDlg dialog(CountAnalysis(DocVars().docData(document)));
  fx::ShowDialog(dialog);
}

}  // namespace fx::rooms
