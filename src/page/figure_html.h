// Figures as text on a page: with thousands separators and a minus sign.

#ifndef LUMO_PAGE_FIGURE_HTML_H_
#define LUMO_PAGE_FIGURE_HTML_H_

#include <cstdint>
#include <optional>
#include <string>

#include "model/figures.h"

namespace lumo {

// Returns a number with two decimals, or fewer if it has more than five digits,
// such as "12.50", "2,853.6" and "110,004". From 1e15 on, it has six
// significant digits and an exponent.
std::string NumberText(double number);

// Returns a whole number, such as "110,004".
std::string WholeNumberText(std::uint64_t number);

// As NumberText(), with a sign, but with as many decimals as NumberText() of
// `reference`.
std::string DifferenceText(double difference, double reference);

// Returns a mean and its deviation as HTML, such as
// "110,004 <span>± 1,864</span>". The deviation has as many decimals as the
// mean, and is omitted for a single value. Empty without values.
std::string MeanHtml(const Figures& figures);

// Returns the deviation in percent of the mean, such as "1.6%"; empty if either
// is missing or the mean is 0.
std::string DeviationText(const Figures& figures);

// Returns "6.9%", or an empty text for nothing.
std::string PercentText(std::optional<double> percent);

// Returns ChangeText() with a minus sign; an empty text for nothing.
std::string ChangeHtml(std::optional<double> percent);

// Returns `text` with each hyphen replaced by a minus sign.
std::string WithMinus(const std::string& text);

}  // namespace lumo

#endif  // LUMO_PAGE_FIGURE_HTML_H_
