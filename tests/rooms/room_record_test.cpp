// The room record in extended data: written and read back, the three
// versions of drawings written by earlier releases, the 16-bit integer,
// and removing a record.
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

  // The items of `app`'s extended data on `id`, as "code:value" lines.
  std::string XData(AcDbObjectId id, const char* app) const {
    AcDbEntityPointer entity(id, AcDb::kForRead);
    ResbufPtr list(entity->xData(app));
    std::string items;
    for (const resbuf* item = list.get(); item != nullptr; item = item->rbnext) {
      items += std::to_string(item->restype) + ":";
      if (item->restype == 1071) items += std::to_string(item->resval.rlong);
      else if (item->restype == 1010) items += std::to_string(item->resval.rpoint[0]) + "," + std::to_string(item->resval.rpoint[1]);
      else items += item->resval.rstring;
      items += "\n";
    }
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
    EXPECT_EQ(record.name, "101") << version.text;
    EXPECT_EQ(record.category, "Office") << version.text;
    EXPECT_EQ(record.description, "Open office") << version.text;
    EXPECT_EQ(record.comment, "note") << version.text;
    EXPECT_EQ(record.linked, contour) << version.text;
    // 40000 was written as the integer of version 1.2: 16 bits come back.
    EXPECT_EQ(record.flags, version.flags) << version.text;
    EXPECT_EQ(record.extents.isEmpty(), !version.extents) << version.text;
  }
  const RoomRecord latest = Record(Text("v1.2"));
  EXPECT_EQ(latest.extents.minPoint(), AcGePoint3d(1, 2, 0));
  EXPECT_EQ(latest.extents.maxPoint(), AcGePoint3d(3, 4, 0));
}

TEST_F(RoomRecordTest, AnEntityWithoutARecordReadsNone) {
  RoomRecord record;
  EXPECT_FALSE(fx::rooms::ReadRoomRecord(Text("other"), &record));
  EXPECT_FALSE(fx::rooms::ReadRoomRecord(ContourAt(0, 0), &record));
  EXPECT_FALSE(fx::rooms::ReadRoomRecord(AcDbObjectId::kNull, &record));
}

TEST_F(RoomRecordTest, WritesTheLayoutOfVersion12) {
  RoomRecord record;
  record.name = "Büro 1";
  record.category = "Office";
  record.description = "Open \"plan\"";
  record.linked = ContourAt(0, 0);
  record.flags = fx::rooms::kFlagMultipleIds | fx::rooms::kFlagDuplicate;
  record.extents.set({1.5, 2, 0}, {3, 4.25, 0});
  const AcDbObjectId text = Text("other");
  ASSERT_EQ(fx::rooms::SetXData(text, record), Acad::eOk);
  EXPECT_EQ(XData(text, "VantoryApp"),
            "1001:VantoryApp\n1000:1.2\n1000:Büro 1\n1000:Office\n1000:Open \"plan\"\n1000:\n1000:" +
                ContourAt(0, 0).handle().ascii() + "\n1071:9\n1010:1.500000,2.000000\n1010:3.000000,4.250000\n");
  EXPECT_EQ(XData(text, "OtherApp"), "1001:OtherApp\n1000:kept\n");  // another application's data stays
  const RoomRecord back = Record(text);
  EXPECT_EQ(back.name, record.name);
  EXPECT_EQ(back.description, record.description);
  EXPECT_EQ(back.linked, record.linked);
  EXPECT_EQ(back.flags, record.flags);
  EXPECT_EQ(back.extents.maxPoint(), record.extents.maxPoint());
}

// The integer is written whole and read as its low 16 bits, sign-extended.
TEST_F(RoomRecordTest, TheIntegerComesBackAsSixteenBits) {
  const struct {
    int32_t written;
    int32_t read;
  } kIntegers[] = {{0, 0}, {16, 16}, {32767, 32767}, {32768, -32768}, {40000, -25536},
                   {65535, -1}, {65536, 0}, {-1, -1}, {-40000, 25536}};
  const AcDbObjectId text = Text("other");
  for (const auto& integer : kIntegers) {
    RoomRecord record;
    record.flags = integer.written;
    ASSERT_EQ(fx::rooms::SetXData(text, record), Acad::eOk);
    EXPECT_EQ(Record(text).flags, integer.read) << integer.written;
  }
}

TEST_F(RoomRecordTest, ANullLinkedEntityIsWrittenAsHandleZero) {
  const AcDbObjectId text = Text("other");
  ASSERT_EQ(fx::rooms::SetXData(text, RoomRecord()), Acad::eOk);
  EXPECT_NE(XData(text, "VantoryApp").find("\n1000:0\n1071:0\n"), std::string::npos);
  EXPECT_TRUE(Record(text).linked.isNull());
}

TEST_F(RoomRecordTest, RemovingTakesOnlyTheRecord) {
  const AcDbObjectId text = Text("v1.2");
  ASSERT_EQ(fx::rooms::RemoveRoomRecord(text), Acad::eOk);
  EXPECT_EQ(Record(text).name, "(none)");
  EXPECT_EQ(XData(text, "VantoryApp"), "");
  // An entity without a record is left as it was, other data included.
  const AcDbObjectId other = Text("other");
  ASSERT_EQ(fx::rooms::RemoveRoomRecord(other), Acad::eOk);
  EXPECT_EQ(XData(other, "OtherApp"), "1001:OtherApp\n1000:kept\n");
}

TEST_F(RoomRecordTest, WritingNeedsAnEntityThatOpens) {
  EXPECT_EQ(fx::rooms::SetXData(AcDbObjectId::kNull, RoomRecord()), Acad::eNullObjectId);
  EXPECT_EQ(fx::rooms::RemoveRoomRecord(AcDbObjectId::kNull), Acad::eNullObjectId);
}

}  // namespace
}  // namespace fx::rooms_test
