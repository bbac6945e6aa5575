#include "svg/svg_document.h"

#include "svg/program_namespace.h"
#include "svg/svg_number.h"

namespace fx::svg {
namespace {

constexpr unsigned kSaveFlags = pugi::format_raw;

void Corner(std::string& d, char command, double x, double y) {
  if (!d.empty()) d += ' ';
  d += command;
  AppendGeneral(d, x, 6);
  d += ',';
  AppendGeneral(d, y, 6);
}

}  // namespace

SvgSkeleton StartDocument(pugi::xml_document& document, const Frame& frame) {
  pugi::xml_node declaration = document.append_child(pugi::node_declaration);
  declaration.append_attribute("version") = "1.0";
  declaration.append_attribute("encoding") = "UTF-8";

  const double width = frame.width(), height = frame.height();
  SvgSkeleton skeleton;
  skeleton.root = document.append_child("svg");
  pugi::xml_node& root = skeleton.root;
  root.append_attribute("xmlns") = kSvgNamespace;
  root.append_attribute("xmlns:ss") = kProgramNamespace;
  root.append_attribute("xmlns:xlink") = kXlinkNamespace;
  std::string view_box;
  for (double value : {0.0, 0.0, width, height}) {
    if (!view_box.empty()) view_box += ' ';
    AppendGeneral(view_box, value, 6);
  }
  root.append_attribute("viewBox") = view_box.c_str();
  root.append_attribute("version") = kSvgVersion;
  root.append_attribute("stroke-linecap") = "butt";
  root.append_attribute("stroke-linejoin") = "miter";

  skeleton.clip = root.append_child("clipPath");
  skeleton.clip.append_attribute("id") = kViewBoxClipId;
  // World (min x, min y) is SVG (0, height); (max x, max y) is (width, 0).
  std::string d;
  Corner(d, 'M', 0, height);
  Corner(d, 'L', 0, 0);
  Corner(d, 'L', width, 0);
  Corner(d, 'L', width, height);
  d += " Z";
  skeleton.clip.append_child("path").append_attribute("d") = d.c_str();

  skeleton.drawing = root.append_child("g");
  skeleton.drawing.append_attribute("clip-path") = "url(#clipViewBoxPolyExt)";
  skeleton.drawing.append_attribute("stroke") = "#000000";
  skeleton.drawing.append_attribute("stroke-width") = "0.01mm";
  skeleton.drawing.append_attribute("fill") = "none";
  return skeleton;
}

pugi::xml_node Definitions(const SvgSkeleton& skeleton) {
  pugi::xml_node defs = skeleton.root.child("defs");
  if (!defs) {
    pugi::xml_node root = skeleton.root;
    defs = root.insert_child_after("defs", skeleton.clip);
  }
  return defs;
}

void WriteDocument(const pugi::xml_document& document, pugi::xml_writer& writer) {
  document.save(writer, "", kSaveFlags, pugi::encoding_utf8);
}

std::string DocumentText(const pugi::xml_document& document) {
  struct StringWriter : pugi::xml_writer {
    std::string text;
    void write(const void* data, size_t size) override { text.append(static_cast<const char*>(data), size); }
  } writer;
  WriteDocument(document, writer);
  return std::move(writer.text);
}

}  // namespace fx::svg
