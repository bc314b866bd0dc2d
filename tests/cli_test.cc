// The numbers on a command line, escaped text and figures.

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "cli/options.h"
#include "text/escape.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

// Parses a command line with a single argument. Returns whether it is accepted.
bool Accepts(std::string argument, const Option& option) {
  std::string name = "program";
  char* argv[] = {name.data(), argument.data(), nullptr};
  std::vector<std::string> operands;
  const auto status =
      ParseCommandLine({"program", ""}, 2, argv, {option}, 0, &operands);
  EXPECT_EQ(status.value_or(kWrongCommandLine), kWrongCommandLine);
  return !status;
}

TEST(CommandLine, RejectsNumbersWithOtherCharacters) {
  const struct {
    std::string text;
    std::optional<std::int32_t> whole;
    std::optional<double> from_0;
    std::optional<double> between_0_and_100;
  } kCases[] = {
      {"0", 0, 0.0, {}},
      {"007", 7, 7.0, 7.0},
      {"100", 100, 100.0, {}},
      {"2147483647", 2147483647, 2147483647.0, {}},
      {"2147483648", {}, 2147483648.0, {}},
      {"99.5", {}, 99.5, 99.5},
      {".5", {}, 0.5, 0.5},
      {"", {}, {}, {}},
      {"-1", {}, {}, {}},
      {"-0", {}, {}, {}},
      {"+1", {}, {}, {}},
      {" 1", {}, {}, {}},
      {"1 ", {}, {}, {}},
      {"5%", {}, {}, {}},
      {"1e2", {}, {}, {}},
      {"0x10", {}, {}, {}},
      {"inf", {}, {}, {}},
      {"nan", {}, {}, {}},
      {"1,5", {}, {}, {}},
  };
  for (const auto& test : kCases) {
    SCOPED_TRACE(test.text);
    const std::string argument = "--option=" + test.text;
    std::int32_t whole = -1;
    EXPECT_EQ(Accepts(argument, {"option", &whole}), test.whole.has_value());
    EXPECT_TRUE(!test.whole || whole == test.whole) << whole;
    std::optional<double> number;
    EXPECT_EQ(
        Accepts(argument, {"option", Percentage{&number, Percentage::kFrom0}}),
        test.from_0.has_value());
    EXPECT_TRUE(!test.from_0 || number == test.from_0);
    EXPECT_EQ(
        Accepts(argument,
                {"option", Percentage{&number, Percentage::kBetween0And100}}),
        test.between_0_and_100.has_value());
    EXPECT_TRUE(!test.between_0_and_100 || number == test.between_0_and_100);
  }
}

TEST(Printable, EscapesCharactersThatControlTerminals) {
  const struct {
    std::string_view text;
    std::string_view want;
  } kCases[] = {
      {{"a\nb\tc\\d\r\0\x1b[0m\x7f~", 15},
       "a\\nb\\tc\\\\d\\x0d\\x00\\x1b[0m\\x7f~"},
      // U+007F to U+00A0, and characters with bytes in this range.
      {"\x7f\u0080\u009b\u009f\u00a0", "\\x7f\\u0080\\u009b\\u009f\u00a0"},
      {"\u00c4\u2192\U0001f600", "\u00c4\u2192\U0001f600"},
      // The characters that change the direction of text, and their neighbors.
      {"\u061b\u061c\u061d", "\u061b\\u061c\u061d"},
      {"\u200d\u200e\u200f\u2010", "\u200d\\u200e\\u200f\u2010"},
      {"\u2029\u202a\u202e\u202f", "\u2029\\u202a\\u202e\u202f"},
      {"\u2065\u2066\u2069\u206a", "\u2065\\u2066\\u2069\u206a"},
      // Bytes that are not UTF-8.
      {"\x7e\x80\x9f\xa0\xff", "~\\x80\\x9f\xa0\xff"},
      {"\xc2", "\xc2"},
      {"\xe2\x80", "\xe2\\x80"},
      {"\xe2\x80\n", "\xe2\\x80\\n"},
      {"\xc0\x9b", "\xc0\\x9b"},
      {"\xc1\x9b", "\xc1\\x9b"},
      {"\xe0\x82\x9b", "\xe0\\x82\\x9b"},
      {"\xe0\xa0\x80", "\xe0\xa0\x80"},
      {"\xed\x9f\xbf\xed\xa0\x80", "\xed\x9f\xbf\xed\xa0\\x80"},
      {"\xed\xbf\x9f\xee\x80\x80", "\xed\xbf\\x9f\xee\x80\x80"},
      {"\xf0\x82\x80\x9b", "\xf0\\x82\\x80\\x9b"},
      {"\xf4\x8f\xbf\xbf\xf4\x90\x80\x80",
       "\xf4\x8f\xbf\xbf\xf4\\x90\\x80\\x80"},
      {"\xf8\x88\x80\x80\x80", "\xf8\\x88\\x80\\x80\\x80"},
  };
  for (const auto& test : kCases) {
    EXPECT_EQ(Printable(test.text), test.want);
  }
}

TEST(Printable, StaysWithin200Bytes) {
  const std::string longest(200, 'x');
  EXPECT_EQ(Printable(longest), longest);
  EXPECT_EQ(Printable(longest + "\n"), longest + "...");
  // A character at the end is shown whole or not at all.
  const std::string start(197, 'x');
  EXPECT_EQ(Printable(start + "\u202e"), start + "\\u202e");
  EXPECT_EQ(Printable(start + "x\u202e"), start + "x...");
  EXPECT_EQ(Printable(start + "\u20ac!"), start + "\u20ac...");
  EXPECT_EQ(Printable(start + "\U0001f600"), start + "...");
  EXPECT_EQ(Printable(start + "xx\U0001f600"), start + "xx...");
  EXPECT_EQ(Printable(start + "\xa0\xa0\xa0\xa0\xa0"),
            start + "\xa0\xa0\xa0...");
}

TEST(FigureText, HasRoomForEveryNumber) {
  const double largest = std::numeric_limits<double>::max();
  const double smallest = std::numeric_limits<double>::denorm_min();
  EXPECT_EQ(FixedText(-largest, 80).size(), 1 + 309 + 1 + 80);
  EXPECT_EQ(ShortestText(-smallest), "-0." + std::string(323, '0') + "5");
  EXPECT_EQ(SignificantText(-largest, 80).size(), 1 + 1 + 1 + 79 + 5);
  EXPECT_EQ(ShortestText(999999999999999.0), "999999999999999");
  EXPECT_EQ(ShortestText(1e15), "1e+15");
}

}  // namespace
}  // namespace lumo
