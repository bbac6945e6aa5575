// The clean-up commands on the real drawings of the corpus (skipped when it
// is absent), checked by our host reading the result back and by ezdxf.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>

#include "app/cleanup_commands.h"
#include "cleanup_fixture.h"
#include "corpus.h"

namespace fx::cleanup_test {
namespace {

const std::string kClean = "\n0 errors found, 0 fixed.\n";

class CorpusTest : public CleanupTest {
 protected:
  void SetUp() override {
    drawings_ = fx::testing::CorpusDrawings();
    if (drawings_.empty()) GTEST_SKIP() << "no corpus drawings in " << fx::testing::CorpusDir();
  }

  int AuditErrors() {
    const std::string out = RunCommands("_AUDIT N");
    size_t at = out.rfind("\n");
    size_t start = out.rfind("\n", at - 1);
    return std::atoi(out.c_str() + start + 1);
  }

  // Runs the ezdxf checker on pairs of files; one line per pair.
  std::vector<std::string> Ezdxf(const char* mode, const std::vector<std::pair<std::string, std::string>>& pairs) {
    std::string command = std::string("\"") + FX_SYSTEM_PYTHON + "\" \"" + FX_EZDXF_CHECK + "\" " + mode;
    for (const auto& [before, after] : pairs) command += " \"" + before + "\" \"" + after + "\"";
    const std::string out_path = TempPath("ezdxf.txt");
    command += " > \"" + out_path + "\" 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    std::ifstream out(out_path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(out, line);)
      if (line.rfind(mode, 0) == 0 || line.rfind("error", 0) == 0) lines.push_back(line);
    return lines;
  }

  std::string Short(const std::filesystem::path& path) {
    return path.parent_path().filename().string() + "/" + path.filename().string();
  }

