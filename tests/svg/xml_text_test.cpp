// XML text written as it is made: the same bytes pugixml writes for the
// same tree, whatever the values hold; and the order it relies on.
#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <stdexcept>
#include <string>

#include "svg/xml_text.h"

namespace {

struct StringWriter : pugi::xml_writer {
  std::string text;
  void write(const void* data, size_t size) override { text.append(static_cast<const char*>(data), size); }
};

std::string RandomValue(std::mt19937& random) {
  std::uniform_int_distribution<int> length(0, 12), byte(1, 255);
  std::string value;
  for (int n = length(random); n > 0; --n) value += static_cast<char>(byte(random));
  return value;
}

// A random tree built both ways: elements with attributes, character data
// and children, some left empty.
void Build(std::mt19937& random, int depth, pugi::xml_node node, const fx::svg::XmlElement& element) {
  static const char* const kNames[] = {"g", "path", "text", "use"};
  std::uniform_int_distribution<int> count(0, 3), pick(0, 3);
  for (int i = count(random); i > 0; --i) {
    const std::string value = RandomValue(random);
    const char* name = i == 1 ? "ss:lid" : "d";
    node.append_attribute(name) = value.c_str();
    element.Attribute(name, value);
  }
  for (int i = depth < 4 ? count(random) : 0; i > 0; --i) {
    if (pick(random) == 0) {
      const std::string value = RandomValue(random);
      if (value.empty()) continue;
      node.append_child(pugi::node_pcdata).set_value(value.c_str());
      element.Text(value);
      continue;
    }
    const char* name = kNames[pick(random)];
    Build(random, depth + 1, node.append_child(name), element.Child(name));
  }
}

TEST(XmlTextTest, WritesWhatPugixmlWritesForTheSameTree) {
  std::mt19937 random(11);
  for (int round = 0; round < 300; ++round) {
    pugi::xml_document document;
    fx::svg::XmlText text;
    Build(random, 0, document.append_child("svg"), text.Top("svg"));
    StringWriter expected, written;
    document.save(expected, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
    text.Write(written);
    ASSERT_EQ(written.text, expected.text) << round;
  }
}

TEST(XmlTextTest, ValuesEndAtNulAndElementsMustComeInOrder) {
  fx::svg::XmlText text;
  const fx::svg::XmlElement root = text.Top("g");
  root.Attribute("id", std::string_view("a\0b", 3)).Attribute("n", -12LL);
  const fx::svg::XmlElement child = root.Child("line");
  root.Child("line");
  EXPECT_THROW(child.Attribute("x1", "0"), std::logic_error);  // closed by its sibling
  EXPECT_THROW(root.Attribute("late", "1"), std::logic_error);  // after a child
  StringWriter written;
  text.Write(written);
  EXPECT_EQ(written.text, "<g id=\"a\" n=\"-12\"><line/><line/></g>");
}

}  // namespace
