// Changes made through the host API survive a save: another reader
// (python3-ezdxf) audits the saved drawing without errors and sees them, and
// our host reads them back.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <sstream>

#include "host/database.h"
#include "host/dxf/drawing_io.h"
#include "corpus.h"

namespace {

struct EditResult {
  AcDbHandle tag_insert;
  AcDbHandle text_handle;
  AcDbHandle tagged_handle;
  AcDbHandle erased_insert;
};

// Runs the checker script and returns its output lines; fails the test on a non-zero exit.
std::string RunEzdxf(const std::filesystem::path& drawing) {
  std::string command = std::string(FX_SYSTEM_PYTHON) + " " + FX_EZDXF_CHECK + " '" + drawing.string() + "' 2>&1";
  std::string output;
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return output;
  char buffer[4096];
  while (fgets(buffer, sizeof buffer, pipe) != nullptr) output += buffer;
  int status = pclose(pipe);
  EXPECT_EQ(status, 0) << output;
  return output;
}

AcDbObjectId OpenModelSpaceFirst(AcDbDatabase* db, const char* type) {
  AcDbBlockTableRecord* model = nullptr;
  if (acdbOpenObject(model, db->modelSpaceId(), AcDb::kForRead) != Acad::eOk) return {};
  AcDbObjectId found;
  for (AcDbObjectId id : model->entityIds()) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
    bool match = std::string(entity->dxfName()) == type;
    entity->close();
    if (match) {
      found = id;
      break;
    }
  }
  model->close();
  return found;
}

EditResult Edit(AcDbDatabase* db) {
  EditResult result;
  fx::dxf::SetWorkingDatabase(db);
  EXPECT_TRUE(acdbRegApp("VantoryApp"));

  AcDbLayerTable* layers = nullptr;
  EXPECT_EQ(db->getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
  auto* layer = new AcDbLayerTableRecord();
  layer->setName("FX Rooms");
  layer->setColor(AcCmColor::fromIndex(3));
  AcDbObjectId layer_id;
  EXPECT_EQ(layers->add(layer_id, layer), Acad::eOk);
  layer->close();
  layers->close();

  // An insert of the drawing's own, erased (before ours is added).
  if (AcDbObjectId insert = OpenModelSpaceFirst(db, "INSERT"); !insert.isNull()) {
    AcDbEntity* entity = nullptr;
    EXPECT_EQ(acdbOpenObject(entity, insert, AcDb::kForWrite), Acad::eOk);
    result.erased_insert = entity->handle();
    EXPECT_EQ(entity->erase(), Acad::eOk);
    entity->close();
  }
  // A block with an attribute definition, and an insert of it with its attribute.
  AcDbBlockTable* blocks = nullptr;
  EXPECT_EQ(db->getBlockTable(blocks, AcDb::kForWrite), Acad::eOk);
  auto* tag_block = new AcDbBlockTableRecord();
  tag_block->setName("FX_TAG");
  AcDbObjectId tag_block_id;
  EXPECT_EQ(blocks->add(tag_block_id, tag_block), Acad::eOk);
  EXPECT_EQ(tag_block->setOrigin({0, 0, 0}), Acad::eOk);
  AcDbObjectId part_id;
  auto* frame = new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1.5);
  EXPECT_EQ(tag_block->appendAcDbEntity(part_id, frame), Acad::eOk);
  frame->close();
  auto* definition = new AcDbAttributeDefinition(AcGePoint3d(-1, 0, 0), "0.00", "NAME", "Room name", AcDbObjectId(), 0.5);
  EXPECT_EQ(tag_block->appendAcDbEntity(part_id, definition), Acad::eOk);
  definition->close();
  tag_block->close();
  blocks->close();

  AcDbBlockTableRecord* model = nullptr;
  EXPECT_EQ(acdbOpenObject(model, db->modelSpaceId(), AcDb::kForWrite), Acad::eOk);
  auto* tag_insert = new AcDbBlockReference(AcGePoint3d(10, 10, 0), tag_block_id);
  AcDbObjectId tag_insert_id;
  EXPECT_EQ(model->appendAcDbEntity(tag_insert_id, tag_insert), Acad::eOk);
  auto* attribute = new AcDbAttribute();
  attribute->setTag("NAME");
  attribute->setTextString("1.01");
  attribute->setPosition(AcGePoint3d(9, 10, 0));
  attribute->setHeight(0.5);
  AcDbObjectId attribute_id;
  EXPECT_EQ(tag_insert->appendAttribute(attribute_id, attribute), Acad::eOk);
  attribute->close();
  result.tag_insert = tag_insert->handle();
  tag_insert->close();
  auto* text = new AcDbText(AcGePoint3d(1, 2, 0), "Room 1.01 \xC3\xA9", AcDbObjectId(), 2.5, 0);
  AcDbObjectId text_id;
  EXPECT_EQ(model->appendAcDbEntity(text_id, text), Acad::eOk);
  EXPECT_EQ(text->setLayer("FX Rooms"), Acad::eOk);
  const double low[3] = {0, 0, 0}, high[3] = {4, 3, 0};
  ResbufPtr record(acutBuildList(1001, "VantoryApp", 1000, "1.2", 1000, "1.01", 1000, "Office", 1000, "",
                                 1000, "", 1000, "0", 1071, 40000, 1010, low, 1010, high, RTNONE));
  EXPECT_EQ(text->setXData(record.get()), Acad::eOk);
  result.text_handle = text->handle();
  text->close();
  model->close();

  if (AcDbObjectId line = OpenModelSpaceFirst(db, "LINE"); !line.isNull()) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, line, AcDb::kForWrite) == Acad::eOk) {
      EXPECT_EQ(entity->setXData(record.get()), Acad::eOk);
      result.tagged_handle = entity->handle();
      entity->close();
    }
  }

  // Drawings before R13 have no objects section, so no dictionaries.
  if (db->version() <= "AC1009") {
    fx::dxf::SetWorkingDatabase(nullptr);
    return result;
  }
  AcDbDictionary* named = nullptr;
  EXPECT_EQ(db->getNamedObjectsDictionary(named, AcDb::kForWrite), Acad::eOk);
  auto* dictionary = new AcDbDictionary();
  AcDbObjectId dictionary_id;
  EXPECT_EQ(named->setAt("FLOORXPORT_TEST", dictionary, dictionary_id), Acad::eOk);
  auto* xrecord = new AcDbXrecord();
  AcDbObjectId xrecord_id;
  EXPECT_EQ(dictionary->setAt("SERVER", xrecord, xrecord_id), Acad::eOk);
  ResbufPtr data(acutBuildList(1, "https://vantory.example/", 90, 42, RTNONE));
  EXPECT_EQ(xrecord->setFromRbChain(*data), Acad::eOk);
  xrecord->close();
  dictionary->close();
  named->close();
  fx::dxf::SetWorkingDatabase(nullptr);
  return result;
}

}  // namespace

