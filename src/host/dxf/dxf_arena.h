#ifndef FX_HOST_DXF_DXF_ARENA_H_
#define FX_HOST_DXF_DXF_ARENA_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace fx::dxf {

// Append-only text storage. Text stored here never moves, so views of it stay valid for the
// arena's life. Chunks grow geometrically, which keeps their number small for Contains().
class Arena {
 public:
  Arena() = default;
  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;

  std::string_view Store(std::string_view text);

  // Whether `text` lies in storage handed out by this arena.
  bool Contains(std::string_view text) const;

  size_t bytes_allocated() const { return bytes_allocated_; }

 private:
  struct Chunk {
    std::unique_ptr<char[]> data;
    size_t size;
  };
  static constexpr size_t kFirstChunkSize = 16 * 1024;
  static constexpr size_t kMaxChunkSize = 4 * 1024 * 1024;

  char* Allocate(size_t size);

  std::vector<Chunk> chunks_;
  char* cursor_ = nullptr;
  size_t remaining_ = 0;
  size_t next_chunk_size_ = kFirstChunkSize;
  size_t bytes_allocated_ = 0;
};

}  // namespace fx::dxf

#endif  // FX_HOST_DXF_DXF_ARENA_H_
