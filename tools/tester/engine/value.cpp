#include "tester/engine/value.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cstdio>

namespace tester {

namespace {

constexpr std::size_t kDecimals = 3;
constexpr std::string_view kNullText = "null";

/// A whole text as a number; nothing when a character is left over or the number is out of range.
template <typename Number>
std::optional<Number> parseNumber(std::string_view text) {
  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) {
    return std::nullopt;
  }
  return number;
}

std::optional<Value> parseBoolean(std::string_view text) {
  if (equalIgnoringCase(text, "true")) {
    return true;
  }
  if (equalIgnoringCase(text, "false")) {
    return false;
  }
  return std::nullopt;
}

std::optional<Value> parseInstance(std::string_view text) {
  if (equalIgnoringCase(text, kNullText)) {
    return InstanceId{};
  }
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos || colon == 0) {
    return std::nullopt;
  }
  const auto number = parseNumber<int>(text.substr(colon + 1));
  if (!number || *number < 1) {
    return std::nullopt;
  }
  return InstanceId{std::string(text.substr(0, colon)), *number};
}

std::optional<Value> parseLiteral(const Sort& sort, std::string_view text) {
  for (const std::string& literal : sort.literals) {
    if (equalIgnoringCase(literal, text)) {
      return Literal{literal};
    }
  }
  return std::nullopt;
}

bool isDigits(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](unsigned char character) { return std::isdigit(character) != 0; });
}

}  // namespace

std::string formatTime(Time time) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%lld.%03lld", static_cast<long long>(time / kSecond),
                static_cast<long long>(time % kSecond));
  return text.data();
}

std::optional<Time> parseTime(std::string_view text) {
  const std::size_t point = text.find('.');
  const std::string_view whole = text.substr(0, point);
  std::string decimals;
  if (point != std::string_view::npos) {
    decimals = text.substr(point + 1);
  }
  if (whole.empty() || !isDigits(whole) || !isDigits(decimals) || decimals.size() > kDecimals) {
    return std::nullopt;
  }
  if (point != std::string_view::npos && decimals.empty()) {
    return std::nullopt;
  }
  decimals.resize(kDecimals, '0');
  const auto seconds = parseNumber<Time>(whole);
  const auto milliseconds = parseNumber<Time>(decimals);
  if (!seconds || !milliseconds || *seconds >= kLongestDuration / kSecond) {
    return std::nullopt;
  }
  return *seconds * kSecond + *milliseconds;
}

Time addTime(Time time, Time duration) {
  return time < kForever - duration ? time + duration : kForever - 1;
}

std::string formatInstance(const InstanceId& id) {
  if (id.isNull()) {
    return std::string(kNullText);
  }
  return id.process + ':' + std::to_string(id.number);
}

Sort integerSort() {
  return {"Integer", SortKind::kInteger};
}

Sort booleanSort() {
  return {"Boolean", SortKind::kBoolean};
}

Sort charstringSort() {
  return {"Charstring", SortKind::kCharstring};
}

Sort pidSort() {
  return {"PId", SortKind::kPid};
}

std::string formatValue(const Value& value) {
  struct Formatter {
    std::string operator()(std::int64_t number) const { return std::to_string(number); }
    std::string operator()(bool truth) const { return truth ? "true" : "false"; }
    std::string operator()(const std::string& text) const { return '\'' + text + '\''; }
    std::string operator()(const Literal& literal) const { return literal.name; }
    std::string operator()(const InstanceId& id) const { return formatInstance(id); }
  };
  return std::visit(Formatter{}, value);
}

std::string formatParameters(const std::vector<Value>& values) {
  std::string text;
  for (const Value& value : values) {
    text += (text.empty() ? "(" : ", ") + formatValue(value);
  }
  return text.empty() ? text : text + ')';
}

std::optional<Value> parseValue(const Sort& sort, std::string_view text) {
  switch (sort.kind) {
    case SortKind::kInteger: {
      const auto number = parseNumber<std::int64_t>(text);
      return number ? std::optional<Value>(*number) : std::nullopt;
    }
    case SortKind::kBoolean:
      return parseBoolean(text);
    case SortKind::kCharstring:
      return std::string(text);
    case SortKind::kLiteral:
      return parseLiteral(sort, text);
    case SortKind::kPid:
      return parseInstance(text);
  }
  return std::nullopt;
}

bool isOfSort(const Value& value, const Sort& sort) {
  switch (sort.kind) {
    case SortKind::kInteger:
      return std::holds_alternative<std::int64_t>(value);
    case SortKind::kBoolean:
      return std::holds_alternative<bool>(value);
    case SortKind::kCharstring:
      return std::holds_alternative<std::string>(value);
    case SortKind::kLiteral: {
      const auto* literal = std::get_if<Literal>(&value);
      return literal != nullptr && std::find(sort.literals.begin(), sort.literals.end(),
                                             literal->name) != sort.literals.end();
    }
    case SortKind::kPid:
      return std::holds_alternative<InstanceId>(value);
  }
  return false;
}

std::string expectedText(const Sort& sort) {
  switch (sort.kind) {
    case SortKind::kInteger:
      return "a whole number";
    case SortKind::kBoolean:
      return "true or false";
    case SortKind::kCharstring:
      return "a text";
    case SortKind::kPid:
      return "an instance such as Process:1, or null";
    case SortKind::kLiteral:
      break;
  }
  std::string text = "one of";
  for (const std::string& literal : sort.literals) {
    text += (&literal == &sort.literals.front() ? " " : ", ") + literal;
  }
  return text;
}

bool equalIgnoringCase(std::string_view left, std::string_view right) {
  return std::equal(
      left.begin(), left.end(), right.begin(), right.end(),
      [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); });
}

}  // namespace tester