class DatabaseEditTest : public ::testing::TestWithParam<std::string> {};

TEST_P(DatabaseEditTest, EditsSurviveSaveAndReadInAnotherReader) {
  auto path = fx::testing::CorpusDir() / GetParam();
  if (!std::filesystem::exists(path)) GTEST_SKIP() << path << " is absent";
  std::string error;
  auto db = fx::dxf::ReadDrawing(path.string(), &error);
  ASSERT_NE(db, nullptr) << error;
  EditResult edits = Edit(db.get());
  auto out = std::filesystem::path(::testing::TempDir()) / ("edited_" + path.filename().string());
  ASSERT_EQ(db->saveAs(out.string().c_str()), Acad::eOk);

  std::string report = RunEzdxf(out);
  EXPECT_EQ(report.find("error "), std::string::npos) << report;
  EXPECT_NE(report.find("FX Rooms"), std::string::npos) << report;
  EXPECT_NE(report.find("block FX_TAG CIRCLE ATTDEF:NAME"), std::string::npos) << report;
  bool has_objects = db->version() > "AC1009";
  if (has_objects) {
    EXPECT_NE(report.find("xrecord SERVER 1=https://vantory.example/|90=42"), std::string::npos) << report;
  }
  // A drawing that writes no handles gets none for new objects either.
  if (db->handseed().isNull()) {
    EXPECT_NE(report.find(" Room 1.01 \xC3\xA9\n"), std::string::npos) << report;
    EXPECT_NE(report.find(" FX_TAG NAME=1.01\n"), std::string::npos) << report;
    return;
  }
  EXPECT_NE(report.find("text " + edits.text_handle.ascii() + " Room 1.01 \xC3\xA9"), std::string::npos) << report;
  // The checker lists an application's items without its 1001 name.
  EXPECT_NE(report.find("xdata " + edits.text_handle.ascii() +
                        " 1000=1.2|1000=1.01|1000=Office|1000=|1000=|1000=0|1071=40000|"
                        "1010=(0.0, 0.0, 0.0)|1010=(4.0, 3.0, 0.0)"),
            std::string::npos)
      << report;
  EXPECT_NE(report.find("insert " + edits.tag_insert.ascii() + " FX_TAG NAME=1.01"), std::string::npos) << report;

  // And back in our own host, what ezdxf does not show.
  auto again = fx::dxf::ReadDrawing(out.string(), &error);
  ASSERT_NE(again, nullptr) << error;
  if (!edits.erased_insert.isNull()) {
    AcDbObjectId gone;
    EXPECT_EQ(again->getAcDbObjectId(gone, false, edits.erased_insert), Acad::eKeyNotFound);
  }
  AcDbObjectId insert_id;
  ASSERT_EQ(again->getAcDbObjectId(insert_id, false, edits.tag_insert), Acad::eOk);
  AcDbBlockReference* insert = nullptr;
  ASSERT_EQ(acdbOpenObject(insert, insert_id, AcDb::kForRead), Acad::eOk);
  AcDbExtents insert_box;
  EXPECT_EQ(insert->getGeomExtents(insert_box), Acad::eOk);
  EXPECT_NEAR(insert_box.maxPoint().x, 11.5, 1e-9);  // the circle of radius 1.5 around (10, 10)
  insert->close();

  if (!has_objects) return;
  AcDbDictionary* named = nullptr;
  ASSERT_EQ(again->getNamedObjectsDictionary(named), Acad::eOk);
  EXPECT_TRUE(named->has("FLOORXPORT_TEST"));
  named->close();
}

// A UTF-8 drawing whose erased insert has attributes, binary drawings of
// R2004 and of R12 (no objects section), and an R12 drawing without handles.
INSTANTIATE_TEST_SUITE_P(Corpus, DatabaseEditTest,
                         ::testing::Values("ezdxf/multi_insert_with_attribs.dxf", "acadsharp/sample_AC1018_binary.dxf",
                                           "acadsharp/sample_AC1009_binary.dxf", "bcit-comp7082/sw01F3.dxf"));
