// make_large_log: writes a large log to a file, to measure whole programs.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <ios>
#include <vector>

#include "generated_log.h"

int main(int argc, char** argv) {
  if (argc != 6) {
    std::fputs(
        "usage: make_large_log GRAPHS EXECUTES OPERATIONS SUB_EVENTS FILE\n",
        stderr);
    return EXIT_FAILURE;
  }
  const lumo::LogShape shape = {std::atoll(argv[1]), std::atoll(argv[2]),
                                std::atoll(argv[3]), std::atoll(argv[4])};
  const std::vector<std::uint8_t> log = lumo::GenerateLog(shape);
  std::ofstream file(argv[5], std::ios::binary);
  file.write(reinterpret_cast<const char*>(log.data()),
             static_cast<std::streamsize>(log.size()));
  file.close();
  std::printf("%lld tables, %zu bytes\n",
              static_cast<long long>(lumo::CountTables(shape)), log.size());
  return file.good() ? EXIT_SUCCESS : EXIT_FAILURE;
}
