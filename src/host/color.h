// Entity and layer colours: by layer, by block, an index of the 256-colour
// palette, or a true RGB colour.
#ifndef FLOORXPORT_HOST_COLOR_H_
#define FLOORXPORT_HOST_COLOR_H_

#include <cstdint>

class AcCmEntityColor {
 public:
  enum ColorMethod : uint8_t {
    kByLayer = 0xC0, kByBlock = 0xC1, kByColor = 0xC2, kByACI = 0xC3,
    kByPen = 0xC4, kForeground = 0xC5, kByDgnIndex = 0xC7, kNone = 0xC8,
  };
  static constexpr uint16_t kACIbyBlock = 0;
  static constexpr uint16_t kACIbyLayer = 256;
  static constexpr uint16_t kACIforeground = 7;

  AcCmEntityColor() = default;  // by layer
  static AcCmEntityColor fromIndex(uint16_t aci);
  static AcCmEntityColor fromRgb(uint8_t r, uint8_t g, uint8_t b);

  ColorMethod colorMethod() const { return method_; }
  // Index 256 for by layer, 0 for by block, 1..255 for palette colours; for
  // a true colour the nearest palette index is not computed: 0.
  uint16_t colorIndex() const { return index_; }
  uint8_t red() const { return static_cast<uint8_t>(rgb_ >> 16); }
  uint8_t green() const { return static_cast<uint8_t>(rgb_ >> 8); }
  uint8_t blue() const { return static_cast<uint8_t>(rgb_); }
  bool isByLayer() const { return method_ == kByLayer; }
  bool isByBlock() const { return method_ == kByBlock; }
  bool isByColor() const { return method_ == kByColor; }
  bool isByACI() const { return method_ == kByACI; }
  // 0xRRGGBB of this colour; palette colours through the palette. Meaningless
  // (black) for by layer and by block: resolve those first.
  uint32_t rgb() const;
  bool operator==(const AcCmEntityColor&) const = default;

 private:
  ColorMethod method_ = kByLayer;
  uint16_t index_ = kACIbyLayer;
  uint32_t rgb_ = 0;
};

using AcCmColor = AcCmEntityColor;

// 0xRRGGBB of a palette index 1..255; 7 (white/black) gives white. Other
// values give black.
uint32_t acedGetRGB(int aci);

#endif  // FLOORXPORT_HOST_COLOR_H_
