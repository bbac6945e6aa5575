// The room record in extended data: the three versions of drawings written
// by earlier releases, written and removed beside other data.
#include <gtest/gtest.h>

#include <string>

#include "host/resbuf.h"
#include "rooms/room_record.h"
#include "rooms_fixture.h"

namespace fx::rooms_test {
namespace {

using fx::rooms::RoomRecord;

class RoomRecordTest : public RoomsTest {
 protected:
  RoomRecordTest() { Open(TestDrawing("records.dxf")); }

  // The TEXT showing `text`.
  AcDbObjectId Text(const std::string& text) const {
    for (AcDbObjectId id : ModelSpace()) {
      AcDbObjectPointer<AcDbText> entity(id, AcDb::kForRead);
      if (entity.openStatus() == Acad::eOk && entity->textString() == text) return id;
    }
    ADD_FAILURE() << "no text " << text;
    return AcDbObjectId::kNull;
  }

  // The items of `app`'s extended data on `id` (strings only), as "code:value" lines.
  std::string XData(AcDbObjectId id, const char* app) const {
    ResbufPtr list(AcDbEntityPointer(id, AcDb::kForRead)->xData(app));
    std::string items;
    for (const resbuf* item = list.get(); item != nullptr; item = item->rbnext)
      items += std::to_string(item->restype) + ":" + item->resval.rstring + "\n";
    return items;
  }
};

TEST_F(RoomRecordTest, EveryVersionReadsTheFieldsItHas) {
  const AcDbObjectId contour = ContourAt(0, 0);
  struct Version {
    const char* text;
    int32_t flags;
    bool extents;
  };
  for (const Version& version : {Version{"v1.0", 0, false}, Version{"v1.1", 9, false}, Version{"v1.2", -25536, true}}) {
    const RoomRecord record = Record(Text(version.text));
    EXPECT_EQ(record.name + "|" + record.category + "|" + record.description + "|" + record.comment,
              "101|Office|Open office|note")
        << version.text;
    EXPECT_EQ(record.linked, contour) << version.text;
    // 40000 was written as the integer of version 1.2: 16 bits come back.
    EXPECT_EQ(record.flags, version.flags) << version.text;
    EXPECT_EQ(record.extents.isEmpty(), !version.extents) << version.text;
  }
  const RoomRecord latest = Record(Text("v1.2"));
  EXPECT_EQ(latest.extents.minPoint(), AcGePoint3d(1, 2, 0));
  EXPECT_EQ(latest.extents.maxPoint(), AcGePoint3d(3, 4, 0));
}

// Written as version 1.2 (its layout as another reader sees it:
// analyze_program_test.cpp), beside another application's data.
TEST_F(RoomRecordTest, WritingAndRemovingLeaveOtherApplicationsData) {
  RoomRecord record;
  record.name = "Büro 1";
  record.description = "Open \"plan\"";
  record.linked = ContourAt(0, 0);
  record.flags = fx::rooms::kFlagMultipleIds | fx::rooms::kFlagDuplicate;
  record.extents.set({1.5, 2, 0}, {3, 4.25, 0});
  const AcDbObjectId text = Text("other");
  ASSERT_EQ(fx::rooms::SetXData(text, record), Acad::eOk);
  EXPECT_EQ(XData(text, "OtherApp"), "1001:OtherApp\n1000:kept\n");
  const RoomRecord back = Record(text);
  EXPECT_EQ(back.name + "|" + back.description, record.name + "|" + record.description);
  EXPECT_TRUE(back.linked == record.linked && back.flags == record.flags);
  EXPECT_EQ(back.extents.maxPoint(), record.extents.maxPoint());
  ASSERT_EQ(fx::rooms::RemoveRoomRecord(text), Acad::eOk);
  EXPECT_EQ(Record(text).name, "(none)");
  EXPECT_EQ(XData(text, "VantoryApp"), "");
  EXPECT_EQ(XData(text, "OtherApp"), "1001:OtherApp\n1000:kept\n");
  // An entity without a record is left as it was.
  ASSERT_EQ(fx::rooms::RemoveRoomRecord(text), Acad::eOk);
  EXPECT_EQ(XData(text, "OtherApp"), "1001:OtherApp\n1000:kept\n");
}

}  // namespace
}  // namespace fx::rooms_test
