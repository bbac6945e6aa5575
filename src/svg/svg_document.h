// The SVG document's fixed part and its text.
//
// <svg xmlns xmlns:ss xmlns:xlink viewBox version stroke-linecap stroke-linejoin>
//   <clipPath id="clipViewBoxPolyExt"><path d="M.. L.. L.. L.. Z"/></clipPath>
//   <defs>...</defs>            (only when something needs it)
//   <g clip-path="url(#clipViewBoxPolyExt)" stroke="#000000"
//      stroke-width="0.01mm" fill="none">  the drawing  </g>
// </svg>
#ifndef FLOORXPORT_SVG_SVG_DOCUMENT_H_
#define FLOORXPORT_SVG_SVG_DOCUMENT_H_

#include <string>

#include <pugixml.hpp>

#include "svg/svg_options.h"

namespace fx::svg {

inline constexpr const char* kViewBoxClipId = "clipViewBoxPolyExt";
inline constexpr const char* kSvgVersion = "1.1";

struct SvgSkeleton {
  pugi::xml_node root;     // <svg>
  pugi::xml_node clip;     // the view-box <clipPath>
  pugi::xml_node drawing;  // the <g> that receives the drawing
};

// Adds the XML declaration and the fixed elements to an empty `document`
// for `frame`: its view box is "0 0 width height" ("%.6g"), the frame in
// SVG coordinates, whose corners the clip path visits in the order of the
// frame outline: (min x, min y), (min x, max y), (max x, max y), (max x, min y).
SvgSkeleton StartDocument(pugi::xml_document& document, const Frame& frame);

// The <defs> of the document, made after the view-box clip path the first
// time it is asked for.
pugi::xml_node Definitions(const SvgSkeleton& skeleton);

// The document as UTF-8 text, unindented, with its declaration.
std::string DocumentText(const pugi::xml_document& document);
// Writes the same text to a writer.
void WriteDocument(const pugi::xml_document& document, pugi::xml_writer& writer);
// Writes it in a Windows code page that has an XML name (CodePageXmlName
// in host/code_page.h), its declaration naming it ("windows-1252", "GBK");
// a character the page cannot hold is written as a character reference
// ("&#xD68C;"), which the drawing's names and texts may hold anywhere
// (element and attribute names are ASCII, and the document has no comments
// or CDATA). A page without an XML name gives the UTF-8 text.
void WriteDocument(const pugi::xml_document& document, pugi::xml_writer& writer, unsigned code_page);

}  // namespace fx::svg

#endif  // FLOORXPORT_SVG_SVG_DOCUMENT_H_
