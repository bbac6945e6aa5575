// Stubs by handle, in two sorted arrays: handles read from the file (and
// new ones, which always exceed them) and handles made up in memory for
// records without one. Sixteen bytes an object and no allocation per object,
// where a hash map costs three times that on drawings of a million objects.
#ifndef FLOORXPORT_HOST_DXF_HANDLE_INDEX_H_
#define FLOORXPORT_HOST_DXF_HANDLE_INDEX_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "host/dxf/db_stub.h"

namespace fx::dxf {

// Handles made up in memory start here, far above any a drawing writes.
inline constexpr uint64_t kFirstSyntheticHandle = uint64_t{1} << 62;

class HandleIndex {
 public:
  // Room for `objects` handles read from the file, before they are added.
  void Reserve(size_t objects);
  // While a drawing is indexed: stubs in any order; nothing is found until Seal.
  void Add(AcDbStub* stub);
  // Sorts what was added. When two stubs share a handle, returns them (the
  // one added first, then the other) and the index must not be used.
  std::pair<AcDbStub*, AcDbStub*> Seal();
  // After sealing: a stub whose handle is new to the index.
  void Insert(AcDbStub* stub);
  AcDbStub* Find(uint64_t handle) const;

 private:
  using Entry = std::pair<uint64_t, AcDbStub*>;
  std::vector<Entry>& ArrayFor(const AcDbStub* stub) { return stub->synthetic_handle ? synthetic_ : real_; }

  std::vector<Entry> real_;
  std::vector<Entry> synthetic_;
};

}  // namespace fx::dxf

#endif  // FLOORXPORT_HOST_DXF_HANDLE_INDEX_H_
