// Fuzz entry for the drawing service client's reading of replies: the input is
// a whole HTTP reply (status line, headers, then a plain, chunked or MTOM body),
// given to each of the client's calls in turn through the runtime's transport
// hooks in place of a connection. Every call ends in a result; a failure gets
// its error report (which reads the fault); a downloaded file's bytes are all
// readable.
#include <fcntl.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <vector>

#include "server/client_cache.h"
#include "server/service_calls.h"
#include "server/service_errors.h"

namespace {

constexpr const char* kServerKey = "http://fuzz.invalid/";

struct Reply {
  const uint8_t* next = nullptr;
  size_t left = 0;
} g_reply;

// A descriptor that stands for the connection; nothing is read or written through it.
SOAP_SOCKET Connect(struct soap*, const char*, const char*, int) {
  static const int fd = ::open("/dev/null", O_RDWR | O_CLOEXEC);
  return fd;
}
int Disconnect(struct soap*) { return SOAP_OK; }
int Send(struct soap*, const char*, size_t) { return SOAP_OK; }
size_t Receive(struct soap*, char* buffer, size_t size) {
  const size_t count = size < g_reply.left ? size : g_reply.left;
  std::memcpy(buffer, g_reply.next, count);
  g_reply.next += count;
  g_reply.left -= count;
  return count;
}

ProgressDrawingAPIPortBindingProxy* Client() {
  ProgressDrawingAPIPortBindingProxy* client = fx::server::GetClient(kServerKey);
  client->soap->fopen = Connect;
  client->soap->fclose = Disconnect;
  client->saved_fsend = Send;
  client->saved_frecv = Receive;
  return client;
}

void Expect(int result, const char* operation) {
  if (result == SOAP_OK) return;
  if (fx::server::CallErrorReport(kServerKey, result, operation).empty()) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static ProgressDrawingAPIPortBindingProxy* const client = Client();
  auto replay = [&] { g_reply = {data, size}; };

  replay();
  std::vector<fx::server::BuildingEntry> buildings;
  Expect(fx::server::ListBuildingsAndFloors(kServerKey, buildings), "getBuildingsAndFloors");

  replay();
  int floor_id = 0;
  Expect(fx::server::CreateFloor(kServerKey, 12, "Floor", floor_id), "createFloor");

  replay();
  std::span<const unsigned char> file;
  const int downloaded = fx::server::DownloadDrawingFile(kServerKey, 120, file);
  Expect(downloaded, "getDWG");
  if (downloaded == SOAP_OK) {
    unsigned sum = 0;
    for (unsigned char byte : file) sum += byte;
    (void)sum;
  }

  replay();
  const unsigned char drawing[] = "0\nEOF\n";
  fx::server::Upload upload;
  upload.floor_id = 120;
  upload.drawing_file = drawing;
  upload.floor_document = drawing;
  upload.binary_format = "DXF";
  Expect(fx::server::UploadDrawing(kServerKey, upload), "setDrawing");
  // What the replies left is freed, as the next call would, so that every run
  // frees what it allocates and the leak check stays quiet but for real leaks.
  client->destroy();
  return 0;
}
