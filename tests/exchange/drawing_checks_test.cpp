// What the exchange reads from a drawing before it calls a server: where the
// occupant import puts a room's block, and a DWG that is never sent.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "../svg/svg_test_support.h"
#include "rooms/room_record.h"
#include "server/occupant_placement.h"
#include "server/send_to.h"
#include "server/workflow_result.h"

namespace fx::server {
namespace {

using fx::svg_test::LoadDrawing;
using fx::svg_test::R12;

// A U-shaped room (its box's centre lies in the notch, its centroid in the
// bar) named by a text written upside down; the outline has a handle of
// its own for the record to link to.
TEST(OccupantPlacementTest, ABlockGoesToTheCentroidReadingUpright) {
  std::unique_ptr<AcDbDatabase> db = LoadDrawing(
      R12("0 TABLE|2 APPID|70 1\n0 APPID|2 VantoryApp|70 0\n0 ENDTAB", "",
          "0 POLYLINE|5 A1|8 0|66 1|70 1\n0 VERTEX|8 0|10 0|20 0\n0 VERTEX|8 0|10 10|20 0\n0 VERTEX|8 0|10 10|20 10\n"
          "0 VERTEX|8 0|10 7|20 10\n0 VERTEX|8 0|10 7|20 4.5\n0 VERTEX|8 0|10 3|20 4.5\n0 VERTEX|8 0|10 3|20 10\n"
          "0 VERTEX|8 0|10 0|20 10\n0 SEQEND|8 0\n0 TEXT|8 0|10 2|20 1|30 0|40 0.5|1 1.01|50 180"),
      "u_room.dxf");
  ASSERT_NE(db, nullptr);
  const std::vector<AcDbObjectId> entities =
      AcDbObjectPointer<AcDbBlockTableRecord>(db->modelSpaceId(), AcDb::kForRead)->entityIds();
  fx::rooms::RoomRecord record;
  record.name = "1.01";
  record.linked = entities.front();
  ASSERT_EQ(fx::rooms::SetXData(entities.back(), record), Acad::eOk);
  const OccupantPlan plan = PlanOccupantImport(*db, {OccupantRoom{"1.01", "Office", "", {}}});
  ASSERT_EQ(plan.inserts.size(), 1u);
  EXPECT_NEAR(plan.inserts[0].position.x, 5, 1e-9);
  EXPECT_NEAR(plan.inserts[0].position.y, 340.5 / 78, 1e-9);  // the bar's and the arms' moments
  EXPECT_NEAR(plan.inserts[0].rotation, 0, 1e-9);
}

// Accented names are as wide as plain ones: the fit counts characters, not bytes.
TEST(OccupantPlacementTest, TextFitsByCharactersNotBytes) {
  const std::string plain(40, 'e');
  std::string accented;
  for (int i = 0; i < 40; ++i) accented += "é";
  const double height = FittingTextHeight({plain, "", "", "", ""}, 100, 100);
  EXPECT_DOUBLE_EQ(FittingTextHeight({accented, "", "", "", ""}, 100, 100), height);
  EXPECT_LT(FittingTextHeight({plain + "e", "", "", "", ""}, 100, 100), height);  // the width decides
}

// Sending saves over the drawing's file: a DXF named .DWG is refused by its name.
TEST(SendToTest, ADrawingNamedDwgIsNotSent) {
  std::unique_ptr<AcDbDatabase> db = LoadDrawing(R12("", "", ""), "plan.DWG");
  ASSERT_NE(db, nullptr);
  std::string message;
  EXPECT_EQ(SendTo(db.get(), message, false, false), kFailed);
  EXPECT_NE(message.find("\" is a DWG file and is not sent"), std::string::npos) << message;
}

}  // namespace
}  // namespace fx::server
