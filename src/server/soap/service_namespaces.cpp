#include "server/soap/service_namespaces.h"

#include "stdsoap2.h"

// Prefix, URI written, URI pattern accepted when reading. Replies are read
// by URI, whatever prefixes the peer chose; only SOAP 1.1 envelopes match.
SOAP_NMAC struct Namespace namespaces[] = {
    {"SOAP-ENV", "http://schemas.xmlsoap.org/soap/envelope/", nullptr, nullptr},
    {"SOAP-ENC", "http://schemas.xmlsoap.org/soap/encoding/", nullptr, nullptr},
    {"xsi", "http://www.w3.org/2001/XMLSchema-instance", "http://www.w3.org/*/XMLSchema-instance", nullptr},
    {"xsd", "http://www.w3.org/2001/XMLSchema", "http://www.w3.org/*/XMLSchema", nullptr},
    {"ns1", "http://soap.vantory.example/", nullptr, nullptr},
    {"xop", "http://www.w3.org/2004/08/xop/include", nullptr, nullptr},
    {nullptr, nullptr, nullptr, nullptr},
};

namespace fx::server {

const Namespace* ServiceNamespaces() { return namespaces; }

}  // namespace fx::server
