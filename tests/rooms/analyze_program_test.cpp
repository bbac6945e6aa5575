// floorxport analyze, the real program: both modes on the bundled sample,
// the records it saves as another DXF reader (ezdxf) reads them, usage
// errors. (The corpus floors are analysed before their export, in
// tests/export.)
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "program_runner.h"
#include "rooms_fixture.h"

namespace fx::rooms_test {
namespace {

using fx::cli_test::ProgramResult;
using fx::cli_test::RunProgram;

std::string Summary(const std::string& floor, int contours, int identifiers, int rooms, int not_found,
                    int duplicates, int intersected, int empty, int multiple) {
  std::ostringstream out;
  out << "\n\nRoom analysis:"
      << "\n  Floor outline:                   " << floor
      << "\n  Room contours:                   " << contours
      << "\n  Room identifiers:                " << identifiers
      << "\n  Rooms identified:                " << rooms
      << "\n  Area not found:                  " << not_found
      << "\n  Duplicate numbers:               " << duplicates
      << "\n  Intersected contours:            " << intersected
      << "\n  Contours without identifiers:    " << empty
      << "\n  Rooms with multiple identifiers: " << multiple << "\n";
  return out.str();
}

const std::vector<std::string> kSampleBlock = {"--floor-layer", "FloorArea", "--contour-layer", "RoomContours",
                                               "--block", "ROOMTAG", "--name-tag", "NAME",
                                               "--category-tag", "CATEGORY", "--description-tag", "DESCRIPTION"};
const std::vector<std::string> kSampleText = {"--floor-layer", "FloorArea", "--contour-layer", "RoomContours",
                                              "--name-layer", "RoomNames", "--type-layer", "RoomTypes",
                                              "--description-layer", "RoomDescriptions"};

class AnalyzeProgramTest : public ::testing::Test {
 protected:
  // floorxport with its own settings file, then "analyze DRAWING" and `args`.
  ProgramResult Analyze(const std::string& drawing, std::vector<std::string> args) {
    args.insert(args.begin(), {"--settings", dir_ + "/settings.reg", "analyze", drawing});
    return RunProgram(FX_FLOORXPORT, args, dir_);
  }

  fx::testing::TestFolder scratch_{"rooms"};
  const std::string dir_ = scratch_.path().string();
};

// Both modes, the block mode answering the command as the dialog would.
TEST_F(AnalyzeProgramTest, BothModesIdentifyEveryRoomOfTheSample) {
  std::vector<std::string> removing = kSampleBlock;
  removing.push_back("--remove-inserts");
  const std::vector<std::string>& block = removing;
  for (const auto* args : {&block, &kSampleText}) {
    const ProgramResult result = Analyze(SampleFloor(), *args);
    EXPECT_EQ(result.exit_status, 0) << result.err;
    EXPECT_TRUE(result.out.ends_with(Summary("handle 47", 24, 24, 24, 0, 0, 0, 0, 0))) << result.out;
    EXPECT_EQ(result.err, "");
    if (args != &block) continue;
    EXPECT_EQ(result.out.substr(0, result.out.find("\n\nRoom analysis:") + 1),
              "\nCommand: _vantoryconvert\nEnter FloorArea layer: FloorArea\nEnter room contours layer: RoomContours"
              "\nRoom Identification[Block/Text]:B\nEnter block name: ROOMTAG\nEnter Name Attribute: NAME"
              "\nEnter Category Attribute: CATEGORY\nEnter Description Attribute: DESCRIPTION"
              "\nDo you want remove block inserts?[Yes/No]:Yes\n");
  }
}

// The records as ezdxf reads them from the saved drawing (xdata_dump.py):
// the items in the order and with the group codes of version 1.2, each
// room linked to a contour, the floor to nothing.
TEST_F(AnalyzeProgramTest, TheSavedRecordsReadBackInAnotherReader) {
  std::vector<std::string> args = kSampleBlock;
  args.insert(args.end(), {"-o", dir_ + "/analysed.dxf"});
  ASSERT_EQ(Analyze(SampleFloor(), args).exit_status, 0);
  const ProgramResult dump = RunProgram(FX_SYSTEM_PYTHON, {FX_XDATA_DUMP, dir_ + "/analysed.dxf"}, dir_);
  ASSERT_EQ(dump.exit_status, 0) << dump.err;
  const std::regex room(
      "[0-9A-F]+\tINSERT\tLWPOLYLINE:RoomContours\t1001=VantoryApp\t1000=1\\.2\t1000=([^\t]+)\t1000=([^\t]*)"
      "\t1000=([^\t]*)\t1000=\t1000=[0-9A-F]+\t1071=0\t1010=[^\t]+\t1010=[^\t]+");
  std::set<std::string> names;
  std::istringstream lines(dump.out);
  for (std::string line; std::getline(lines, line);) {
    std::smatch fields;
    if (line.find("<*AREA_FLOOR*>") != std::string::npos) {
      EXPECT_EQ(line.substr(line.find('\t')),
                "\tLWPOLYLINE\t-\t1001=VantoryApp\t1000=1.2\t1000=<*AREA_FLOOR*>\t1000=\t1000=\t1000=\t1000=0\t1071=0"
                "\t1010=-225.0,-225.0,0.0\t1010=67425.0,13525.0,0.0");
    } else {
      EXPECT_TRUE(std::regex_match(line, fields, room)) << line;
      if (!fields.empty()) names.insert(fields[1].str() + " " + fields[2].str() + "/" + fields[3].str());
    }
  }
  EXPECT_EQ(names.size(), 24u);
  EXPECT_EQ(names.count("1.01 Office/Open office"), 1u);
}

TEST_F(AnalyzeProgramTest, AnAnalysisThatEndsEarlyFailsAndSavesNothing) {
  std::vector<std::string> args = kSampleText;
  args[3] = "NoSuchLayer";
  args.insert(args.end(), {"-o", dir_ + "/out.dxf"});
  const ProgramResult result = Analyze(SampleFloor(), args);
  EXPECT_EQ(result.exit_status, 1);
  EXPECT_TRUE(result.out.ends_with("\nCDocData::GetLayerTableID = eKeyNotFound\n")) << result.out;
  EXPECT_EQ(result.err,
            "floorxport: the room analysis ended early (see its message above)\n"
            "floorxport: the drawing was not saved because the run failed\n");
  EXPECT_FALSE(std::filesystem::exists(dir_ + "/out.dxf"));
}

TEST_F(AnalyzeProgramTest, WrongUsageSaysWhat) {
  const struct {
    std::vector<std::string> args;
    const char* error;
  } kCases[] = {
      {{"--floor-layer", "F", "--contour-layer", "C"}, "give --block with its tags, or the three text layers"},
      {{"--floor-layer", "F", "--contour-layer", "C", "--block", "B", "--name-tag", "N"},
       "--block needs --name-tag, --category-tag and --description-tag"},
      {{"--floor-layer", "F", "--contour-layer", "C", "--block", "B", "--name-layer", "N"},
       "give either the block options or the text layer options, not both"},
  };
  for (const auto& c : kCases) {
    const ProgramResult result = Analyze(SampleFloor(), c.args);
    EXPECT_EQ(result.exit_status, 2) << c.error;
    EXPECT_EQ(result.err, std::string("floorxport: ") + c.error + "\nRun \"floorxport analyze --help\" for usage.\n");
  }
  std::vector<std::string> both = kSampleText;
  both.insert(both.end(), {"-o", dir_ + "/x.dxf", "--save"});
  EXPECT_EQ(Analyze(SampleFloor(), both).exit_status, 2);
}

}  // namespace
}  // namespace fx::rooms_test
