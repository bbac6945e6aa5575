#include "mime_stream.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "connection.h"
#include "soapH.h"

namespace fx::devserver {
namespace {

void* WriteOpen(struct soap* soap, void*, const char*, const char*, const char*,
                enum soap_mime_encoding) {
  Connection* connection = ConnectionOf(soap);
  if (!connection) return nullptr;  // gSOAP then collects the part itself
  // The rest of the request bounds the attachment; malloc maps a large
  // buffer lazily, so only what arrives takes memory.
  std::size_t expected = 0;
  if (soap->length > soap->count) expected = static_cast<std::size_t>(soap->length - soap->count);
  connection->attachments.push_back(std::make_unique<ReceivedAttachment>(expected));
  return connection->attachments.back().get();
}

int Write(struct soap*, void* handle, const char* bytes, std::size_t n) {
  return static_cast<ReceivedAttachment*>(handle)->Append(bytes, n) ? SOAP_OK : SOAP_EOM;
}

void WriteClose(struct soap*, void*) {}

// Sending: the handle is the binary's __ptr, the data itself; gSOAP asks
// for exactly its __size bytes in order.
struct Cursor {
  const char* next;
};

void* ReadOpen(struct soap* soap, void* handle, const char*, const char*, const char*) {
  auto* cursor = static_cast<Cursor*>(soap_malloc(soap, sizeof(Cursor)));
  if (cursor) cursor->next = static_cast<const char*>(handle);
  return cursor;
}

std::size_t Read(struct soap*, void* handle, char* buffer, std::size_t n) {
  auto* cursor = static_cast<Cursor*>(handle);
  std::memcpy(buffer, cursor->next, n);
  cursor->next += n;
  return n;
}

void ReadClose(struct soap*, void*) {}

}  // namespace

ReceivedAttachment::ReceivedAttachment(std::size_t expected) {
  if (expected > 0) {
    data_ = static_cast<unsigned char*>(std::malloc(expected));
    if (data_) capacity_ = expected;
  }
}

ReceivedAttachment::~ReceivedAttachment() { std::free(data_); }

bool ReceivedAttachment::Append(const char* bytes, std::size_t n) {
  if (n == 0) return true;
  if (size_ + n > capacity_) {
    const std::size_t capacity = std::max(size_ + n, 2 * capacity_ + 65536);
    auto* grown = static_cast<unsigned char*>(std::realloc(data_, capacity));
    if (!grown) return false;
    data_ = grown;
    capacity_ = capacity;
  }
  std::memcpy(data_ + size_, bytes, n);
  size_ += n;
  return true;
}

void InstallMimeStreaming(struct soap* soap) {
  soap->fmimewriteopen = WriteOpen;
  soap->fmimewrite = Write;
  soap->fmimewriteclose = WriteClose;
  soap->fmimereadopen = ReadOpen;
  soap->fmimeread = Read;
  soap->fmimereadclose = ReadClose;
}

std::span<const unsigned char> ReceivedBytes(struct soap* soap, const xsd__base64Binary& binary) {
  if (Connection* connection = ConnectionOf(soap)) {
    for (const auto& attachment : connection->attachments) {
      if (static_cast<const void*>(binary.__ptr) == attachment.get()) return attachment->bytes();
    }
  }
  if (!binary.__ptr || binary.__size <= 0) return {};
  return {binary.__ptr, static_cast<std::size_t>(binary.__size)};
}

}  // namespace fx::devserver
