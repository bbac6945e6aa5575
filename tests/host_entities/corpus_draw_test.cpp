// End-to-end: every model-space entity of every corpus drawing draws
// through the recording sink without leaving a transform pushed, and what
// it draws (text aside) lies within its extents.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "entity_test_support.h"
#include "host/dxf/drawing_io.h"
#include "host/dxf/entity_support.h"

namespace {

std::filesystem::path CorpusDir() {
  const char* env = std::getenv("FX_CORPUS_DIR");
  return env != nullptr && *env != '\0' ? std::filesystem::path(env) : std::filesystem::path(FX_CORPUS_DIR);
}

std::vector<std::string> CorpusDrawings() {
  std::vector<std::string> drawings;
  std::error_code error;
  if (!std::filesystem::is_directory(CorpusDir(), error)) return drawings;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(CorpusDir(), error)) {
    if (entry.is_regular_file() && entry.path().extension() == ".dxf")
      drawings.push_back(std::filesystem::relative(entry.path(), CorpusDir()).string());
  }
  std::sort(drawings.begin(), drawings.end());
  return drawings;
}

double Size(const AcDbExtents& box) { return box.minPoint().distanceTo(box.maxPoint()); }

bool Contains(const AcDbExtents& outer, const AcDbExtents& inner, double slack) {
  const AcGePoint3d &a = outer.minPoint(), &b = outer.maxPoint(), &c = inner.minPoint(), &d = inner.maxPoint();
  return c.x >= a.x - slack && c.y >= a.y - slack && c.z >= a.z - slack && d.x <= b.x + slack &&
         d.y <= b.y + slack && d.z <= b.z + slack;
}

class CorpusDrawTest : public ::testing::TestWithParam<std::string> {};

TEST_P(CorpusDrawTest, DrawingStaysWithinExtents) {
  std::string error;
  std::unique_ptr<AcDbDatabase> db = fx::dxf::ReadDrawing((CorpusDir() / GetParam()).string(), &error);
  ASSERT_NE(db, nullptr) << error;
  std::vector<std::string> warnings;
  fx::dxf::SetDrawWarningHandler([&](const std::string& message) { warnings.push_back(message); });
  size_t drawn = 0, primitives = 0;
  for (AcDbObjectId id : fx::testing::ModelSpaceIds(*db)) {
    AcDbEntityPointer entity(id, AcDb::kForRead);
    ASSERT_EQ(entity.openStatus(), Acad::eOk);
    AcDbExtents extents;
    bool has_extents = entity->getGeomExtents(extents) == Acad::eOk;
    fx::testing::RecordingDraw draw;
    draw.set_deviation(has_extents ? std::max(Size(extents), 1e-6) * 1e-4 : 1e-3);
    EXPECT_TRUE(entity->worldDraw(&draw));
    EXPECT_EQ(draw.depth(), 0u) << entity->dxfName() << " " << id.handle().ascii();
    ++drawn;
    primitives += draw.primitives().size();
    AcDbExtents box = fx::testing::BoxOfDrawing(draw);
    if (box.isEmpty()) continue;
    ASSERT_TRUE(has_extents) << entity->dxfName() << " " << id.handle().ascii() << " draws but has no extents";
    EXPECT_TRUE(Contains(extents, box, 1e-6 * std::max(Size(extents), 1e-9)))
        << entity->dxfName() << " " << id.handle().ascii();
  }
  fx::dxf::SetDrawWarningHandler(nullptr);
  std::cout << GetParam() << ": " << drawn << " entities drew " << primitives << " primitives, " << warnings.size()
            << " warnings" << (warnings.empty() ? "" : ", first: " + warnings.front()) << "\n";
}

std::string TestName(const ::testing::TestParamInfo<std::string>& info) {
  std::string name = info.param;
  for (char& c : name)
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  return name;
}

INSTANTIATE_TEST_SUITE_P(Corpus, CorpusDrawTest, ::testing::ValuesIn(CorpusDrawings()), TestName);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(CorpusDrawTest);

}  // namespace
