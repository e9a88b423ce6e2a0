#include "tester/commands/history.h"

#include <algorithm>
#include <utility>

#include "tester/commands/columns.h"

namespace tester {

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
    const Entry& entry = entries[i];
    columns.add({formatTime(entry.time), formatInstance(entry.transition.instance),
                 entry.transition.state, entry.transition.input, entry.outcome});
  }
  return columns.text();
}

}  // namespace tester
