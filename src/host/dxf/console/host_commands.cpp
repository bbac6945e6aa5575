#include "host/dxf/console/host_commands.h"

#include "host/command_stack.h"
#include "host/dxf/cleanup/cleanup_commands.h"
#include "host/dxf/console/command_runner.h"

namespace fx::console {
namespace {

constexpr struct {
  const char* name;
  int32_t flags;
  AcRxFunctionPtr function;
} kHostCommands[] = {
    {"ZOOM", ACRX_CMD_TRANSPARENT, ZoomCommand},
    {"UNITS", ACRX_CMD_TRANSPARENT, UnitsCommand},
};

}  // namespace

void RegisterHostCommands(AcEdCommandStack& stack) {
  for (const auto& command : kHostCommands) {
    stack.addCommand(kHostCommandGroup, command.name, command.name, command.flags,
                     command.function);
  }
  fx::cleanup::RegisterCleanupCommands(stack, kHostCommandGroup, [] { CurrentRunner().FailCommand(); });
}

void RemoveHostCommands(AcEdCommandStack& stack) { stack.removeGroup(kHostCommandGroup); }

}  // namespace fx::console
