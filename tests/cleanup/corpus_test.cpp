// The clean-up commands on every drawing of the corpus (skipped when it is
// absent), in one pass per drawing: AUDIT, OVERKILL with copies of the
// drawing's own entities added through the host API, PURGE and the
// lineweight shortcut; the drawing saved once, then read back by our host
// and compared with the original by ezdxf.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <sstream>

#include "app/cleanup_commands.h"
#include "cleanup_fixture.h"
#include "command_output.h"
#include "corpus.h"
#include "host/dxf/dxf_values.h"

namespace fx::cleanup_test {
namespace {

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

// A copy of the entity through the API, appended to its block; its handle, or "".
std::string Copy(AcDbObjectId id) {
  AcDbEntityPointer original(id, AcDb::kForRead);
  AcDbEntity* copy = nullptr;
  if (auto* line = dynamic_cast<AcDbLine*>(original.object())) {
    copy = new AcDbLine(line->startPoint(), line->endPoint());
  } else if (auto* arc = dynamic_cast<AcDbArc*>(original.object())) {
    copy = new AcDbArc(arc->center(), arc->radius(), arc->startAngle(), arc->endAngle());
  } else if (auto* circle = dynamic_cast<AcDbCircle*>(original.object())) {
    copy = new AcDbCircle(circle->center(), circle->normal(), circle->radius());
  } else if (auto* polyline = dynamic_cast<AcDbPolyline*>(original.object())) {
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
  } else if (auto* text = dynamic_cast<AcDbText*>(original.object())) {
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
  return added.handle().ascii();
}

class CorpusTest : public CleanupTest {
 protected:
  int AuditErrors() {
    const std::string out = RunCommands("_AUDIT N");
    const size_t at = out.rfind("\n");
    return std::atoi(out.c_str() + out.rfind("\n", at - 1) + 1);
  }

  // Copies of up to 30 entities spread over model space; their handles.
  std::set<std::string> AddCopies() {
    const std::vector<std::string> entities = ModelSpace();
    std::set<std::string> copies;
    const size_t step = std::max<size_t>(1, entities.size() / 60);
    for (size_t i = 0; i < entities.size() && copies.size() < 30; i += step) {
      if (!Copyable(RecordTags(entities[i]))) continue;
      AcDbObjectId id;
      EXPECT_EQ(database().getAcDbObjectId(id, false, AcDbHandle(entities[i])), Acad::eOk);
      if (std::string copy = Copy(id); !copy.empty()) copies.insert(copy);
    }
    return copies;
  }

  // Entities left with a lineweight of their own, where locked layers do not keep it.
  int LineweightsLeft() {
    int left = 0;
    for (AcDbObjectId record :
         AcDbObjectPointer<AcDbBlockTable>(database().blockTableId(), AcDb::kForRead)->recordIds()) {
      for (AcDbObjectId id : AcDbObjectPointer<AcDbBlockTableRecord>(record, AcDb::kForRead)->entityIds()) {
        AcDbEntityPointer entity(id, AcDb::kForRead);
        AcDbObjectPointer<AcDbLayerTableRecord> layer(entity->layerId(), AcDb::kForRead);
        if (entity->lineWeight() != AcDb::kLnWtByLwDefault && !(layer && layer->isLocked())) ++left;
      }
    }
    return left;
  }
};

// ezdxf, many times slower than our host, compares only these: drawings
// where AUDIT repairs, where OVERKILL erases and merges, a binary and an R12 file.
const std::set<std::string> kEzdxfChecked = {
    "acadsharp/sample_AC1018_binary.dxf", "anandkothar-plans/plan.dxf", "cs-proxymix/SanSebastian_building.dxf",
    "ezdxf/multi_insert_with_attribs.dxf", "hal9kspace/floorplan.dxf", "jupedsim/2014_12_19_Einkaufsebene.dxf",
    "libredwg/example_r12.dxf", "openindoor6/plan.dxf", "smhbackends/10.dxf"};

TEST_F(CorpusTest, EveryCommandKeepsWhatIsUsedAndTheResultReadsBackClean) {
  const std::vector<std::filesystem::path> drawings = fx::testing::CorpusDrawings();
  if (drawings.empty()) GTEST_SKIP() << "no corpus drawings in " << fx::testing::CorpusDir();
  AddCommand("SHORTLINEWEIGHT", fx::app::DrawingLineweight);
  std::string pairs;  // for ezdxf: original, result, whether their handles compare
  size_t copies_made = 0, compared = 0;
  for (size_t i = 0; i < drawings.size(); ++i) {
    const std::string name = drawings[i].parent_path().filename().string() + "/" + drawings[i].filename().string();
    SCOPED_TRACE(name);
    Open(drawings[i].string());
    RunCommands("_AUDIT Y");
    EXPECT_EQ(AuditErrors(), 0);
    // OVERKILL erases every copy (the first in drawing order stays); ezdxf
    // checks that whatever else it erased is covered by what it kept.
    const std::set<std::string> copies = AddCopies();
    copies_made += copies.size();
    RunCommands("_-OVERKILL All  Done");
    const std::vector<std::string> kept = ModelSpace();
    for (const std::string& copy : copies) EXPECT_EQ(std::count(kept.begin(), kept.end(), copy), 0) << copy;
    RunCommands("_-PURGE A * N");
    EXPECT_EQ(ModelSpace(), kept);
    RunCommands("SHORTLINEWEIGHT");
    if (imp().has_subclass_markers()) {
      EXPECT_EQ(LineweightsLeft(), 0);
    }
    // Handles made up for a drawing without them are made up anew on reading.
    const fx::dxf::BlockContents* model = imp().BlockOf(imp().model_space());
    const bool real_handles = model != nullptr && !model->entities.empty() && !model->entities.front()->synthetic_handle;
    const std::string saved = TempPath("cleaned" + std::to_string(i) + ".dxf");
    SaveAs(saved);
    session_.CloseDrawing();
    Open(saved);
    const std::vector<std::string> read_back = ModelSpace();
    EXPECT_EQ(read_back.size(), kept.size());
    if (real_handles) {
      EXPECT_EQ(read_back, kept);
    }
    EXPECT_EQ(AuditErrors(), 0);
    EXPECT_NE(RunCommands("_-PURGE A * N").find("\nNo unreferenced objects to purge.\n"), std::string::npos);
    RunCommands("SHORTLINEWEIGHT");
    EXPECT_FALSE(imp().modified());
    if (kEzdxfChecked.count(name) != 0) {
      pairs += " \"" + drawings[i].string() + "\" \"" + saved + "\" " + (real_handles ? "1" : "0");
      ++compared;
    }
  }
  EXPECT_GE(copies_made, 100u);

  if (compared == 0) return;  // none of them in this corpus
  if (!fx::testing::CommandOutput(std::string("\"") + FX_SYSTEM_PYTHON + "\" -c \"import ezdxf\" 2>/dev/null"))
    GTEST_SKIP() << "python3-ezdxf is not available to " << FX_SYSTEM_PYTHON;
  const std::string command = std::string("\"") + FX_SYSTEM_PYTHON + "\" \"" + FX_EZDXF_CHECK + "\"" + pairs;
  const std::optional<std::string> out = fx::testing::CommandOutput(command);
  ASSERT_TRUE(out) << command;
  std::istringstream lines(*out);
  int erased = 0;
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind("check ", 0) != 0 && line.rfind("error ", 0) != 0) continue;
    std::istringstream in(line);
    std::string kind, name;
    int errors_before, errors_after, fixes_before, fixes_after, erased_here = 0, faults = -1;
    in >> kind >> name >> errors_before >> errors_after >> fixes_before >> fixes_after >> erased_here >> faults;
    ASSERT_EQ(kind, "check") << line;
    EXPECT_LE(errors_after, errors_before) << line;
    EXPECT_LE(fixes_after, fixes_before) << line;
    EXPECT_EQ(faults, 0) << line;
    erased += erased_here;
    --compared;
  }
  EXPECT_EQ(compared, 0u);
  EXPECT_GE(erased, 100);  // the coverage check had work to do
}

}  // namespace
}  // namespace fx::cleanup_test
