// MTOM attachments without gSOAP's intermediate copies. Received, each
// attachment is written into one buffer sized from the request's length
// (gSOAP would collect it in 1 KiB blocks and then copy it whole); sent,
// each is read from the reply's buffer (which also spares gSOAP's scan of
// every attachment for its random MIME boundary).
#ifndef FLOORXPORT_TOOLS_VANTORY_DEVSERVER_MIME_STREAM_H_
#define FLOORXPORT_TOOLS_VANTORY_DEVSERVER_MIME_STREAM_H_

#include <cstddef>
#include <span>

struct soap;
class xsd__base64Binary;

namespace fx::devserver {

class ReceivedAttachment {
 public:
  explicit ReceivedAttachment(std::size_t expected);
  ~ReceivedAttachment();
  ReceivedAttachment(const ReceivedAttachment&) = delete;
  ReceivedAttachment& operator=(const ReceivedAttachment&) = delete;

  bool Append(const char* bytes, std::size_t n);  // false: out of memory
  std::span<const unsigned char> bytes() const { return {data_, size_}; }

 private:
  unsigned char* data_ = nullptr;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

// Sets the MIME streaming callbacks on `soap` (the listening context, so
// that every connection's copy has them).
void InstallMimeStreaming(struct soap* soap);

// The bytes of a received base64Binary: an MTOM attachment of the
// connection's request (whose __ptr is the attachment's handle) or inline
// data.
std::span<const unsigned char> ReceivedBytes(struct soap* soap, const xsd__base64Binary& binary);

}  // namespace fx::devserver

#endif  // FLOORXPORT_TOOLS_VANTORY_DEVSERVER_MIME_STREAM_H_
