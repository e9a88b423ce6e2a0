#include "tester/value.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

#include "support/text.h"

namespace tester {

namespace {

constexpr std::size_t kDecimals = 3;
constexpr std::size_t kMostSeconds = 9;  // digits
constexpr char kIntegerName[] = "Integer";
constexpr char kNullText[] = "null";

bool isDigits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char character) {
    return std::isdigit(character) != 0;
  });
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
  const std::string whole(text.substr(0, point));
  std::string decimals(point == std::string_view::npos ? "0" : text.substr(point + 1));
  if (!isDigits(whole) || !isDigits(decimals) || whole.size() > kMostSeconds ||
      decimals.size() > kDecimals) {
    return std::nullopt;
  }
  decimals.resize(kDecimals, '0');
  return std::stoll(whole) * kSecond + std::stoll(decimals);
}

std::optional<std::int64_t> parseNumber(std::string_view text, std::int64_t least) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < least) {
    return std::nullopt;
  }
  return number;
}

std::string formatInstance(const InstanceId& id) {
  return id.isNull() ? kNullText : id.process + ':' + std::to_string(id.number);
}

std::optional<InstanceId> parseInstance(std::string_view text) {
  if (equalIgnoringCase(text, kNullText)) {
    return InstanceId{};
  }
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos || colon == 0) {
    return std::nullopt;
  }
  const auto number = parseNumber(text.substr(colon + 1), 1);
  if (!number || *number > INT32_MAX) {
    return std::nullopt;
  }
  return InstanceId{std::string(text.substr(0, colon)), static_cast<int>(*number)};
}

Sort integerSort() {
  return {kIntegerName};
}

Sort booleanSort() {
  return {"Boolean", {"true", "false"}};
}

Sort pidSort() {
  return {"PId"};
}

std::optional<Value> parseValue(const Sort& sort, std::string_view text) {
  for (const std::string& literal : sort.literals) {
    if (equalIgnoringCase(literal, text)) {
      return literal;
    }
  }
  if (!sort.literals.empty()) {
    return std::nullopt;
  }
  if (sort.name == kIntegerName) {
    const auto number = parseNumber(text, INT64_MIN);
    return number ? std::optional(std::to_string(*number)) : std::nullopt;
  }
  const auto instance = parseInstance(text);
  return instance ? std::optional(formatInstance(*instance)) : std::nullopt;
}

std::string expectedText(const Sort& sort) {
  if (!sort.literals.empty()) {
    return "one of " + joinNames(sort.literals);
  }
  return sort.name == kIntegerName ? "a whole number" : "an instance such as Process:1, or null";
}

std::string formatParameters(const std::vector<Value>& values) {
  return values.empty() ? "" : '(' + joinNames(values) + ')';
}

std::string joinNames(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) {
    text += (text.empty() ? "" : ", ") + name;
  }
  return text;
}

}  // namespace tester
