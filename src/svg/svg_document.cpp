#include "svg/svg_document.h"

#include <cstdio>
#include <string_view>

#include "host/code_page.h"
#include "svg/program_namespace.h"
#include "svg/svg_number.h"

namespace fx::svg {
namespace {

constexpr unsigned kSaveFlags = pugi::format_raw;

// Passes the UTF-8 text pugixml writes on in a code page, character by
// character; a character the page cannot hold becomes a character
// reference. A character cut by the end of one write waits for the next.
class CodePageWriter : public pugi::xml_writer {
 public:
  CodePageWriter(pugi::xml_writer& out, unsigned code_page) : out_(out), encoder_(code_page, CodePageUse::kXml) {}

  void write(const void* data, size_t size) override {
    pending_.append(static_cast<const char*>(data), size);
    std::string converted;
    converted.reserve(pending_.size());
    size_t pos = 0;
    while (pos < pending_.size()) {
      const auto lead = static_cast<unsigned char>(pending_[pos]);
      if (lead < 0x80) {
        converted.push_back(static_cast<char>(lead));
        ++pos;
        continue;
      }
      const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
      if (pos + length > pending_.size()) break;
      char32_t c = length == 1 ? 0xFFFD : lead & (0x7F >> length);
      for (size_t i = 1; i < length; ++i) c = (c << 6) | (static_cast<unsigned char>(pending_[pos + i]) & 0x3F);
      if (!encoder_.Append(c, &converted)) {
        char reference[16];
        std::snprintf(reference, sizeof reference, "&#x%X;", static_cast<unsigned>(c));
        converted += reference;
      }
      pos += length;
    }
    pending_.erase(0, pos);
    out_.write(converted.data(), converted.size());
  }

  // What is left at the end: a character cut short, written as U+FFFD.
  void Flush() {
    if (pending_.empty()) return;
    pending_.clear();
    write("\xEF\xBF\xBD", 3);
  }

 private:
  pugi::xml_writer& out_;
  fx::CodePageEncoder encoder_;
  std::string pending_;
};

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

void WriteDocument(const pugi::xml_document& document, pugi::xml_writer& writer, unsigned code_page) {
  const char* charset = CodePageXmlName(code_page);
  if (code_page == kCodePageUtf8 || charset == nullptr) {
    WriteDocument(document, writer);
    return;
  }
  CodePageWriter encoded(writer, code_page);
  for (const pugi::xml_node node : document.children()) {
    if (node.type() != pugi::node_declaration) {
      node.print(encoded, "", kSaveFlags, pugi::encoding_utf8);
      continue;
    }
    std::string declaration = std::string("<?") + node.name();
    for (const pugi::xml_attribute attribute : node.attributes()) {
      const bool encoding = std::string_view(attribute.name()) == "encoding";
      declaration += std::string(" ") + attribute.name() + "=\"" + (encoding ? charset : attribute.value()) + "\"";
    }
    declaration += "?>";
    encoded.write(declaration.data(), declaration.size());
  }
  encoded.Flush();
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
