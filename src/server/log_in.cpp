#include "server/log_in.h"

#include "host/dialog.h"
#include "stdsoap2.h"

namespace fx::server {
namespace {

// Wipes its values when the process ends, so they do not linger in freed memory.
struct CredentialStore {
  std::string user;
  std::string password;
  bool known = false;
  ~CredentialStore() {
    fx::WipeText(user);
    fx::WipeText(password);
  }
};

CredentialStore& Store() {
  static CredentialStore store;
  return store;
}

LogInPrompt g_prompt = nullptr;

}  // namespace

void SetLogInPrompt(LogInPrompt prompt) { g_prompt = prompt; }

void RememberCredentials(const std::string& user, const std::string& password) {
  CredentialStore& store = Store();
  fx::WipeText(store.user);
  fx::WipeText(store.password);
  store.user = user;
  store.password = password;
  store.known = true;
}

std::string RememberedUser() { return Store().user; }

bool RememberedCredentials(std::string& user, std::string& password) {
  const CredentialStore& store = Store();
  if (!store.known) return false;
  user = store.user;
  password = store.password;
  return true;
}

void ForgetCredentials() {
  CredentialStore& store = Store();
  fx::WipeText(store.user);
  fx::WipeText(store.password);
  store.known = false;
}

void ApplyCredentials(struct soap* soap) {
  const CredentialStore& store = Store();
  if (!store.known) {
    soap->userid = nullptr;
    soap->passwd = nullptr;
    return;
  }
  // The runtime keeps the pointers only for the span of the next call, and
  // the store outlives every call.
  soap->userid = store.user.c_str();
  soap->passwd = store.password.c_str();
}

bool AskForCredentials() {
  if (g_prompt == nullptr) return false;
  std::string user = RememberedUser();
  std::string password;
  const bool confirmed = g_prompt(user, password);
  if (confirmed) RememberCredentials(user, password);
  fx::WipeText(user);
  fx::WipeText(password);
  return confirmed;
}

bool RetryAfterUnauthorized(int http_status) { return http_status == 401 && AskForCredentials(); }

}  // namespace fx::server
