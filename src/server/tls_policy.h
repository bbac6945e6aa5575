// How the client trusts a site's certificate. By default any certificate is
// accepted (sites run on private and self-signed certificates, under names
// that need not match, and the service has always been reached that way).
// The strict mode verifies the certificate chain and the host name, against
// the system's certificate authorities or a CA file of the user's.
#ifndef FLOORXPORT_SERVER_TLS_POLICY_H_
#define FLOORXPORT_SERVER_TLS_POLICY_H_

#include <optional>
#include <string>

namespace fx::server {

struct TlsPolicy {
  bool verify = false;
  std::string ca_file;  // PEM; empty: the system's authorities
};

// The policy in force: the one the program set for this run, otherwise the
// settings "Verify Server Certificate" and "Server CA File".
TlsPolicy CurrentTlsPolicy();

// Sets the policy for the rest of the run (command-line options), or with
// nullopt goes back to the settings.
void SetRunTlsPolicy(std::optional<TlsPolicy> policy);

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_TLS_POLICY_H_
