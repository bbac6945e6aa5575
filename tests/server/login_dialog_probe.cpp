// Shows the log-in dialog on the process's terminal (interactive when
// standard input is one), then prints the login and whether the password
// typed equals argv[1], never the password itself.
#include <cstdio>
#include <string>

#include "host/dxf/console/command_registry.h"
#include "host/dxf/console/command_runner.h"
#include "host/dxf/console/console.h"
#include "host/dxf/console/terminal.h"
#include "server/credential_dialog.h"

int main(int argc, char** argv) {
  using namespace fx::console;
  const std::string expected = argc > 1 ? argv[1] : "";
  std::unique_ptr<Terminal> terminal = MakeProcessTerminal();
  Console console(*terminal, AnswerPolicy());
  console.SetInteractive(terminal->inputIsTerminal());
  CommandRunner runner(console, Commands());
  ScopedRunner scoped(runner);
  fx::server::PvCredentialDialog dialog("", "");
  const int button = fx::ShowDialog(dialog);
  console.Print("\nbutton=" + std::to_string(button) + " login=" + dialog.login() + " password=" +
                (dialog.password() == expected ? "as-expected" : "different") + "\n");
  return 0;
}
