// What several benchmarks share: a terminal that drops the transcript, the
// layers and tags bench/floorgen writes, and numbers printed with grouping.
#ifndef FLOORXPORT_BENCH_BENCH_SUPPORT_H_
#define FLOORXPORT_BENCH_BENCH_SUPPORT_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "host/dxf/console/terminal.h"
#include "rooms/room_identification.h"

namespace fx::bench {

// The transcript is not wanted in a benchmark.
class QuietTerminal : public fx::console::Terminal {
 public:
  void WriteOut(std::string_view) override {}
  void WriteErr(std::string_view) override {}
  bool ReadLine(std::string&) override { return false; }
  bool inputIsTerminal() const override { return false; }
  bool errorIsTerminal() const override { return false; }
};

// Block mode on a floor written by floorgen.
inline fx::rooms::ConvertOptions FloorgenLayers() {
  fx::rooms::ConvertOptions options;
  options.floor_layer = "FloorArea";
  options.contour_layer = "RoomContours";
  options.mode = fx::rooms::IdentificationMode::kBlock;
  options.block_name = "ROOMTAG";
  options.name_tag = "NAME";
  options.category_tag = "CATEGORY";
  options.description_tag = "DESCRIPTION";
  return options;
}

// 1234567 as "1,234,567".
inline std::string Grouped(uintmax_t value) {
  std::string digits = std::to_string(value);
  for (int at = static_cast<int>(digits.size()) - 3; at > 0; at -= 3) digits.insert(static_cast<size_t>(at), ",");
  return digits;
}

}  // namespace fx::bench

#endif  // FLOORXPORT_BENCH_BENCH_SUPPORT_H_
