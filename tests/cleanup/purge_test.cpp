// PURGE on drawings made for the test: what goes, what stays, in how many
// passes, the prompts, and the drawing written afterwards.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "cleanup_fixture.h"
#include "host/dxf/cleanup/name_pattern.h"

namespace fx::cleanup_test {
namespace {

Tags InsertBody(const std::string& block) {
  return {{100, "AcDbBlockReference"}, {2, block}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}};
}

// Every kind of reference PURGE must see, and records that only something
// purgeable uses (so they go in a later pass).
TestDrawing ReferencesDrawing() {
  TestDrawing d;
  d.Layer("Defpoints");
  d.Layer("Current");
  d.Header("$CLAYER", {{8, "Current"}});
  d.Linetype("DASHED");
  d.Linetype("HIDDEN");
  d.Linetype("CENTER");
  d.Linetype("PHANTOM");
  d.Layer("Walls", {{6, "DASHED"}});  // replaces the layer's Continuous below
  d.Layer("Unused");
  d.Layer("InBlock");
  d.Layer("XdataLayer");
  d.Style("Notes");
  d.Style("Unused");
  const std::string dim_text = d.Style("DimText");
  d.DimstyleTags({{340, dim_text}});
  d.Block("Door");
  d.Block("Handle");
  d.Block("Unused");
  d.Block("Inner");
  d.Block("Loop");
  d.Block("*D1");
  d.Entity("", "LINE", "Walls", LineBody(0));
  d.Entity("", "LINE", "0", LineBody(1), {{6, "PHANTOM"}});
  Tags with_xdata = LineBody(2);
  with_xdata.insert(with_xdata.end(), {{1001, "ACAD"}, {1003, "XdataLayer"}});
  d.Entity("", "LINE", "0", with_xdata);
  d.Entity("", "TEXT", "0", {{100, "AcDbText"}, {10, "0.0"}, {20, "5.0"}, {30, "0.0"}, {40, "2.5"},
                             {1, "Hall"}, {7, "Notes"}, {100, "AcDbText"}});
  d.Entity("", "INSERT", "0", InsertBody("Door"));
  d.Entity("", "DIMENSION", "0", {{100, "AcDbDimension"}, {2, "*D1"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"},
                                  {70, "1"}, {3, "Standard"}, {100, "AcDbAlignedDimension"}, {13, "0.0"},
                                  {23, "0.0"}, {33, "0.0"}, {14, "10.0"}, {24, "0.0"}, {34, "0.0"}});
  d.Entity("Door", "LINE", "0", LineBody(0));
  d.Entity("Door", "INSERT", "0", InsertBody("Handle"));
  d.Entity("Handle", "LINE", "0", LineBody(0));
  d.Entity("Unused", "LINE", "InBlock", LineBody(0), {{6, "CENTER"}});
  d.Entity("Unused", "INSERT", "0", InsertBody("Inner"));
  d.Entity("Inner", "CIRCLE", "0", {{100, "AcDbCircle"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {40, "1.0"}});
  d.Entity("Loop", "INSERT", "0", InsertBody("Loop"));
  d.Entity("*D1", "LINE", "0", LineBody(0));
  return d;
}

class PurgeTest : public CleanupTest {};

// Every record of a purged name goes: table record, BLOCK, ENDBLK, the
// block's entities; tables count what is left.
TEST_F(PurgeTest, AllRemovesWhatNothingUsesPassAfterPassAndKeepsNothingOfIt) {
  Open(ReferencesDrawing());
  const std::string prompts =
      "\nCommand: _-PURGE"
      "\nEnter type of unused objects to purge [Blocks/LAyers/LTypes/STyles/All]: A"
      "\nEnter name(s) to purge <*>: *\nVerify each name to be purged? [Yes/No] <Y>: N";
  EXPECT_EQ(RunCommands("_-PURGE A * N"),
            prompts +
            "\nDeleting block \"Unused\".\nDeleting block \"Loop\".\nDeleting layer \"Unused\"."
            "\nDeleting linetype \"HIDDEN\".\nDeleting text style \"Unused\"."
            // Only the purged block used these.
            "\nDeleting block \"Inner\".\nDeleting layer \"InBlock\".\nDeleting linetype \"CENTER\"."
            "\n3 blocks deleted.\n2 layers deleted.\n2 linetypes deleted.\n1 text style deleted.\n");
  EXPECT_EQ(RunCommands("_-PURGE A * N"), prompts + "\nNo unreferenced objects to purge.\n");
  const std::string path = TempPath("purged.dxf");
  SaveAs(path);
  std::ifstream file(path);
  std::stringstream text;
  text << file.rdbuf();
  for (const char* gone : {"Unused", "InBlock", "Inner", "Loop", "HIDDEN", "CENTER"})
    EXPECT_EQ(text.str().find(std::string("\n") + gone + "\n"), std::string::npos) << gone;
  session_.CloseDrawing();
  Open(path);
  EXPECT_EQ(Names("BLOCK_RECORD"), (std::set<std::string>{"*Model_Space", "*Paper_Space", "Door", "Handle", "*D1"}));
  EXPECT_EQ(Names("LAYER"), (std::set<std::string>{"0", "Defpoints", "Current", "Walls", "XdataLayer"}));
  EXPECT_EQ(Names("LTYPE"), (std::set<std::string>{"ByBlock", "ByLayer", "Continuous", "DASHED", "PHANTOM"}));
  EXPECT_EQ(Names("STYLE"), (std::set<std::string>{"Standard", "Notes", "DimText"}));
  for (const char* table : {"LAYER", "LTYPE", "STYLE", "BLOCK_RECORD"}) {
    fx::dxf::TagList tags = imp().TagsOf(imp().FindTable(table)->stub);
    EXPECT_EQ(tags.GetInt(70, tags.Body()), static_cast<int64_t>(Names(table).size())) << table;
  }
  EXPECT_EQ(RunCommands("_AUDIT N"),
            "\nCommand: _AUDIT\nFix any errors detected? [Yes/No] <N>: N\n0 errors found, 0 fixed.\n");
}

// Names and kinds limit what goes; verifying asks once for each name; the
// name purged can be added again.
TEST_F(PurgeTest, NamesKindsAndVerification) {
  TestDrawing d;
  for (const char* name : {"Annex", "Bay", "bath", "Cellar"}) d.Layer(name);
  d.Linetype("BORDER");
  Open(d);
  EXPECT_EQ(RunCommands("_-PURGE LA b*,cellar Y Y N "),
            "\nCommand: _-PURGE"
            "\nEnter type of unused objects to purge [Blocks/LAyers/LTypes/STyles/All]: LA"
            "\nEnter name(s) to purge <*>: b*,cellar\nVerify each name to be purged? [Yes/No] <Y>: Y"
            "\nPurge layer \"Bay\"? [Yes/No] <N>: Y\nDeleting layer \"Bay\"."
            "\nPurge layer \"bath\"? [Yes/No] <N>: N\nPurge layer \"Cellar\"? [Yes/No] <N>: "
            "\n1 layer deleted.\n");
  EXPECT_EQ(Names("LAYER"), (std::set<std::string>{"0", "Annex", "bath", "Cellar"}));
  EXPECT_EQ(Names("LTYPE").count("BORDER"), 1u);
  AcDbLayerTable* table = nullptr;
  ASSERT_EQ(database().getLayerTable(table, AcDb::kForWrite), Acad::eOk);
  auto* layer = new AcDbLayerTableRecord();
  layer->setName("Bay");
  AcDbObjectId id;
  EXPECT_EQ(table->add(id, layer), Acad::eOk);
  layer->close();
  table->close();
  EXPECT_EQ(Names("LAYER").count("Bay"), 1u);
}

TEST(NamePatternTest, WildcardsAndLists) {
  struct Case {
    const char* pattern;
    const char* name;
    bool matches;
  } const cases[] = {
      {"", "anything", true}, {"*", "", true},        {"wall?", "WALLS", true},  {"wall?", "Wall", false},
      {"W*S", "wallsx", false}, {"A#", "A1", true},   {"A#", "AB", false},       {"@1", "b1", true},
      {"@1", "11", false},    {"x, y*", "x", true},   {"~A*", "Bath", true},     {"~A*", "Annex", false},
      {"R?um", "R\xC3\xA4um", true}, {"*a*b*c", "aXbYbZc", true}, {"*a*b*c", "aXcYb", false},
  };
  for (const Case& c : cases)
    EXPECT_EQ(fx::cleanup::NamePattern(c.pattern).Matches(c.name), c.matches) << c.pattern << " " << c.name;
}

}  // namespace
}  // namespace fx::cleanup_test
