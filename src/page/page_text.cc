#include "page/page_text.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include <nlohmann/json.hpp>

#include "text/escape.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

// Replaces each of the `special` characters by the escape in its place.
std::string Escape(std::string_view text, std::string_view special,
                   std::initializer_list<std::string_view> escapes) {
  std::string escaped;
  for (const char c : text) {
    const std::size_t i = special.find(c);
    escaped += i == std::string_view::npos ? std::string_view(&c, 1)
                                           : escapes.begin()[i];
  }
  return escaped;
}

int DecimalsOf(double number) {
  return std::abs(number) < 999.995 ? 2 : std::abs(number) < 9999.95 ? 1 : 0;
}

// `plus` precedes a number above 0.
std::string GroupedText(double number, int decimals, const char* plus = "") {
  const double size = std::abs(number);
  std::string text =
      size < 1e15 ? FixedText(size, decimals) : SignificantText(size, 6);
  std::size_t end = std::min(text.find_first_of(".e"), text.size());
  for (; end > 3; end -= 3) {
    text.insert(end - 3, ",");
  }
  const bool is_zero = text.find_first_of("123456789") == std::string::npos;
  return (is_zero ? "" : number < 0 ? "−" : plus) + text;
}

}  // namespace

std::string PlainText(std::string_view bytes) {
  using nlohmann::json;
  if (bytes.empty()) {
    return "(empty)";
  }
  const std::size_t size = TruncatedSize(bytes, kLongestText);
  // The JSON library replaces bytes that are not UTF-8 when it writes a text.
  const auto valid =
      json::parse(json(bytes.substr(0, size))
                      .dump(-1, ' ', false, json::error_handler_t::replace))
          .get<std::string>();
  return EscapeControls(valid) + (size < bytes.size() ? "..." : "");
}

std::string TextHtml(std::string_view bytes) {
  return "<bdi>" + EscapeHtml(PlainText(bytes)) + "</bdi>";
}

std::string EscapeHtml(std::string_view text) {
  return Escape(text, "&<>\"'", {"&amp;", "&lt;", "&gt;", "&quot;", "&#39;"});
}

std::string EmbedJson(const nlohmann::ordered_json& json) {
  return Escape(json.dump(-1, ' ', true), "&<>'",
                {"\\u0026", "\\u003c", "\\u003e", "\\u0027"});
}

std::string Join(const std::vector<std::string>& texts,
                 std::string_view separator) {
  std::string all;
  for (const std::string& text : texts) {
    all += &text == &texts.front() ? "" : separator;
    all += text;
  }
  return all;
}

std::string NumberText(double number) {
  return GroupedText(number, DecimalsOf(number));
}

std::string DifferenceText(std::optional<double> difference, double reference) {
  return difference ? GroupedText(*difference, DecimalsOf(reference), "+") : "";
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

std::string PercentText(std::optional<double> percent) {
  return percent ? FixedText(*percent, 1) + "%" : "";
}

std::string MinusText(std::string_view text) {
  return Escape(text, "-", {"−"});
}

std::string ChangeHtml(std::optional<double> percent) {
  return percent ? MinusText(ChangeText(*percent)) : "";
}

}  // namespace lumo
