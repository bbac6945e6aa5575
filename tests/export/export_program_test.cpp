// floorxport export, the real program: the bundled sample analysed and
// exported in every format, its questions and exit status, wrong usage; and
// every corpus drawing exported (the .drawing of constructiq/building.dxf,
// above 600 KB, draws the warning), each file well formed for xmllint, each
// .svg rendered by rsvg-convert without a word, its references resolved and
// its text the one pugixml writes for it.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "corpus.h"
#include "export_fixture.h"
#include "external_checkers.h"
#include "program_runner.h"
#include "svg/svg_document.h"

namespace fx::export_test {
namespace {

namespace fs = std::filesystem;
using fx::cli_test::ProgramResult;
using fx::cli_test::RunProgram;

const std::vector<std::string> kFormats = {"xml", "planvault", "drawing", "svg", "svgz"};

const std::vector<std::string> kSampleAnalysis = {
    "--floor-layer", "FloorArea", "--contour-layer", "RoomContours", "--block", "ROOMTAG",
    "--name-tag", "NAME", "--category-tag", "CATEGORY", "--description-tag", "DESCRIPTION"};

// Ids are unique, and every <use> and url(#...) names one of them.
void ExpectReferencesResolve(const std::string& svg, const std::string& label) {
  const std::unique_ptr<pugi::xml_document> document = Parse(ReadFile(svg));
  std::set<std::string> ids;
  for (pugi::xpath_node node : document->select_nodes("//*[@id]"))
    EXPECT_TRUE(ids.insert(node.node().attribute("id").value()).second) << label << " " << node.node().attribute("id").value();
  for (pugi::xpath_node node : document->select_nodes("//*[@xlink:href]"))
    EXPECT_EQ(ids.count(std::string(node.node().attribute("xlink:href").value()).substr(1)), 1u) << label;
  for (pugi::xpath_node node : document->select_nodes("//*[@clip-path]")) {
    const std::string url = node.node().attribute("clip-path").value();
    EXPECT_TRUE(url.starts_with("url(#") && url.ends_with(")") && ids.count(url.substr(5, url.size() - 6)) == 1)
        << label << " " << url;
  }
}

// The .svg is written as text while it is rendered: it must be the text
// pugixml writes for the tree it reads back, byte for byte.
void ExpectTreeWritesTheSameText(const std::string& svg, const std::string& label) {
  const std::string text = ReadFile(svg);
  pugi::xml_document document;
  ASSERT_TRUE(document.load_buffer(text.data(), text.size(),
                                   pugi::parse_escapes | pugi::parse_declaration | pugi::parse_ws_pcdata))
      << label;
  EXPECT_TRUE(fx::svg::DocumentText(document) == text) << label;
}

class ExportProgramTest : public ::testing::Test {
 protected:

  ProgramResult Floorxport(std::vector<std::string> args) {
    args.insert(args.begin(), {"--settings", dir_ + "/settings.reg"});
    return RunProgram(FX_FLOORXPORT, args, dir_);
  }
  // Analyses `drawing` into `analysed`; the program's result.
  ProgramResult Analyze(const std::string& drawing, const std::string& analysed, std::vector<std::string> args) {
    args.insert(args.begin(), {"analyze", drawing});
    args.insert(args.end(), {"-o", analysed});
    return Floorxport(args);
  }
  // Exports `drawing` to BASE.FORMAT for each of `formats` in one run.
  ProgramResult ExportAll(const std::string& drawing, const std::string& base, const std::vector<std::string>& formats,
                          const std::vector<std::string>& extra = {}) {
    std::vector<std::string> args = {"export", drawing};
    for (const std::string& format : formats) args.push_back(base + "." + format);
    args.insert(args.end(), extra.begin(), extra.end());
    return Floorxport(args);
  }
  // xmllint reads each file of `formats` (gzip too), rsvg-convert renders
  // the .svg (the .svgz is its text in a code page, which xmllint reads).
  void ExpectValid(const std::string& base, const std::vector<std::string>& formats, const std::string& label) {
    std::vector<std::string> files;
    for (const std::string& format : formats) files.push_back(base + "." + format);
    fx::testing::ExpectXmllintAccepts(files, dir_, label);
    fx::testing::ExpectRsvgRenders(base + ".svg", dir_, label);
    ExpectReferencesResolve(base + ".svg", label);
    ExpectTreeWritesTheSameText(base + ".svg", label);
  }

