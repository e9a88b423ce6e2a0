#include "gdb/session/query_queue.h"

#include <algorithm>
#include <utility>

#include "gdb/mi/reader.h"

namespace gdb {

bool isUrgent(const std::string& line) {
  return line.starts_with("-gdb-set ") || line.starts_with("-complete ");
}

void QueryQueue::ask(const std::string& line, Handler handler) {
  waiting.push_back({line, std::move(handler)});
  next();
}

void QueryQueue::setHeld(bool isHeld) {
  held = isHeld;
  next();
}

void QueryQueue::tell(const std::string& line) {
  writer(line + '\n');
}

void QueryQueue::next() {
  const auto query = std::ranges::find_if(
      waiting, [this](const Query& each) { return !held || isUrgent(each.line); });
  if (isUnderWay || query == waiting.end()) {
    return;
  }
  present = std::move(*query);
  waiting.erase(query);
  isUnderWay = true;
  text.clear();
  const bool isConsoleCommand = !present.line.starts_with('-');
  writer(
      std::to_string(++token) +
      (isConsoleCommand ? "-interpreter-exec console " + mi::quoted(present.line) : present.line) +
      '\n');
}

bool QueryQueue::take(const mi::Record& record) {
  if (!isUnderWay) {
    return false;
  }
  if (record.kind == mi::Record::Kind::kConsole) {
    text += record.text;
    return true;
  }
  if (record.kind != mi::Record::Kind::kResult || record.token != std::to_string(token)) {
    return false;
  }
  mi::Record result = record;
  result.text = std::move(text);
  isUnderWay = false;
  // The handler may ask the next query.
  const Handler handler = std::move(present.handler);
  if (handler) {
    handler(result);
  }
  next();
  return true;
}

void QueryQueue::fail(const std::string& message) {
  mi::Record error{.kind = mi::Record::Kind::kResult, .name = "error"};
  error.results = mi::Value(mi::Value::Kind::kTuple, {{"msg", mi::Value(message)}});
  std::deque<Query> failed = std::exchange(waiting, {});
  if (std::exchange(isUnderWay, false)) {
    failed.push_front(std::move(present));
  }
  held = false;
  for (const Query& query : failed) {
    if (query.handler) {
      query.handler(error);
    }
  }
}

}  // namespace gdb
