// CReportDlg, "Room Analyzing Summary": what the last analysis found, with
// a way to each problem and to the room list.
//
// As a model, fields (shown only): "Rooms Identified :" and one count per
// problem kind, labelled by its caption without the mnemonic ("Area not
// found :", "Duplicate Numbers :", "Intersected contours :", "Contours
// Without Identifiers :", "Room With Multiple Identifiers :"). Buttons, in
// order: "OK" (the default; closes), "&Open room list" (sends
// "vantoryroomlistdlg " to the active document's command line and closes),
// then the problem buttons whose count is not zero, in the order above,
// captioned "&Area not found :" and so on (a button of a zero count is
// disabled, so not offered). A problem button closes the summary and starts
// its navigation command: the four list-walking ones are sent to the command
// line ("_vantoryZoomToNextAreaNotFound "); the contour one runs through the
// host's command function with the ConvertOptions "Contour Layer" setting and
// an empty string.
#ifndef FLOORXPORT_ROOMS_SUMMARY_H_
#define FLOORXPORT_ROOMS_SUMMARY_H_

#include <array>
#include <string>
#include <vector>

#include "host/dialog.h"
#include "host/ids.h"
#include "rooms/doc_data.h"

namespace fx::rooms {

inline constexpr const char* kOpenRoomListLine = "vantoryroomlistdlg ";

struct ProblemLine {
  ProblemKind kind;
  const char* caption;  // the button's caption
  const char* command;  // the navigation command's local name
};
// In the summary's order.
inline constexpr std::array<ProblemLine, kProblemKindCount> kProblemLines = {{
    {ProblemKind::kAreaNotFound, "&Area not found :", "vantoryZoomToNextAreaNotFound"},
    {ProblemKind::kDuplicateNumber, "&Duplicate Numbers :", "vantoryZoomToNextDuplicateNumber"},
    {ProblemKind::kIntersectedContour,
     "&Intersected contours :", "vantoryZoomToNextIntersectContour"},
    {ProblemKind::kEmptyContour,
     "&Contours Without Identifiers :", "vantoryZoomToNextEmptyContour"},
    {ProblemKind::kMultipleIds, "&Room With Multiple Identifiers :", "vantoryZoomToNextMultiIDs"},
}};

struct AnalysisCounts {
  size_t rooms = 0;  // rooms identified: contours matched to an identifier
  std::array<size_t, kProblemKindCount> problems{};
  size_t problem(ProblemKind kind) const { return problems[static_cast<size_t>(kind)]; }
};

// The counts of a document's last analysis.
AnalysisCounts CountAnalysis(const CDocData& data);

class CReportDlg : public fx::DialogModel {
 public:
  explicit CReportDlg(AnalysisCounts counts);

  std::string title() const override { return "Room Analyzing Summary"; }
  std::vector<DialogField> fields() const override;
  std::string SetField(size_t index, const std::string& value) override;
  std::vector<std::string> buttons() const override;
  DialogAction Press(size_t index) override;

  // Whether the problem button of `kind` is enabled (its count is not zero).
  bool isEnabled(ProblemKind kind) const { return counts_.problem(kind) != 0; }

 private:
  enum class Action { kClose, kOpenRoomList, kProblem };
  struct ButtonAction {
    Action action;
    ProblemKind kind;
  };
  std::vector<ButtonAction> actions() const;

  AnalysisCounts counts_;
};

// Shows the summary of the current document's last analysis. Command-free:
// it asks nothing but the dialog and may run at the end of a command or in a
// dialog flow. Nothing happens without a current document.
void ShowAnalysisSummary();

}  // namespace fx::rooms

#endif  // FLOORXPORT_ROOMS_SUMMARY_H_
