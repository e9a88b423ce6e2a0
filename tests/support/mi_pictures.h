// What was read of the machine interface, to be compared.

#pragma once

#include "gdb/mi/reader.h"

namespace gdb::mi {

inline std::string picture(const Value& value) {
  if (value.kind() == Value::Kind::kString) {
    return "'" + value.string() + "'";
  }
  const bool isTuple = value.kind() == Value::Kind::kTuple;
  std::string all = isTuple ? "{" : "[";
  for (const auto& [name, element] : value.elements()) {
    all += (all.size() > 1 ? " " : "") + (name.empty() ? "" : name + ":") + picture(element);
  }
  return all + (isTuple ? "}" : "]");
}

inline std::string picture(const Record& record) {
  constexpr std::string_view kMarks = "^*+=~@&>?";
  return record.token + kMarks[static_cast<std::size_t>(record.kind)] + record.name + record.text +
         (record.name.empty() ? "" : picture(record.results));
}

/// Of all records of a stream that comes in pieces of `step` bytes, each behind a line's end.
inline std::string pictures(std::string_view bytes, std::size_t step) {
  Reader reader;
  std::string all;
  for (std::size_t i = 0; i < bytes.size(); i += step) {
    for (const Record& record : reader.feed(bytes.substr(i, step))) {
      all += '\n' + picture(record);
    }
  }
  return all;
}

}  // namespace gdb::mi
