#include "gdb/mi/record.h"

#include <algorithm>

namespace gdb::mi {

// All constructors stand here, where an element is complete.
Value::Value() = default;
Value::Value(std::string string) : text(std::move(string)) {}
Value::Value(Kind kindOfValue, std::vector<Element> elements)
    : valueKind(kindOfValue), members(std::move(elements)) {}

const Value& Value::operator[](std::string_view name) const {
  static const Value kNothing;
  const auto found = std::ranges::find(members, name, &Element::name);
  return found == members.end() ? kNothing : found->value;
}

bool Value::has(std::string_view name) const {
  return std::ranges::find(members, name, &Element::name) != members.end();
}

}  // namespace gdb::mi
