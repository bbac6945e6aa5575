#include "server_options.h"

#include <sys/prctl.h>

#include <cstdlib>
#include <fstream>

#include "host/dialog.h"
#include "server/exchange_commands.h"
#include "server/log_in.h"
#include "server/tls_policy.h"
#include "server/workflow_result.h"

namespace fx::cli {

bool TakeLogIn(const ParsedArgs& parsed, std::string* error) {
  // Credentials may sit in this process's memory from here on: keep it out
  // of core files and away from other processes' debuggers.
  ::prctl(PR_SET_DUMPABLE, 0, 0, 0, 0);
  const char* env_user = std::getenv("FLOORXPORT_USER");
  const char* env_password = std::getenv("FLOORXPORT_PASSWORD");
  std::string user = env_user != nullptr ? env_user : "";
  std::string password = env_password != nullptr ? env_password : "";
  bool given = env_user != nullptr && env_password != nullptr;
  for (const ParsedOption& option : parsed.options) {
    if (Is(option, "--user")) user = option.value;
    if (Is(option, "--password-file")) {
      std::ifstream file(option.value);
      fx::WipeText(password);
      if (!file || !std::getline(file, password)) {
        *error = "cannot read the password file \"" + option.value + "\"";
        return false;
      }
      if (!password.empty() && password.back() == '\r') password.pop_back();
      given = true;
    }
  }
  if (given && !user.empty()) fx::server::RememberCredentials(user, password);
  fx::WipeText(password);
  return true;
}

bool TakeTlsOptions(const ParsedArgs& parsed, std::string* error) {
  std::optional<fx::server::TlsPolicy> policy;
  for (const ParsedOption& option : parsed.options) {
    if (Is(option, "--tls-verify") && !policy) policy.emplace().verify = true;
    if (Is(option, "--ca-file")) {
      if (!std::ifstream(option.value)) {
        *error = "cannot read the CA file \"" + option.value + "\"";
        return false;
      }
      if (!policy) policy.emplace();
      policy->verify = true;
      policy->ca_file = option.value;
    }
  }
  if (policy) fx::server::SetRunTlsPolicy(std::move(policy));
  return true;
}

std::vector<std::string> SiteChooserAnswers(const std::optional<std::string>& server) {
  return {server.value_or(""), "OK"};
}

int ExchangeExitStatus() {
  const std::optional<int> result = fx::server::LastExchangeResult();
  if (!result) return kExitFailure;
  if (*result == fx::server::kSucceeded) return kExitOk;
  return *result == fx::server::kCanceled ? kExitCanceled : kExitFailure;
}

std::string ScriptLines(const std::vector<std::string>& answers) {
  std::string lines;
  for (const std::string& answer : answers) {
    if (!lines.empty()) lines += '\n';
    lines += answer;
  }
  return lines;
}

}  // namespace fx::cli
