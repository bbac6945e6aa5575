#include "server/tls_policy.h"

#include "settings/known_settings.h"
#include "settings/settings.h"

namespace fx::server {
namespace {

std::optional<TlsPolicy> g_run_policy;

}  // namespace

TlsPolicy CurrentTlsPolicy() {
  if (g_run_policy) return *g_run_policy;
  namespace fs = fx::settings;
  TlsPolicy policy;
  policy.verify = fs::GetSettingInt(fs::kVerifyServerCertificate, 0, fs::kSectionServer) != 0;
  policy.ca_file = fs::GetSettingString(fs::kServerCaFile, fs::kSectionServer);
  return policy;
}

void SetRunTlsPolicy(std::optional<TlsPolicy> policy) { g_run_policy = std::move(policy); }

}  // namespace fx::server
