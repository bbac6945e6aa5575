// The drawing reactor: the question before a changed drawing linked to a
// server floor closes, and the outcome of the send it offers.
#include <gtest/gtest.h>

#include <string>

#include "app/drawing_sender.h"
#include "app_test_support.h"
#include "host/database.h"
#include "host/documents.h"
#include "host/dxf/console/host_session.h"

namespace fx::app_test {
namespace {

const std::string kQuestion =
    "\n[Warning] Drawing has been changed.\nWould you like to send updates to Vantory? [Yes/No]";

fx::app::SendOutcome SendCanceled(AcDbDatabase*) { return {fx::app::kSendCanceled, "ignored"}; }
fx::app::SendOutcome SendDone(AcDbDatabase* database) {
  return {fx::app::kSendSucceeded,
          database != nullptr ? "Drawing sent to floor 12." : "no database"};
}
fx::app::SendOutcome SendRefused(AcDbDatabase*) { return {3, "The floor is locked."}; }

class DrawingReactorTest : public AppTest {
 protected:
  DrawingReactorTest() { WriteLinkedDrawing(SampleFloor(), linked_); }
  ~DrawingReactorTest() override { fx::app::SetDrawingSender(nullptr); }

  // Opens `drawing`, saves it to a scratch file when `change` (the save moves
  // $TDUUPDATE on), closes it and returns what the close printed.
  std::string OpenAndClose(const std::string& drawing, bool change) {
    fx::console::HostSession session(runner(), modules_);
    std::string error;
    EXPECT_TRUE(session.OpenDrawing(drawing, &error)) << error;
    if (change) {
      EXPECT_TRUE(session.Save(dir_ + "/saved.dxf", &error)) << error;
    }
    const size_t before = terminal_.out.size();
    session.CloseDrawing();
    return terminal_.out.substr(before);
  }
  void AnswerYes() {
    fx::console::AnswerPolicy policy;
    policy.SetYesNoDefault(fx::console::MessageButton::kYes);
    Restart(std::move(policy));
  }

  fx::testing::TestFolder folder_{"app"};
  std::string dir_ = folder_.path().string();
  std::string linked_ = dir_ + "/linked.dxf";
};

// Only a changed drawing linked to a server floor asks (the association is
// the dictionary entry the linked copy has); No sends nothing.
TEST_F(DrawingReactorTest, OnlyAChangedLinkedDrawingAsks) {
  fx::app::SetDrawingSender(SendDone);
  EXPECT_EQ(OpenAndClose(linked_, false), "");
  EXPECT_EQ(OpenAndClose(SampleFloor(), true), "");
  EXPECT_EQ(OpenAndClose(SmallPlan(), true), "");
  EXPECT_EQ(OpenAndClose(linked_, true), kQuestion + " -> No (default)");
}

// Yes sends, and the outcome is shown. (The real send: tests/exchange.)
TEST_F(DrawingReactorTest, YesSendsAndShowsTheOutcome) {
  AnswerYes();
  const std::string error_report =
      "\n[Message] An unexpected error occurred. Please contact Vantory at +1 555 010 0199"
      "\n\nError details:\n";
  const struct {
    fx::app::DrawingSender sender;
    std::string shown;
  } cases[] = {
      {SendCanceled, "\n[Message] Operation has been canceled. [OK] -> OK"},
      {SendDone, "\n[Message] Drawing sent to floor 12. [OK] -> OK"},
      {SendRefused, error_report + "The floor is locked. [OK] -> OK"},
  };
  for (const auto& c : cases) {
    fx::app::SetDrawingSender(c.sender);
    EXPECT_EQ(OpenAndClose(linked_, true), kQuestion + " -> Yes (--yes)" + c.shown);
  }
}

}  // namespace
}  // namespace fx::app_test
