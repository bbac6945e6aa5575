// AUDIT on a drawing made with one problem of each kind: the report, the
// repairs, and a clean audit of the repaired drawing once saved.
#include <gtest/gtest.h>

#include "cleanup_fixture.h"

namespace fx::cleanup_test {
namespace {

class AuditTest : public CleanupTest {
 protected:
  // Handles of what is wrong, for the expected report.
  struct Faults {
    std::string walls, layer_table, style_table, ghost_line, dashed_line, text, insert, moved_line, paper_space,
        orphan;
  };

  TestDrawing FaultyDrawing(Faults& f) {
    TestDrawing d;
    d.Header("$HANDSEED", {{5, "1"}});
    f.layer_table = d.TableHandle("LAYER");
    f.style_table = d.TableHandle("STYLE");
    f.walls = d.Layer("Walls", {{330, f.style_table}});  // other programs write wrong owners on table records
    f.ghost_line = d.Entity("", "LINE", "Ghost", LineBody(0));
    f.dashed_line = d.Entity("", "LINE", "Walls", LineBody(1), {{6, "NOSUCH"}});
    d.Entity("", "LINE", "ghost", LineBody(2));
    f.text = d.Entity("", "TEXT", "0", {{100, "AcDbText"}, {10, "0.0"}, {20, "5.0"}, {30, "0.0"}, {40, "2.5"},
                                        {1, "Hall"}, {7, "Missing"}, {100, "AcDbText"}});
    f.insert = d.Entity("", "INSERT", "0", {{100, "AcDbBlockReference"}, {2, "Nowhere"}, {10, "0.0"},
                                            {20, "0.0"}, {30, "0.0"}});
    f.paper_space = d.Block("Spare");
    f.moved_line = d.Entity("", "LINE", "0", LineBody(3), {}, f.paper_space);
    f.orphan = d.Object("XRECORD", "DEAD", {{100, "AcDbXrecord"}, {280, "1"}, {1, "lost"}});
    d.RootEntry("GONE", "ABC");
    return d;
  }

  std::string Report(const Faults& f, const std::string& largest, bool fixed) {
    auto line = [&](const std::string& text, const char* repair) {
      return "\n" + text + (fixed ? std::string(": ") + repair : std::string()) + ".";
    };
    return line("$HANDSEED 1 is not above the largest handle " + largest, ("set to " + Next(largest)).c_str()) +
           line("LAYER " + f.walls + ": owner " + f.style_table + " is not its LAYER table " + f.layer_table,
                "owner corrected") +
           line("LINE " + f.moved_line + ": owner " + f.paper_space + " is not its block record " +
                    ModelSpaceHandle(),
                "owner corrected") +
           line("Layer \"Ghost\" does not exist (used by 2 entities, first LINE " + f.ghost_line + ")",
                "layer created") +
           line("Linetype \"NOSUCH\" does not exist (used by 1 entity: LINE " + f.dashed_line + ")",
                "set to ByLayer") +
           line("Text style \"Missing\" does not exist (used by 1 entity: TEXT " + f.text + ")", "set to Standard") +
           line("INSERT " + f.insert + ": block \"Nowhere\" does not exist", "insert erased") +
           line("XRECORD " + f.orphan + ": owner DEAD does not exist", "object erased") +
           line("DICTIONARY " + database().namedObjectsDictionaryId().handle().ascii() + ": entry \"GONE\" names object ABC, which does not exist",
                "entry removed");
  }

  std::string ModelSpaceHandle() { return database().modelSpaceId().handle().ascii(); }
  static std::string Next(const std::string& hex) { return AcDbHandle(AcDbHandle(hex).value() + 1).ascii(); }
  std::string Largest() {
    uint64_t largest = 0;
    for (fx::dxf::RecordId r = imp().document().first(); r != fx::dxf::kNoRecord; r = imp().document().next(r))
      if (const AcDbStub* stub = imp().StubOf(r); stub && !stub->synthetic_handle)
        largest = std::max(largest, stub->handle.value());
    return AcDbHandle(largest).ascii();
  }
};

TEST_F(AuditTest, ReportsEachProblemThenFixesItForGood) {
  Faults f;
  Open(FaultyDrawing(f));
  const std::string largest = Largest();
  EXPECT_EQ(RunCommands("_AUDIT N"), "\nCommand: _AUDIT\nFix any errors detected? [Yes/No] <N>: N" +
                                         Report(f, largest, false) + "\n9 errors found, 0 fixed.\n");
  EXPECT_FALSE(imp().modified());
  EXPECT_EQ(RunCommands("_AUDIT Y"), "\nCommand: _AUDIT\nFix any errors detected? [Yes/No] <N>: Y" +
                                         Report(f, largest, true) + "\n9 errors found, 9 fixed.\n");
  EXPECT_EQ(Names("LAYER"), (std::set<std::string>{"0", "Walls", "Ghost"}));
  EXPECT_EQ(RecordTags(f.walls).GetString(330, RecordTags(f.walls).Body()), f.layer_table);
  EXPECT_EQ(RecordTags(f.dashed_line).GetString(6, RecordTags(f.dashed_line).Body()), "ByLayer");
  EXPECT_EQ(RecordTags(f.text).GetString(7, RecordTags(f.text).Body()), "Standard");
  EXPECT_EQ(RecordTags(f.insert).size(), 0u);
  EXPECT_EQ(RecordTags(f.orphan).size(), 0u);
  EXPECT_EQ(RecordTags(f.moved_line).GetString(330, RecordTags(f.moved_line).Body()), ModelSpaceHandle());
  AcDbDictionary* root = nullptr;
  ASSERT_EQ(database().getNamedObjectsDictionary(root, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(root->numEntries(), 1u);  // ACAD_GROUP
  root->close();
  SaveAs(TempPath("fixed.dxf"));
  session_.CloseDrawing();
  Open(TempPath("fixed.dxf"));
  EXPECT_EQ(RunCommands("_AUDIT N"),
            "\nCommand: _AUDIT\nFix any errors detected? [Yes/No] <N>: N\n0 errors found, 0 fixed.\n");
  EXPECT_GT(database().handseed().value(), AcDbHandle(largest).value());
}

}  // namespace
}  // namespace fx::cleanup_test
