// Text that goes into the SVG document. The DOM (pugixml) escapes markup
// characters when it writes; these functions make sure what it is given is
// valid UTF-8 made only of characters XML 1.0 allows, which no escaping can
// provide: a control character written as "&#1;" is still not well formed.
#ifndef FLOORXPORT_SVG_SVG_ESCAPE_H_
#define FLOORXPORT_SVG_SVG_ESCAPE_H_

#include <string>
#include <string_view>

namespace fx::svg {

// For the content of an element (a text's characters). Tab, line feed and
// carriage return become blanks (SVG would fold them anyway); other C0
// control characters are dropped; invalid UTF-8 (bad or overlong
// sequences, surrogates, code points above U+10FFFF) and the non-characters
// U+FFFE and U+FFFF become U+FFFD, one per bad byte sequence.
std::string TextContent(std::string_view utf8);

// For an attribute value: as TextContent.
std::string AttributeValue(std::string_view utf8);

// A CSS font-family value for a face name: the name in single quotes with
// backslash before a quote or a backslash, control characters dropped;
// "sans-serif" for an empty name.
std::string FontFamily(std::string_view face);

}  // namespace fx::svg

#endif  // FLOORXPORT_SVG_SVG_ESCAPE_H_
