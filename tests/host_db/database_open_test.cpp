#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "corpus.h"
#include "host/database.h"
#include "host/dxf/drawing_io.h"
#include "host/dxf/imp_database.h"
#include "program_runner.h"

namespace {

using fx::cli_test::ReadFile;

std::unique_ptr<AcDbDatabase> Load(const std::filesystem::path& path) {
  std::string error;
  auto db = fx::dxf::ReadDrawing(path.string(), &error);
  EXPECT_NE(db, nullptr) << error;
  return db;
}

// Writes a small ASCII drawing from tag pairs.
std::filesystem::path WriteDrawing(const std::string& name, const std::string& body) {
  auto path = std::filesystem::path(::testing::TempDir()) / name;
  std::ofstream(path, std::ios::binary) << body;
  return path;
}

}  // namespace

// Every real drawing loads, every object opens, and a save of the unchanged
// database reproduces the file byte for byte.
TEST(DatabaseCorpusTest, LoadsOpensEveryObjectAndSavesIdentically) {
  auto drawings = fx::testing::CorpusDrawings();
  if (drawings.empty()) GTEST_SKIP() << "no corpus at " << fx::testing::CorpusDir();
  for (const auto& path : drawings) {
    SCOPED_TRACE(path.string());
    auto db = Load(path);
    if (!db) continue;

    AcDbBlockTableRecord* model = nullptr;
    ASSERT_EQ(acdbOpenObject(model, db->modelSpaceId(), AcDb::kForRead), Acad::eOk);
    std::vector<AcDbObjectId> ids = model->entityIds();
    model->close();
    for (AcDbObjectId id : ids) {
      AcDbEntity* entity = nullptr;
      ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), Acad::eOk);
      EXPECT_EQ(entity->blockId(), db->modelSpaceId());
      entity->close();
    }
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(db->getLayerTable(layers), Acad::eOk);
    EXPECT_TRUE(layers->has("0"));
    layers->close();

    auto out = std::filesystem::path(::testing::TempDir()) / "unchanged.dxf";
    std::string error;
    ASSERT_EQ(db->impl()->Save(out.string(), /*stamp_update_time=*/false, &error), Acad::eOk) << error;
    EXPECT_TRUE(ReadFile(out) == ReadFile(path)) << "saved copy differs";
  }
}

