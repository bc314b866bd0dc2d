#include "cli/options.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <iostream>
#include <string_view>
#include <system_error>

#include <getopt.h>

#include "text/escape.h"

namespace lumo {
namespace {

// What getopt_long() returns for a word that is not an option, for --help, for
// --version, and, from kFirstOption on, for the options of the program. The
// codes of options exceed those of letters.
constexpr int kOperand = 1;
constexpr int kHelp = 1000;
constexpr int kVersion = 1001;
constexpr int kFirstOption = 1002;

std::vector<option> MakeTable(const std::vector<Option>& options) {
  std::vector<option> table = {{"help", no_argument, nullptr, kHelp},
                               {"version", no_argument, nullptr, kVersion}};
  int code = kFirstOption;
  for (const auto& [name, value] : options) {
    const bool is_switch = std::holds_alternative<bool*>(value);
    table.push_back(
        {name, is_switch ? no_argument : required_argument, nullptr, code});
    ++code;
  }
  table.push_back({nullptr, 0, nullptr, 0});
  return table;
}

// Returns whether `text` has only decimal digits and fits, and sets `number`.
bool ParseWholeNumber(std::string_view text, std::int32_t* number) {
  const char* const end = text.data() + text.size();
  const auto [stop, failure] = std::from_chars(text.data(), end, *number);
  return failure == std::errc() && stop == end && text.front() != '-';
}

// Returns whether `text` is a number in the range, and sets it.
bool ParsePercentage(std::string_view text, const Percentage& percentage) {
  double number = 0.0;
  const char* const end = text.data() + text.size();
  const auto [stop, failure] =
      std::from_chars(text.data(), end, number, std::chars_format::fixed);
  *percentage.number = number;
  return failure == std::errc() && stop == end && text.front() != '-' &&
         std::isfinite(number) &&
         (percentage.range == Percentage::kFrom0 ||
          (number > 0.0 && number < 100.0));
}

// Sets the variable of an option to its argument, which is null for a switch.
// Returns an empty text, or what the option takes if that is something else.
std::string_view SetOption(const Option& given, const char* argument) {
  if (std::holds_alternative<bool*>(given.value)) {
    *std::get<bool*>(given.value) = true;
    return "";
  }
  if (std::holds_alternative<std::string*>(given.value)) {
    *std::get<std::string*>(given.value) = argument;
    return "";
  }
  if (std::holds_alternative<std::int32_t*>(given.value)) {
    return ParseWholeNumber(argument, std::get<std::int32_t*>(given.value))
               ? ""
               : "a whole number from 0 to 2147483647";
  }
  const auto& percentage = std::get<Percentage>(given.value);
  if (ParsePercentage(argument, percentage)) {
    return "";
  }
  return percentage.range == Percentage::kFrom0
             ? "a percentage of 0 or more"
             : "a percentage above 0 and below 100";
}

// Returns what is wrong with `word`, for which getopt_long() returned '?'.
std::string DescribeWrongOption(std::string_view word,
                                const std::vector<option>& table) {
  if (optopt >= kHelp) {
    const auto index = static_cast<std::size_t>(optopt - kHelp);
    return std::string("--") + table[index].name + " takes no argument";
  }
  // "--=" is an abbreviation of every option, but "-h" is one letter.
  const std::string_view prefix = word.substr(2, word.find('=') - 2);
  const bool is_ambiguous =
      word.starts_with("--") &&
      std::any_of(table.begin(), table.end(), [prefix](const option& option) {
        return option.name != nullptr &&
               std::string_view(option.name).starts_with(prefix);
      });
  return Printable(word) +
         (is_ambiguous ? " is ambiguous" : " is not an option");
}

int Print(const Program& program, const std::string& text) {
  if (std::cout << text << std::flush) {
    return 0;
  }
  return Fail(program, std::string("standard output: cannot be written: ") +
                           std::strerror(errno));
}

}  // namespace

std::optional<int> ParseCommandLine(const Program& program, int argc,
                                    char** argv,
                                    const std::vector<Option>& options,
                                    std::size_t max_operands,
                                    std::vector<std::string>* operands) {
  const auto add_operand = [&](const char* word) -> std::optional<int> {
    if (operands->size() == max_operands) {
      return RejectCommandLine(program,
                               Printable(word) + ": unexpected argument");
    }
    operands->emplace_back(word);
    return std::nullopt;
  };
  const std::vector<option> table = MakeTable(options);
  int code = 0;
  int word = 1;  // the word that getopt_long() reads
  optind = 0;    // begins anew, in case of an earlier call
  // The "-" makes getopt_long() return words that are not options in order; the
  // ":" keeps it from printing messages.
  while ((code = getopt_long(argc, argv, "-:", table.data(), nullptr)) != -1) {
    switch (code) {
      case kOperand:
        if (const std::optional<int> status = add_operand(optarg)) {
          return status;
        }
        break;
      case kHelp:
        return Print(program, std::string(program.usage));
      case kVersion:
        return Print(program,
                     std::string(program.name) + " " LUMO_VERSION "\n");
      case ':':
        return RejectCommandLine(
            program, Printable(argv[word]) + " requires an argument");
      case '?':
        return RejectCommandLine(program,
                                 DescribeWrongOption(argv[word], table));
      default: {
        const Option& given =
            options[static_cast<std::size_t>(code - kFirstOption)];
        const std::string_view taken = SetOption(given, optarg);
        if (!taken.empty()) {
          return RejectCommandLine(program, std::string("--") + given.name +
                                                " takes " + std::string(taken) +
                                                ", not [" + Printable(optarg) +
                                                "]");
        }
      }
    }
    word = optind;
  }
  for (; optind < argc; ++optind) {  // after "--"
    if (const std::optional<int> status = add_operand(argv[optind])) {
      return status;
    }
  }
  return std::nullopt;
}

}  // namespace lumo
