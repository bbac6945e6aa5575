#include "host/dxf/cleanup/cleanup_commands.h"

#include "host/command_stack.h"
#include "host/database.h"
#include "host/dxf/cleanup/command_support.h"
#include "host/editor.h"

namespace fx::cleanup {
namespace {

FailCommandFunction g_fail = nullptr;

constexpr struct {
  const char* name;
  AcRxFunctionPtr function;
} kCommands[] = {
    {"AUDIT", AuditCommand},
    {"PURGE", PurgeCommand},
    {"OVERKILL", OverkillCommand},
};

}  // namespace

void RegisterCleanupCommands(AcEdCommandStack& stack, const char* group, FailCommandFunction fail) {
  g_fail = fail;
  for (const auto& command : kCommands)
    stack.addCommand(group, command.name, command.name, ACRX_CMD_MODAL, command.function);
}

void FailCommand() {
  if (g_fail != nullptr) g_fail();
}

AcDbImpDatabase* DrawingOrFail() {
  AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
  if (database == nullptr || database->impl() == nullptr) {
    acutPrintf("\nNo drawing is open.");
    FailCommand();
    return nullptr;
  }
  return database->impl();
}

std::string Counted(int count, const char* singular, const char* plural) {
  return std::to_string(count) + " " + (count == 1 ? singular : plural);
}

}  // namespace fx::cleanup
