// The v1 XML and the floor document of tests/data/export/floor.dxf, exported
// through vantoryexport: every element and attribute in order with its
// number format, the floor questions and warnings, the layer table and its
// `empty` flags, the two matrices and the units.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "export/document_file.h"
#include "export/exporter.h"
#include "export/floor_checks.h"
#include "export/floor_document.h"
#include "export/floor_source.h"
#include "export_fixture.h"
#include "host/database.h"
#include "rooms/room_record.h"
#include "settings/known_settings.h"
#include "settings/settings.h"
#include "settings/settings_key.h"

namespace fx::export_test {
namespace {

namespace s = fx::settings;

const char kFloorV1[] =
    R"(<?xml version="1.0" encoding="UTF-8"?><FLOOR xmlns="http://www.vantory.example/planvault/2010" AREA="200.0000">)"
    R"(<point x="0.0000" y="0.0000"/><point x="20.0000" y="0.0000"/><point x="20.0000" y="10.0000"/><point x="0.0000" y="10.0000"/>)"
    R"(<ROOMS><ROOM NUMBER="A1" SQINCH="6.000000"><point x="1.0000" y="1.0000"/><point x="5.0000" y="1.0000"/><point x="1.0000" y="4.0000"/></ROOM>)"
    R"(<ROOM NUMBER="B2" SQINCH="10.828125"><point x="6.1250" y="1.5000"/><point x="10.0625" y="1.5000"/><point x="10.0625" y="4.2500"/><point x="6.1250" y="4.2500"/></ROOM>)"
    R"(<ROOM NUMBER="C3" SQINCH="0.000000"/>)"
    R"(<ROOM NUMBER="D4" SQINCH="0.000000"><point x="3.0000" y="7.0000"/><point x="3.0000" y="7.0000"/><point x="3.0000" y="7.0000"/></ROOM>)"
    R"(<ROOM NUMBER="E5" SQINCH="16.000000"><point x="12.0000" y="1.0000"/><point x="16.0000" y="1.0000"/><point x="16.0000" y="5.0000"/><point x="12.0000" y="5.0000"/></ROOM>)"
    R"(<ROOM NUMBER="F6" SQINCH="1.500000"><point x="-3.0000" y="-2.0000"/><point x="-1.0000" y="-2.0000"/><point x="-1.0000" y="-0.5000"/></ROOM>)"
    R"(</ROOMS></FLOOR>)";

// The document up to the embedded SVG, for a drawing at `name`.
std::string FloorDocumentHead(const std::string& name) {
  return R"(<?xml version="1.0" encoding="UTF-8"?><file xmlns="http://www.vantory.example/planvault/2010" name=")" + name +
         R"(" version="1.6" defaultUnits="meters">)"
         R"(<floor area="200.0000" path="[0.0000,0.0000],[20.0000,0.0000],[20.0000,10.0000],[0.0000,10.0000]"/><rooms>)"
         R"(<room name="A1" type="Office" description="Corner &amp; &quot;quoted&quot; &lt;room>" comment="first" area="6.000000" path="[1.0000,1.0000],[5.0000,1.0000],[1.0000,4.0000]" textPosition="3.000000,2.500000"/>)"
         R"(<room name="B2" type="Meeting" description="" comment="" area="10.828125" path="[6.1250,1.5000],[10.0625,1.5000],[10.0625,4.2500],[6.1250,4.2500]" textPosition="8.093750,2.875000"/>)"
         R"(<room name="C3" type="Store" description="no contour" comment="" area="0.000000" path="" textPosition=""/>)"
         R"(<room name="D4" type="" description="" comment="" area="0.000000" path="[3.0000,7.0000],[3.0000,7.0000],[3.0000,7.0000]" textPosition=""/>)"
         R"(<room name="E5" type="Lab" description="" comment="" area="16.000000" path="[12.0000,1.0000],[16.0000,1.0000],[16.0000,5.0000],[12.0000,5.0000]" textPosition="14.000000,3.000000"/>)"
         R"(<room name="F6" type="Shed" description="" comment="" area="1.500000" path="[-3.0000,-2.0000],[-1.0000,-2.0000],[-1.0000,-0.5000]" textPosition="-2.000000,-1.250000"/>)"
         R"(</rooms><layouts><layout name="MODELSPACE"><layers>)"
         R"(<layer id="1" name="0" visible="true" color="FFFFFF" lw="0.01mm" empty="true"/>)"
         R"(<layer id="2" name="Defpoints" visible="true" color="FFFFFF" lw="0.01mm" empty="true"/>)"
         R"(<layer id="3" name="Floor" visible="true" color="808080" lw="0.25mm" empty="false"/>)"
         R"(<layer id="4" name="Contours" visible="true" color="00FF00" lw="0.01mm" empty="false"/>)"
         R"(<layer id="5" name="Names" visible="true" color="FF0000" lw="0.01mm" empty="false"/>)"
         R"(<layer id="6" name="Walls" visible="true" color="123456" lw="2.11mm" empty="false"/>)"
         R"(<layer id="7" name="Thin" visible="true" color="FFFFFF" lw="0.01mm" empty="false"/>)"
         R"(<layer id="8" name="Off" visible="false" color="0000FF" lw="0.13mm" empty="true"/>)"
         R"(<layer id="9" name="Frozen" visible="true" color="FF00FF" lw="0.5mm" empty="true"/>)"
         R"(<layer id="10" name="Unused" visible="true" color="FFFF00" lw="0.3mm" empty="true"/>)"
         R"(<layer id="11" name="Frame" visible="true" color="00FFFF" lw="0.01mm" empty="false"/>)"
         R"(<layer id="12" name="PointOnly" visible="true" color="00FFFF" lw="0.01mm" empty="false"/>)"
         R"(</layers><matrix type="A2SVG" a="1" b="0" c="0" d="-1" e="3" f="11"/><matrix type="SVG2A" a="1" b="0" c="0" d="-1" e="-3" f="11"/>)"
         R"(</layout></layouts><svg xmlns="http://www.w3.org/2000/svg" xmlns:ss="http://www.vantory.example/planvault/2010")"
         R"( xmlns:xlink="http://www.w3.org/1999/xlink" viewBox="0 0 24 13" version="1.1")";
}

class FloorWritersTest : public ExportTest {
 protected:
  // vantoryexport with `path` and `keyword`; returns the transcript.
  std::string Export(const std::string& path, const std::string& keyword) {
    return RunScript("_vantoryexport\n" + path + "\n" + keyword);
  }
  std::string ExportText(const std::string& keyword) {
    const std::string path = Path("out." + keyword);
    Export(path, keyword);
    return ReadFile(path);
  }
  // Makes the floor outline a triangle of area `area`.
  void SetFloorArea(double area) {
    AcDbObjectPointer<AcDbPolyline> floor(RecordNamed(fx::rooms::kFloorOutlineName), AcDb::kForWrite);
    ASSERT_EQ(floor.openStatus(), Acad::eOk);
    ASSERT_EQ(floor->removeVertexAt(3), Acad::eOk);
    ASSERT_EQ(floor->setPointAt(1, {1, 0}), Acad::eOk);
    ASSERT_EQ(floor->setPointAt(2, {0, 2 * area}), Acad::eOk);
  }
  void RemoveRecord(const std::string& name) {
    ASSERT_EQ(fx::rooms::RemoveRoomRecord(RecordNamed(name)), Acad::eOk) << name;
  }
};

std::vector<std::string> AttributeNames(const pugi::xml_node& node) {
  std::vector<std::string> names;
  for (pugi::xml_attribute attribute : node.attributes()) names.push_back(attribute.name());
  return names;
}

// The layers marked empty, each checked: exactly those whose id no element
// of the SVG carries as ss:lid.
size_t EmptyLayersOf(const pugi::xml_document& document) {
  struct Walker : pugi::xml_tree_walker {
    std::set<std::string> ids;
    bool for_each(pugi::xml_node& node) override {
      if (pugi::xml_attribute lid = node.attribute("ss:lid")) ids.insert(lid.value());
      return true;
    }
  } walker;
  document.child("file").child("svg").traverse(walker);
  size_t empty = 0;
  for (const pugi::xpath_node& found : document.select_nodes("/file/layouts/layout/layers/layer")) {
    const bool has = walker.ids.count(found.node().attribute("id").value()) != 0;
    EXPECT_STREQ(found.node().attribute("empty").value(), has ? "false" : "true") << found.node().attribute("name").value();
    empty += has ? 0 : 1;
  }
  return empty;
}

TEST_F(FloorWritersTest, TheV1FileListsFloorAndRoomsInOrderWithTheirFormats) {
  Open();
  const std::string transcript = Export(Path("floor.xml"), "xml");
  EXPECT_EQ(transcript, "\nCommand: _vantoryexport\nEnter Export File Path: " + Path("floor.xml") +
                            "\nEnter Export File Format: xml\nPlanVault: Exported " + Path("floor.xml") + "\n");
  EXPECT_EQ(ReadFile(Path("floor.xml")), kFloorV1);
}

// Texts from the drawing pass through one cleaning function (its cases are
// in tests/svg): whatever a record holds, both floor files stay well formed.
TEST_F(FloorWritersTest, SaveAllAttributesAddsTypeDescriptionAndCommentInThatOrder) {
  for (bool save_all : {false, true}) {
    s::SetSettingInt(s::kSaveAllAttributes, save_all ? 1 : 0, s::kSectionExportOptions);
    Open();
    const AcDbObjectId id = RecordNamed("A1");
    fx::rooms::RoomRecord record;
    ASSERT_TRUE(fx::rooms::ReadRoomRecord(id, &record));
    record.name = record.category = record.description = record.comment = "a\x01<&>\"'\tb\r\n\xff\xEF\xBF\xBE";
    ASSERT_EQ(fx::rooms::SetXData(id, record), Acad::eOk);
    const std::string v1 = ExportText("xml");
    // Escaped as the XML library escapes attributes: the files stay the same byte for byte.
    EXPECT_NE(v1.find(R"(<ROOM NUMBER="a&lt;&amp;>&quot;' b  )" "\xEF\xBF\xBD\xEF\xBF\xBD" R"(" SQINCH="6.000000")"),
              std::string::npos);
    std::unique_ptr<pugi::xml_document> document = Parse(v1);
    const std::vector<std::string> expected =
        save_all ? std::vector<std::string>{"NUMBER", "SQINCH", "TYPE", "DESCRIPTION", "COMMENT"}
                 : std::vector<std::string>{"NUMBER", "SQINCH"};
    size_t rooms = 0;
    for (pugi::xml_node room : document->child("FLOOR").child("ROOMS").children("ROOM")) {
      EXPECT_EQ(AttributeNames(room), expected) << room.attribute("NUMBER").value();
      ++rooms;
    }
    EXPECT_EQ(rooms, 6u);
    const char* cleaned = "a<&>\"' b  \xEF\xBF\xBD\xEF\xBF\xBD";
    for (const pugi::xml_attribute value : document->child("FLOOR").child("ROOMS").first_child().attributes()) {
      EXPECT_STREQ(value.value(), std::string_view(value.name()) == "SQINCH" ? "6.000000" : cleaned) << value.name();
    }
    const std::unique_ptr<pugi::xml_document> floor = Parse(ExportText("planvault"));
    const pugi::xml_node element = floor->child("file").child("rooms").first_child();
    for (const char* name : {"name", "type", "description", "comment"}) EXPECT_STREQ(element.attribute(name).value(), cleaned);
  }
}

// The rooms of an analysis come in its order, each taken from the records
// model space holds before the floor's or read on its own: an id listed
// twice is there twice, an entity without a record is left out.
TEST_F(FloorWritersTest, TheAnalysedRoomsComeInTheirListOrder) {
  Open();
  AcDbDatabase& database = *acdbHostApplicationServices()->workingDatabase();
  // The floor's record moves to a line after all the rooms' records.
  fx::rooms::RoomRecord floor_record;
  ASSERT_TRUE(fx::rooms::ReadRoomRecord(RecordNamed(fx::rooms::kFloorOutlineName), &floor_record));
  RemoveRecord(fx::rooms::kFloorOutlineName);
  AcDbObjectId last;
  {
    AcDbObjectPointer<AcDbBlockTableRecord> model(database.modelSpaceId(), AcDb::kForWrite);
    AcDbObjectPointer<AcDbLine> line(new AcDbLine({0, 0, 0}, {1, 1, 0}));
    ASSERT_EQ(model->appendAcDbEntity(last, line.object()), Acad::eOk);
  }
  ASSERT_EQ(fx::rooms::SetXData(last, floor_record), Acad::eOk);
  fx::rooms::RoomRecord a1;
  ASSERT_TRUE(fx::rooms::ReadRoomRecord(RecordNamed("A1"), &a1));
  const std::vector<AcDbObjectId> ids = {RecordNamed("F6"), RecordNamed("A1"), a1.linked, RecordNamed("C3"),
                                         RecordNamed("A1")};
  fx::exports::FloorData floor;
  ASSERT_EQ(fx::exports::ReadFloor(database, &ids, floor), Acad::eOk);
  EXPECT_EQ(floor.floor_id, last);
  std::vector<std::string> names;
  for (const fx::exports::FloorRoom& room : floor.rooms) {
    names.push_back(room.record.name);
    EXPECT_EQ(room.id, RecordNamed(room.record.name));
  }
  EXPECT_EQ(names, (std::vector<std::string>{"F6", "A1", "C3", "A1"}));
  EXPECT_EQ(floor.rooms[1].record.category, a1.category);
  EXPECT_EQ(floor.rooms[3].record.category, a1.category);
}

// An area of at most 1e-6 is zero: the question comes, and No writes nothing.
TEST_F(FloorWritersTest, AFloorAreaOfAtMostOneMillionthIsZero) {
  const struct {
    double area;
    bool zero;
  } kCases[] = {{0.000001, true}, {0.000002, false}};
  for (const auto& c : kCases) {
    for (const char* keyword : {"xml", "planvault", "drawing"}) {
      Open();
      SetFloorArea(c.area);
      const std::string path = Path(std::string("zero.") + keyword);
      std::filesystem::remove(path);
      const std::string transcript = Export(path, keyword);
      const bool asked = transcript.find("\n[Warning] Floor Area is zero.\nDo you want to continue? [Yes/No] -> No") !=
                         std::string::npos;
      EXPECT_EQ(asked, c.zero) << c.area << " " << keyword << transcript;
      EXPECT_EQ(std::filesystem::exists(path), !c.zero) << c.area << " " << keyword;
    }
  }
  EXPECT_TRUE(fx::exports::IsZeroArea(-0.000001));
  EXPECT_FALSE(fx::exports::IsZeroArea(-0.0000011));
}

// Strict callers (the send workflow) get warnings that stop the export.
TEST_F(FloorWritersTest, StrictModeWarnsAndStopsWithoutAsking) {
  Open();
  SetFloorArea(0);
  for (int code : {0, 1, 3}) {
    const size_t before = terminal_.out.size();
    fx::exports::Exporter().Export(code, Path("strict.out"), 1);
    EXPECT_EQ(terminal_.out.substr(before), "\n[Warning] Floor Area is zero. [OK] -> OK") << code;
    EXPECT_FALSE(fx::exports::Exporter().history().back().written);
  }
  RemoveRecord(fx::rooms::kFloorOutlineName);
  const size_t before = terminal_.out.size();
  fx::exports::Exporter().Export(1, Path("strict.out"), 1);
  EXPECT_EQ(terminal_.out.substr(before), "\n[Warning] No Floor Area Found. [OK] -> OK");
  EXPECT_FALSE(std::filesystem::exists(Path("strict.out")));
}

// Yes to the floor questions: a zero area is written as it is, a missing
// floor leaves the floor empty. (No writes nothing: export_program_test.)
TEST_F(FloorWritersTest, YesToTheFloorQuestionsWritesTheFloorAsItIs) {
  Open(FloorDrawing(), Answers({"Floor Area is zero.\\nDo you want to continue?=Yes",
                                "No Floor Area Polyline Found.\\nDo you want to continue?=Yes"}));
  SetFloorArea(0.0000005);
  const std::unique_ptr<pugi::xml_document> zero = Parse(ExportText("xml"));
  EXPECT_STREQ(zero->child("FLOOR").attribute("AREA").value(), "0.0000");
  EXPECT_EQ(zero->child("FLOOR").select_nodes("point").size(), 3u);
  RemoveRecord(fx::rooms::kFloorOutlineName);
  std::unique_ptr<pugi::xml_document> v1 = Parse(ExportText("xml"));
  const pugi::xml_node floor = v1->child("FLOOR");
  EXPECT_EQ(AttributeNames(floor), (std::vector<std::string>{"xmlns", "AREA"}));
  EXPECT_STREQ(floor.attribute("AREA").value(), "");
  EXPECT_FALSE(floor.child("point"));
  EXPECT_EQ(floor.child("ROOMS").select_nodes("ROOM").size(), 6u);
  std::unique_ptr<pugi::xml_document> document = Parse(ExportText("planvault"));
  const pugi::xml_node floor_element = document->child("file").child("floor");
  EXPECT_EQ(AttributeNames(floor_element), (std::vector<std::string>{"area", "path"}));
  EXPECT_STREQ(floor_element.attribute("area").value(), "");
  EXPECT_STREQ(floor_element.attribute("path").value(), "");
}

TEST_F(FloorWritersTest, TheFloorDocumentHasFloorRoomsLayersMatricesAndTheSvgInOrder) {
  Open();
  const std::string text = ExportText("planvault");
  const std::string head = FloorDocumentHead(FloorDrawing());
  EXPECT_EQ(text.substr(0, head.size()), head);
  std::unique_ptr<pugi::xml_document> document = Parse(text);
  std::vector<std::string> children;
  for (pugi::xml_node child : document->child("file").children()) children.push_back(child.name());
  EXPECT_EQ(children, (std::vector<std::string>{"floor", "rooms", "layouts", "svg"}));
  EXPECT_EQ(text.substr(text.size() - 13), "</svg></file>");
}

// (Every name of the units is in floor_values_test.)
TEST_F(FloorWritersTest, UnitsAreNamedButCoordinatesAreNotScaled) {
  Open();
  ASSERT_EQ(db().setInsunits(AcDb::kUnitsFeet), Acad::eOk);
  std::unique_ptr<pugi::xml_document> document = Parse(ExportText("planvault"));
  EXPECT_STREQ(document->child("file").attribute("defaultUnits").value(), "feet");
  EXPECT_STREQ(document->child("file").child("floor").attribute("path").value(),
               "[0.0000,0.0000],[20.0000,0.0000],[20.0000,10.0000],[0.0000,10.0000]");
}

// "Drawing Position" and the frame it gives: the matrices, the view box and
// the layers left empty (all 12 in the active view, where nothing lies).
TEST_F(FloorWritersTest, DrawingPositionChoosesTheFrame) {
  const struct {
    int position;
    const char* layer;
    const char* a2svg;
    const char* svg2a;
    const char* view_box;
    size_t empty;
  } kCases[] = {
      {0, "", "1 0 0 -1 3 11", "1 0 0 -1 -3 11", "0 0 24 13", 5},
      {2, "Frame", "1 0 0 -1 1 11", "1 0 0 -1 -1 11", "0 0 22 12", 5},  // the point before it is skipped
      {2, "PointOnly", "1 0 0 -1 -30 35", "1 0 0 -1 30 35", "0 0 40 20", 12},
      {2, "NoSuchLayer", "1 0 0 -1 -30 35", "1 0 0 -1 30 35", "0 0 40 20", 12},
      {2, "", "1 0 0 -1 -30 35", "1 0 0 -1 30 35", "0 0 40 20", 12},
      {1, "Frame", "1 0 0 -1 -30 35", "1 0 0 -1 30 35", "0 0 40 20", 12},
      {7, "", "1 0 0 -1 -30 35", "1 0 0 -1 30 35", "0 0 40 20", 12},
  };
  for (const auto& c : kCases) {
    s::SetSettingInt(s::kDrawingPosition, c.position, s::kSectionExportOptions);
    s::SetSettingString(s::kViewboxPolyExtLayer, c.layer, s::kSectionExportOptions);
    Open();
    std::unique_ptr<pugi::xml_document> document = Parse(ExportText("planvault"));
    for (const auto& [type, expected] : {std::pair{"A2SVG", c.a2svg}, std::pair{"SVG2A", c.svg2a}}) {
      const pugi::xml_node matrix =
          document->select_node((std::string("//matrix[@type='") + type + "']").c_str()).node();
      EXPECT_EQ(AttributeNames(matrix), (std::vector<std::string>{"type", "a", "b", "c", "d", "e", "f"}));
      std::string coefficients;
      for (const char* name : {"a", "b", "c", "d", "e", "f"}) {
        coefficients += (coefficients.empty() ? "" : " ") + std::string(matrix.attribute(name).value());
      }
      EXPECT_EQ(coefficients, expected) << c.position << " " << c.layer << " " << type;
    }
    EXPECT_STREQ(document->child("file").child("svg").attribute("viewBox").value(), c.view_box);
    EXPECT_EQ(EmptyLayersOf(*document), c.empty) << c.position << " " << c.layer;
  }
}

// The matrices as SVG reads them: x' = a x + c y + e, y' = b x + d y + f.
TEST(FloorDocumentTest, MatricesAreWrittenColumnByColumn) {
  const fx::exports::FloorData floor;
  const std::vector<fx::exports::LayerEntry> layers;
  fx::exports::DriverResult drawing;
  AcGeMatrix3d& m = drawing.world_to_svg;  // a quarter turn: x' = -y, y' = x
  m(0, 0) = m(1, 1) = 0;
  m(0, 1) = -1;
  m(1, 0) = 1;
  pugi::xml_document document;
  fx::exports::BuildFloorDocument({"plan.dxf", 0, &floor, &layers, &drawing}, document);
  const pugi::xml_node matrix = document.select_node("//matrix[@type='A2SVG']").node();
  std::string coefficients;
  for (const char* name : {"a", "b", "c", "d"}) coefficients += std::string(matrix.attribute(name).value()) + " ";
  EXPECT_EQ(coefficients, "0 1 -1 0 ");
}

// Position 1 needs the active view: without it nothing is written, and the
// failing step is named.
TEST_F(FloorWritersTest, ADrawingWithoutActiveViewportFailsInPositionOne) {
  s::SetSettingInt(s::kDrawingPosition, 1, s::kSectionExportOptions);
  const struct {
    const char* drawing;
    const char* message;
  } kCases[] = {
      {"no_view.dxf", "\npDb->getViewportTable(pViewPortTable, AcDb::kForRead) = eKeyNotFound"},
      {"no_active.dxf", "\npViewPortTable->getAt(_T(\"*ACTIVE\"), idViewport) = eKeyNotFound"},
  };
  for (const auto& c : kCases) {
    Open(std::string(FX_EXPORT_TEST_DATA) + "/" + c.drawing,
         Answers({"No Floor Area Polyline Found.\\nDo you want to continue?=Yes"}));
    for (const char* keyword : {"svg", "svgz", "planvault", "drawing"}) {
      const std::string path = Path(std::string("none.") + keyword);
      const std::string transcript = Export(path, keyword);
      EXPECT_NE(transcript.find(c.message), std::string::npos) << transcript;
      EXPECT_EQ(transcript.find("Exported"), std::string::npos) << transcript;
      EXPECT_FALSE(std::filesystem::exists(path)) << c.drawing << " " << keyword;
    }
  }
}

// Position 0 frames the extents and needs no view; a drawing without
// tables has an empty layer table.
TEST_F(FloorWritersTest, ADrawingWithoutTablesExportsByItsExtents) {
  Open(std::string(FX_EXPORT_TEST_DATA) + "/no_view.dxf",
       Answers({"No Floor Area Polyline Found.\\nDo you want to continue?=Yes"}));
  EXPECT_STREQ(Parse(ExportText("svg"))->child("svg").attribute("viewBox").value(), "0 0 10 5");
  const std::string document = ExportText("planvault");
  EXPECT_NE(document.find(R"(<layouts><layout name="MODELSPACE"><layers/><matrix type="A2SVG" a="1" b="0" c="0" d="-1" e="0" f="5"/>)"),
            std::string::npos)
      << document.substr(0, 800);
}

// The view's centre (10, 5) is in a display system turned by 90 degrees
// about the target (100, 50): its 40 by 20 corners land 20 wide and 40
// high, from (95, 20) to (115, 60) in the world.
TEST_F(FloorWritersTest, TheActiveViewIsConvertedFromDisplayToWorldCoordinates) {
  s::SetSettingInt(s::kDrawingPosition, 1, s::kSectionExportOptions);
  Open(std::string(FX_EXPORT_TEST_DATA) + "/twisted_view.dxf",
       Answers({"No Floor Area Polyline Found.\\nDo you want to continue?=Yes"}));
  std::unique_ptr<pugi::xml_document> svg = Parse(ExportText("svg"));
  EXPECT_STREQ(svg->child("svg").attribute("viewBox").value(), "0 0 20 40");
  // The rectangle from (90, 30) to (120, 50), from the frame's top left.
  EXPECT_STREQ(svg->child("svg").child("g").first_child().attribute("points").value(), "-5,30 25,30 25,10 -5,10");
}

// "Draw Box" draws the frame's outline last; the plain SVG formats carry
// no program attributes, the floor documents do.
TEST_F(FloorWritersTest, DrawBoxAndProgramAttributes) {
  s::SetSettingInt(s::kDrawBox, 1, s::kSectionExportOptions);
  Open();
  const std::string svg = ExportText("svg");
  const std::unique_ptr<pugi::xml_document> document = Parse(svg);
  const pugi::xml_node last = document->child("svg").child("g").last_child();
  EXPECT_STREQ(last.name(), "polygon");
  EXPECT_STREQ(last.attribute("points").value(), "0,13 0,0 24,0 24,13");
  EXPECT_EQ(svg.find("ss:lid="), std::string::npos);
  EXPECT_NE(ExportText("planvault").find("ss:lid="), std::string::npos);
}

}  // namespace
}  // namespace fx::export_test
