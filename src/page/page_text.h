// Text and figures on a page.

#ifndef LUMO_PAGE_PAGE_TEXT_H_
#define LUMO_PAGE_PAGE_TEXT_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "model/figures.h"

namespace lumo {

// The number of bytes of a text from a log that are shown.
inline constexpr std::size_t kLongestText = 1000;

// Returns a text from a log so that a browser can show it: valid UTF-8, escaped
// with EscapeControls(). Bytes that are not UTF-8 are replaced by U+FFFD. A
// text of more than 1,000 bytes is truncated after a character, and "..." is
// appended. An empty text is "(empty)".
std::string PlainText(std::string_view bytes);

// Returns PlainText() as HTML, isolated from the text around it in case it has
// another direction.
std::string TextHtml(std::string_view bytes);

// Returns `text` escaped for HTML, in text and in quoted attributes.
std::string EscapeHtml(std::string_view text);

// Returns JSON in ASCII that can be placed inside an element or an attribute in
// single quotes. Its texts must be valid UTF-8.
std::string EmbedJson(const nlohmann::ordered_json& json);

// Returns the texts with `separator` between them.
std::string Join(const std::vector<std::string>& texts,
                 std::string_view separator);

// The following have thousands separators and a minus sign. Numbers from 1e15
// on have six significant digits and an exponent.

// Returns a number with two decimals, or fewer if it has more than five digits,
// such as "12.50", "2,853.6" and "110,004".
std::string NumberText(double number);

// As NumberText(), with a sign, but with as many decimals as NumberText() of
// `reference`. Empty for nothing.
std::string DifferenceText(std::optional<double> difference, double reference);

// Returns a mean and its deviation as HTML, such as
// "110,004 <span>± 1,864</span>". The deviation has as many decimals as the
// mean, and is omitted for a single value. Empty without values.
std::string MeanHtml(const Figures& figures);

// Returns "6.9%", or an empty text for nothing.
std::string PercentText(std::optional<double> percent);

// Returns `text` with minus signs instead of hyphens.
std::string MinusText(std::string_view text);

// As MinusText() of ChangeText(), or an empty text for nothing.
std::string ChangeHtml(std::optional<double> percent);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_TEXT_H_
