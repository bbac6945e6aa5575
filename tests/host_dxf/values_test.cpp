// Number text and caret escapes: the conversions the binary path relies on to be exact.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "host/dxf/dxf_caret.h"
#include "host/dxf/dxf_values.h"

namespace fx::dxf {
namespace {

TEST(Values, FormatDoubleIsShortestAndReadsBackExactly) {
  EXPECT_EQ(FormatDouble(0.1), "0.1");
  EXPECT_EQ(FormatDouble(1.0), "1.0");
  EXPECT_EQ(FormatDouble(-0.0), "-0.0");
  EXPECT_EQ(FormatDouble(1e21), "1e+21");
  EXPECT_EQ(FormatDouble(123456.789), "123456.789");
  for (const double value : {0.1, 1.0 / 3, -2.5e-300, 1e308, 5e-324, 2459580.5000115741,
                             std::numeric_limits<double>::max()}) {
    const std::optional<double> back = ParseDouble(FormatDouble(value));
    ASSERT_TRUE(back) << value;
    EXPECT_EQ(*back, value);
  }
  EXPECT_TRUE(std::signbit(*ParseDouble(FormatDouble(-0.0))));
}

TEST(Values, ParsingAcceptsBlanksAndAPlusSignOnly) {
  EXPECT_EQ(ParseDouble("  1.5 "), 1.5);
  EXPECT_EQ(ParseDouble("+1e3"), 1000.0);
  EXPECT_EQ(ParseDouble("1."), 1.0);
  EXPECT_FALSE(ParseDouble("1,5"));
  EXPECT_FALSE(ParseDouble("+-1"));
  EXPECT_FALSE(ParseDouble(""));
  EXPECT_EQ(ParseInt("     6"), 6);
  EXPECT_EQ(ParseInt("\t-32768"), -32768);
  EXPECT_FALSE(ParseInt("6.0"));
  EXPECT_FALSE(ParseInt("0x10"));
}

TEST(Values, CaretEscapesRoundTrip) {
  const std::string text = "Room^2\r\nArea\t12 m^";
  EXPECT_EQ(CaretEncode(text), "Room^ 2^M^JArea^I12 m^ ");
  EXPECT_EQ(CaretDecode(CaretEncode(text)), text);
  EXPECT_EQ(CaretDecode("x^2 ^@ ^"), "x^2 ^@ ^");  // not escapes: kept
  EXPECT_FALSE(NeedsCaretEncoding("plain"));
}

}  // namespace
}  // namespace fx::dxf
