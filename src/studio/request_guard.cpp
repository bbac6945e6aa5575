#include "studio/request_guard.h"

#include <random>

namespace fx::studio {
namespace {

// Compares in time that does not depend on where the texts differ.
bool SameSecret(const std::string& a, const std::string& b) {
  if (a.size() != b.size()) return false;
  unsigned char difference = 0;
  for (size_t i = 0; i < a.size(); ++i) difference |= static_cast<unsigned char>(a[i] ^ b[i]);
  return difference == 0;
}

}  // namespace

std::string RefusalReason(const RequestFacts& request, const std::string& token, int port) {
  if (token.empty() || !SameSecret(request.token, token)) return "wrong token";
  const std::string suffix = ":" + std::to_string(port);
  if (request.host != "127.0.0.1" + suffix && request.host != "localhost" + suffix) {
    return "foreign Host";
  }
  if (!request.origin.empty() && request.origin != "http://" + request.host) return "foreign Origin";
  return {};
}

std::string NewToken() {
  std::random_device source;  // /dev/urandom on Linux
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string token;
  for (int i = 0; i < 4; ++i) {
    uint32_t word = source();
    for (int n = 0; n < 8; ++n, word >>= 4) token += kDigits[word & 0xF];
  }
  return token;
}

}  // namespace fx::studio