  std::vector<std::filesystem::path> drawings_;
};

bool EzdxfAvailable() {
  const std::string command = std::string("\"") + FX_SYSTEM_PYTHON + "\" -c \"import ezdxf\" > /dev/null 2>&1";
  return std::string(FX_SYSTEM_PYTHON).size() > 0 && std::system(command.c_str()) == 0;
}

// PURGE takes nothing that is used: model space stays whole, the drawing
// reads back in both readers, no reference goes missing, and a second PURGE
// finds nothing.
TEST_F(CorpusTest, PurgeRemovesOnlyWhatNothingUses) {
  std::vector<std::pair<std::string, std::string>> pairs;
  for (size_t i = 0; i < drawings_.size(); ++i) {
    SCOPED_TRACE(Short(drawings_[i]));
    Open(drawings_[i].string());
    const size_t entities = ModelSpace().size();
    const int errors = AuditErrors();
    RunCommands("_-PURGE A * N");
    const std::string saved = TempPath("purged" + std::to_string(i) + ".dxf");
    SaveAs(saved);
    session_.CloseDrawing();
    Open(saved);
    EXPECT_EQ(ModelSpace().size(), entities);
    EXPECT_LE(AuditErrors(), errors);
    const std::string again = RunCommands("_-PURGE A * N");
    EXPECT_NE(again.find("\nNo unreferenced objects to purge.\n"), std::string::npos) << again;
    pairs.emplace_back(drawings_[i].string(), saved);
  }
  if (!EzdxfAvailable()) GTEST_SKIP() << "python3-ezdxf is not available to " << FX_SYSTEM_PYTHON;
  const std::vector<std::string> lines = Ezdxf("refs", pairs);
  ASSERT_EQ(lines.size(), pairs.size());
  for (const std::string& line : lines) {
    std::istringstream in(line);
    std::string kind, name;
    int errors_before, errors_after, fixes_before, fixes_after, missing_before, missing_after, ms_before, ms_after;
    in >> kind >> name >> errors_before >> errors_after >> fixes_before >> fixes_after >> missing_before >>
        missing_after >> ms_before >> ms_after;
    ASSERT_EQ(kind, "refs") << line;
    EXPECT_LE(errors_after, errors_before) << line;
    EXPECT_LE(fixes_after, fixes_before) << line;
    EXPECT_LE(missing_after, missing_before) << line;
    EXPECT_EQ(ms_after, ms_before) << line;
  }
}

// AUDIT repairs what it finds for good: a second audit and one of the saved
// drawing find nothing, and ezdxf finds no more than before.
TEST_F(CorpusTest, AuditRepairsForGood) {
  std::vector<std::pair<std::string, std::string>> pairs;
  for (size_t i = 0; i < drawings_.size(); ++i) {
    SCOPED_TRACE(Short(drawings_[i]));
    Open(drawings_[i].string());
    const std::string fixed = RunCommands("_AUDIT Y");
    EXPECT_EQ(AuditErrors(), 0) << fixed;
    const std::string saved = TempPath("audited" + std::to_string(i) + ".dxf");
    SaveAs(saved);
    session_.CloseDrawing();
    Open(saved);
    EXPECT_EQ(AuditErrors(), 0);
    pairs.emplace_back(drawings_[i].string(), saved);
  }
  if (!EzdxfAvailable()) GTEST_SKIP() << "python3-ezdxf is not available to " << FX_SYSTEM_PYTHON;
  for (const std::string& line : Ezdxf("refs", pairs)) {
    std::istringstream in(line);
    std::string kind, name;
    int errors_before, errors_after, fixes_before, fixes_after, missing_before, missing_after;
    in >> kind >> name >> errors_before >> errors_after >> fixes_before >> fixes_after >> missing_before >>
        missing_after;
    ASSERT_EQ(kind, "refs") << line;
    EXPECT_LE(errors_after, errors_before) << line;
    EXPECT_LE(fixes_after, fixes_before) << line;
    EXPECT_LE(missing_after, missing_before) << line;
  }
}

// OVERKILL erases nothing that a kept entity does not cover, as ezdxf sees it.
TEST_F(CorpusTest, OverkillErasesOnlyWhatIsCovered) {
  if (!EzdxfAvailable()) GTEST_SKIP() << "python3-ezdxf is not available to " << FX_SYSTEM_PYTHON;
  std::vector<std::pair<std::string, std::string>> pairs;
  for (size_t i = 0; i < drawings_.size(); ++i) {
    Open(drawings_[i].string());
    // ezdxf makes up handles for drawings without them: nothing to compare.
    fx::dxf::BlockContents* model = imp().BlockOf(imp().model_space());
    if (model == nullptr || model->entities.empty() || model->entities.front()->synthetic_handle) continue;
    RunCommands("_-OVERKILL All  Done");
    const std::string saved = TempPath("overkill" + std::to_string(i) + ".dxf");
    SaveAs(saved);
    pairs.emplace_back(drawings_[i].string(), saved);
  }
  const std::vector<std::string> lines = Ezdxf("overkill", pairs);
  ASSERT_EQ(lines.size(), pairs.size());
  for (const std::string& line : lines) {
    std::istringstream in(line);
    std::string kind, name;
    int erased = 0, stretched = 0, faults = -1;
    in >> kind >> name >> erased >> stretched >> faults;
    ASSERT_EQ(kind, "overkill") << line;
    EXPECT_EQ(faults, 0) << line;
  }
}

// The lineweight shortcut reaches block definitions; run again on the saved
// drawing it changes nothing at all.
TEST_F(CorpusTest, LineweightNormalisesEveryBlockThenLeavesTheDrawingAlone) {
  AddCommand("SHORTLINEWEIGHT", fx::app::DrawingLineweight);
  for (size_t i = 0; i < drawings_.size(); ++i) {
    SCOPED_TRACE(Short(drawings_[i]));
    Open(drawings_[i].string());
    RunCommands("SHORTLINEWEIGHT");
    if (imp().has_subclass_markers()) {
      int left = 0;
      for (AcDbObjectId record : AcDbObjectPointer<AcDbBlockTable>(database().blockTableId(), AcDb::kForRead)
                                     ->recordIds()) {
        AcDbObjectPointer<AcDbBlockTableRecord> block(record, AcDb::kForRead);
        for (AcDbObjectId id : block->entityIds()) {
          AcDbEntityPointer entity(id, AcDb::kForRead);
          AcDbObjectPointer<AcDbLayerTableRecord> layer(entity->layerId(), AcDb::kForRead);
          if (entity->lineWeight() != AcDb::kLnWtByLwDefault && !(layer && layer->isLocked())) ++left;
        }
      }
      EXPECT_EQ(left, 0);
    }
    SaveAndReopen();
    RunCommands("SHORTLINEWEIGHT");
    EXPECT_FALSE(imp().modified());
  }
}

}  // namespace
}  // namespace fx::cleanup_test
