#include "export/event_table.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include <flatbuffers/flatbuffers.h>

#include "model/event_fields.h"
#include "model/message_groups.h"
#include "text/escape.h"

namespace lumo {
namespace {

constexpr std::string_view kColumns =
    "message,kind,graph_index,run,backend,timestamp,event,parent,depth,"
    "position,name,type,value,unit,node_id\n";

// Appends the name of the type or, if it has none, its number.
void AppendType(ProfileEventType type, std::string* row) {
  const std::string_view name = EnumNameProfileEventType(type);
  if (name.empty()) {
    *row += std::to_string(static_cast<std::uint32_t>(type));
  } else {
    *row += name;
  }
}

// The state of writing the table.
struct Table {
  std::ostream& stream;
  // The columns before `event`, which describe the message, each with its
  // comma.
  std::string message_columns;
  // The number of rows written, which is the number of the next event.
  std::uint64_t rows = 0;
  // The current row. Writing each column by itself would take a sixth longer.
  std::string row;
};

// Writes the rows of `events`, which may be null, and of their sub-events.
// `parent` is the number of the enclosing event; empty at the top level, which
// has the depth 0.
void WriteEvents(const EventVector* events, const std::string& parent,
                 int depth, Table* table) {
  const std::size_t size = flatbuffers::VectorLength(events);
  for (flatbuffers::uoffset_t i = 0; i < size && table->stream.good(); ++i) {
    const ProfilingEvent& event = *events->Get(i);
    const std::string_view name = flatbuffers::GetStringView(event.name());
    const std::string number = std::to_string(table->rows++);
    std::string& row = table->row;
    row = table->message_columns;
    row += number + ',';
    row += parent + ',';
    row += std::to_string(depth) + ',' + std::to_string(i) + ',';
    AppendCsvField(name, &row);
    row += ',';
    AppendType(event.type(), &row);
    row += ',' + std::to_string(event.value()) + ',';
    row += UnitText(event.unit());
    row += ',';
    if (const std::int32_t node_id = ParseNodeId(name); node_id != -1) {
      row += std::to_string(node_id);
    }
    row += '\n';
    table->stream << row;
    WriteEvents(event.sub_events(), number, depth + 1, table);
  }
}

}  // namespace

void WriteEventTable(std::ostream& stream, const ProfilingLog& log) {
  stream << kColumns;
  const MessageGroups groups = GroupMessages(log);
  // The number of messages of the current kind so far, by graph. A tree,
  // because a log could choose graph indices that all collide in a hash table.
  std::map<std::uint64_t, std::uint64_t> runs;
  Table table = {stream, "", 0, ""};
  const auto size =
      static_cast<std::int32_t>(flatbuffers::VectorLength(groups.messages));
  for (std::int32_t i = 0; i < size; ++i) {
    const ProfilingMessage& message = MessageAt(*groups.messages, i);
    std::string_view kind;
    std::string run;
    if (i == groups.execute_runs.first) {
      runs.clear();
    }
    if (i < groups.execute_runs.end) {
      kind = RunKindText(i < groups.finalize_runs.end ? RunKind::kFinalize
                                                      : RunKind::kExecute);
      run = std::to_string(runs[message.graph_index()]++);
    }
    table.message_columns = std::to_string(i) + ',' + std::string(kind) + ',' +
                            std::to_string(message.graph_index()) + ',' + run +
                            ',' + EnumNameBackendId(message.delegate_type()) +
                            ',' + std::to_string(message.timestamp()) + ',';
    WriteEvents(message.events(), "", 0, &table);
  }
}

}  // namespace lumo