TEST(DatabaseOpenTest, EnforcesOpenStatesErasureAndLockedLayers) {
  auto sample = std::filesystem::path(FX_TEST_DATA_DIR) / "dxf" / "locked_layer.dxf";
  auto db = Load(sample);
  ASSERT_NE(db, nullptr);
  AcDbBlockTableRecord* model = nullptr;
  ASSERT_EQ(acdbOpenObject(model, db->modelSpaceId(), AcDb::kForRead), Acad::eOk);
  std::vector<AcDbObjectId> ids = model->entityIds();
  model->close();
  ASSERT_EQ(ids.size(), 2u);  // a line on "Walls", a line on locked "Frozen"
  AcDbObjectId free_line = ids[0], locked_line = ids[1];

  AcDbEntity* reader = nullptr;
  AcDbEntity* other = nullptr;
  ASSERT_EQ(acdbOpenObject(reader, free_line, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(acdbOpenObject(other, free_line, AcDb::kForWrite), Acad::eWasOpenForRead);
  reader->close();
  ASSERT_EQ(acdbOpenObject(reader, free_line, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(acdbOpenObject(other, free_line, AcDb::kForRead), Acad::eWasOpenForWrite);
  EXPECT_EQ(reader->erase(), Acad::eOk);
  reader->close();
  EXPECT_EQ(acdbOpenObject(other, free_line, AcDb::kForRead), Acad::eWasErased);
  EXPECT_EQ(acdbOpenObject(other, locked_line, AcDb::kForWrite), Acad::eOnLockedLayer);
  EXPECT_EQ(acdbOpenObject(other, AcDbObjectId(), AcDb::kForRead), Acad::eNullObjectId);
  AcDbLine* line = nullptr;
  AcDbText* text = nullptr;
  ASSERT_EQ(acdbOpenObject(line, locked_line, AcDb::kForRead), Acad::eOk);
  line->close();
  EXPECT_EQ(acdbOpenObject(text, locked_line, AcDb::kForRead), Acad::eNotThatKindOfClass);
}

TEST(DatabaseOpenTest, DuplicateHandlesFailTheLoadNamingBothLines) {
  auto path = WriteDrawing("duplicate.dxf",
                           "0\nSECTION\n2\nENTITIES\n0\nLINE\n5\n1A\n8\n0\n0\nLINE\n5\n1A\n8\n0\n0\nENDSEC\n0\nEOF\n");
  std::string error;
  EXPECT_EQ(fx::dxf::ReadDrawing(path.string(), &error), nullptr);
  EXPECT_EQ(error, path.string() + ":11: duplicate handle 1A (first used at line 5)");
}

// A handle the drawing does not hold finds nothing, even between two it holds (a room
// record's link to a deleted contour must not land on the next entity).
TEST(DatabaseOpenTest, HandlesNotInTheDrawingFindNothing) {
  auto path = WriteDrawing("gap.dxf",
                           "0\nSECTION\n2\nENTITIES\n0\nLINE\n5\n1A\n8\n0\n0\nLINE\n5\n1C\n8\n0\n0\nENDSEC\n0\nEOF\n");
  auto db = Load(path);
  ASSERT_NE(db, nullptr);
  AcDbObjectId id;
  EXPECT_EQ(db->getAcDbObjectId(id, false, AcDbHandle("1C")), Acad::eOk);
  for (const char* missing : {"1B", "1D", "1"}) {
    EXPECT_NE(db->getAcDbObjectId(id, false, AcDbHandle(missing)), Acad::eOk) << missing;
  }
}

TEST(DatabaseOpenTest, AnErasedLayerGivesItsNameBack) {
  auto db = Load(std::filesystem::path(FX_TEST_DATA_DIR) / "dxf" / "locked_layer.dxf");
  ASSERT_NE(db, nullptr);
  AcDbLayerTable* layers = nullptr;
  ASSERT_EQ(db->getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
  AcDbObjectId walls;
  ASSERT_EQ(layers->getAt("WALLS", walls), Acad::eOk);  // names compare without case
  AcDbLayerTableRecord* layer = nullptr;
  ASSERT_EQ(acdbOpenObject(layer, walls, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(layer->erase(), Acad::eOk);
  AcDbObjectId found;  // until the record is closed, only a search for erased ones finds it
  EXPECT_EQ(layers->getAt("Walls", found), Acad::eKeyNotFound);
  EXPECT_EQ(layers->getAt("Walls", found, true), Acad::eOk);
  layer->close();
  EXPECT_FALSE(layers->has("Walls"));
  auto* again = new AcDbLayerTableRecord();
  again->setName("Walls");
  AcDbObjectId again_id;
  EXPECT_EQ(layers->add(again_id, again), Acad::eOk);
  again->close();
  layers->close();
  EXPECT_NE(again_id, walls);
}

TEST(DatabaseOpenTest, NewEntitiesTakeTheWorkingDatabaseDefaults) {
  auto path = WriteDrawing("defaults.dxf",
                           "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n9\n$CLAYER\n8\nWalls\n9\n$TEXTSIZE\n40\n3.5\n"
                           "0\nENDSEC\n0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n70\n2\n0\nLAYER\n2\n0\n70\n0\n62\n7\n"
                           "0\nLAYER\n2\nWalls\n70\n0\n62\n1\n0\nENDTAB\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n");
  auto db = Load(path);
  ASSERT_NE(db, nullptr);
  fx::dxf::SetWorkingDatabase(db.get());
  AcDbText text(AcGePoint3d(1, 1, 0), "A.01");
  AcDbText sized(AcGePoint3d(1, 1, 0), "A.02", AcDbObjectId(), 1.25);
  fx::dxf::SetWorkingDatabase(nullptr);
  EXPECT_EQ(text.layer(), "Walls");
  EXPECT_EQ(text.height(), 3.5);
  EXPECT_EQ(sized.height(), 1.25);
}

// Some writers put an entity's layer, colour and the other groups every
// entity has after its own subclass marker ("100 AcDbPolyline", then "8"),
// with or without an empty AcDbEntity subclass before it. They are read
// there, and an edit changes them there or adds a missing one beside them.
TEST(DatabaseOpenTest, CommonGroupsAreReadAndWrittenWhereTheEntityKeepsThem) {
  const std::string head =
      "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n9\n$HANDSEED\n5\n2C\n0\nENDSEC\n0\nSECTION\n2\nTABLES\n"
      "0\nTABLE\n2\nLAYER\n70\n2\n0\nLAYER\n2\n0\n70\n0\n62\n7\n0\nLAYER\n2\nRooms\n70\n0\n62\n1\n0\nENDTAB\n0\nENDSEC\n"
      "0\nSECTION\n2\nENTITIES\n";
  const std::string vertices = "90\n2\n70\n1\n10\n0\n20\n0\n10\n1\n20\n1\n";
  const std::string after_empty_marker = "0\nLWPOLYLINE\n5\n2A\n100\nAcDbEntity\n100\nAcDbPolyline\n";
  const std::string without_marker = "0\nLWPOLYLINE\n5\n2B\n100\nAcDbPolyline\n";
  const std::string file = head + after_empty_marker + "8\nRooms\n62\n3\n6\nDASHED\n" + vertices +
                           without_marker + "8\nRooms\n370\n25\n" + vertices + "0\nENDSEC\n0\nEOF\n";
  auto path = WriteDrawing("late_common_groups.dxf", file);
  auto db = Load(path);
  ASSERT_NE(db, nullptr);
  AcDbBlockTableRecord* model = nullptr;
  ASSERT_EQ(acdbOpenObject(model, db->modelSpaceId(), AcDb::kForRead), Acad::eOk);
  const std::vector<AcDbObjectId> ids = model->entityIds();
  model->close();
  ASSERT_EQ(ids.size(), 2u);
  const struct {
    uint16_t color;
    const char* linetype;
    AcDb::LineWeight weight;
  } expected[] = {{3, "DASHED", AcDb::kLnWtByLayer}, {256, "ByLayer", AcDb::kLnWt025}};
  for (size_t i = 0; i < ids.size(); ++i) {
    AcDbEntity* entity = nullptr;
    ASSERT_EQ(acdbOpenObject(entity, ids[i], AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(entity->layer(), "Rooms") << i;
    EXPECT_EQ(entity->colorIndex(), expected[i].color) << i;
    EXPECT_EQ(entity->linetype(), expected[i].linetype) << i;
    EXPECT_EQ(entity->lineWeight(), expected[i].weight) << i;
    EXPECT_EQ(entity->setLayer("0"), Acad::eOk);
    EXPECT_EQ(entity->setColorIndex(static_cast<uint16_t>(4 + i)), Acad::eOk);
    entity->close();
  }
  auto out = std::filesystem::path(::testing::TempDir()) / "late_common_groups_edited.dxf";
  std::string error;
  ASSERT_EQ(db->impl()->Save(out.string(), /*stamp_update_time=*/false, &error), Acad::eOk) << error;
  EXPECT_EQ(ReadFile(out), head + after_empty_marker + "8\n0\n62\n4\n6\nDASHED\n" + vertices +
                                without_marker + "8\n0\n62\n5\n370\n25\n" + vertices + "0\nENDSEC\n0\nEOF\n");
}
