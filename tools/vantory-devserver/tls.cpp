#include "tls.h"

#include <openssl/bio.h>
#include <openssl/bn.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>
#include <sys/stat.h>

#include <memory>
#include <stdexcept>

#include "atomic_file.h"
#include "stdsoap2.h"

namespace fx::devserver {
namespace {

template <class T, void (*Free)(T*)>
struct Deleter {
  void operator()(T* p) const { Free(p); }
};
using KeyPtr = std::unique_ptr<EVP_PKEY, Deleter<EVP_PKEY, EVP_PKEY_free>>;
using CertPtr = std::unique_ptr<X509, Deleter<X509, X509_free>>;
using BioPtr = std::unique_ptr<BIO, Deleter<BIO, BIO_free_all>>;
using ExtPtr = std::unique_ptr<X509_EXTENSION, Deleter<X509_EXTENSION, X509_EXTENSION_free>>;
using BnPtr = std::unique_ptr<BIGNUM, Deleter<BIGNUM, BN_free>>;

[[noreturn]] void Fail(const std::string& what) {
  const unsigned long code = ERR_get_error();
  char reason[256] = "unknown error";
  if (code != 0) ERR_error_string_n(code, reason, sizeof reason);
  ERR_clear_error();
  throw std::runtime_error(what + ": " + reason);
}

void Check(int ok, const char* what) {
  if (ok != 1) Fail(what);
}

void AddExtension(X509* cert, X509V3_CTX* ctx, int nid, const char* value) {
  ExtPtr extension(X509V3_EXT_conf_nid(nullptr, ctx, nid, value));
  if (!extension) Fail(std::string("certificate extension ") + OBJ_nid2sn(nid));
  Check(X509_add_ext(cert, extension.get(), -1), "add certificate extension");
}

std::string ToPem(EVP_PKEY* key, X509* cert) {
  BioPtr bio(BIO_new(BIO_s_mem()));
  if (!bio) Fail("memory BIO");
  Check(PEM_write_bio_PrivateKey(bio.get(), key, nullptr, nullptr, 0, nullptr, nullptr),
        "write the private key");
  Check(PEM_write_bio_X509(bio.get(), cert), "write the certificate");
  char* data = nullptr;
  const long size = BIO_get_mem_data(bio.get(), &data);
  return std::string(data, static_cast<std::size_t>(size));
}

}  // namespace

void GenerateSelfSignedCertificate(const std::string& path) {
  struct stat info {};
  if (stat(path.c_str(), &info) == 0) {
    throw std::runtime_error(path + ": already exists; remove it to make a new certificate");
  }
  KeyPtr key(EVP_EC_gen("P-256"));
  if (!key) Fail("generate an EC P-256 key");

  CertPtr cert(X509_new());
  if (!cert) Fail("new certificate");
  Check(X509_set_version(cert.get(), 2), "certificate version");  // v3
  // A random positive serial of 127 bits.
  BnPtr serial(BN_new());
  if (!serial) Fail("serial number");
  Check(BN_rand(serial.get(), 127, BN_RAND_TOP_ANY, BN_RAND_BOTTOM_ANY), "serial number");
  if (!BN_to_ASN1_INTEGER(serial.get(), X509_get_serialNumber(cert.get()))) Fail("serial number");
  if (!X509_gmtime_adj(X509_getm_notBefore(cert.get()), -3600) ||
      !X509_gmtime_adj(X509_getm_notAfter(cert.get()), 825L * 24 * 3600)) {
    Fail("validity");
  }
  X509_NAME* name = X509_get_subject_name(cert.get());
  Check(X509_NAME_add_entry_by_txt(name, "O", MBSTRING_ASC,
                                   reinterpret_cast<const unsigned char*>("FloorXport development server"),
                                   -1, -1, 0),
        "subject");
  Check(X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC,
                                   reinterpret_cast<const unsigned char*>("localhost"), -1, -1, 0),
        "subject");
  Check(X509_set_issuer_name(cert.get(), name), "issuer");
  Check(X509_set_pubkey(cert.get(), key.get()), "public key");

  X509V3_CTX ctx;
  X509V3_set_ctx_nodb(&ctx);
  X509V3_set_ctx(&ctx, cert.get(), cert.get(), nullptr, nullptr, 0);
  AddExtension(cert.get(), &ctx, NID_basic_constraints, "critical,CA:FALSE");
  AddExtension(cert.get(), &ctx, NID_key_usage, "critical,digitalSignature");
  AddExtension(cert.get(), &ctx, NID_ext_key_usage, "serverAuth");
  AddExtension(cert.get(), &ctx, NID_subject_key_identifier, "hash");
  AddExtension(cert.get(), &ctx, NID_subject_alt_name, "DNS:localhost,IP:127.0.0.1,IP:::1");
  if (X509_sign(cert.get(), key.get(), EVP_sha256()) <= 0) Fail("sign the certificate");

  WriteFileAtomically(path, ToPem(key.get(), cert.get()), 0600);
}

void ConfigureServerTls(struct soap* soap, const std::string& pem_path) {
  // No client certificates are asked for; TLS 1.2 and later.
  if (soap_ssl_server_context(soap, SOAP_SSL_DEFAULT | SOAP_TLSv1_2 | SOAP_TLSv1_3,
                              pem_path.c_str(), nullptr, nullptr, nullptr, nullptr, nullptr,
                              nullptr) != SOAP_OK) {
    char message[1024] = "";
    soap_sprint_fault(soap, message, sizeof message);
    throw std::runtime_error(pem_path + ": cannot set up TLS: " + message);
  }
}

}  // namespace fx::devserver
