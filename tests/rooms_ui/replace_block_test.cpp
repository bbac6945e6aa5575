// Block replacement: the expression substitution, the dialog's rules, the
// replacement on a drawing made for it (rooms_base.dxf and references added
// by the test), and the command on real drawings checked by ezdxf.
#include "rooms/replace_block.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <numbers>
#include <string>
#include <vector>

#include "host/database.h"
#include "program_runner.h"
#include "rooms/replace_block_dlg.h"
#include "rooms/room_list_fields.h"
#include "rooms_ui_fixture.h"

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
      {"[%EMPTY%]", "[]"},
      {"100%", "100%"},
      {"%%NAME%%", "%1.01%"},
      {"no patterns", "no patterns"},
      {"", ""},
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

class ReplaceBlockTest : public RoomsUiTest {
 protected:
  ReplaceBlockTest() { Open(BaseDrawing()); }

  struct Attribute {
    std::string tag, text, layer;
    AcGePoint3d position, alignment;
    double height = 0, rotation = 0;
    uint16_t color = 0;
    int horizontal = 0;
  };
  struct Reference {
    AcDbObjectId id;
    std::string block;
    AcGePoint3d position;
    AcGeScale3d scale;
    double rotation = 0;
    std::string layer;
    std::vector<Attribute> attributes;
  };

  std::vector<Reference> References() const {
    std::vector<Reference> references;
    for (AcDbObjectId id : ModelSpace()) {
      AcDbObjectPointer<AcDbBlockReference> insert(id, AcDb::kForRead);
      if (insert.openStatus() != Acad::eOk) continue;
      AcDbObjectPointer<AcDbBlockTableRecord> block(insert->blockTableRecord(), AcDb::kForRead);
      Reference reference{id,
                          block->getName(),
                          insert->position(),
                          insert->scaleFactors(),
                          insert->rotation(),
                          insert->layer(),
                          {}};
      for (AcDbObjectId attribute_id : insert->attributeIds()) {
        AcDbObjectPointer<AcDbAttribute> attribute(attribute_id, AcDb::kForRead);
        reference.attributes.push_back(
            {attribute->tag(), attribute->textString(), attribute->layer(), attribute->position(),
             attribute->alignmentPoint(), attribute->height(), attribute->rotation(),
             attribute->colorIndex(), attribute->horizontalMode()});
      }
      references.push_back(std::move(reference));
    }
    return references;
  }

  fx::rooms::ReplaceBlockOptions Options(bool remove_old,
                                         std::vector<fx::rooms::AppliedExpression> expressions) {
    return {"ROOMTAG", "NEWTAG", std::move(expressions), remove_old};
  }
};

void ExpectNear(const AcGePoint3d& actual, const AcGePoint3d& expected) {
  EXPECT_NEAR(actual.x, expected.x, 1e-9);
  EXPECT_NEAR(actual.y, expected.y, 1e-9);
  EXPECT_NEAR(actual.z, expected.z, 1e-9);
}

TEST_F(ReplaceBlockTest, NewReferencesTakeTheOldPlacementScaleOneAndTheAppliedTexts) {
  AddInsert("ROOMTAG", 10, 20, {"1.01", "Office", "Open"}, 2.0);
  const size_t replaced = fx::rooms::ReplaceBlockReferences(
      docData(), Options(false, {{"ROOM", "%NAME% %CATEGORY%"}, {"LABEL", "%NUMBER%"}}));
  EXPECT_EQ(replaced, 1u);
  const std::vector<Reference> references = References();
  ASSERT_EQ(references.size(), 2u);
  // The old one stays when "Remove old block references" is clear: both at
  // the same point, one on top of the other.
  EXPECT_EQ(references[0].block, "ROOMTAG");
  EXPECT_EQ(references[0].scale.sx, 2.0);
  const Reference& made = references[1];
  EXPECT_EQ(made.block, "NEWTAG");
  ExpectNear(made.position, AcGePoint3d(10, 20, 0));
  EXPECT_EQ(made.scale.sx, 1.0);
  EXPECT_EQ(made.scale.sy, 1.0);
  EXPECT_EQ(made.scale.sz, 1.0);
  EXPECT_EQ(made.layer, "RoomTags");
  ASSERT_EQ(made.attributes.size(), 3u);
  EXPECT_EQ(made.attributes[0].tag, "ROOM");
  EXPECT_EQ(made.attributes[0].text, "1.01 Office");
  EXPECT_EQ(made.attributes[1].tag, "LABEL");
  EXPECT_EQ(made.attributes[1].text, "%NUMBER%");
  // No expression applied: empty, not the definition's default.
  EXPECT_EQ(made.attributes[2].tag, "NOTE");
  EXPECT_EQ(made.attributes[2].text, "");
}

