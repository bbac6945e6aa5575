// vantoryconvert on problems.dxf (tests/data/rooms/make_drawings.py): every
// problem flag in both modes, the problem lists, the floor outline, the
// duplicate-name setting and removing the block inserts; labels anchored on
// walls (anchors.dxf).
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "rooms_fixture.h"
#include "settings/duplicate_names_flag.h"

namespace fx::rooms_test {
namespace {

using fx::rooms::ProblemKind;
using fx::rooms::RoomRecord;

// What one identifier's record must hold: its name (with the occurrence
// among equal names), flags, and the first corner of its contour.
struct Expected {
  const char* name;
  int32_t flags;
  std::optional<AcGePoint2d> contour;
};

const std::vector<Expected> kBlockMode = {
    {"101", 0, AcGePoint2d(0, 0)},     {"201", 0, AcGePoint2d(10, 0)},
    {"202", 1, AcGePoint2d(10, 0)},    {"301", 4, AcGePoint2d(30, 0)},
    {"401", 4, AcGePoint2d(38, 8)},    {"601", 0, AcGePoint2d(0, 20)},
    {" 601 ", 8, AcGePoint2d(10, 20)}, {"901", 0, AcGePoint2d(50, 20)},
    {"801", 16, std::nullopt},  // its contour has an arc
    {"999", 16, std::nullopt},  // outside every contour
    {"150", 16, std::nullopt},  // on the wall between 101 and 201
};

const char kBlockTranscript[] =
    "\nCommand: _vantoryconvert\nEnter FloorArea layer: Floor\nEnter room contours layer: Contours"
    "\nRoom Identification[Block/Text]:B\nEnter block name: ROOMTAG\nEnter Name Attribute: NAME"
    "\nEnter Category Attribute: CATEGORY\nEnter Description Attribute: DESCRIPTION"
    "\nDo you want remove block inserts?[Yes/No]:No\nDuplicate identifier \"901\" deleted"
    "\npContour polyline contains arcs. Such type is not supported\n";

class ConvertTest : public RoomsTest {
 protected:
  ConvertTest() { Open(TestDrawing("problems.dxf")); }

  std::vector<AcDbObjectId> Contours(std::initializer_list<AcGePoint2d> corners) const {
    std::vector<AcDbObjectId> ids;
    for (const AcGePoint2d& corner : corners) ids.push_back(ContourAt(corner.x, corner.y));
    return ids;
  }

  // Checks each identifier's record against `expected`, in order.
  void CheckRecords(const std::vector<AcDbObjectId>& identifiers,
                                         const std::vector<Expected>& expected) const {
    EXPECT_EQ(identifiers.size(), expected.size());
    for (size_t i = 0; i < std::min(identifiers.size(), expected.size()); ++i) {
      const RoomRecord record = Record(identifiers[i]);
      const Expected& e = expected[i];
      EXPECT_EQ(record.name, e.name) << i;
      EXPECT_EQ(record.flags, e.flags) << e.name;
      EXPECT_EQ(record.linked, e.contour ? ContourAt(e.contour->x, e.contour->y) : AcDbObjectId::kNull)
          << e.name;
      EXPECT_FALSE(record.extents.isEmpty()) << e.name;
    }
  }

