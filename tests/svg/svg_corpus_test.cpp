// Every corpus drawing and the bundled sample, each loaded once and rendered
// with block optimisation on and off: something is drawn and every
// reference in the document resolves. The inline rendering (blocks drawn
// out, arcs approximated) is saved and read by xmllint without a word. The
// rendering with blocks is what floorxport export writes as .svg, which
// export_program_tests puts through xmllint and rsvg-convert; rendering the
// inline one too would only draw the same texts and simpler elements.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "console_fixture.h"
#include "corpus.h"
#include "external_checkers.h"
#include "host/dxf/drawing_io.h"
#include "test_folder.h"
#include "svg/render_model_space.h"
#include "svg/svg_save.h"
#include "svg_test_support.h"

namespace {

namespace fs = std::filesystem;

// Ids are unique, and every <use> and url(#...) names one of them.
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
  std::vector<fs::path> drawings = fx::testing::CorpusDrawings();
  if (drawings.empty()) GTEST_SKIP() << "no corpus at " << fx::testing::CorpusDir();
  drawings.insert(drawings.begin(), fs::path(FX_EXAMPLES_DIR) / "sample-floor.dxf");
  const fx::testing::TestFolder folder("svg");
  const fs::path& out = folder.path();
  for (const fs::path& path : drawings) {
    const std::string label = path.parent_path().filename().string() + "/" + path.filename().string();
    std::string error;
    std::unique_ptr<AcDbDatabase> db = fx::dxf::ReadDrawing(path.string(), &error);
    ASSERT_NE(db, nullptr) << label << ": " << error;
    fx::svg::Frame frame;
    if (!fx::svg::ModelSpaceExtents(db.get(), frame)) continue;
    for (bool blocks : {true, false}) {
      fx::svg::SvgOptions options;
      options.block_optimization = blocks;
      options.approximate_arc = !blocks;
      options.program_attributes = true;
      options.layer_id = [](AcDbObjectId layer) { return std::optional<long>(static_cast<long>(layer.handle().value())); };
      std::unique_ptr<pugi::xml_document> document = fx::svg_test::Render(*db, frame, options);
      EXPECT_TRUE(document->child("svg").child("g").first_child()) << label << ": nothing drawn";
      ExpectReferencesResolve(*document, label);
      if (blocks) continue;
      const std::string svg = (out / "inline.svg").string();
      ASSERT_TRUE(fx::svg::SaveSvg(*document, svg, &error)) << error;
      fx::testing::ExpectXmllintAccepts({svg}, out.string(), label);
    }
  }
}

}  // namespace
