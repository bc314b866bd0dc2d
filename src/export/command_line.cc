// The table of the options and what is wrong with others.

#include "export/command_line.h"

#include <cstdlib>
#include <iostream>

#include <getopt.h>

#include "model/printable.h"

namespace lumo {
namespace {

constexpr option kOptions[] = {
    {"input_profile_data", required_argument, nullptr, 'i'},
    {"output", required_argument, nullptr, 'o'},
    {"help", no_argument, nullptr, 'h'},
    {"version", no_argument, nullptr, 'v'},
    {nullptr, 0, nullptr, 0},
};

constexpr char kUsage[] =
    "usage: lumo-profile-export --input_profile_data FILE [--output FILE]\n"
    "Writes the events of a profiling log as comma-separated rows.\n"
    "\n"
    "  --input_profile_data FILE  the log to read\n"
    "  --output FILE              where the rows go; default: standard output\n"
    "  --help                     print this text and end\n"
    "  --version                  print the version and end\n";

constexpr char kVersion[] = "lumo-profile-export " LUMO_VERSION "\n";

constexpr int kWrongCommandLine = 2;

int Print(const char* text) {
  return std::cout << text << std::flush
             ? EXIT_SUCCESS
             : FailWith(EXIT_FAILURE, "standard output: cannot be written");
}

int Reject(const std::string& text) {
  FailWith(kWrongCommandLine, text);
  std::cerr << kUsage;
  return kWrongCommandLine;
}

}  // namespace

int FailWith(int status, const std::string& text) {
  std::cerr << "lumo-profile-export: " + text + "\n";
  return status;
}

std::optional<int> ParseExportOptions(int argc, char** argv,
                                      ExportOptions* options) {
  opterr = 0;  // the messages are ours: one line each, whatever the arguments
  int code = 0;
  // Where the word that getopt_long() looks at stands; the "+" forbids it to
  // move words.
  int word = optind;
  while ((code = getopt_long(argc, argv, "+:", kOptions, nullptr)) != -1) {
    switch (code) {
      case 'i':
        options->input_profile_data = optarg;
        break;
      case 'o':
        options->output = optarg;
        break;
      case 'h':
        return Print(kUsage);
      case 'v':
        return Print(kVersion);
      case ':':
        return Reject(Printable(argv[word]) + " requires an argument");
      default:
        return Reject(Printable(argv[word]) + " is not an option");
    }
    word = optind;
  }
  if (optind < argc) {
    return Reject(Printable(argv[optind]) + " is not an option");
  }
  if (options->input_profile_data.empty()) {
    return Reject("--input_profile_data must name a log");
  }
  return std::nullopt;
}

}  // namespace lumo
