// Block replacement: the expression substitution, the dialog's rules, the
// replacement on a drawing made for it (rooms_base.dxf and references added
// by the test), and the command on real drawings checked by ezdxf.
#include "rooms/replace_block.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "host/database.h"
#include "program_runner.h"
#include "rooms/replace_block_dlg.h"
#include "rooms_fixture.h"

namespace fx::rooms_test {
namespace {

using fx::rooms::ApplyExpression;
using fx::rooms::CReplaceBlockDlg;

using Attributes = std::vector<std::pair<std::string, std::string>>;

TEST(ApplyExpressionTest, PatternsBecomeTheOldAttributesTexts) {
  const Attributes old = {{"NAME", "1.01"}, {"CATEGORY", "Office"}, {"EMPTY", ""}};
  const struct {
    const char* expression;
    const char* text;
  } cases[] = {
      {"%NAME%", "1.01"},
      {"Room %NAME% (%CATEGORY%)", "Room 1.01 (Office)"},
      {"%NAME%-%NAME%", "1.01-1.01"},        // every occurrence
      {"%name%/%Category%", "1.01/Office"},  // tags without regard to case
      {"%NUMBER% %NAME%", "%NUMBER% 1.01"},  // a tag the old one lacks stays, percent signs too
      {"100%", "100%"},
      {"%%NAME%%", "%1.01%"},
  };
  for (const auto& c : cases) EXPECT_EQ(ApplyExpression(c.expression, old), c.text) << c.expression;
}

TEST(ApplyExpressionTest, AttributesAreSubstitutedInTheirOrder) {
  // The first attribute's text brings a pattern of the second: it is
  // substituted in turn, as the replacement goes through the old attributes
  // one after the other; a text that holds its own pattern is not expanded again.
  EXPECT_EQ(ApplyExpression("%A%", {{"A", "<%B%>"}, {"B", "b"}}), "<b>");
  EXPECT_EQ(ApplyExpression("%B%", {{"A", "a"}, {"B", "<%A%>"}}), "<%A%>");
  EXPECT_EQ(ApplyExpression("%A% %A%", {{"A", "%A%"}}), "%A% %A%");
}

class ReplaceBlockTest : public RoomsTest {
 protected:
  ReplaceBlockTest() { Open(BaseDrawing()); }

  // Each model-space reference: "BLOCK at x,y scale sx layer LAYER" and
  // its attributes as " TAG=text".
  std::vector<std::string> References() const {
    std::vector<std::string> references;
    for (AcDbObjectId id : ModelSpace()) {
      AcDbObjectPointer<AcDbBlockReference> insert(id, AcDb::kForRead);
      if (insert.openStatus() != Acad::eOk) continue;
      AcDbObjectPointer<AcDbBlockTableRecord> block(insert->blockTableRecord(), AcDb::kForRead);
      char placement[128];
      std::snprintf(placement, sizeof placement, " at %g,%g scale %g layer ", insert->position().x,
                    insert->position().y, insert->scaleFactors().sx);
      std::string reference = block->getName() + placement + insert->layer();
      for (AcDbObjectId attribute_id : insert->attributeIds()) {
        AcDbObjectPointer<AcDbAttribute> attribute(attribute_id, AcDb::kForRead);
        reference += " " + attribute->tag() + "=" + attribute->textString();
      }
      references.push_back(reference);
    }
    return references;
  }

