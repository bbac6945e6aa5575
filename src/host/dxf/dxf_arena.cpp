#include "host/dxf/dxf_arena.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace fx::dxf {

std::string_view Arena::Store(std::string_view text) {
  if (text.empty()) return {};
  char* copy = Allocate(text.size());
  std::memcpy(copy, text.data(), text.size());
  return {copy, text.size()};
}

bool Arena::Contains(std::string_view text) const {
  const auto begin = reinterpret_cast<uintptr_t>(text.data());
  const uintptr_t end = begin + text.size();
  // Newest first: the text a caller has just stored is the one most often asked about.
  for (auto chunk = chunks_.rbegin(); chunk != chunks_.rend(); ++chunk) {
    const auto chunk_begin = reinterpret_cast<uintptr_t>(chunk->data.get());
    if (begin >= chunk_begin && end <= chunk_begin + chunk->size) return true;
  }
  return false;
}

char* Arena::Allocate(size_t size) {
  if (size > remaining_) {
    // A text larger than the next chunk gets a chunk of its own size; the current chunk's
    // remainder is abandoned, which costs at most one small tail per chunk.
    const size_t chunk_size = std::max(size, next_chunk_size_);
    chunks_.push_back({std::make_unique_for_overwrite<char[]>(chunk_size), chunk_size});
    bytes_allocated_ += chunk_size;
    cursor_ = chunks_.back().data.get();
    remaining_ = chunk_size;
    next_chunk_size_ = std::min(next_chunk_size_ * 2, kMaxChunkSize);
  }
  char* result = cursor_;
  cursor_ += size;
  remaining_ -= size;
  return result;
}

}  // namespace fx::dxf
