#include "app_test_support.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

#include "host/database.h"
#include "host/dxf/drawing_io.h"
#include "host/resbuf.h"
#include "rooms/doc_data.h"

namespace fx::app_test {

// Two blanks of indent per level; the plug-in's menu before the host's last one.
const char kPlanVaultMenuTree[] =
    "&View\n"
    "  Zoom &Extents  \"_ZOOM _E \"\n"
    "&PlanVault\n"
    "  Ab&out  \"vantoryShowAbout \"\n"
    "  ----\n"
    "  &Settings  \"vantoryexpdlg \"\n"
    "  &Export  \"vantoryExportToFile \"\n"
    "  Analy&ze rooms  \"vantorconvertdlg \"\n"
    "  &Utils\n"
    "    &Shortcuts\n"
    "      &Overkill  \"_-Overkill All \\n\\n\"\n"
    "      &Audit  \"vantoryDrawingAudit \"\n"
    "      &Purge  \"vantoryDrawingPurge \"\n"
    "      ----\n"
    "      &Units  \"_UNITS \"\n"
    "      &Extents  \"vantoryDrawingExtents \"\n"
    "      ----\n"
    "      &Lineweight  \"vantoryDrawingLineweight \"\n"
    "  ----\n"
    "  &Room List  \"vantoryroomlistdlg \"\n"
    "  &Open from Vantory  \"vantoryOpenFrom \"\n"
    "  ----\n"
    "  Sen&d to Vantory  \"vantorySendTo \"\n"
    "  ----\n"
    "  &Update Vantory Attributes  \"vantoryUpdateVantoryData \"\n"
    "&Format\n"
    "  &Units  \"_UNITS \"\n";

std::string SampleFloor() { return std::string(FX_EXAMPLES_DIR) + "/sample-floor.dxf"; }
std::string SmallPlan() { return std::string(FX_CONSOLE_TEST_DATA) + "/small_plan.dxf"; }

namespace {

// The save stamped the drawing with the time of the save; a test that saves
// it again within the same millisecond would find it unchanged. Its last
// update goes back to the sample floor's own date, 2024-01-01.
bool BackdateLastUpdate(const std::string& path) {
  std::string text;
  {
    std::ifstream in(path, std::ios::binary);
    text.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  const std::string key = "$TDUUPDATE\n 40\n";
  const size_t at = text.find(key);
  EXPECT_NE(at, std::string::npos) << path;
  if (at == std::string::npos) return false;
  const size_t value = at + key.size();
  text.replace(value, text.find('\n', value) - value, "2460310.5");
  std::ofstream(path, std::ios::binary) << text;
  return true;
}

}  // namespace

bool WriteLinkedDrawing(const std::string& source, const std::string& target) {
  std::string error;
  std::unique_ptr<AcDbDatabase> db = fx::dxf::ReadDrawing(source, &error);
  EXPECT_NE(db, nullptr) << error;
  if (db == nullptr) return false;
  fx::dxf::SetWorkingDatabase(db.get());
  AcDbDictionary* named = nullptr;
  bool ok = db->getNamedObjectsDictionary(named, AcDb::kForWrite) == Acad::eOk;
  EXPECT_TRUE(ok) << source;
  if (ok) {
    auto* dictionary = new AcDbDictionary();
    AcDbObjectId id;
    ok = named->setAt(fx::rooms::kServerDictionary, dictionary, id) == Acad::eOk;
    auto* xrecord = new AcDbXrecord();
    ok = ok && dictionary->setAt(fx::rooms::kServerDataEntry, xrecord, id) == Acad::eOk;
    ResbufPtr data(acutBuildList(1, "1.0", 90, 7, 90, 12, 1, "https://vantory.example/", RTNONE));
    ok = ok && xrecord->setFromRbChain(*data) == Acad::eOk;
    xrecord->close();
    dictionary->close();
    named->close();
  }
  ok = ok && db->saveAs(target.c_str()) == Acad::eOk;
  fx::dxf::SetWorkingDatabase(nullptr);
  EXPECT_TRUE(ok) << target;
  return ok && BackdateLastUpdate(target);
}

}  // namespace fx::app_test
