// End-to-end on the real drawings of the corpus, each loaded once: every
// model-space entity opens and draws within its extents, leaving no
// transform pushed. On kEzdxfDrawings the extents are also compared with
// ezdxf's (ezdxf_extents.py), handle by handle, within 1e-6 of the entity's
// size; where ezdxf's box is off (it measures Bezier approximations of arcs),
// its box of points on the true curves decides. Text is not compared: ezdxf
// measures it with fonts, the host by its width rule.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "command_output.h"
#include "corpus.h"
#include "entity_test_support.h"
#include "host/dxf/drawing_io.h"
#include "host/dxf/entity_support.h"

namespace {

constexpr double kRelative = 1e-6;

// ezdxf takes seconds on a large drawing, so it measures these alone:
// between them every entity type the host measures, binary and ASCII, R12 to
// R2018, bulged polylines, fitted splines, hatches with every edge type,
// rotated, mirrored, nested and tilted inserts.
const std::set<std::string> kEzdxfDrawings = {
    "acadsharp/sample_AC1009_binary.dxf", "acadsharp/sample_AC1018_binary.dxf", "constructiq/house_plan.dxf",
    "cs-proxymix/SanSebastian_building.dxf", "ezdxf/hatches_2.dxf",          "ezdxf/uncommon.dxf",
    "hal9kspace/floorplan.dxf",
};

// A line of the script's output: a handle, a type (or a flattening
// distance), and a box (minimum then maximum corner) unless not measured.
struct Record {
  std::string handle, word;
  bool has_box = false;
  double box[6] = {};
};

// Runs the script; false when it could not run (no python3 or no ezdxf).
bool RunScript(const std::string& arguments, std::vector<Record>& records) {
  std::string command = std::string(FX_SYSTEM_PYTHON) + " " + FX_EZDXF_EXTENTS + " " + arguments + " 2>/dev/null";
  const std::optional<std::string> output = fx::testing::CommandOutput(command);
  if (!output) return false;
  std::istringstream lines(*output);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream in(line);
    Record& record = records.emplace_back();
    in >> record.handle >> record.word;
    record.has_box = static_cast<bool>(in >> record.box[0] >> record.box[1] >> record.box[2] >> record.box[3] >>
                                       record.box[4] >> record.box[5]);
  }
  return true;
}

double Size(const AcDbExtents& box) { return box.minPoint().distanceTo(box.maxPoint()); }
double Size(const double (&box)[6]) { return std::hypot(box[3] - box[0], box[4] - box[1], box[5] - box[2]); }

bool Contains(const AcDbExtents& outer, const AcDbExtents& inner, double slack) {
  const AcGePoint3d &a = outer.minPoint(), &b = outer.maxPoint(), &c = inner.minPoint(), &d = inner.maxPoint();
  return c.x >= a.x - slack && c.y >= a.y - slack && c.z >= a.z - slack && d.x <= b.x + slack &&
         d.y <= b.y + slack && d.z <= b.z + slack;
}

// The largest coordinate difference of two boxes relative to the size of
// the reference (a point's "size" is 1e-9 of its distance from the origin).
double RelativeDifference(const double (&ours)[6], const double (&reference)[6]) {
  double scale = Size(reference);
  for (double v : reference) scale = std::max(scale, std::abs(v) * 1e-9);
  scale = std::max(scale, 1e-300);
  double worst = 0;
  for (int i = 0; i < 6; ++i) worst = std::max(worst, std::abs(ours[i] - reference[i]) / scale);
  return worst;
}

// Whether `ours` contains the box of points on the true curves and exceeds
// it by at most the flattening distance (plus the comparison tolerance).
bool AgreesWithFineBox(const double (&ours)[6], const Record& fine) {
  const double slack = kRelative * std::max(Size(fine.box), 1e-9), distance = std::stod(fine.word);
  for (int i = 0; i < 3; ++i) {
    if (ours[i] > fine.box[i] + slack || ours[i] < fine.box[i] - distance - slack) return false;
    if (ours[i + 3] < fine.box[i + 3] - slack || ours[i + 3] > fine.box[i + 3] + distance + slack) return false;
  }
  return true;
}

std::string Describe(const double (&box)[6]) {
  char text[256];
  std::snprintf(text, sizeof text, "(%.9g %.9g %.9g)-(%.9g %.9g %.9g)", box[0], box[1], box[2], box[3], box[4],
                box[5]);
  return text;
}

