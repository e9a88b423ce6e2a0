// Any bytes as GDB's machine interface, cut where their first byte says: the records are those of
// the whole, and a record that is written again is read again as it was.

#include <algorithm>

#include "gdb/mi/reader.h"
#include "tests/fuzz/fuzz_target.h"

namespace {

using gdb::mi::Reader;
using gdb::mi::Record;
using gdb::mi::Value;

std::string written(const Value& value, int depth) {
  require(depth <= Reader::kMaxDepth + 1);  // the results of a record are the outermost tuple
  if (value.kind() == Value::Kind::kString) {
    return gdb::mi::quoted(value.string());
  }
  std::string all;
  for (const auto& [name, element] : value.elements()) {
    all +=
        (all.empty() ? "" : ",") + name + (name.empty() ? "" : "=") + written(element, depth + 1);
  }
  return value.kind() == Value::Kind::kTuple ? "{" + all + "}" : "[" + all + "]";
}

std::string written(const Record& record) {
  switch (record.kind) {
    case Record::Kind::kPrompt:
      return "(gdb) ";
    case Record::Kind::kGarbage:
      require(record.token.empty() && record.name.empty());
      return record.text;
    default:
      break;
  }
  const std::string mark = record.token + "^*+=~@&"[static_cast<std::size_t>(record.kind)];
  if (record.name.empty()) {
    return mark + gdb::mi::quoted(record.text);
  }
  const std::string results = written(record.results, 0);
  return mark + record.name + (results == "{}" ? "" : "," + results.substr(1, results.size() - 2));
}

std::string read(std::string_view bytes, std::size_t step) {
  Reader reader;
  std::string all;
  for (; !bytes.empty(); bytes.remove_prefix(std::min(step, bytes.size()))) {
    for (const Record& record : reader.feed(bytes.substr(0, step))) {
      const std::string line = written(record);
      const Record again = gdb::mi::readLine(line);
      require(again.kind == record.kind && written(again) == line);
      all += line + '\n';
    }
  }
  return all;
}

}  // namespace

void fuzz(std::span<const std::uint8_t> data) {
  const std::string_view bytes(reinterpret_cast<const char*>(data.data()), data.size());
  const std::size_t step = data.empty() ? 1 : 1 + data[0];
  require(read(bytes, bytes.size() + 1) == read(bytes, step));
}
