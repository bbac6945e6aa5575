// The plug-in's lineweight shortcut in the headless host: what it changes
// and what it leaves. (The answers the other shortcuts send are checked
// through the real program in program_test.cpp.)
#include <gtest/gtest.h>

#include "app/cleanup_commands.h"
#include "cleanup_fixture.h"

namespace fx::cleanup_test {
namespace {

class ShortcutsTest : public CleanupTest {
 protected:
  ShortcutsTest() { AddCommand("SHORTLINEWEIGHT", fx::app::DrawingLineweight); }
};

TEST_F(ShortcutsTest, LineweightBecomesTheDefaultEverywhereButOnLockedLayers) {
  // Lineweights: set, unset (by layer), already the default; in a block
  // definition; an insert with an attribute; on a locked layer.
  TestDrawing d;
  std::map<std::string, std::string> handles;
  d.Layer("Locked", {{70, "4"}});
  d.Block("Door");
  handles["set"] = d.Entity("", "LINE", "0", LineBody(0), {{370, "25"}});
  handles["unset"] = d.Entity("", "LINE", "0", LineBody(0));
  handles["default"] = d.Entity("", "LINE", "0", LineBody(0), {{370, "-3"}});
  handles["locked"] = d.Entity("", "LINE", "Locked", LineBody(0), {{370, "40"}});
  handles["in_block"] = d.Entity("Door", "LINE", "0", LineBody(0), {{370, "50"}});
  handles["insert"] = d.Entity("", "INSERT", "0", {{100, "AcDbBlockReference"}, {66, "1"}, {2, "Door"},
                                                   {10, "0.0"}, {20, "0.0"}, {30, "0.0"}}, {{370, "13"}});
  handles["attribute"] = d.Entity("", "ATTRIB", "0", {{100, "AcDbText"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"},
                                                      {40, "1.0"}, {1, "7"}, {100, "AcDbAttribute"}, {2, "NO"},
                                                      {70, "0"}}, {{370, "30"}}, handles["insert"]);
  d.Entity("", "SEQEND", "0", {}, {}, handles["insert"]);
  Open(d);
  EXPECT_EQ(RunCommands("SHORTLINEWEIGHT"), "\nCommand: SHORTLINEWEIGHT\n");
  const auto lineweight = [&](const char* name) {
    fx::dxf::TagList tags = RecordTags(handles[name]);
    return tags.GetInt(370, tags.Body(), -1);
  };
  for (const char* name : {"set", "unset", "default", "in_block", "insert", "attribute"})
    EXPECT_EQ(lineweight(name), -3) << name;
  EXPECT_EQ(lineweight("locked"), 40);
  EXPECT_TRUE(runner().problems().empty());
}

}  // namespace
}  // namespace fx::cleanup_test
