#include "viewer/profile_viewer.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <ostream>
#include <string>

#include <getopt.h>

#include "text/escape.h"

namespace lumo {
namespace {

constexpr option kOptions[] = {
    {"help", no_argument, nullptr, 'h'},
    {"input_profile_data", required_argument, nullptr, 'i'},
    {"output", required_argument, nullptr, 'o'},
    {"topK", required_argument, nullptr, 'k'},
    {"num_warmup", required_argument, nullptr, 'w'},
    {nullptr, 0, nullptr, 0},
};

// Reads the number at the start of `text`, after optional white space and an
// optional sign, and ignores the rest. Returns false if there is no number or
// it is not a 32-bit signed integer.
bool ParseInteger(const char* text, std::int32_t* number) {
  char* end = nullptr;
  errno = 0;
  const long parsed = std::strtol(text, &end, 10);
  if (end == text || errno == ERANGE || parsed < INT32_MIN ||
      parsed > INT32_MAX) {
    return false;
  }
  *number = static_cast<std::int32_t>(parsed);
  return true;
}

bool ReportBadInteger(const Console& console, const std::string& name,
                      const std::string& text) {
  return ReportError(console, "Option " + name +
                                  " takes a 32-bit integer, not [" +
                                  EscapeAsciiControls(text) + "].");
}

// The wording and the tabs are fixed.
void PrintUsage(std::ostream& out) {
  out << "options:\n"
         "--help \t\t\t\t\t\t\t\t\t Help\n"
         "--input_profile_data <input profile file> \t\t\t\t A binary input "
         "file that contains profiling result.\n"
         "--output <output file> \t\t\t\t\t\t\t An output txt file contains "
         "human readable profiling result. If it is not specified, the "
         "profiling output will show in standard output.\n"
         "--topK <topK> \t\t\t\t\t\t\t\t Only used in detailed profiling mode. "
         "Number of events to be printed under Top by Computation Time "
         "section. Default is 5.\n"
         "--num_warmup <num_warmup> \t\t\t\t\t\t Number of "
         "initialization/execution to be counted as warmups. Default is 1."
      << std::endl;
}

}  // namespace

bool ProfileViewer::ParseCommandLine(int argc, char** argv) {
  int code = 0;
  while ((code = getopt_long(argc, argv, "", kOptions, nullptr)) != -1) {
    switch (code) {
      case 'i':
        input_profile_data = optarg;
        console.out << "[Profile Viewer] Input profile data: ["
                    << input_profile_data << "]" << std::endl;
        break;
      case 'o':
        output = optarg;
        console.out << "[Profile Viewer] Output txt file: [" << output << "]"
                    << std::endl;
        break;
      case 'k':
        if (!ParseInteger(optarg, &topK)) {
          return ReportBadInteger(console, "--topK", optarg);
        }
        console.out << "[Profile Viewer] Top K: [" << topK << "]" << std::endl;
        break;
      case 'w':
        if (!ParseInteger(optarg, &num_warmup)) {
          return ReportBadInteger(console, "--num_warmup", optarg);
        }
        console.out << "[Profile Viewer] Number of warmups: [" << num_warmup
                    << "]" << std::endl;
        break;
      default:  // --help, or a mistake, which getopt_long() has reported
        PrintUsage(console.out);
        std::exit(EXIT_SUCCESS);
    }
  }
  if (input_profile_data.empty()) {
    return ReportError(console, "Please provide the input_profile_data.");
  }
  return true;
}

}  // namespace lumo