// The extents of the model-space entities of `db`, read from `path`,
// against ezdxf's, paired by handle.
void CompareWithEzdxf(AcDbDatabase& db, const std::string& path) {
  std::vector<Record> records;
  if (!RunScript("'" + path + "'", records)) GTEST_SKIP() << "ezdxf is not available to " << FX_SYSTEM_PYTHON;
  struct Difference {
    const Record* record;
    double ours[6];
  };
  std::vector<Difference> differences;
  size_t compared = 0;
  for (const Record& record : records) {
    if (!record.has_box) continue;
    AcDbObjectId id;
    ASSERT_EQ(db.getAcDbObjectId(id, false, AcDbHandle(record.handle)), Acad::eOk) << record.handle;
    AcDbEntityPointer entity(id, AcDb::kForRead);
    ASSERT_EQ(entity.openStatus(), Acad::eOk) << record.handle;
    AcDbExtents extents;
    ASSERT_EQ(entity->getGeomExtents(extents), Acad::eOk) << record.word << " " << record.handle;
    const AcGePoint3d &lo = extents.minPoint(), &hi = extents.maxPoint();
    const Difference difference{&record, {lo.x, lo.y, lo.z, hi.x, hi.y, hi.z}};
    ++compared;
    if (RelativeDifference(difference.ours, record.box) > kRelative) differences.push_back(difference);
  }

  // The differing entities, measured again on ezdxf's true curves.
  std::string handles;
  for (const Difference& d : differences) handles += " " + d.record->handle;
  std::vector<Record> fine;
  if (!differences.empty()) {
    ASSERT_TRUE(RunScript("'" + path + "'" + handles, fine));
  }
  ASSERT_EQ(fine.size(), differences.size());
  for (size_t i = 0; i < differences.size(); ++i) {
    const Difference& d = differences[i];
    ASSERT_TRUE(fine[i].has_box) << d.record->handle;
    EXPECT_TRUE(AgreesWithFineBox(d.ours, fine[i]))
        << d.record->word << " " << d.record->handle << ": host " << Describe(d.ours) << ", ezdxf "
        << Describe(d.record->box) << ", on true curves " << Describe(fine[i].box);
  }
  std::cout << "  ezdxf: " << compared << " extents compared, " << differences.size() << " beyond " << kRelative
            << " checked on true curves\n";
}

class CorpusTest : public ::testing::TestWithParam<std::string> {};

TEST_P(CorpusTest, EntitiesDrawWithinTheirExtents) {
  const std::string path = (fx::testing::CorpusDir() / GetParam()).string();
  std::string error;
  std::unique_ptr<AcDbDatabase> db = fx::dxf::ReadDrawing(path, &error);
  ASSERT_NE(db, nullptr) << error;
  std::vector<std::string> warnings;
  fx::dxf::SetDrawWarningHandler([&](const std::string& message) { warnings.push_back(message); });
  const std::vector<AcDbObjectId> ids = fx::testing::ModelSpaceIds(*db);
  size_t primitives = 0;
  for (AcDbObjectId id : ids) {
    AcDbEntityPointer entity(id, AcDb::kForRead);
    ASSERT_EQ(entity.openStatus(), Acad::eOk);
    AcDbExtents extents;
    const bool has_extents = entity->getGeomExtents(extents) == Acad::eOk;
    fx::testing::RecordingDraw draw;
    draw.set_deviation(has_extents ? std::max(Size(extents), 1e-6) * 1e-4 : 1e-3);
    EXPECT_TRUE(entity->worldDraw(&draw));
    EXPECT_EQ(draw.depth(), 0u) << entity->dxfName() << " " << id.handle().ascii();
    primitives += draw.primitives().size();
    const AcDbExtents box = fx::testing::BoxOfDrawing(draw);
    if (box.isEmpty()) continue;
    ASSERT_TRUE(has_extents) << entity->dxfName() << " " << id.handle().ascii() << " draws but has no extents";
    EXPECT_TRUE(Contains(extents, box, 1e-6 * std::max(Size(extents), 1e-9)))
        << entity->dxfName() << " " << id.handle().ascii();
  }
  fx::dxf::SetDrawWarningHandler(nullptr);
  std::cout << GetParam() << ": " << ids.size() << " entities drew " << primitives << " primitives, "
            << warnings.size() << " warnings" << (warnings.empty() ? "" : ", first: " + warnings.front()) << "\n";
  if (kEzdxfDrawings.count(GetParam()) != 0) CompareWithEzdxf(*db, path);
}

// Every drawing of the corpus, relative to it (none when it is absent).
std::vector<std::string> Drawings() {
  std::vector<std::string> drawings;
  for (const std::filesystem::path& path : fx::testing::CorpusDrawings())
    drawings.push_back(std::filesystem::relative(path, fx::testing::CorpusDir()).string());
  return drawings;
}

std::string TestName(const ::testing::TestParamInfo<std::string>& info) {
  std::string name = info.param;
  for (char& c : name)
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  return name;
}

INSTANTIATE_TEST_SUITE_P(Corpus, CorpusTest, ::testing::ValuesIn(Drawings()), TestName);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(CorpusTest);

}  // namespace
