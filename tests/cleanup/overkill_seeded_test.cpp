// OVERKILL on real drawings with copies of their own entities added
// through the host API: it removes exactly the copies, besides what it
// removes from the drawing without them.
#include <gtest/gtest.h>

#include <algorithm>

#include "cleanup_fixture.h"
#include "corpus.h"
#include "host/dxf/dxf_values.h"

namespace fx::cleanup_test {
namespace {

const char* const kDrawings[] = {
    "openindoor6/plan.dxf",          "daoshi/floor1.dxf",        "pms-app/building001-0_floor3.dxf",
    "smhbackends/10.dxf",            "anandkothar-plans/plan.dxf", "cs-proxymix/HotelDieu_building.dxf",
    "constructiq/house_plan.dxf",    "cs-proxymix/Standard_Factory_Plan.dxf",
};

// Whether a copy made through the API compares equal: the API sets layer,
// colour and lineweight only, and the constructors take plain geometry.
bool Copyable(const fx::dxf::TagList& tags) {
  const std::string_view type = tags.type();
  if (type != "LINE" && type != "CIRCLE" && type != "ARC" && type != "LWPOLYLINE" && type != "TEXT") return false;
  const bool text = type == "TEXT", polyline = type == "LWPOLYLINE";
  for (size_t i = 1; i < tags.size(); ++i) {
    const std::string value(fx::dxf::TrimBlanks(tags[i].value));
    const double number = fx::dxf::ParseDouble(value).value_or(0);
    switch (tags[i].code) {
      // Extended data, dictionaries and reactors, true colour, transparency, plot style, material.
      case 1001: case 102: case 420: case 430: case 440: case 390: case 347: return false;
      case 6: if (fx::dxf::FoldCase(value) != "bylayer") return false; break;
      case 48: if (number != 1) return false; break;
      case 60: if (value != "0") return false; break;
      case 62: if (number < 0) return false; break;
      case 38: case 39: case 43: case 210: case 220: if (number != 0) return false; break;
      case 230: if (number != 1) return false; break;
      case 40: if (polyline && number != 0) return false; break;
      case 41: if ((polyline && number != 0) || (text && number != 1)) return false; break;
      case 51: case 71: case 72: case 73: if (text && number != 0) return false; break;
      case 70: if (polyline && value != "0" && value != "1") return false; break;
      // Plain text only: escapes would be written back another way.
      case 1: if (text && value.find_first_of("\\^%") != std::string::npos) return false; break;
      default: break;
    }
  }
  return true;
}

// A copy of the entity through the API, appended to model space; its handle, or "".
std::string Copy(AcDbObjectId id) {
  AcDbEntityPointer original(id, AcDb::kForRead);
  AcDbEntity* copy = nullptr;
  const std::string type = original->dxfName();
  if (type == "LINE") {
    auto* line = dynamic_cast<AcDbLine*>(original.object());
    copy = new AcDbLine(line->startPoint(), line->endPoint());
  } else if (type == "CIRCLE") {
    auto* circle = dynamic_cast<AcDbCircle*>(original.object());
    copy = new AcDbCircle(circle->center(), circle->normal(), circle->radius());
  } else if (type == "ARC") {
    auto* arc = dynamic_cast<AcDbArc*>(original.object());
    copy = new AcDbArc(arc->center(), arc->radius(), arc->startAngle(), arc->endAngle());
  } else if (type == "LWPOLYLINE") {
    auto* polyline = dynamic_cast<AcDbPolyline*>(original.object());
    auto* made = new AcDbPolyline();
    for (unsigned i = 0; i < polyline->numVerts(); ++i) {
      AcGePoint2d point;
      double bulge = 0;
      polyline->getPointAt(i, point);
      polyline->getBulgeAt(i, bulge);
      made->addVertexAt(i, point, bulge);
    }
    made->setClosed(polyline->isClosed());
    copy = made;
  } else if (type == "TEXT") {
    auto* text = dynamic_cast<AcDbText*>(original.object());
    copy = new AcDbText(text->position(), text->textString().c_str(), text->textStyle(), text->height(),
                        text->rotation());
  } else {
    return {};
  }
  AcDbObjectPointer<AcDbEntity> owned(copy);
  owned->setLayer(original->layer().c_str());
  owned->setColor(original->color());
  owned->setLineWeight(original->lineWeight());
  AcDbObjectPointer<AcDbBlockTableRecord> model(original->blockId(), AcDb::kForWrite);
  AcDbObjectId added;
  if (model->appendAcDbEntity(added, owned.object()) != Acad::eOk) return {};
  owned.close();
  return added.handle().ascii();
}

class OverkillSeededTest : public CleanupTest {
 protected:
  std::set<std::string> Overkill() {
    const std::vector<std::string> before = ModelSpace();
    RunCommands("_-OVERKILL All  Done");
    const std::vector<std::string> after = ModelSpace();
    std::set<std::string> erased(before.begin(), before.end());
    for (const std::string& handle : after) erased.erase(handle);
    return erased;
  }
};

TEST_F(OverkillSeededTest, RemovesExactlyTheCopiesAdded) {
  int drawings = 0;
  for (const char* name : kDrawings) {
    const std::filesystem::path path = fx::testing::CorpusDir() / name;
    if (!std::filesystem::exists(path)) continue;
    SCOPED_TRACE(name);
    ++drawings;
    Open(path.string());
    const std::set<std::string> without_copies = Overkill();
    session_.CloseDrawing();
    Open(path.string());
    // Up to 30 copies, spread over model space.
    const std::vector<std::string> entities = ModelSpace();
    std::set<std::string> copies;
    const size_t step = std::max<size_t>(1, entities.size() / 60);
    for (size_t i = 0; i < entities.size() && copies.size() < 30; i += step) {
      if (!Copyable(RecordTags(entities[i]))) continue;
      AcDbObjectId id;
      ASSERT_EQ(database().getAcDbObjectId(id, false, AcDbHandle(entities[i])), Acad::eOk);
      std::string copy = Copy(id);
      if (!copy.empty()) copies.insert(copy);
    }
    EXPECT_GE(copies.size(), 5u);
    SaveAndReopen();
    std::set<std::string> expected = without_copies;
    expected.insert(copies.begin(), copies.end());
    EXPECT_EQ(Overkill(), expected);
  }
  if (drawings == 0) GTEST_SKIP() << "none of the drawings is in " << fx::testing::CorpusDir();
}

}  // namespace
}  // namespace fx::cleanup_test
