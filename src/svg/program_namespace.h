// The XML namespaces of the plug-in's documents. The program's own
// namespace is bound to the prefix "ss" in the SVG (ss:lid, ss:color, ss:lw)
// and is the default namespace of the floor document that embeds the SVG;
// both modules take it from here so they always agree.
#ifndef FLOORXPORT_SVG_PROGRAM_NAMESPACE_H_
#define FLOORXPORT_SVG_PROGRAM_NAMESPACE_H_

namespace fx {

inline constexpr const char* kProgramNamespace = "http://www.vantory.example/planvault/2010";
inline constexpr const char* kProgramPrefix = "ss";
inline constexpr const char* kSvgNamespace = "http://www.w3.org/2000/svg";
inline constexpr const char* kXlinkNamespace = "http://www.w3.org/1999/xlink";

}  // namespace fx

#endif  // FLOORXPORT_SVG_PROGRAM_NAMESPACE_H_
