// The presenter on the host thread while "the page" answers from another
// thread through the host loop, as the server's threads do.
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "export/export_file_dialog.h"
#include "export/export_formats.h"
#include "host/dxf/console/console.h"
#include "host/editor.h"
#include "studio/host_loop.h"
#include "studio/studio_presenter.h"
#include "studio/studio_state.h"
#include "studio/studio_terminal.h"

namespace fx::studio {
namespace {

class PresenterTest : public ::testing::Test {
 protected:
  // The pending question once it is one with `predicate` true.
  nlohmann::json WaitForPending(const std::function<bool(const nlohmann::json&)>& predicate) {
    for (int tries = 0; tries < 2000; ++tries) {
      nlohmann::json snapshot = state_.Snapshot(0);
      if (!snapshot["pending"].is_null() && predicate(snapshot["pending"])) return snapshot["pending"];
      state_.WaitForChange(snapshot["version"].get<uint64_t>(), std::chrono::milliseconds(50));
    }
    ADD_FAILURE() << "no such question";
    return nlohmann::json::object();
  }

  StudioState state_;
  HostLoop loop_;
  StudioTerminal terminal_{state_};
  console::Console console_{terminal_, console::AnswerPolicy()};
  StudioPresenter presenter_{loop_, state_, console_};
};

TEST_F(PresenterTest, AnswersReachTheModelAndAnswersToOtherQuestionsAreIgnored) {
  fx::exports::CPvExportFileDialog dialog("plan", fx::exports::kSaveFilter, 1);
  std::thread page([&] {
    const nlohmann::json form = WaitForPending([](const nlohmann::json& p) { return p.value("kind", "") == "dialog"; });
    const int id = form.value("id", -1);
    EXPECT_EQ(form["title"], "Export to File");
    EXPECT_EQ(form["fields"][1]["kind"], "integer");
    loop_.Post([this, id] { presenter_.Press(id + 1, 0); });        // meant for another question
    loop_.Post([this, id] { presenter_.SetField(id, 1, "nine"); });  // refused by the kind
    WaitForPending([](const nlohmann::json& p) { return p.value("error", "") == "Requires an integer value."; });
    loop_.Post([this, id] { presenter_.SetField(id, 1, "9"); });  // refused by the model
    const nlohmann::json refused =
        WaitForPending([](const nlohmann::json& p) { return p.value("error", "") != "Requires an integer value."; });
    EXPECT_EQ(refused["error"], "Requires an integer between 1 and 5.");
    EXPECT_EQ(refused["error_field"], 1);
    loop_.Post([this, id] { presenter_.SetField(id, 0, "/plans/level 1"); });
    loop_.Post([this, id] { presenter_.SetField(id, 1, "4"); });
    loop_.Post([this, id] { presenter_.Press(id, fx::exports::CPvExportFileDialog::kSave); });
  });
  EXPECT_EQ(presenter_.ShowDialog(dialog), 0);
  page.join();
  EXPECT_EQ(dialog.filterExtension(), "svg");
  EXPECT_TRUE(state_.Snapshot(0)["pending"].is_null());
  EXPECT_NE(state_.Snapshot(0)["transcript"]["text"].get<std::string>().find("Export to File"), std::string::npos);
}

TEST_F(PresenterTest, MessageBoxesAreAnsweredByButtonNameAndTheTranscriptKeepsThem) {
  std::thread page([&] {
    const nlohmann::json box = WaitForPending([](const nlohmann::json& p) { return p.value("kind", "") == "message"; });
    EXPECT_EQ(box["icon"], "warning");
    EXPECT_EQ(box["buttons"], nlohmann::json({"Yes", "No"}));
    const int id = box.value("id", -1);
    loop_.Post([this, id] { presenter_.AnswerMessageBox(id, "Maybe"); });  // no such button: still asking
    loop_.Post([this, id] { presenter_.AnswerMessageBox(id, "No"); });
  });
  console_.SetPresenter(&presenter_);
  EXPECT_EQ(console_.MessageBox("Send it?", "", MB_YESNO | MB_ICONWARNING), IDNO);
  page.join();
  EXPECT_NE(state_.Snapshot(0)["transcript"]["text"].get<std::string>().find("[Warning] Send it? [Yes/No] -> No"),
            std::string::npos);
}

TEST_F(PresenterTest, StoppingTheStudioCancelsWhatWaits) {
  fx::exports::CPvExportFileDialog dialog("plan", fx::exports::kSaveFilter, 1);
  std::thread page([&] {
    WaitForPending([](const nlohmann::json&) { return true; });
    loop_.Stop();
  });
  EXPECT_EQ(presenter_.ShowDialog(dialog), -1);
  page.join();
  std::string line;
  EXPECT_FALSE(presenter_.ReadLine("Enter a layer: ", line));  // nothing waits any more
}

}  // namespace
}  // namespace fx::studio
