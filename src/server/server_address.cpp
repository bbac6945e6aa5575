#include "server/server_address.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace fx::server {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

bool IsAsciiAlpha(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsAsciiDigit(char c) { return c >= '0' && c <= '9'; }
char AsciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool IsScheme(std::string_view scheme) {
  if (scheme.empty() || !IsAsciiAlpha(scheme.front())) return false;
  return std::all_of(scheme.begin(), scheme.end(), [](char c) {
    return IsAsciiAlpha(c) || IsAsciiDigit(c) || c == '+' || c == '-' || c == '.';
  });
}

bool IsHost(std::string_view host) {
  return !host.empty() && std::none_of(host.begin(), host.end(), [](char c) {
    return static_cast<unsigned char>(c) <= ' ' || c == 0x7f;
  });
}

// An empty text is no port: the scheme's default applies.
bool ParsePort(std::string_view text, unsigned& port) {
  if (text.empty()) return true;
  if (!std::all_of(text.begin(), text.end(), IsAsciiDigit)) return false;
  unsigned value = 0;
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || value == 0 || value > 65535)
    return false;
  port = value;
  return true;
}

}  // namespace

unsigned DefaultPortOf(std::string_view scheme) {
  std::string lower(scheme);
  std::transform(lower.begin(), lower.end(), lower.begin(), AsciiLower);
  if (lower == "http") return 80;
  if (lower == "https") return 443;
  return 0;
}

ServerUrl SplitServerUrl(std::string_view text) {
  text = Trim(text);
  ServerUrl url;
  url.scheme = "https";
  if (const size_t separator = text.find("://"); separator != std::string_view::npos) {
    url.scheme.assign(text.substr(0, separator));
    std::transform(url.scheme.begin(), url.scheme.end(), url.scheme.begin(), AsciiLower);
    text.remove_prefix(separator + 3);
    if (!IsScheme(url.scheme)) return url;
  }
  const size_t authority_end = std::min(text.find_first_of("/?#"), text.size());
  url.path.assign(text.substr(authority_end));
  std::string_view authority = text.substr(0, authority_end);
  if (const size_t at = authority.rfind('@'); at != std::string_view::npos)
    authority.remove_prefix(at + 1);

  std::string_view host = authority;
  std::string_view port;
  if (authority.starts_with('[')) {
    const size_t close = authority.find(']');
    if (close == std::string_view::npos) return url;
    host = authority.substr(0, close + 1);
    std::string_view rest = authority.substr(close + 1);
    if (!rest.empty()) {
      if (rest.front() != ':') return url;
      port = rest.substr(1);
    }
    if (host.size() == 2) return url;  // "[]"
  } else if (const size_t colon = authority.rfind(':'); colon != std::string_view::npos) {
    host = authority.substr(0, colon);
    port = authority.substr(colon + 1);
  }
  if (!authority.starts_with('[') && host.find_first_of(":[]") != std::string_view::npos)
    return url;
  unsigned number = DefaultPortOf(url.scheme);
  if (!IsHost(host) || !ParsePort(port, number)) return url;
  url.host.assign(host);
  url.port = number;
  return url;
}

std::string ServerAddressOf(const ServerUrl& url) {
  if (url.host.empty()) return {};
  std::string address = url.scheme + "://" + url.host;
  if (url.port != 0 && url.port != 80 && url.port != 443) {
    char port[16];
    std::snprintf(port, sizeof port, ":%u", url.port);
    address += port;
  }
  return address + "/";
}

std::string FormServerAddress(std::string_view typed) {
  return ServerAddressOf(SplitServerUrl(typed));
}

}  // namespace fx::server
