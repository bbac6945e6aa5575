// A loopback HTTP peer that answers each connection with the next reply of
// a list: captured service replies in the framings the real service uses,
// and replies cut short. (A server that never answers is vantory-devserver
// --fault hang.)
#ifndef FLOORXPORT_TESTS_EXCHANGE_CANNED_SERVER_H_
#define FLOORXPORT_TESTS_EXCHANGE_CANNED_SERVER_H_

#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace fx::exchange_test {

struct CannedReply {
  std::string bytes;           // the whole HTTP response
  size_t cut_after = SIZE_MAX;  // close the connection after this many bytes
};

// HTTP framings of a SOAP body.
CannedReply PlainReply(const std::string& xml, int status = 200,
                       const std::string& content_type = "text/xml; charset=utf-8");
CannedReply ChunkedReply(const std::string& xml);
// Multipart/related with the XML as the root part and `attachment` under
// the content id `cid` (none when empty), chunked, as a Java service writes it.
CannedReply MtomReply(const std::string& xml, const std::string& cid = "",
                      const std::string& attachment = "");
CannedReply UnauthorizedReply();

class CannedServer {
 public:
  CannedServer();
  ~CannedServer();
  CannedServer(const CannedServer&) = delete;
  CannedServer& operator=(const CannedServer&) = delete;

  // "http://127.0.0.1:PORT/"
  std::string address() const;
  // Replies are used in order, one per connection; the last one repeats.
  void Push(CannedReply reply);
  // The requests received so far (headers and body).
  std::vector<std::string> requests();

 private:
  void Serve();
  void Answer(int connection);

  int listener_ = -1;
  int port_ = 0;
  std::mutex mutex_;
  bool stop_ = false;
  std::deque<CannedReply> replies_;
  std::vector<std::string> requests_;
  std::thread thread_;
};

// The text of a file of replies/.
std::string CapturedReply(const std::string& name);

}  // namespace fx::exchange_test

#endif  // FLOORXPORT_TESTS_EXCHANGE_CANNED_SERVER_H_
