// Every corpus drawing (and the bundled sample) rendered with block
// optimisation on and off, saved, and checked by xmllint and rsvg-convert,
// which must accept it without a word on standard error; and the
// references inside each document resolve.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "console_fixture.h"
#include "host/dxf/drawing_io.h"
#include "svg/render_model_space.h"
#include "svg/svg_save.h"
#include "svg_test_support.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> Drawings() {
  std::vector<fs::path> paths = {fs::path(FX_EXAMPLES_DIR) / "sample-floor.dxf"};
  if (fs::is_directory(FX_CORPUS_DIR)) {
    for (const auto& entry : fs::recursive_directory_iterator(FX_CORPUS_DIR)) {
      std::string extension = entry.path().extension().string();
      for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
      if (entry.is_regular_file() && extension == ".dxf") paths.push_back(entry.path());
    }
  }
  std::sort(paths.begin() + 1, paths.end());
  return paths;
}

// Runs `command` with its standard error into a file; the exit status and
// what it wrote there.
int RunTool(const std::string& command, std::string& err) {
  const fs::path file = fs::path(::testing::TempDir()) / ("svg_corpus_stderr_" + std::to_string(getpid()) + ".txt");
  const int status = std::system((command + " 2> '" + file.string() + "'").c_str());
  std::ifstream in(file);
  std::stringstream text;
  text << in.rdbuf();
  err = text.str();
  fs::remove(file);
  return status;
}

// Every <use> and every url(#...) names an element of the document, and ids are unique.
void ExpectReferencesResolve(const pugi::xml_document& document, const std::string& label) {
  std::set<std::string> ids;
  for (pugi::xpath_node node : document.select_nodes("//*[@id]"))
    EXPECT_TRUE(ids.insert(node.node().attribute("id").value()).second) << label << " " << node.node().attribute("id").value();
  for (pugi::xpath_node node : document.select_nodes("//*[@xlink:href]"))
    EXPECT_EQ(ids.count(std::string(node.node().attribute("xlink:href").value()).substr(1)), 1u) << label;
  for (pugi::xpath_node node : document.select_nodes("//*[@clip-path]")) {
    const std::string url = node.node().attribute("clip-path").value();
    ASSERT_TRUE(url.starts_with("url(#") && url.ends_with(")")) << url;
    EXPECT_EQ(ids.count(url.substr(5, url.size() - 6)), 1u) << label << " " << url;
  }
}

class SvgCorpusTest : public fx::console::ConsoleTest {};

TEST_F(SvgCorpusTest, EveryDrawingRendersToValidSvg) {
  if (!fs::is_directory(FX_CORPUS_DIR)) GTEST_SKIP() << "no corpus at " << FX_CORPUS_DIR;
  const fs::path out = fs::path(::testing::TempDir()) / ("svg_corpus_" + std::to_string(getpid()));
  fs::remove_all(out);
  fs::create_directories(out);
  for (const fs::path& path : Drawings()) {
    SCOPED_TRACE(path.string());
    std::string error;
    std::unique_ptr<AcDbDatabase> db = fx::dxf::ReadDrawing(path.string(), &error);
    ASSERT_NE(db, nullptr) << error;
    fx::svg::Frame frame;
    if (!fx::svg::ModelSpaceExtents(db.get(), frame)) continue;
    for (bool blocks : {true, false}) {
      fx::svg::SvgOptions options;
      options.block_optimization = blocks;
      options.approximate_arc = !blocks;
      options.program_attributes = true;
      options.layer_id = [](AcDbObjectId layer) { return std::optional<long>(static_cast<long>(layer.handle().value())); };
      std::unique_ptr<pugi::xml_document> document = fx::svg_test::Render(*db, frame, options);
      const std::string label = path.parent_path().filename().string() + "_" + path.stem().string() + (blocks ? "" : "_inline");
      EXPECT_TRUE(document->child("svg").child("g").first_child()) << label << ": nothing drawn";
      ExpectReferencesResolve(*document, label);
      const fs::path svg = out / (label + ".svg");
      ASSERT_TRUE(fx::svg::SaveSvg(*document, svg.string(), &error)) << error;
      std::string err;
      EXPECT_EQ(RunTool(std::string("'") + FX_XMLLINT + "' --noout '" + svg.string() + "'", err), 0) << label;
      EXPECT_EQ(err, "") << label;
      const fs::path png = out / (label + ".png");
      EXPECT_EQ(RunTool(std::string("'") + FX_RSVG_CONVERT + "' -w 256 '" + svg.string() + "' -o '" + png.string() + "'", err), 0) << label;
      EXPECT_EQ(err, "") << label;
      EXPECT_GT(fs::file_size(png), 0u) << label;
      fs::remove(svg);
      fs::remove(png);
    }
  }
  fs::remove_all(out);
}

// The compressed form of a real drawing is read back by librsvg too.
TEST_F(SvgCorpusTest, SampleAsSvgzRenders) {
  const fs::path path = fs::path(FX_EXAMPLES_DIR) / "sample-floor.dxf";
  std::string error;
  std::unique_ptr<AcDbDatabase> db = fx::dxf::ReadDrawing(path.string(), &error);
  ASSERT_NE(db, nullptr) << error;
  fx::svg::Frame frame;
  ASSERT_TRUE(fx::svg::ModelSpaceExtents(db.get(), frame));
  fx::svg::SvgOptions options;
  options.draw_box = true;
  std::unique_ptr<pugi::xml_document> document = fx::svg_test::Render(*db, frame, options);
  const fs::path svgz = fs::path(::testing::TempDir()) / "sample-floor.svgz";
  ASSERT_TRUE(fx::svg::SaveSvgz(*document, svgz.string(), &error)) << error;
  std::string err;
  const fs::path png = fs::path(::testing::TempDir()) / "sample-floor-svgz.png";
  EXPECT_EQ(RunTool(std::string("'") + FX_RSVG_CONVERT + "' -w 256 '" + svgz.string() + "' -o '" + png.string() + "'", err), 0);
  EXPECT_EQ(err, "");
  // The frame outline is the last element drawn: a polygon over the view box.
  const pugi::xml_node last = document->child("svg").child("g").last_child();
  EXPECT_STREQ(last.name(), "polygon");
  EXPECT_EQ(fx::svg_test::Numbers(last.attribute("points").value()).size(), 8u);
}

}  // namespace
