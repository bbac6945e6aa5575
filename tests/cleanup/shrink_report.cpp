// Prints how much each clean-up shortcut shrinks each corpus drawing: file
// size and entity counts (model space, and all blocks) before and after.
// A report, not a test: cleanup_shrink_report > table.md (the corpus is
// FX_CORPUS_DIR, from the environment or the build).
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "app/cleanup_commands.h"
#include "host/command_stack.h"
#include "host/database.h"
#include "host/documents.h"
#include "host/dxf/console/answer_policy.h"
#include "host/dxf/console/command_registry.h"
#include "host/dxf/console/command_runner.h"
#include "host/dxf/console/console.h"
#include "host/dxf/console/host_session.h"
#include "host/dxf/console/module_registry.h"
#include "host/dxf/console/terminal.h"
#include "host/dxf/imp_database.h"
#include "corpus.h"

namespace {

class QuietTerminal : public fx::console::Terminal {
 public:
  void WriteOut(std::string_view) override {}
  void WriteErr(std::string_view) override {}
  bool ReadLine(std::string&) override { return false; }
  bool inputIsTerminal() const override { return false; }
  bool errorIsTerminal() const override { return false; }
};

struct Counts {
  uintmax_t bytes = 0;
  size_t model = 0, all = 0;
};

Counts Count(AcDbImpDatabase& db, const std::string& path) {
  Counts counts;
  counts.bytes = std::filesystem::file_size(path);
  if (fx::dxf::SymbolTable* blocks = db.FindTable("BLOCK_RECORD")) {
    for (AcDbStub* record : blocks->entries) {
      fx::dxf::BlockContents* block = db.BlockOf(record);
      if (record->erased || block == nullptr) continue;
      size_t live = std::count_if(block->entities.begin(), block->entities.end(),
                                  [](const AcDbStub* e) { return !e->erased; });
      counts.all += live;
      if (record == db.model_space()) counts.model = live;
    }
  }
  return counts;
}

// Registered under names of their own: a shortcut named like the host
// command it runs would run itself.
struct Shortcut {
  const char* name;
  const char* command;
  AcRxFunctionPtr function;
};
constexpr Shortcut kShortcuts[] = {
    {"Overkill", "REPORTOVERKILL", fx::app::DrawingOverkill},
    {"Audit", "REPORTAUDIT", fx::app::DrawingAudit},
    {"Purge", "REPORTPURGE", fx::app::DrawingPurge},
    {"Units", "REPORTUNITS", fx::app::DrawingUnits},
    {"Extents", "REPORTEXTENTS", fx::app::DrawingExtents},
    {"Lineweight", "REPORTLINEWEIGHT", fx::app::DrawingLineweight},
};

}  // namespace

int main() {
  const std::vector<std::filesystem::path> drawings = fx::testing::CorpusDrawings();
  const std::filesystem::path temp = std::filesystem::temp_directory_path() / "fx_shrink_report.dxf";

  QuietTerminal terminal;
  fx::console::Console console(terminal, fx::console::AnswerPolicy());
  fx::console::CommandRunner runner(console, fx::console::Commands());
  fx::console::ModuleRegistry modules;
  fx::console::HostSession session(runner, modules);
  for (const Shortcut& shortcut : kShortcuts)
    fx::console::Commands().addCommand("FX_REPORT", shortcut.command, shortcut.command, ACRX_CMD_MODAL,
                                       shortcut.function);

  std::printf("| drawing | shortcut | bytes before | bytes after | change | model space before | after | all blocks before | after |\n");
  std::printf("|---|---|---:|---:|---:|---:|---:|---:|---:|\n");
  for (const std::filesystem::path& drawing : drawings) {
    const std::string name = drawing.parent_path().filename().string() + "/" + drawing.filename().string();
    for (const Shortcut& shortcut : kShortcuts) {
      std::string error;
      if (!session.OpenDrawing(drawing.string(), &error)) {
        std::printf("| %s | %s | %s |\n", name.c_str(), shortcut.name, error.c_str());
        break;
      }
      AcDbImpDatabase& db = *session.document()->database()->impl();
      const Counts before = Count(db, drawing.string());
      console.script().AddLine(shortcut.command);
      runner.RunScript();
      // Saved the same way for every shortcut, so byte counts compare.
      if (!session.Save(temp.string(), &error)) {
        std::printf("| %s | %s | %s |\n", name.c_str(), shortcut.name, error.c_str());
        continue;
      }
      const Counts after = Count(db, temp.string());
      const double change = 100.0 * (static_cast<double>(after.bytes) - static_cast<double>(before.bytes)) /
                            static_cast<double>(before.bytes);
      std::printf("| %s | %s | %ju | %ju | %+.2f%% | %zu | %zu | %zu | %zu |\n", name.c_str(), shortcut.name,
                  before.bytes, after.bytes, change, before.model, after.model, before.all, after.all);
      session.CloseDrawing();
    }
  }
  fx::console::Commands().removeGroup("FX_REPORT");
  std::error_code ignored;
  std::filesystem::remove(temp, ignored);
  return 0;
}
