#include "compare/series_pair.h"

#include <algorithm>

namespace lumo {

std::string_view VerdictText(Verdict verdict) {
  switch (verdict) {
    case Verdict::kHigher:
      return "higher";
    case Verdict::kLower:
      return "lower";
    case Verdict::kNoDifference:
      return "no_difference";
    case Verdict::kNoTest:
      return "no_test";
    case Verdict::kOnlyBefore:
      return "only_before";
    case Verdict::kOnlyAfter:
      return "only_after";
  }
  return "";
}

std::string VerdictWords(Verdict verdict) {
  std::string words(VerdictText(verdict));
  std::replace(words.begin(), words.end(), '_', ' ');
  return words;
}

}  // namespace lumo
