#include "cli/options.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <iostream>
#include <system_error>

#include <getopt.h>

#include "text/escape.h"

namespace lumo {
namespace {

// What getopt_long() returns for a word that is not an option, for --help, for
// --version, and, from kFirstOption on, for the options of the program.
constexpr int kOperand = 1;
constexpr int kHelp = 2;
constexpr int kVersion = 3;
constexpr int kFirstOption = 1000;

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

// `argument` is null for a switch.
void SetOption(const Option& given, const char* argument) {
  if (argument == nullptr) {
    *std::get<bool*>(given.value) = true;
  } else {
    *std::get<std::optional<std::string>*>(given.value) = argument;
  }
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
  const auto reject = [&program](const char* word, const char* what) {
    return RejectCommandLine(program, Printable(word) + what);
  };
  const auto add_operand = [&](const char* word) -> std::optional<int> {
    if (operands->size() == max_operands) {
      return reject(word, ": unexpected argument");
    }
    operands->emplace_back(word);
    return std::nullopt;
  };
  const std::vector<option> table = MakeTable(options);
  int code = 0;
  int word = optind;  // the word that getopt_long() reads
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
        return reject(argv[word], " requires an argument");
      case '?':
        return reject(argv[word], " is not an option");
      default:
        SetOption(options[static_cast<std::size_t>(code - kFirstOption)],
                  optarg);
        break;
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

bool ParseWholeNumber(std::string_view text, std::int32_t* number) {
  const char* const end = text.data() + text.size();
  const auto [stop, failure] = std::from_chars(text.data(), end, *number);
  return failure == std::errc() && stop == end && text.front() != '-';
}

bool ParsePercentage(std::string_view text, double* percentage) {
  const char* const end = text.data() + text.size();
  const auto [stop, failure] =
      std::from_chars(text.data(), end, *percentage, std::chars_format::fixed);
  return failure == std::errc() && stop == end && text.front() != '-' &&
         std::isfinite(*percentage);
}

int RejectArgument(const Program& program, std::string_view option,
                   std::string_view argument, std::string_view text) {
  std::string message(option);
  message += " takes ";
  message += argument;
  message += ", not [" + Printable(text) + "]";
  return RejectCommandLine(program, message);
}

}  // namespace lumo
