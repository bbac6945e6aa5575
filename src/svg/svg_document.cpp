#include "svg/svg_document.h"

#include <cstdio>
#include <stdexcept>
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

struct StringWriter : pugi::xml_writer {
  std::string text;
  void write(const void* data, size_t size) override { text.append(static_cast<const char*>(data), size); }
};

// Values as written: no whitespace folded, no line ends changed.
constexpr unsigned kParseFlags = pugi::parse_escapes | pugi::parse_ws_pcdata;

void CheckParsed(const pugi::xml_parse_result& parsed) {
  if (!parsed) throw std::runtime_error(std::string("rendered SVG does not parse: ") + parsed.description());
}

void Corner(std::string& d, char command, double x, double y) {
  if (!d.empty()) d += ' ';
  d += command;
  AppendGeneral(d, x, 6);
  d += ',';
  AppendGeneral(d, y, 6);
}

}  // namespace

SvgText::SvgText(const Frame& frame) {
  const double width = frame.width(), height = frame.height();
  std::string view_box;
  for (double value : {0.0, 0.0, width, height}) {
    if (!view_box.empty()) view_box += ' ';
    AppendGeneral(view_box, value, 6);
  }
  // World (min x, min y) is SVG (0, height); (max x, max y) is (width, 0).
  std::string d;
  Corner(d, 'M', 0, height);
  Corner(d, 'L', 0, 0);
  Corner(d, 'L', width, 0);
  Corner(d, 'L', width, height);
  d += " Z";
  // Numbers and constants: nothing in them needs escaping.
  head_ = std::string("<svg xmlns=\"") + kSvgNamespace + "\" xmlns:ss=\"" + kProgramNamespace + "\" xmlns:xlink=\"" +
          kXlinkNamespace + "\" viewBox=\"" + view_box + "\" version=\"" + kSvgVersion +
          "\" stroke-linecap=\"butt\" stroke-linejoin=\"miter\"><clipPath id=\"" + kViewBoxClipId +
          "\"><path d=\"" + d + "\"/></clipPath>";
  drawing_element_ = drawing_.Top("g");
  drawing_element_.Attribute("clip-path", "url(#clipViewBoxPolyExt)")
      .Attribute("stroke", "#000000")
      .Attribute("stroke-width", "0.01mm")
      .Attribute("fill", "none");
}

XmlElement SvgText::Define(const char* name, size_t* slot) {
  if (slot != nullptr) *slot = definitions_.size();
  definitions_.push_back(std::make_unique<XmlText>());
  return definitions_.back()->Top(name);
}

void SvgText::Write(pugi::xml_writer& writer, const char* encoding) const {
  const std::string declaration = std::string("<?xml version=\"1.0\" encoding=\"") + encoding + "\"?>";
  writer.write(declaration.data(), declaration.size());
  writer.write(head_.data(), head_.size());
  bool defined = false;
  for (const std::unique_ptr<XmlText>& definition : definitions_) {
    if (definition == nullptr) continue;
    if (!defined) writer.write("<defs>", 6);
    defined = true;
    definition->Write(writer);
  }
  if (defined) writer.write("</defs>", 7);
  drawing_.Write(writer);
  writer.write("</svg>", 6);
}

std::string SvgText::Text() const {
  StringWriter writer;
  Write(writer);
  return std::move(writer.text);
}

std::unique_ptr<pugi::xml_document> SvgText::Document() const {
  const std::string text = Text();
  auto document = std::make_unique<pugi::xml_document>();
  CheckParsed(document->load_buffer(text.data(), text.size(), kParseFlags | pugi::parse_declaration,
                                    pugi::encoding_utf8));
  return document;
}

pugi::xml_node SvgText::AppendTo(pugi::xml_node parent) const {
  const std::string text = Text();
  CheckParsed(parent.append_buffer(text.data(), text.size(), kParseFlags, pugi::encoding_utf8));
  return parent.last_child();
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

void WriteDocument(const SvgText& document, pugi::xml_writer& writer, unsigned code_page) {
  const char* charset = CodePageXmlName(code_page);
  if (code_page == kCodePageUtf8 || charset == nullptr) {
    document.Write(writer);
    return;
  }
  CodePageWriter encoded(writer, code_page);
  document.Write(encoded, charset);
  encoded.Flush();
}

std::string DocumentText(const pugi::xml_document& document) {
  StringWriter writer;
  WriteDocument(document, writer);
  return std::move(writer.text);
}

}  // namespace fx::svg
