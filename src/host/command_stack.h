// The command stack: commands registered by applications under a group,
// with a global name (language-independent, typed with a leading "_") and a
// local name.
#ifndef FLOORXPORT_HOST_COMMAND_STACK_H_
#define FLOORXPORT_HOST_COMMAND_STACK_H_

#include <cstdint>
#include <string>

constexpr int32_t ACRX_CMD_MODAL = 0x00000000;
constexpr int32_t ACRX_CMD_TRANSPARENT = 0x00000001;
constexpr int32_t ACRX_CMD_USEPICKSET = 0x00000002;
constexpr int32_t ACRX_CMD_REDRAW = 0x00000004;
constexpr int32_t ACRX_CMD_NOPAPERSPACE = 0x00000010;
constexpr int32_t ACRX_CMD_SESSION = 0x00200000;

using AcRxFunctionPtr = void (*)();

class AcEdCommand {
 public:
  virtual ~AcEdCommand() = default;
  virtual const std::string& groupName() const = 0;
  virtual const std::string& globalName() const = 0;
  virtual const std::string& localName() const = 0;
  virtual int32_t commandFlags() const = 0;
  virtual AcRxFunctionPtr functionAddr() const = 0;
};

class AcEdCommandStack {
 public:
  virtual ~AcEdCommandStack() = default;
  // eOk-like status as an int: 0 on success, non-zero when the global name
  // is already registered in the group.
  virtual int addCommand(const char* group, const char* global_name, const char* local_name,
                         int32_t flags, AcRxFunctionPtr function, void* ui_context = nullptr,
                         int function_code = -1, void* resource = nullptr,
                         AcEdCommand** command = nullptr) = 0;
  virtual int removeCmd(const char* group, const char* global_name) = 0;
  virtual int removeGroup(const char* group) = 0;
  // Case-insensitive lookups; nullptr when none.
  virtual AcEdCommand* lookupGlobalCmd(const char* global_name) = 0;
  virtual AcEdCommand* lookupLocalCmd(const char* local_name) = 0;
};

AcEdCommandStack* acedRegCmds();

#endif  // FLOORXPORT_HOST_COMMAND_STACK_H_
