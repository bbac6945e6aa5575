// Accessors of the typed entities and layers over hand-written tags, where
// the corpus tests cannot reach: text values, attributes in the layouts
// before R13 and of R2018, MTEXT contents, and layer states.
#include <gtest/gtest.h>

#include <numbers>
#include <utility>

#include "entity_test_support.h"
#include "host/db_entities.h"
#include "host/db_tables.h"

namespace {

using fx::testing::Make;

constexpr double kPi = std::numbers::pi;

TEST(EntityAccessors, TextValuesAreDecodedAndEncoded) {
  auto text = Make<AcDbText>("0 TEXT\n100 AcDbEntity\n8 0\n100 AcDbText\n10 0\n20 0\n40 1\n1 %%c50 ^Jx\n100 AcDbText\n");
  EXPECT_EQ(text->textString(), "%%c50 \nx");  // %%-codes stay raw, carets decode
  ASSERT_EQ(text->setTextString("B\xC3\xBC" "ro\tA"), Acad::eOk);
  EXPECT_EQ(text->textString(), "B\xC3\xBC" "ro\tA");
  const fx::dxf::TagList& tags = text->impl()->tags();
  EXPECT_EQ(tags.GetString(1, tags.Body()), "B\xC3\xBC" "ro^IA");
}

TEST(EntityAccessors, AttributesKeepVerticalAlignmentIn74) {
  const std::pair<const char*, const char*> layouts[] = {
      {"R12", "0 ATTRIB\n8 0\n10 0\n20 0\n30 0\n40 1\n1 101\n2 NUMBER\n70 9\n73 0\n72 4\n11 0\n21 0\n31 0\n74 3\n"},
      {"R2018", "0 ATTRIB\n100 AcDbEntity\n8 0\n100 AcDbText\n10 0\n20 0\n30 0\n40 1\n1 101\n72 4\n11 0\n"
                "21 0\n31 0\n100 AcDbAttribute\n280 0\n2 NUMBER\n70 9\n73 0\n74 3\n"},
  };
  for (const auto& [name, tags] : layouts) {
    SCOPED_TRACE(name);
    auto attribute = Make<AcDbAttribute>(tags);
    EXPECT_EQ(attribute->tag(), "NUMBER");
    EXPECT_EQ(attribute->textString(), "101");
    EXPECT_TRUE(attribute->isInvisible());
    EXPECT_FALSE(attribute->isConstant());
    EXPECT_EQ(attribute->horizontalMode(), kTextMid);
    EXPECT_EQ(attribute->verticalMode(), kTextTop);
  }
}

// Contents come in chunks of 3 before the final 1; the direction gives the rotation.
TEST(EntityAccessors, MTextContentsAndDirection) {
  auto mtext = Make<AcDbMText>(
      "0 MTEXT\n100 AcDbEntity\n8 0\n100 AcDbMText\n10 10\n20 20\n30 0\n40 2\n41 30\n71 5\n72 1\n"
      "3 {\\fArial|b1;Raum}\\P\\A1;A\n1 -1.01\\P12,5 m\\S2^;\n7 Standard\n11 0\n21 1\n31 0\n44 1.5\n");
  EXPECT_EQ(mtext->contents(), "{\\fArial|b1;Raum}\\P\\A1;A-1.01\\P12,5 m\\S2^;");
  EXPECT_EQ(mtext->text(), "Raum\nA-1.01\n12,5 m2");
  EXPECT_NEAR(mtext->rotation(), kPi / 2, 1e-15);
}

TEST(EntityAccessors, MTextPlainTextCodes) {
  struct Case {
    const char* contents;
    const char* plain;
  } cases[] = {
      {"a\\Pb", "a\nb"},
      {"\\\\server\\{x\\}", "\\server{x}"},
      {"{\\H2.5x;\\C1;big} {\\Lunder\\l}", "big under"},
      {"\\pxqc;centred\\Nnext", "centred\nnext"},
      {"\\S1/2; \\S3#4;\\Sx^ y;", "1/2 3/4x/y"},
      {"no\\~break", "no\xC2\xA0" "break"},
      {"%%c 20 %%d %%p1", "\xE2\x8C\x80 20 \xC2\xB0 \xC2\xB1" "1"},
      {"\\Q15;\\W0.8;\\T1.1;slanted", "slanted"},
  };
  for (const Case& c : cases) {
    AcDbMText mtext;
    mtext.setContents(c.contents);
    EXPECT_EQ(mtext.text(), c.plain) << c.contents;
  }
}

// A layer is off when its colour number is negative, and drawn in that
// colour's absolute value; colour 0 (which some writers put) is on, in white.
TEST(EntityAccessors, LayerIsOffByTheSignOfItsColour) {
  const struct {
    const char* color;
    bool off;
    uint16_t index;
  } cases[] = {{"62 -3\n", true, 3}, {"62 5\n", false, 5}, {"62 0\n", false, 7}, {"", false, 7}};
  for (const auto& c : cases) {
    auto layer = Make<AcDbLayerTableRecord>(std::string("0 LAYER\n2 Walls\n70 0\n") + c.color);
    EXPECT_EQ(layer->isOff(), c.off) << c.color;
    EXPECT_EQ(layer->color().colorIndex(), c.index) << c.color;
  }
}

}  // namespace
