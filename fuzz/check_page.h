// Checks a page of an arbitrary log.

#ifndef LUMO_FUZZ_CHECK_PAGE_H_
#define LUMO_FUZZ_CHECK_PAGE_H_

#include <cstdint>
#include <vector>

namespace lumo {

// Makes the page of a log that is well-formed, alone or compared with itself,
// and aborts if a text of the log could be markup in it, or if its data is not
// JSON.
void CheckPage(const std::vector<std::uint8_t>& log, std::int32_t num_warmup);

}  // namespace lumo

#endif  // LUMO_FUZZ_CHECK_PAGE_H_
