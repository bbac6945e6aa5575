// Number text and caret escapes: the conversions the binary path relies on to be exact.
#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
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

// Short decimals take a quick path; it must give exactly what from_chars gives, and leave
// what it cannot read exactly (too many digits, large exponents, odd forms) to from_chars.
TEST(Values, QuickDecimalsReadExactlyAsFromChars) {
  for (const char* text : {"0", "-0", "-0.0", ".5", "-.5e-3", "1.", "0.1", "0.3", "2459580.5000115741",
                           "123456789012345", "1234567890123456", "9007199254740993", "0.000000000000000000001",
                           "1e22", "1e23", "1e-22", "4.35e-23", "1E5", "1e005", "1e0005", "1e308", "1e-320",
                           "00000000000000000012.5", "12.500000000000000000", "inf", "nan", "1e", "1e+", ".",
                           "-", "1.2.3", "1e5x", "0x10"}) {
    double expected = 0;
    const std::string_view sv(text);
    const auto [ptr, ec] = std::from_chars(sv.data(), sv.data() + sv.size(), expected);
    const std::optional<double> got = ParseDouble(text);
    if (ec != std::errc() || ptr != sv.data() + sv.size()) {
      EXPECT_FALSE(got) << text;
      continue;
    }
    ASSERT_TRUE(got) << text;
    EXPECT_EQ(std::bit_cast<uint64_t>(*got), std::bit_cast<uint64_t>(expected)) << text;
  }
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
