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

#include <memory>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include "svg/svg_options.h"
#include "svg/xml_text.h"

namespace fx::svg {

inline constexpr const char* kViewBoxClipId = "clipViewBoxPolyExt";
inline constexpr const char* kSvgVersion = "1.1";

// The document written as text while the drawing is rendered: the fixed
// part for `frame`, whose view box is "0 0 width height" ("%.6g"), the
// frame in SVG coordinates, whose corners the clip path visits in the order
// of the frame outline: (min x, min y), (min x, max y), (max x, max y),
// (max x, min y); the <defs> when something was defined; the drawing.
class SvgText {
 public:
  explicit SvgText(const Frame& frame);
  SvgText(const SvgText&) = delete;
  SvgText& operator=(const SvgText&) = delete;

  // The <g> that receives the drawing.
  XmlElement Drawing() const { return drawing_element_; }
  // Starts an element `name` after the others in <defs>; *slot tells it to
  // DropDefinition.
  XmlElement Define(const char* name, size_t* slot = nullptr);
  // Leaves a definition out of the document.
  void DropDefinition(size_t slot) { definitions_[slot].reset(); }

  // The text, its declaration naming `encoding`.
  void Write(pugi::xml_writer& writer, const char* encoding = "UTF-8") const;
  std::string Text() const;
  // The document parsed as a tree (which writes the same text).
  std::unique_ptr<pugi::xml_document> Document() const;
  // Its <svg> element parsed as the last child of `parent`; returned.
  pugi::xml_node AppendTo(pugi::xml_node parent) const;

 private:
  std::string head_;  // <svg ...><clipPath ...>...</clipPath>
  std::vector<std::unique_ptr<XmlText>> definitions_;  // null: left out
  XmlText drawing_;   // the drawing's <g>
  XmlElement drawing_element_;
};

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
// The same for the text of a rendered document.
void WriteDocument(const SvgText& document, pugi::xml_writer& writer, unsigned code_page);

}  // namespace fx::svg

#endif  // FLOORXPORT_SVG_SVG_DOCUMENT_H_
