#include "host/dxf/handle_index.h"

#include <algorithm>

namespace fx::dxf {
namespace {

bool ByHandle(const std::pair<uint64_t, AcDbStub*>& a, const std::pair<uint64_t, AcDbStub*>& b) {
  return a.first < b.first;
}

}  // namespace

void HandleIndex::Reserve(size_t objects) { real_.reserve(objects); }

void HandleIndex::Add(AcDbStub* stub) { ArrayFor(stub).emplace_back(stub->handle.value(), stub); }

std::pair<AcDbStub*, AcDbStub*> HandleIndex::Seal() {
  // Stable, so that of two equal handles the one read first comes first.
  for (std::vector<Entry>* array : {&real_, &synthetic_}) {
    // Writers mostly give handles in file order: then there is nothing to sort (and no
    // buffer of the array's size to allocate for it).
    if (!std::is_sorted(array->begin(), array->end(), ByHandle)) {
      std::stable_sort(array->begin(), array->end(), ByHandle);
    }
    auto equal = std::adjacent_find(array->begin(), array->end(),
                                    [](const Entry& a, const Entry& b) { return a.first == b.first; });
    if (equal != array->end()) return {equal->second, (equal + 1)->second};
  }
  return {nullptr, nullptr};
}

void HandleIndex::Insert(AcDbStub* stub) {
  std::vector<Entry>& array = ArrayFor(stub);
  Entry entry{stub->handle.value(), stub};
  // New handles grow, so this appends; the search keeps it right otherwise.
  if (array.empty() || array.back().first < entry.first) array.push_back(entry);
  else array.insert(std::upper_bound(array.begin(), array.end(), entry, ByHandle), entry);
}

AcDbStub* HandleIndex::Find(uint64_t handle) const {
  const std::vector<Entry>& array = handle >= kFirstSyntheticHandle ? synthetic_ : real_;
  auto it = std::lower_bound(array.begin(), array.end(), Entry{handle, nullptr}, ByHandle);
  return it != array.end() && it->first == handle ? it->second : nullptr;
}

}  // namespace fx::dxf
