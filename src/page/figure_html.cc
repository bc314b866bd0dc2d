#include "page/figure_html.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "text/figure_text.h"

namespace lumo {
namespace {

int DecimalsOf(double number) {
  return std::abs(number) < 999.995 ? 2 : std::abs(number) < 9999.95 ? 1 : 0;
}

// Inserts a comma before every third digit from the point, or the end.
std::string InsertSeparators(std::string digits) {
  for (std::size_t i = std::min(digits.find('.'), digits.size()); i > 3;) {
    i -= 3;
    digits.insert(i, ",");
  }
  return digits;
}

std::string GroupedText(double number, int decimals) {
  if (std::abs(number) >= 1e15) {
    return WithMinus(SignificantText(number, 6));
  }
  const std::string text = FixedText(std::abs(number), decimals);
  const bool is_zero = text.find_first_of("123456789") == std::string::npos;
  return (number < 0 && !is_zero ? "−" : "") + InsertSeparators(text);
}

}  // namespace

std::string NumberText(double number) {
  return GroupedText(number, DecimalsOf(number));
}

std::string WholeNumberText(std::uint64_t number) {
  return number >= 1'000'000'000'000'000
             ? NumberText(static_cast<double>(number))
             : InsertSeparators(std::to_string(number));
}

std::string DifferenceText(double difference, double reference) {
  const std::string text = GroupedText(difference, DecimalsOf(reference));
  const bool is_rise =
      difference > 0 && text.find_first_of("123456789") != std::string::npos;
  return is_rise ? "+" + text : text;
}

std::string MeanHtml(const Figures& figures) {
  if (figures.n == 0) {
    return "";
  }
  const std::string mean = NumberText(figures.mean);
  return figures.n == 1
             ? mean
             : mean + " <span class=\"deviation\">± " +
                   GroupedText(figures.stdev, DecimalsOf(figures.mean)) +
                   "</span>";
}

std::string DeviationText(const Figures& figures) {
  return figures.n < 2 ? ""
                       : PercentText(PercentOf(figures.stdev, figures.mean));
}

std::string PercentText(std::optional<double> percent) {
  return percent ? FixedText(*percent, 1) + "%" : "";
}

std::string ChangeHtml(std::optional<double> percent) {
  return percent ? WithMinus(ChangeText(*percent)) : "";
}

std::string WithMinus(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == '-') {
      result += "−";
    } else {
      result += c;
    }
  }
  return result;
}

}  // namespace lumo
