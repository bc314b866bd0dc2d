// The fixed parts of a page, which the build puts together from page.html,
// page.css, the scripts and Chart.js.

#ifndef LUMO_PAGE_PAGE_TEMPLATE_H_
#define LUMO_PAGE_PAGE_TEMPLATE_H_

#include <string_view>

namespace lumo {

// What stands before, between and after the four texts of a page: its title,
// its heading, its tables and its data.
extern const std::string_view kPageBeforeTitle;
extern const std::string_view kPageBeforeHeading;
extern const std::string_view kPageBeforeTables;
extern const std::string_view kPageBeforeData;
extern const std::string_view kPageEnd;

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_TEMPLATE_H_