  std::vector<AcDbObjectId> Stamps(std::initializer_list<const char*> names) const {
    std::vector<AcDbObjectId> ids;
    for (const char* name : names) ids.push_back(StampsNamed(name).at(0));
    return ids;
  }
};

TEST_F(ConvertTest, BlockModeFlagsEveryProblem) {
  EXPECT_EQ(RunScript(BlockModeLine()), kBlockTranscript);
  const std::vector<AcDbObjectId> rooms = docData().roomIds();
  CheckRecords(rooms, kBlockMode);
  EXPECT_EQ(rooms, Stamps({"101", "201", "202", "301", "401", "601", " 601 ", "901", "801", "999", "150"}));
  const RoomRecord first = Record(StampsNamed("101")[0]);
  EXPECT_EQ(first.category + "|" + first.description + "|" + first.comment, "Office|Room 101|");
  EXPECT_EQ(Record(StampsNamed("777")[0]).name, "(none)");  // on a frozen layer
  EXPECT_EQ(StampsNamed("901").size(), 1u);                  // its copy in the same room was deleted

  EXPECT_TRUE(docData().analysed());
  EXPECT_EQ(docData().identifiedRoomCount(), 7u);
  EXPECT_EQ(docData().problems(ProblemKind::kAreaNotFound), Stamps({"801", "999", "150"}));
  EXPECT_EQ(docData().problems(ProblemKind::kDuplicateNumber), Stamps({" 601 "}));
  EXPECT_EQ(docData().problems(ProblemKind::kMultipleIds), Stamps({"202"}));
  EXPECT_EQ(docData().problems(ProblemKind::kIntersectedContour), Contours({{30, 0}, {38, 8}}));
  EXPECT_EQ(docData().problems(ProblemKind::kEmptyContour), Contours({{50, 0}, {30, 20}}));
  const std::vector<std::pair<AcDbObjectId, AcDbObjectId>> pairs = {
      {ContourAt(30, 0), ContourAt(38, 8)}, {ContourAt(38, 8), ContourAt(30, 0)}};
  EXPECT_EQ(docData().intersectingPairs(), pairs);
  // The stamp's frame reaches one unit left and right of its insertion
  // point; the attribute texts start at it and may run further right.
  const RoomRecord record = Record(StampsNamed("301")[0]);
  EXPECT_DOUBLE_EQ(record.extents.minPoint().x, 32);
  EXPECT_GE(record.extents.maxPoint().x, 34);
  EXPECT_LE(record.extents.minPoint().y, 2.5);
  EXPECT_GE(record.extents.maxPoint().y, 3.5);
  // A second run, with the tags typed in lower case, finds nothing left to
  // delete and gives the same records.
  EXPECT_EQ(RunScript(R"(_vantoryconvert "Floor" "Contours" B "roomtag" "name" "category" "description" No)")
                .find("deleted"),
            std::string::npos);
  CheckRecords(docData().roomIds(), kBlockMode);
}

TEST_F(ConvertTest, TextModeTakesTypesAndDescriptionsFromTheContour) {
  EXPECT_EQ(RunScript(TextModeLine()),
            "\nCommand: _vantoryconvert\nEnter FloorArea layer: Floor\nEnter room contours layer: Contours"
            "\nRoom Identification[Block/Text]:T\nEnter name attribute text entities layer: Names"
            "\nEnter type attribute text entities layer: Types"
            "\nEnter description attribute text entities layer: Descriptions"
            // The type and the description text of room 801 are tested first.
            "\npContour polyline contains arcs. Such type is not supported"
            "\npContour polyline contains arcs. Such type is not supported"
            "\nDuplicate identifier \"901\" deleted"
            "\npContour polyline contains arcs. Such type is not supported\n");
  std::vector<Expected> expected(kBlockMode.begin(), kBlockMode.end() - 1);  // no text on the wall
  CheckRecords(docData().roomIds(), expected);
  EXPECT_EQ(docData().roomIds().front(), NamesShowing("101").at(0));  // the MTEXT
  EXPECT_EQ(Record(NamesShowing("301").at(0)).category, "Office");
  EXPECT_EQ(Record(NamesShowing("301").at(0)).description, "Room 301");
  // One description per contour: the second name of room 201 gets its first.
  EXPECT_EQ(Record(NamesShowing("202").at(0)).description, "Room 201");
  // Outside every contour, nothing to take them from.
  EXPECT_EQ(Record(NamesShowing("999").at(0)).category, "");
  EXPECT_EQ(docData().identifiedRoomCount(), 7u);
  EXPECT_EQ(docData().problemCount(ProblemKind::kAreaNotFound), 2u);
  EXPECT_EQ(docData().problemCount(ProblemKind::kEmptyContour), 2u);
}

TEST_F(ConvertTest, TheFloorOutlineIsTheLargestPolylineOfItsLayer) {
  const AcDbObjectId courtyard = ContourAt(70, 40, "Floor");
  // A floor record left on the courtyard by an earlier run goes.
  RoomRecord stale;
  stale.name = fx::rooms::kFloorOutlineName;
  ASSERT_EQ(fx::rooms::SetXData(courtyard, stale), Acad::eOk);
  RunScript(TextModeLine());
  const AcDbObjectId floor = docData().floorOutline();
  ASSERT_FALSE(floor.isNull());
  EXPECT_NE(floor, courtyard);
  const RoomRecord record = Record(floor);
  EXPECT_EQ(record.name, "<*AREA_FLOOR*>");
  EXPECT_EQ(record.flags, 0);
  EXPECT_TRUE(record.linked.isNull());
  EXPECT_EQ(record.extents.minPoint(), AcGePoint3d(-5, -5, 0));
  EXPECT_EQ(record.extents.maxPoint(), AcGePoint3d(110, 110, 0));
  EXPECT_EQ(Record(courtyard).name, "(none)");
}

// With the setting off, a name given twice in one room is flagged twice:
// several identifiers, and a duplicate of the first.
TEST_F(ConvertTest, WithoutResolvingDuplicateNamesBothStay) {
  fx::settings::SetAutoResolveDuplicateNamesFlag(false);
  const std::string transcript = RunScript(BlockModeLine());
  EXPECT_EQ(transcript.find("deleted"), std::string::npos);
  const std::vector<AcDbObjectId> copies = StampsNamed("901");
  ASSERT_EQ(copies.size(), 2u);
  EXPECT_EQ(Record(copies[0]).flags, 0);
  EXPECT_EQ(Record(copies[1]).flags, fx::rooms::kFlagMultipleIds | fx::rooms::kFlagDuplicate);
  EXPECT_EQ(Record(copies[1]).linked, ContourAt(50, 20));
  EXPECT_EQ(docData().problems(ProblemKind::kMultipleIds), (std::vector{StampsNamed("202")[0], copies[1]}));
  EXPECT_EQ(docData().problems(ProblemKind::kDuplicateNumber), (std::vector{StampsNamed(" 601 ")[0], copies[1]}));
  EXPECT_EQ(docData().roomIds().size(), 12u);
  EXPECT_EQ(docData().identifiedRoomCount(), 7u);
}

TEST_F(ConvertTest, RemovingInsertsMovesRecordsToTheirContours) {
  RunScript(BlockModeLine("Yes"));
  // The stamps that alone named their room are gone, their data is on the contour.
  for (const char* name : {"101", "201", "301", "401", "601", " 601 ", "901"}) {
    EXPECT_TRUE(StampsNamed(name).empty()) << name;
  }
  const RoomRecord moved = Record(ContourAt(10, 20));
  EXPECT_EQ(moved.name, " 601 ");
  EXPECT_EQ(moved.flags, fx::rooms::kFlagDuplicate);
  EXPECT_EQ(moved.linked, ContourAt(10, 20));
  EXPECT_EQ(Record(ContourAt(0, 0)).description, "Room 101");
  // The others stay where the problem lists point.
  for (const char* name : {"202", "801", "999", "150", "777"}) {
    EXPECT_EQ(StampsNamed(name).size(), 1u) << name;
  }
  EXPECT_EQ(docData().problems(ProblemKind::kDuplicateNumber), std::vector{ContourAt(10, 20)});
  EXPECT_EQ(docData().problems(ProblemKind::kMultipleIds), std::vector{StampsNamed("202")[0]});
  EXPECT_EQ(docData().roomIds().at(0), ContourAt(0, 0));
  EXPECT_EQ(docData().roomIds().size(), 11u);
}

// A label is found by the middle of its text, not by its anchor: these are
// anchored on a corner or a wall of their room, which the inside test
// counts as outside.
TEST_F(RoomsTest, LabelsAnchoredOnTheirWallsNameTheRoomTheirTextIsIn) {
  Open(TestDrawing("anchors.dxf"));
  RunScript(R"(_vantoryconvert "Floor" "Contours" T "Names" "Names" "Names")");
  EXPECT_EQ(Record(NamesShowing("A1").at(0)).linked, ContourAt(0, 0));
  EXPECT_EQ(Record(NamesShowing("A2").at(0)).linked, ContourAt(10, 0));
  EXPECT_EQ(Record(NamesShowing("A3").at(0)).linked, ContourAt(20, 0));
  EXPECT_EQ(docData().identifiedRoomCount(), 3u);
}

}  // namespace
}  // namespace fx::rooms_test
