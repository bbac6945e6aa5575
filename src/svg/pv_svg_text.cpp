// Text: one <text> element per line, its glyphs placed by a matrix that
// maps the text's own coordinates (x along the baseline, y down, one unit
// per unit of height) to output coordinates. Rotation, mirroring, the
// width factor and the obliquing angle are all in that matrix, so the
// text sits where the editor draws it whatever the font.
#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "svg/pv_svg_world_draw.h"
#include "svg/svg_escape.h"
#include "svg/svg_number.h"

using fx::svg::Box2;
using fx::svg::Point2;
using fx::svg::ResolvedStyle;

namespace {

// Capitals of common faces are 0.7 of the font size tall; a text's height
// is the height of its capitals.
constexpr double kCapHeight = 0.7;
// The widest a character is taken to be, and the depth of descenders, in
// units of font size: for the bounds that decide whether a text is kept.
constexpr double kWidestAdvance = 1.0;
constexpr double kDescender = 0.3;
// Font rasterisers fail on huge sizes (FreeType stops at 65,535 pixels per
// em): a larger size is divided by a power of ten, which the matrix takes.
constexpr double kMaxFontSize = 10000;
// An obliquing angle is kept within the editor's limit of 85 degrees.
constexpr double kMaxOblique = 85 * std::numbers::pi / 180;

bool EndsWithNoCase(std::string_view text, std::string_view suffix) {
  if (text.size() < suffix.size()) return false;
  return std::equal(suffix.begin(), suffix.end(), text.end() - static_cast<long>(suffix.size()),
                    [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == b; });
}

// The face named by a style: its typeface, else the name of a TrueType or
// OpenType font file without folder and extension; empty for a shape font.
std::string FaceOf(const AcGiTextStyle& style) {
  if (!style.typeface.empty()) return style.typeface;
  std::string_view file = style.file_name;
  if (!EndsWithNoCase(file, ".ttf") && !EndsWithNoCase(file, ".otf") && !EndsWithNoCase(file, ".ttc")) return {};
  size_t slash = file.find_last_of("/\\");
  if (slash != std::string_view::npos) file.remove_prefix(slash + 1);
  return std::string(file.substr(0, file.size() - 4));
}

// The font-stretch keyword nearest to a width factor; null for normal.
const char* Stretch(double width_factor) {
  struct Step {
    double factor;
    const char* keyword;
  };
  static constexpr Step kSteps[] = {
      {0.5, "ultra-condensed"}, {0.625, "extra-condensed"}, {0.75, "condensed"},
      {0.875, "semi-condensed"}, {1.0, nullptr},            {1.125, "semi-expanded"},
      {1.25, "expanded"},        {1.5, "extra-expanded"},   {2.0, "ultra-expanded"},
  };
  const Step* best = &kSteps[0];
  for (const Step& step : kSteps)
    if (std::abs(step.factor - width_factor) < std::abs(best->factor - width_factor)) best = &step;
  return best->keyword;
}

// The %%-codes of a text that is not raw: %%c, %%d, %%p, %%nnn and %%%;
// the underline and overline toggles %%u and %%o are dropped.
std::string ExpandCodes(std::string_view raw) {
  std::string out;
  for (size_t i = 0; i < raw.size(); ++i) {
    if (raw.compare(i, 2, "%%") != 0 || i + 2 >= raw.size()) {
      out += raw[i];
      continue;
    }
    const char code = static_cast<char>(std::tolower(static_cast<unsigned char>(raw[i + 2])));
    i += 2;
    if (code == 'c') out += "\xE2\x8C\x80";        // diameter
    else if (code == 'd') out += "\xC2\xB0";       // degree
    else if (code == 'p') out += "\xC2\xB1";       // plus-minus
    else if (code == '%') out += '%';
    else if (code == 'u' || code == 'o') continue;
    else if (std::isdigit(static_cast<unsigned char>(code)) && i + 2 < raw.size() &&
             std::isdigit(static_cast<unsigned char>(raw[i + 1])) && std::isdigit(static_cast<unsigned char>(raw[i + 2]))) {
      const int value = std::stoi(std::string(raw.substr(i, 3)));
      i += 2;
      if (value > 0 && value < 128) out += static_cast<char>(value);
    } else {
      out += "%%";
      out += raw[i];
    }
  }
  return out;
}

}  // namespace

bool PvSvgWorldDraw::text(const AcGePoint3d& position, const AcGeVector3d& normal, const AcGeVector3d& direction,
                          const char* text, bool raw, const AcGiTextStyle& style) {
  const ResolvedStyle& resolved = CurrentStyle();
  if (resolved.hidden || text == nullptr || !(style.text_size > 0) || !std::isfinite(style.text_size)) return false;
  const std::string content = raw ? fx::svg::TextContent(text) : fx::svg::TextContent(ExpandCodes(text));
  if (content.find_first_not_of(' ') == std::string::npos) return false;

  AcGeVector3d along = direction.normal();
  if (along.length() == 0) along = AcGeVector3d::kXAxis;
  AcGeVector3d up = normal.normal().crossProduct(along).normal();
  if (up.length() == 0) up = AcGeVector3d::kZAxis.crossProduct(along).normal();
  const Point2 origin = Out(position), x = OutVector(along), y = OutVector(up);
  const double width = style.x_scale > 0 ? style.x_scale : 1;
  const double slant = std::tan(std::clamp(style.obliquing_angle, -kMaxOblique, kMaxOblique));
  // Text coordinates have y pointing down, below the baseline; a glyph's
  // top at height h leans forward by h times the slant.
  double font_size = style.text_size / kCapHeight;
  double scale = 1;
  while (font_size > kMaxFontSize) font_size /= 10, scale *= 10;
  const double m[6] = {scale * width * x.x, scale * width * x.y, scale * (-slant * x.x - y.x),
                       scale * (-slant * x.y - y.y), origin.x, origin.y};

  Box2 box;
  const double length = static_cast<double>(content.size()) * kWidestAdvance * font_size;
  for (double u : {0.0, length})
    for (double v : {-font_size, kDescender * font_size})
      box.Add({m[0] * u + m[2] * v + m[4], m[1] * u + m[3] * v + m[5]});
  if (!Keep(box)) return false;

  fx::svg::XmlElement node = Element("text");
  std::string value;
  fx::svg::AppendMatrix(value, m, decimals_);
  node.Attribute("transform", value);
  std::string face = FaceOf(style);
  if (face != family_face_ || family_text_.empty()) {
    family_text_ = fx::svg::FontFamily(face);
    family_face_ = std::move(face);
  }
  node.Attribute("font-family", family_text_);
  value.clear();
  fx::svg::AppendGeneral(value, font_size, 6);
  node.Attribute("font-size", value);
  if (style.bold) node.Attribute("font-weight", "bold");
  if (style.italic) node.Attribute("font-style", "italic");
  if (const char* stretch = Stretch(width)) node.Attribute("font-stretch", stretch);
  if (style.vertical) {
    node.Attribute("writing-mode", "tb");
    node.Attribute("glyph-orientation-vertical", "0");
  }
  if (style.underlined) node.Attribute("text-decoration", "underline");
  node.Attribute("fill", ColorOf(resolved.rgb));
  node.Attribute("stroke", "none");
  ProgramAttributes(node, resolved);
  node.Text(content);
  return false;
}
