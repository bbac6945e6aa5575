#include "server/http_get.h"

#include <curl/curl.h>

#include <cstring>
#include <mutex>

#include "server/tls_policy.h"

namespace fx::server {
namespace {

constexpr long kConnectTimeoutSeconds = 10;
// Slower than this many bytes a second for kStallSeconds fails the call: a
// server that accepted the request and stopped answering, or that trickles
// its answer a few bytes at a time.
constexpr long kStallBytesPerSecond = 100;
constexpr long kStallSeconds = 10;
// The longest a whole reply may take, however it trickles in.
constexpr long kOverallTimeoutSeconds = 300;

struct Sink {
  std::string* body;
  size_t max_bytes;
  bool too_large = false;
};

size_t Write(char* data, size_t size, size_t count, void* user) {
  auto* sink = static_cast<Sink*>(user);
  const size_t bytes = size * count;
  if (bytes > sink->max_bytes - sink->body->size()) {
    sink->too_large = true;
    return 0;  // ends the transfer with CURLE_WRITE_ERROR
  }
  sink->body->append(data, bytes);
  return bytes;
}

// The header list holds the log-in: wiped before libcurl frees it.
struct HeaderList {
  curl_slist* list = nullptr;
  ~HeaderList() {
    for (curl_slist* item = list; item != nullptr; item = item->next) {
      volatile char* bytes = item->data;
      for (size_t i = 0; bytes[i] != '\0'; ++i) bytes[i] = '\0';
    }
    curl_slist_free_all(list);
  }
};

std::string Megabytes(size_t bytes) { return std::to_string(bytes / (1024 * 1024)) + " MB"; }

}  // namespace

HttpReply HttpGet(const std::string& url, const std::vector<std::string>& headers,
                  const char* user_agent, size_t max_bytes) {
  static std::once_flag global_init;
  std::call_once(global_init, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });

  HttpReply reply;
  CURL* curl = curl_easy_init();
  if (curl == nullptr) {
    reply.error = "The HTTP library could not be started.";
    return reply;
  }
  HeaderList list;
  for (const std::string& header : headers) {
    curl_slist* longer = curl_slist_append(list.list, header.c_str());
    if (longer == nullptr) {
      curl_easy_cleanup(curl);
      reply.error = "Out of memory.";
      return reply;
    }
    list.list = longer;
  }
  char details[CURL_ERROR_SIZE] = "";
  Sink sink{&reply.body, max_bytes};
  curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
  curl_easy_setopt(curl, CURLOPT_HTTPGET, 1L);
  curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 0L);
  curl_easy_setopt(curl, CURLOPT_USERAGENT, user_agent);
  curl_easy_setopt(curl, CURLOPT_HTTPHEADER, list.list);
  curl_easy_setopt(curl, CURLOPT_ACCEPT_ENCODING, "");
  curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, kConnectTimeoutSeconds);
  curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, kStallBytesPerSecond);
  curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, kStallSeconds);
  curl_easy_setopt(curl, CURLOPT_TIMEOUT, kOverallTimeoutSeconds);
  // As the drawing service client (see tls_policy.h).
  const TlsPolicy tls = CurrentTlsPolicy();
  curl_easy_setopt(curl, CURLOPT_SSL_VERIFYPEER, tls.verify ? 1L : 0L);
  curl_easy_setopt(curl, CURLOPT_SSL_VERIFYHOST, tls.verify ? 2L : 0L);
  if (tls.verify && !tls.ca_file.empty()) curl_easy_setopt(curl, CURLOPT_CAINFO, tls.ca_file.c_str());
  curl_easy_setopt(curl, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(max_bytes));
  curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, Write);
  curl_easy_setopt(curl, CURLOPT_WRITEDATA, &sink);
  curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, details);

  const CURLcode result = curl_easy_perform(curl);
  long status = 0;
  curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &status);
  curl_easy_cleanup(curl);
  reply.status = static_cast<int>(status);
  if (result == CURLE_OK) return reply;

  reply.body.clear();
  if (sink.too_large || result == CURLE_FILESIZE_EXCEEDED) {
    reply.error = "The answer is larger than " + Megabytes(max_bytes) + ".";
    return reply;
  }
  if (result == CURLE_OPERATION_TIMEDOUT) {
    reply.error = "The server did not answer in time.";
  } else {
    reply.error = curl_easy_strerror(result);
    reply.error += ".";
  }
  if (details[0] != '\0') reply.error += std::string(" (") + details + ")";
  return reply;
}

}  // namespace fx::server
