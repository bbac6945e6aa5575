// Layers of the drawing and their properties.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace floorgen {

inline constexpr std::string_view kLayerZero = "0";
inline constexpr std::string_view kLayerDefpoints = "Defpoints";
inline constexpr std::string_view kLayerFloorArea = "FloorArea";
inline constexpr std::string_view kLayerRoomContours = "RoomContours";
inline constexpr std::string_view kLayerWalls = "Walls";
inline constexpr std::string_view kLayerDoors = "Doors";
inline constexpr std::string_view kLayerRoomTags = "RoomTags";
inline constexpr std::string_view kLayerRoomNames = "RoomNames";
inline constexpr std::string_view kLayerRoomTypes = "RoomTypes";
inline constexpr std::string_view kLayerRoomDescriptions = "RoomDescriptions";
inline constexpr std::string_view kLayerHatches = "Hatches";
inline constexpr std::string_view kLayerDimensions = "Dimensions";
inline constexpr std::string_view kLayerTitle = "Title";

inline constexpr std::string_view kLinetypeContinuous = "Continuous";
inline constexpr std::string_view kLinetypeDashed = "DASHED";

inline constexpr int kLineweightDefault = -3;
inline constexpr std::uint32_t kNoTrueColor = 0xFFFFFFFF;

struct LayerProperties {
  std::string_view name;
  int color;  // ACI colour number
  std::uint32_t true_color;  // 0xRRGGBB, or kNoTrueColor
  std::string_view linetype;
  int lineweight;  // hundredths of a millimetre, or kLineweightDefault
  bool plotted;
};

inline constexpr std::array<LayerProperties, 13> kLayers = {{
    {kLayerZero, 7, kNoTrueColor, kLinetypeContinuous, kLineweightDefault, true},
    // Definition points of dimensions are never plotted.
    {kLayerDefpoints, 7, kNoTrueColor, kLinetypeContinuous, kLineweightDefault, false},
    {kLayerFloorArea, 8, kNoTrueColor, kLinetypeContinuous, kLineweightDefault, true},
    {kLayerRoomContours, 3, kNoTrueColor, kLinetypeDashed, kLineweightDefault, true},
    {kLayerWalls, 7, kNoTrueColor, kLinetypeContinuous, 50, true},
    {kLayerDoors, 4, kNoTrueColor, kLinetypeContinuous, 18, true},
    // A true colour (orange) with its nearest ACI colour for older readers.
    {kLayerRoomTags, 30, 0xE67E22, kLinetypeContinuous, kLineweightDefault, true},
    {kLayerRoomNames, 1, kNoTrueColor, kLinetypeContinuous, kLineweightDefault, true},
    {kLayerRoomTypes, 5, kNoTrueColor, kLinetypeContinuous, kLineweightDefault, true},
    {kLayerRoomDescriptions, 6, kNoTrueColor, kLinetypeContinuous, kLineweightDefault, true},
    {kLayerHatches, 9, kNoTrueColor, kLinetypeContinuous, kLineweightDefault, true},
    {kLayerDimensions, 2, kNoTrueColor, kLinetypeContinuous, kLineweightDefault, true},
    {kLayerTitle, 250, kNoTrueColor, kLinetypeContinuous, kLineweightDefault, true},
}};

}  // namespace floorgen
