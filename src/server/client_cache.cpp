#include "server/client_cache.h"

#include <map>
#include <memory>

#include "host/editor.h"

namespace fx::server {
namespace {

struct ClientCache {
  std::map<std::string, std::unique_ptr<ProgressDrawingAPIPortBindingProxy>> clients;
  StatusCallback status = nullptr;
  PercentCallback percent = nullptr;
  TransferCallback transfer = nullptr;
};

// Made on first use and never destroyed: clients may still be reachable
// from callbacks while static objects are torn down.
ClientCache& Cache() {
  static ClientCache* cache = new ClientCache;
  return *cache;
}

}  // namespace

std::string EndpointOf(const std::string& server_key) {
  if (server_key == kDefaultServerKey) return {};
  return server_key + kServicePath;
}

ProgressDrawingAPIPortBindingProxy* GetClient(const std::string& server_key) {
  ClientCache& cache = Cache();
  auto found = cache.clients.find(server_key);
  if (found != cache.clients.end()) return found->second.get();
  const std::string endpoint = EndpointOf(server_key);
  auto client = std::make_unique<ProgressDrawingAPIPortBindingProxy>(
      endpoint.empty() ? nullptr : endpoint.c_str());
  client->percent_callback = cache.percent;
  client->status_callback = cache.status;
  client->transfer_callback = cache.transfer;
  return cache.clients.emplace(server_key, std::move(client)).first->second.get();
}

ProgressDrawingAPIPortBindingProxy* FindClient(const std::string& server_key) {
  ClientCache& cache = Cache();
  auto found = cache.clients.find(server_key);
  return found == cache.clients.end() ? nullptr : found->second.get();
}

void ResetClient(const std::string& server_key) {
  ProgressDrawingAPIPortBindingProxy* client = FindClient(server_key);
  if (client == nullptr) {
    acutPrintf("\nPlanVault: Reset failed.");
    return;
  }
  client->call_in_progress = false;
  client->destroy();
}

void SetCallbacks(StatusCallback status, PercentCallback percent) {
  Cache().status = status;
  Cache().percent = percent;
}

void SetTransferCallback(TransferCallback transfer) { Cache().transfer = transfer; }

}  // namespace fx::server
