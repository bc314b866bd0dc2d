// The fixed parts of a page, which the build generates from page.html,
// page.css, the scripts and Chart.js.

#ifndef LUMO_PAGE_PAGE_TEMPLATE_H_
#define LUMO_PAGE_PAGE_TEMPLATE_H_

#include <string_view>

namespace lumo {

// The parts before, between and after the four variable texts of a page: title,
// heading, tables and data.
extern const std::string_view kPageBeforeTitle;
extern const std::string_view kPageBeforeHeading;
extern const std::string_view kPageBeforeTables;
extern const std::string_view kPageBeforeData;
extern const std::string_view kPageEnd;

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_TEMPLATE_H_
