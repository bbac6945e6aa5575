#include "host/dxf/console/command_registry.h"

#include <algorithm>

#include "host/dxf/console/text_case.h"
#include "host/status.h"

namespace fx::console {
namespace {

std::string OrEmpty(const char* text) { return text != nullptr ? text : ""; }

}  // namespace

class CommandRegistry::Command : public AcEdCommand {
 public:
  Command(std::string group, std::string global_name, std::string local_name, int32_t flags,
          AcRxFunctionPtr function)
      : group_(std::move(group)),
        global_(std::move(global_name)),
        local_(std::move(local_name)),
        flags_(flags),
        function_(function) {}
  const std::string& groupName() const override { return group_; }
  const std::string& globalName() const override { return global_; }
  const std::string& localName() const override { return local_; }
  int32_t commandFlags() const override { return flags_; }
  AcRxFunctionPtr functionAddr() const override { return function_; }

 private:
  std::string group_, global_, local_;
  int32_t flags_;
  AcRxFunctionPtr function_;
};

CommandRegistry::CommandRegistry() = default;
CommandRegistry::~CommandRegistry() = default;

int CommandRegistry::addCommand(const char* group, const char* global_name, const char* local_name,
                                int32_t flags, AcRxFunctionPtr function, void* /*ui_context*/,
                                int /*function_code*/, void* /*resource*/, AcEdCommand** command) {
  if (OrEmpty(group).empty() || OrEmpty(global_name).empty()) return Acad::eInvalidInput;
  for (const auto& existing : commands_) {
    if (EqualNoCase(existing->groupName(), group) &&
        EqualNoCase(existing->globalName(), global_name)) {
      return Acad::eDuplicateKey;
    }
  }
  commands_.push_back(
      std::make_unique<Command>(group, global_name, OrEmpty(local_name), flags, function));
  if (command != nullptr) *command = commands_.back().get();
  return Acad::eOk;
}

int CommandRegistry::removeCmd(const char* group, const char* global_name) {
  auto it = std::find_if(commands_.begin(), commands_.end(), [&](const auto& command) {
    return EqualNoCase(command->groupName(), OrEmpty(group)) &&
           EqualNoCase(command->globalName(), OrEmpty(global_name));
  });
  if (it == commands_.end()) return Acad::eKeyNotFound;
  commands_.erase(it);
  return Acad::eOk;
}

int CommandRegistry::removeGroup(const char* group) {
  size_t removed = std::erase_if(commands_, [&](const auto& command) {
    return EqualNoCase(command->groupName(), OrEmpty(group));
  });
  return removed > 0 ? Acad::eOk : Acad::eKeyNotFound;
}

AcEdCommand* CommandRegistry::Find(std::string_view name, bool global) {
  if (name.empty()) return nullptr;
  // Later registrations belong to more recently added groups.
  for (auto it = commands_.rbegin(); it != commands_.rend(); ++it) {
    const std::string& candidate = global ? (*it)->globalName() : (*it)->localName();
    if (EqualNoCase(candidate, name)) return it->get();
  }
  return nullptr;
}

AcEdCommand* CommandRegistry::lookupGlobalCmd(const char* global_name) {
  return Find(OrEmpty(global_name), true);
}

AcEdCommand* CommandRegistry::lookupLocalCmd(const char* local_name) {
  return Find(OrEmpty(local_name), false);
}

TypedCommand CommandRegistry::Resolve(std::string_view typed) {
  TypedCommand result;
  bool global = false;
  bool dash = false;
  while (!typed.empty() && std::string_view("'_-.").find(typed.front()) != std::string_view::npos) {
    result.transparent |= typed.front() == '\'';
    global |= typed.front() == '_';
    dash |= typed.front() == '-';
    typed.remove_prefix(1);
  }
  std::vector<std::string> names;
  if (dash) names.push_back("-" + std::string(typed));
  names.emplace_back(typed);
  for (const std::string& name : names) {
    AcEdCommand* found = nullptr;
    if (global) {
      found = Find(name, true);
      if (found == nullptr) found = Find("_" + name, true);
      if (found == nullptr) found = Find(name, false);
    } else {
      found = Find(name, false);
      if (found == nullptr) found = Find(name, true);
    }
    if (found != nullptr) {
      result.command = found;
      return result;
    }
  }
  return result;
}

CommandRegistry& Commands() {
  static CommandRegistry registry;
  return registry;
}

}  // namespace fx::console

AcEdCommandStack* acedRegCmds() { return &fx::console::Commands(); }
