// Reads the sides of a comparison.

#ifndef LUMO_COMPARE_READ_SIDES_H_
#define LUMO_COMPARE_READ_SIDES_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "compare/side.h"
#include "input/input_log.h"

namespace lumo {

// Called with each log. `side` is the index of its side.
using LogVisitor = std::function<void(std::size_t side, const InputLog& log)>;

// Returns a side for each of the paths: a log, or a folder that stands for the
// logs of FindLogs(). Logs are read one after the other. If there is a `visit`,
// parts are read, too, and sides with a single log keep their values. Shows the
// progress on a terminal if a path is a folder.
//
// Returns nothing, with a message that names a path in `error`, if FindLogs()
// or LoadInputLog() fails.
std::optional<std::vector<Side>> ReadSides(
    const std::vector<std::string>& paths, std::int32_t num_warmup,
    Names* names, const LogVisitor& visit, std::string* error);

}  // namespace lumo

#endif  // LUMO_COMPARE_READ_SIDES_H_
