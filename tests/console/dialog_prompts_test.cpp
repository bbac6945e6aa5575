// Dialog models shown on the console as prompts (fx::ShowDialog).
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "console_fixture.h"
#include "host/dialog.h"

namespace fx::console {
namespace {

class RoomOptions : public DialogModel {
 public:
  std::string title() const override { return "Room options"; }
  std::vector<DialogField> fields() const override {
    return {
        {"Name", DialogField::kText, name, {}},
        {"Count", DialogField::kInteger, count, {}},
        {"Mode", DialogField::kChoice, mode, {"Blocks", "Texts", "Markers"}},
        {"Unlock", DialogField::kCheck, unlock, {}},
        {"Layers", DialogField::kList, layers, {"A", "B C", "D"}},
    };
  }
  std::string SetField(size_t index, const std::string& value) override {
    std::string* targets[] = {&name, &count, &mode, &unlock, &layers};
    if (index == 1 && value.starts_with('-')) return "Count must not be negative.";
    *targets[index] = value;
    return {};
  }
  std::vector<std::string> buttons() const override { return {"OK", "Cancel", "&Apply now"}; }
  DialogAction Press(size_t index) override {
    pressed.push_back(index);
    return index == staying ? DialogAction::kStay : DialogAction::kClose;
  }

  std::string name = "Room", count = "3", mode = "Texts", unlock = "No", layers = "A";
  std::vector<size_t> pressed;
  size_t staying = 2;  // the button that keeps the dialog open
};

// A log-in: the room options with a password.
class LogIn : public RoomOptions {
 public:
  std::vector<DialogField> fields() const override {
    return {{"User", DialogField::kText, "ann", {}}, {"Password", DialogField::kPassword, "", {}}};
  }
};

class DialogPromptsTest : public ConsoleTest {
 protected:
  int Show(const char* script) {
    console().script().AddLine(script);
    return ShowDialog(model_);
  }
  RoomOptions model_;
};

// Each field is asked in turn, a wrong answer explained and asked again,
// then the buttons until one closes the dialog; one that keeps it open asks
// the fields again with the values given as defaults.
TEST_F(DialogPromptsTest, FieldsThenButtonsUntilOneCloses) {
  EXPECT_EQ(Show("Big Hall\n-1\nx 5\nz m\nmaybe y\n?\nQ\n*\n-\napply\n\n\n\n\nd, b c\napply\n\n\n\n\n-\nok"), 0);
  EXPECT_EQ(terminal_.out,
            "\nRoom options"
            "\nName <Room>: Big Hall"
            "\nCount <3>: -1\nCount must not be negative."
            "\nCount <3>: x\nRequires an integer value.\nCount <3>: 5"
            "\nMode [Blocks/Texts/Markers] <Texts>: z\nInvalid option keyword."
            "\nMode [Blocks/Texts/Markers] <Texts>: m"
            "\nUnlock [Yes/No] <No>: maybe\nRequires Yes or No.\nUnlock [Yes/No] <No>: y"
            "\nLayers (? to list) <A>: ?"
            "\n  A\n  B C\n  D\nSeparate items with commas; * selects every item, - none."
            "\nLayers (? to list) <A>: Q\nNo item \"Q\".\nLayers (? to list) <A>: *"
            "\n[OK/Cancel/Applynow] <OK>: -\nInvalid option keyword.\n[OK/Cancel/Applynow] <OK>: apply"
            "\nName <Big Hall>: \nCount <5>: \nMode [Blocks/Texts/Markers] <Markers>: \nUnlock [Yes/No] <Yes>: "
            "\nLayers (? to list) <A,B C,D>: d, b c\n[OK/Cancel/Applynow] <OK>: apply"
            "\nName <Big Hall>: \nCount <5>: \nMode [Blocks/Texts/Markers] <Markers>: \nUnlock [Yes/No] <Yes>: "
            "\nLayers (? to list) <D,B C>: -\n[OK/Cancel/Applynow] <OK>: ok");
  EXPECT_EQ(model_.name, "Big Hall");
  EXPECT_EQ(model_.count, "5");
  EXPECT_EQ(model_.mode, "Markers");
  EXPECT_EQ(model_.unlock, "Yes");
  EXPECT_EQ(model_.layers, "");
  EXPECT_EQ(model_.pressed, (std::vector<size_t>{2, 2, 0}));
}

// A batch run never waits in a dialog: the default button takes the values
// given so far. It cancels instead where a user is asked (the end of the
// terminal's input), where a password is asked, and where the model keeps
// the dialog open on that button.
TEST_F(DialogPromptsTest, RunningOutInABatchRunPressesTheDefaultButton) {
  EXPECT_EQ(Show("Hall\n4"), 0);
  EXPECT_EQ(model_.count, "4");
  EXPECT_EQ(model_.pressed, std::vector<size_t>{0});
  EXPECT_TRUE(terminal_.out.ends_with("\nMode [Blocks/Texts/Markers] <Texts>: "
                                      "\nNo more input: pressed OK, the default button of \"Room options\"."));
  model_.staying = 0;
  EXPECT_EQ(ShowDialog(model_), -1);
  EXPECT_TRUE(terminal_.out.ends_with("the default button of \"Room options\".\n*Cancel*")) << terminal_.out;
  LogIn log_in;
  EXPECT_EQ(ShowDialog(log_in), -1);
  EXPECT_TRUE(terminal_.out.ends_with("\nUser <ann>: *Cancel*")) << terminal_.out;
  console().SetInteractive(true);
  EXPECT_EQ(Show("Hall"), -1);
  EXPECT_TRUE(terminal_.out.ends_with("\nCount <4>: *Cancel*")) << terminal_.out;
  EXPECT_EQ(model_.pressed.size() + log_in.pressed.size(), 2u);  // no press but the two defaults
}

}  // namespace
}  // namespace fx::console
