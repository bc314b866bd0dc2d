// Checks the page of an arbitrary log.

#ifndef LUMO_FUZZ_CHECK_PAGE_H_
#define LUMO_FUZZ_CHECK_PAGE_H_

#include <cstdint>
#include <vector>

namespace lumo {

// Writes the page of the well-formed log in `bytes`, alone and compared with
// itself. Aborts if a text of the log could be markup on the page, or if the
// page's data is not JSON.
void CheckPage(const std::vector<std::uint8_t>& bytes, std::int32_t num_warmup);

}  // namespace lumo

#endif  // LUMO_FUZZ_CHECK_PAGE_H_
