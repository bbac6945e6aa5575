// Saving .svg and .svgz whole or not at all, and the .svgz text in a code
// page. (That .svgz is the compressed .svg is checked on real exports by
// tests/export.)
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "gzip_file.h"
#include "program_runner.h"
#include "test_folder.h"
#include "svg/pv_svg_world_draw.h"
#include "svg/render_model_space.h"
#include "svg/svg_document.h"
#include "svg/svg_save.h"

namespace {

namespace fs = std::filesystem;

class SvgSaveTest : public ::testing::Test {
 protected:
  void SetUp() override {
    PvSvgWorldDraw draw(nullptr, {{0, 0}, {10, 10}}, {});
    draw.pushModelTransform(fx::svg::WorldToSvg({{0, 0}, {10, 10}}));
    const AcGePoint3d points[2] = {{1, 1, 0}, {9, 9, 0}};
    draw.polyline(2, points);
    AcGiTextStyle style;
    style.text_size = 1;
    draw.text({1, 5, 0}, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, "caf\xC3\xA9 \xE4\xB8\xAD <&>", true, style);
    // Saved as the export saves it, as text; compared with its tree's text.
    text_ = draw.takeText();
    document_ = text_->Document();
  }
  // The names in the folder: nothing but what a test put there.
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(dir_)) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }

  fx::testing::TestFolder folder_{"svg"};
  const fs::path& dir_ = folder_.path();
  std::unique_ptr<fx::svg::SvgText> text_;
  std::unique_ptr<pugi::xml_document> document_;
};

TEST_F(SvgSaveTest, SvgReplacesTheFileWithTheDocumentText) {
  const fs::path path = dir_ / "plan.svg";
  std::ofstream(path) << "old";
  std::string error;
  ASSERT_TRUE(fx::svg::SaveSvg(*text_, path.string(), &error)) << error;
  EXPECT_EQ(fx::cli_test::ReadFile(path.string()), fx::svg::DocumentText(*document_));
  EXPECT_EQ(Names(), std::vector<std::string>{"plan.svg"});
}

// In a code page the text is the same document: the declaration names the
// page, and a character the page cannot hold is a character reference.
TEST_F(SvgSaveTest, SvgzInACodePageNamesItAndKeepsEveryCharacter) {
  std::string utf8 = fx::svg::DocumentText(*document_);
  const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
  ASSERT_TRUE(utf8.starts_with(declaration));
  utf8.erase(0, declaration.size());
  const auto replaced = [&](std::string text, std::string_view from, std::string_view to) {
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
      text.replace(at, from.size(), to);
    return text;
  };
  const struct {
    unsigned code_page;
    const char* declared;
    const char* e_acute;
    const char* zhong;
  } cases[] = {
      {1252, "windows-1252", "\xE9", "&#x4E2D;"},
      {936, "GBK", "\xA8\xA6", "\xD6\xD0"},
      {949, "EUC-KR", "&#xE9;", "\xF1\xE9"},
      {850, "UTF-8", "\xC3\xA9", "\xE4\xB8\xAD"},  // no XML name readers agree on
  };
  for (const auto& c : cases) {
    const fs::path path = dir_ / ("plan-" + std::to_string(c.code_page) + ".svgz");
    std::string error;
    ASSERT_TRUE(fx::svg::SaveSvgz(*text_, path.string(), &error, c.code_page)) << error;
    EXPECT_EQ(fx::testing::GunzipFile(path.string()),
              "<?xml version=\"1.0\" encoding=\"" + std::string(c.declared) + "\"?>" +
                  replaced(replaced(utf8, "\xC3\xA9", c.e_acute), "\xE4\xB8\xAD", c.zhong))
        << c.code_page;
  }
}

// A missing folder, or a target that cannot be replaced (a folder): the
// error names the path, the target stays as it was, no new file is left.
TEST_F(SvgSaveTest, AFailedSaveWritesNothing) {
  const fs::path blocked = dir_ / "plan.svg";
  fs::create_directories(blocked / "inside");
  for (const fs::path& path : {dir_ / "missing" / "plan.svg", blocked}) {
    std::string error;
    EXPECT_FALSE(fx::svg::SaveSvg(*text_, path.string(), &error));
    EXPECT_NE(error.find(path.string()), std::string::npos) << error;
    EXPECT_FALSE(fx::svg::SaveSvgz(*text_, path.string(), &error));
  }
  EXPECT_TRUE(fs::is_directory(blocked / "inside"));
  EXPECT_EQ(Names(), std::vector<std::string>{"plan.svg"});
}

}  // namespace
