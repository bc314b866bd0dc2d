#include "report/op_sections.h"

#include <iomanip>
#include <string_view>

#include "report/event_listing.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

// Writes the beginning of an operation's line, the same in both sections.
void WriteShare(std::ostream& stream, float percent) {
  stream << "            ";
  WritePercentField(stream, percent);
}

// "            16.29% | name: 1500.00 cycles"
void WriteAverageRow(std::ostream& stream, std::string_view name,
                     const OpAverage& op) {
  WriteShare(stream, op.percent);
  stream << name << ": " << op.average << ' ' << op.unit << '\n';
}

// "            16.29% |         1500 cycles | name". The average has up to six
// significant digits, whatever notation the stream is set to.
void WriteTopRow(std::ostream& stream, const TopOpEntry& op) {
  WriteShare(stream, op.percent);
  stream << std::setw(12) << SignificantText(op.average, 6) << ' ' << op.unit
         << " | " << op.name << '\n';
}

}  // namespace

bool WriteOpSections(std::ostream& stream,
                     const std::vector<OpAverageMap>& op_averages,
                     const std::vector<std::vector<TopOpEntry>>& top_ops,
                     std::int32_t topK) {
  stream << "---------Per-op Avg Time----------\n";
  std::int32_t graph_position = 0;
  for (const OpAverageMap& graph : op_averages) {
    stream << "        Graph index: " << graph_position << '\n';
    for (const auto& [key, op] : graph) {
      WriteAverageRow(stream, key.name, op);
    }
    stream << '\n';
    ++graph_position;
  }
  stream << "---------Top " << topK << " by Computation Time----------\n";
  graph_position = 0;
  for (const std::vector<TopOpEntry>& graph : top_ops) {
    stream << "        Graph index: " << graph_position << '\n';
    for (const TopOpEntry& op : graph) {
      WriteTopRow(stream, op);
    }
    stream << '\n';
    ++graph_position;
  }
  return true;
}

}  // namespace lumo
