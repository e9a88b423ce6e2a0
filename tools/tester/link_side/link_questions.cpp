// The questions of the link dialogue: one message each, or a run of them for a long list.

#include <algorithm>
#include <utility>

#include "link/message_numbers.h"
#include "tester/link_side/link_dialogue.h"

namespace tester {

namespace {

using Items = std::vector<std::string>;

/// The user interface answers some questions by itself, which it knows by this caption.
constexpr char kSelectCaption[] = "Korvane Select";
constexpr char kDirectoryCaption[] = "Select Source Directory";

/// As the low limit: the user may choose all instead of a number.
constexpr std::int32_t kAllAllowed = -1;

/// Which list of the search dialog a message fills.
enum class SearchMode : std::int32_t { kProcesses = 1, kSignals = 2, kTimers = 3 };

/// Bounds of one message of a list, so that it is well below what a frame holds.
constexpr std::size_t kMaxItems = 100;
constexpr std::size_t kMaxItemBytes = 8000;

/// The items of each message, in their order; one empty part when there are none.
std::vector<Items> splitItems(const Items& items) {
  std::vector<Items> parts(1);
  std::size_t bytes = 0;
  for (const std::string& item : items) {
    bytes += item.size();
    if (parts.back().size() == kMaxItems || (bytes > kMaxItemBytes && !parts.back().empty())) {
      parts.emplace_back();
      bytes = item.size();
    }
    parts.back().push_back(item);
  }
  return parts;
}

}  // namespace

void LinkDialogue::showSystem(const std::string& directory, const std::string& name) {
  enqueueAfterText(MSG_T_SYSTEM_OPENED, {directory, name});
}

void LinkDialogue::askText(const std::string& text) {
  enqueueAfterText(MSG_T_ASK_STRING, {kSelectCaption, text});
}

void LinkDialogue::askNumber(const std::string& text) {
  enqueueAfterText(MSG_T_ASK_INTEGER, {kSelectCaption, text});
}

void LinkDialogue::askNumberInRange(const std::string& text, const NumberRange& range) {
  const std::int32_t low = range.isAllAllowed ? kAllAllowed : range.low;
  enqueueAfterText(MSG_T_ASK_RANGE, {kSelectCaption, text, low, range.high});
}

void LinkDialogue::enqueueList(int tag, const std::string& text, const Items& items) {
  std::vector<Items> parts = splitItems(items);
  for (Items& part : parts) {
    const std::int32_t more = &part == &parts.back() ? 0 : 1;
    enqueueAfterText(tag, {kSelectCaption, text, more, std::move(part)});
  }
}

void LinkDialogue::askChoice(const std::string& text, const Items& items) {
  enqueueList(MSG_T_ASK_LIST, text, items);
}

void LinkDialogue::askBits(const std::string& text, const Items& items) {
  enqueueAfterText(MSG_T_ASK_BITS, {kSelectCaption, text, items});
}

void LinkDialogue::askParameters(const std::string& text, const Items& definitions) {
  enqueueList(MSG_T_ASK_SIGNAL_PARAM, text, definitions);
}

void LinkDialogue::askFile(const FileFilter& filter, const std::string& directory) {
  enqueueAfterText(MSG_T_ASK_FILE, {filter.title, directory, filter.extension, filter.label});
}

void LinkDialogue::askDirectory(const std::string& directory) {
  enqueueAfterText(MSG_T_ASK_DIRECTORY, {kDirectoryCaption, directory});
}

void LinkDialogue::offerSearch(const SearchLists& lists) {
  const std::pair<SearchMode, const Items*> fillings[] = {
      {SearchMode::kProcesses, &lists.processes},
      {SearchMode::kSignals, &lists.signals},
      {SearchMode::kTimers, &lists.timers}};
  for (const auto& [mode, items] : fillings) {
    std::vector<Items> parts = splitItems(*items);
    for (Items& part : parts) {
      const bool isLast = mode == SearchMode::kTimers && &part == &parts.back();
      enqueueAfterText(MSG_T_FIND,
                       {isLast ? 0 : 1, static_cast<std::int32_t>(mode), std::move(part)});
    }
  }
}

}  // namespace tester