  fx::testing::TestFolder folder_{"export"};
  std::string dir_ = folder_.path().string();
};

TEST_F(ExportProgramTest, TheAnalysedSampleExportsInEveryFormat) {
  const fx::cli_test::ScopedEnvironmentVariable locale("LC_ALL", "en_US.UTF-8");
  const std::string analysed = dir_ + "/sample.dxf";
  ASSERT_EQ(Analyze(SampleFloor(), analysed, kSampleAnalysis).exit_status, 0);
  const ProgramResult result = ExportAll(analysed, dir_ + "/sample", kFormats);
  EXPECT_EQ(result.exit_status, 0) << result.err;
  EXPECT_EQ(result.err, "");
  // The zoom that frames each export runs with CMDECHO 0: no prompt of it shows.
  EXPECT_EQ(result.out.find("Zoom"), std::string::npos) << result.out;
  EXPECT_EQ(result.out.find("_ZOOM"), std::string::npos) << result.out;
  const size_t summary = result.out.find("\n\nExports:\n");
  ASSERT_NE(summary, std::string::npos) << result.out;
  std::istringstream lines(result.out.substr(summary + 11));
  for (const std::string& format : kFormats) {
    std::string line;
    std::getline(lines, line);
    const std::string start = "  " + format + std::string(11 - format.size(), ' ') + dir_ + "/sample." + format + " (";
    EXPECT_EQ(line.substr(0, start.size()), start) << line;
    EXPECT_TRUE(line.ends_with(" bytes)")) << line;
  }
  ExpectValid(dir_ + "/sample", kFormats, "sample");
  fx::testing::ExpectRsvgRenders(dir_ + "/sample.svgz", dir_, "sample");
  EXPECT_EQ(GunzipFile(dir_ + "/sample.drawing"), ReadFile(dir_ + "/sample.planvault"));
  // Byte 8 of the gzip header: 2 for the best compression ("wb9"), 0 for level 6 ("wb6f").
  EXPECT_EQ(ReadFile(dir_ + "/sample.drawing")[8], 2);
  EXPECT_EQ(ReadFile(dir_ + "/sample.svgz")[8], 0);
  // 24 rooms with their outlines.
  std::unique_ptr<pugi::xml_document> v1 = Parse(ReadFile(dir_ + "/sample.xml"));
  EXPECT_EQ(v1->select_nodes("/FLOOR/ROOMS/ROOM[point]").size(), 24u);
  std::unique_ptr<pugi::xml_document> document = Parse(ReadFile(dir_ + "/sample.planvault"));
  EXPECT_EQ(document->select_nodes("/file/rooms/room[@path != '' and @textPosition != '']").size(), 24u);
  // The .svgz text is in the code page of the locale, here Windows-1252; the
  // sample's texts are ASCII, so only the declaration differs.
  const std::string svg = ReadFile(dir_ + "/sample.svg");
  const std::string utf8 = R"(<?xml version="1.0" encoding="UTF-8"?>)";
  ASSERT_TRUE(svg.starts_with(utf8));
  EXPECT_EQ(GunzipFile(dir_ + "/sample.svgz"),
            R"(<?xml version="1.0" encoding="windows-1252"?>)" + svg.substr(utf8.size()));
}

// The format comes from the extension, in any letter case, or from
// --format for every OUT.
TEST_F(ExportProgramTest, AFloorQuestionAnsweredNoFailsTheRunButNotTheOtherFiles) {
  const ProgramResult result = Floorxport({"export", SampleFloor(), dir_ + "/plain.SvgZ", dir_ + "/plain.xml"});
  EXPECT_EQ(result.exit_status, 1);
  EXPECT_NE(result.out.find("\n[Warning] No Floor Area Polyline Found.\nDo you want to continue? [Yes/No] -> No "
                            "(default)"),
            std::string::npos)
      << result.out;
  EXPECT_NE(result.out.find("\n  xml        " + dir_ + "/plain.xml: not written"), std::string::npos);
  EXPECT_TRUE(GunzipFile(dir_ + "/plain.SvgZ").starts_with("<?xml"));
  EXPECT_FALSE(fs::exists(dir_ + "/plain.xml"));
  EXPECT_TRUE(result.err.starts_with("floorxport: 1 export was not written (see the transcript)\n")) << result.err;
  // Yes goes on: the rooms of an unanalysed drawing are those its records name (none).
  const ProgramResult yes = Floorxport({"export", SampleFloor(), dir_ + "/plain.xml", "--yes"});
  EXPECT_EQ(yes.exit_status, 0) << yes.err;
  EXPECT_EQ(ReadFile(dir_ + "/plain.xml"),
            R"(<?xml version="1.0" encoding="UTF-8"?><FLOOR xmlns="http://www.vantory.example/planvault/2010" AREA=""><ROOMS/></FLOOR>)");
  const ProgramResult format = Floorxport({"export", SampleFloor(), dir_ + "/a.SVG", dir_ + "/b.data", "--format", "svgz"});
  EXPECT_EQ(format.exit_status, 0) << format.err;
  EXPECT_TRUE(GunzipFile(dir_ + "/a.SVG").starts_with("<?xml"));
  EXPECT_TRUE(GunzipFile(dir_ + "/b.data").starts_with("<?xml"));
}

TEST_F(ExportProgramTest, WrongUsageSaysWhat) {
  const std::string out = dir_ + "/x";
  const struct {
    std::vector<std::string> args;
    std::string error;
  } kCases[] = {
      {{"export", "plan.dxf", out + ".pdf"}, "cannot tell the format of \"" + out + ".pdf\" from its extension; give --format"},
      {{"export", "plan.dxf", out + ".xml", "--format", "XML"}, "unknown --format \"XML\" (xml, planvault, drawing, svg or svgz)"},
      {{"export", "plan.dxf", "a\"b.svg"},
       "\"a\"b.svg\" cannot be typed to the export command (empty, longer than 259 characters, or holding a quote or line break)"},
  };
  for (const auto& c : kCases) {
    const ProgramResult result = Floorxport(c.args);
    EXPECT_EQ(result.exit_status, 2) << c.error;
    EXPECT_EQ(result.err, "floorxport: " + c.error + "\nRun \"floorxport export --help\" for usage.\n");
  }
}

// The analysis summary's values in order, "/" between them.
std::string SummaryValues(const std::string& out) {
  std::istringstream lines(out.substr(out.rfind("\n\nRoom analysis:") + 17));
  std::string values;
  for (std::string line; std::getline(lines, line);) values += (values.empty() ? "" : "/") + line.substr(35);
  return values;
}

// Real floors by others (../shared/corpus, SOURCES.md): those with room
// contours analysed first with the layers a user would choose, and what the
// analysis finds; the others exported as they are (--yes to the missing
// floor). Every file is checked; none is kept. The .planvault is left out:
// the .drawing is the same text compressed (checked on the sample).
TEST_F(ExportProgramTest, CorpusDrawingsAnalyseAndExportInEveryFormat) {
  const std::vector<fs::path> drawings = fx::testing::CorpusDrawings();
  if (drawings.empty()) GTEST_SKIP() << "no corpus at " << fx::testing::CorpusDir();
  const auto text = [](const std::string& floor, const std::string& contours, const std::string& names,
                       const std::string& types, const std::string& descriptions) {
    return std::vector<std::string>{"--floor-layer", floor, "--contour-layer", contours, "--name-layer", names,
                                    "--type-layer", types, "--description-layer", descriptions, "--yes"};
  };
  const std::map<std::string, std::pair<std::vector<std::string>, std::string>> analyses = {
      {"vre-spark/cad_033O.dxf",
       {text("0", "A_Z20___E_RAUM", "A_Z21___T_RAUMTEXT", "A_Z21___T_RAUMTEXT", "A_Z21___T_RAUMTEXT"),
        "none/126/372/124/0/77/0/2/248"}},
      // Its labels are centred in their columns; three columns reach well past
      // their room's wall (C004 out of any room, D006 and D008 into the next).
      {"openindoor6/plan.dxf",
       {text("ABY_Contour_Facade", "ABY_Zone_ZIND", "Texte_Pièces", "Texte_Pièces", "Texte_Pièces"),
        "handle 211/60/107/58/46/0/0/2/3"}},
      {"pms-app/building001-0_floor3.dxf",
       {text("AREA-GROSS", "AREA-ASSIGN", "A-IDEN-RNUM", "Rooms-Information", "AREA-TEXT"),
        "handle 408E/26/26/26/0/0/0/0/0"}},
      {"daoshi/floor1.dxf", {text("建筑面积线", "使用面积线", "文字", "管理人员", "管理人员"), "handle 59F8/43/42/40/2/2/0/3/0"}},
      {"daoshi/floor3.dxf", {text("建筑面积线", "使用面积线", "文字", "管理人员", "管理人员"), "handle 2C67/43/42/40/2/2/0/3/0"}},
      {"daoshi/floor5.dxf", {text("建筑面积线", "使用面积线", "文字", "管理人员", "管理人员"), "handle 35CC/61/62/59/3/2/0/2/0"}},
      {"anandkothar-plans/plan.dxf",
       {text("0", "Room - Kitchen", "2270pga00$0$A010t - Gen Text", "2270pga00$0$A010t - Gen Text",
             "2270pga00$0$A010t - Gen Text"),
        "handle 2E577/1/15/1/13/0/0/0/1"}},
      {"smhbackends/10.dxf", {text("Boundary", "BedRoom1", "BedRoom1", "BedRoom1", "BedRoom1"), "none/2/3/1/0/0/0/1/2"}},
      {"cs-proxymix/MediaLab_ML_3_L.dxf", {text("0", "Offices", "0", "0", "0"), "none/29/0/0/0/0/0/29/0"}},
      {"cs-proxymix/Standard_Factory_Plan.dxf",
       {text("00_Walls", "00_Offices", "01_Legends", "01_Legends", "01_Legends"),
        "handle 101A82E/54/87/19/49/25/0/35/19"}},
      {"wentcad/WATT_0a_PARTER.dxf",
       {{"--floor-layer", "OBRYS_ZEWN", "--contour-layer", "ROOM", "--block", "2da_pok06c_zs1fkav", "--name-tag", "NR",
         "--category-tag", "NAME", "--description-tag", "FLOOR_MAT"},
        "handle 139/1/1/1/0/0/0/0/0"}},
  };
  const std::vector<std::string> formats = {"xml", "drawing", "svg", "svgz"};
  size_t analysed_count = 0;
  for (const fs::path& drawing : drawings) {
    const std::string name = fs::relative(drawing, fx::testing::CorpusDir()).string();
    std::string input = drawing.string();
    std::string summary;
    if (const auto it = analyses.find(name); it != analyses.end()) {
      input = dir_ + "/analysed.dxf";
      const ProgramResult analysis = Analyze(drawing.string(), input, it->second.first);
      ASSERT_EQ(analysis.exit_status, 0) << name << analysis.err;
      summary = SummaryValues(analysis.out);
      EXPECT_EQ(summary, it->second.second) << name;
      ++analysed_count;
    }
    const ProgramResult result = ExportAll(input, dir_ + "/corpus", formats, {"--yes"});
    EXPECT_EQ(result.exit_status, 0) << name << "\n" << result.err;
    ExpectValid(dir_ + "/corpus", formats, name);
    EXPECT_EQ(result.out.find(".Drawing file is over 600kb") != std::string::npos,
              fs::file_size(dir_ + "/corpus.drawing") > 614400)
        << name;
    if (!summary.empty()) {
      // An analysed floor has its outline where the analysis found one.
      std::unique_ptr<pugi::xml_document> v1 = Parse(ReadFile(dir_ + "/corpus.xml"));
      EXPECT_EQ(std::string(v1->child("FLOOR").attribute("AREA").value()).empty(), summary.starts_with("none/"))
          << name;
    }
    for (const std::string& format : formats) fs::remove(dir_ + "/corpus." + format);
  }
  EXPECT_EQ(analysed_count, analyses.size());
}

}  // namespace
}  // namespace fx::export_test
