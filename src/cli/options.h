// The command line of a program: long options and operands.

#ifndef LUMO_CLI_OPTIONS_H_
#define LUMO_CLI_OPTIONS_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "cli/messages.h"

namespace lumo {

// The argument of an option: a decimal number without a sign or an exponent,
// such as "5" or "99.5".
struct Percentage {
  enum Range { kFrom0, kBetween0And100 };  // the second excludes its bounds

  std::optional<double>* number;
  Range range;
};

// A long option. A switch sets its flag. Any other option takes an argument: a
// text, a whole number from 0 to 2147483647 in decimal digits, or a percentage.
// A variable keeps its value, the default, if its option is not given.
struct Option {
  const char* name;
  std::variant<bool*, std::string*, std::int32_t*, Percentage> value;
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

}  // namespace lumo

#endif  // LUMO_CLI_OPTIONS_H_
