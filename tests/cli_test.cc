// The numbers on a command line.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cli/options.h"

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

}  // namespace
}  // namespace lumo
