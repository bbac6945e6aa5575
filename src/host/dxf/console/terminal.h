// The process's standard streams as the console editor uses them: the
// transcript on standard output, progress on standard error, and lines typed
// by a user when standard input is a terminal. Tests substitute their own.
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_TERMINAL_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_TERMINAL_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <memory>
#include <string>
#include <string_view>

namespace fx::console {

class Terminal {
 public:
  virtual ~Terminal() = default;
  virtual void WriteOut(std::string_view text) = 0;
  // Standard output is flushed first so that both streams read in order.
  virtual void WriteErr(std::string_view text) = 0;
  // Reads one line from standard input without its line end; false at the
  // end of input. Standard output is flushed first (a prompt is showing).
  virtual bool ReadLine(std::string& line) = 0;
  // As ReadLine for a line that must not be seen (a password): a terminal
  // does not echo it. Input that is no terminal is read as by ReadLine.
  virtual bool ReadSecretLine(std::string& line) { return ReadLine(line); }
  virtual bool inputIsTerminal() const = 0;
  virtual bool errorIsTerminal() const = 0;
};

// The process's stdin, stdout and stderr.
std::unique_ptr<Terminal> MakeProcessTerminal();

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_TERMINAL_H_
