// The command line of a program: long options and operands.

#ifndef LUMO_CLI_OPTIONS_H_
#define LUMO_CLI_OPTIONS_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "cli/messages.h"

namespace lumo {

// A long option. A switch sets its flag; any other option takes an argument,
// which is stored in its text.
struct Option {
  const char* name;
  std::variant<bool*, std::optional<std::string>*> value;
};

// Parses the arguments in order. Adds those that are not options,
// `max_operands` at most, to `operands`. --help and --version end the run;
// arguments after them are ignored.
//
// Options may be abbreviated to any unique prefix. If an option is repeated,
// the last one wins. "--" ends the options.
//
// Returns nothing if the run continues, otherwise the exit status: 0 after
// --help or --version; kFailed if their text cannot be written; and
// kWrongCommandLine, after a message and the usage text on standard error, at
// the first wrong argument.
std::optional<int> ParseCommandLine(const Program& program, int argc,
                                    char** argv,
                                    const std::vector<Option>& options,
                                    std::size_t max_operands,
                                    std::vector<std::string>* operands);

// What ParseWholeNumber() accepts, for RejectArgument().
inline constexpr std::string_view kWholeNumber =
    "a whole number from 0 to 2147483647";

// Returns whether `text` has only decimal digits and is at most 2147483647, and
// sets `number` to it.
bool ParseWholeNumber(std::string_view text, std::int32_t* number);

// Returns whether `text` is a decimal number without a sign, such as "5" or
// "99.5", and sets `percentage` to it.
bool ParsePercentage(std::string_view text, double* percentage);

// Rejects the argument `text` of an option with the message "OPTION takes
// ARGUMENT, not [TEXT]" and the usage text. Returns kWrongCommandLine.
int RejectArgument(const Program& program, std::string_view option,
                   std::string_view argument, std::string_view text);

}  // namespace lumo

#endif  // LUMO_CLI_OPTIONS_H_
