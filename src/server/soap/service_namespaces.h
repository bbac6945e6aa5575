// The drawing service's XML namespaces. The service namespace is bound to
// the prefix ns1 in every message; the table of all prefixes the client and
// the development server write and accept is the runtime's global
// `namespaces` (service_namespaces.cpp).
#ifndef FLOORXPORT_SERVER_SOAP_SERVICE_NAMESPACES_H_
#define FLOORXPORT_SERVER_SOAP_SERVICE_NAMESPACES_H_

struct Namespace;

namespace fx::server {

inline constexpr const char* kServiceNamespace = "http://soap.vantory.example/";

// The table installed on every client and server context.
const Namespace* ServiceNamespaces();

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_SOAP_SERVICE_NAMESPACES_H_
