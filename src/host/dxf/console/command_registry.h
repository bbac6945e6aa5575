// The command stack of the headless host (acedRegCmds): commands by group,
// with global and local names compared without regard to case, and how a
// typed command name finds its command.
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_COMMAND_REGISTRY_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_COMMAND_REGISTRY_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/command_stack.h"

namespace fx::console {

// A command name as typed, resolved. Prefixes may come in any order: "'"
// (run transparently, inside another command), "_" (a global name), "-" (the
// form without a dialog; every command prompts on the console anyway) and
// "." (the built-in command).
struct TypedCommand {
  AcEdCommand* command = nullptr;  // nullptr for an unknown command
  bool transparent = false;
};

class CommandRegistry : public AcEdCommandStack {
 public:
  CommandRegistry();
  ~CommandRegistry() override;
  CommandRegistry(const CommandRegistry&) = delete;
  CommandRegistry& operator=(const CommandRegistry&) = delete;

  // Acad::eDuplicateKey when the group already has the global name,
  // Acad::eInvalidInput without a group or global name. A missing local name
  // is registered empty (found by its global name only).
  int addCommand(const char* group, const char* global_name, const char* local_name, int32_t flags,
                 AcRxFunctionPtr function, void* ui_context = nullptr, int function_code = -1,
                 void* resource = nullptr, AcEdCommand** command = nullptr) override;
  // Acad::eKeyNotFound when there is nothing to remove.
  int removeCmd(const char* group, const char* global_name) override;
  int removeGroup(const char* group) override;
  // The most recently added group is searched first.
  AcEdCommand* lookupGlobalCmd(const char* global_name) override;
  AcEdCommand* lookupLocalCmd(const char* local_name) override;

  // With "_": global names (also one registered with its underscore, as
  // "_convert"), then local names. Without: local names, then global names.
  // With "-": a command registered with the dash first, then without it.
  TypedCommand Resolve(std::string_view typed);

 private:
  class Command;
  AcEdCommand* Find(std::string_view name, bool global);

  std::vector<std::unique_ptr<Command>> commands_;  // in order of registration
};

// The process's command stack; acedRegCmds() returns it.
CommandRegistry& Commands();

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_COMMAND_REGISTRY_H_
