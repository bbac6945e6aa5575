// vantoryaddmarker: the point, the room properties dialog as prompts, the
// text placed and the record it carries; Escape. (An empty name and Cancel:
// program_test.cpp.)
#include "rooms/marker.h"

#include <gtest/gtest.h>

#include <string>

#include "rooms/room_list_fields.h"
#include "rooms/room_prop_dialog.h"
#include "rooms_fixture.h"

namespace fx::rooms_test {
namespace {

class MarkerTest : public RoomsTest {
 protected:
  MarkerTest() { Open(BaseDrawing()); }

  struct Text {
    AcDbObjectId id;
    std::string text;
    AcGePoint3d position;
  };
  std::vector<Text> Texts() const {
    std::vector<Text> texts;
    for (AcDbObjectId id : ModelSpace()) {
      AcDbObjectPointer<AcDbText> text(id, AcDb::kForRead);
      if (text.openStatus() != Acad::eOk) continue;
      texts.push_back({id, text->textString(), text->position()});
    }
    return texts;
  }
};

TEST_F(MarkerTest, AcceptingPlacesATextWithTheRecord) {
  const std::string out =
      RunScript("_vantoryaddmarker 12.5,7\n1.01\nOffice\nOpen office, north\nNew carpet\n\nOK");
  EXPECT_FALSE(runner().failed()) << out;
  EXPECT_EQ(out,
            "\nCommand: _vantoryaddmarker\nSpecify internal point: 12.5,7"
            "\nRoom Properties"
            "\n&Name: 1.01"
            "\n&Category: Office"
            "\n&Description: Open office, north"
            "\nCo&mment: New carpet"
            "\nArea <Area not found>: "
            "\n[OK/Cancel] <OK>: OK\n");
  const std::vector<Text> texts = Texts();
  ASSERT_EQ(texts.size(), 1u);
  EXPECT_EQ(texts[0].text, "1.01");
  EXPECT_EQ(texts[0].position, AcGePoint3d(12.5, 7, 0));
  fx::rooms::RoomRecord record;
  ASSERT_TRUE(fx::rooms::ReadRoomRecord(texts[0].id, &record));
  EXPECT_EQ(record.name + "|" + record.category + "|" + record.description + "|" + record.comment,
            "1.01|Office|Open office, north|New carpet");
  EXPECT_TRUE(record.linked.isNull());
  EXPECT_EQ(record.flags, 0);
  // The marker counts among the document's rooms and markers.
  EXPECT_EQ(docData().roomIds(), std::vector<AcDbObjectId>{texts[0].id});
  EXPECT_EQ(fx::rooms::MarkerIds(session_->document()), std::vector<AcDbObjectId>{texts[0].id});
}

// Escape at the point prompt: in a batch run, the input running out.
TEST_F(MarkerTest, EscapeAtThePointChangesNothingAndPrintsNothing) {
  const std::string out = RunScript("_vantoryaddmarker");
  EXPECT_EQ(out, "\nCommand: _vantoryaddmarker\nSpecify internal point: *Cancel*\n");
  EXPECT_TRUE(Texts().empty());
  EXPECT_TRUE(fx::rooms::MarkerIds(session_->document()).empty());
}

}  // namespace
}  // namespace fx::rooms_test
