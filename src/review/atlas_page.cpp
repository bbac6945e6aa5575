#include "review/atlas_page.h"

#include <algorithm>
#include <cmath>

#include "review/atlas_assets.h"
#include "rooms/room_list_rows.h"
#include "svg/svg_escape.h"
#include "svg/svg_number.h"

namespace fx::review {
namespace {

constexpr double kAspect = 4.0 / 3.0;
constexpr double kContourMargin = 1.5;    // crop side over the contour's box side
constexpr double kIdentifierMargin = 5;   // ... over a lone identifier's box side

class StringWriter : public pugi::xml_writer {
 public:
  explicit StringWriter(std::string& out) : out_(out) {}
  void write(const void* data, size_t size) override { out_.append(static_cast<const char*>(data), size); }

 private:
  std::string& out_;
};

std::string Number(double value, int precision) { return fx::svg::General(value, precision); }

std::string ViewBoxText(const ViewBox& box) {
  return Number(box.x, 10) + " " + Number(box.y, 10) + " " + Number(box.width, 10) + " " + Number(box.height, 10);
}

// The box in the page's coordinates (y down).
ViewBox ToViewBox(const fx::svg::Frame& view, const AcDbExtents& box) {
  const AcGePoint2d top_left = ToView(view, {box.minPoint().x, box.maxPoint().y});
  return {top_left.x, top_left.y, box.maxPoint().x - box.minPoint().x, box.maxPoint().y - box.minPoint().y};
}

void AppendHead(const ReviewData& review, std::string& page) {
  page += "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n";
  page += "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
          "style-src 'unsafe-inline'; script-src 'unsafe-inline'\">\n";
  page += "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n";
  page += "<meta name=\"generator\" content=\"floorxport review\">\n";
  page += "<title>" + HtmlText(review.drawing) + ": " + std::to_string(review.findings.size()) +
          (review.findings.size() == 1 ? " problem" : " problems") + "</title>\n<style>";
  page += kAtlasStyle;
  for (const KindInfo& info : kKinds) page += std::string(".k-") + info.id + " { --c: " + info.colour + "; }\n";
  page += "</style>\n</head>\n";
}

void AppendHeader(const ReviewData& review, std::string& page) {
  page += "<header>\n<h1>" + HtmlText(review.drawing) + "</h1>\n<p class=\"summary\">";
  page += std::to_string(review.rooms_identified) + " rooms identified, " +
          std::to_string(review.findings.size()) + (review.findings.size() == 1 ? " problem" : " problems");
  page += ".</p>\n<ul class=\"legend\" aria-label=\"Legend\">\n";
  for (const KindInfo& info : kKinds) {
    const size_t count = review.count(info.kind);
    const auto first = std::find_if(review.findings.begin(), review.findings.end(),
                                    [&](const Finding& finding) { return finding.kind == info.kind; });
    const std::string title = count == 0 ? std::string(info.title)
                                         : "<a href=\"#f" + std::to_string(first - review.findings.begin() + 1) +
                                               "\">" + info.title + "</a>";
    page += std::string("<li class=\"k-") + info.id + "\"><span class=\"swatch\" aria-hidden=\"true\"></span>" +
            title + " <span class=\"count\">" + std::to_string(count) + "</span></li>\n";
  }
  page += "</ul>\n</header>\n";
}

void AppendFloor(const AtlasFloor& floor, std::string& page) {
  page += "<figure class=\"floor\">\n";
  StringWriter writer(page);
  floor.svg->document_element().print(writer, "", pugi::format_raw);
  page += "\n<figcaption>The whole floor, every problem outlined in the colour of its kind. "
          "Click an outline to see its problem.</figcaption>\n</figure>\n";
}

// "<dt>term</dt><dd>value</dd>", the value already HTML.
void AppendTerm(const char* term, const std::string& value, std::string& page) {
  page += std::string("<dt>") + term + "</dt><dd>" + value + "</dd>";
}

std::string OrNone(const std::string& text) {
  return text.empty() ? "<span class=\"none\">none</span>" : HtmlText(text);
}

void AppendCard(const ReviewData& review, const Finding& finding, size_t number, std::string& page) {
  const KindInfo& info = Info(finding.kind);
  const std::string n = std::to_string(number);
  const ViewBox crop = CropBox(review.view, finding);
  const ViewBox halo = ToViewBox(review.view, OutlineBox(finding));
  page += "<li id=\"f" + n + "\" class=\"finding k-" + info.id + "\" aria-labelledby=\"f" + n + "h\">\n";
  page += "<svg class=\"crop\" viewBox=\"" + ViewBoxText(crop) +
          "\" preserveAspectRatio=\"xMidYMid meet\" role=\"img\" aria-label=\"Problem " + n +
          " on the floor\"><rect class=\"halo\" x=\"" + Number(halo.x, 10) + "\" y=\"" + Number(halo.y, 10) +
          "\" width=\"" + Number(halo.width, 10) + "\" height=\"" + Number(halo.height, 10) + "\"/></svg>\n";
  page += "<div class=\"about\"><h3 id=\"f" + n + "h\">" + n + ". " + info.title + "</h3>\n<p>" +
          info.explanation + "</p>\n<dl>";
  AppendTerm("Room", OrNone(finding.room), page);
  AppendTerm("Entity", HtmlText(finding.handle) + " on layer " + HtmlText(finding.layer), page);
  if (finding.contour != finding.handle) AppendTerm("Contour", OrNone(finding.contour), page);
  AppendTerm("Area", finding.area ? fx::rooms::AreaCell(finding.area) : "<span class=\"none\">not found</span>",
             page);
  AppendTerm("Point", Number(finding.point.x, 10) + ", " + Number(finding.point.y, 10), page);
  AppendTerm("Fingerprint", "<code>" + finding.fingerprint + "</code>", page);
  page += "</dl></div>\n</li>\n";
}

}  // namespace

ViewBox CropBox(const fx::svg::Frame& view, const Finding& finding) {
  AcDbExtents box = OutlineBox(finding);
  box.addExt(finding.contour_box);
  const bool lone_identifier = finding.contour_box.isEmpty();
  const ViewBox shown = ToViewBox(view, box);
  const double floor_side = std::max(view.width(), view.height());
  // A box without size (a point) still gets a view of its surroundings.
  double width = std::max(shown.width, shown.height * kAspect);
  width = std::max(width * (lone_identifier ? kIdentifierMargin : kContourMargin), floor_side * 1e-3);
  const double height = width / kAspect;
  return {shown.x + shown.width / 2 - width / 2, shown.y + shown.height / 2 - height / 2, width, height};
}

void AppendAtlasPage(const ReviewData& review, const AtlasFloor& floor, std::string& page) {
  AppendHead(review, page);
  page += "<body>\n";
  AppendHeader(review, page);
  page += "<main>\n";
  AppendFloor(floor, page);
  page += "<h2>Problems</h2>\n";
  if (review.findings.empty()) {
    page += "<p class=\"about\">The analysis found no problems.</p>\n";
  } else {
    page += "<ol class=\"findings\" aria-label=\"Problems\">\n";
    for (size_t i = 0; i < review.findings.size(); ++i) AppendCard(review, review.findings[i], i + 1, page);
    page += "</ol>\n";
  }
  page += "</main>\n<script>";
  page += kAtlasScript;
  page += "</script>\n</body>\n</html>\n";
}

std::string HtmlText(std::string_view utf8) {
  std::string out;
  for (char c : fx::svg::TextContent(utf8)) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '"': out += "&quot;"; break;
      case '\'': out += "&#39;"; break;
      default: out += c;
    }
  }
  return out;
}

}  // namespace fx::review
