#include "studio/studio_session.h"

#include <filesystem>
#include <optional>

#include "host/database.h"
#include "host/documents.h"
#include "host/dxf/console/active_view.h"
#include "host/dxf/console/command_registry.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/menu_bar.h"
#include "host/dxf/drawing_io.h"
#include "host/menu.h"
#include "rooms/doc_data.h"
#include "studio/menu_json.h"
#include "studio/problem_list.h"
#include "studio/studio_state.h"

namespace fx::studio {

StudioSession::StudioSession(HostLoop& loop, StudioState& state, std::string drawing,
                             const std::function<void(console::ModuleRegistry&)>& register_modules)
    : state_(state),
      terminal_(state),
      console_(terminal_, console::AnswerPolicy()),
      presenter_(loop, state, console_),
      base_runner_(console_, console::Commands()),
      last_good_(drawing),
      path_(std::move(drawing)) {
  register_modules(modules_);
  presenter_.SetAfterPress([this] { Publish(); });
}

StudioSession::~StudioSession() { Close(); }

bool StudioSession::Open(std::string* error) {
  session_ = std::make_unique<console::HostSession>(base_runner_, modules_);
  if (base_runner_.failed()) {
    *error = base_runner_.problems().front();
    return false;
  }
  auto warn = [this](const std::string& message) { console_.Print("\nWarning: " + message); };
  if (!session_->OpenDrawing(path_, error, warn)) return false;
  document_ = session_->document();
  // From here on, questions go to the page, and so do prompts that the
  // command lines leave unanswered.
  terminal_.SetPresenter(&presenter_);
  console_.script().SetLineReader([this](std::string& line) { return terminal_.ReadLine(line); });
  console_.SetPresenter(&presenter_);
  Publish();
  return true;
}

void StudioSession::Close() {
  console_.SetPresenter(nullptr);
  console_.script().SetLineReader(nullptr);
  terminal_.SetPresenter(nullptr);
  session_.reset();
}

AcDbDatabase* StudioSession::database() const {
  AcApDocument* document = session_ != nullptr ? session_->document() : nullptr;
  return document != nullptr ? document->database() : nullptr;
}

bool StudioSession::Claim(const std::string& line) {
  if (busy_ || session_ == nullptr) return false;
  busy_ = true;
  state_.Update([&](nlohmann::json& fields) { fields["busy"] = line; });
  return true;
}

void StudioSession::Run(const std::vector<std::string>& lines) {
  const size_t earlier_problems = base_runner_.problems().size();
  std::vector<std::string> problems;
  {
    console::CommandRunner runner(console_, console::Commands());
    runner.SetStopAtScriptEnd(true);
    console::ScopedRunner current(runner);
    for (const std::string& line : lines) console_.script().AddLine(line);
    runner.RunScript();
    problems = runner.problems();
  }
  // A drawing opened by a command (Open from) reports its failure here.
  const std::vector<std::string>& session_problems = base_runner_.problems();
  problems.insert(problems.end(), session_problems.begin() + static_cast<long>(earlier_problems),
                  session_problems.end());
  std::string joined;
  for (const std::string& line : lines) joined += (joined.empty() ? "" : "\n") + line;
  Finish(joined, problems.empty(), problems);
}

void StudioSession::RunMenuItem(const std::string& path) {
  std::string error;
  const AcApPopupMenuItem* item = console::FindMenuItem(path, &error);
  if (item == nullptr) {
    console_.Print("\nMenu: " + error);
    Finish(path, false, {error});
    return;
  }
  Run(console::MacroScriptLines(item->macro()));
}

void StudioSession::Finish(const std::string& line, bool ok, const std::vector<std::string>& problems) {
  AcDbDatabase* db = database();
  std::string error;
  if (session_->document() != document_) {
    // A command opened another drawing: it is the one served and saved now.
    document_ = session_->document();
    path_ = db != nullptr ? db->filename() : std::string();
    last_good_.Reset(path_);
    modified_ = false;
    ++revision_;
  } else if (db != nullptr && LastGoodState::Changed(*db)) {
    ++revision_;
    if (!ok) {
      if (Restore(&error)) {
        console_.Print("\nThe command did not run to its end: the drawing is as it was before it.");
      } else {
        console_.Print("\nThe drawing could not be restored: " + error);
      }
    } else {
      modified_ = true;
      if (!last_good_.Keep(*db, &error)) console_.Print("\nWarning: " + error);
    }
  }
  busy_ = false;
  state_.Update([&](nlohmann::json& fields) {
    fields["busy"] = nullptr;
    fields["last"] = {{"run", ++runs_}, {"line", line}, {"ok", ok}, {"problems", problems}};
  });
  Publish();
}

bool StudioSession::Restore(std::string* error) {
  AcDbDatabase* db = database();
  const std::string name = db->filename();
  std::optional<fx::dxf::DwgSource> dwg;
  if (const fx::dxf::DwgSource* source = fx::dxf::DwgSourceOf(*db)) dwg = *source;
  std::unique_ptr<AcDbDatabase> restored = last_good_.Read(name, dwg ? &*dwg : nullptr, error);
  if (restored == nullptr) return false;
  // The drawing is replaced, not closed by the user: nothing asks to send it.
  fx::rooms::DocVars().docData(document_).setLastUpdateDate(db->tduupdate());
  session_->OpenDatabase(std::move(restored), name);
  document_ = session_->document();
  return true;
}

bool StudioSession::Save(std::string* error) { return SaveAs(path_, error); }

bool StudioSession::SaveAs(const std::string& path, std::string* error) {
  if (busy_) {
    *error = "a command is running; save when it has ended";
    return false;
  }
  if (session_ == nullptr || !session_->Save(path, error)) return false;
  console_.Print("\nSaved " + path);
  if (path != path_) {
    path_ = path;
    last_good_.Reset(path_);
  }
  modified_ = false;
  Publish();
  return true;
}

std::shared_ptr<const FloorPicture> StudioSession::Picture() {
  AcDbDatabase* db = database();
  if (db == nullptr) return std::make_shared<FloorPicture>();
  return pictures_.Get(*db, revision_);
}

nlohmann::json StudioSession::Problems() const { return ProblemListJson(); }

nlohmann::json StudioSession::Menu() const { return MenuBarJson(); }

void StudioSession::Publish() {
  AcDbDatabase* db = database();
  nlohmann::json view = nullptr;
  console::View active;
  if (db != nullptr && console::GetActiveView(*db, active) == Acad::eOk && active.height > 0) {
    view = {{"x", active.center.x}, {"y", active.center.y}, {"width", active.width}, {"height", active.height}};
  }
  nlohmann::json drawing = {{"name", std::filesystem::path(path_).filename().string()},
                            {"path", path_},
                            {"modified", modified_},
                            {"revision", revision_}};
  state_.Update([&](nlohmann::json& fields) {
    fields["drawing"] = std::move(drawing);
    fields["view"] = std::move(view);
  });
}

}  // namespace fx::studio