  fx::rooms::ReplaceBlockOptions Options(bool remove_old,
                                         std::vector<fx::rooms::AppliedExpression> expressions) {
    return {"ROOMTAG", "NEWTAG", std::move(expressions), remove_old};
  }
};

// The old references stay when "Remove old block references" is clear:
// the new one on top at scale 1. Attributes without an expression are
// empty, not the definition's default.
TEST_F(ReplaceBlockTest, NewReferencesTakeTheOldPlacementScaleOneAndTheAppliedTexts) {
  AddInsert("ROOMTAG", 10, 20, {"1.01", "Office", "Open"}, 2.0);
  AddInsert("PLAIN", 5, 5);
  EXPECT_EQ(fx::rooms::ReplaceBlockReferences(
                docData(), Options(false, {{"ROOM", "%NAME% %CATEGORY%"}, {"LABEL", "%NUMBER%"}})),
            1u);
  EXPECT_EQ(References(), (std::vector<std::string>{
                              "ROOMTAG at 10,20 scale 2 layer RoomTags NAME=1.01 CATEGORY=Office DESCRIPTION=Open",
                              "PLAIN at 5,5 scale 1 layer RoomTags",
                              "NEWTAG at 10,20 scale 1 layer RoomTags ROOM=1.01 Office LABEL=%NUMBER% NOTE="}));
}

TEST_F(ReplaceBlockTest, RemoveOldErasesEachOldReferenceAndNoOther) {
  AddInsert("ROOMTAG", 0, 0, {"1", "", ""});
  AddInsert("PLAIN", 5, 5);
  AddInsert("ROOMTAG", 10, 0, {"2", "", ""});
  EXPECT_EQ(fx::rooms::ReplaceBlockReferences(docData(), Options(true, {{"ROOM", "%NAME%"}})), 2u);
  EXPECT_EQ(References(), (std::vector<std::string>{"PLAIN at 5,5 scale 1 layer RoomTags",
                                                    "NEWTAG at 0,0 scale 1 layer RoomTags ROOM=1 LABEL= NOTE=",
                                                    "NEWTAG at 10,0 scale 1 layer RoomTags ROOM=2 LABEL= NOTE="}));
}

TEST_F(ReplaceBlockTest, AMissingBlockEndsItWithTheAccessLayersLine) {
  AddInsert("ROOMTAG", 0, 0, {"1", "", ""});
  const size_t before = terminal_.out.size();
  fx::rooms::ReplaceBlockOptions options = Options(true, {});
  options.new_block = "NOSUCH";
  EXPECT_EQ(fx::rooms::ReplaceBlockReferences(docData(), options), 0u);
  EXPECT_EQ(terminal_.out.substr(before), "\nCDocData::GetBlockID = eKeyNotFound");
  EXPECT_EQ(References().size(), 1u);
}

TEST_F(ReplaceBlockTest, ApplyExpressionRules) {
  CReplaceBlockDlg dialog(&db());
  const size_t before = terminal_.out.size();
  dialog.SetField(1, "NEWTAG");
  dialog.SetField(2, "ROOM");
  dialog.SetField(3, "");  // empty expression
  dialog.ApplyExpressionButton();
  EXPECT_TRUE(dialog.options().expressions.empty());
  EXPECT_EQ(terminal_.out.substr(before),
            "\n[Warning: Replace Block Dialog] Attribute expression should not to be empty. [OK]"
            " -> OK");
  dialog.SetField(3, "%NAME%");
  dialog.ApplyExpressionButton();
  dialog.SetField(2, "NOTE");
  dialog.SetField(3, "n");
  dialog.ApplyExpressionButton();
  // A second expression for a tag replaces the first, in its place.
  dialog.SetField(2, "ROOM");
  dialog.SetField(3, "R %NAME%");
  dialog.ApplyExpressionButton();
  ASSERT_EQ(dialog.options().expressions.size(), 2u);
  EXPECT_EQ(dialog.options().expressions[0].tag, "ROOM");
  EXPECT_EQ(dialog.options().expressions[0].expression, "R %NAME%");
  EXPECT_EQ(dialog.options().expressions[1].tag, "NOTE");
  EXPECT_EQ(dialog.fields()[4].value, "ROOM=R %NAME%; NOTE=n");
}

// The command as a script answers its dialog.
TEST_F(ReplaceBlockTest, TheCommandShowsTheDialogAsPrompts) {
  AddInsert("ROOMTAG", 3, 4, {"1.01", "Office", "Open"});
  const std::string out = RunScript(
      "_vantoryReplaceBlock\nROOMTAG\nNEWTAG\nROOM\nCATEGORY\n%NAME% (%CATEGORY%)\n\nYes\napply\n"
      "\n\nroom\n\n\n\n\nreplace");
  EXPECT_FALSE(runner().failed()) << out;
  EXPECT_EQ(out,
            "\nCommand: _vantoryReplaceBlock\nReplace Block Dialog"
            "\n&Old block name [*Model_Space/*Paper_Space/ROOMTAG/NEWTAG/PLAIN]: ROOMTAG"
            "\n&New block name [*Model_Space/*Paper_Space/ROOMTAG/NEWTAG/PLAIN]: NEWTAG"
            "\nA&ttribute name [ROOM/LABEL/NOTE]: ROOM"
            "\n&Source of attributes [NAME/CATEGORY/DESCRIPTION]: CATEGORY"
            "\nAttribute &expression <%CATEGORY%>: %NAME% (%CATEGORY%)"
            "\nApplied expression list: "
            "\nRemove old block references [Yes/No] <No>: Yes"
            "\n[Replace/Applyexpression/Cancel] <Replace>: apply"
            "\n&Old block name [*Model_Space/*Paper_Space/ROOMTAG/NEWTAG/PLAIN] <ROOMTAG>: "
            "\n&New block name [*Model_Space/*Paper_Space/ROOMTAG/NEWTAG/PLAIN] <NEWTAG>: "
            "\nA&ttribute name [ROOM/LABEL/NOTE] <ROOM>: room"
            "\n&Source of attributes [NAME/CATEGORY/DESCRIPTION] <CATEGORY>: "
            "\nAttribute &expression <%NAME% (%CATEGORY%)>: "
            "\nApplied expression list <ROOM=%NAME% (%CATEGORY%)>: "
            "\nRemove old block references [Yes/No] <Yes>: "
            "\n[Replace/Applyexpression/Cancel] <Replace>: replace\n");
  EXPECT_EQ(References(), std::vector<std::string>{"NEWTAG at 3,4 scale 1 layer RoomTags ROOM=1.01 (Office) LABEL= NOTE="});
}

// The command on drawings whose references lie outside the world plane, are
// mirrored, rotated or scaled, with invisible attributes; read back by
// ezdxf_replaced.py.
TEST_F(ReplaceBlockTest, OnRealDrawingsTheNewAttributesSitWhereTheEditorPutsThem) {
  const struct {
    std::string drawing, script;
    std::vector<std::string> block_pairs;
    std::string report;
  } cases[] = {
      // Normals (0, 0, -1) and (0, 0.6, 0.8), a scaled and a mirrored reference.
      {std::string(FX_TEST_DATA_DIR) + "/rooms_ui/replace_planes.dxf",
       "OLDMARK\nNEWMARK\nNUMBER\n\nNo. %NAME%\n\nYes\napply\n\n\nTYPE\n\n%NAME%-t\n\n\napply\n"
       "\n\n\n\n\n\n\nreplace",
       {"OLDMARK", "NEWMARK"},
       "OLDMARK -> NEWMARK references 4 attributes 12 invisible 8 field lengths 80\n"
       "texts No. A1|A1-t||No. A2|A2-t||No. A3|A3-t||No. A4|A4-t|\n"},
      // Rotated fixtures with invisible attributes; doors with normals (0, 1, 0)
      // and (1, 0, 0), two mirrored, and no attributes (so no source prompt).
      {std::string(FX_CORPUS_DIR) + "/constructiq/house_plan.dxf",
       "WC3\nZA_CIR\nCIRID\n\n%FIXT_CODE%/%FU_TOTAL%\n\nNo\napply\n\n\n\n\n\n\n\nreplace\n"
       "_vantoryReplaceBlock\nABWD_SD8_1711\nWC3\n\n\n\nYes\nreplace",
       {"WC3", "ZA_CIR", "ABWD_SD8_1711", "WC3"},
       "WC3 -> ZA_CIR references 2 attributes 4 invisible 2 field lengths 0\ntexts 4/3.0||4/3.0|\n"
       "ABWD_SD8_1711 -> WC3 references 4 attributes 20 invisible 20 field lengths 0\n"
       "texts |||||||||||||||||||\n"},
      // A room stamp at scale 10 replaced by itself: 19 attributes, 12 invisible.
      {std::string(FX_CORPUS_DIR) + "/wentcad/WATT_0a_PARTER.dxf",
       "2da_pok06c_zs1fkav\n2da_pok06c_zs1fkav\nAREA\n\n%AREA% %UNIT_AREA%\n\nYes\napply\n\n\n"
       "NAME\n\n%NR% %NAME%\n\n\napply\n\n\n\n\n\n\n\nreplace",
       {"2da_pok06c_zs1fkav", "2da_pok06c_zs1fkav"},
       "2da_pok06c_zs1fkav -> 2da_pok06c_zs1fkav references 1 attributes 19 invisible 12 "
       "field lengths 0\ntexts |||||15.00 m²||1 Pomieszczenie|||||||||||\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.drawing);
    if (!std::filesystem::exists(c.drawing)) continue;
    session_.reset();  // the fixture's drawing first, so the next session loads the plug-in anew
    Open(c.drawing);
    const std::string out = RunScript("_vantoryReplaceBlock\n" + c.script);
    ASSERT_FALSE(runner().failed()) << out;
    std::string error;
    ASSERT_TRUE(session_->Save(dir_ + "/replaced.dxf", &error)) << error;
    std::vector<std::string> args = {FX_EZDXF_REPLACED, c.drawing, dir_ + "/replaced.dxf"};
    args.insert(args.end(), c.block_pairs.begin(), c.block_pairs.end());
    const fx::cli_test::ProgramResult check =
        fx::cli_test::RunProgram(FX_SYSTEM_PYTHON, args, dir_);
    EXPECT_EQ(check.err, "");
    EXPECT_EQ(check.out, "audit errors 0\n" + c.report);
  }
}

}  // namespace
}  // namespace fx::rooms_test
