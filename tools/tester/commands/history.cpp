#include "tester/commands/history.h"

#include <algorithm>
#include <utility>

#include "tester/commands/columns.h"

namespace tester {

namespace {

std::vector<std::string> cells(const History::Entry& entry) {
  return {formatTime(entry.time), formatInstance(entry.transition.instance), entry.transition.state,
          entry.transition.input, entry.outcome};
}

}  // namespace

void History::add(Time time, PendingTransition transition, std::string outcome) {
  if (entries.size() == kMostEntries) {
    entries.pop_front();
  }
  entries.push_back({time, std::move(transition), std::move(outcome)});
}

std::string History::text(std::size_t count) const {
  Columns columns;
  const std::size_t skipped = entries.size() - std::min(count, entries.size());
  for (std::size_t i = skipped; i < entries.size(); ++i) {
    columns.add(cells(entries[i]));
  }
  return columns.text();
}

std::string History::textOf(const InstanceId& id) const {
  Columns columns;
  for (const Entry& entry : entries) {
    if (entry.transition.instance == id) {
      columns.add(cells(entry));
    }
  }
  return columns.text();
}

std::vector<std::string> History::newestFirst() const {
  std::vector<std::string> lines;
  for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
    // The number tells equal transitions apart.
    std::string line = std::to_string(entries.rend() - entry);
    for (const std::string& cell : cells(*entry)) {
      line += cell.empty() ? "" : "  " + cell;
    }
    lines.push_back(std::move(line));
  }
  return lines;
}

}  // namespace tester
