// Text that goes into the document: a table of nasty inputs, each checked
// by what it becomes and by a round trip through the document's text.
#include <gtest/gtest.h>

#include <pugixml.hpp>

#include "svg/svg_document.h"
#include "svg/svg_escape.h"

namespace {

struct Case {
  std::string input;
  std::string cleaned;
};

const Case kNasty[] = {
    {"plain", "plain"},
    {"<b>&amp;</b>", "<b>&amp;</b>"},  // markup stays text: the DOM escapes it
    {"]]>", "]]>"},
    {"\"quoted\" 'single'", "\"quoted\" 'single'"},
    {"tab\there\nline\rcr", "tab here line cr"},
    {"bell\x07" "nul", "bellnul"},
    {std::string("in\0side", 7), "inside"},
    {"\x1F\x01", ""},
    {"caf\xC3\xA9 \xE6\x88\xBF\xE9\x97\xB4 \xF0\x9F\x8F\xA2", "caf\xC3\xA9 \xE6\x88\xBF\xE9\x97\xB4 \xF0\x9F\x8F\xA2"},
    {"bad \xC3\x28 byte", "bad \xEF\xBF\xBD( byte"},                   // a lead byte without its continuation
    {"overlong \xC0\xAF", "overlong \xEF\xBF\xBD"},                     // "/" in two bytes
    {"surrogate \xED\xA0\x80!", "surrogate \xEF\xBF\xBD!"},
    {"cut \xE2\x82", "cut \xEF\xBF\xBD"},
    {"stray \x80\x80 x", "stray \xEF\xBF\xBD x"},
    {"beyond \xF4\x90\x80\x80", "beyond \xEF\xBF\xBD"},                 // above U+10FFFF
    {"nonchar \xEF\xBF\xBE \xEF\xBF\xBF", "nonchar \xEF\xBF\xBD \xEF\xBF\xBD"},
    {"latin1 \xE9t\xE9", "latin1 \xEF\xBF\xBDt\xEF\xBF\xBD"},
    {"del \x7F ok", "del \x7F ok"},
};

// Each input cleaned for text and for attributes, and what is cleaned
// survives the document's text: written, parsed back, equal.
TEST(SvgEscapeTest, EveryNastyInputIsCleanedAndRoundTrips) {
  for (const Case& c : kNasty) {
    EXPECT_EQ(fx::svg::TextContent(c.input), c.cleaned) << c.input;
    EXPECT_EQ(fx::svg::AttributeValue(c.input), c.cleaned) << c.input;
    pugi::xml_document document;
    pugi::xml_node text = document.append_child("text");
    text.append_attribute("font-family") = fx::svg::AttributeValue(c.input).c_str();
    text.append_child(pugi::node_pcdata).set_value(fx::svg::TextContent(c.input).c_str());
    const std::string xml = fx::svg::DocumentText(document);
    pugi::xml_document parsed;
    ASSERT_TRUE(parsed.load_string(xml.c_str())) << xml;
    EXPECT_EQ(std::string(parsed.child("text").attribute("font-family").value()), c.cleaned) << xml;
    EXPECT_EQ(std::string(parsed.child("text").text().get()), c.cleaned) << xml;
  }
}

TEST(SvgEscapeTest, FontFamilyQuotesTheFace) {
  EXPECT_EQ(fx::svg::FontFamily(""), "sans-serif");
  EXPECT_EQ(fx::svg::FontFamily("Arial"), "'Arial'");
  EXPECT_EQ(fx::svg::FontFamily("Times New Roman"), "'Times New Roman'");
  EXPECT_EQ(fx::svg::FontFamily("O'Brien \\ Sans"), "'O\\'Brien \\\\ Sans'");
  EXPECT_EQ(fx::svg::FontFamily("bad\x01\xC3"), "'bad\xEF\xBF\xBD'");
}

}  // namespace
