// The plug-in's six clean-up shortcuts, run as commands in the headless host:
// the answers each sends, and what the lineweight shortcut changes.
#include <gtest/gtest.h>

#include "app/cleanup_commands.h"
#include "cleanup_fixture.h"

namespace fx::cleanup_test {
namespace {

Tags LineBody() {
  return {{100, "AcDbLine"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {11, "10.0"}, {21, "0.0"}, {31, "0.0"}};
}

class ShortcutsTest : public CleanupTest {
 protected:
  ShortcutsTest() {
    AddCommand("SHORTOVERKILL", fx::app::DrawingOverkill);
    AddCommand("SHORTAUDIT", fx::app::DrawingAudit);
    AddCommand("SHORTPURGE", fx::app::DrawingPurge);
    AddCommand("SHORTUNITS", fx::app::DrawingUnits);
    AddCommand("SHORTEXTENTS", fx::app::DrawingExtents);
    AddCommand("SHORTLINEWEIGHT", fx::app::DrawingLineweight);
  }

  // Lineweights: set, unset (by layer), already the default; in a block
  // definition; an insert with an attribute; on a locked layer.
  TestDrawing LineweightDrawing() {
    TestDrawing d;
    d.Layer("Locked", {{70, "4"}});
    d.Block("Door");
    handles_["set"] = d.Entity("", "LINE", "0", LineBody(), {{370, "25"}});
    handles_["unset"] = d.Entity("", "LINE", "0", LineBody());
    handles_["default"] = d.Entity("", "LINE", "0", LineBody(), {{370, "-3"}});
    handles_["locked"] = d.Entity("", "LINE", "Locked", LineBody(), {{370, "40"}});
    handles_["in_block"] = d.Entity("Door", "LINE", "0", LineBody(), {{370, "50"}});
    handles_["insert"] = d.Entity("", "INSERT", "0", {{100, "AcDbBlockReference"}, {66, "1"}, {2, "Door"},
                                                      {10, "0.0"}, {20, "0.0"}, {30, "0.0"}}, {{370, "13"}});
    handles_["attribute"] = d.Entity("", "ATTRIB", "0", {{100, "AcDbText"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"},
                                                         {40, "1.0"}, {1, "7"}, {100, "AcDbAttribute"}, {2, "NO"},
                                                         {70, "0"}}, {{370, "30"}}, handles_["insert"]);
    d.Entity("", "SEQEND", "0", {}, {}, handles_["insert"]);
    return d;
  }
  int64_t Lineweight(const char* name) {
    fx::dxf::TagList tags = RecordTags(handles_[name]);
    return tags.GetInt(370, tags.Body(), -1);
  }

  std::map<std::string, std::string> handles_;
};

TEST_F(ShortcutsTest, FiveShortcutsAnswerTheHostsCommands) {
  TestDrawing d;
  d.Layer("Spare");
  d.Entity("", "LINE", "0", LineBody());
  Open(d);
  EXPECT_EQ(RunCommands("SHORTAUDIT"), "\nCommand: SHORTAUDIT\nCommand: _AUDIT"
                                       "\nFix any errors detected? [Yes/No] <N>: Yes\n0 errors found, 0 fixed.\n");
  EXPECT_EQ(RunCommands("SHORTPURGE"),
            "\nCommand: SHORTPURGE\nCommand: _-PURGE"
            "\nEnter type of unused objects to purge [Blocks/LAyers/LTypes/STyles/All]: A"
            "\nEnter name(s) to purge <*>: *\nVerify each name to be purged? [Yes/No] <Y>: N"
            "\nDeleting layer \"Spare\".\n1 layer deleted.\n");
  EXPECT_EQ(RunCommands("SHORTOVERKILL"),
            "\nCommand: SHORTOVERKILL\nCommand: _-OVERKILL\nSelect objects: All\n1 found\nSelect objects: "
            "\nEnter an option [Tolerance/Done] <Done>: Done"
            "\n0 duplicate(s) deleted, 0 overlapping object(s) or segment(s) deleted\n");
  EXPECT_EQ(RunCommands("SHORTUNITS"), "\nCommand: SHORTUNITS\nCommand: UNITS"
                                       "\nInsertion units ($INSUNITS): 0 (Unitless)\nEnter units (0-20) <0>: \n");
  EXPECT_EQ(RunCommands("SHORTEXTENTS"), "\nCommand: SHORTEXTENTS\nCommand: _ZOOM\nZoom [Extents/Object]: Extents\n");
  EXPECT_TRUE(runner().problems().empty());
}

TEST_F(ShortcutsTest, LineweightBecomesTheDefaultEverywhereButOnLockedLayers) {
  Open(LineweightDrawing());
  EXPECT_EQ(RunCommands("SHORTLINEWEIGHT"), "\nCommand: SHORTLINEWEIGHT\n");
  for (const char* name : {"set", "unset", "default", "in_block", "insert", "attribute"})
    EXPECT_EQ(Lineweight(name), -3) << name;
  EXPECT_EQ(Lineweight("locked"), 40);
  EXPECT_TRUE(runner().problems().empty());
}

// Regression guard for writing every entity: a drawing already normalised
// is left exactly as it was read.
TEST_F(ShortcutsTest, LineweightOpensNothingForWriteWhenAllAreDefault) {
  Open(LineweightDrawing());
  RunCommands("SHORTLINEWEIGHT");
  SaveAndReopen();
  RunCommands("SHORTLINEWEIGHT");
  EXPECT_FALSE(imp().modified());
  const fx::dxf::Document& doc = imp().document();
  for (fx::dxf::RecordId r = doc.first(); r != fx::dxf::kNoRecord; r = doc.next(r))
    EXPECT_FALSE(doc.modified(r)) << doc.type(r) << " at line " << doc.source_line(r);
}

TEST_F(ShortcutsTest, LineweightWithoutADrawingSaysWhy) {
  EXPECT_EQ(RunCommands("SHORTLINEWEIGHT"),
            "\nCommand: SHORTLINEWEIGHT\ngetBlockTable = eNullObjectPointer\n");
}

}  // namespace
}  // namespace fx::cleanup_test