TEST_F(ReplaceBlockTest, AttributesTakeTheirDefinitionsPropertiesThroughTheBlockTransform) {
  const double quarter = std::numbers::pi / 2;
  AddInsert("ROOMTAG", 10, 20, {"1.01", "", ""}, 1.0, quarter);
  fx::rooms::ReplaceBlockReferences(docData(), Options(true, {}));
  const std::vector<Reference> references = References();
  ASSERT_EQ(references.size(), 1u);
  const Reference& made = references[0];
  EXPECT_NEAR(made.rotation, quarter, 1e-12);
  ASSERT_EQ(made.attributes.size(), 3u);
  // NEWTAG's base point is (1, 1); a quarter turn maps block (x, y) to
  // (10 - (y - 1), 20 + (x - 1)).
  const Attribute& room = made.attributes[0];
  ExpectNear(room.position, AcGePoint3d(10, 20, 0));
  EXPECT_EQ(room.height, 2.5);
  EXPECT_EQ(room.layer, "RoomTags");
  EXPECT_EQ(room.color, 3);
  EXPECT_NEAR(room.rotation, quarter, 1e-12);
  const Attribute& label = made.attributes[1];
  EXPECT_EQ(label.horizontal, kTextCenter);
  ExpectNear(label.alignment, AcGePoint3d(11, 23, 0));
  EXPECT_NEAR(label.rotation, std::numbers::pi, 1e-12);
  EXPECT_EQ(label.height, 0.5);
}

TEST_F(ReplaceBlockTest, RemoveOldErasesEachOldReferenceAndNoOther) {
  AddInsert("ROOMTAG", 0, 0, {"1", "", ""});
  AddInsert("PLAIN", 5, 5);
  AddInsert("ROOMTAG", 10, 0, {"2", "", ""});
  EXPECT_EQ(fx::rooms::ReplaceBlockReferences(docData(), Options(true, {{"ROOM", "%NAME%"}})), 2u);
  std::vector<std::string> seen;
  for (const Reference& reference : References()) {
    seen.push_back(reference.block + ":" +
                   (reference.attributes.empty() ? "" : reference.attributes[0].text));
  }
  EXPECT_EQ(seen, (std::vector<std::string>{"PLAIN:", "NEWTAG:1", "NEWTAG:2"}));
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

TEST_F(ReplaceBlockTest, TheDialogListsBlocksAndTagsAndAppliesExpressions) {
  CReplaceBlockDlg dialog(&db());
  EXPECT_EQ(dialog.blockNames(), (std::vector<std::string>{"*Model_Space", "*Paper_Space",
                                                           "ROOMTAG", "NEWTAG", "PLAIN"}));
  EXPECT_EQ(dialog.fields().size(), 5u);  // no attribute lists before a block is chosen
  EXPECT_EQ(dialog.SetField(0, "ROOMTAG"), "");
  EXPECT_EQ(dialog.SetField(1, "NEWTAG"), "");
  std::vector<DialogField> fields = dialog.fields();
  ASSERT_EQ(fields.size(), 7u);
  EXPECT_EQ(fields[2].label, "A&ttribute name");
  EXPECT_EQ(fields[2].items, (std::vector<std::string>{"ROOM", "LABEL", "NOTE"}));
  EXPECT_EQ(fields[3].label, "&Source of attributes");
  EXPECT_EQ(fields[3].items, (std::vector<std::string>{"NAME", "CATEGORY", "DESCRIPTION"}));
  // Picking a source attribute quotes it into the expression.
  EXPECT_EQ(dialog.SetField(4, "Room "), "");
  EXPECT_EQ(dialog.SetField(3, "NAME"), "");
  EXPECT_EQ(dialog.expression(), "Room %NAME%");
  EXPECT_EQ(dialog.SetField(5, "x"), fx::rooms::kReadOnlyReason);
}

TEST_F(ReplaceBlockTest, ApplyExpressionRules) {
  CReplaceBlockDlg dialog(&db());
  const size_t before = terminal_.out.size();
  // Without a new block and a tag nothing happens, not even the message.
  dialog.SetField(2, "%NAME%");  // the expression, while the tag lists are hidden
  dialog.ApplyExpressionButton();
  EXPECT_TRUE(dialog.options().expressions.empty());
  dialog.SetField(1, "NEWTAG");
  dialog.ApplyExpressionButton();  // no tag chosen
  EXPECT_TRUE(dialog.options().expressions.empty());
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

TEST_F(ReplaceBlockTest, WithoutADatabaseTheListsStayEmpty) {
  const size_t before = terminal_.out.size();
  CReplaceBlockDlg dialog(nullptr);
  EXPECT_TRUE(dialog.blockNames().empty());
  EXPECT_EQ(terminal_.out.substr(before), "\nError: Can`t acess drawning database!");
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
  const std::vector<Reference> references = References();
  ASSERT_EQ(references.size(), 1u);
  EXPECT_EQ(references[0].block, "NEWTAG");
  EXPECT_EQ(references[0].attributes[0].text, "1.01 (Office)");
}

// The command through the host on drawings whose references lie outside
// the world plane, are mirrored, rotated or scaled, and whose blocks have
// invisible attributes; saved and read back by ezdxf_replaced.py. A real
// drawing that is absent is skipped.
TEST_F(ReplaceBlockTest, OnRealDrawingsTheNewAttributesSitWhereTheEditorPutsThem) {
  const struct {
    std::string drawing, script;
    std::vector<std::string> block_pairs;
    std::string report;
  } cases[] = {
      // Normals (0, 0, -1) and (0, 0.6, 0.8), a scaled and a mirrored reference.
      {std::string(FX_ROOMS_UI_DATA) + "/replace_planes.dxf",
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
