// TLS for the development server: a self-signed certificate made with
// OpenSSL for local use, and the server side of gSOAP's TLS set up from a
// PEM file holding the private key and the certificate.
#ifndef FLOORXPORT_TOOLS_VANTORY_DEVSERVER_TLS_H_
#define FLOORXPORT_TOOLS_VANTORY_DEVSERVER_TLS_H_

#include <string>

struct soap;

namespace fx::devserver {

// Writes an EC P-256 key and a self-signed certificate (SHA-256, valid
// from an hour ago for 825 days, subject CN=localhost, alternative names
// localhost, 127.0.0.1 and ::1, server authentication) to `path` as PEM,
// readable by its owner only. Refuses to replace an existing file. Throws
// std::runtime_error.
void GenerateSelfSignedCertificate(const std::string& path);

// Makes `soap` (the listening context, copied for each connection) a TLS
// server with the key and certificate in `pem_path`. Throws
// std::runtime_error with OpenSSL's reason.
void ConfigureServerTls(struct soap* soap, const std::string& pem_path);

}  // namespace fx::devserver

#endif  // FLOORXPORT_TOOLS_VANTORY_DEVSERVER_TLS_H_
